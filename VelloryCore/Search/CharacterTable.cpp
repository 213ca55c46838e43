// SPDX-License-Identifier: Apache-2.0
#include "Search/CharacterTable.h"

#include <cstdint>

#include <unicode/utf8.h>

#include "Support/Text.h"

namespace vellory::FuzzySearch {

namespace {

constexpr char32_t firstBeyondUnicode = 0x11'0000;

/// The code point that `cluster` consists of, or -1.
std::int32_t onlyCodePoint(std::string_view cluster) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(cluster.data());
    const auto size = static_cast<std::int32_t>(cluster.size());
    std::int32_t end = 0;
    UChar32 c = -1;
    U8_NEXT(bytes, end, size, c);
    return end == size ? c : -1;
}

/// Numbers for `text`; `other(cluster)` numbers what is more, or less, than one code point.
template <class Other>
std::u32string numbered(std::string_view text, Other other) {
    std::u32string out;
    const auto clusters = Text::graphemes(text);
    out.reserve(clusters.size());
    for (const std::string_view cluster : clusters) {
        const std::int32_t c = onlyCodePoint(cluster);
        out.push_back(c >= 0 ? static_cast<char32_t>(c) : other(cluster));
    }
    return out;
}

} // namespace

std::u32string CharacterTable::add(std::string_view text) {
    return numbered(text, [this](std::string_view cluster) -> char32_t {
        const auto known = numbers_.find(cluster);
        if (known != numbers_.end()) {
            return known->second;
        }
        const auto number = firstBeyondUnicode + static_cast<char32_t>(numbers_.size());
        numbers_.emplace(cluster, number);
        return number;
    });
}

std::u32string CharacterTable::spell(std::string_view text) const {
    return numbered(text, [this](std::string_view cluster) -> char32_t {
        const auto known = numbers_.find(cluster);
        return known != numbers_.end() ? known->second : unknown;
    });
}

} // namespace vellory::FuzzySearch
