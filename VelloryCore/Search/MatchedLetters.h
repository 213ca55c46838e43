// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace vellory::FuzzySearch {

/// A run of bytes of a text.
struct Run {
    std::size_t begin = 0;
    std::size_t length = 0;

    friend bool operator==(const Run&, const Run&) = default;
};

/// The letters of `name` as it is written that `query` stands for, by the rule by which the name
/// scores: what a view emphasises. In order, never touching each other. None for a match with a
/// typo, for no match, and for names far longer than one reads.
std::vector<Run> matchedLetters(std::string_view query, std::string_view name);

} // namespace vellory::FuzzySearch
