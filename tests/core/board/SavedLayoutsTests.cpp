// SPDX-License-Identifier: Apache-2.0
#include "Board/SavedLayouts.h"

#include <gmock/gmock.h>

#include "support/Boards.h"
#include "support/Lists.h"
#include "support/TemporaryFolder.h"

namespace vellory::board_tests {
namespace {

using test::app;
using test::board;
using test::folder;
using testing::ElementsAre;
using testing::IsEmpty;

const Text::Collator american("en_US");

TEST(SavedLayouts, BoardIsSavedReplacedAndRemovedByItsName) {
    const TemporaryFolder home;
    const SavedLayouts layouts(home.path() / "new" / "SavedLayouts");
    EXPECT_EQ(layouts.load("Work"), std::nullopt);
    EXPECT_TRUE(layouts.remove("Work")); // missing is no error
    EXPECT_THAT(layouts.names(american), IsEmpty());

    Board first = board({app("a"), folder(1, "Games", {"b", "c"})});
    first.hidden = {"d"};
    first.renames = {{"a", "Ä"}};
    const Board second = board({app("x")});
    ASSERT_TRUE(layouts.save(second, "Work"));
    ASSERT_TRUE(layouts.save(first, "Work"));
    ASSERT_TRUE(layouts.save(second, "Home"));
    EXPECT_EQ(layouts.load("Work"), first);
    EXPECT_TRUE(layouts.remove("Work"));
    EXPECT_EQ(layouts.load("Work"), std::nullopt);
    EXPECT_EQ(layouts.load("Home"), second);
}

TEST(SavedLayouts, NamesAreListedAsADesktopListsThem) {
    const TemporaryFolder home;
    const SavedLayouts layouts(home.path());
    for (const char* name :
         {"work 10", "Work 2", "Éclair", "zebra", "eclipse", ".hidden", "work"}) {
        ASSERT_TRUE(layouts.save({}, name));
    }
    // What is no saved layout: other files, folders, and names that lead to another file.
    home.write("notes.txt", "");
    home.write(".json", "{}");
    home.write("a:b.json", "{}");
    home.write("tab\t.json", "{}");
    home.write("bad\xff.json", "{}");
    std::filesystem::create_directory(home.path() / "folder.json");
    EXPECT_THAT(layouts.names(american),
                ElementsAre(".hidden", "Éclair", "eclipse", "work", "Work 2", "work 10", "zebra"));
}

TEST(SavedLayouts, FileNameIsTheNameWithoutWhatAFileNameCannotHold) {
    const std::pair<std::string, std::string> cases[] = {
        {"Work/Home", "Work-Home.json"},
        {"a:b/c", "a-b-c.json"},
        {"", "Layout.json"},
        {"..", "...json"},
        {"../../etc/passwd", "..-..-etc-passwd.json"},
        {".hidden", ".hidden.json"},
        {std::string("a\0b\nc", 5), "a-b-c.json"},
        {"bad\xff", "bad\uFFFD.json"},
        {"Büro 🏢", "Büro 🏢.json"},
    };
    for (const auto& [name, file] : cases) {
        EXPECT_EQ(SavedLayouts::fileName(name), file);
    }
}

TEST(SavedLayouts, AnyNameCanBeSavedLoadedAndStaysInTheFolder) {
    const TemporaryFolder home;
    const SavedLayouts layouts(home.path() / "SavedLayouts");
    const std::string longName(10'000, 'x');
    const std::string names[] = {"",
                                 ".",
                                 "..",
                                 "../up",
                                 "/etc/x",
                                 std::string(1, '\0'),
                                 ".leading",
                                 "bad\xff",
                                 longName,
                                 longName + "y",
                                 test::repeated("👩‍👩‍👧", 100),
                                 "e" + std::string(10'000, '\xCC')};
    std::uint32_t number = 0;
    for (const std::string& name : names) {
        const Board saved = board({app("app"), folder(++number, "f", {"x"})});
        ASSERT_TRUE(layouts.save(saved, name)) << name.substr(0, 20);
        EXPECT_EQ(layouts.load(name), saved) << name.substr(0, 20);
    }
    EXPECT_THAT(test::namesIn(home.path()), ElementsAre("SavedLayouts"));
    // All different, also the two long ones; what is listed can be loaded.
    const auto listed = layouts.names(american);
    EXPECT_EQ(listed.size(), std::size(names));
    for (const std::string& name : listed) {
        EXPECT_TRUE(layouts.load(name)) << name;
    }
}

TEST(SavedLayouts, FileThatIsNoBoardLoadsAsNothing) {
    const TemporaryFolder home;
    const SavedLayouts layouts(home.path());
    home.write("Work.json", "{\"tiles\":[]");
    EXPECT_EQ(layouts.load("Work"), std::nullopt);
    // A folder that is a file cannot be saved into.
    home.write("file", "");
    EXPECT_FALSE(SavedLayouts(home.path() / "file").save({}, "Work"));
}

TEST(SavedLayouts, DisplayIsKnownByItsLettersAndDigits) {
    const std::pair<const char*, const char*> cases[] = {
        {"LG UltraFine 5K", "display-lg-ultrafine-5k"},
        {"", "display-"},
        {"Büro (2)", "display-büro--2-"},
        {"../x", "display----x"},
        {"e\u0301cran", "display-e\u0301cran"},
        {"🖥", "display--"},
    };
    for (const auto& [display, key] : cases) {
        EXPECT_EQ(SavedLayouts::displayKey(display), key);
    }
    const std::string endless(10'000, 'x');
    EXPECT_LE(SavedLayouts::displayKey(endless).size(), 200U);
    EXPECT_NE(SavedLayouts::displayKey(endless), SavedLayouts::displayKey(endless + "y"));
}

} // namespace
} // namespace vellory::board_tests
