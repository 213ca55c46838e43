// SPDX-License-Identifier: Apache-2.0
#include "Board/AutoFolders.h"

#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Boards.h"
#include "support/TemporaryFolder.h"

namespace vellory::board_tests {
namespace {

using namespace test;

TEST(AutoFolders, ACategoryHasOneFolderTitleOrNone) {
    const std::pair<const char*, const char*> titles[] = {
        {"public.app-category.developer-tools", "Developer"},
        {"developer-tools", "Developer"}, // without the prefix: as it stands
        {"public.app-category.social-networking", "Social"},
        {"public.app-category.puzzle-games", "Games"},
        {"public.app-category.games", "Games"},
    };
    for (const auto& [category, title] : titles) {
        EXPECT_EQ(AutoFolders::folderTitleForCategory(category), title) << category;
    }
    for (const char* category : {"", "public.app-category.", "public.app-category.Video",
                                 "public.app-category.boardgames", "games-2", "video "}) {
        EXPECT_EQ(AutoFolders::folderTitleForCategory(category), std::nullopt) << category;
    }
    EXPECT_EQ(AutoFolders::folderTitleForCategory(std::nullopt), std::nullopt);
}

TEST(AutoFolders, GroupsAppsByTitleAndLeavesSmallGroupsLoose) {
    const std::map<BundleID, std::string> categories{
        {"xcode", "developer-tools"},
        {"vim", "developer-tools"},
        {"term", "developer-tools"},
        {"chess", "board-games"},
        {"go", "games"},
        {"photo", "photography"},
    };
    const auto category = [&](const InstalledApp& app) -> std::optional<std::string> {
        const auto found = categories.find(app.bundleID);
        return found == categories.end() ? std::nullopt : std::optional(found->second);
    };
    const std::vector<InstalledApp> apps{
        {"xcode", "xcode", "/Applications/xcode.app"},
        {"disk", "Disk", "/System/Applications/Utilities/Disk.app"},
        {"photo", "Photo 10", "/Applications/Photo.app"},
        {"vim", "Vim", "/Applications/Vim.app"},
        {"go", "Go", "/Applications/Go.app"},
        {"odd", "photo 2", "/Applications/Odd.app"},
        {"term", "Terminal", "/Applications/Utilities/Terminal.app"}, // in spite of its category
        {"chess", "Chess", "/Applications/Chess.app"},
        {"vim", "Vim", "/Volumes/Disk/Applications/Vim.app"},
    };
    const Text::Collator english("en");
    const auto made = [&](std::size_t minimum) {
        return AutoFolders::boardFor(apps, minimum, category, english, counting(1));
    };
    EXPECT_EQ(made(2),
              board({folder(1, "Developer", {"vim", "xcode"}), folder(2, "Games", {"chess", "go"}),
                     folder(3, "Utilities", {"disk", "term"}), app("odd"), app("photo")}));
    EXPECT_EQ(drawn(made(1)), "[Creative: photo] [Developer: vim xcode] [Games: chess go] "
                              "[Utilities: disk term] odd");
    EXPECT_EQ(drawn(made(3)), "chess disk go odd photo term vim xcode");
    EXPECT_EQ(AutoFolders::boardFor({}, 2, category, english, counting(1)), Board());
}

TEST(AutoFolders, TheCategoryIsWhatTheBundleDeclares) {
    const TemporaryFolder folder;
    const auto declared = [&](const std::string& value) {
        folder.write("a.app/Contents/Info.plist",
                     "<plist version=\"1.0\"><dict><key>LSApplicationCategoryType</key>" + value +
                         "</dict></plist>");
        return AutoFolders::categoryOf({"a", "A", folder.path() / "a.app"});
    };
    EXPECT_EQ(declared("<string>public.app-category.news</string>"), "public.app-category.news");
    EXPECT_EQ(declared("<integer>1</integer>"), std::nullopt);
    EXPECT_EQ(AutoFolders::categoryOf({"b", "B", folder.path() / "b.app"}), std::nullopt);
}

} // namespace
} // namespace vellory::board_tests
