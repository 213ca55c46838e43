// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>

#include "platform/EventLoop.h"
#include "platform/LinkReceiver.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// The program as the session bus knows it, so that the desktop starts it where it does not run and
/// asks it where it does: org.freedesktop.Application, by which desktop entries are opened, and an
/// interface of our own for what has no way to say an empty table of platform data. All of it
/// becomes links. Silent without a bus, and where somebody else has the name. Main thread.
class ApplicationBus {
  public:
    static constexpr const char* name = "com.quorvel.vellory";
    static constexpr const char* path = "/com/quorvel/vellory";

    /// As many calls wait at most; further ones are refused.
    static constexpr std::size_t mostWaiting = 10'000;

    /// `loop` must outlive this object.
    ApplicationBus(const SessionEnvironment& environment, EventLoop& loop, LinkReceiver receiver);
    ApplicationBus(const ApplicationBus&) = delete;
    ApplicationBus& operator=(const ApplicationBus&) = delete;
    ~ApplicationBus();

    /// Has the program on the bus obey a link; the bus starts it where it does not run. False when
    /// there is no bus, or the program was not installed for it.
    static bool open(const SessionEnvironment& environment, const LinkRequest& request);

  private:
    class Service; // GLib's headers do not go together with Qt's, and this one is for main.cpp.
    std::unique_ptr<Service> service_;
};

} // namespace vellory
