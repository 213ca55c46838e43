// SPDX-License-Identifier: Apache-2.0
#include "Support/Text.h"

#include <array>
#include <random>

#include <gmock/gmock.h>

namespace vellory::support_tests {
namespace {

using testing::ElementsAre;

std::string utf8(char32_t c) {
    const auto tail = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    const auto head = [](char32_t bits) { return static_cast<char>(bits); };
    if (c < 0x80) {
        return {head(c)};
    }
    if (c < 0x800) {
        return {head(0xC0 | c >> 6), tail(c)};
    }
    if (c < 0x10000) {
        return {head(0xE0 | c >> 12), tail(c >> 6), tail(c)};
    }
    return {head(0xF0 | c >> 18), tail(c >> 12), tail(c >> 6), tail(c)};
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

} // namespace
} // namespace vellory::support_tests
