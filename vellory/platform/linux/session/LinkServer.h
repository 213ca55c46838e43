// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/EventLoop.h"
#include "platform/LinkReceiver.h"
#include "platform/Scheduler.h"
#include "platform/linux/session/Descriptor.h"
#include "platform/linux/session/InstanceSocket.h"

namespace vellory {

/// Hears the links that other starts of the program hand over. Whoever connects and says nothing is
/// let go after a while, or at once when others want the room. Main thread only.
class LinkServer {
  public:
    /// As many connections are open at most; further ones wait outside.
    static constexpr std::size_t mostConnections = 64;
    static constexpr double patienceSeconds = 2.0;

    /// `loop` and `scheduler` must outlive this object.
    LinkServer(InstanceSocket place, EventLoop& loop, Scheduler& scheduler, LinkReceiver receiver);
    LinkServer(const LinkServer&) = delete;
    LinkServer& operator=(const LinkServer&) = delete;

  private:
    using Number = std::uint64_t;
    struct Connection {
        Descriptor descriptor;
        std::string text; ///< what has come and is no whole line
        LinkRequest request;
        bool isWhole = false; ///< the link has come, and the answer is awaited
        EventLoop::Handle watch;
        Scheduler::Handle patience;
    };

    void watch();
    void accept();
    bool makeRoom();
    void read(Number number);
    void takeLines(Number number);
    void take(Number number, const std::string& line);
    void answer(Number number, std::string_view word);
    void drop(Number number);

    InstanceSocket place_;
    EventLoop& loop_;
    Scheduler& scheduler_;
    LinkReceiver receiver_;
    Number lastNumber_ = 0;
    std::map<Number, Connection> connections_; ///< the oldest first
    EventLoop::Handle watch_;                  ///< absent while there is no room
    /// Expires with this object: answers may come later.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace vellory
