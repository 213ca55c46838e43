// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "MainLoop.h"
#include "platform/linux/desktop/LinuxFolderWatcher.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {
namespace {

namespace fs = std::filesystem;

class FolderWatcherTest : public testing::Test {
  protected:
    void watch(const std::vector<fs::path>& folders) {
        watcher.watch(folders, [this] { ++changes; });
    }
    /// Whether `change` is told of. Whatever else is under way is waited for first.
    bool tells(const std::function<void()>& change) {
        passesUnnoticed([] {});
        const int before = changes;
        change();
        return loop.runUntil([&] { return changes > before; });
    }
    /// Whether nothing is told of `change`: a watch that was made later has been told meanwhile of
    /// something that happened later.
    bool passesUnnoticed(const std::function<void()>& change) {
        const int before = changes;
        change();
        bool isOver = false;
        LinuxFolderWatcher later(loop);
        later.watch({beside.path()}, [&] { isOver = true; });
        beside.write("sign", "");
        return loop.runUntil([&] { return isOver; }) && changes == before;
    }

    MainLoop loop;
    TemporaryFolder folder;
    TemporaryFolder beside;
    LinuxFolderWatcher watcher{loop};
    int changes = 0;
};

TEST_F(FolderWatcherTest, TellsOfEntriesThatComeGoAndAreRewrittenInPlace) {
    const fs::path root = folder.path() / "applications";
    const fs::path file = root / "a.desktop";
    fs::create_directories(root / "wine");
    watch({root, root / "wine"});
    EXPECT_TRUE(tells([&] { folder.write("applications/a.desktop", "Name=A\n"); }));
    EXPECT_TRUE(tells([&] { std::fstream(file) << "Name=B\n"; }));
    EXPECT_TRUE(tells([&] { fs::rename(file, root / "b.desktop"); }));
    EXPECT_TRUE(tells([&] { fs::remove(root / "b.desktop"); }));
    EXPECT_TRUE(tells([&] { folder.write("applications/wine/c.desktop", ""); }));
    EXPECT_TRUE(passesUnnoticed([&] { contentOf(root / "wine/c.desktop"); }));
    watch({root});
    EXPECT_TRUE(passesUnnoticed([&] { folder.write("applications/wine/d.desktop", ""); }));
}

TEST_F(FolderWatcherTest, WaitsForAMissingFolderAlsoBelowMissingOnes) {
    const fs::path root = folder.path() / "share/applications";
    watch({root});
    EXPECT_TRUE(passesUnnoticed([&] { folder.write("recently-used.xbel", ""); }));
    EXPECT_TRUE(passesUnnoticed([&] { fs::create_directories(folder.path() / "share/icons"); }));
    EXPECT_TRUE(tells([&] { fs::create_directories(root); }));
    EXPECT_TRUE(tells([&] { folder.write("share/applications/a.desktop", ""); }));
    EXPECT_TRUE(passesUnnoticed([&] { folder.write("share/other", ""); }));
}

TEST_F(FolderWatcherTest, FollowsAFolderThatIsPutInThePlaceOfAnother) {
    const fs::path root = folder.path() / "applications";
    fs::create_directories(root);
    watch({root});
    EXPECT_TRUE(tells([&] { fs::remove_all(root); }));
    EXPECT_TRUE(tells([&] { fs::create_directories(root); }));
    EXPECT_TRUE(tells([&] { folder.write("applications/a.desktop", ""); }));
    EXPECT_TRUE(tells([&] {
        fs::remove_all(root);
        fs::create_directories(root); // before anyone looks
    }));
    EXPECT_TRUE(tells([&] { folder.write("applications/a.desktop", ""); }));
    EXPECT_TRUE(tells([&] { fs::rename(root, folder.path() / "away"); }));
    EXPECT_TRUE(passesUnnoticed([&] { folder.write("away/b.desktop", ""); }));
    EXPECT_TRUE(tells([&] { fs::rename(folder.path() / "away", root); }));
    EXPECT_TRUE(tells([&] { folder.write("applications/c.desktop", ""); }));
}

TEST_F(FolderWatcherTest, ManyFoldersCostNoMoreThanItsShare) {
    std::vector<fs::path> many;
    for (std::size_t i = 0; i <= LinuxFolderWatcher::mostFolders; ++i) {
        many.push_back(folder.path() / std::to_string(i));
        fs::create_directories(many.back());
    }
    watch(many);
    EXPECT_TRUE(tells([&] { std::ofstream(many.front() / "a.desktop"); }));
    EXPECT_TRUE(passesUnnoticed([&] { std::ofstream(many.back() / "a.desktop"); }));
}

} // namespace
} // namespace vellory::test
