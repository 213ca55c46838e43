// SPDX-License-Identifier: Apache-2.0
#include "Search/PreparedNames.h"

#include <algorithm>
#include <random>

#include <gmock/gmock.h>

#include "Search/FuzzySearch.h"
#include "Support/Text.h"
#include "support/Lists.h"
#include "support/SlowFuzzySearch.h"

namespace vellory::search_tests {
namespace {

using FuzzySearch::Match;
using FuzzySearch::PreparedNames;
using testing::Each;
using testing::ElementsAre;
using testing::Field;

/// Texts from a few characters each, so that most pairs share some and every rule gets its turn.
class RandomTexts {
  public:
    RandomTexts(unsigned seed, std::vector<std::string> alphabet)
        : random_(seed), alphabet_(std::move(alphabet)) {}

    std::string next(std::size_t longest) {
        std::string out;
        for (std::size_t length = random_() % (longest + 1); length > 0; --length) {
            out += alphabet_[random_() % alphabet_.size()];
        }
        return out;
    }

    /// A query likely to match `name`: part of it, damaged now and then.
    std::string queryFor(const std::string& name) {
        auto characters = slow::characters(name);
        if (characters.empty() || random_() % 4 == 0) {
            return next(6);
        }
        characters.erase(characters.begin(),
                         characters.begin() +
                             static_cast<std::ptrdiff_t>(random_() % characters.size()));
        characters.resize(1 + random_() % characters.size());
        for (auto edits = random_() % 3; edits > 0; --edits) {
            std::swap(characters[random_() % characters.size()],
                      characters[random_() % characters.size()]);
        }
        std::string out;
        for (const std::string& character : characters) {
            out += character;
        }
        return out;
    }

  private:
    std::mt19937 random_;
    std::vector<std::string> alphabet_;
};

const std::vector<std::string> plain{"a", "b", "c", "A", "B", "C", "s", "1", " ", "-", ".", "_"};
const std::vector<std::string> mixed{
    // Characters of one code point, of several, and what joins others or is none.
    "a",    "B",           "1",  " ",    "-",      "é",      "ß",  "İ",       "Σ",
    "ж",    "Ж",           "日", "한",   "ᄒ",     "ᅡ",      "क",  "E\u0301", "ｶﾞ",
    "की",   "👩‍💻", "🇩🇪", "\r\n", "\u0301", "\u200D", "\r", "\n",      "\xED\xA0\x80",
    "\xFF", "\xC3"};

TEST(PreparedNames, ScoresAsTheObviousRulesDo) {
    for (const auto& alphabet : {plain, mixed}) {
        RandomTexts texts(1, alphabet);
        for (int round = 0; round < 4000; ++round) {
            const std::string name = texts.next(14);
            const std::string query = texts.queryFor(name);
            ASSERT_EQ(FuzzySearch::score(query, name), slow::score(query, name))
                << testing::PrintToString(query) << " in " << testing::PrintToString(name);
        }
    }
    // The rules by themselves, on texts of a few characters: most differ by little.
    RandomTexts texts(5, {"a", "b", "👩‍💻"});
    for (int round = 0; round < 4000; ++round) {
        const std::string a = texts.next(5);
        const std::string b = texts.next(5);
        const auto first = slow::characters(a);
        const auto second = slow::characters(b);
        ASSERT_EQ(FuzzySearch::subsequenceGaps(a, b), slow::gaps(first, second)) << a << ' ' << b;
        ASSERT_EQ(FuzzySearch::editDistanceAtMostOne(a, b), slow::oneEditApart(first, second))
            << a << ' ' << b;
    }
}

/// The same text in Cyrillic letters, which take the way of all that is not ASCII.
std::string inCyrillic(std::string_view text) {
    const std::pair<char, std::string_view> letters[] = {
        {'a', "а"}, {'b', "б"}, {'c', "ц"}, {'A', "А"}, {'B', "Б"}, {'C', "Ц"}, {'s', "с"}};
    std::string out;
    for (const char c : text) {
        const auto* letter =
            std::ranges::find(letters, c, &std::pair<char, std::string_view>::first);
        letter != std::end(letters) ? out.append(letter->second) : out.append(1, c);
    }
    return out;
}

TEST(PreparedNames, AsciiTakesAShorterWayToTheSameScore) {
    RandomTexts texts(2, plain);
    for (int round = 0; round < 4000; ++round) {
        const std::string name = texts.next(20);
        const std::string query = texts.queryFor(name);
        ASSERT_EQ(FuzzySearch::score(query, name),
                  FuzzySearch::score(inCyrillic(query), inCyrillic(name)))
            << query << " in " << name;
    }
}

TEST(PreparedNames, ManyNamesRankAsEachScoresAlone) {
    RandomTexts texts(3, plain);
    RandomTexts others(4, mixed);
    std::vector<std::string> names;
    PreparedNames prepared;
    for (int i = 0; i < 300; ++i) {
        names.push_back(i % 3 == 0 ? others.next(10) : texts.next(10));
        prepared.add(names.back());
    }
    for (int round = 0; round < 60; ++round) {
        const std::string query = texts.queryFor(names[static_cast<std::size_t>(round) * 5]);
        if (Text::trimmed(query).empty()) {
            continue;
        }
        std::vector<Match> expected;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (const auto score = slow::score(query, names[i])) {
                expected.push_back({.index = i, .score = *score});
            }
            ASSERT_EQ(prepared.score(query, i), slow::score(query, names[i]));
        }
        std::ranges::stable_sort(expected, std::greater{}, &Match::score);
        ASSERT_EQ(prepared.rank(query), expected) << query;
    }
}

TEST(PreparedNames, CharactersOfSeveralCodePointsAreOneCharacter) {
    PreparedNames names;
    for (const auto* name : {"👩‍💻 Work", "👩 Home", "👨‍💻 Work", "की", "क"}) {
        names.add(name);
    }
    EXPECT_THAT(names.rank("👩‍💻"), ElementsAre(Match{.index = 0, .score = 900 - 5}));
    EXPECT_THAT(names.rank("क"), ElementsAre(Match{.index = 4, .score = 1000}));
    EXPECT_THAT(names.rank("👩‍👩‍👧"), ElementsAre()); // in no name
}

TEST(PreparedNames, TextsOfAnyLengthAndShapeHaveAnOutcome) {
    static constexpr std::size_t length = 100'000;
    const auto repeated = [](std::string_view text) { return test::repeated(text, length); };
    // Whatever is tried first must not be tried again from every place.
    const std::string same = repeated("a");
    const std::string nearly = same.substr(0, length / 2) + "bb";
    EXPECT_EQ(FuzzySearch::score(nearly, same + "c"), std::nullopt);
    EXPECT_EQ(FuzzySearch::score(same.substr(1), same), 900 - 1);
    EXPECT_EQ(FuzzySearch::score("b", same + "b"), 600 - 99);
    EXPECT_EQ(FuzzySearch::score("b", repeated("a ") + "b"), 800 - 99);
    EXPECT_EQ(FuzzySearch::score(repeated("日") + "本", repeated("日") + "語"), 300);
    EXPECT_EQ(FuzzySearch::score(repeated("日").substr(0, length) + "日本", repeated("日")),
              std::nullopt);
    EXPECT_EQ(FuzzySearch::score(repeated("aaab ").substr(1), repeated("abab ")), std::nullopt);
    // Accents without letters, of two classes that Unicode keeps apart, are nothing.
    EXPECT_EQ(FuzzySearch::score("a", repeated("\u0301\u0316")), std::nullopt);
    EXPECT_EQ(FuzzySearch::score(repeated("\u0301\u0316"), "a"), 0);
    EXPECT_EQ(FuzzySearch::score("x", "x" + repeated("\u0301\u0316")), 1000);
    // Halves of surrogate pairs read as replacement characters.
    EXPECT_EQ(FuzzySearch::score("\xED\xA0\x80", "\xED\xB0\x80"), 1000);
    EXPECT_EQ(FuzzySearch::score("a", repeated("\xED\xA0\x80")), std::nullopt);
    EXPECT_EQ(FuzzySearch::score("a", repeated("\u200D") + "a"), 600 - 2); // all joined to one
}

} // namespace
} // namespace vellory::search_tests
