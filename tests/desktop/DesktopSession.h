// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "platform/linux/session/Descriptor.h"
#include "platform/linux/session/SessionEnvironment.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {

/// A desktop for one test: an X server, a window manager and a session bus that nobody else sees,
/// with an empty home folder. The window manager is openbox, or by hand the one whose program is in
/// VELLORY_TEST_WINDOW_MANAGER. While it lives, this process is part of that session. Whatever
/// still runs on it at the end is killed.
class DesktopSession {
  public:
    DesktopSession();
    ~DesktopSession();

    const SessionEnvironment& environment() const { return environment_; }
    const TemporaryFolder& folder() const { return folder_; }
    std::filesystem::path home() const { return folder_.path() / "home"; }

    void startWindowManager();
    void stopWindowManager();
    void stopServer();

    /// Runs a program of the session that no launcher has started; it ends with the session.
    pid_t run(const std::vector<std::string>& command) { return start(command); }

    /// Writes the desktop entry `id` for the test app with `arguments`; `more` are further lines.
    /// Returns the entry.
    std::filesystem::path addApp(const std::string& id, const std::string& arguments,
                                 const std::string& more = "") const;
    /// A pipe at which a test app with "--gate <it>" waits until it is opened.
    std::string addGate(const std::string& name) const;
    /// Lets through who waits there, and all who come later.
    void openGate(const std::string& gate);
    /// What a test app that was started with "--report <name>" saw: its variables and, under
    /// "argv", its arguments; under "cwd", "sid" and "blocked" what the names say.
    std::map<std::string, std::string> report(const std::string& name) const;
    std::filesystem::path reportFile(const std::string& name) const;

  private:
    pid_t start(const std::vector<std::string>& command);
    void stop(pid_t& pid);
    void startServer();
    void startBus();

    TemporaryFolder folder_;
    SessionEnvironment environment_;
    std::map<std::string, std::optional<std::string>> before_; ///< our own variables
    std::vector<Descriptor> openGates_;
    pid_t server_ = 0;
    pid_t windowManager_ = 0;
    pid_t bus_ = 0;
};

} // namespace vellory::test
