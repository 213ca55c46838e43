// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

namespace vellory {

/// A turn of the wheel or a move of two fingers. Positive is right and down for what is shown, as
/// if it were pushed: towards the page before.
struct Scroll {
    enum class Phase {
        none,    ///< the device does not tell when a gesture begins and ends
        begin,   ///< fingers came down
        update,  ///< they moved
        end,     ///< they left
        momentum ///< what runs on afterwards by itself
    };

    double dx = 0;
    double dy = 0;
    /// True: a touch pad, in device-independent pixels. False: a wheel, in notches (fractions from
    /// wheels that turn freely).
    bool precise = false;
    Phase phase = Phase::none;
};

/// Makes pages out of scroll events: one for each notch of a wheel, however finely it reports, and
/// one for each flick on a touch pad, whose pages follow the fingers until they leave.
class ScrollPager {
  public:
    struct Pages {
        int current = 0;
        int count = 1;
        double width = 0; ///< device-independent pixels
    };

    struct Result {
        int page = 0;
        double offset = 0; ///< how far the pages are to be shown aside
    };

    /// `time` in seconds from any origin.
    Result feed(const Scroll& scroll, double time, const Pages& pages);

  private:
    Result turnWheel(double notches, double time, const Pages& pages);
    Result follow(double distance, double time, const Pages& pages);
    Result settle(double time, const Pages& pages);
    Result flickWithoutPhases(double distance, double time, const Pages& pages);
    void begin(double time);
    void track(double distance, double time);

    double lastTime_ = 0;
    double notches_ = 0;    ///< turned but not yet made into a page
    double offset_ = 0;     ///< since the gesture began
    double untimed_ = 0;    ///< part of `offset_` that came at one moment with what came before
    double velocity_ = 0;   ///< pixels per second
    bool isTurned_ = false; ///< a gesture without phases has had its page
};

} // namespace vellory
