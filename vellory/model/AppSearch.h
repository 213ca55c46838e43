// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Search/PreparedNames.h"

namespace vellory {

/// The apps that typed text can find, with their names made ready once, so that a keystroke costs
/// no more than the comparisons.
class AppSearch {
  public:
    /// The apps with the names they are found by; equally good matches keep this order.
    void setCandidates(const std::vector<std::pair<BundleID, std::string>>& candidates);

    /// Those whose name matches, best first; all of them for a blank query.
    std::vector<BundleID> find(const std::string& query) const;

  private:
    std::vector<BundleID> ids_;
    FuzzySearch::PreparedNames names_;
};

} // namespace vellory
