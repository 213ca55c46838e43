// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "platform/Desktop.h"
#include "platform/HttpClient.h"
#include "platform/Scheduler.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

class LauncherBadges;
class LinuxRunningApps;
class SoundPlayer;

/// The desktop around the apps on Linux: wallpaper from the desktop's settings or the X server,
/// badges as apps announce them on the session bus. What is opened goes to the user's default app
/// for it, started as every app is; nothing that is opened is ever run itself.
class LinuxDesktop final : public Desktop {
  public:
    /// `apps` starts what opens links and files; `http` asks browsers of this machine. They and
    /// `scheduler` must outlive this object.
    LinuxDesktop(SessionEnvironment environment, LinuxRunningApps& apps, const HttpClient& http,
                 Scheduler& scheduler);
    ~LinuxDesktop() override;

    /// Only remembered: the shell, which owns the windows, keeps them off the task bar.
    void setActivationPolicy(ActivationPolicy policy) override { policy_ = policy; }
    ActivationPolicy activationPolicy() const { return policy_; }

    std::optional<Image> backdrop(const Area& display) const override;
    std::map<BundleID, std::string> badges() const override;

    bool openLink(const std::string& link) override;
    bool openFile(const std::filesystem::path& file) override;
    void playSound(const std::string& name) override;
    std::vector<std::string> openFolders() const override;
    std::vector<std::string> openTabs() const override;

  private:
    SessionEnvironment environment_;
    LinuxRunningApps& apps_;
    const HttpClient& http_;
    Scheduler& scheduler_;
    ActivationPolicy policy_ = ActivationPolicy::regular;
    std::unique_ptr<LauncherBadges> badges_;
    std::shared_ptr<SoundPlayer> sounds_; ///< shared with the thread that starts a sound
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true); ///< ends with this object
};

} // namespace vellory
