// SPDX-License-Identifier: Apache-2.0
#include "Search/PurposeIndex.h"

#include <algorithm>

#include "Support/Text.h"

namespace vellory {

namespace {
constexpr std::size_t shortestQuery = 3;
} // namespace

void PurposeIndex::add(const AppKeywords::Keywords& keywords) {
    const auto app = static_cast<std::uint32_t>(size_++);
    for (const std::string& keyword : keywords) {
        auto& having = apps_[AppKeywords::stem(keyword)];
        if (having.empty() || having.back() != app) { // "photo" and "photos" share a stem
            having.push_back(app);
        }
    }
}

std::vector<PurposeIndex::Match> PurposeIndex::search(std::string_view query) const {
    // A long query repeats its stems; each list of apps is then walked once.
    std::unordered_map<std::string, int> wanted;
    std::size_t words = 0;
    if (Text::length(query) >= shortestQuery) {
        for (std::string& stem : AppKeywords::queryStems(query)) {
            ++wanted[std::move(stem)];
            ++words;
        }
    }
    std::vector<int> hits(words > 0 ? size_ : 0, 0);
    for (const auto& [stem, times] : wanted) {
        if (const auto having = apps_.find(stem); having != apps_.end()) {
            for (const std::uint32_t app : having->second) {
                hits[app] += times;
            }
        }
    }
    std::vector<Match> matches;
    for (std::size_t i = 0; i < hits.size(); ++i) {
        if (const int score = AppKeywords::scoreOf(hits[i], words); score > 0) {
            matches.push_back({.index = i, .score = score});
        }
    }
    std::ranges::stable_sort(matches, std::greater{}, &Match::score);
    return matches;
}

} // namespace vellory
