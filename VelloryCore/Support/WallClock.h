// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "Support/Calendar.h"
#include "Support/Date.h"

namespace vellory {

/// Reads the day and the minute of many dates, with exactly the answers of a `Calendar` at a
/// hundredth of the cost: it remembers for how long the zone's clocks stay as they are. Meant for
/// one pass over dates that lie near each other.
class WallClock {
  public:
    struct Reading {
        std::int64_t day = 0; ///< calendar days since 2001-01-01
        int minute = 0;       ///< after midnight by the clock, 0 to 1439
        int weekday = 1;      ///< 1 = Sunday … 7 = Saturday

        friend bool operator==(const Reading&, const Reading&) = default;
    };

    explicit WallClock(Calendar calendar) : calendar_(std::move(calendar)) {}

    /// Nothing for a date that the calendar does not cover.
    std::optional<Reading> read(Date date);

  private:
    Calendar calendar_;
    Calendar::Stretch stretch_; ///< empty until the first reading
};

} // namespace vellory
