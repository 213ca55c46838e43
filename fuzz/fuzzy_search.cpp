// SPDX-License-Identifier: Apache-2.0
// The matcher against the obvious rules. The first line is the query and every other line a name.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "../tests/support/SlowFuzzySearch.h"
#include "Search/FuzzySearch.h"

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vellory;
    std::string_view rest(reinterpret_cast<const char*>(data), size < 160 ? size : 160);
    std::vector<std::string_view> lines;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        lines.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (lines.empty()) {
        return 0;
    }
    const std::string_view query = lines.front();
    lines.erase(lines.begin());

    FuzzySearch::PreparedNames names;
    for (const std::string_view name : lines) {
        names.add(name);
    }
    std::vector<FuzzySearch::Match> expected;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto score = slow::score(query, lines[i]);
        require(FuzzySearch::score(query, lines[i]) == score);
        require(names.score(query, i) == score);
        if (score) {
            expected.push_back({.index = i, .score = *score});
        }
        const auto a = slow::characters(query);
        const auto b = slow::characters(lines[i]);
        require(FuzzySearch::subsequenceGaps(query, lines[i]) == slow::gaps(a, b));
        require(FuzzySearch::editDistanceAtMostOne(query, lines[i]) == slow::oneEditApart(a, b));
    }
    std::ranges::stable_sort(expected, std::greater{}, &FuzzySearch::Match::score);
    require(names.rank(query) == expected);
    return 0;
}
