// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "platform/EventLoop.h"
#include "platform/RunningApps.h"
#include "platform/Scheduler.h"
#include "platform/linux/apps/DesktopEntries.h"

namespace vellory {

struct AppWindow;

/// Apps by their windows on an X server with a window manager of the Extended Window Manager Hints.
/// An app runs when it has a window that task bars show. Without a server, or once it is gone, no
/// app runs and starting still works.
class LinuxRunningApps final : public RunningApps {
  public:
    struct Options {
        /// What started apps inherit; its DISPLAY is the server that is asked.
        SessionEnvironment environment;
    };

    /// `loop` and `scheduler` must outlive this object; what is under way when it goes away is
    /// finished without telling anybody.
    LinuxRunningApps(const Options& options, std::shared_ptr<DesktopEntries> entries,
                     EventLoop& loop, Scheduler& scheduler);
    ~LinuxRunningApps() override;

    std::vector<RunningApp> list() const override;
    void open(const InstalledApp& app, Open mode, Completion completion) override;
    void perform(const InstalledApp& app, const std::string& action,
                 Completion completion) override;
    void openFile(const InstalledApp& app, const std::filesystem::path& file,
                  Completion completion) override;
    bool activate(const BundleID& id) override;
    bool hide(const BundleID& id) override;
    bool unhide(const BundleID& id) override;
    bool quit(const BundleID& id) override;
    void observe(Observer observer) override;

    // For the platform's other ports:

    /// Opens a link of any kind with the app, whether it runs or not.
    void openLink(const InstalledApp& app, const std::string& link, Completion completion);
    /// The windows behind `list`.
    std::vector<AppWindow> windows();

  private:
    class Session;
    std::unique_ptr<Session> session_;
};

} // namespace vellory
