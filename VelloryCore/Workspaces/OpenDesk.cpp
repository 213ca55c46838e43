// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/OpenDesk.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "Apps/WellKnownApps.h"

namespace vellory {

std::vector<BundleID> OpenDesk::apps() const {
    std::vector<BundleID> out;
    std::ranges::copy_if(running, std::back_inserter(out), [](const BundleID& app) {
        return !app.empty() && app != WellKnownApps::vellory && app != WellKnownApps::finder;
    });
    return out;
}

std::vector<std::string> OpenDesk::links() const {
    std::set<std::string_view> seen;
    std::vector<std::string> out;
    std::ranges::copy_if(tabs, std::back_inserter(out), [&](const std::string& tab) {
        return tab.starts_with("http") && seen.insert(tab).second;
    });
    return out;
}

Workspace OpenDesk::workspace(const Uuid& id, std::string name) const {
    Workspace out;
    out.id = id;
    out.name = std::move(name);
    out.symbol = "camera.viewfinder";
    std::ranges::transform(apps(), std::back_inserter(out.items), Workspace::Item::app);
    std::ranges::transform(folders, std::back_inserter(out.items), Workspace::Item::file);
    std::ranges::transform(links(), std::back_inserter(out.items), Workspace::Item::url);
    out.windows = windows;
    return out;
}

} // namespace vellory
