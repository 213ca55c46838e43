// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "Support/Date.h"

namespace vellory {

/// The Gregorian calendar in one time zone: what a moment reads as on a wall clock there, and the
/// other way round. Right on days of 23 and 25 hours and for any zone of the IANA database.
///
/// A value: copies share the zone's rules and may be used on several threads.
class Calendar {
  public:
    struct Components {
        int year = 0;
        int month = 1;   ///< 1 to 12
        int day = 1;     ///< 1 to 31
        int hour = 0;    ///< 0 to 23
        int minute = 0;  ///< 0 to 59
        int second = 0;  ///< 0 to 59
        int weekday = 1; ///< 1 = Sunday … 7 = Saturday

        friend bool operator==(const Components&, const Components&) = default;
    };

    /// The calendar of an IANA zone such as "Europe/Stockholm"; of UTC when there is no such zone.
    explicit Calendar(std::string_view zone = "UTC");

    /// Whether the calendar reaches `date`: finite, and at most about 100,000 years away.
    static bool covers(Date date);

    /// Nothing for a date that is not covered.
    std::optional<Components> components(Date date) const;

    /// The first moment of the day that holds `date`: midnight, or the first moment after it where
    /// a change of the clocks skips midnight.
    std::optional<Date> startOfDay(Date date) const;

    /// The moment at which the clock shows these components; `weekday` is not read, and parts that
    /// overflow carry over (day 32 of January is 1 February). A time that the clocks skip is moved
    /// forward by the gap; of a time that comes twice the first is meant.
    std::optional<Date> date(const Components& components) const;

    /// A stretch of time through which the zone's clocks stand at one distance from UTC: from one
    /// change of the clocks to the next. In milliseconds since 1970, as the zone's rules have it.
    struct Stretch {
        double from = 0;  ///< included; minus infinity before the first change
        double until = 0; ///< not included; infinity after the last
        std::int64_t offset = 0;
    };
    /// The stretch that holds a moment; nothing for a date that is not covered.
    std::optional<Stretch> stretch(Date date) const;

    /// Date and time as people in `locale` read them, such as "Nov 21, 2026, 2:26 PM"; empty for a
    /// date that is not covered.
    std::string text(Date date, std::string_view locale) const;

    /// The same wall-clock time `days` days later (earlier when negative).
    std::optional<Date> addingDays(Date date, int days) const;

  private:
    struct Zone;
    explicit Calendar(std::shared_ptr<const Zone> zone);

    std::shared_ptr<const Zone> zone_;
};

} // namespace vellory
