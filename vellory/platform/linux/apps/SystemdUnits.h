// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/EventLoop.h"
#include "platform/linux/session/BusListener.h"

namespace vellory {

/// Tells of the units that the user's systemd begins and ends for apps: desktops put each app that
/// they start into one ("app-gnome-org.gnome.Maps-4711.scope"). Silent without systemd. Main
/// thread; callbacks arrive there.
class SystemdUnits {
  public:
    enum class Change { came, went };
    using Observer = std::function<void(const std::string& unit, Change change)>;

    /// `loop` must outlive this object.
    SystemdUnits(const SessionEnvironment& environment, EventLoop& loop, Observer observer);
    SystemdUnits(const SystemdUnits&) = delete;
    SystemdUnits& operator=(const SystemdUnits&) = delete;
    ~SystemdUnits();

  private:
    struct Event {
        std::string unit;
        Change change;
    };

    void hear(GVariant* arguments, Change change);
    void deliver();

    Observer observer_;
    std::mutex mutex_;
    std::vector<Event> events_; ///< heard and not delivered
    int wake_;                  ///< readable while there are such
    EventLoop::Handle watch_;
    std::unique_ptr<BusListener> listener_;
};

} // namespace vellory
