// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/FocusKeeper.h"

#include <limits>

namespace vellory {

namespace {

constexpr double longAgo = -std::numeric_limits<double>::infinity();

} // namespace

void FocusKeeper::begin(const BundleID& app, const std::vector<xcb_window_t>& shown,
                        xcb_window_t active, double now) {
    if (!isOn(now)) {
        kept_ = active;
        last_ = active;
    }
    Guarded& guarded = guarded_[app];
    guarded.until = now + startSeconds;
    for (const xcb_window_t window : shown) {
        guarded.came[window] = now;
    }
}

bool FocusKeeper::isOn(double now) {
    std::erase_if(guarded_, [&](const auto& entry) { return entry.second.until < now; });
    return !guarded_.empty();
}

void FocusKeeper::windowCame(const BundleID& app, xcb_window_t window, double now) {
    if (const auto guarded = guarded_.find(app); guarded != guarded_.end()) {
        guarded->second.came.try_emplace(window, now);
    }
}

std::optional<xcb_window_t> FocusKeeper::focused(xcb_window_t window, const BundleID& app,
                                                 double now) {
    if (window == last_) {
        return std::nullopt; // It has not given it back yet: that is no wish of the user's.
    }
    last_ = window;
    const auto guarded = guarded_.find(app);
    if (guarded != guarded_.end()) {
        double& came = guarded->second.came.try_emplace(window, now).first->second;
        const bool isJustThere = now - came <= graceSeconds;
        came = longAgo;
        if (isJustThere && kept_ != XCB_WINDOW_NONE && kept_ != window) {
            return kept_;
        }
    }
    kept_ = window;
    return std::nullopt;
}

} // namespace vellory
