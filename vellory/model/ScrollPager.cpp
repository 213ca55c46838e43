// SPDX-License-Identifier: Apache-2.0
#include "model/ScrollPager.h"

#include <algorithm>
#include <cmath>

#include "Input/GridMotion.h"

namespace vellory {

namespace {

/// After such a pause the rest of a notch is forgotten, in seconds.
constexpr double wheelPause = 0.5;
/// After such a pause a device without phases is taken to begin a new gesture.
constexpr double gesturePause = 0.2;
/// Fingers that rested so long before they left did not flick.
constexpr double restBeforeEnd = 0.1;
/// What a gesture without phases must cover before it may turn a page: less is a resting finger.
constexpr double leastFlick = 30.0;
/// How much of each new measurement goes into the velocity.
constexpr double smoothing = 0.6;
constexpr double edgeCoefficient = 0.55;
/// Makes up for what is lost when a notch comes in fractions such as thirds.
constexpr double notchTolerance = 1e-6;

} // namespace

ScrollPager::Result ScrollPager::feed(const Scroll& scroll, double time, const Pages& pages) {
    const double distance = std::abs(scroll.dx) > std::abs(scroll.dy) ? scroll.dx : scroll.dy;
    if (!std::isfinite(distance)) {
        return {pages.current, 0};
    }
    if (!scroll.precise) {
        return turnWheel(distance, time, pages);
    }
    switch (scroll.phase) {
    case Scroll::Phase::begin:
        begin(time);
        return follow(distance, time, pages);
    case Scroll::Phase::update:
        return follow(distance, time, pages);
    case Scroll::Phase::end:
        return settle(time, pages);
    case Scroll::Phase::momentum:
        return {pages.current, 0};
    case Scroll::Phase::none:
        return flickWithoutPhases(distance, time, pages);
    }
    return {pages.current, 0};
}

ScrollPager::Result ScrollPager::turnWheel(double notches, double time, const Pages& pages) {
    if (time - lastTime_ > wheelPause || notches * notches_ < 0) {
        notches_ = 0;
    }
    lastTime_ = time;
    notches_ += std::clamp(notches, -1.0 * pages.count, 1.0 * pages.count);
    const double whole = std::trunc(notches_ + std::copysign(notchTolerance, notches_));
    notches_ -= whole;
    const int target = pages.current - static_cast<int>(whole);
    return {std::clamp(target, 0, std::max(pages.count - 1, 0)), 0};
}

void ScrollPager::begin(double time) {
    lastTime_ = time;
    offset_ = untimed_ = velocity_ = 0;
    isTurned_ = false;
}

void ScrollPager::track(double distance, double time) {
    offset_ += distance;
    untimed_ += distance;
    if (const double passed = time - lastTime_; passed > 0) {
        velocity_ += smoothing * (untimed_ / passed - velocity_);
        untimed_ = 0;
        lastTime_ = time;
    }
}

ScrollPager::Result ScrollPager::follow(double distance, double time, const Pages& pages) {
    track(distance, time);
    const bool pastEdge = offset_ > 0 ? pages.current == 0 : pages.current >= pages.count - 1;
    return {pages.current,
            pastEdge ? GridMotion::rubberBand(offset_, pages.width, edgeCoefficient) : offset_};
}

ScrollPager::Result ScrollPager::settle(double time, const Pages& pages) {
    if (time - lastTime_ > restBeforeEnd) {
        velocity_ = 0;
    }
    const int target =
        GridMotion::pageTarget(pages.current, {offset_, velocity_}, pages.width, pages.count);
    begin(time);
    return {target, 0};
}

ScrollPager::Result ScrollPager::flickWithoutPhases(double distance, double time,
                                                    const Pages& pages) {
    if (time - lastTime_ > gesturePause) {
        begin(time);
    }
    track(distance, time);
    lastTime_ = time;
    if (isTurned_ || std::abs(offset_) < leastFlick) {
        return {pages.current, 0};
    }
    const int target =
        GridMotion::pageTarget(pages.current, {offset_, velocity_}, pages.width, pages.count);
    isTurned_ = target != pages.current;
    return {target, 0};
}

} // namespace vellory
