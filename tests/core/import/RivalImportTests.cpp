// SPDX-License-Identifier: Apache-2.0
#include "Import/RivalImport.h"

#include <gmock/gmock.h>

#include "CaseFolders.h"
#include "Import/BackupReader.h"
#include "support/Lists.h"

namespace vellory::RivalImport {
namespace {

namespace fs = std::filesystem;
using test::ImportCase;
using test::repeated;
using test::TemporaryFolder;
using test::testApps;
using test::TestDatabase;
using testing::ElementsAre;

std::string nameOf(ImportError::Kind kind) {
    return kind == ImportError::Kind::unreadable ? "unreadable" : "nothingFound";
}

const std::string launchNextTable =
    "CREATE TABLE ZPAGEENTRYDATA (Z_PK INTEGER PRIMARY KEY, ZPAGEINDEX INTEGER, ZPOSITION INTEGER,"
    " ZKIND VARCHAR, ZAPPPATH VARCHAR, ZFOLDERNAME VARCHAR, ZAPPPATHS BLOB);";

class LaunchNextCases : public testing::TestWithParam<ImportCase> {};

TEST_P(LaunchNextCases, ComesOutAsTheCaseSays) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "Data.store";
    GetParam().makeDatabase(file, launchNextTable);
    EXPECT_EQ(test::drawn(launchNext(file, testApps), nameOf), GetParam().expected());
}

INSTANTIATE_TEST_SUITE_P(, LaunchNextCases, testing::ValuesIn(test::importCases("launchnext")),
                         test::caseName);

class BackupCases : public testing::TestWithParam<ImportCase> {};

TEST_P(BackupCases, ComesOutAsTheCaseSays) {
    EXPECT_EQ(test::drawn(importFile(GetParam().input(), testApps), nameOf), GetParam().expected());
}

INSTANTIATE_TEST_SUITE_P(, BackupCases, testing::ValuesIn(test::importCases("backup")),
                         test::caseName);

/// The first page, or the kind of error.
std::string drawn(const Result& result) {
    return result ? test::drawn(result->pages.at(0)) : nameOf(result.error().kind);
}

TEST(RivalImport, TextsThatNameAnApp) {
    struct Case {
        std::string text;
        std::optional<BundleID> app;
        std::string asked; ///< what the resolver was asked; nothing when it was not
    };
    const std::vector<Case> cases{
        {"com.example.Safari", "com.example.Safari", ""},
        {" \n\tcom.example.Safari\xC2\xA0", "com.example.Safari", ""},
        {"two.parts", {}, ""},
        {"a.b.", {}, ""},
        {".a.b.c", {}, ""},
        {"com.example.under_score", {}, ""},
        {"", {}, ""},
        {"com.example.app", "com.example.app", "com.example.app"},
        {"/Applications/Mail.app", "org.test.mail", "/Applications/Mail.app"},
        {"/Applications/Mail.app/", "org.test.mail", "/Applications/Mail.app/"},
        {"/Applications/Mail.app/Contents", {}, ""},
        {"file:///Applications/My%20Notes.app/", "org.test.mynotes", "/Applications/My Notes.app/"},
        {"file://localhost/Applications/Mail.app", "org.test.mail", "/Applications/Mail.app"},
        {"file:///Applications/Mail.app?a#b", "org.test.mail", "/Applications/Mail.app"},
        {"file:///Applications/My Notes.app", "org.test.mynotes", "/Applications/My Notes.app"},
        {"file:///Applications/%zz.app", {}, "file:///Applications/%zz.app"},
        {"file://com.example.Safari", {}, ""},
        {"FILE:///Applications/Mail.app", {}, "FILE:///Applications/Mail.app"},
        {std::string("/Applications/a\0b.app", 21), {}, ""},
        {"/Applications/" + std::string(5000, 'x') + ".app", {}, ""},
        {"/Applications/Nobody Knows.app", {}, "/Applications/Nobody Knows.app"},
    };
    for (const Case& expected : cases) {
        std::string asked;
        const auto app = resolve(expected.text, [&](const std::string& path) {
            asked = path;
            return testApps(path);
        });
        EXPECT_EQ(app, expected.app) << expected.text;
        EXPECT_EQ(asked, expected.asked) << expected.text;
    }
    EXPECT_EQ(resolve("/a.app", [](const auto&) { return ""; }), std::nullopt);
}

TEST(RivalImport, ResolverIsAskedALimitedNumberOfTimes) {
    int asked = 0;
    std::string backup = "[" + repeated("\"/a.app\",", maxLookups + 10) + "\"com.example.an.app\"]";
    const auto layout = layoutInBackup(backup, [&](const auto&) {
        ++asked;
        return std::nullopt;
    });
    EXPECT_EQ(asked, maxLookups);
    EXPECT_EQ(drawn(layout), "com.example.an.app");
}

TEST(RivalImport, BundleTellsItsOwnIdentifier) {
    const TemporaryFolder folder;
    const std::string list = "<plist><dict><key>CFBundleIdentifier</key>%</dict></plist>";
    const auto put = [&](const std::string& file, const std::string& value) {
        folder.write(file, std::string(list).replace(list.find('%'), 1, value));
    };
    put("A.app/Contents/Info.plist", "<string>com.example.a</string>");
    put("Number.app/Contents/Info.plist", "<integer>3</integer>");
    put("Empty.app/Contents/Info.plist", "<string></string>");
    folder.write("Broken.app/Contents/Info.plist", "?");
    fs::create_directory(folder.path() / "Bare.app");
    const auto idOf = [&](const char* name) {
        return bundleIDAtPath((folder.path() / name).string());
    };
    EXPECT_EQ(idOf("A.app"), "com.example.a");
    EXPECT_EQ(idOf("A.app/"), "com.example.a");
    for (const char* name : {"Number.app", "Empty.app", "Broken.app", "Bare.app", "Missing.app"}) {
        EXPECT_EQ(idOf(name), std::nullopt) << name;
    }
}

TEST(RivalImport, LaunchersAreDetectedByAnyOfTheirPlaces) {
    const TemporaryFolder home;
    const fs::path support = home.path() / "Library/Application Support";
    EXPECT_TRUE(detected(home.path()).empty());
    fs::create_directories(support / "LaunchNext"); // without its database
    fs::create_directories(support / "LaunchMe");
    fs::create_directories(home.path() /
                           "Library/Containers/com.launchie.app/Data/Library/Application Support");
    fs::create_directories(support / "BuhoLaunchpad");
    EXPECT_THAT(detected(home.path()),
                ElementsAre(Source::launchie, Source::buho, Source::launchMe));
    home.write("Library/Application Support/LaunchNext/Data.store", "");
    fs::create_directories(support / "AppGrid");
    fs::create_directories(support / "LaunchOS");
    EXPECT_THAT(detected(home.path()), testing::ElementsAreArray(allSources));
}

TEST(RivalImport, PlacesAreTriedUntilOneGivesApps) {
    const TemporaryFolder home;
    const std::string support = "Library/Application Support/";
    const std::string container = "Library/Containers/com.launchie.app/Data/" + support;
    const auto imported = [&](Source source) {
        return drawn(importLayout(source, home.path(), testApps));
    };
    EXPECT_EQ(imported(Source::launchie), "nothingFound");
    home.write(support + "Launchie/a.json", "[]");
    EXPECT_EQ(imported(Source::launchie), "nothingFound");
    home.write(container + "b.json", "[\"com.example.from.container\"]");
    EXPECT_EQ(imported(Source::launchie), "com.example.from.container");
    home.write(support + "Launchie/a.json", "[\"com.example.from.support\"]");
    EXPECT_EQ(imported(Source::launchie), "com.example.from.support");

    home.write(support + "LaunchNext/Data.store", "[\"com.example.no.database\"]");
    EXPECT_EQ(imported(Source::launchNext), "nothingFound");
}

TEST(RivalImport, FolderIsSearchedForTheLargestBackupWithApps) {
    const TemporaryFolder folder;
    const auto imported = [&] { return drawn(importFile(folder.path(), testApps)); };
    EXPECT_EQ(imported(), "nothingFound");
    folder.write("notes.txt", "[\"com.example.other.extension\"]" + std::string(5000, ' '));
    EXPECT_EQ(imported(), "nothingFound");
    folder.write("small.json", "[\"com.example.small.one\"]");
    EXPECT_EQ(imported(), "com.example.small.one");
    folder.write("below/further/large.BACKUP",
                 "[\"com.example.large.one\"]" + std::string(500, ' '));
    EXPECT_EQ(imported(), "com.example.large.one");
    folder.write("empty.plist", "[]" + std::string(1000, ' '));
    folder.write("broken.launchie", std::string(2000, '['));
    EXPECT_EQ(imported(), "com.example.large.one");
    // Equal in size: the path decides.
    folder.write("a.json", "[\"com.example.equal.one\"]" + std::string(500, ' '));
    EXPECT_EQ(imported(), "com.example.equal.one");
}

TEST(RivalImport, FolderSearchEndsAndStaysInside) {
    const TemporaryFolder folder;
    folder.write("inside/a.json", "[\"com.example.inside.a\"]");
    folder.write("outside/large.json", "[\"com.example.outside.a\"]" + std::string(500, ' '));
    fs::create_directory_symlink("..", folder.path() / "inside/up");
    fs::create_directory_symlink(".", folder.path() / "inside/self");
    fs::create_symlink("nowhere", folder.path() / "inside/dangling.json");
    fs::create_directory(folder.path() / "inside/folder.json");
    EXPECT_EQ(drawn(importFile(folder.path() / "inside", testApps)), "com.example.inside.a");
    // What the user chose may itself be a link.
    fs::create_directory_symlink("inside", folder.path() / "chosen");
    EXPECT_EQ(drawn(importFile(folder.path() / "chosen", testApps)), "com.example.inside.a");
}

TEST(RivalImport, ChosenFileIsReadByItsExtension) {
    const TemporaryFolder folder;
    const auto imported = [&](const fs::path& file) { return drawn(importChosen(file, testApps)); };
    TestDatabase(folder.path() / "Data.store")
        .run(launchNextTable +
             "INSERT INTO ZPAGEENTRYDATA VALUES (1, 0, 0, 'app', 'com.example.an.app', '', '')");
    TestDatabase(folder.path() / "Empty.store").run(launchNextTable);
    fs::copy_file(folder.path() / "Data.store", folder.path() / "Data.backup");
    EXPECT_EQ(imported(folder.path() / "Data.store"), "com.example.an.app");
    EXPECT_EQ(imported(folder.path() / "Empty.store"), "nothingFound");
    EXPECT_EQ(imported(folder.path() / "Data.backup"), "unreadable");
    EXPECT_EQ(imported(folder.write("export", "[\"com.example.an.app\"]")), "com.example.an.app");
    EXPECT_EQ(imported(folder.path() / "missing.json"), "unreadable");
    EXPECT_EQ(imported(folder.path() / "missing.store"), "unreadable");
}

TEST(RivalImport, NestingPastTheLimitIsUnreadable) {
    struct Form {
        std::string head;
        std::string open;
        std::string app;
        std::string close;
        std::string tail;
    };
    const std::string app = "\"com.example.an.app\"";
    const std::string inXml = "<string>com.example.an.app</string>";
    const Form forms[] = {{"", "[", app, "]", ""},
                          {"<plist>", "<array>", inXml, "</array>", "</plist>"},
                          {"", "[{\"apps\":", app, "}]", ""},
                          {"{\"x\":", "[", app, "]", "}"}, // where nobody looks for apps
                          {"", "[", "", "", ""},
                          {"<plist>", "<array>", "", "", ""}};
    const auto imported = [](const Form& form, std::size_t depth) {
        return drawn(layoutInBackup(form.head + repeated(form.open, depth) + form.app +
                                        repeated(form.close, depth) + form.tail,
                                    testApps));
    };
    for (const Form& form : forms) {
        EXPECT_EQ(imported(form, 300), "unreadable") << form.head << form.open;
        EXPECT_EQ(imported(form, 100'000), "unreadable") << form.head << form.open;
    }
    EXPECT_EQ(imported(forms[0], 200), "com.example.an.app");
    EXPECT_EQ(imported(forms[1], 200), "com.example.an.app");
}

TEST(RivalImport, MoreAppsThanFitAreUnreadable) {
    const std::string backup = "[" + repeated("\"a.b.c\",", 1'200'000) + "1]";
    EXPECT_EQ(drawn(layoutInBackup(backup, testApps)), "unreadable");
}

TEST(RivalImport, LaunchNextRowsEndAtTheLimit) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "Data.store";
    const std::string paths = "[" + repeated("\"a.b.c\",", 199'999) + "\"a.b.c\"]";
    TestDatabase(file).run(launchNextTable +
                           "INSERT INTO ZPAGEENTRYDATA (ZPAGEINDEX, ZKIND, ZAPPPATHS)"
                           " SELECT 0, 'folder', '" +
                           paths + "' FROM (VALUES (1), (2), (3))");
    const auto layout = launchNext(file, testApps);
    ASSERT_TRUE(layout);
    EXPECT_GT(layout->appCount(), 0U);
    EXPECT_LE(layout->appCount(), 400'000U); // past 300,000 no further row is read
}

} // namespace
} // namespace vellory::RivalImport
