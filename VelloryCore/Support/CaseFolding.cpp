// SPDX-License-Identifier: Apache-2.0
#include "Support/Text.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

namespace vellory::Text {

namespace {

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Past this no accents are composed: the cost grows with the square of a run of combining marks,
/// and no name that people read is as long.
constexpr std::size_t longestComposed = 1024;

icu::UnicodeString folded(std::string_view text, bool isTurkic) {
    const auto source = icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
    const bool composes = U_SUCCESS(status) && text.size() <= longestComposed;
    icu::UnicodeString out = composes ? nfc->normalize(source, status) : source;
    out.foldCase(isTurkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
    return composes ? nfc->normalize(out, status) : out;
}

bool writesDotlessI(std::string_view locale) {
    const icu::Locale found(std::string(locale).c_str());
    const std::string_view language = found.getLanguage();
    return language == "tr" || language == "az";
}

} // namespace

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    if (isAscii(a) && isAscii(b)) {
        return std::ranges::equal(a, b, {}, lower, lower);
    }
    return folded(a, false) == folded(b, false);
}

bool containsIgnoringCase(std::string_view text, std::string_view part, std::string_view locale) {
    const bool isTurkic = writesDotlessI(locale);
    if (!isTurkic && isAscii(text) && isAscii(part)) {
        return !std::ranges::search(text, part, {}, lower, lower).empty() || part.empty();
    }
    return folded(text, isTurkic).indexOf(folded(part, isTurkic)) >= 0 || part.empty();
}

} // namespace vellory::Text
