// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Search/PreparedNames.h"

/// How typed or spoken text finds apps by name. Pure, deterministic and without state; a character
/// is what a reader calls one (a grapheme cluster), and case, accents and width never count.
///
/// Whoever searches the same names again and again keeps a `PreparedNames` and asks that.
namespace vellory::FuzzySearch {

/// The score of each kind of match before what its tier deducts, best first. The tiers do not
/// overlap, except that `initials` is a single value.
namespace Tier {
inline constexpr int exact = 1000;
inline constexpr int prefix = 900;      ///< less what of the name the query leaves, at most 99
inline constexpr int laterWord = 800;   ///< less the whole name's length, at most 99
inline constexpr int initials = 700;    ///< from two characters on
inline constexpr int inside = 600;      ///< less the whole name's length, at most 99
inline constexpr int subsequence = 400; ///< less ten for each character skipped, at most 300
inline constexpr int typo = 300;        ///< from four characters on
} // namespace Tier

/// How well `query` matches `name`: at most 1000, higher is better, nothing for no match. An empty
/// query matches every name with 0.
std::optional<int> score(std::string_view query, std::string_view name);

/// The items whose `name(item)` matches `query`, best first; equal scores keep the order given. A
/// query of nothing but white space gives all items as they are.
template <class Item, class NameOf>
std::vector<Item> rank(const std::vector<Item>& items, std::string_view query, NameOf name) {
    PreparedNames names;
    names.reserve(items.size(), 0);
    for (const Item& item : items) {
        names.add(name(item));
    }
    std::vector<Item> ranked;
    for (const Match& match : names.rank(query)) {
        ranked.push_back(items[match.index]);
    }
    return ranked;
}

/// The letters that begin words inside `name` as it is written, normalised: "pb" for "PhotoBooth",
/// "vsc" for "Visual Studio Code". A run of capitals gives its first letter only.
std::string camelInitials(std::string_view name);

// The two below compare their texts as given: who wants case and accents ignored normalises first.

/// How many characters of `name` lie between the characters of `query`, each taken at its first
/// place after the one before; nothing when `query` is no subsequence.
std::optional<std::size_t> subsequenceGaps(std::string_view query, std::string_view name);

/// Whether one character added, dropped, replaced or swapped with its neighbour, or none, turns `a`
/// into `b`. Decided in one walk from the left.
bool editDistanceAtMostOne(std::string_view a, std::string_view b);

} // namespace vellory::FuzzySearch
