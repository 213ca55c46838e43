// SPDX-License-Identifier: Apache-2.0
#include "model/AppSearch.h"

namespace vellory {

void AppSearch::setCandidates(const std::vector<std::pair<BundleID, std::string>>& candidates) {
    ids_.clear();
    names_ = {};
    std::size_t bytes = 0;
    for (const auto& [id, name] : candidates) {
        bytes += name.size();
    }
    ids_.reserve(candidates.size());
    names_.reserve(candidates.size(), bytes);
    for (const auto& [id, name] : candidates) {
        ids_.push_back(id);
        names_.add(name);
    }
}

std::vector<BundleID> AppSearch::find(const std::string& query) const {
    std::vector<BundleID> found;
    const auto matches = names_.rank(query);
    found.reserve(matches.size());
    for (const FuzzySearch::Match& match : matches) {
        found.push_back(ids_[match.index]);
    }
    return found;
}

} // namespace vellory
