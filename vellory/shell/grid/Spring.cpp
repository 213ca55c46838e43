// SPDX-License-Identifier: Apache-2.0
#include "shell/grid/Spring.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vellory {

namespace {
/// Closer than this (in units of the value, a page or a whole) nobody sees the difference.
constexpr qreal restDistance = 0.0004;
constexpr qreal restVelocity = 0.01;
} // namespace

Spring::Spring(QObject* parent) : QObject(parent) {
    connect(&driver_, &QAbstractAnimation::stateChanged, this, &Spring::runningChanged);
}

void Spring::setTo(qreal to) {
    if (to == to_ && !isRunning()) {
        return;
    }
    const qreal velocity = isRunning() ? motionAt(elapsed_).velocity : 0;
    const bool changed = to != to_;
    to_ = to;
    start(velocity);
    if (changed) {
        Q_EMIT toChanged();
    }
}

void Spring::jump(qreal value) {
    driver_.stop();
    const bool changed = value != to_;
    to_ = value;
    setValue(value);
    if (changed) {
        Q_EMIT toChanged();
    }
}

void Spring::hold(qreal value) {
    driver_.stop();
    setValue(value);
}

void Spring::release(qreal to, qreal velocity) {
    const bool changed = to != to_;
    to_ = to;
    start(velocity);
    if (changed) {
        Q_EMIT toChanged();
    }
}

void Spring::start(qreal velocity) {
    driver_.stop();
    initial_ = {value_ - to_, velocity};
    elapsed_ = 0;
    if (!enabled_ || response_ <= 0) {
        setValue(to_);
        return;
    }
    driver_.start();
}

Spring::Motion Spring::motionAt(qreal seconds) const {
    // The closed solution of the damped oscillator, so that a late frame lands where it should.
    const qreal omega = 2 * std::numbers::pi / response_;
    const qreal zeta = std::clamp(dampingFraction_, 0.05, 1.0);
    const qreal decay = std::exp(-zeta * omega * seconds);
    const qreal pull = initial_.velocity + zeta * omega * initial_.distance;
    if (zeta >= 1.0) {
        return {decay * (initial_.distance + pull * seconds),
                decay * (initial_.velocity - omega * pull * seconds)};
    }
    const qreal damped = omega * std::sqrt(1 - zeta * zeta);
    const qreal cosine = std::cos(damped * seconds);
    const qreal sine = std::sin(damped * seconds);
    const qreal swing = pull / damped;
    const qreal distance = decay * (initial_.distance * cosine + swing * sine);
    const qreal velocity =
        -zeta * omega * distance + decay * damped * (swing * cosine - initial_.distance * sine);
    return {distance, velocity};
}

void Spring::advanceTo(qreal seconds) {
    elapsed_ = seconds;
    const Motion motion = motionAt(seconds);
    if (std::fabs(motion.distance) < restDistance && std::fabs(motion.velocity) < restVelocity) {
        setValue(to_);
        driver_.stop();
    } else {
        setValue(to_ + motion.distance);
    }
}

void Spring::setValue(qreal value) {
    if (value != value_) {
        value_ = value;
        Q_EMIT valueChanged();
    }
}

void Spring::Driver::updateCurrentTime(int milliseconds) {
    spring_.advanceTo(milliseconds / 1000.0);
}

} // namespace vellory
