// SPDX-License-Identifier: Apache-2.0
#include "Search/EmojiSearch.h"

#include <algorithm>

#include <gmock/gmock.h>

#include "support/Lists.h"

namespace vellory::search_tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Gt;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr std::size_t everything = 10'000;

std::vector<std::string> names(std::string_view query, std::size_t limit = everything) {
    return test::each(EmojiSearch::search(query, limit), &EmojiSearch::Hit::name);
}

bool preferred(std::string_view query, std::string_view first, std::string_view second) {
    const auto found = names(query);
    const auto a = std::ranges::find(found, first);
    const auto b = std::ranges::find(found, second);
    return a != found.end() && b != found.end() && a < b;
}

TEST(EmojiSearch, ListsWhatIsAnEmojiByItself) {
    const auto& all = EmojiSearch::all();
    EXPECT_EQ(all.front(), (EmojiSearch::Hit{"🌀", "cyclone"}));
    EXPECT_THAT(all, Contains(EmojiSearch::Hit{"⌚", "watch"}));
    EXPECT_THAT(all, Contains(EmojiSearch::Hit{"⭐", "white medium star"}));
    // The heavy heart is shown as text unless a variation selector follows.
    EXPECT_THAT(names("heavy black heart"), IsEmpty());
    const auto place = [&](std::string_view emoji) {
        return std::ranges::find(all, emoji, &EmojiSearch::Hit::emoji) - all.begin();
    };
    EXPECT_LT(place("🪐"), place("☔"));
    EXPECT_LT(place("☔"), place("⌚"));
    EXPECT_LT(place("⌚"), place("⭐"));
    EXPECT_EQ(place("⭕"), std::ssize(all) - 1);
}

TEST(EmojiSearch, WholeWordsComeFirstThenShorterNamesThenTheListsOrder) {
    EXPECT_TRUE(preferred(":heart", "heart with arrow", "smiling cat face with heart-shaped eyes"));
    EXPECT_TRUE(preferred(":heart", "beating heart", "heart with arrow"));
    EXPECT_TRUE(preferred(":sun", "sun with face", "sunflower"));
    // No name has "fac" as a whole word.
    const auto faces = EmojiSearch::search("fac", everything);
    EXPECT_THAT(faces, SizeIs(Gt(50U)));
    EXPECT_TRUE(std::ranges::is_sorted(faces, {}, [](const EmojiSearch::Hit& hit) {
        return std::pair(hit.name.size(), std::ranges::find(EmojiSearch::all(), hit));
    }));
}

TEST(EmojiSearch, EveryWordMustBeginAWordOfTheName) {
    EXPECT_THAT(names("hear"), Contains("broken heart"));
    EXPECT_THAT(names("eart"), Not(Contains("broken heart")));
    EXPECT_THAT(names(":Heart BROK"), ElementsAre("broken heart"));
    EXPECT_THAT(names("brok brok  heart heart"), ElementsAre("broken heart"));
    EXPECT_THAT(names("broken cyclone"), IsEmpty());
    EXPECT_THAT(names("heart-sh"), Contains("smiling face with heart-shaped eyes"));
    EXPECT_THAT(names("::  watch: "), Contains("watch"));
    EXPECT_THAT(names("日本"), IsEmpty());
}

TEST(EmojiSearch, BareColonListsTheFirstOnesAndTheLimitHolds) {
    EXPECT_THAT(EmojiSearch::search(":", 2),
                ElementsAre(EmojiSearch::all()[0], EmojiSearch::all()[1]));
    EXPECT_EQ(EmojiSearch::search(" : : ", everything), EmojiSearch::all());
    EXPECT_THAT(names(":heart", 3), SizeIs(3));
    EXPECT_THAT(names(":heart", 0), IsEmpty());
    EXPECT_THAT(names("", 1), ElementsAre("cyclone"));
}

TEST(EmojiSearch, LongQueriesHaveAnOutcome) {
    EXPECT_THAT(names(test::repeated("f \u0301 ", 25'000)), IsEmpty());
    EXPECT_THAT(names(std::string(100'000, 'f')), IsEmpty());
    EXPECT_EQ(names(std::string(100'000, ':'), 1), names(":", 1));
}

} // namespace
} // namespace vellory::search_tests
