// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Search/MatchedLetters.h"

namespace vellory::FuzzySearch {
namespace {

/// `name` with its matched letters in brackets.
std::string marked(const std::string& query, const std::string& name) {
    std::string out;
    std::size_t done = 0;
    for (const Run& run : matchedLetters(query, name)) {
        out += name.substr(done, run.begin - done) + "[" + name.substr(run.begin, run.length) + "]";
        done = run.begin + run.length;
    }
    return out + name.substr(done);
}

TEST(MatchedLetters, AreThoseOfTheRuleByWhichTheNameScores) {
    struct Case {
        const char* query;
        const char* name;
        const char* expected;
    };
    const std::vector<Case> cases{
        {"saf", "Safari", "[Saf]ari"},
        {"code", "Visual Studio Code", "Visual Studio [Code]"},
        {"vsc", "Visual Studio Code", "[V]isual [S]tudio [C]ode"},
        {"vscvs", "Visual Studio Code", "[V]isual [S]tudio [C]ode"}, // the first letters twice over
        {"pb", "PhotoBooth", "[P]hoto[B]ooth"},
        {"oto", "Photo Booth", "Ph[oto] Booth"},
        {"otob", "Photo Booth", "Ph[oto] [B]ooth"},
        {"sfaari", "Safari", "Safari"}, // a typo: no letter is sure
        {"", "Safari", "Safari"},
        {"  saf ", "Safari", "[Saf]ari"},
        {"saf", "  Safari", "  [Saf]ari"},
        {"a-b", "Made a-b", "Made [a-b]"}, // more than a word is no beginning of one
    };
    for (const Case& each : cases) {
        EXPECT_EQ(marked(each.query, each.name), each.expected) << each.query;
    }
}

TEST(MatchedLetters, AreWholeCharactersAsTheyAreWritten) {
    EXPECT_EQ(marked("cafe", "Café au lait"), "[Café] au lait");
    EXPECT_EQ(marked("cafe", "Cafe\u0301"), "[Cafe\u0301]");
    EXPECT_EQ(marked("ｐｈｏ", "Photos"), "[Pho]tos");
    EXPECT_EQ(marked("strass", "Straße"), "[Straß]e") << "one written letter that compares as two";
    EXPECT_EQ(marked("муз", "Музыка"), "[Муз]ыка");
    EXPECT_EQ(marked("א", "שלום א"), "שלום [א]");
    EXPECT_EQ(marked("👩‍🚀", "Go 👩‍🚀!"), "Go [👩‍🚀]!");
}

TEST(MatchedLetters, SurviveWhatIsNoName) {
    EXPECT_TRUE(matchedLetters("a", "").empty());
    EXPECT_TRUE(matchedLetters("a", "\u0301\u0301").empty());
    EXPECT_TRUE(matchedLetters("a", "\xFF\xFE").empty());
    EXPECT_TRUE(matchedLetters(std::string(100'000, 'a'), "Safari").empty());
    EXPECT_TRUE(matchedLetters("a", std::string(100'000, 'a')).empty()) << "nobody reads that";
}

} // namespace
} // namespace vellory::FuzzySearch
