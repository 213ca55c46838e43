// SPDX-License-Identifier: Apache-2.0
#include "Support/Text.h"

#include <array>
#include <filesystem>
#include <random>
#include <ranges>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Lists.h"

namespace vellory::support_tests {
namespace {

using testing::ElementsAre;

/// A text of printable ASCII in which digits, blanks and letters that form sequences in some
/// languages ("ch", "aa", "cs") are frequent; every other time with the letters from А to я.
std::string randomPlain(std::mt19937& random) {
    static constexpr std::string_view frequent = "0012 9aAbcChHsSzZyYwWvV-_.'";
    const bool isCyrillic = random() % 2 == 0;
    std::string out;
    for (unsigned left = random() % 10; left > 0; --left) {
        const unsigned kind = random() % 3;
        if (kind == 0) {
            out.push_back(static_cast<char>(' ' + random() % 95));
        } else if (kind == 1 && isCyrillic) {
            const auto letter = static_cast<unsigned>(0x410 + random() % 64);
            out.push_back(static_cast<char>(0xC0U | letter >> 6U));
            out.push_back(static_cast<char>(0x80U | (letter & 0x3FU)));
        } else {
            out.push_back(frequent[random() % frequent.size()]);
        }
    }
    return out;
}

TEST(Text, NormalisingFoldsCaseDiacriticsAndWidthAndTrims) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"  Final Cut\t\n", "final cut"},
        {"\u00a0\u3000Mail\u2003", "mail"}, // white space of Unicode
        {"Éclair", "eclair"},
        {"E\u0301clair", "eclair"}, // the accent as a letter of its own
        {"Ｍａｐｓ　２", "maps 2"}, // full width
        {"ﾃﾚﾋﾞ", "テレヒ"},         // half width, with its voicing mark as a diacritic
        {"Straße", "strasse"},      // case folding knows no ß
        {"İstanbul", "istanbul"},
        {"ISTANBUL", "istanbul"}, // and no Turkish either
        {"Σίσυφος", "σισυφοσ"},
        {"e\u0301\u0308\u0323", "e"},
        {"\u0301", ""},     // nothing but a diacritic
        {"हिन्दी", "हिनदी"}, // the virama is a mark with a class, vowel signs are letters
        {"½ ﬁ", "½ fi"},    // case folding takes ligatures apart, nothing else is compatibility
        {"👩‍🚀", "👩‍🚀"},
        {"a\xff"
         "b",
         "a\uFFFD"
         "b"},
    };
    for (const auto& [text, result] : cases) {
        EXPECT_EQ(Text::normalized(text), result) << text;
    }
}

TEST(Text, NormalisingTwiceChangesNothing) {
    for (const char* text : {"Ｅ\u0301", "ǅ", "ŉ", "ΐ", " \u0301 a", "ﬃ", "ẞ", "\u1e9b\u0323"}) {
        const std::string once = Text::normalized(text);
        EXPECT_EQ(Text::normalized(once), once) << text;
    }
}

TEST(Text, TheAsciiPathAgreesWithTheGeneralOne) {
    std::mt19937 random(1);
    for (int i = 0; i < 20'000; ++i) {
        std::string text;
        for (unsigned left = random() % 12; left > 0; --left) {
            text.push_back(static_cast<char>(random() % 128));
        }
        // A letter at either end that is no ASCII sends the text down the general path.
        const std::string wide = "ж" + text + "ж";
        const auto inner = [](const std::string& whole) {
            return whole.substr(2, whole.size() - 4);
        };
        const std::string folded = inner(Text::normalized(wide));
        EXPECT_EQ(Text::normalized(text), Text::trimmed(folded)) << testing::PrintToString(text);
        EXPECT_EQ(Text::lowercased(text), inner(Text::lowercased(wide)));
    }
}

TEST(Text, CharactersAreWhatAReaderSees) {
    EXPECT_THAT(Text::graphemes("a\r\ne\u0301👨‍👩‍👧🇸🇪!"),
                ElementsAre("a", "\r\n", "e\u0301", "👨‍👩‍👧", "🇸🇪", "!"));
    EXPECT_EQ(Text::length("👨‍👩‍👧🇸🇪"), 2);
    EXPECT_EQ(Text::prefix("e\u0301👨‍👩‍👧x", 2), "e\u0301👨‍👩‍👧");
    EXPECT_EQ(Text::prefix("abc", 0), "");
    EXPECT_EQ(Text::prefix("abc", 9), "abc");
    EXPECT_EQ(Text::prefix("", 3), "");
    EXPECT_EQ(Text::length("a\xff\xfe"), 3);
}

TEST(Text, LettersNumbersAndCase) {
    for (const char* letter : {"a", "Z", "é", "ß", "字", "ا"}) {
        EXPECT_TRUE(Text::isLetter(letter)) << letter;
        EXPECT_FALSE(Text::isNumber(letter)) << letter;
    }
    for (const char* number : {"0", "٣", "½", "Ⅷ", "²"}) {
        EXPECT_TRUE(Text::isNumber(number)) << number;
    }
    for (const char* other : {"", " ", "-", "_", "👍", "\xff"}) {
        EXPECT_FALSE(Text::isLetter(other)) << other;
        EXPECT_FALSE(Text::isNumber(other)) << other;
        EXPECT_FALSE(Text::isUppercase(other)) << other;
    }
    EXPECT_TRUE(Text::isUppercase("É"));
    EXPECT_FALSE(Text::isUppercase("é"));
    EXPECT_TRUE(Text::isWhitespace("\u3000"));
    EXPECT_FALSE(Text::isWhitespace("x"));
    EXPECT_FALSE(Text::isWhitespace(""));
    EXPECT_EQ(Text::uppercased("straße"), "STRASSE");
    EXPECT_EQ(Text::capitalized("deep WORK éclair"), "Deep Work Éclair");
}

TEST(Text, WhatIsNoUtf8IsSeenAndRepaired) {
    for (const char* bad : {"\xff", "\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "a\xe2\x82"}) {
        EXPECT_FALSE(Text::isValidUtf8(bad));
        EXPECT_TRUE(Text::isValidUtf8(Text::repairedUtf8(bad)));
    }
    EXPECT_TRUE(Text::isValidUtf8("é👍"));
    EXPECT_EQ(Text::repairedUtf8("é\xff"), "é\uFFFD");
}

TEST(Text, ReplacingAllTakesEveryOccurrenceOnce) {
    EXPECT_EQ(Text::replacingAll("a.app.app", ".app", ""), "a");
    EXPECT_EQ(Text::replacingAll("aaa", "aa", "a"), "aa");
    EXPECT_EQ(Text::replacingAll("abc", "", "x"), "abc");
}

std::string utf8(char32_t c) {
    return std::filesystem::path(std::u32string(1, c)).string();
}

TEST(Graphemes, TextWithoutJoiningCharactersTakesAShorterWayToTheSameAnswer) {
    // What follows the control character makes the whole text take the long way, and, being apart
    // from the rest, changes nothing in it.
    const std::string joined = "\x01👩‍💻";
    // Latin, Greek and Cyrillic with their marks, Indic scripts, Thai, Korean in letters and in
    // syllables, kana, punctuation with joiners, Chinese, flags and emoji.
    constexpr std::array<std::pair<char32_t, char32_t>, 10> blocks{{{0x01, 0x0C},
                                                                    {0x20, 0x5FF},
                                                                    {0x900, 0xE7F},
                                                                    {0x1100, 0x11FF},
                                                                    {0x2000, 0x2070},
                                                                    {0x3040, 0x30FF},
                                                                    {0x4E00, 0x4F00},
                                                                    {0xABF0, 0xAD00},
                                                                    {0x1F1E6, 0x1F1FF},
                                                                    {0x1F300, 0x1F64F}}};
    std::mt19937 random(1);
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        const auto& [first, last] = blocks[random() % blocks.size()];
        for (auto length = random() % 8; length > 0; --length) {
            const bool plain = random() % 3 == 0;
            text +=
                plain ? "a" : utf8(first + static_cast<char32_t>(random() % (last - first + 1)));
            text += random() % 40 == 0 ? "\xFF" : "";
        }
        const std::string whole = text + joined;
        auto expected = Text::graphemes(whole);
        ASSERT_GE(expected.size(), 2U);
        expected.resize(expected.size() - 2);
        ASSERT_EQ(Text::graphemes(text), expected) << testing::PrintToString(text);
        ASSERT_EQ(Text::length(text), expected.size());
    }
    EXPECT_THAT(Text::graphemes("a\r\né\r\n"), ElementsAre("a", "\r\n", "é", "\r\n"));
    EXPECT_THAT(Text::graphemes("\r\r\n\n"), ElementsAre("\r", "\r\n", "\n"));
}

TEST(CaseFolding, TextsEqualWhenOnlyLetterCaseDiffers) {
    const std::vector<std::tuple<std::string, std::string, bool>> cases{
        {"Deep Work", "deep work", true},
        {"a", "", false},
        {"é", "e\u0301", true},
        {"é", "e", false},
        {"STRASSE", "straße", true},
        {"ΣΑΣ", "σας", true},
        {"I", "ı", false},
        {"@", "`", false},
        {std::string("a\0b", 3), std::string("A\0c", 3), false},
    };
    for (const auto& [a, b, equal] : cases) {
        EXPECT_EQ(Text::equalsIgnoringCase(a, b), equal) << a << " " << b;
        EXPECT_EQ(Text::equalsIgnoringCase(b, a), equal) << a << " " << b;
    }
}

TEST(CaseFolding, PartIsFoundByTheRulesOfTheLocale) {
    const std::vector<std::tuple<std::string, std::string, std::string, bool>> cases{
        {"Office Monitor 27", "office", "", true},
        {"Office Monitor 27", "MONITOR 27", "en_US", true},
        {"", "", "", true},
        {"Büro", "BÜRO", "de", true},
        {"Büro", "buro", "de", false},
        {"Büro", "bu", "de", false},
        {"DISPLAY", "display", "tr_TR", false},
        {"DISPLAY", "dısplay", "tr_TR", true},
        {"DİSPLAY", "display", "az", true},
        {"DISPLAY", "display", "no such locale", true},
    };
    for (const auto& [text, part, locale, found] : cases) {
        EXPECT_EQ(Text::containsIgnoringCase(text, part, locale), found) << text << part << locale;
    }
}

TEST(CaseFolding, RunsOfCombiningMarksCostNoMoreThanOtherText) {
    // Marks of falling class, which composing has to bring into order one by one.
    const std::string marks = test::repeated("\u0301\u0316", 250'000);
    EXPECT_TRUE(Text::equalsIgnoringCase("A" + marks, "a" + marks));
    EXPECT_FALSE(Text::containsIgnoringCase("a" + marks, "b"));
}

TEST(Collator, ListsNamesTheWayADesktopDoes) {
    const Text::Collator english("en_US");
    const char* ascending[] = {"_tool",  "-x",     "1Password", "2Do",     "10 Days", "App 2",
                               "app 10", "eclair", "Éclair",    "eclairs", "Zoo",     "Карты"};
    for (std::size_t i = 0; i + 1 < std::size(ascending); ++i) {
        EXPECT_EQ(english.compare(ascending[i], ascending[i + 1]), std::weak_ordering::less)
            << ascending[i] << " before " << ascending[i + 1];
        EXPECT_EQ(english.compare(ascending[i + 1], ascending[i]), std::weak_ordering::greater);
    }
    for (const auto& [a, b] : {std::pair{"mail", "MAIL"}, {"éa", "ÉA"}, {"x 007", "X 7"}}) {
        EXPECT_EQ(english.compare(a, b), std::weak_ordering::equivalent) << a << " and " << b;
    }
}

TEST(Collator, FollowsTheLanguage) {
    const auto less = [](const char* locale, const char* a, const char* b) {
        return Text::Collator(locale).compare(a, b) == std::weak_ordering::less;
    };
    EXPECT_TRUE(less("sv", "z", "ö"));
    EXPECT_TRUE(less("de", "ö", "z"));
    EXPECT_TRUE(less("cs", "hudba", "chat")); // "ch" is a letter of its own after h
    EXPECT_TRUE(less("en", "chat", "hudba"));
    EXPECT_TRUE(less("da", "z", "aabenraa")); // "aa" spells å, the last letter
    EXPECT_TRUE(less("et", "z", "t"));
    EXPECT_TRUE(less("no-such-locale-xyz", "a", "b"));
}

TEST(Collator, TheShortKeysAgreeWithTheGeneralPathInEveryLanguage) {
    std::mt19937 random(2);
    const std::string_view locales =
        "en en_US_POSIX de de_AT fr_CA sv da nb cs sk hr hu et lt lv cy th ja zh "
        "ru uk be bg sr mk kk mn root es@collation=traditional ";
    for (const auto part : std::views::split(locales, ' ')) {
        const std::string locale(part.begin(), part.end());
        const Text::Collator collator(locale);
        for (int i = 0; i < 2'000; ++i) {
            std::string a = randomPlain(random);
            std::string b = random() % 4 == 0 ? a : randomPlain(random);
            if (random() % 8 == 0) {
                std::swap(a, b);
                b += a.substr(a.size() / 2);
            }
            // Behind a letter that is not plain the same texts take the general path.
            EXPECT_EQ(collator.compare(a, b), collator.compare("字" + a, "字" + b))
                << locale << ": " << a << " | " << b;
        }
    }
}

TEST(Collator, NumbersOfAnyLengthCompareByValue) {
    const Text::Collator english("en");
    std::mt19937 random(3);
    for (int i = 0; i < 2'000; ++i) {
        const auto number = [&] {
            std::string out;
            // Past 254 digits the general path compares numbers piece by piece.
            for (unsigned left = random() % 2 == 0 ? random() % 4 : 250 + random() % 300; left > 0;
                 --left) {
                out.push_back("0019"[random() % 4]);
            }
            return out;
        };
        const std::string a = number();
        const std::string b = random() % 4 == 0 ? "0" + a : number();
        EXPECT_EQ(english.compare(a, b), english.compare("字" + a, "字" + b)) << a << " | " << b;
    }
}

TEST(Collator, TheSortedOrderIsThatOfCompareAndStable) {
    std::mt19937 random(4);
    const char* letters[] = {"é", "É", "ö", "Ａ", "ж", "字", "\xff", "\u0301"};
    for (const char* locale : {"en", "sv", "cs", "th"}) {
        const Text::Collator collator(locale);
        for (int round = 0; round < 40; ++round) {
            std::vector<std::string> names(random() % 60);
            for (std::string& name : names) {
                name = Text::prefix(randomPlain(random), 3);
                if (round % 2 == 0 && random() % 3 == 0) {
                    name.insert(name.size() / 2, letters[random() % std::size(letters)]);
                }
            }
            std::vector<std::size_t> expected(names.size());
            std::iota(expected.begin(), expected.end(), std::size_t{0});
            std::ranges::stable_sort(expected, [&](std::size_t a, std::size_t b) {
                return collator.compare(names[a], names[b]) < 0;
            });
            EXPECT_EQ(collator.sortedOrder(names), expected) << locale;
        }
    }
}

} // namespace
} // namespace vellory::support_tests
