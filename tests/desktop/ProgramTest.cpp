// SPDX-License-Identifier: Apache-2.0
#include <csignal>
#include <cstdio>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Board/BoardStore.h"
#include "DesktopSession.h"
#include "Support/AtomicFile.h"
#include "Usage/HabitLog.h"
#include "Usage/LaunchLog.h"
#include "Usage/UsageStore.h"

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
        pid_ = ::fork();
        if (pid_ == 0) {
            ::dup2(output[1], STDOUT_FILENO);
            ::dup2(output[1], STDERR_FILENO);
            std::vector<char*> arguments;
            for (const std::string& word : command) {
                arguments.push_back(const_cast<char*>(word.c_str()));
            }
            arguments.push_back(nullptr);
            ::execvp(arguments[0], arguments.data());
            ::_exit(127);
        }
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
        while (true) {
            for (std::size_t end = pending_.find('\n'); end != std::string::npos;
                 end = pending_.find('\n')) {
                const std::string line = pending_.substr(0, end);
                pending_.erase(0, end + 1);
                said_ += line + "\n";
                if (line.find(text) != std::string::npos) {
                    return line;
                }
            }
            pollfd waiting{output_, POLLIN, 0};
            char bytes[4096];
            const ssize_t got = ::poll(&waiting, 1, programDeadlineMilliseconds) > 0
                                    ? ::read(output_, bytes, sizeof bytes)
                                    : 0;
            if (got <= 0) {
                if (text != "\n") {
                    // Why it ended, or what it was doing, is nowhere else to be read.
                    std::fprintf(stderr, "No line with \"%s\" came after:\n%s%s\n", text.c_str(),
                                 said_.c_str(), pending_.c_str());
                }
                return std::nullopt;
            }
            pending_.append(bytes, static_cast<std::size_t>(got));
        }
    }

    /// Everything that it says until it ends, and its exit code.
    int waitForEnd() {
        while (lineWith("\n")) {
        }
        int status = 0;
        ::waitpid(pid_, &status, 0);
        pid_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    const std::string& said() const { return said_; }

    void signal(int number) const { ::kill(pid_, number); }
    void kill(int signal) {
        if (pid_ > 0) {
            ::kill(pid_, signal);
            ::waitpid(pid_, nullptr, 0);
            pid_ = 0;
        }
    }

  private:
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
bool seesWindow(const std::string& windowClass) {
    return run({"timeout", "20", "sh", "-c",
                "until xdotool search --onlyvisible --class \"$0\"; do :; done", windowClass}) == 0;
}

/// Waits until no window of that class is there.
bool windowGoes(const std::string& windowClass) {
    return run({"timeout", "20", "sh", "-c",
                "while xdotool search --onlyvisible --class \"$0\"; do :; done", windowClass}) == 0;
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

    std::vector<std::string> vellory(const std::string& option = "--report") const {
        return {VELLORY_PROGRAM, option};
    }
    /// Makes the session know the program, as an installation does.
    void install() const {
        const std::filesystem::path data = session.environment().dataHome();
        for (const std::string entry : {"applications/com.quorvel.vellory.desktop",
                                        "dbus-1/services/com.quorvel.vellory.service"}) {
            const std::filesystem::path file = data / entry;
            std::string text = contentOf(VELLORY_PACKAGING "/" + file.filename().string() + ".in");
            for (const std::string variable :
                 {"@VELLORY_PROGRAM@", "@VELLORY_EXEC@", "@VELLORY_ENTRY_EXEC@"}) {
                for (auto at = text.find(variable); at != std::string::npos;
                     at = text.find(variable)) {
                    text.replace(at, variable.size(), VELLORY_PROGRAM);
                }
            }
            session.folder().write(std::filesystem::relative(file, session.folder().path()), text);
            EXPECT_TRUE(entry.ends_with(".service") ||
                        run({"desktop-file-validate", file.string()}) == 0);
        }
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
    ASSERT_EQ(run({"timeout", "20", "xdotool", "type", "beta"}), 0);
    ASSERT_EQ(run({"timeout", "20", "xdotool", "key", "Return"}), 0);
    ASSERT_TRUE(program.lineWith("hidden"));
    EXPECT_TRUE(seesWindow("beta"));
    EXPECT_NE(run({"timeout", "20", "xdotool", "search", "--onlyvisible", "--class", "alpha"}), 0);
}

/// Every file below `folder` with its content.
std::map<std::string, std::string> filesBelow(const std::filesystem::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files[entry.path().string()] = contentOf(entry.path());
        }
    }
    return files;
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

// As on a fresh account.
TEST_F(ProgramTest, AFolderOfAppsThatWasMissingIsSeenToCome) {
    const auto own = session.environment().dataHome() / "applications";
    const auto aside = session.folder().path() / "aside";
    std::filesystem::rename(own, aside);
    Process program(vellory());
    ASSERT_EQ(program.lineWith("apps"), "0 apps");
    ASSERT_TRUE(program.lineWith("settled"));
    std::filesystem::rename(aside, own);
    EXPECT_EQ(program.lineWith("notice"), "notice 3 new apps added");
}

// From a terminal or a panel, whatever windows they show; and all is kept when the session ends.
TEST_F(ProgramTest, AppsThatAreStartedByHandAreLoggedOnceEach) {
    const std::filesystem::path gate = session.folder().path() / "gate";
    ASSERT_EQ(::mkfifo(gate.c_str(), 0600), 0);
    const std::filesystem::path again = gate.string() + ".again";
    ASSERT_EQ(::mkfifo(again.c_str(), 0600), 0);
    const auto open = [](const std::filesystem::path& pipe) {
        ::close(::open(pipe.c_str(), O_WRONLY));
    };
    for (const char* id : {"delta", "epsilon", "early"}) {
        session.addApp(id, std::string("--class ") + id);
    }
    session.run({VELLORY_WINDOW_APP, "--class", "early"});
    ASSERT_EQ(
        run({"timeout", "20", "xdotool", "search", "--sync", "--onlyvisible", "--class", "early"}),
        0);
    Process program(vellory());
    ASSERT_TRUE(program.lineWith("apps"));

    session.run({VELLORY_WINDOW_APP, "--class", "alpha"});
    EXPECT_TRUE(program.lineWith("launched alpha")) << program.said();
    session.run({VELLORY_WINDOW_APP, "--class", "beta", "--windows", "5"});
    EXPECT_TRUE(program.lineWith("launched beta")) << program.said();
    session.run({VELLORY_WINDOW_APP, "--class", "gamma", "--splash", "--gate", gate});
    open(gate);
    EXPECT_TRUE(program.lineWith("launched gamma")) << program.said();
    session.run({VELLORY_WINDOW_APP, "--class", "delta", "--flash", "--gate", gate});
    EXPECT_TRUE(program.lineWith("launched delta")) << program.said();
    open(gate);
    open(again);
    session.run({VELLORY_WINDOW_APP, "--class", "epsilon", "--reparented"});
    EXPECT_TRUE(program.lineWith("launched epsilon")) << program.said();

    program.signal(SIGTERM);
    EXPECT_EQ(program.waitForEnd(), 0);
    std::vector<BundleID> logged;
    for (const LaunchLog::Event& event : LaunchLog::load(support() / "launches.json").events) {
        logged.push_back(event.app);
    }
    EXPECT_THAT(logged, ElementsAre("alpha", "beta", "gamma", "delta", "epsilon"));
    EXPECT_EQ(UsageStore::load(support() / "usage.json").count("beta"), 1);
    EXPECT_EQ(HabitLog::load(support() / "habits.json").events.size(), 5U);
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

TEST_F(ProgramTest, ASecondStartBringsTheFirstBackAndEnds) {
    Process program(vellory());
    ASSERT_TRUE(program.lineWith("apps"));
    ASSERT_TRUE(seesWindow("^vellory$"));
    ASSERT_EQ(run({"timeout", "20", "xdotool", "key", "Escape"}), 0);
    ASSERT_TRUE(program.lineWith("hidden"));
    EXPECT_EQ(run(vellory()), 0);
    EXPECT_TRUE(program.lineWith("apps")) << "the first shows its grid again";
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

TEST_F(ProgramTest, OfTenStartsAtOnceOneIsLeft) {
    std::list<Process> starts;
    for (int i = 0; i < 10; ++i) {
        starts.emplace_back(std::vector<std::string>{VELLORY_PROGRAM, "--report"});
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
        ASSERT_EQ(run({"timeout", "20", "xdotool", "type", "--delay", "5", app}), 0);
        ASSERT_EQ(run({"timeout", "20", "xdotool", "key", "Return"}), 0);
        ASSERT_TRUE(program.lineWith("hidden")) << app;
        EXPECT_TRUE(seesWindow(app)) << app;
    }
}

TEST_F(ProgramTest, ASocketLeftBehindByAKilledProgramIsTakenOver) {
    {
        Process killed(vellory());
        ASSERT_TRUE(killed.lineWith("apps"));
        killed.kill(SIGKILL);
    }
    Process next(vellory());
    EXPECT_EQ(next.lineWith("apps"), "3 apps");
}

TEST_F(ProgramTest, WithoutADisplayItSaysSoInOneSentence) {
    session.stopServer();
    Process program(vellory());
    EXPECT_EQ(program.waitForEnd(), 1);
    EXPECT_THAT(program.said(), HasSubstr("there is no display to open on"));
}

TEST_F(ProgramTest, ABrokenBoardFileNeverKeepsItFromStartingAndIsKeptBeside) {
    for (const std::string broken : {"", "{\"tiles\":[", "[1,2]", "\xff\xfe{}"}) {
        std::filesystem::remove_all(support());
        std::filesystem::create_directories(support());
        ASSERT_TRUE(AtomicFile::write(support() / "layout.json", broken));
        Process program(vellory());
        EXPECT_EQ(program.lineWith("apps"), "3 apps");
        EXPECT_EQ(AtomicFile::read(support() / "layout.json.unreadable").value_or("(none)"),
                  broken);
        EXPECT_NE(lastTile(), "");
    }
}

} // namespace
} // namespace vellory::test
