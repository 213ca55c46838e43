// SPDX-License-Identifier: Apache-2.0
#include "Import/RivalImport.h"

#include <gmock/gmock.h>

#include "CaseFolders.h"
#include "Import/BackupReader.h"
#include "support/BinaryPlist.h"
#include "support/TestDatabase.h"

namespace vellory::RivalImport {
namespace {

namespace fs = std::filesystem;
using test::ImportCase;
using test::TemporaryFolder;
using test::testApps;
using test::TestDatabase;
using testing::ElementsAre;

std::string nameOf(ImportError::Kind kind) {
    return kind == ImportError::Kind::unreadable ? "unreadable" : "nothingFound";
}

class LaunchNextCases : public testing::TestWithParam<ImportCase> {};

TEST_P(LaunchNextCases, ComesOutAsTheCaseSays) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "Data.store";
    TestDatabase(file).run(test::contentOf(GetParam().input()));
    test::expectOutcome(GetParam(), launchNext(file, testApps), nameOf);
}

INSTANTIATE_TEST_SUITE_P(, LaunchNextCases, testing::ValuesIn(test::importCases("launchnext")),
                         test::caseName);

class BackupCases : public testing::TestWithParam<ImportCase> {};

TEST_P(BackupCases, ComesOutAsTheCaseSays) {
    test::expectOutcome(GetParam(), importFile(GetParam().input(), testApps), nameOf);
}

INSTANTIATE_TEST_SUITE_P(, BackupCases, testing::ValuesIn(test::importCases("backup")),
                         test::caseName);

/// The apps of a layout in order, or the kind of error.
std::string drawn(const Result& result) {
    if (!result) {
        return nameOf(result.error().kind);
    }
    std::string out;
    for (const LayoutPage& page : result->pages) {
        for (const LayoutItem& item : page) {
            out += (out.empty() ? "" : " ") + (item.app() ? item.app()->bundleID : "[folder]");
        }
    }
    return out;
}

std::string repeated(std::string_view what, std::size_t count) {
    std::string out;
    out.reserve(what.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        out += what;
    }
    return out;
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
        {"a-b.C-1.0.x", "a-b.C-1.0.x", ""},
        {"two.parts", {}, ""},
        {"a.b.", {}, ""},
        {".a.b.c", {}, ""},
        {"a..b.c", {}, ""},
        {"com.example.under_score", {}, ""},
        {"com.example.é", {}, ""},
        {"com.example.a b", {}, ""},
        {"com.example.a\nb", {}, ""},
        {"", {}, ""},
        {"com.example.app", "com.example.app", "com.example.app"},
        {"example.app", {}, "example.app"},
        {"/Applications/Mail.app", "org.test.mail", "/Applications/Mail.app"},
        {"/Applications/Mail.app/", "org.test.mail", "/Applications/Mail.app/"},
        {"/Applications/Mail.APP", {}, ""},
        {"/Applications/Mail.app/Contents", {}, ""},
        {"file:///Applications/My%20Notes.app/", "org.test.mynotes", "/Applications/My Notes.app/"},
        {"file://localhost/Applications/Mail.app", "org.test.mail", "/Applications/Mail.app"},
        {"file:///Applications/Mail.app?a#b", "org.test.mail", "/Applications/Mail.app"},
        {"file:///Applications/F%C3%BC.app", "org.test.fü", "/Applications/Fü.app"},
        {"file:///Applications/My Notes.app", "org.test.mynotes", "/Applications/My Notes.app"},
        {"file:///Applications/%zz.app", {}, "file:///Applications/%zz.app"},
        {"file:///Applications/%FF.app", {}, "file:///Applications/%FF.app"},
        {"file:///Applications/%00.app", {}, "file:///Applications/%00.app"},
        {"file:///Applications/a.app%2", {}, ""},
        {"file://com.example.Safari", {}, ""},
        {"FILE:///Applications/Mail.app", {}, "FILE:///Applications/Mail.app"},
        {"https://example.com/Mail.app", {}, "https://example.com/Mail.app"},
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
}

TEST(RivalImport, AnEmptyAnswerOfTheResolverIsNone) {
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
    const std::string table = "CREATE TABLE ZPAGEENTRYDATA (ZPAGEINDEX, ZPOSITION, ZKIND, ZAPPPATH,"
                              " ZFOLDERNAME, ZAPPPATHS);";
    TestDatabase(folder.path() / "Data.store")
        .run(table +
             "INSERT INTO ZPAGEENTRYDATA VALUES (0, 0, 'app', 'com.example.an.app', '', '')");
    TestDatabase(folder.path() / "Empty.store").run(table);
    fs::copy_file(folder.path() / "Data.store", folder.path() / "Data.backup");
    EXPECT_EQ(imported(folder.path() / "Data.store"), "com.example.an.app");
    EXPECT_EQ(imported(folder.path() / "Empty.store"), "nothingFound");
    EXPECT_EQ(imported(folder.path() / "Data.backup"), "unreadable");
    EXPECT_EQ(imported(folder.write("export", "[\"com.example.an.app\"]")), "com.example.an.app");
    EXPECT_EQ(imported(folder.path() / "missing.json"), "unreadable");
    EXPECT_EQ(imported(folder.path() / "missing.store"), "unreadable");
}

TEST(RivalImport, NestingPastTheLimitIsUnreadable) {
    const auto json = [](std::size_t depth) {
        return repeated("[", depth) + "\"com.example.an.app\"" + repeated("]", depth);
    };
    const auto objects = [](std::size_t depth) {
        return repeated("[{\"apps\":", depth) + "\"com.example.an.app\"" + repeated("}]", depth);
    };
    const auto ignored = [](std::size_t depth) {
        return "{\"x\":" + repeated("[", depth) + repeated("]", depth) + "}";
    };
    const auto xml = [](std::size_t depth) {
        return "<plist>" + repeated("<array>", depth) + "<string>com.example.an.app</string>" +
               repeated("</array>", depth) + "</plist>";
    };
    const auto binary = [](std::size_t depth) {
        test::BinaryPlist list;
        auto top = list.addText("com.example.an.app");
        for (std::size_t i = 0; i < depth; ++i) {
            top = list.addArray({top});
        }
        return list.bytes(top);
    };
    for (const auto& [name, backup] :
         {std::pair("json", json(200)), {"xml", xml(200)}, {"binary", binary(200)}}) {
        EXPECT_EQ(drawn(layoutInBackup(backup, testApps)), "com.example.an.app") << name;
    }
    for (const std::size_t depth : {300U, 100'000U}) {
        for (const auto& [name, backup] : {std::pair("json", json(depth)),
                                           {"objects", objects(depth)},
                                           {"ignored", ignored(depth)},
                                           {"xml", xml(depth)},
                                           {"binary", binary(depth)},
                                           {"open json", repeated("[", depth)},
                                           {"open xml", repeated("<array>", depth)}}) {
            EXPECT_EQ(drawn(layoutInBackup(backup, testApps)), "unreadable") << name << depth;
        }
    }
}

TEST(RivalImport, BinaryListsThatReferToThemselvesAreUnreadable) {
    using test::BinaryPlist;
    BinaryPlist self;
    const auto app = self.addText("com.example.an.app");
    EXPECT_EQ(drawn(layoutInBackup(self.bytes(self.addArray({app, 1})), testApps)), "unreadable");
    BinaryPlist missing;
    missing.addText("com.example.an.app");
    EXPECT_EQ(drawn(layoutInBackup(missing.bytes(missing.addArray({0, 99})), testApps)),
              "unreadable");
    BinaryPlist key;
    const auto number = key.addInteger(1);
    EXPECT_EQ(drawn(layoutInBackup(key.bytes(key.addDictionary({{number, number}})), testApps)),
              "unreadable");

    // A list of two, of two, of two …: 2^40 apps if it were written out.
    BinaryPlist bomb;
    auto top = bomb.addText("com.example.an.app");
    for (int i = 0; i < 40; ++i) {
        top = bomb.addArray({top, top});
    }
    EXPECT_EQ(drawn(layoutInBackup(bomb.bytes(top), testApps)), "unreadable");
}

TEST(RivalImport, MoreAppsThanFitAreUnreadable) {
    const std::string backup = "[" + repeated("\"a.b.c\",", 1'200'000) + "1]";
    EXPECT_EQ(drawn(layoutInBackup(backup, testApps)), "unreadable");
}

TEST(RivalImport, LaunchNextRowsEndAtTheLimit) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "Data.store";
    const std::string paths = "[" + repeated("\"a.b.c\",", 199'999) + "\"a.b.c\"]";
    TestDatabase(file).run("CREATE TABLE ZPAGEENTRYDATA (ZPAGEINDEX, ZPOSITION, ZKIND, ZAPPPATH,"
                           " ZFOLDERNAME, ZAPPPATHS);"
                           "INSERT INTO ZPAGEENTRYDATA SELECT 0, column1, 'folder', NULL, NULL, '" +
                           paths + "' FROM (VALUES (1), (2), (3))");
    const auto layout = launchNext(file, testApps);
    ASSERT_TRUE(layout);
    EXPECT_GT(layout->appCount(), 0U);
    EXPECT_LE(layout->appCount(), 400'000U); // past 300,000 no further row is read
}

} // namespace
} // namespace vellory::RivalImport
