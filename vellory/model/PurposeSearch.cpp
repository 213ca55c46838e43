// SPDX-License-Identifier: Apache-2.0
#include "model/PurposeSearch.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <unordered_map>

namespace vellory {

void PurposeSearch::setApps(const std::vector<BundleID>& apps, const Table& keywords) {
    static const AppKeywords::Keywords none;
    apps_ = apps;
    places_.resize(apps_.size());
    std::iota(places_.begin(), places_.end(), 0U);
    index_ = {};
    for (const BundleID& app : apps_) {
        const auto known = keywords.find(app);
        index_.add(known == keywords.end() ? none : known->second);
    }
}

void PurposeSearch::setOrder(const std::vector<BundleID>& apps) {
    std::unordered_map<std::string_view, std::uint32_t> places;
    for (const BundleID& app : apps) {
        places.emplace(app, static_cast<std::uint32_t>(places.size()));
    }
    for (std::size_t i = 0; i < apps_.size(); ++i) {
        const auto place = places.find(apps_[i]);
        places_[i] = place == places.end() ? static_cast<std::uint32_t>(i) : place->second;
    }
}

std::vector<BundleID> PurposeSearch::find(const std::string& query,
                                          const std::set<BundleID>& except) const {
    std::vector<PurposeIndex::Match> matches = index_.search(query);
    std::ranges::sort(matches, [this](const auto& a, const auto& b) {
        return std::tuple(-a.score, places_[a.index]) < std::tuple(-b.score, places_[b.index]);
    });
    std::vector<BundleID> found;
    for (const PurposeIndex::Match& match : matches) {
        if (!except.contains(apps_[match.index])) {
            found.push_back(apps_[match.index]);
        }
    }
    return found;
}

} // namespace vellory
