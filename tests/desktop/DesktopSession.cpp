// SPDX-License-Identifier: Apache-2.0
#include "DesktopSession.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/windows/X11Connection.h"
#include "support/Child.h"

namespace vellory::test {

namespace fs = std::filesystem;

namespace {

constexpr int deadlineMilliseconds = 10'000;
constexpr int askMilliseconds = 50;

/// A pipe whose writing end a child may inherit.
struct Pipe {
    std::array<int, 2> ends{-1, -1};

    Pipe() {
        if (pipe2(ends.data(), 0) != 0) {
            throw std::runtime_error("no pipe");
        }
        fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    }
    ~Pipe() {
        closeWriter();
        close(ends[0]);
    }
    void closeWriter() {
        if (ends[1] >= 0) {
            close(ends[1]);
            ends[1] = -1;
        }
    }
    /// The line that a child writes once it is ready.
    std::string line() {
        closeWriter();
        std::string text;
        for (pollfd end{ends[0], POLLIN, 0}; poll(&end, 1, deadlineMilliseconds) == 1;) {
            char c = 0;
            if (read(ends[0], &c, 1) != 1 || c == '\n') {
                return text;
            }
            text += c;
        }
        throw std::runtime_error("a part of the test session did not start");
    }
};

} // namespace

DesktopSession::DesktopSession() {
    fs::create_directories(home());
    fs::create_directories(folder_.path() / "runtime");
    fs::permissions(folder_.path() / "runtime", fs::perms::owner_all);
    const fs::path data = folder_.path() / "data";
    const std::map<std::string, std::string> variables{
        {"HOME", home().string()},
        {"XDG_DATA_HOME", (home() / ".local/share").string()},
        {"XDG_CONFIG_HOME", (home() / ".config").string()},
        {"XDG_CACHE_HOME", (home() / ".cache").string()},
        {"XDG_RUNTIME_DIR", (folder_.path() / "runtime").string()},
        {"XDG_DATA_DIRS", data.string()},
        {"XDG_CURRENT_DESKTOP", ""},
        {"WAYLAND_DISPLAY", ""},
        {"DESKTOP_STARTUP_ID", "inherited"},
        {"XDG_ACTIVATION_TOKEN", "inherited"},
        {"VELLORY_TEST_VARIABLE", "ours"},
        {"SESSION_VARIABLE", "the session's"},
        {"DISPLAY", ""},
        {"DBUS_SESSION_BUS_ADDRESS", ""},
    };
    for (const auto& [name, value] : variables) {
        const char* old = std::getenv(name.c_str());
        before_[name] = old == nullptr ? std::nullopt : std::optional<std::string>(old);
        setenv(name.c_str(), value.c_str(), 1);
    }
    startServer();
    startBus();
    startWindowManager();
    environment_ = SessionEnvironment::current();
}

DesktopSession::~DesktopSession() {
    // Apps end with the server; the window manager would only complain.
    stop(windowManager_);
    stopServer();
    stop(bus_);
    for (const auto& [name, old] : before_) {
        if (old) {
            setenv(name.c_str(), old->c_str(), 1);
        } else {
            unsetenv(name.c_str());
        }
    }
}

pid_t DesktopSession::start(const std::vector<std::string>& command) {
    const int log = open((folder_.path() / "session.log").c_str(),
                         O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    const pid_t pid = spawn(command, {.output = log, .error = log});
    close(log);
    return pid;
}

void DesktopSession::stop(pid_t& pid) {
    if (pid > 0) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        pid = 0;
    }
}

void DesktopSession::startServer() {
    // A number that no session beside this one gets, also not once this server has stopped.
    constexpr int firstNumber = 1000;
    constexpr int numbers = 50000;
    Pipe ready;
    server_ = start({"Xvfb", ":" + std::to_string(firstNumber + getpid() % numbers), "-displayfd",
                     std::to_string(ready.ends[1]), "-screen", "0", "1280x800x24", "-nolisten",
                     "tcp", "-noreset"});
    setenv("DISPLAY", (":" + ready.line()).c_str(), 1);
}

void DesktopSession::stopServer() {
    stop(server_);
}

void DesktopSession::startBus() {
    const fs::path socket = folder_.path() / "bus";
    const fs::path configuration = folder_.write("bus.conf", R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=)" + socket.string() + R"(</listen>
  <servicedir>)" + (home() / ".local/share/dbus-1/services").string() +
                                                                 R"(</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)");
    Pipe ready;
    bus_ =
        start({"dbus-daemon", "--nofork", "--nosyslog", "--config-file=" + configuration.string(),
               "--print-address=" + std::to_string(ready.ends[1])});
    setenv("DBUS_SESSION_BUS_ADDRESS", ready.line().c_str(), 1);
}

void DesktopSession::startWindowManager() {
    const auto connection = X11Connection::open(std::getenv("DISPLAY"));
    if (connection == nullptr) {
        throw std::runtime_error("the X server does not answer");
    }
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection->get(), connection->root(), XCB_CW_EVENT_MASK, &events);
    connection->flush();
    // Its themes are the machine's; "env" becomes it, so the process is the same.
    std::vector<std::string> command{"env", "XDG_DATA_DIRS=/usr/share"};
    if (const char* other = std::getenv("VELLORY_TEST_WINDOW_MANAGER")) {
        command.emplace_back(other);
    } else {
        // Windows that fly to the task bar have no place meanwhile.
        const fs::path configuration =
            folder_.write("openbox.xml", R"(<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><focusLast>yes</focusLast></focus>
  <theme><name>Clearlooks</name><animateIconify>no</animateIconify></theme>
</openbox_config>
)");
        command.insert(command.end(),
                       {"openbox", "--sm-disable", "--config-file", configuration.string()});
    }
    windowManager_ = start(command);
    // Windows that come while it starts may stay unmanaged for good, so it is asked something,
    // again and again, until its main loop answers.
    const auto& ewmh = *connection->ewmh();
    for (int attempt = 0; attempt < deadlineMilliseconds / askMilliseconds; ++attempt) {
        connection->sendToWindowManager(connection->ownWindow(), ewmh._NET_REQUEST_FRAME_EXTENTS,
                                        {});
        connection->flush();
        pollfd arrived{connection->fileDescriptor(), POLLIN, 0};
        poll(&arrived, 1, askMilliseconds);
        connection->takeEvents();
        if (!connection
                 ->values(
                     connection->requestProperty(connection->ownWindow(), ewmh._NET_FRAME_EXTENTS))
                 .empty()) {
            return;
        }
    }
    throw std::runtime_error("the window manager did not start");
}

void DesktopSession::stopWindowManager() {
    stop(windowManager_);
}

fs::path DesktopSession::addApp(const std::string& id, const std::string& arguments,
                                const std::string& more) const {
    return folder_.write("home/.local/share/applications/" + id + ".desktop",
                         "[Desktop Entry]\nType=Application\nName=" + id +
                             "\nExec=" VELLORY_WINDOW_APP " " + arguments + "\n" + more);
}

std::string DesktopSession::addGate(const std::string& name) const {
    const std::string gate = folder_.path() / name;
    if (mkfifo(gate.c_str(), 0600) != 0) {
        throw std::runtime_error("no gate");
    }
    return gate;
}

void DesktopSession::openGate(const std::string& gate) {
    openGates_.emplace_back(open(gate.c_str(), O_WRONLY | O_CLOEXEC)); // Waits for the app.
}

fs::path DesktopSession::reportFile(const std::string& name) const {
    return folder_.path() / "reports" / name;
}

std::map<std::string, std::string> DesktopSession::report(const std::string& name) const {
    std::map<std::string, std::string> out;
    std::string content = contentOf(reportFile(name));
    for (std::size_t begin = 0; begin < content.size();) {
        const std::size_t end = std::min(content.find('\0', begin), content.size());
        const std::string line = content.substr(begin, end - begin);
        out[line.substr(0, line.find('='))] =
            line.substr(std::min(line.find('=') + 1, line.size()));
        begin = end + 1;
    }
    return out;
}

} // namespace vellory::test
