// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <vector>

#include "platform/LinkReceiver.h"
#include "platform/Scheduler.h"

namespace vellory {

/// Obeys links in the order in which they came, one at a time between the program's other work, so
/// that a flood of them holds nobody up. What would not be seen is left out: a link that repeats
/// the one waiting before it is obeyed with that one, and two toggles in a row cancel each other.
/// Main thread only.
class LinkQueue {
  public:
    /// How many different links may wait; further ones are refused.
    static constexpr std::size_t longest = 10'000;

    LinkQueue(Scheduler& scheduler, std::function<void(const LinkRequest&)> obey)
        : scheduler_(scheduler), obey_(std::move(obey)) {}

    void add(LinkRequest request, LinkAnswer answer);

  private:
    struct Entry {
        LinkRequest request;
        std::vector<LinkAnswer> answers;
    };

    void obeyNext();

    Scheduler& scheduler_;
    std::function<void(const LinkRequest&)> obey_;
    std::deque<Entry> entries_;
    Scheduler::Handle next_;
};

} // namespace vellory
