// SPDX-License-Identifier: Apache-2.0
#include "Apps/AppDiscovery.h"

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Child.h"
#include "support/Lists.h"
#include "support/TemporaryFolder.h"

namespace vellory::apps_tests {
namespace {

namespace fs = std::filesystem;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

const Text::Collator english("en");

std::string xml(const std::string& members) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + members +
           "</dict></plist>";
}

std::string text(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
}

struct AppDiscoveryTest : testing::Test {
    TemporaryFolder folder;
    fs::path root = folder.path() / "Applications";

    /// An app below the root; `more` are further members of its property list.
    fs::path bundle(const std::string& place, const std::string& id, const std::string& more = "") {
        folder.write("Applications" / fs::path(place) / "Contents/Info.plist",
                     xml(text("CFBundleIdentifier", id) + more));
        return root / place;
    }

    std::vector<std::string> names(const AppDiscovery::Languages& languages = {}) const {
        return each(AppDiscovery::scan({root}, english, languages), &InstalledApp::name);
    }
};

TEST_F(AppDiscoveryTest, RootsAreTheSystemsTheUsersAndThoseOfOtherVolumes) {
    for (const char* volume : {"Zip", "Macintosh HD", "Backup", ".hidden"}) {
        fs::create_directories(folder.path() / "Volumes" / volume);
    }
    const fs::path volumes = folder.path() / "Volumes";
    EXPECT_THAT(AppDiscovery::defaultRoots("/Users/me", volumes),
                ElementsAre("/Applications", "/Applications/Utilities", "/Applications/Setapp",
                            "/System/Applications", "/System/Applications/Utilities",
                            "/System/Library/CoreServices/Applications", "/Users/me/Applications",
                            "/Users/me/Applications/Chrome Apps.localized",
                            volumes / "Backup/Applications", volumes / "Zip/Applications"));
    EXPECT_EQ(AppDiscovery::defaultRoots("/Users/me", volumes / "none").size(), 8);
}

TEST_F(AppDiscoveryTest, FindsAppsInARootAndInTheFoldersDirectlyBelowIt) {
    bundle("app 10.app", "ten");
    bundle("App 2.app", "two");
    bundle("Suite/Writer.app", "writer");
    bundle("Suite/Deep/Deep.app", "deep");
    bundle("App 2.app/Contents/Helper.app", "helper");
    bundle(".Hidden.app", "hidden");
    bundle("Suite/.Hidden.app", "hidden2");
    bundle("Tool.appex", "tool");
    bundle("beta.app.app", "beta");
    bundle("Input:Output.app", "io"); // typed as a slash
    EXPECT_THAT(names(), ElementsAre("App 2", "app 10", "beta", "Input/Output", "Writer"));
}

TEST_F(AppDiscoveryTest, TheFirstCopyOfAnAppWinsAndAppsOfOneNameStayInTheOrderOfTheRoots) {
    std::vector<fs::path> roots{folder.path() / "none"};
    const auto bundleIn = [&](const fs::path& place, const std::string& app,
                              const std::string& id) {
        folder.write(place / app / "Contents/Info.plist", xml(text("CFBundleIdentifier", id)));
    };
    for (const char* id : {"c", "a", "d", "b"}) {
        roots.push_back(folder.path() / id);
        bundleIn(id, "Chess.app", id);
        bundleIn(id, "Mail.app", "mail");
    }
    roots.push_back(roots[1]);
    const auto apps = AppDiscovery::scan(roots, english);
    EXPECT_THAT(each(apps, &InstalledApp::bundleID), ElementsAre("c", "a", "d", "b", "mail"));
    EXPECT_EQ(apps.back(), (InstalledApp{"mail", "Mail", fs::canonical(roots[1]) / "Mail.app"}));
}

TEST_F(AppDiscoveryTest, ALinkGivesTheNameAndItsTargetThePlace) {
    folder.write("Store/1.2/Inner.app/Contents/Info.plist", xml(text("CFBundleIdentifier", "x")));
    fs::create_directories(root);
    fs::create_directory_symlink("../Store/1.2/Inner.app", root / "Shown.app");
    fs::create_directory_symlink("nowhere.app", root / "Broken.app");
    fs::create_directory_symlink(".", root / "Loop");
    const auto apps = AppDiscovery::scan({root}, english);
    ASSERT_EQ(apps.size(), 1);
    EXPECT_EQ(apps[0].name, "Shown");
    EXPECT_EQ(apps[0].url, fs::canonical(folder.path()) / "Store/1.2/Inner.app");
}

TEST_F(AppDiscoveryTest, OnlyBundlesThatCanBeLaunchedAreApps) {
    bundle("Plain.app", "plain");
    bundle("Front.app", "front", "<key>LSBackgroundOnly</key><false/>");
    bundle("Zero.app", "zero", text("LSBackgroundOnly", "0"));
    bundle("Agent.app", "agent", "<key>LSUIElement</key><true/>");
    bundle("Background.app", "b1", "<key>LSBackgroundOnly</key><true/>");
    bundle("BackgroundOne.app", "b2", "<key>LSBackgroundOnly</key><integer>1</integer>");
    bundle("BackgroundYes.app", "b3", text("LSBackgroundOnly", "YES"));
    bundle("Nameless.app", "");
    folder.write("Applications/NoId.app/Contents/Info.plist", xml(text("CFBundleName", "NoId")));
    folder.write("Applications/NumberId.app/Contents/Info.plist",
                 xml("<key>CFBundleIdentifier</key><integer>7</integer>"));
    folder.write("Applications/Flat.app/Info.plist", xml(text("CFBundleIdentifier", "flat")));
    folder.write("Applications/File.app", xml(text("CFBundleIdentifier", "file")));
    fs::create_directories(root / "Empty.app/Contents");
    EXPECT_THAT(names(), ElementsAre("Agent", "Flat", "Front", "Plain", "Zero"));
}

TEST_F(AppDiscoveryTest, BadPropertyListsHideTheirBundleOnly) {
    const std::string good = xml(text("CFBundleIdentifier", "x"));
    folder.write("Applications/Cut.app/Contents/Info.plist", good.substr(0, good.size() / 2));
    folder.write("Applications/List.app/Contents/Info.plist", "<plist><array/></plist>");
    folder.write("Applications/Empty.app/Contents/Info.plist", "");
    ASSERT_EQ(::mkfifo((root / "Empty.app/Info.plist").c_str(), 0600), 0); // would wait for ever
    bundle("Good.app", "good");
    EXPECT_THAT(names(), ElementsAre("Good"));
}

TEST_F(AppDiscoveryTest, ARootThatCannotBeListedContributesNothing) {
    bundle("Good.app", "good");
    bundle("Closed/App.app", "closed");
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(root / "Closed", fs::perms::none);
    folder.write("file", "");
    const int found = inChild([&] {
        const bool isNobody = becomeNobody();
        const auto apps =
            AppDiscovery::scan({root / "Closed", folder.path() / "file", "", root}, english);
        return isNobody && apps.size() == 1 && apps[0].name == "Good";
    });
    EXPECT_EQ(found, true);
    fs::permissions(root / "Closed", fs::perms::owner_all);
}

TEST_F(AppDiscoveryTest, ABundleGoesByItsLocalizedNameUntilItsFileIsRenamed) {
    const auto localize = [&](const std::string& app, const std::string& spelling,
                              const std::string& name) {
        folder.write("Applications/" + app + "/Contents/Resources/" + spelling +
                         ".lproj/InfoPlist.strings",
                     xml(text("CFBundleDisplayName", name)));
    };
    bundle("Calculator.app", "calc", text("CFBundleName", "Calculator"));
    localize("Calculator.app", "de", "Rechner");
    localize("Calculator.app", "pt_BR", "Calculadora");
    bundle("My Notes.app", "notes", text("CFBundleDisplayName", "Notes"));
    localize("My Notes.app", "de", "Notizen");
    bundle("Maps.app", "maps", text("CFBundleDisplayName", "Maps") + text("CFBundleName", "Other"));
    folder.write("Applications/Maps.app/Contents/Resources/InfoPlist.loctable",
                 xml("<key>de</key><dict>" + text("CFBundleName", "Karten") + "</dict>"));

    EXPECT_THAT(names(), ElementsAre("Calculator", "Maps", "My Notes"));
    EXPECT_THAT(names({"de-AT", "en"}), ElementsAre("Karten", "My Notes", "Rechner"));
    EXPECT_THAT(names({"ja", "pt-BR"}), ElementsAre("Calculadora", "Maps", "My Notes"));
    EXPECT_THAT(names({"", "../de", "x/../de"}), ElementsAre("Calculator", "Maps", "My Notes"));
}

} // namespace
} // namespace vellory::apps_tests
