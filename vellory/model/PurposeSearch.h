// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Search/AppKeywords.h"
#include "Search/PurposeIndex.h"

namespace vellory {

/// The installed apps by what they do, made ready once after each scan.
class PurposeSearch {
  public:
    using Table = std::map<BundleID, AppKeywords::Keywords>;

    /// The apps in the order of their names, and the words of each.
    void setApps(const std::vector<BundleID>& apps, const Table& keywords);

    /// Another order of their names, after some were renamed: all of `setApps`, each once.
    void setOrder(const std::vector<BundleID>& apps);

    /// The apps that `query` describes, best first and then by name, without those in `except`.
    std::vector<BundleID> find(const std::string& query, const std::set<BundleID>& except) const;

  private:
    std::vector<BundleID> apps_;
    /// The place of each of `apps_` among their names.
    std::vector<std::uint32_t> places_;
    PurposeIndex index_;
};

} // namespace vellory
