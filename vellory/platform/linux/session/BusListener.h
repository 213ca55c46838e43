// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/GLibPointers.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// Listens to signals on the session bus on a thread of its own: the main thread never waits for
/// the bus. Silent where there is none.
class BusListener {
  public:
    struct Signal {
        std::string sender; ///< a well-known name, or "" for anybody
        std::string path;   ///< "" for any
        std::string interface;
        std::string member;
        /// Called on the listener's thread with the sender's own name and the arguments.
        std::function<void(const char* sender, GVariant* arguments)> heard;
    };

    /// `begun` is called on the listener's thread once it hears the signals.
    BusListener(SessionEnvironment environment, std::vector<Signal> signals,
                std::function<void(GDBusConnection*)> begun = {});
    BusListener(const BusListener&) = delete;
    BusListener& operator=(const BusListener&) = delete;
    /// After this nothing is called any more.
    ~BusListener();

  private:
    void run();

    SessionEnvironment environment_;
    std::vector<Signal> signals_;
    std::function<void(GDBusConnection*)> begun_;
    glib::MainContext context_;
    glib::MainLoop loop_;
    std::thread thread_;
};

} // namespace vellory
