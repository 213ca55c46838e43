// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <csignal>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "FakeService.h"
#include "LauncherOnDesktop.h"

namespace vellory::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// What an app that is started gets, and who hears of it.
class AppStartsTest : public LauncherOnDesktop {
  protected:
    /// An app that reports how it was started; `more` are lines of its entry.
    void addReporting(const std::string& id, const std::string& arguments = "",
                      const std::string& more = "") {
        session.addApp(
            id, "--class " + id + " --report " + session.reportFile(id).string() + " " + arguments,
            more);
    }
    /// Makes a file below the session's folder that can be run.
    std::filesystem::path addProgram(const std::string& name, const std::string& content) {
        const auto program = session.folder().write(name, content);
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        return program;
    }
};

TEST_F(AppStartsTest, StartedAppInheritsTheSessionAndNothingOfTheLauncher) {
    addReporting("child", "\"two words; $HOME `id`\" %U");
    addReporting("there", "", "Path=/usr\n");
    begin();
    setenv("SESSION_VARIABLE", "changed by the launcher", 1);
    setenv("LAUNCHER_VARIABLE", "added by the launcher", 1);
    std::signal(SIGPIPE, SIG_IGN);
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    ASSERT_EQ(dup2(0, 200), 200);
    EXPECT_EQ(open("child"), "");
    ASSERT_TRUE(becomesRunning("child"));
    close(200);
    unsetenv("LAUNCHER_VARIABLE");
    auto saw = session.report("child");
    EXPECT_EQ(saw["SESSION_VARIABLE"], "the session's");
    EXPECT_FALSE(saw.contains("LAUNCHER_VARIABLE"));
    EXPECT_FALSE(saw.contains("VELLORY_TEST_VARIABLE"));
    EXPECT_THAT(saw["DESKTOP_STARTUP_ID"], StartsWith("vellory-"));
    EXPECT_THAT(saw["DESKTOP_STARTUP_ID"], HasSubstr("_TIME"));
    EXPECT_EQ(saw["XDG_ACTIVATION_TOKEN"], saw["DESKTOP_STARTUP_ID"]);
    EXPECT_EQ(saw["cwd"], session.home().string());
    EXPECT_EQ(saw["sid"], saw["pid"]);
    EXPECT_EQ(saw["blocked"], "0");
    EXPECT_EQ(saw["ignored"], "0");
    EXPECT_EQ(saw["descriptors"], "0");
    EXPECT_EQ(saw["output"], "/dev/null");
    EXPECT_THAT(saw["argv"], HasSubstr("|two words; $HOME `id`|"));
    EXPECT_EQ(open("there"), "");
    ASSERT_TRUE(becomesRunning("there"));
    EXPECT_EQ(session.report("there")["cwd"], "/usr") << "the entry chooses the folder";
}

TEST_F(AppStartsTest, TerminalProgramsRunInTheUsersTerminal) {
    // A terminal that opens no window of its own.
    const auto terminal = addProgram("bin/xdg-terminal-exec", "#!/bin/sh\nexec \"$@\"\n");
    const std::string path = std::getenv("PATH");
    setenv("PATH", (terminal.parent_path().string() + ':' + path).c_str(), 1);
    addReporting("texts", "\"two words\"", "Terminal=true\n");
    begin();
    EXPECT_EQ(open("texts"), "");
    ASSERT_TRUE(becomesRunning("texts"));
    setenv("PATH", path.c_str(), 1);
    EXPECT_THAT(session.report("texts")["argv"], HasSubstr("|two words|"));
}

TEST_F(AppStartsTest, BusActivatableAppIsActivatedAndNotStarted) {
    FakeService service(session, "org.test.Service");
    session.addApp("org.test.Service", "--class never",
                   "DBusActivatable=true\nActions=tidy;\n[Desktop Action tidy]\nName=Tidy\n");
    session.addApp("org.test.Absent", "--class absent", "DBusActivatable=true\n");
    begin();
    EXPECT_EQ(open("org.test.Service"), "");
    EXPECT_EQ(answerOf([&](auto done) { apps->perform(app("org.test.Service"), "tidy", done); }),
              "");
    const std::filesystem::path file = "/tmp/a b";
    EXPECT_EQ(answerOf([&](auto done) { apps->openFile(app("org.test.Service"), file, done); }),
              "");
    const auto calls = service.calls();
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_THAT(calls[0], StartsWith("/org/test/Service org.freedesktop.Application.Activate "));
    EXPECT_THAT(calls[0], HasSubstr("'desktop-startup-id': <'vellory-"));
    EXPECT_THAT(calls[0], HasSubstr("'activation-token': <'vellory-"));
    EXPECT_THAT(calls[1], HasSubstr(".ActivateAction ('tidy', "));
    EXPECT_THAT(calls[2], HasSubstr(".Application.Open (['file:///tmp/a%20b']"));
    EXPECT_EQ(open("org.test.Absent"), ""); // By its command.
    EXPECT_TRUE(becomesRunning("org.test.Absent"));
}

TEST_F(AppStartsTest, StartedAppGetsAScopeOfItsOwn) {
    FakeService systemd(session, "org.freedesktop.systemd1");
    session.addApp("org.test-er", "--class tester");
    begin();
    EXPECT_EQ(open("org.test-er"), "");
    ASSERT_TRUE(becomesRunning("org.test-er"));
    const auto scopeCall = [&] {
        for (const std::string& call : systemd.calls()) {
            if (call.find(".StartTransientUnit ") != std::string::npos) {
                return call;
            }
        }
        return std::string();
    };
    ASSERT_TRUE(loop.runUntil([&] { return !scopeCall().empty(); }));
    const std::string pid = std::to_string(running("org.test-er")->pid);
    EXPECT_THAT(scopeCall(), HasSubstr(".StartTransientUnit ('app-vellory-org.test\\\\x2der-" +
                                       pid + ".scope', 'fail', [('PIDs', <[uint32 " + pid + "]>)"));
}

TEST_F(AppStartsTest, DesktopIsToldThatAnAppIsComing) {
    session.addApp("announced", "--class announced", "StartupNotify=true\n");
    session.addApp("unannounced", "--class unannounced");
    const auto broken = addProgram("broken", "#!/no/such/interpreter\n");
    session.folder().write("home/.local/share/applications/fails.desktop",
                           "[Desktop Entry]\nType=Application\nName=A \"B\"\nExec=" +
                               broken.string() + "\nStartupNotify=true\n");
    begin();
    const auto listener = X11Connection::open(session.environment().value("DISPLAY"));
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(listener->get(), listener->root(), XCB_CW_EVENT_MASK, &events);
    listener->serverTime();
    std::vector<std::string> messages;
    bool isWhole = true;
    const auto watch = loop.watchReadable(listener->fileDescriptor(), [&] {
        for (const x11::Event& event : listener->takeEvents()) {
            const auto* piece = reinterpret_cast<xcb_client_message_event_t*>(event.get());
            if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE || piece->format != 8) {
                continue;
            }
            const std::string text(reinterpret_cast<const char*>(piece->data.data8), 20);
            if (isWhole) {
                messages.emplace_back();
            }
            messages.back() += text;
            isWhole = text.find('\0') != std::string::npos;
        }
    });
    open("unannounced");
    ASSERT_TRUE(becomesRunning("unannounced"));
    open("announced");
    ASSERT_TRUE(loop.runUntil([&] { return messages.size() == 2 && isWhole; }));
    EXPECT_NE(open("fails"), "");
    ASSERT_TRUE(loop.runUntil([&] { return messages.size() == 4 && isWhole; }));
    EXPECT_THAT(messages[0], StartsWith("new: ID=\"vellory-"));
    EXPECT_THAT(messages[0], HasSubstr(" NAME=\"announced\" SCREEN=0 TIMESTAMP="));
    EXPECT_THAT(messages[1], StartsWith("remove: ID=\"vellory-"));
    EXPECT_THAT(messages[2], HasSubstr("NAME=\"A \\\"B\\\"\""));
    EXPECT_THAT(messages[3], StartsWith("remove: ID=\"vellory-"));
}

TEST_F(AppStartsTest, AppOutlivesTheLauncherAndNobodyIsLeftToReap) {
    session.addApp("survivor", "--class survivor");
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t launcher = fork();
    if (launcher == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        begin();
        const bool started = open("survivor").empty() && becomesRunning("survivor");
        const char answer = started ? 'y' : 'n';
        [[maybe_unused]] const auto written = write(ready[1], &answer, 1);
        pause();
        _exit(0);
    }
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    begin();
    ASSERT_TRUE(running("survivor").has_value());
    const std::string status =
        contentOf("/proc/" + std::to_string(running("survivor")->pid) + "/status");
    EXPECT_THAT(status, testing::Not(HasSubstr("\nPPid:\t" + std::to_string(launcher) + "\n")));
    kill(launcher, SIGKILL);
    waitpid(launcher, nullptr, 0);
    EXPECT_TRUE(running("survivor").has_value());
    EXPECT_TRUE(apps->quit("survivor")); // It still answers.
    EXPECT_TRUE(loop.runUntil([&] { return !running("survivor"); }));
    close(ready[0]);
    close(ready[1]);
}

TEST_F(AppStartsTest, AFileIsOpenedByTheCommandAlsoOneThatTakesNone) {
    addReporting("plain", "%F");
    addReporting("bare");
    begin();
    const std::filesystem::path file = session.folder().write("a b'$(x)\".txt", "");
    for (const char* id : {"plain", "bare"}) {
        EXPECT_EQ(answerOf([&](auto done) { apps->openFile(app(id), file, done); }), "");
        ASSERT_TRUE(becomesRunning(id));
        EXPECT_THAT(session.report(id)["argv"], HasSubstr("|" + file.string() + "|")) << id;
    }
}

TEST_F(AppStartsTest, FailingStartSaysWhy) {
    const auto program = addProgram("tool", "#!/no/such/interpreter\n");
    const std::string head = "home/.local/share/applications/";
    const std::string entry = "[Desktop Entry]\nType=Application\nName=X\nExec=";
    session.folder().write(head + "vanishing.desktop", entry + program.string() + "\n");
    session.addApp("deleted", "--class deleted");
    begin();
    EXPECT_THAT(open("vanishing"), HasSubstr("/no/such/interpreter"));
    std::filesystem::remove(program);
    EXPECT_THAT(open("vanishing"), HasSubstr("was not found"));
    session.folder().write(head + "vanishing.desktop", entry + "'unbalanced\n");
    EXPECT_THAT(open("vanishing"), HasSubstr("no command"));
    std::filesystem::remove(app("deleted").url);
    EXPECT_THAT(open("deleted"), HasSubstr("missing"));
    EXPECT_THAT(answerOf([&](auto done) { apps->perform(app("vanishing"), "nope", done); }),
                HasSubstr("nope"));
}

} // namespace
} // namespace vellory::test
