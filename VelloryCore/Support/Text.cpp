// SPDX-License-Identifier: Apache-2.0
#include "Support/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <optional>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

namespace vellory::Text {

namespace {

bool isAscii(std::string_view text) {
    return std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

constexpr char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

icu::UnicodeString unicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

std::string utf8(const icu::UnicodeString& text) {
    std::string out;
    text.toUTF8String(out);
    return out;
}

/// The first code point of `text`, U+FFFD where the bytes spell none; -1 for no text.
UChar32 firstCodePoint(std::string_view text) {
    if (text.empty()) {
        return -1;
    }
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::int32_t offset = 0;
    UChar32 c = 0;
    U8_NEXT_OR_FFFD(bytes, offset, static_cast<std::int32_t>(text.size()), c);
    return c;
}

/// Full-width and half-width forms as the ordinary characters they are variants of.
icu::UnicodeString widthFolded(const icu::UnicodeString& text, const icu::Normalizer2& nfkc) {
    icu::UnicodeString out;
    icu::UnicodeString mapped;
    for (std::int32_t i = 0; i < text.length();) {
        const UChar32 c = text.char32At(i);
        i += U16_LENGTH(c);
        const auto kind = u_getIntPropertyValue(c, UCHAR_DECOMPOSITION_TYPE);
        if ((kind == U_DT_WIDE || kind == U_DT_NARROW) && nfkc.getRawDecomposition(c, mapped)) {
            out.append(mapped);
        } else {
            out.append(c);
        }
    }
    return out;
}

/// Marks with a combining class are diacritics; those without one (most vowel signs of the Indic
/// scripts) are letters to their readers and stay.
icu::UnicodeString withoutDiacritics(const icu::UnicodeString& text) {
    icu::UnicodeString out;
    for (std::int32_t i = 0; i < text.length();) {
        const UChar32 c = text.char32At(i);
        i += U16_LENGTH(c);
        if (u_getCombiningClass(c) == 0) {
            out.append(c);
        }
    }
    return out;
}

std::string normalizedByUnicode(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfkc = icu::Normalizer2::getNFKCInstance(status);
    const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
    const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status)) {
        return std::string(text);
    }
    icu::UnicodeString folded = widthFolded(unicode(text), *nfkc);
    folded.foldCase();
    // Putting a long run of marks in canonical order takes quadratic time, so those that stand for
    // themselves go before decomposing, and those that it brings to light after it.
    const icu::UnicodeString decomposed = nfd->normalize(withoutDiacritics(folded), status);
    const icu::UnicodeString bare = withoutDiacritics(decomposed);
    const std::string out = utf8(nfc->normalize(bare, status));
    return std::string(trimmed(out));
}

/// Whether code points of this kind never join a neighbour of such a kind. Carriage returns, marks,
/// joiners, the letters of Korean syllables and flags are of other kinds.
bool standsAlone(UChar32 c) {
    switch (u_getIntPropertyValue(c, UCHAR_GRAPHEME_CLUSTER_BREAK)) {
    case U_GCB_OTHER:
    case U_GCB_CONTROL:
    case U_GCB_LF:
    case U_GCB_LV:
    case U_GCB_LVT:
        return true;
    default:
        return false;
    }
}

/// Calls `visit(begin, end)` with the byte range of each grapheme cluster until it returns false,
/// if every code point of `text` is one; else calls nothing and returns false.
template <class Visit>
bool eachLoneCodePoint(std::string_view text, Visit visit) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t i = 0; i < size;) {
        UChar32 c = 0;
        U8_NEXT_OR_FFFD(bytes, i, size, c);
        if (c == '\r' || (c >= 0x300 && !standsAlone(c))) {
            return false;
        }
    }
    for (std::int32_t i = 0; i < size;) {
        const std::int32_t begin = i;
        UChar32 c = 0;
        U8_NEXT_OR_FFFD(bytes, i, size, c);
        if (!visit(static_cast<std::size_t>(begin), static_cast<std::size_t>(i))) {
            break;
        }
    }
    return true;
}

/// Calls `visit(begin, end)` with the byte range of each grapheme cluster until it returns false.
template <class Visit>
void eachGrapheme(std::string_view text, Visit visit) {
    if (eachLoneCodePoint(text, visit)) {
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    static const std::unique_ptr<icu::BreakIterator> prototype(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    UText view = UTEXT_INITIALIZER;
    utext_openUTF8(&view, text.data(), static_cast<std::int64_t>(text.size()), &status);
    if (U_FAILURE(status) || prototype == nullptr) {
        return;
    }
    const std::unique_ptr<icu::BreakIterator> breaks(prototype->clone());
    breaks->setText(&view, status);
    std::int32_t begin = breaks->first();
    for (std::int32_t end = breaks->next(); end != icu::BreakIterator::DONE;
         begin = end, end = breaks->next()) {
        if (!visit(static_cast<std::size_t>(begin), static_cast<std::size_t>(end))) {
            break;
        }
    }
    utext_close(&view);
}

} // namespace

std::string normalized(std::string_view text) {
    if (!isAscii(text)) {
        return normalizedByUnicode(text);
    }
    std::string out(trimmed(text));
    std::ranges::transform(out, out.begin(), asciiLower);
    return out;
}

std::string_view trimmed(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    auto begin = std::int32_t{0};
    auto end = static_cast<std::int32_t>(text.size());
    while (begin < end) {
        std::int32_t next = begin;
        UChar32 c = 0;
        U8_NEXT_OR_FFFD(bytes, next, end, c);
        if (!u_isUWhiteSpace(c)) {
            break;
        }
        begin = next;
    }
    while (end > begin) {
        std::int32_t previous = end;
        UChar32 c = 0;
        U8_PREV_OR_FFFD(bytes, begin, previous, c);
        if (!u_isUWhiteSpace(c)) {
            break;
        }
        end = previous;
    }
    return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

std::string lowercased(std::string_view text) {
    if (isAscii(text)) {
        std::string out(text);
        std::ranges::transform(out, out.begin(), asciiLower);
        return out;
    }
    return utf8(unicode(text).toLower(icu::Locale::getRoot()));
}

std::string uppercased(std::string_view text) {
    return utf8(unicode(text).toUpper(icu::Locale::getRoot()));
}

std::string capitalized(std::string_view text) {
    return utf8(unicode(text).toTitle(nullptr, icu::Locale::getRoot()));
}

std::vector<std::string_view> graphemes(std::string_view text) {
    std::vector<std::string_view> out;
    out.reserve(text.size());
    eachGrapheme(text, [&](std::size_t begin, std::size_t end) {
        out.push_back(text.substr(begin, end - begin));
        return true;
    });
    return out;
}

std::string_view prefix(std::string_view text, std::size_t count) {
    std::size_t size = 0;
    std::size_t taken = 0;
    eachGrapheme(text, [&](std::size_t, std::size_t end) {
        if (taken == count) {
            return false;
        }
        ++taken;
        size = end;
        return true;
    });
    return text.substr(0, size);
}

std::size_t length(std::string_view text) {
    std::size_t count = 0;
    eachGrapheme(text, [&](std::size_t, std::size_t) {
        ++count;
        return true;
    });
    return count;
}

bool isLetter(std::string_view character) {
    return u_isUAlphabetic(firstCodePoint(character)) != 0;
}

bool isNumber(std::string_view character) {
    const UChar32 c = firstCodePoint(character);
    return c >= 0 && (U_GET_GC_MASK(c) & U_GC_N_MASK) != 0;
}

bool isUppercase(std::string_view character) {
    return u_isUUppercase(firstCodePoint(character)) != 0;
}

bool isWhitespace(std::string_view character) {
    return u_isUWhiteSpace(firstCodePoint(character)) != 0;
}

bool isValidUtf8(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t i = 0; i < size;) {
        UChar32 c = 0;
        U8_NEXT(bytes, i, size, c);
        if (c < 0) {
            return false;
        }
    }
    return true;
}

std::string repairedUtf8(std::string_view text) {
    return isValidUtf8(text) ? std::string(text) : utf8(unicode(text));
}

std::string replacingAll(std::string_view text, std::string_view what, std::string_view with) {
    std::string out;
    out.reserve(text.size());
    while (!what.empty()) {
        const std::size_t found = text.find(what);
        if (found == std::string_view::npos) {
            break;
        }
        out.append(text.substr(0, found)).append(with);
        text.remove_prefix(found + what.size());
    }
    return out.append(text);
}

} // namespace vellory::Text
