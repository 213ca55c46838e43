// SPDX-License-Identifier: Apache-2.0
#include "Support/WallClock.h"

#include <cmath>

namespace vellory {

namespace {

constexpr std::int64_t perMinute = 60'000;
constexpr std::int64_t perDay = 1440 * perMinute;
/// Days from 1970-01-01 to 2001-01-01.
constexpr std::int64_t referenceDay = 11'323;

constexpr std::int64_t flooredQuotient(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

} // namespace

std::optional<WallClock::Reading> WallClock::read(Date date) {
    if (!Calendar::covers(date)) {
        return std::nullopt;
    }
    const double milliseconds = std::floor(date.secondsSince1970() * 1000.0);
    if (!(stretch_.from <= milliseconds && milliseconds < stretch_.until)) {
        const auto found = calendar_.stretch(date);
        if (!found) {
            return std::nullopt;
        }
        stretch_ = *found;
    }
    const std::int64_t local = static_cast<std::int64_t>(milliseconds) + stretch_.offset;
    const std::int64_t day = flooredQuotient(local, perDay);
    // 1970-01-01 was a Thursday, day 5.
    const std::int64_t weekday = (day + 4) - 7 * flooredQuotient(day + 4, 7) + 1;
    return Reading{day - referenceDay, static_cast<int>((local - day * perDay) / perMinute),
                   static_cast<int>(weekday)};
}

} // namespace vellory
