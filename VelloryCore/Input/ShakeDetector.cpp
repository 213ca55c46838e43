// SPDX-License-Identifier: Apache-2.0
#include "Input/ShakeDetector.h"

#include <algorithm>
#include <cmath>

namespace vellory {

namespace {

/// Points. A smaller move is the noise of a hand at rest.
constexpr double smallestMove = 0.5;
/// Points against the direction before it counts as turned; less is jitter.
constexpr double turnDistance = 8;
/// Seconds after a shake in which there is no other.
constexpr double pauseAfterShake = 1.0;

struct Row {
    std::string_view rawValue;
    ShakeDetector::Constants constants;
};

/// In the order of `Sensitivity`.
constexpr Row rows[] = {
    {"gentle", {40, 0.8, 3}},
    {"normal", {70, 0.7, 4}},
    {"firm", {110, 0.65, 5}},
};

const Row& row(ShakeDetector::Sensitivity sensitivity) {
    return rows[static_cast<std::size_t>(sensitivity)];
}

} // namespace

std::string_view ShakeDetector::rawValue(Sensitivity sensitivity) {
    return row(sensitivity).rawValue;
}

std::optional<ShakeDetector::Sensitivity> ShakeDetector::sensitivity(std::string_view rawValue) {
    for (const Sensitivity candidate : allSensitivities) {
        if (row(candidate).rawValue == rawValue) {
            return candidate;
        }
    }
    return std::nullopt;
}

ShakeDetector::Constants ShakeDetector::constants(Sensitivity sensitivity) {
    return row(sensitivity).constants;
}

bool ShakeDetector::feed(double x, double /*y*/, double time) {
    if (!std::isfinite(x) || !std::isfinite(time)) {
        return false;
    }
    const double moved = x - lastX_.value_or(x);
    lastX_ = x;
    const double length = std::fabs(moved);
    if (length < smallestMove) {
        return false;
    }
    const int direction = moved > 0 ? 1 : -1;
    if (direction_ == 0) {
        direction_ = direction;
        travel_ = length;
        return false;
    }
    if (direction == direction_) {
        travel_ += length;
        counterTravel_ = 0;
        return false;
    }
    counterTravel_ += length;
    return counterTravel_ >= turnDistance && reverse(time);
}

/// The pointer has turned. Starts the next stroke and tells whether this turn completes a shake.
bool ShakeDetector::reverse(double time) {
    if (travel_ < constants_.minimumStroke) {
        reversalCount_ = 0; // a short stroke breaks the sequence
    } else {
        if (reversalCount_ == constants_.reversals) {
            std::shift_left(reversals_.begin(), reversals_.end(), 1);
            --reversalCount_;
        }
        reversals_[reversalCount_++] = time;
    }
    direction_ = -direction_;
    travel_ = counterTravel_;
    counterTravel_ = 0;
    dropReversalsOutside(constants_.reversalWindow, time);
    // By distance, so that a clock that was set back does not silence the detector.
    if (reversalCount_ < constants_.reversals || std::fabs(time - lastShake_) <= pauseAfterShake) {
        return false;
    }
    reversalCount_ = 0;
    lastShake_ = time;
    return true;
}

void ShakeDetector::dropReversalsOutside(double window, double time) {
    const auto end = reversals_.begin() + static_cast<std::ptrdiff_t>(reversalCount_);
    const auto kept = std::remove_if(reversals_.begin(), end,
                                     [&](double t) { return std::fabs(time - t) > window; });
    reversalCount_ = static_cast<std::size_t>(kept - reversals_.begin());
}

} // namespace vellory
