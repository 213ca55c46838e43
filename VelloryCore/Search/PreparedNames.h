// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Search/CharacterTable.h"

namespace vellory::FuzzySearch {

/// One name that a query matches.
struct Match {
    std::size_t index = 0; ///< the how-manieth name that was added, from 0
    int score = 0;

    friend bool operator==(const Match&, const Match&) = default;
};

/// Names made ready for many queries: normalised, split and cut into initials once when they are
/// added, and not on every keystroke. All names share a few blocks of memory; searching them
/// allocates only the result.
class PreparedNames {
  public:
    /// Makes room for that many names of that many bytes in all.
    void reserve(std::size_t names, std::size_t bytes);

    void add(std::string_view name);

    std::size_t size() const { return masks_.size(); }

    /// The names that `query` matches, best first; equal scores stay in the order of adding. A
    /// query of nothing but white space gives all names, with score 0. Linear in the number of
    /// names.
    std::vector<Match> rank(std::string_view query) const;

    /// The score of the name at `index`.
    std::optional<int> score(std::string_view query, std::size_t index) const;

  private:
    class Query;

    /// Where a name lies in `narrow_` or `wide_`: its normalised text, the first character of each
    /// of its words, and the initials of the words inside it, one after the other.
    struct Entry {
        std::size_t begin = 0;
        std::uint32_t length = 0;
        std::uint32_t firsts = 0;
        std::uint32_t camel = 0;
        bool wide = false;
    };

    /// Adds a name of plain ASCII; false, and nothing added, for any other.
    bool addPlain(std::string_view name);
    void addWide(std::string_view name);
    std::optional<int> score(const Query& query, std::size_t index) const;

    /// A bit set for (a class of) every character that occurs in the name. A character of the query
    /// whose bit is missing cannot be in the name.
    std::vector<std::uint64_t> masks_;
    std::vector<Entry> entries_;
    /// Names that are plain ASCII once normalised, one byte for a character.
    std::string narrow_;
    /// All others, one number from `characters_` for a character.
    std::u32string wide_;
    CharacterTable characters_;
};

} // namespace vellory::FuzzySearch
