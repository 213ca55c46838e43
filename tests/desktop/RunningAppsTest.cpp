// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <csignal>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "DesktopSession.h"
#include "FakeService.h"
#include "PollLoop.h"
#include "platform/linux/LinuxAppCatalogue.h"
#include "platform/linux/LinuxRunningApps.h"
#include "platform/linux/X11Connection.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using Open = RunningApps::Open;

/// The launcher as it stands on a desktop of its own.
class RunningAppsTest : public testing::Test {
  protected:
    /// Reads the entries that the test has written and starts looking at the desktop.
    void begin() {
        entries = std::make_shared<DesktopEntries>(
            DesktopEntries::Options{session.environment(), std::nullopt});
        LinuxAppCatalogue catalogue(entries, "");
        installed = catalogue.scan(catalogue.roots({}));
        apps = std::make_unique<LinuxRunningApps>(LinuxRunningApps::Options{session.environment()},
                                                  entries, loop, loop);
        apps->observe({[this](const BundleID& id) { told.push_back("launched " + id); },
                       [this](const BundleID& id) { told.push_back("quit " + id); },
                       [this] { told.push_back("changed"); }});
    }

    InstalledApp app(const BundleID& id) const {
        const auto found = std::ranges::find(installed, id, &InstalledApp::bundleID);
        return found == installed.end() ? InstalledApp{id, id, "/nowhere"} : *found;
    }

    /// Opens and waits for the answer: "" when the app started, else why not.
    std::string open(const BundleID& id, Open mode = Open::bringForward) {
        return answerOf([&](RunningApps::Completion done) { apps->open(app(id), mode, done); });
    }

    std::string answerOf(const std::function<void(RunningApps::Completion)>& ask) {
        std::optional<std::string> answer;
        ask([&](const std::optional<std::string>& failure) { answer = failure.value_or(""); });
        EXPECT_TRUE(loop.runUntil([&] { return answer.has_value(); }));
        return answer.value_or("no answer");
    }

    std::optional<RunningApp> running(const BundleID& id) const {
        const auto all = apps->list();
        const auto found = std::ranges::find(all, id, &RunningApp::bundleID);
        return found == all.end() ? std::nullopt : std::optional(*found);
    }

    bool becomesRunning(const BundleID& id) {
        return loop.runUntil([&] { return running(id).has_value(); });
    }

    /// How many windows the window manager lists.
    std::size_t windowCount() {
        const auto connection = X11Connection::open(session.environment().value("DISPLAY"));
        return connection
            ->values(connection->requestProperty(connection->root(),
                                                 connection->ewmh()->_NET_CLIENT_LIST))
            .size();
    }

    xcb_window_t activeWindow() {
        const auto connection = X11Connection::open(session.environment().value("DISPLAY"));
        const auto values = connection->values(connection->requestProperty(
            connection->root(), connection->ewmh()->_NET_ACTIVE_WINDOW));
        return values.empty() ? xcb_window_t{XCB_NONE} : values.front();
    }

    DesktopSession session;
    PollLoop loop;
    std::shared_ptr<DesktopEntries> entries;
    std::vector<InstalledApp> installed;
    std::unique_ptr<LinuxRunningApps> apps;
    std::vector<std::string> told;
};

TEST_F(RunningAppsTest, AppIsListedOnceItsWindowIsThere) {
    session.addApp("org.test.Editor", "--class Editor");
    begin();
    EXPECT_THAT(apps->list(), IsEmpty());
    EXPECT_EQ(open("org.test.Editor"), "");
    ASSERT_TRUE(becomesRunning("org.test.Editor"));
    const RunningApp listed = *running("org.test.Editor");
    EXPECT_TRUE(listed.isRegular);
    EXPECT_FALSE(listed.isHidden);
    EXPECT_EQ(kill(static_cast<pid_t>(listed.pid), 0), 0);
    EXPECT_EQ(windowCount(), 1U);
}

TEST_F(RunningAppsTest, SecondOpenBringsForwardInsteadOfStarting) {
    session.addApp("one", "--class one");
    session.addApp("two", "--class two");
    begin();
    open("one");
    ASSERT_TRUE(loop.runUntil([&] { return running("one") && activeWindow() != XCB_NONE; }));
    const std::int64_t pid = running("one")->pid;
    const xcb_window_t first = activeWindow();
    open("two");
    ASSERT_TRUE(loop.runUntil([&] { return running("two") && activeWindow() != first; }));
    EXPECT_EQ(open("one"), "");
    EXPECT_TRUE(loop.runUntil([&] { return activeWindow() == first; }));
    EXPECT_EQ(running("one")->pid, pid);
    EXPECT_EQ(windowCount(), 2U);
}

// A slow app that is clicked twice, or opened by a workspace while it starts, comes up once.
TEST_F(RunningAppsTest, SecondOpenWhileTheAppStartsDoesNotStartItAgain) {
    const auto gate = session.folder().path() / "gate";
    ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
    session.addApp("slow", "--class slow --gate " + gate.string());
    begin();
    EXPECT_EQ(open("slow"), "");
    EXPECT_EQ(open("slow"), "");
    const int opened = ::open(gate.c_str(), O_WRONLY);
    ASSERT_TRUE(becomesRunning("slow"));
    close(opened);
    EXPECT_EQ(windowCount(), 1U);
}

TEST_F(RunningAppsTest, NewInstanceStartsAgainOrAsksForANewWindow) {
    session.addApp("plain", "--class plain");
    session.addApp("browser", "--class browser",
                   "Actions=private;New-Window;\n[Desktop Action private]\nName=P\nExec=false\n"
                   "[Desktop Action New-Window]\nName=N\nExec=" VELLORY_WINDOW_APP
                   " --class browser --windows 2 --report " +
                       session.reportFile("action").string() + "\n");
    begin();
    for (const char* id : {"plain", "browser"}) {
        open(id);
        ASSERT_TRUE(becomesRunning(id)) << id;
        EXPECT_EQ(open(id, Open::newInstance), "");
    }
    EXPECT_TRUE(loop.runUntil([&] { return windowCount() == 5; }));
    EXPECT_THAT(session.report("action")["argv"], HasSubstr("--windows|2|"));
}

TEST_F(RunningAppsTest, StartedAppInheritsTheSessionAndNothingOfTheLauncher) {
    session.addApp("child", "--class child --report " + session.reportFile("child").string() +
                                " \"two words; $HOME `id`\" %U");
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
}

TEST_F(RunningAppsTest, EntryChoosesTheFolder) {
    session.addApp("there", "--class there --report " + session.reportFile("there").string(),
                   "Path=/usr\n");
    begin();
    EXPECT_EQ(open("there"), "");
    ASSERT_TRUE(becomesRunning("there"));
    EXPECT_EQ(session.report("there")["cwd"], "/usr");
}

TEST_F(RunningAppsTest, TerminalProgramsRunInTheUsersTerminal) {
    // A terminal that opens no window of its own.
    const auto terminal =
        session.folder().write("bin/xdg-terminal-exec", "#!/bin/sh\nexec \"$@\"\n");
    std::filesystem::permissions(terminal, std::filesystem::perms::owner_all);
    const std::string path = std::getenv("PATH");
    setenv("PATH", (terminal.parent_path().string() + ':' + path).c_str(), 1);
    session.addApp("texts",
                   "--class texts --report " + session.reportFile("texts").string() +
                       " \"two words\"",
                   "Terminal=true\n");
    begin();
    EXPECT_EQ(open("texts"), "");
    ASSERT_TRUE(becomesRunning("texts"));
    setenv("PATH", path.c_str(), 1);
    EXPECT_THAT(session.report("texts")["argv"], HasSubstr("|two words|"));
}

TEST_F(RunningAppsTest, BusActivatableAppIsActivatedAndNotStarted) {
    FakeService service(session, "org.test.Service");
    session.addApp("org.test.Service", "--class never",
                   "DBusActivatable=true\nActions=tidy;\n[Desktop Action tidy]\nName=Tidy\n");
    session.addApp("org.test.Absent", "--class absent", "DBusActivatable=true\n");
    begin();
    EXPECT_EQ(open("org.test.Service"), "");
    EXPECT_EQ(answerOf([&](auto done) { apps->perform(app("org.test.Service"), "tidy", done); }),
              "");
    const auto calls = service.calls();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_THAT(calls[0], StartsWith("/org/test/Service org.freedesktop.Application.Activate "));
    EXPECT_THAT(calls[0], HasSubstr("'desktop-startup-id': <'vellory-"));
    EXPECT_THAT(calls[0], HasSubstr("'activation-token': <'vellory-"));
    EXPECT_THAT(calls[1], HasSubstr(".ActivateAction ('tidy', "));
    EXPECT_EQ(open("org.test.Absent"), ""); // By its command.
    EXPECT_TRUE(becomesRunning("org.test.Absent"));
}

TEST_F(RunningAppsTest, StartedAppGetsAScopeOfItsOwn) {
    FakeService systemd(session, "org.freedesktop.systemd1");
    session.addApp("org.test-er", "--class tester");
    begin();
    EXPECT_EQ(open("org.test-er"), "");
    const auto tick = loop.every(0.01, [] {}); // The calls come on another thread.
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

TEST_F(RunningAppsTest, DesktopIsToldThatAnAppIsComing) {
    session.addApp("announced", "--class announced", "StartupNotify=true\n");
    session.addApp("unannounced", "--class unannounced");
    session.folder().write("home/.local/share/applications/fails.desktop",
                           "[Desktop Entry]\nType=Application\nName=A \"B\"\nExec=true\n"
                           "StartupNotify=true\n");
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
    std::filesystem::remove(app("fails").url);
    session.folder().write("home/.local/share/applications/fails.desktop",
                           "[Desktop Entry]\nType=Application\nName=F\nExec=/no/such/program\n"
                           "StartupNotify=true\n");
    EXPECT_NE(open("fails"), "");
    ASSERT_TRUE(loop.runUntil([&] { return messages.size() == 4 && isWhole; }));
    EXPECT_THAT(messages[0], StartsWith("new: ID=\"vellory-"));
    EXPECT_THAT(messages[0], HasSubstr(" NAME=\"announced\" SCREEN=0 TIMESTAMP="));
    EXPECT_THAT(messages[1], StartsWith("remove: ID=\"vellory-"));
    EXPECT_THAT(messages[2], HasSubstr("NAME=\"A \\\"B\\\"\""));
    EXPECT_THAT(messages[3], StartsWith("remove: ID=\"vellory-"));
}

TEST_F(RunningAppsTest, AppOutlivesTheLauncherAndNobodyIsLeftToReap) {
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

TEST_F(RunningAppsTest, HideUnhideAndQuit) {
    session.addApp("pair", "--class pair --windows 2");
    session.addApp("stubborn", "--class stubborn --stubborn");
    begin();
    for (const char* id : {"pair", "stubborn"}) {
        open(id);
        ASSERT_TRUE(becomesRunning(id)) << id;
    }
    ASSERT_TRUE(loop.runUntil([&] { return windowCount() == 3; }));
    EXPECT_TRUE(apps->hide("pair"));
    EXPECT_TRUE(loop.runUntil([&] { return running("pair")->isHidden; }));
    EXPECT_FALSE(running("stubborn")->isHidden);
    EXPECT_TRUE(apps->unhide("pair"));
    EXPECT_TRUE(loop.runUntil([&] { return !running("pair")->isHidden; }));
    EXPECT_TRUE(apps->hide("pair"));
    EXPECT_TRUE(loop.runUntil([&] { return running("pair")->isHidden; }));
    EXPECT_TRUE(apps->activate("pair")); // Comes back when it is wanted in front, too.
    EXPECT_TRUE(loop.runUntil([&] { return !running("pair")->isHidden; }));
    EXPECT_TRUE(apps->quit("stubborn"));
    EXPECT_TRUE(apps->quit("pair"));
    EXPECT_TRUE(loop.runUntil([&] { return !running("pair"); }));
    EXPECT_TRUE(running("stubborn").has_value());
    for (const auto& ask :
         {&RunningApps::activate, &RunningApps::hide, &RunningApps::unhide, &RunningApps::quit}) {
        EXPECT_FALSE(std::invoke(ask, *apps, "pair"));
    }
}

TEST_F(RunningAppsTest, ObserverHearsOfEachAppOnce) {
    const auto gate = session.folder().path() / "gate";
    ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
    session.addApp("early", "--class early");
    session.addApp("many", "--class many --windows 4 --splash --gate " + gate.string());
    begin();
    open("early");
    ASSERT_TRUE(loop.runUntil([&] { return !told.empty(); }));
    begin(); // What runs already is no news to a launcher that starts now.
    told.clear();
    open("many");
    const int opened = ::open(gate.c_str(), O_WRONLY);
    ASSERT_TRUE(loop.runUntil([&] { return !told.empty() && windowCount() == 5; }));
    close(opened);
    EXPECT_TRUE(apps->quit("many"));
    ASSERT_TRUE(loop.runUntil([&] { return told.size() >= 2 && windowCount() == 1; }));
    EXPECT_THAT(told, ElementsAre("launched many", "quit many"));
}

// Started by somebody else, as from a terminal or a panel.
TEST_F(RunningAppsTest, StartsFromElsewhereAreToldOncePerStart) {
    const auto gate = session.folder().path() / "gate";
    ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
    const std::string again = gate.string() + ".again";
    ASSERT_EQ(mkfifo(again.c_str(), 0600), 0);
    const auto openGate = [&] { close(::open(gate.c_str(), O_WRONLY)); };
    session.addApp("many", "--class many");
    session.addApp("splash", "--class splash");
    session.addApp("flash", "--class flash");
    session.addApp("moved", "--class moved");
    begin();
    const auto isTold = [&](const std::string& what) {
        return std::ranges::find(told, what) != told.end();
    };

    session.run({VELLORY_WINDOW_APP, "--class", "many", "--windows", "5"});
    ASSERT_TRUE(loop.runUntil([&] { return isTold("launched many") && windowCount() == 5; }));
    session.run({VELLORY_WINDOW_APP, "--class", "splash", "--splash", "--gate", gate});
    openGate();
    ASSERT_TRUE(loop.runUntil([&] { return isTold("launched splash") && windowCount() == 6; }));
    session.run({VELLORY_WINDOW_APP, "--class", "moved", "--reparented"});
    ASSERT_TRUE(loop.runUntil([&] { return isTold("launched moved") && windowCount() == 7; }));
    // Its first window goes before the second comes.
    session.run({VELLORY_WINDOW_APP, "--class", "flash", "--flash", "--gate", gate});
    ASSERT_TRUE(loop.runUntil([&] { return isTold("launched flash"); }));
    openGate();
    ASSERT_TRUE(loop.runUntil([&] { return isTold("quit flash"); }));
    close(::open(again.c_str(), O_WRONLY));
    ASSERT_TRUE(loop.runUntil([&] { return isTold("changed") && running("flash"); }));

    std::erase_if(told, [](const std::string& what) { return !what.starts_with("launched"); });
    EXPECT_THAT(
        told, ElementsAre("launched many", "launched splash", "launched moved", "launched flash"));
}

// What desktops put into a scope of its own was started, also when no window is to be seen.
TEST_F(RunningAppsTest, AnAppsScopeIsAStartAndItsWindowIsNotAnother) {
    FakeService systemd(session, "org.freedesktop.systemd1");
    session.addApp("org.test-er", "--class tester");
    begin();
    const auto tick = loop.every(0.01, [] {}); // The calls come on another thread.
    const auto isSubscribed = [&] {
        return std::ranges::any_of(systemd.calls(), [](const std::string& call) {
            return call.find("Manager.Subscribe") != std::string::npos;
        });
    };
    ASSERT_TRUE(loop.runUntil(isSubscribed));
    const auto emit = [&](const char* signal, const std::string& unit) {
        systemd.emit("/org/freedesktop/systemd1", "org.freedesktop.systemd1.Manager", signal,
                     g_variant_new("(so)", unit.c_str(), "/unit"));
    };
    emit("UnitNew", "app-desk-org.test\\x2der@autostart.service");
    emit("UnitNew", "app-desk-org.test.other-1.scope");
    emit("UnitNew", "app-desk-org.test\\x2der-4711.scope");
    ASSERT_TRUE(loop.runUntil([&] { return !told.empty(); }));
    session.run({VELLORY_WINDOW_APP, "--class", "tester"});
    ASSERT_TRUE(becomesRunning("org.test-er"));
    ASSERT_TRUE(loop.runUntil([&] { return told.size() >= 2; }));
    EXPECT_THAT(told, ElementsAre("launched org.test-er", "changed"));
}

TEST_F(RunningAppsTest, AFileIsOpenedByCommandOrOverTheBus) {
    FakeService service(session, "org.test.Service");
    session.addApp("org.test.Service", "--class never", "DBusActivatable=true\n");
    session.addApp("plain",
                   "--class plain --report " + session.reportFile("plain").string() + " %F");
    session.addApp("bare", "--class bare --report " + session.reportFile("bare").string());
    begin();
    const std::filesystem::path file = session.folder().write("a b'$(x)\".txt", "");
    const auto openFile = [&](const std::string& id) {
        return answerOf([&](auto done) { apps->openFile(app(id), file, done); });
    };
    EXPECT_EQ(openFile("org.test.Service"), "");
    ASSERT_EQ(service.calls().size(), 1U);
    EXPECT_THAT(service.calls()[0], HasSubstr("org.freedesktop.Application.Open ([\"file:///"));
    EXPECT_THAT(service.calls()[0], HasSubstr("a%20b"));
    for (const char* id : {"plain", "bare"}) {
        EXPECT_EQ(openFile(id), "");
        ASSERT_TRUE(loop.runUntil([&] { return std::filesystem::exists(session.reportFile(id)); }));
        EXPECT_THAT(session.report(id)["argv"], HasSubstr("|" + file.string() + "|")) << id;
    }
}

TEST_F(RunningAppsTest, FailingStartSaysWhy) {
    const auto program = session.folder().write("tool", "#!/no/such/interpreter\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
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

// A window without any class of its own is known by the process behind it.
TEST_F(RunningAppsTest, WindowWithoutClassIsKnownByItsProcess) {
    session.addApp("silent", "");
    begin();
    open("silent");
    EXPECT_TRUE(becomesRunning("silent"));
}

TEST_F(RunningAppsTest, WindowManagerThatStartsAnewMakesNoAppQuit) {
    session.addApp("steady", "--class steady");
    begin();
    open("steady");
    ASSERT_TRUE(becomesRunning("steady"));
    ASSERT_TRUE(loop.runUntil([&] { return !told.empty(); }));
    session.stopWindowManager();
    ASSERT_TRUE(loop.runUntil([&] { return apps->list().empty(); }));
    session.startWindowManager();
    EXPECT_TRUE(becomesRunning("steady"));
    EXPECT_THAT(told, ElementsAre("launched steady"));
}

TEST_F(RunningAppsTest, WithoutAServerNothingRunsAndStartingWorks) {
    session.addApp("blind", "--report " + session.reportFile("blind").string());
    begin();
    session.stopServer();
    EXPECT_TRUE(loop.runUntil([&] { return apps->list().empty(); }));
    EXPECT_FALSE(apps->activate("blind"));
    EXPECT_EQ(open("blind"), "");
    apps.reset();

    SessionEnvironment bare = session.environment();
    std::erase_if(bare.variables, [](const auto& text) { return text.starts_with("DISPLAY="); });
    LinuxRunningApps without({bare}, entries, loop, loop);
    EXPECT_THAT(without.list(), IsEmpty());
    EXPECT_FALSE(without.quit("blind"));
}

} // namespace
} // namespace vellory::test
