// SPDX-License-Identifier: Apache-2.0
#include <csignal>
#include <cstdio>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include "Board/BoardStore.h"
#include "DesktopSession.h"
#include "Support/AtomicFile.h"
#include "Usage/HabitLog.h"
#include "Usage/LaunchLog.h"
#include "Usage/UsageStore.h"
#include "support/Child.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr int programDeadlineMilliseconds = 30'000;

/// A program that runs beside the test, with what it says on its standard output and error.
class Process {
  public:
    explicit Process(const std::vector<std::string>& command) {
        int output[2] = {-1, -1};
        EXPECT_EQ(::pipe2(output, O_CLOEXEC), 0);
        pid_ = spawn(command, {.output = output[1], .error = output[1]});
        ::close(output[1]);
        output_ = output[0];
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() {
        kill(SIGKILL);
        ::close(output_);
    }

    /// The next line that contains `text`; nothing when the deadline passes or the program ends.
    std::optional<std::string> lineWith(const std::string& text) {
        while (const auto line = nextLine()) {
            if (line->find(text) != std::string::npos) {
                return line;
            }
        }
        // Why it ended, or what it was doing, is nowhere else to be read.
        std::fprintf(stderr, "No line with \"%s\" came after:\n%s%s\n", text.c_str(), said_.c_str(),
                     pending_.c_str());
        return std::nullopt;
    }

    /// Everything that it says until it ends, and its exit code.
    int waitForEnd() {
        while (nextLine()) {
        }
        return endOf(std::exchange(pid_, 0));
    }
    const std::string& said() const { return said_; }

    void signal(int number) const { ::kill(pid_, number); }
    void kill(int signal) {
        if (pid_ > 0) {
            ::kill(pid_, signal);
            endOf(std::exchange(pid_, 0));
        }
    }

  private:
    std::optional<std::string> nextLine() {
        while (pending_.find('\n') == std::string::npos) {
            pollfd waiting{output_, POLLIN, 0};
            char bytes[4096];
            const ssize_t got = ::poll(&waiting, 1, programDeadlineMilliseconds) > 0
                                    ? ::read(output_, bytes, sizeof bytes)
                                    : 0;
            if (got <= 0) {
                return std::nullopt;
            }
            pending_.append(bytes, static_cast<std::size_t>(got));
        }
        const std::string line = pending_.substr(0, pending_.find('\n'));
        pending_.erase(0, line.size() + 1);
        said_ += line + "\n";
        return line;
    }

    pid_t pid_ = 0;
    int output_ = -1;
    std::string pending_;
    std::string said_;
};

/// Runs a tool and waits for it.
int run(const std::vector<std::string>& command) {
    return Process(command).waitForEnd();
}

/// Waits until a window of that class is there. The tool gives up when a window, whichever, goes
/// while it looks, so it is asked again.
bool seesWindow(const std::string& windowClass, const std::string& how = "until") {
    return run({"timeout", "20", "sh", "-c",
                how + " xdotool search --onlyvisible --class \"$0\"; do :; done", windowClass}) ==
           0;
}
/// Waits until no window of that class is there.
bool windowGoes(const std::string& windowClass) {
    return seesWindow(windowClass, "while");
}
/// Presses keys as a person would.
bool presses(const std::vector<std::string>& keys) {
    std::vector<std::string> command{"timeout", "20", "xdotool"};
    command.insert(command.end(), keys.begin(), keys.end());
    return run(command) == 0;
}

/// The whole program on a desktop of its own.
class ProgramTest : public testing::Test {
  protected:
    ProgramTest() {
        session.addApp("alpha", "--class alpha");
        session.addApp("beta", "--class beta");
        session.addApp("gamma", "--class gamma");
        // Not the first run, which welcomes the user and tells of no new apps.
        session.folder().write(
            std::filesystem::relative(session.environment().configHome(), session.folder().path()) /
                "vellory/settings.conf",
            "[General]\nhasSeenWelcome=true\n");
    }

    static std::vector<std::string> vellory() { return {VELLORY_PROGRAM, "--report"}; }
    /// Makes the session know the program, as an installation does.
    void install() const {
        const std::filesystem::path data = session.environment().dataHome();
        for (const std::string entry : {"applications/com.quorvel.vellory.desktop",
                                        "dbus-1/services/com.quorvel.vellory.service"}) {
            const std::filesystem::path file = data / entry;
            std::filesystem::create_directories(file.parent_path());
            ASSERT_EQ(
                run({"sh", "-c", "sed \"s|@VELLORY_[A-Z_]*@|$0|g\" \"$1\" > \"$2\"",
                     VELLORY_PROGRAM, VELLORY_PACKAGING "/" + file.filename().string() + ".in",
                     file.string()}),
                0);
        }
        ASSERT_EQ(run({"desktop-file-validate",
                       (data / "applications/com.quorvel.vellory.desktop").string()}),
                  0);
        ASSERT_EQ(run({"update-desktop-database", (data / "applications").string()}), 0);
        ASSERT_EQ(run({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
                       "/org/freedesktop/DBus", "org.freedesktop.DBus.ReloadConfig"}),
                  0);
    }
    /// Ends the program that has its name on the bus, whoever started it.
    static int endProgram() {
        return run(
            {"timeout", "20", "sh", "-c",
             "until pid=$(dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus "
             "/org/freedesktop/DBus org.freedesktop.DBus.GetConnectionUnixProcessID "
             "string:com.quorvel.vellory); do :; done; kill ${pid##* }; "
             "while dbus-send --session --print-reply --dest=org.freedesktop.DBus "
             "/org/freedesktop/DBus org.freedesktop.DBus.GetNameOwner "
             "string:com.quorvel.vellory > /dev/null 2>&1; do :; done"});
    }
    std::filesystem::path support() const { return session.environment().dataHome() / "vellory"; }
    std::string lastTile() const {
        const auto board =
            BoardStore(support() / "layout.json", support() / "LayoutHistory", 60, [] {
                return Date();
            }).load();
        return board && !board->tiles.empty() ? board->tiles.back().id() : "";
    }

    DesktopSession session;
};

TEST_F(ProgramTest, TheGridShowsEveryAppAndReturnOpensTheTypedOne) {
    Process program(vellory());
    EXPECT_EQ(program.lineWith("apps"), "3 apps");
    ASSERT_TRUE(seesWindow("^vellory$"));
    ASSERT_TRUE(presses({"type", "beta"}) && presses({"key", "Return"}));
    ASSERT_TRUE(program.lineWith("hidden"));
    EXPECT_TRUE(seesWindow("beta"));
    EXPECT_TRUE(windowGoes("alpha")) << "it was never there";
}

// Also beside a program that runs, which must not find its files changed by somebody else.
TEST_F(ProgramTest, PicturesAndRunsOnOtherAppsLeaveTheUsersFilesAlone) {
    Process own(vellory());
    ASSERT_EQ(own.lineWith("apps"), "3 apps");
    ASSERT_TRUE(own.lineWith("settled"));
    const auto scratch = session.folder().path() / "scratch";
    std::filesystem::create_directories(scratch);
    session.folder().write("other/delta.desktop",
                           "[Desktop Entry]\nType=Application\nName=delta\nExec=true\n");
    const std::string picture = session.folder().path() / "picture.png";
    const std::string other = session.folder().path() / "other";
    const auto before = filesBelow(session.home());
    ASSERT_TRUE(before.contains(support() / "layout.json"));
    const auto inScratch = [&](std::vector<std::string> command) {
        command.insert(command.begin(), {"env", "TMPDIR=" + scratch.string(), VELLORY_PROGRAM});
        return command;
    };

    EXPECT_EQ(run(inScratch({"--screenshot", picture, "--view", "history"})), 0);
    EXPECT_EQ(run(inScratch({"--screenshot", picture, "--apps", other})), 0);
    Process beside(inScratch({"--apps", other, "--report"}));
    EXPECT_EQ(beside.lineWith("apps"), "1 apps") << "not the one that runs";
    EXPECT_FALSE(std::filesystem::is_empty(scratch));
    beside.signal(SIGTERM);
    EXPECT_EQ(beside.waitForEnd(), 0);

    EXPECT_EQ(filesBelow(session.home()), before);
    EXPECT_TRUE(std::filesystem::is_empty(scratch)) << "the copies go with the runs";
    own.signal(SIGTERM);
    EXPECT_EQ(own.waitForEnd(), 0);
}

TEST_F(ProgramTest, AnAppThatIsInstalledAppearsAtTheEndWithItsNotice) {
    Process program(vellory());
    ASSERT_TRUE(program.lineWith("apps"));
    ASSERT_TRUE(program.lineWith("settled"));
    session.addApp("aardvark", "--class aardvark");
    const auto notice = program.lineWith("notice");
    ASSERT_TRUE(notice) << program.said();
    EXPECT_THAT(*notice, HasSubstr("aardvark added to vellory"));
    EXPECT_EQ(lastTile(), "app:aardvark");
}

// Which windows count as starts is tested with the ports; here, that all is kept at the end.
TEST_F(ProgramTest, AppsThatAreStartedByHandAreLoggedOnceEach) {
    session.run({VELLORY_WINDOW_APP, "--class", "gamma"});
    ASSERT_TRUE(seesWindow("gamma"));
    Process program(vellory());
    ASSERT_TRUE(program.lineWith("apps"));
    session.run({VELLORY_WINDOW_APP, "--class", "alpha"});
    EXPECT_TRUE(program.lineWith("launched alpha")) << program.said();
    session.run({VELLORY_WINDOW_APP, "--class", "beta", "--windows", "5"});
    EXPECT_TRUE(program.lineWith("launched beta")) << program.said();
    program.signal(SIGTERM);
    EXPECT_EQ(program.waitForEnd(), 0);
    std::vector<BundleID> logged;
    for (const LaunchLog::Event& event : LaunchLog::load(support() / "launches.json").events) {
        logged.push_back(event.app);
    }
    EXPECT_THAT(logged, ElementsAre("alpha", "beta"));
    EXPECT_EQ(UsageStore::load(support() / "usage.json").count("beta"), 1);
    EXPECT_EQ(HabitLog::load(support() / "habits.json").events.size(), 2U);
}

// Whatever is under way in the background then.
TEST_F(ProgramTest, ItEndsCleanlyAtAnyMomentAfterItIsSeen) {
    for (const char* moment : {"apps", "apps", "apps", "settled"}) {
        Process program(vellory());
        ASSERT_TRUE(program.lineWith(moment));
        program.signal(SIGTERM);
        EXPECT_EQ(program.waitForEnd(), 0) << program.said();
    }
}

TEST_F(ProgramTest, ALinkStartsTheProgramOrIsObeyedByTheOneThatRuns) {
    Process program({VELLORY_PROGRAM, "--report", "vellory://workspace/None"});
    EXPECT_TRUE(program.lineWith("notice No workspace named “None”")) << program.said();
    EXPECT_EQ(run({VELLORY_PROGRAM, "vellory://toggle"}), 0);
    EXPECT_EQ(program.lineWith(""), "3 apps") << "which was not shown before";
    EXPECT_EQ(run({VELLORY_PROGRAM, "vellory://toggle"}), 0);
    EXPECT_TRUE(program.lineWith("hidden"));
    EXPECT_EQ(run({VELLORY_PROGRAM, "--hidden"}), 0) << "there is nothing left to do";
    for (const char* wrong : {"https://example.org/", "VELLORY://open", "alpha"}) {
        EXPECT_EQ(run({VELLORY_PROGRAM, wrong}), 1);
    }
    const std::string tooLong(70'000, 'x');
    EXPECT_EQ(run({VELLORY_PROGRAM, "vellory://search?q=" + tooLong}), 1);
    EXPECT_EQ(run({VELLORY_PROGRAM, "vellory://search?q=alpha"}), 0);
    EXPECT_EQ(program.lineWith(""), "3 apps");
}

// Where the session cannot start it, as it does not know the program.
TEST_F(ProgramTest, ALinkStartsTheProgramInTheBackground) {
    // Its output would keep this waiting if the program held it.
    EXPECT_EQ(run({VELLORY_PROGRAM, "vellory://toggle"}), 0);
    EXPECT_TRUE(seesWindow("^vellory$"));
    EXPECT_EQ(run({VELLORY_PROGRAM, "vellory://toggle"}), 0);
    EXPECT_TRUE(windowGoes("^vellory$"));
    EXPECT_EQ(endProgram(), 0);
    session.stopServer();
    EXPECT_EQ(run({VELLORY_PROGRAM, "vellory://toggle"}), 1);
}

// By the command line, the desktop's openers and the program itself, whether it runs or not.
TEST_F(ProgramTest, ALinkStartsTheInstalledProgramWhichOutlivesWhatOpenedIt) {
    install();
    const std::vector<std::vector<std::string>> openers{{VELLORY_COMMAND, "toggle"},
                                                        {"gio", "open", "vellory://toggle"},
                                                        {"xdg-open", "vellory://toggle"},
                                                        {VELLORY_PROGRAM, "vellory://toggle"}};
    for (const auto& opener : openers) {
        EXPECT_EQ(run(opener), 0);
        EXPECT_TRUE(seesWindow("^vellory$")) << opener[0];
        EXPECT_EQ(run(opener), 0);
        EXPECT_TRUE(windowGoes("^vellory$")) << opener[0];
        EXPECT_EQ(endProgram(), 0);
    }
    EXPECT_EQ(run({"appstreamcli", "validate", "--no-net",
                   VELLORY_PACKAGING "/com.quorvel.vellory.metainfo.xml"}),
              0);
}

// Also where the socket of one that was killed is left.
TEST_F(ProgramTest, OfTenStartsAtOnceOneIsLeft) {
    {
        Process killed(vellory());
        ASSERT_TRUE(killed.lineWith("apps"));
        killed.kill(SIGKILL);
    }
    std::list<Process> starts;
    for (int i = 0; i < 10; ++i) {
        starts.emplace_back(vellory());
    }
    std::size_t showing = 0;
    for (Process& start : starts) {
        // Whoever shows the grid runs on; all others end without a word.
        showing += start.lineWith("3 apps") ? 1 : 0;
    }
    EXPECT_EQ(showing, 1U);
}

// The window needs a while to come and to get the focus, which another window has until then.
TEST_F(ProgramTest, NoKeyIsLostFromTheSummonsOn) {
    Process program({VELLORY_PROGRAM, "--hidden", "--report"});
    ASSERT_EQ(run({"timeout", "20", "sh", "-c",
                   "until [ -S \"$XDG_RUNTIME_DIR/vellory/socket\" ]; do :; done"}),
              0);
    for (const std::string app : {"beta", "gamma", "alpha"}) {
        ASSERT_EQ(run(vellory()), 0) << "ends once the first was summoned";
        ASSERT_TRUE(presses({"type", "--delay", "5", app}) && presses({"key", "Return"}));
        ASSERT_TRUE(program.lineWith("hidden")) << app;
        EXPECT_TRUE(seesWindow(app)) << app;
    }
}

TEST_F(ProgramTest, WithoutADisplayItSaysSoInOneSentence) {
    session.stopServer();
    Process program(vellory());
    EXPECT_EQ(program.waitForEnd(), 1);
    EXPECT_THAT(program.said(), HasSubstr("there is no display to open on"));
}

} // namespace
} // namespace vellory::test
