// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MainLoop.h"
#include "Support/AtomicFile.h"
#include "platform/linux/apps/LinuxAppCatalogue.h"
#include "platform/linux/desktop/LinuxMetadata.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Entries and a list of recently used files in a folder of their own.
class MetadataTest : public testing::Test {
  protected:
    /// `program` is made; `arguments` follow it.
    void addApp(const std::string& id, const std::string& name, const std::string& program,
                const std::string& arguments = "") {
        const auto file = folder.write("bin/" + program, "#!/bin/sh\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        folder.write("apps/" + id + ".desktop", "[Desktop Entry]\nType=Application\nName=" + name +
                                                    "\nExec=" + file.string() + arguments + "\n");
    }
    static std::string used(const std::string& file, const std::string& name,
                            const std::string& exec, int day) {
        return "<bookmark href=\"file://" + file +
               "\"><info><metadata owner=\"http://freedesktop.org\"><bookmark:applications>"
               "<bookmark:application name=\"" +
               name + "\" exec=\"&apos;" + exec + " %u&apos;\" modified=\"2024-03-" +
               std::to_string(day) +
               "T00:00:00Z\" count=\"1\"/></bookmark:applications></metadata></info></bookmark>";
    }
    void writeList(const std::string& bookmarks) {
        folder.write("recently-used.xbel",
                     "<xbel xmlns:bookmark=\"http://www.freedesktop.org/standards/"
                     "desktop-bookmarks\">" +
                         bookmarks + "</xbel>");
    }

    AppRecords recall() {
        if (metadata == nullptr) {
            entries = std::make_shared<DesktopEntries>(
                DesktopEntries::Options{SessionEnvironment{}, folder.path() / "apps"});
            LinuxAppCatalogue catalogue(entries, "");
            apps = catalogue.scan(catalogue.roots({}));
            metadata = std::make_unique<LinuxMetadata>(
                LinuxMetadata::Options{folder.path() / "recently-used.xbel"}, entries, loop);
        }
        std::optional<AppRecords> answer;
        metadata->recall(apps, [&](AppRecords records) { answer = std::move(records); });
        EXPECT_FALSE(answer) << "never within the call";
        EXPECT_TRUE(loop.runUntil([&] { return answer.has_value(); }));
        return answer.value_or(AppRecords());
    }

    TemporaryFolder folder;
    MainLoop loop;
    std::shared_ptr<DesktopEntries> entries;
    std::vector<InstalledApp> apps;
    std::unique_ptr<LinuxMetadata> metadata;
};

// The ways in which toolkits name apps in the list.
TEST_F(MetadataTest, AppsAreKnownByIdProgramOrName) {
    addApp("org.test.Editor", "Text Editor", "edit-it", " %U");
    addApp("viewer", "Picture Viewer", "sh", " -c view");
    addApp("twin1", "Twin", "twin");
    addApp("twin2", "Twin", "twin");
    const std::string a = folder.write("a.txt", "");
    writeList(used(a, "x", "org.test.Editor", 11) + used(a, "x", "edit-it", 12) +
              used(a, "Picture Viewer", "eog-wrapper", 13) + used(a, "Twin", "twin", 14) +
              used(a, "Unknown", "unknown", 15));
    const AppRecords records = recall();
    EXPECT_EQ(records.at("org.test.Editor").lastUsed, Date::since1970(1'710'201'600)); // 12 March
    EXPECT_THAT(records.at("org.test.Editor").recentDocuments, ElementsAre(a));
    EXPECT_EQ(records.at("viewer").lastUsed, Date::since1970(1'710'288'000));
    EXPECT_EQ(records.at("twin1").lastUsed, std::nullopt) << "which of the two is not known";
    EXPECT_EQ(records.size(), 4U);
    EXPECT_TRUE(records.at("viewer").created);
}

TEST_F(MetadataTest, DocumentsThatAreGoneAreLeftOutAndTheListIsReadAgainWhenItChanges) {
    addApp("edit", "Edit", "edit");
    const std::string first = folder.write("first", "");
    const std::string second = folder.write("second", "");
    writeList(used(first, "Edit", "edit", 11) + used("/nowhere/x", "Edit", "edit", 12));
    EXPECT_THAT(recall().at("edit").recentDocuments, ElementsAre(first));
    writeList(used(first, "Edit", "edit", 11) + used(second, "Edit", "edit", 13));
    EXPECT_THAT(recall().at("edit").recentDocuments, ElementsAre(second, first));
    std::filesystem::remove(second);
    EXPECT_THAT(recall().at("edit").recentDocuments, ElementsAre(first));
    writeList("<broken");
    EXPECT_THAT(recall().at("edit").recentDocuments, IsEmpty());
    std::filesystem::remove(folder.path() / "recently-used.xbel");
    EXPECT_EQ(recall().at("edit").lastUsed, std::nullopt);
}

TEST_F(MetadataTest, NoAnswerComesAfterItIsGone) {
    addApp("edit", "Edit", "edit");
    recall();
    bool isTold = false;
    metadata->recall(apps, [&](const AppRecords&) { isTold = true; });
    metadata.reset();
    bool isLater = false;
    loop.inBackground([&]() -> Scheduler::Task { return [&] { isLater = true; }; });
    ASSERT_TRUE(loop.runUntil([&] { return isLater; }));
    const auto soon = loop.after(0.05, [&] { isLater = false; });
    ASSERT_TRUE(loop.runUntil([&] { return !isLater; }));
    EXPECT_FALSE(isTold);
}

} // namespace
} // namespace vellory::test
