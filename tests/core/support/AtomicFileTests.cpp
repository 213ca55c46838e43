// SPDX-License-Identifier: Apache-2.0
#include "Support/AtomicFile.h"

#include <algorithm>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Child.h"
#include "support/TemporaryFolder.h"

namespace vellory::support_tests {
namespace {

namespace fs = std::filesystem;
using namespace test;
using testing::ElementsAre;

std::error_code writeError(const fs::path& file, std::string_view content) {
    const auto written = AtomicFile::write(file, content);
    return written ? std::error_code() : written.error();
}

TEST(AtomicFile, WritesAndReadsAnyBytes) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "a.json";
    const std::string bytes("\0\xff\n", 3);
    for (const std::string& content : {bytes, std::string(), std::string(3'000'000, 'x')}) {
        ASSERT_EQ(writeError(file, content), std::error_code());
        EXPECT_EQ(AtomicFile::read(file), content);
        EXPECT_EQ(contentOf(file), content);
    }
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("a.json"));
    EXPECT_TRUE(AtomicFile::createFolder(fs::path("plain").parent_path()));
}

TEST(AtomicFile, ReadsOnlyRegularFilesOfABearableSize) {
    const TemporaryFolder folder;
    const fs::path file = folder.write("file", "12345");
    EXPECT_EQ(AtomicFile::read(file, 5), "12345");
    EXPECT_EQ(AtomicFile::read(file, 4).error(), std::errc::file_too_large);
    EXPECT_EQ(AtomicFile::read(folder.path() / "none").error(),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(AtomicFile::read(folder.path()).error(), std::errc::invalid_argument);
    EXPECT_EQ(AtomicFile::read("/dev/zero").error(), std::errc::invalid_argument);
    ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(AtomicFile::read(folder.path() / "pipe").error(), std::errc::invalid_argument);
}

TEST(AtomicFile, KeepsTheModeAndTheLinkOfWhatItReplaces) {
    const TemporaryFolder folder;
    const fs::path target = folder.write("real/file", "old");
    const fs::path link = folder.path() / "link";
    fs::create_symlink("real/file", link);
    fs::permissions(target, static_cast<fs::perms>(0640));
    ASSERT_EQ(writeError(link, "new"), std::error_code());
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(contentOf(target), "new");
    EXPECT_EQ(fs::status(target).permissions(), static_cast<fs::perms>(0640));

    ASSERT_EQ(writeError(folder.path() / "fresh", "x"), std::error_code());
    EXPECT_EQ(fs::status(folder.path() / "fresh").permissions(), static_cast<fs::perms>(0600));
}

TEST(AtomicFile, AFileNameMayBeAsLongAsTheFileSystemAllows) {
    const TemporaryFolder folder;
    EXPECT_EQ(writeError(folder.path() / std::string(255, 'n'), "x"), std::error_code());
    EXPECT_EQ(writeError(folder.path() / std::string(256, 'n'), "x"), std::errc::filename_too_long);
    EXPECT_EQ(namesIn(folder.path()).size(), 1);
}

TEST(AtomicFile, AFailureLeavesTheOldFileAndNothingElse) {
    const TemporaryFolder folder;
    const fs::path file = folder.write("file", "old");
    fs::create_directories(folder.path() / "folder" / "inside");
    EXPECT_EQ(writeError(folder.path() / "none" / "file", "new"),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(writeError(folder.path() / "folder", "new"), std::errc::is_a_directory);
    const int fullDisk = inChild([&] {
        return limitFileSize(1'000) &&
               writeError(file, std::string(2'000, 'x')) == std::errc::file_too_large;
    });
    EXPECT_EQ(fullDisk, true);
    fs::permissions(folder.path(), static_cast<fs::perms>(0555));
    const int refused = inChild(
        [&] { return becomeNobody() && writeError(file, "new") == std::errc::permission_denied; });
    EXPECT_EQ(refused, true);
    fs::permissions(folder.path(), fs::perms::owner_all);
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("file", "folder"));
}

TEST(AtomicFile, AProcessKilledWhileItSavesLeavesOldOrNewContent) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "file";
    const auto content = [](int round) {
        return std::string(200'000, static_cast<char>('a' + round % 26));
    };
    ASSERT_EQ(writeError(file, content(0)), std::error_code());
    int changes = 0;
    for (int kill = 0; kill < 20; ++kill) {
        const std::string before = contentOf(file);
        std::array<int, 2> ready{};
        ASSERT_EQ(::pipe(ready.data()), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            for (int round = 0;; ++round) {
                if (round == kill % 4 && ::write(ready[1], "x", 1) != 1) {
                    ::_exit(1);
                }
                static_cast<void>(AtomicFile::write(file, content(kill + round)));
            }
        }
        char byte = 0;
        ASSERT_EQ(::read(ready[0], &byte, 1), 1); // it is saving, and will be all the time
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(ready[0]);
        ::close(ready[1]);
        ASSERT_TRUE(WIFSIGNALED(status));
        const std::string after = contentOf(file);
        ASSERT_EQ(after.size(), 200'000);
        ASSERT_EQ(std::ranges::count(after, after[0]), 200'000);
        changes += after != before ? 1 : 0;
    }
    EXPECT_GT(changes, 0);
}

TEST(AtomicFile, KeepsTheFirstAndTheNewestUnreadableCopies) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "file";
    AtomicFile::keepUnreadable(file);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre());
    for (const char* text : {"first", "first", "second", "second"}) {
        folder.write("file", text);
        AtomicFile::keepUnreadable(file);
    }
    EXPECT_EQ(contentOf(folder.path() / "file.unreadable"), "first");
    EXPECT_EQ(contentOf(folder.path() / "file.2.unreadable"), "second");
    EXPECT_THAT(namesIn(folder.path()),
                ElementsAre("file", "file.2.unreadable", "file.unreadable"));

    for (const char* text : {"third", "fourth", "fifth", "sixth", "seventh"}) {
        folder.write("file", text);
        AtomicFile::keepUnreadable(file);
    }
    EXPECT_EQ(contentOf(folder.path() / "file.unreadable"), "first");
    EXPECT_EQ(contentOf(folder.path() / "file.2.unreadable"), "fourth");
    EXPECT_EQ(contentOf(folder.path() / "file.5.unreadable"), "seventh");
    EXPECT_EQ(namesIn(folder.path()).size(), 1U + AtomicFile::mostUnreadableCopies);
}

TEST(AtomicFile, AnUnreadableFileIsKeptWholeOnAFullDisk) {
    const TemporaryFolder folder;
    const fs::path file = folder.write("file", std::string(100'000, 'x'));
    const int fullDisk = inChild([&] {
        const bool isFull = limitFileSize(1'000);
        AtomicFile::keepUnreadable(file);
        return isFull;
    });
    EXPECT_EQ(fullDisk, true);
    EXPECT_EQ(contentOf(folder.path() / "file.unreadable").size(), 100'000);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("file", "file.unreadable"));
}

} // namespace
} // namespace vellory::support_tests
