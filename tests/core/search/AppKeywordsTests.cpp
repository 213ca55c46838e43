// SPDX-License-Identifier: Apache-2.0
#include "Search/AppKeywords.h"

#include <map>
#include <random>

#include <gmock/gmock.h>

#include "Search/PurposeIndex.h"

namespace vellory::search_tests {
namespace {

using AppKeywords::Keywords;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;
using testing::UnorderedElementsAre;

PropertyList::Value text(std::string value) {
    return {std::move(value)};
}

PropertyList::Dictionary category(std::string value) {
    return {{"LSApplicationCategoryType", text(std::move(value))}};
}

TEST(AppKeywords, TokensAreRunsOfLettersAndDigitsOfTwoOrMore) {
    EXPECT_THAT(AppKeywords::tokens("Edit my Photos, v2 & C++!"),
                ElementsAre("edit", "my", "photos", "v2"));
    EXPECT_THAT(AppKeywords::tokens("Éditeur_d'images ＡＢ"),
                ElementsAre("éditeur", "images", "ａｂ"));
    EXPECT_THAT(AppKeywords::tokens("e\u0301 e\u0301a 写真編集 x"),
                ElementsAre("e\u0301a", "写真編集"));
    EXPECT_THAT(AppKeywords::tokens("\u0301\u0301 👩‍💻 \xED\xA0\x80\xFF"), IsEmpty());
}

TEST(AppKeywords, StemCutsTheFirstEndingThatLeavesEnough) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"editing", "edit"}, {"writers", "writ"},
        {"photos", "photo"}, {"bus", "bus"},
        {"boxes", "box"},    {"writer", "writ"},
        {"edited", "edit"},  {"sing", "sing"},
        {"uses", "use"},     {"users", "user"},
        {"notes", "not"},    {"maps", "map"},
        {"ing", "ing"},      {"", ""},
        {"éés", "éés"},      {"ééés", "ééé"},
        {"red", "red"},      {"news", "new"}};
    for (const auto& [word, stem] : cases) {
        EXPECT_EQ(AppKeywords::stem(word), stem) << word;
    }
}

TEST(AppKeywords, KeywordsComeFromNameCategoryDocumentsAndExtras) {
    const PropertyList::Dictionary info{
        {"LSApplicationCategoryType", text("public.app-category.weather")},
        {"CFBundleDocumentTypes",
         {PropertyList::Array{
             {PropertyList::Dictionary{{"CFBundleTypeExtensions",
                                        {PropertyList::Array{text("PNG"), text("*"), text("c")}}},
                                       {"CFBundleTypeName", text("Portable Image")}}},
             text("not a type"),
             {PropertyList::Dictionary{{"CFBundleTypeExtensions", text("gif")}}}}}}};
    EXPECT_THAT(AppKeywords::keywords("Rain 2 Go", info, {"storm-radar", ""}),
                UnorderedElementsAre("rain", "go", "weather", "forecast", "png", "c", "portable",
                                     "image", "storm", "radar"));
    EXPECT_THAT(AppKeywords::keywords("", {}), IsEmpty());
}

TEST(AppKeywords, CategoriesAddTheirWords) {
    const auto wordsOf = [](const std::string& name) {
        return AppKeywords::keywords("", category("public.app-category." + name));
    };
    EXPECT_THAT(wordsOf("weather"), UnorderedElementsAre("weather", "forecast"));
    EXPECT_THAT(wordsOf("social-networking"), IsSupersetOf({"chat", "video call"}));
    EXPECT_THAT(wordsOf("developer-tools"), SizeIs(12));
    EXPECT_EQ(wordsOf("puzzle-games"), wordsOf("games"));
    EXPECT_THAT(wordsOf("lifestyle"), IsEmpty());
    EXPECT_THAT(AppKeywords::keywords("", {{"LSApplicationCategoryType", {true}}}), IsEmpty());
}

TEST(AppKeywords, ScoreAsksForAllOfTwoWordsAndHalfOfMore) {
    const Keywords photography =
        AppKeywords::keywords("Lumen", category("public.app-category.photography"));
    const std::pair<std::string_view, int> cases[] = {
        {"edit photos", 2},
        {"editing photo", 2},
        {"edit my photos with an app", 2},
        {"edit songs", 0},                // one of two
        {"edit songs podcasts", 0},       // one of three needs two
        {"edit photos songs", 2},         // two of three
        {"edit songs mail chat", 0},      // one of four
        {"edit photo song mail chat", 0}, // two of five need three
        {"phot", 0},                      // part of a keyword
        {"lumen", 1},
        {"open the app", 0},
        {"", 0},
    };
    for (const auto& [query, score] : cases) {
        EXPECT_EQ(AppKeywords::score(query, photography), score) << query;
    }
}

TEST(PurposeIndex, FindsWhatScoresBestFirstAndKeepsTheOrderOfAddingAmongEquals) {
    PurposeIndex index;
    index.add({"music", "sound"});
    index.add({"photo", "edit"});
    index.add({"photos", "photo", "editing", "raw"});
    index.add({"edit", "photos", "video"});
    using Match = PurposeIndex::Match;
    EXPECT_THAT(index.search("edit photos"), ElementsAre(Match{1, 2}, Match{2, 2}, Match{3, 2}));
    EXPECT_THAT(index.search("edit photos video"),
                ElementsAre(Match{3, 3}, Match{1, 2}, Match{2, 2}));
    EXPECT_THAT(index.search("open the app"), IsEmpty());
    EXPECT_THAT(index.search("cooking"), IsEmpty());
}

TEST(PurposeIndex, QueriesOfTwoCharactersFindNothing) {
    PurposeIndex index;
    index.add({"tv"});
    EXPECT_THAT(index.search("tv"), IsEmpty());
    EXPECT_THAT(index.search("tvs"), IsEmpty()); // too short to be cut to "tv"
    EXPECT_THAT(index.search("my tv"), ElementsAre(PurposeIndex::Match{0, 1}));
    EXPECT_THAT(index.search(""), IsEmpty());
}

TEST(PurposeIndex, AgreesWithTheScoreOfEachApp) {
    const std::vector<std::string> words{"edit",  "editing", "photo",  "photos", "notes",
                                         "note",  "maps",    "map",    "the",    "open",
                                         "music", "write",   "writer", "tv"};
    std::mt19937 random(5);
    std::vector<Keywords> apps(40);
    PurposeIndex index;
    for (auto& app : apps) {
        for (int i = 0; i < 5; ++i) {
            app.insert(words[random() % words.size()]);
        }
        index.add(app);
    }
    for (int round = 0; round < 200; ++round) {
        std::string query = "my";
        for (auto count = random() % 6; count > 0; --count) {
            query += " " + words[random() % words.size()];
        }
        std::map<std::size_t, int> found;
        const auto matches = index.search(query);
        for (const auto& match : matches) {
            found[match.index] = match.score;
        }
        ASSERT_TRUE(std::ranges::is_sorted(matches, {}, [](const auto& match) {
            return std::pair(-match.score, match.index);
        })) << query;
        for (std::size_t i = 0; i < apps.size(); ++i) {
            const auto match = found.find(i);
            ASSERT_EQ(match != found.end() ? match->second : 0, AppKeywords::score(query, apps[i]))
                << query;
        }
    }
}

} // namespace
} // namespace vellory::search_tests
