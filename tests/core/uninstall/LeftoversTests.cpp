// SPDX-License-Identifier: Apache-2.0
#include "Uninstall/Leftovers.h"

#include <fcntl.h>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Uninstall/UninstallReport.h"
#include "support/Child.h"
#include "support/Lists.h"
#include "support/TemporaryFolder.h"

namespace vellory::Leftovers {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* id = "com.example.app";

class LeftoversTest : public testing::Test {
  protected:
    fs::path library(const std::string& path) const { return home_ / "Library" / path; }

    void makeFile(const fs::path& path, std::size_t bytes = 1) const {
        folder_.write(path, std::string(bytes, 'x'));
    }

    void makeFolders(const std::vector<std::string>& paths) const {
        for (const std::string& path : paths) {
            fs::create_directories(library(path));
        }
    }

    /// What is found, as "kind: path under Library".
    std::vector<std::string> found(const std::string& bundleID, const std::string& name) const {
        return test::each(Leftovers::find(bundleID, name, home_), [&](const Item& item) {
            return item.kind + ": " + item.url.lexically_relative(library("")).string();
        });
    }

    const TemporaryFolder folder_;
    const fs::path home_ = fs::canonical(folder_.path());
};

TEST_F(LeftoversTest, PlacesAreListedInTheirOrder) {
    makeFolders({"Application Support/com.example.app", "Caches/com.example.app",
                 "HTTPStorages/com.example.app", "WebKit/com.example.app",
                 "Saved Application State/com.example.app.savedState", "Containers/com.example.app",
                 "Application Scripts/com.example.app", "Application Support/My App", "Logs/My App",
                 "Caches/My App", "Group Containers/TEAM.com.example.app",
                 "Group Containers/com.example.app", "Application Support/com.example.apps",
                 "Logs/com.example.app"});
    makeFile(library("HTTPStorages/com.example.app.binarycookies"));
    makeFile(library("Preferences/com.example.app.plist"));
    makeFile(library("Cookies/com.example.app.binarycookies"));
    makeFile(library("LaunchAgents/com.example.app.helper.plist"));
    makeFile(library("LaunchAgents/com.example.app.plist"));

    EXPECT_THAT(
        found(id, " My App\n"),
        ElementsAre(
            "App data: Application Support/com.example.app", "Cache: Caches/com.example.app",
            "Web data: HTTPStorages/com.example.app",
            "Cookies: HTTPStorages/com.example.app.binarycookies",
            "Web data: WebKit/com.example.app", "Settings: Preferences/com.example.app.plist",
            "Saved windows: Saved Application State/com.example.app.savedState",
            "Sandbox container: Containers/com.example.app",
            "Scripts: Application Scripts/com.example.app",
            "Cookies: Cookies/com.example.app.binarycookies",
            "App data: Application Support/My App", "Logs: Logs/My App", "Cache: Caches/My App",
            "Login helper: LaunchAgents/com.example.app.helper.plist",
            "Login helper: LaunchAgents/com.example.app.plist",
            "Shared data: Group Containers/TEAM.com.example.app",
            "Shared data: Group Containers/com.example.app"));
}

TEST_F(LeftoversTest, EveryFindTellsItsEvidence) {
    makeFolders({"Caches/com.example.app", "Caches/Example",
                 "Group Containers/TEAM.com.example.app", "Group Containers/com.example.app",
                 "Group Containers/com.example.app.shared",
                 "Group Containers/com.example.application", "Group Containers/TEAMcom.example.app",
                 "Group Containers/com.example"});
    makeFile(library("LaunchAgents/com.example.app.plist"));
    using enum Evidence;
    EXPECT_THAT(test::each(Leftovers::find(id, "Example", home_),
                           [](const Item& item) {
                               return std::pair(item.url.filename().string(), item.evidence);
                           }),
                ElementsAre(std::pair("com.example.app", identifier), std::pair("Example", name),
                            std::pair("com.example.app.plist", identifier),
                            std::pair("TEAM.com.example.app", prefixedIdentifier),
                            std::pair("com.example.app", identifier),
                            std::pair("com.example.app.shared", identifierAndMore),
                            std::pair("com.example.application", longerIdentifier)));
}

TEST_F(LeftoversTest, AMalformedIdentifierFindsNothing) {
    using namespace std::string_literals;
    const std::string ids[] = {"",      "a.b",      "abcd",     "....",         "com.",
                               ".com",  "com..app", "..",       "com.a\n",      "com.a\0b"s,
                               "../..", "a/b.c",    "/etc/x.y", "com.x/../../y"};
    for (const std::string& name : ids) {
        if (!name.contains('/') && !name.contains('\0')) {
            makeFolders({"Application Support/" + name});
        }
    }
    makeFile(library("LaunchAgents/com.other.plist"));
    makeFolders({"Application Support/com.a", "x.y"});
    for (const std::string& name : ids) {
        EXPECT_THAT(found(name, "Example"), IsEmpty()) << name;
    }
}

TEST_F(LeftoversTest, PatternsInAnIdentifierAreOrdinaryLetters) {
    makeFolders({"Caches/com.example.app", "Group Containers/com.example.app"});
    EXPECT_THAT(found("com.*", "App data"), IsEmpty());
    EXPECT_THAT(found("com.example.ap[p]", "App data"), IsEmpty());
    EXPECT_THAT(found("COM.EXAMPLE.APP", "App data"), IsEmpty());
}

TEST_F(LeftoversTest, ANameThatSaysNothingOrIsNoFileNameIsNotUsed) {
    fs::create_directories(home_ / "Documents");
    const std::string names[] = {"",
                                 "  ",
                                 "X",
                                 "Up",
                                 "éa",
                                 "..",
                                 "/",
                                 "*",
                                 "app",
                                 "APPS",
                                 "Helper",
                                 "LAUNCHER",
                                 "update",
                                 "Updater",
                                 "installer",
                                 "Uninstaller",
                                 "Setup",
                                 " setup ",
                                 "../../Documents",
                                 "/Library",
                                 "a/..",
                                 "Caches/.."};
    for (const std::string& name : names) {
        if (!name.contains('/')) {
            makeFolders({"Application Support/" + name});
        }
        EXPECT_THAT(found(id, name), IsEmpty()) << name;
    }
    makeFolders({"Logs/Helpers", "Logs/été"});
    EXPECT_THAT(found(id, "Helpers"), ElementsAre("Logs: Logs/Helpers"));
    EXPECT_THAT(found(id, "été"), ElementsAre("Logs: Logs/été"));
}

TEST_F(LeftoversTest, AnAppNamedLikeItsIdentifierIsListedOnce) {
    makeFolders(
        {"Application Support/com.example.app", "Caches/com.example.app", "Logs/com.example.app"});
    EXPECT_THAT(found(id, id),
                ElementsAre("App data: Application Support/com.example.app",
                            "Cache: Caches/com.example.app", "Logs: Logs/com.example.app"));
}

TEST_F(LeftoversTest, LinksAreListedButNeverFollowed) {
    makeFile(home_ / "Documents/novel", 1'000'000);
    makeFolders({"Caches", "Containers/com.example.app"});
    fs::create_symlink(home_ / "Documents", library("Caches/com.example.app"));
    fs::create_symlink(home_ / "Documents", library("Containers/com.example.app/Documents"));
    fs::create_symlink("/nowhere", library("Caches/Example"));
    const auto items = Leftovers::find(id, "Example", home_);
    ASSERT_EQ(items.size(), 3U);
    for (const Item& item : items) {
        EXPECT_LT(item.bytes, 100'000) << item.url;
    }
}

TEST_F(LeftoversTest, AFolderThatIsALinkOutOfTheHomeIsSkipped) {
    const fs::path home = home_ / "home";
    fs::create_directories(home_ / "elsewhere/com.example.app");
    fs::create_directories(home / "moved/com.example.app");
    fs::create_directories(home / "Library");
    fs::create_symlink(home_ / "elsewhere", home / "Library/Caches");
    fs::create_symlink(home_ / "elsewhere", home / "Library/Group Containers");
    fs::create_symlink("../moved", home / "Library/WebKit");
    const auto items = Leftovers::find(id, "Example", home);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].id(), (home / "Library/WebKit/com.example.app").string());
}

TEST_F(LeftoversTest, AHomeThatIsMissingOrRelativeFindsNothing) {
    EXPECT_THAT(Leftovers::find(id, "Example", home_ / "missing"), IsEmpty());
    EXPECT_THAT(Leftovers::find(id, "Example", ""), IsEmpty());
    EXPECT_THAT(Leftovers::find(id, "Example", "home"), IsEmpty());
}

TEST_F(LeftoversTest, SizeIsWhatEverythingInsideTakesOnDisk) {
    EXPECT_EQ(Leftovers::size(home_ / "missing"), 0);
    EXPECT_EQ(Leftovers::size(home_), 0) << "an empty folder has nothing inside";

    makeFile(home_ / "one", 10'000);
    struct stat info{};
    ASSERT_EQ(::stat((home_ / "one").c_str(), &info), 0);
    const std::int64_t one = info.st_blocks * 512;
    EXPECT_GE(one, 10'000);
    EXPECT_EQ(Leftovers::size(home_ / "one"), one);
    EXPECT_EQ(Leftovers::size(home_), one);

    fs::create_hard_link(home_ / "one", home_ / "same");
    EXPECT_EQ(Leftovers::size(home_), one) << "a file with two names takes its space once";

    std::ofstream(home_ / "sparse").close();
    fs::resize_file(home_ / "sparse", 1'000'000'000);
    EXPECT_LT(Leftovers::size(home_), one + 1'000'000) << "holes take no space";

    ASSERT_EQ(::mkfifo((home_ / "pipe").c_str(), 0600), 0);
    EXPECT_LT(Leftovers::size(home_), one + 1'000'000) << "a pipe is not opened";
}

TEST_F(LeftoversTest, SizeReachesTheBottomOfAnyDepth) {
    // Deeper than a path can spell and than files may be open; beside it, folders to come back to.
    const int levels = 100;
    const std::string down(100, 'd');
    rlimit usual{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &usual), 0);
    const rlimit few{.rlim_cur = levels / 2, .rlim_max = usual.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    const fs::path top = home_ / "deep";
    fs::create_directory(top);
    int folder = ::open(top.c_str(), O_RDONLY | O_DIRECTORY);
    std::int64_t files = 0;
    for (int level = 0; level < levels; ++level) {
        for (const char* name : {down.c_str(), "side"}) {
            ASSERT_EQ(::mkdirat(folder, name, 0700), 0);
        }
        const int side = ::openat(folder, "side", O_RDONLY | O_DIRECTORY);
        const int file = ::openat(side, "file", O_WRONLY | O_CREAT, 0600);
        ASSERT_EQ(::write(file, "x", 1), 1);
        struct stat info{};
        ASSERT_EQ(::fstat(file, &info), 0);
        files += info.st_blocks * 512;
        ::close(file);
        ::close(side);
        const int next = ::openat(folder, down.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(folder);
        folder = next;
    }
    ::close(folder);
    struct stat info{};
    ASSERT_EQ(::stat((top / down).c_str(), &info), 0);
    EXPECT_EQ(Leftovers::size(top), files + 2 * levels * info.st_blocks * 512);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &usual), 0);
}

TEST_F(LeftoversTest, UnreadablePlacesAreSkipped) {
    makeFile(library("Caches/com.example.app/secret/file"), 100'000);
    makeFolders({"LaunchAgents", "WebKit/com.example.app"});
    fs::permissions(home_, fs::perms::all);
    fs::permissions(library("Caches/com.example.app/secret"), fs::perms::none);
    fs::permissions(library("LaunchAgents"), fs::perms::none);
    const int skipped = test::inChild([&] {
        const bool isNobody = test::becomeNobody();
        const auto items = Leftovers::find(id, "Example", home_);
        return isNobody && items.size() == 2 && items[0].bytes < 100'000;
    });
    EXPECT_EQ(skipped, true);
    fs::permissions(library("Caches/com.example.app/secret"), fs::perms::owner_all);
    fs::permissions(library("LaunchAgents"), fs::perms::owner_all);
}

TEST(CanUninstall, NotTheSystemAndNotThisProgram) {
    const std::pair<InstalledApp, bool> cases[] = {
        {{"com.applesauce.app", "Sauce", "/Applications/Sauce.app"}, true},
        {{"com.example.app", "App", "/Systems/App.app"}, true},
        {{"com.example.app", "App", "/System/Applications/App.app"}, false},
        {{"com.example.app", "App", "/Applications/../System/App.app"}, false},
        {{"com.apple.Safari", "Safari", "/Applications/Safari.app"}, false},
        {{"com.quorvel.vellory", "vellory", "/Applications/vellory.app"}, false},
        {{"com.quorvel.vellory2", "vellory", "/Applications/vellory.app"}, true},
    };
    for (const auto& [app, can] : cases) {
        EXPECT_EQ(canUninstall(app), can) << app.bundleID << " " << app.url;
    }
}

} // namespace
} // namespace vellory::Leftovers

namespace vellory::Uninstall {
namespace {

TEST(UninstallReport, OnlyNothingMovedIsAFailure) {
    EXPECT_EQ(report("Editor", {0, "It is locked."}),
              Report(Failure{"Couldn't move Editor to the Trash",
                             "It is locked.\n\nYou can drag it to the Trash in Finder instead."}));
    EXPECT_EQ(report("Editor", {3, "One is locked."}),
              Report(Success{"Editor moved to the Trash (3 items)", "trash", 1.8}));
    EXPECT_EQ(report("Editor", {1, {}}),
              Report(Success{"Editor moved to the Trash (1 items)", "trash", 1.8}));
}

} // namespace
} // namespace vellory::Uninstall
