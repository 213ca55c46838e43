// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "platform/EventLoop.h"
#include "platform/HotKeys.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// Key grabs on the root window of an X server. They follow changes of the keyboard's layout, hold
/// whatever lock is on, and tell of a key that is held down once. Without a server, or on Wayland,
/// where only the desktop itself may have such keys, every shortcut is refused.
class LinuxHotKeys final : public HotKeys {
  public:
    /// `loop` must outlive this object.
    LinuxHotKeys(const SessionEnvironment& environment, EventLoop& loop);
    ~LinuxHotKeys() override;

    /// Of two names with the same keys the first one gets them.
    std::set<std::string> set(const Shortcuts& shortcuts) override;
    void observe(std::function<void(const std::string& name)> pressed) override;

  private:
    class Grabs;
    std::unique_ptr<Grabs> grabs_;
};

} // namespace vellory
