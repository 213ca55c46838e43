// SPDX-License-Identifier: Apache-2.0
#include "Support/Text.h"

#include <gmock/gmock.h>

namespace vellory::Text {
namespace {

TEST(CaseFolding, TextsEqualWhenOnlyLetterCaseDiffers) {
    const std::vector<std::tuple<std::string, std::string, bool>> cases{
        {"Deep Work", "deep work", true},
        {"", "", true},
        {"a", "", false},
        {"É", "é", true},
        {"é", "e\u0301", true},
        {"é", "e", false},
        {"STRASSE", "straße", true},
        {"ΣΑΣ", "σας", true},
        {"I", "ı", false},
        {"[", "{", false},
        {"@", "`", false},
        {"\xFF", "\xFF", true},
        {std::string("a\0b", 3), std::string("A\0c", 3), false},
    };
    for (const auto& [a, b, equal] : cases) {
        EXPECT_EQ(equalsIgnoringCase(a, b), equal) << a << " " << b;
        EXPECT_EQ(equalsIgnoringCase(b, a), equal) << a << " " << b;
    }
}

TEST(CaseFolding, PartIsFoundByTheRulesOfTheLocale) {
    const std::vector<std::tuple<std::string, std::string, std::string, bool>> cases{
        {"Office Monitor 27", "office", "", true},
        {"Office Monitor 27", "MONITOR 27", "en_US", true},
        {"Office", "Offices", "", false},
        {"anything", "", "", true},
        {"", "", "", true},
        {"Büro", "BÜRO", "de", true},
        {"Büro", "buro", "de", false},
        {"Büro", "bu", "de", false},
        {"DISPLAY", "display", "en", true},
        {"DISPLAY", "display", "tr_TR", false},
        {"DISPLAY", "dısplay", "tr_TR", true},
        {"DİSPLAY", "display", "az", true},
        {"DISPLAY", "display", "no such locale", true},
    };
    for (const auto& [text, part, locale, found] : cases) {
        EXPECT_EQ(containsIgnoringCase(text, part, locale), found) << text << part << locale;
    }
}

TEST(CaseFolding, RunsOfCombiningMarksCostNoMoreThanOtherText) {
    // Marks of falling class, which composing has to bring into order one by one.
    std::string marks;
    while (marks.size() < 1'000'000) {
        marks += "\u0301\u0316";
    }
    EXPECT_TRUE(equalsIgnoringCase("A" + marks, "a" + marks));
    EXPECT_FALSE(containsIgnoringCase("a" + marks, "b"));
}

} // namespace
} // namespace vellory::Text
