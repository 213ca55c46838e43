// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "Search/FuzzySearch.h"

/// The matcher's rules over arrays of characters, written once for bytes (plain ASCII) and once
/// more by the compiler for numbered characters. Every rule is linear in the texts, so that no pair
/// of texts, however long or repetitive, takes long.
namespace vellory::FuzzySearch::rules {

template <class Char>
using View = std::basic_string_view<Char>;

/// A name taken apart. All of it is normalised.
template <class Char>
struct NameParts {
    View<Char> text;
    /// The first character of each word, then `camel`.
    View<Char> initials;
    View<Char> camel;
};

template <class Char>
constexpr bool separatesWords(Char c) {
    return c == Char{' '} || c == Char{'-'} || c == Char{'.'} || c == Char{'_'};
}

/// Calls `visit(word)` for every word of `text` in order until it returns true; whether it did.
template <class Char, class Visit>
bool anyWord(View<Char> text, Visit visit) {
    for (std::size_t begin = 0; begin < text.size();) {
        if (separatesWords(text[begin])) {
            ++begin;
            continue;
        }
        std::size_t end = begin + 1;
        while (end < text.size() && !separatesWords(text[end])) {
            ++end;
        }
        if (visit(text.substr(begin, end - begin))) {
            return true;
        }
        begin = end;
    }
    return false;
}

/// For each length of a beginning of `text`, the longest proper beginning that is also its end
/// (Knuth, Morris and Pratt): where to go on comparing after a mismatch.
template <class Char>
std::vector<std::uint32_t> borders(View<Char> text) {
    std::vector<std::uint32_t> out(text.size(), 0);
    std::uint32_t length = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        while (length > 0 && text[i] != text[length]) {
            length = out[length - 1];
        }
        if (text[i] == text[length]) {
            ++length;
        }
        out[i] = length;
    }
    return out;
}

enum class Place { nowhere, inside, laterWord };

/// The best place at which `text` contains `query`.
template <class Char>
Place placeIn(View<Char> text, View<Char> query, const std::vector<std::uint32_t>& queryBorders,
              bool queryIsInOneWord) {
    std::size_t firstWord = 0;
    while (firstWord < text.size() && separatesWords(text[firstWord])) {
        ++firstWord;
    }
    Place place = Place::nowhere;
    std::size_t matched = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        while (matched > 0 && query[matched] != text[i]) {
            matched = queryBorders[matched - 1];
        }
        if (query[matched] != text[i]) {
            continue;
        }
        if (++matched < query.size()) {
            continue;
        }
        const std::size_t begin = i + 1 - matched;
        if (queryIsInOneWord && begin > firstWord && separatesWords(text[begin - 1])) {
            return Place::laterWord;
        }
        place = Place::inside;
        matched = queryBorders[matched - 1];
    }
    return place;
}

template <class Char>
std::optional<std::size_t> gaps(View<Char> query, View<Char> name) {
    std::size_t skipped = 0;
    std::size_t next = 0;
    for (std::size_t i = 0; i < query.size(); ++i) {
        const std::size_t found = name.find(query[i], next);
        if (found == View<Char>::npos) {
            return std::nullopt;
        }
        skipped += i == 0 ? 0 : found - next;
        next = found + 1;
    }
    return skipped;
}

template <class Char>
bool atMostOneEdit(View<Char> a, View<Char> b) {
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > 1) {
        return false;
    }
    std::size_t i = 0;
    std::size_t j = 0;
    bool edited = false;
    while (i < a.size() && j < b.size()) {
        if (a[i] == b[j]) {
            ++i;
            ++j;
            continue;
        }
        if (edited) {
            return false;
        }
        edited = true;
        if (a.size() > b.size()) {
            ++i;
        } else if (a.size() < b.size()) {
            ++j;
        } else {
            const bool swapped = i + 1 < a.size() && a[i] == b[j + 1] && a[i + 1] == b[j];
            i += swapped ? 2 : 1;
            j += swapped ? 2 : 1;
        }
    }
    return (a.size() - i) + (b.size() - j) + (edited ? 1 : 0) < 2;
}

/// Queries shorter than this never match by typo: too many names are one edit away.
inline constexpr std::size_t shortestTypo = 4;
/// A single letter never matches by initials: it is a prefix or it is inside.
inline constexpr std::size_t shortestInitials = 2;

/// Whether the beginning of the name or of one of its words is `query` but for one edit.
template <class Char>
bool matchesByTypo(View<Char> query, View<Char> name) {
    if (query.size() < shortestTypo) {
        return false;
    }
    const auto beginsAlmostWith = [query](View<Char> candidate) {
        return atMostOneEdit(query, candidate.substr(0, query.size() + 1)) ||
               atMostOneEdit(query, candidate.substr(0, query.size()));
    };
    return beginsAlmostWith(name) || anyWord(name, beginsAlmostWith);
}

/// What a tier deducts for `length` characters.
constexpr int deduction(std::size_t length) {
    return static_cast<int>(std::min<std::size_t>(length, 99));
}

/// The score of a `query` that is not empty and whose every character occurs in the name, up to the
/// subsequence tier.
template <class Char>
std::optional<int> scoreWithoutTypo(View<Char> query, const std::vector<std::uint32_t>& borders,
                                    bool queryIsInOneWord, const NameParts<Char>& name) {
    if (name.text.empty()) {
        return std::nullopt;
    }
    if (name.text.starts_with(query)) {
        const std::size_t rest = name.text.size() - query.size();
        return rest == 0 ? Tier::exact : Tier::prefix - deduction(rest);
    }
    const Place place = placeIn(name.text, query, borders, queryIsInOneWord);
    if (place == Place::laterWord) {
        return Tier::laterWord - deduction(name.text.size());
    }
    if (query.size() >= shortestInitials &&
        (name.initials.starts_with(query) || name.camel.starts_with(query))) {
        return Tier::initials;
    }
    if (place == Place::inside) {
        return Tier::inside - deduction(name.text.size());
    }
    if (const auto skipped = gaps(query, name.text)) {
        return Tier::subsequence - 10 * static_cast<int>(std::min<std::size_t>(*skipped, 30));
    }
    return std::nullopt;
}

} // namespace vellory::FuzzySearch::rules
