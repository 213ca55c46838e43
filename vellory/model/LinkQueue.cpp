// SPDX-License-Identifier: Apache-2.0
#include "model/LinkQueue.h"

#include <string_view>
#include <utility>

namespace vellory {

namespace {

constexpr std::string_view toggle = "vellory://toggle";

} // namespace

void LinkQueue::add(LinkRequest request, LinkAnswer answer) {
    if (!entries_.empty() && entries_.back().request.link == request.link) {
        Entry& last = entries_.back();
        last.answers.push_back(std::move(answer));
        if (request.link == toggle) {
            // Nothing is left to do, but who asked is still told in turn.
            last.request.link.clear();
        } else {
            last.request.activationToken = std::move(request.activationToken);
        }
        return;
    }
    if (entries_.size() >= longest) {
        answer(false);
        return;
    }
    entries_.push_back({std::move(request), {}});
    entries_.back().answers.push_back(std::move(answer));
    if (next_ == nullptr) {
        next_ = scheduler_.after(0, [this] { obeyNext(); });
    }
}

void LinkQueue::obeyNext() {
    const Entry entry = std::move(entries_.front());
    entries_.pop_front();
    // Before it is obeyed, which may take long or ask for more.
    next_ = entries_.empty() ? nullptr : scheduler_.after(0, [this] { obeyNext(); });
    if (!entry.request.link.empty()) {
        obey_(entry.request);
    }
    for (const LinkAnswer& answer : entry.answers) {
        answer(true);
    }
}

} // namespace vellory
