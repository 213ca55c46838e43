// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/FocusReader.h"

#include <gmock/gmock.h>

#include "support/TemporaryFolder.h"

namespace vellory::workspaces_tests {
namespace {

using FocusReader::Mode;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string configurations = R"({"data":[
    {"modeConfigurations":{
        "com.example.work":{"mode":{"name":"Work","symbol":"briefcase"},"other":[1]},
        "com.example.sleep":{"mode":{"name":"Östersund"}},
        "com.example.nameless":{"mode":{}},
        "com.example.number":{"mode":{"name":7}},
        "com.example.null":null}},
    {"modeConfigurations":{"com.example.a":{"mode":{"name":"work 10"}},
                           "com.example.b":{"mode":{"name":"Work 9"}}}},
    {"modeConfigurations":[]}, {}, null, 3]})";

std::string assertion(std::string_view identifier) {
    return R"({"assertionDetails":{"assertionDetailsModeIdentifier":")" + std::string(identifier) +
           R"("}})";
}

TEST(FocusReader, ModesAreListedByName) {
    const TemporaryFolder folder;
    EXPECT_FALSE(FocusReader::canRead(folder.path()));
    folder.write("ModeConfigurations.json", configurations);
    EXPECT_TRUE(FocusReader::canRead(folder.path()));
    EXPECT_THAT(FocusReader::modes(folder.path(), "en"),
                ElementsAre(Mode{"com.example.sleep", "Östersund"},
                            Mode{"com.example.work", "Work"}, Mode{"com.example.b", "Work 9"},
                            Mode{"com.example.a", "work 10"}));
    EXPECT_EQ(FocusReader::modes(folder.path(), "sv").back().name, "Östersund");
}

TEST(FocusReader, LastAssertionWithAModeIsTheActiveOne) {
    const TemporaryFolder folder;
    const auto active = [&](const std::string& assertions) {
        folder.write("Assertions.json", assertions);
        return FocusReader::active(folder.path());
    };
    const std::string work = assertion("com.example.work");
    const std::string sleep = assertion("com.example.sleep");
    EXPECT_EQ(active(R"({"data":[{"storeAssertionRecords":[)" + work + "]}]}"), std::nullopt);
    folder.write("ModeConfigurations.json", configurations);
    EXPECT_EQ(active(R"({"data":[{"storeAssertionRecords":[)" + work + "]}]}"),
              (Mode{"com.example.work", "Work"}));
    EXPECT_EQ(active(R"({"data":[{"storeAssertionRecords":[)" + work + R"(,{},null]},
                                 {"storeAssertionRecords":[)" +
                     sleep + R"(,{"assertionDetails":[]}]},
                                 {"storeAssertionRecords":{}},7]})"),
              (Mode{"com.example.sleep", "Östersund"}));
    // An unknown mode in the last record is no reason to take the one before it.
    EXPECT_EQ(
        active(R"({"data":[{"storeAssertionRecords":[)" + work + "," + assertion("gone") + "]}]}"),
        std::nullopt);
    for (const std::string none : {"", "{}", "[]", "null", R"({"data":{}})", R"({"data":[{}]})"}) {
        EXPECT_EQ(active(none), std::nullopt) << none;
    }
}

TEST(FocusReader, FilesThatAreNoneOrHostileGiveNoModes) {
    const TemporaryFolder folder;
    const std::string deep = R"({"data":)" + std::string(1'000'000, '[');
    for (const std::string& text :
         {std::string(), std::string("\0\0", 2), configurations.substr(0, 200), deep,
          "{\"data\":\"" + std::string(FocusReader::fileLimit, 'x') + "\"}"}) {
        folder.write("ModeConfigurations.json", text);
        folder.write("Assertions.json", text);
        EXPECT_THAT(FocusReader::modes(folder.path()), IsEmpty());
        EXPECT_EQ(FocusReader::active(folder.path()), std::nullopt);
    }
    const TemporaryFolder folders;
    std::filesystem::create_directories(folders.path() / "ModeConfigurations.json");
    EXPECT_FALSE(FocusReader::canRead(folders.path()));
    EXPECT_EQ(FocusReader::defaultDirectory("/home/me"), "/home/me/Library/DoNotDisturb/DB");
}

} // namespace
} // namespace vellory::workspaces_tests
