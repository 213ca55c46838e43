// SPDX-License-Identifier: Apache-2.0
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LauncherOnDesktop.h"
#include "platform/linux/desktop/LinuxDesktop.h"
#include "support/FakeHttpClient.h"

namespace vellory::test {
namespace {

using testing::HasSubstr;

/// Links and files go to the app that the user has for them, and are never run.
class DefaultAppsTest : public LauncherOnDesktop {
  protected:
    void SetUp() override {
        // What kinds of files there are is told by the machine's database of them.
        std::filesystem::create_directories(session.folder().path() / "data");
        std::filesystem::create_directory_symlink("/usr/share/mime",
                                                  session.folder().path() / "data/mime");
        for (const char* id : {"browser", "editor"}) {
            session.addApp(id, std::string("--class ") + id + " --report " +
                                   session.reportFile(id).string() + " %U");
        }
        session.folder().write("home/.config/mimeapps.list",
                               "[Default Applications]\nx-scheme-handler/https=browser.desktop\n"
                               "x-scheme-handler/odd+scheme=browser.desktop\n"
                               "text/plain=editor.desktop\ninode/directory=editor.desktop\n"
                               "application/x-executable=editor.desktop\n"
                               "application/x-pie-executable=editor.desktop\n"
                               "application/x-sharedlib=editor.desktop\n"
                               "application/x-desktop=editor.desktop\n");
        begin();
        desktop = std::make_unique<LinuxDesktop>(session.environment(), *apps, http, loop);
    }

    /// What the app was started with, once it is.
    std::string arguments(const std::string& id) {
        EXPECT_TRUE(loop.runUntil([&] { return std::filesystem::exists(session.reportFile(id)); }));
        std::string words = session.report(id)["argv"];
        std::filesystem::remove(session.reportFile(id));
        return words;
    }

    FakeHttpClient http;
    std::unique_ptr<LinuxDesktop> desktop;
};

TEST_F(DefaultAppsTest, LinkGoesAsItIsToTheAppForItsScheme) {
    for (const char* link : {"https://example.org/a?b=c&d=$(id);`id`%20%22", "HTTPS://Example.org/",
                             "odd+scheme:any thing"}) {
        EXPECT_TRUE(desktop->openLink(link)) << link;
        EXPECT_THAT(arguments("browser"), HasSubstr(std::string("|") + link + "|"));
    }
    for (const char* link : {"unknown://x", "no link", "", "javascript:alert(1)", "-https://x",
                             "file:///no/such/file", "file://elsewhere/etc/passwd", "://"}) {
        EXPECT_FALSE(desktop->openLink(link)) << link;
    }
}

TEST_F(DefaultAppsTest, FileGoesToTheAppForItsKind) {
    const auto text = session.folder().write("a b'\"$x.txt", "text");
    EXPECT_TRUE(desktop->openFile(text));
    EXPECT_THAT(arguments("editor"), HasSubstr("|" + text.string() + "|"));
    EXPECT_TRUE(desktop->openLink("file://" + session.folder().write("plain.txt", "t").string()));
    EXPECT_THAT(arguments("editor"), HasSubstr("plain.txt|"));
    EXPECT_TRUE(desktop->openFile(session.home()));
    EXPECT_THAT(arguments("editor"), HasSubstr("/home|"));
    EXPECT_FALSE(desktop->openFile("/no/such/file"));
    EXPECT_FALSE(desktop->openFile("relative.txt"));
}

TEST_F(DefaultAppsTest, ProgramIsNotOpened) {
    const auto trace = session.folder().path() / "ran";
    const auto program = session.folder().write("tool", contentOf("/bin/true"));
    const auto entry = session.folder().write(
        "trap.desktop", "[Desktop Entry]\nType=Application\nName=X\nExec=touch " + trace.string());
    for (const auto& file : {program, entry}) {
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        desktop->openFile(file);
    }
    // What is opened after them would come after them.
    EXPECT_TRUE(desktop->openFile(session.folder().write("plain.txt", "t")));
    EXPECT_THAT(arguments("editor"), HasSubstr("plain.txt|"));
    EXPECT_FALSE(std::filesystem::exists(trace));
}

} // namespace
} // namespace vellory::test
