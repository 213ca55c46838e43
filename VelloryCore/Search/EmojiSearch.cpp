// SPDX-License-Identifier: Apache-2.0
#include "Search/EmojiSearch.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include "Support/Text.h"

namespace vellory::EmojiSearch {

namespace {

struct Range {
    UChar32 first;
    UChar32 last;
};

constexpr std::array ranges{Range{0x1F300, 0x1FAFF}, Range{0x2600, 0x27BF}, Range{0x2300, 0x23FF},
                            Range{0x2B00, 0x2BFF}};

std::string nameOf(UChar32 c) {
    std::array<char, 128> buffer{}; // The longest name Unicode has is 88 characters.
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length = u_charName(c, U_UNICODE_CHAR_NAME, buffer.data(),
                                           static_cast<std::int32_t>(buffer.size()), &status);
    return U_SUCCESS(status) && length > 0
               ? Text::lowercased({buffer.data(), static_cast<std::size_t>(length)})
               : std::string();
}

std::string textOf(UChar32 c) {
    std::array<char, U8_MAX_LENGTH> bytes{};
    std::int32_t size = 0;
    U8_APPEND_UNSAFE(bytes.data(), size, c);
    return {bytes.data(), static_cast<std::size_t>(size)};
}

/// Calls `visit(word)` for each word between spaces until it returns true; whether it did.
template <class Visit>
bool anyWord(std::string_view text, Visit visit) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (end > 0 && visit(text.substr(0, end))) {
            return true;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return false;
}

/// The words of a query, each once: repeating one asks for nothing more.
std::vector<std::string_view> wordsOf(std::string_view query) {
    std::vector<std::string_view> words;
    anyWord(query, [&](std::string_view word) {
        words.push_back(word);
        return false;
    });
    std::ranges::sort(words);
    const auto repeated = std::ranges::unique(words);
    words.erase(repeated.begin(), repeated.end());
    return words;
}

bool matches(const Hit& hit, const std::vector<std::string_view>& words) {
    return std::ranges::all_of(words, [&](std::string_view word) {
        return anyWord(hit.name, [&](std::string_view of) { return of.starts_with(word); });
    });
}

bool hasWholeWord(const Hit& hit, const std::vector<std::string_view>& words) {
    return anyWord(hit.name,
                   [&](std::string_view of) { return std::ranges::binary_search(words, of); });
}

} // namespace

const std::vector<Hit>& all() {
    static const std::vector<Hit> emoji = [] {
        std::vector<Hit> out;
        for (const Range& range : ranges) {
            for (UChar32 c = range.first; c <= range.last; ++c) {
                if (u_hasBinaryProperty(c, UCHAR_EMOJI_PRESENTATION) == 0) {
                    continue;
                }
                if (std::string name = nameOf(c); !name.empty()) {
                    out.push_back({.emoji = textOf(c), .name = std::move(name)});
                }
            }
        }
        return out;
    }();
    return emoji;
}

std::vector<Hit> search(std::string_view query, std::size_t limit) {
    const std::string lower = Text::lowercased(query);
    std::string_view wanted = lower;
    const std::size_t begin = std::min(wanted.find_first_not_of(": "), wanted.size());
    wanted = wanted.substr(begin, wanted.find_last_not_of(": ") + 1 - begin);
    const std::vector<std::string_view> words = wordsOf(wanted);

    struct Candidate {
        const Hit* hit;
        bool whole;
    };
    std::vector<Candidate> found;
    for (const Hit& hit : all()) {
        if (matches(hit, words)) {
            found.push_back({.hit = &hit, .whole = hasWholeWord(hit, words)});
        }
    }
    if (!words.empty()) {
        std::ranges::stable_sort(found, [](const Candidate& a, const Candidate& b) {
            return a.whole != b.whole ? a.whole : a.hit->name.size() < b.hit->name.size();
        });
    }
    std::vector<Hit> hits;
    for (const Candidate& candidate : found) {
        if (hits.size() == limit) {
            break;
        }
        hits.push_back(*candidate.hit);
    }
    return hits;
}

} // namespace vellory::EmojiSearch
