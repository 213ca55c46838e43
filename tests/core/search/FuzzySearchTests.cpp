// SPDX-License-Identifier: Apache-2.0
#include "Search/FuzzySearch.h"

#include <gmock/gmock.h>

namespace vellory::search_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> ranked(std::string_view query, const std::vector<std::string>& names) {
    return FuzzySearch::rank(names, query, [](const std::string& name) { return name; });
}

/// Whether `query` lists `first` before `second`, whichever is given first.
bool ranksBefore(std::string_view query, const std::string& first, const std::string& second) {
    const auto leads = [&](const std::vector<std::string>& names) {
        return !names.empty() && names.front() == first;
    };
    return leads(ranked(query, {first, second})) && leads(ranked(query, {second, first}));
}

TEST(FuzzySearch, TiersAndWhatTheyDeduct) {
    struct Case {
        std::string_view query;
        std::string name;
        std::optional<int> score;
    };
    const std::string longName = "go" + std::string(200, 'x');
    const Case cases[] = {
        // Whole name, however it is written.
        {"safari", "Safari", 1000},
        {"cafe", "Café", 1000},
        {"ｆｉｎｄｅｒ", "Finder", 1000},
        // Beginning: only what the query leaves is deducted, and never more than 99.
        {"safari", "Safari Technology Preview", 900 - 19},
        {"go", longName, 900 - 99},
        // A later word: the whole name's length is deducted.
        {"code", "Visual Studio Code", 800 - 18},
        {"b", "a.b", 800 - 3},
        {"x", "go x" + longName, 800 - 99},
        {"code", "xcode .code", 800 - 11},
        // Initials of words, then of words inside words.
        {"vsc", "Visual Studio Code", 700},
        {"pb", "PhotoBooth", 700},
        {"im", "iMovie", 900 - 4},
        {"abab", "A B", 700},
        {"ops", "Obs PhotoStudio", 700},
        // Inside.
        {"otoshop", "Photoshop", 600 - 9},
        {"foo", "-foo", 600 - 4}, // its only word is the first
        // Characters in order, with some skipped; the first ones cost nothing.
        {"otob", "Photo Booth", 400 - 10},
        {"safri", "Safari", 400 - 10},
        {"xz", "aaax12345678901234567890123456789012345678901z", 400 - 300},
        // One typo at the beginning of the name or a word.
        {"sfaari", "Safari", 300},
        {"saafari", "Safari", 300},
        {"afarii", "Safari", std::nullopt},
        {"stduio", "Visual Studio Code", 300},
        {"кдое", "Студия Кодер", 300},
        {"cafż", "cafe", 300}, // ż counts as z
        // No match.
        {"asf", "Safari", std::nullopt}, // three characters are too few for a typo
        {"s", "", std::nullopt},
        {"", "", 0},
        {"\u0301", "Safari", 0}, // nothing but an accent is nothing
    };
    for (const Case& c : cases) {
        EXPECT_EQ(FuzzySearch::score(c.query, c.name), c.score) << c.query << " in " << c.name;
    }
}

TEST(FuzzySearch, PeopleFindWhatTheyTyped) {
    EXPECT_TRUE(ranksBefore("mail", "Mail", "Mailbox"));
    EXPECT_TRUE(ranksBefore("mail", "Mailbox", "Fast Mail"));
    EXPECT_TRUE(ranksBefore("ps", "Photo Studio", "Maps"));
    EXPECT_TRUE(ranksBefore("code", "XY Code", "Some Longer Name With Code"));
    EXPECT_TRUE(ranksBefore("code", "Some Longer Name With Code", "Xcode"));
    EXPECT_TRUE(ranksBefore("ff", "FileFinder", "Off"));
    EXPECT_TRUE(ranksBefore("off", "Office Suite", "Takeoff"));
    EXPECT_TRUE(ranksBefore("term", "Terminal", "Text Editor Manual"));
    EXPECT_TRUE(ranksBefore("studi", "Studio", "Stidio"));
    EXPECT_TRUE(ranksBefore("findr", "Finder", "Fender"));
    EXPECT_TRUE(ranksBefore("safari", "Safari", "Sfaari"));
}

TEST(FuzzySearch, RankDropsWhatDoesNotMatchAndKeepsTheGivenOrderAmongEquals) {
    EXPECT_THAT(ranked("no", {"Notes B", "Maps", "Notes A", "Piano", "Notes C"}),
                ElementsAre("Notes B", "Notes A", "Notes C", "Piano"));
    EXPECT_THAT(ranked("zzz", {"Maps", "Notes"}), IsEmpty());
    EXPECT_THAT(ranked("maps", {}), IsEmpty());
}

TEST(FuzzySearch, BlankQueryGivesAllItemsAsTheyAre) {
    for (const std::string_view blank : {"", "   ", "\t\n", "\u3000"}) {
        EXPECT_THAT(ranked(blank, {"b", "", "a"}), ElementsAre("b", "", "a"));
    }
}

TEST(FuzzySearch, CamelInitials) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"PhotoBooth", "pb"}, {"iMovie", "im"},    {"Visual Studio Code", "vsc"},
        {"TextEdit", "te"},   {"OBS", "o"},        {"OBS Studio", "os"},
        {"7zip", ""}, // a letter after a digit goes on with its word
        {"7-zip", "z"},       {"7Zip", "z"},       {"ÉditeurÀvant", "ea"},
        {"МойФайл", "мф"},    {"日本 語", "日語"}, {"", ""},
    };
    for (const auto& [name, initials] : cases) {
        EXPECT_EQ(FuzzySearch::camelInitials(name), initials) << name;
    }
}

} // namespace
} // namespace vellory::search_tests
