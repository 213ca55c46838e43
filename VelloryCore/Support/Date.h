// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <compare>
#include <cstdint>

namespace vellory {

/// A moment on the system clock, held as seconds since 2001-01-01 00:00 UTC: the reference date
/// that stored JSON counts from, so that a date that is read and written back keeps every bit.
///
/// Values read from files may be anything a double can be; `isFinite` tells whether arithmetic on
/// this one makes sense.
struct Date {
    /// Seconds from 1970-01-01 to 2001-01-01, both 00:00 UTC.
    static constexpr double secondsFrom1970To2001 = 978'307'200.0;

    double secondsSince2001 = 0;

    static constexpr Date since2001(double seconds) { return {seconds}; }
    static constexpr Date since1970(double seconds) { return {seconds - secondsFrom1970To2001}; }

    constexpr double secondsSince1970() const { return secondsSince2001 + secondsFrom1970To2001; }

    bool isFinite() const { return std::isfinite(secondsSince2001); }

    /// Seconds from `earlier` to this moment.
    constexpr double since(Date earlier) const {
        return secondsSince2001 - earlier.secondsSince2001;
    }

    friend constexpr Date operator+(Date date, double seconds) {
        return {date.secondsSince2001 + seconds};
    }
    friend constexpr Date operator-(Date date, double seconds) {
        return {date.secondsSince2001 - seconds};
    }
    friend constexpr auto operator<=>(const Date&, const Date&) = default;
};

} // namespace vellory
