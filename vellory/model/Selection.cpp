// SPDX-License-Identifier: Apache-2.0
#include "model/Selection.h"

#include <algorithm>
#include <utility>

namespace vellory {

bool Selection::set(std::set<BundleID> apps) {
    if (apps == apps_) {
        return false;
    }
    apps_ = std::move(apps);
    return true;
}

bool Selection::toggle(const BundleID& id) {
    if (apps_.erase(id) == 0) {
        apps_.insert(id);
    }
    return true;
}

bool Selection::drop(const std::function<bool(const BundleID&)>& isGone) {
    return std::erase_if(apps_, isGone) > 0;
}

void Selection::beginSweep(Before before) {
    anchor_.reset();
    before_ = before == Before::kept ? apps_ : std::set<BundleID>();
}

bool Selection::sweepOver(const std::vector<BundleID>& covered) {
    std::set<BundleID> apps = before_;
    apps.insert(covered.begin(), covered.end());
    return set(std::move(apps));
}

void Selection::beginExtending(int at) {
    beginSweep(Before::kept);
    anchor_ = at;
}

bool Selection::extendTo(int index, const std::vector<Tile>& items) {
    std::vector<BundleID> covered;
    const auto [first, last] = std::minmax({anchor_.value_or(index), index});
    for (int each = first; each <= last && std::cmp_less(each, items.size()); ++each) {
        if (const BundleID* id = items[static_cast<std::size_t>(each)].app()) {
            covered.push_back(*id);
        }
    }
    return sweepOver(covered);
}

} // namespace vellory
