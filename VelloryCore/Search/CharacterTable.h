// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vellory::FuzzySearch {

/// Numbers for characters, so that a text of grapheme clusters can be searched like an array. A
/// cluster of one code point is that code point; every other one gets a number beyond Unicode,
/// valid within this table.
class CharacterTable {
  public:
    /// What `spell` gives for a character that was never added: equal to no character of a name.
    static constexpr char32_t unknown = 0xFFFF'FFFF;

    /// `text` in numbers; characters not seen before are added.
    std::u32string add(std::string_view text);

    /// `text` in numbers, with `unknown` for characters never added.
    std::u32string spell(std::string_view text) const;

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>{}(text);
        }
    };

    std::unordered_map<std::string, char32_t, Hash, std::equal_to<>> numbers_;
};

} // namespace vellory::FuzzySearch
