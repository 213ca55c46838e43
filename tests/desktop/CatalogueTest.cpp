// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "DesktopSession.h"
#include "Search/AppKeywords.h"
#include "Support/Text.h"
#include "platform/linux/apps/CategoryMap.h"
#include "platform/linux/apps/LinuxAppCatalogue.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

std::string entry(const std::string& name, const std::string& more = "Exec=true\n") {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\n" + more;
}

/// Entries in a user's and two system's folders of a machine that has nothing else.
class CatalogueTest : public testing::Test {
  protected:
    SessionEnvironment environment(const std::string& desktops = "") const {
        const std::string base = folder.path().string();
        return {{"HOME=" + base + "/home", "XDG_DATA_DIRS=" + base + "/local:" + base + "/system",
                 "XDG_CURRENT_DESKTOP=" + desktops}};
    }
    void user(const std::string& name, const std::string& content) const {
        folder.write("home/.local/share/applications/" + name, content);
    }
    void local(const std::string& name, const std::string& content) const {
        folder.write("local/applications/" + name, content);
    }
    void system(const std::string& name, const std::string& content) const {
        folder.write("system/applications/" + name, content);
    }
    /// The roots that the test has made, without those of the machine it runs on.
    std::vector<fs::path> ownRoots() const {
        auto roots = catalogue->roots({});
        std::erase_if(roots, [&](const fs::path& root) {
            return !root.string().starts_with(folder.path().string());
        });
        return roots;
    }
    std::vector<InstalledApp> scan(const std::string& desktops = "") {
        entries = std::make_shared<DesktopEntries>(
            DesktopEntries::Options{environment(desktops), std::nullopt});
        catalogue.emplace(entries, "en");
        return catalogue->scan(ownRoots());
    }
    std::optional<std::string> nameOf(const BundleID& id) const {
        const auto app = catalogue->find(id);
        return app ? std::optional(app->name) : std::nullopt;
    }
    static std::vector<std::string> idsOf(const std::vector<InstalledApp>& apps) {
        std::vector<std::string> ids;
        std::ranges::transform(apps, std::back_inserter(ids), &InstalledApp::bundleID);
        std::ranges::sort(ids);
        return ids;
    }
    std::vector<std::string> names() {
        std::vector<std::string> names;
        std::ranges::transform(scan(), std::back_inserter(names), &InstalledApp::name);
        return names;
    }

    TemporaryFolder folder;
    std::shared_ptr<DesktopEntries> entries;
    std::optional<LinuxAppCatalogue> catalogue;
};

// Followed to the end, each of these has millions of ways through it.
TEST_F(CatalogueTest, FoldersAreLookedIntoOnceHoweverManyLinksLeadThere) {
    system("app.desktop", entry("app"));
    const fs::path root = folder.path() / "system/applications";
    for (int i = 0; i < 20; ++i) {
        fs::create_directory_symlink(".", root / ("self" + std::to_string(i)));
    }
    for (int level = 0; level < 6; ++level) {
        const fs::path from = root / ("level" + std::to_string(level));
        fs::create_directories(from);
        for (int i = 0; i < 20 && level < 5; ++i) {
            fs::create_directory_symlink("../level" + std::to_string(level + 1),
                                         from / std::to_string(i));
        }
    }
    system("level5/deep.desktop", entry("deep"));
    folder.write("elsewhere/linked.desktop", entry("linked"));
    fs::create_directory_symlink(folder.path() / "elsewhere", root / "a");
    EXPECT_THAT(idsOf(scan()), ElementsAre("a-linked", "app", "level5-deep"));
    EXPECT_EQ(catalogue->scannedFolders().size(), ownRoots().size() + 6U + 1U)
        << "the roots, the levels and what a link leads to";

    for (int i = 0; i < 600; ++i) {
        fs::create_directories(root / "many" / std::to_string(i));
    }
    EXPECT_THAT(idsOf(scan()), ElementsAre("app", "level5-deep"));
    EXPECT_LT(catalogue->scannedFolders().size(), 600U);
}

TEST_F(CatalogueTest, WhatIsReadAheadCountsOnlyWhileItIsTrue) {
    const auto threads = [] {
        return std::ranges::distance(fs::directory_iterator("/proc/self/task"));
    };
    const fs::path root = folder.path() / "ahead";
    const std::vector<fs::path> roots{root};
    const std::vector<fs::path> others{folder.path() / "other", folder.path() / "missing"};
    folder.write("ahead/first.desktop", entry("first"));
    folder.write("other/second.desktop", entry("second"));
    DesktopEntries({environment(), root}).read(roots); // GIO starts a thread of its own.
    const auto idsOf = [&](const std::vector<fs::path>& asked, const auto& meanwhile) {
        DesktopEntries read({environment(), root});
        const auto before = threads();
        read.readAhead();
        for (const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
             threads() > before && std::chrono::steady_clock::now() < end;) {
            std::this_thread::yield();
        }
        meanwhile();
        read.read(asked);
        std::vector<std::string> ids;
        for (const auto& [id, found] : read.lastRead()) {
            ids.push_back(id);
        }
        EXPECT_EQ(read.folders(), asked);
        return ids;
    };
    const auto nothing = [] {};
    EXPECT_THAT(idsOf(roots, nothing), ElementsAre("first"));
    EXPECT_THAT(idsOf(others, nothing), ElementsAre("second"));
    EXPECT_THAT(idsOf(roots, [&] { folder.write("ahead/third.desktop", entry("third")); }),
                ElementsAre("first", "third"));
    EXPECT_THAT(idsOf(roots, [&] { fs::remove_all(root); }), IsEmpty());
    EXPECT_THAT(idsOf(roots, [&] { folder.write("ahead/first.desktop", entry("first")); }),
                ElementsAre("first"));
}

TEST_F(CatalogueTest, OnlyWhatMenusWouldShowIsListed) {
    struct Row {
        const char* id;
        const char* lines;
        bool isShown;
    };
    const std::vector<Row> rows{
        {"plain", "Exec=true\n", true},
        {"arguments", "Exec=true --title \"a b\" %U\n", true},
        {"bus", "DBusActivatable=true\n", true},
        {"tried", "Exec=true\nTryExec=true\n", true},
        {"here", "Exec=true\nOnlyShowIn=Other;GNOME;\n", true},
        {"elsewhere-not", "Exec=true\nNotShowIn=Other;\n", true},
        {"no-exec", "", false},
        {"no-program", "Exec=vellory-no-such-program\n", false},
        {"try-fails", "Exec=true\nTryExec=/no/such/program\n", false},
        {"bad-exec", "Exec=true 'unbalanced\n", false},
        {"no-display", "Exec=true\nNoDisplay=true\n", false},
        {"hidden", "Exec=true\nHidden=true\n", false},
        {"elsewhere", "Exec=true\nOnlyShowIn=Other;\n", false},
        {"not-here", "Exec=true\nNotShowIn=GNOME;\n", false},
        {"link", "Type=Link\nURL=https://example.org\n", false},
    };
    for (const Row& row : rows) {
        system(std::string(row.id) + ".desktop", entry(row.id, row.lines));
    }
    const auto found = idsOf(scan("ubuntu:GNOME"));
    for (const Row& row : rows) {
        EXPECT_EQ(std::ranges::count(found, row.id), row.isShown ? 1 : 0) << row.id;
    }
    // What hides itself still has a name, for windows and layouts that mention it.
    EXPECT_EQ(nameOf("no-display"), "no-display");
    EXPECT_EQ(catalogue->find("hidden"), std::nullopt);
}

TEST_F(CatalogueTest, EarlierRootWinsAndHiddenMasks) {
    system("same.desktop", entry("System's"));
    local("same.desktop", entry("Local's"));
    user("same.desktop", entry("User's"));
    system("deleted.desktop", entry("Deleted"));
    user("deleted.desktop", "[Desktop Entry]\nHidden=true\n");
    system("kept.desktop", entry("Kept"));
    user("kept.desktop", "damaged");
    // A folder's name is part of the id; files come before folders.
    system("kde/games/chess.desktop", entry("Chess"));
    system("kde-games-chess.desktop", entry("The same id"));
    system("kde/games/go.desktop", entry("Go"));
    EXPECT_THAT(names(), ElementsAre("Go", "Kept", "The same id", "User's"));
    EXPECT_EQ(nameOf("kde-games-go"), "Go");
}

TEST_F(CatalogueTest, LinksToEntriesAreResolved) {
    const auto target = folder.write("elsewhere/tool.desktop", entry("Tool"));
    fs::create_directories(folder.path() / "system/applications");
    fs::create_symlink(target, folder.path() / "system/applications/tool.desktop");
    EXPECT_THAT(scan(), ElementsAre(InstalledApp{"tool", "Tool", target}));
}

TEST_F(CatalogueTest, NamesAreInTheUsersLanguageAndOrder) {
    setenv("LANGUAGE", "sv", 1);
    system("a.desktop", entry("App 10"));
    system("b.desktop", entry("app 2"));
    system("c.desktop", entry("Ändra"));
    system("d.desktop", entry("Zebra") + "Name[sv]=Bok\n");
    EXPECT_THAT(names(), ElementsAre("Ändra", "app 2", "App 10", "Bok"));
    unsetenv("LANGUAGE");
}

TEST_F(CatalogueTest, HostileEntriesDoNoHarm) {
    system("long.desktop", entry(std::string(1024 * 1024, 'x')));
    system("huge.desktop", entry("Huge") + "Comment=" + std::string(8 * 1024 * 1024, 'x') + "\n");
    system("controls.desktop", entry("a\\nb\x01\x1b[31m\xE2\x80\xAE"
                                     "c"));
    system("latin1.desktop", entry("Caf\xE9"));
    system("nameless.desktop", "[Desktop Entry]\nType=Application\nExec=true\nName=\\s\n");
    system("garbage.desktop", std::string("\x7f"
                                          "ELF\0\0\0",
                                          7));
    system("empty.desktop", "");
    system("new\nline.desktop", entry("New line"));
    ASSERT_EQ(mkfifo((folder.path() / "system/applications/pipe.desktop").c_str(), 0600), 0);
    fs::create_symlink("self.desktop", folder.path() / "system/applications/self.desktop");
    fs::create_directories(folder.path() / "system/applications/folder.desktop");
    const auto apps = scan();
    for (const InstalledApp& app : apps) {
        EXPECT_LE(app.name.size(), 500U) << app.bundleID;
        EXPECT_TRUE(Text::isValidUtf8(app.name)) << app.bundleID;
        EXPECT_EQ(app.name.find_first_of("\n\x01\x1b"), std::string::npos) << app.bundleID;
    }
    EXPECT_THAT(idsOf(apps), ElementsAre("controls", "latin1", "long", "nameless"));
    EXPECT_EQ(nameOf("controls"), "a b [31m c");
    EXPECT_EQ(nameOf("latin1"), "Caf\xEF\xBF\xBD");
    EXPECT_EQ(nameOf("nameless"), "nameless");
}

TEST_F(CatalogueTest, RootsAreTheSessionsThenTheSandboxesThenTheUsersOwn) {
    const LinuxAppCatalogue all(
        std::make_shared<DesktopEntries>(DesktopEntries::Options{environment(), std::nullopt}),
        "en");
    const std::string base = folder.path().string();
    EXPECT_THAT(all.roots({"/extra"}),
                ElementsAre(base + "/home/.local/share/applications", base + "/local/applications",
                            base + "/system/applications",
                            base + "/home/.local/share/flatpak/exports/share/applications",
                            "/var/lib/flatpak/exports/share/applications",
                            "/var/lib/snapd/desktop/applications", "/extra"));
    const LinuxAppCatalogue one(
        std::make_shared<DesktopEntries>(DesktopEntries::Options{environment(), "/only"}), "en");
    EXPECT_THAT(one.roots({"/extra"}), ElementsAre("/only"));
}

TEST_F(CatalogueTest, ActionsHaveNamesAndKeepTheirOrder) {
    system("app.desktop", entry("App") + "Actions=two;missing;nameless;one;\n"
                                         "[Desktop Action one]\nName=One\nExec=true\n"
                                         "[Desktop Action two]\nName=Two\nExec=true\n"
                                         "[Desktop Action nameless]\nExec=true\n");
    const auto apps = scan();
    ASSERT_EQ(apps.size(), 1U);
    EXPECT_THAT(catalogue->actions(apps[0]),
                ElementsAre(AppAction{"two", "Two"}, AppAction{"one", "One"}));
    EXPECT_THAT(catalogue->actions({"gone", "Gone", "/nowhere"}), IsEmpty());
}

TEST_F(CatalogueTest, WordsAreInTheUsersLanguageAndInEnglish) {
    setenv("LANGUAGE", "sv", 1);
    folder.write("system/mime/globs2", "# A comment\n80:image/png:*.png\n50:image/png:*.PNG\n"
                                       "50:image/png:*.apng:cs\n50:text/x-make:makefile\n"
                                       "50:application/x-tar:*.tar.gz\n50:broken\n:::\n");
    folder.write("system/mime/aliases", "image/x-png image/png\nbroken\n");
    folder.write("local/mime/globs2", "50:application/x-tar:*.tgz\n50:bad/one:*.[ab]\n");
    system("app.desktop", entry("Files") +
                              "Name[sv]=Filer\nGenericName=File Manager\nComment=Look at files\n"
                              "Comment[sv]=Titta på filer\nKeywords=folder;disk;\n"
                              "Keywords[sv]=mapp;\nCategories=System;FileManager;\n"
                              "MimeType=image/x-png;application/x-tar;text/x-make;no/such;\n");
    const auto apps = scan();
    ASSERT_EQ(apps.size(), 1U);
    const AppInfo info = catalogue->info(apps[0]);
    EXPECT_THAT(info.texts, ElementsAre("Filer", "Files", "File Manager", "mapp;", "folder;disk;",
                                        "Titta på filer", "Look at files"));
    const auto words = AppKeywords::keywords(apps[0].name, info.dictionary, info.texts);
    for (const char* word : {"filer", "files", "manager", "mapp", "folder", "disk", "titta", "look",
                             "utility", "image", "png", "apng", "tgz", "tar.gz"}) {
        EXPECT_TRUE(words.contains(word)) << word;
    }
    for (const char* word : {"makefile", "[ab]", "application"}) {
        EXPECT_FALSE(words.contains(word)) << word;
    }
    EXPECT_EQ(catalogue->info({"gone", "Gone", "/nowhere"}), AppInfo());
    unsetenv("LANGUAGE");
}

TEST_F(CatalogueTest, CategoryComesFromTheNarrowestDeclared) {
    struct Row {
        std::string declared;
        std::string expected; ///< without the prefix; "" for nothing
    };
    const std::vector<Row> rows{
        {"Graphics;2DGraphics;RasterGraphics;GTK;", "graphics-design"},
        {"GTK;AudioVideo;Player;Video;", "entertainment"},
        {"AudioVideo;Video;AudioVideoEditing;", "video"},
        {"Utility;Development;IDE;TextEditor;", "developer-tools"},
        {"Network;FileTransfer;Game;", "games"},
        {"Game;LogicGame;", "puzzle-games"},
        {"Education;Science;Math;", "education"},
        {"Network;", ""},
        {"GNOME;GTK;", ""},
        {"", ""},
    };
    for (const Row& row : rows) {
        system("app.desktop", entry("App") + "Categories=" + row.declared + "\n");
        const auto apps = scan();
        ASSERT_EQ(apps.size(), 1U);
        const auto expected = row.expected.empty()
                                  ? std::nullopt
                                  : std::optional("public.app-category." + row.expected);
        EXPECT_EQ(catalogue->category(apps[0]), expected) << row.declared;
    }
}

} // namespace
} // namespace vellory::test
