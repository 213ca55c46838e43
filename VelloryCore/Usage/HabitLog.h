// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Calendar.h"
#include "Support/Date.h"
#include "Support/Json.h"

namespace vellory {

/// Which apps were opened in which five minutes of the last six weeks, oldest first: all that the
/// search for habits needs to know, and all that is kept. Stored in "habits.json".
struct HabitLog {
    static constexpr std::int64_t defaultKeepDays = 42;
    /// A file that asks for more than this is not one of ours.
    static constexpr std::int64_t greatestKeepDays = 36'525;

    struct Slot {
        /// Whole days from the day of 2001-01-01 00:00 UTC, in the user's calendar.
        std::int64_t day = 0;
        int minute = 0;  ///< after midnight by the clock, a multiple of 5
        int weekday = 1; ///< 1 = Sunday … 7 = Saturday

        friend bool operator==(const Slot&, const Slot&) = default;
    };

    /// Stored as one object with the keys of both: append only, never rename.
    struct Event {
        BundleID app;
        Slot slot;

        friend bool operator==(const Event&, const Event&) = default;
    };

    std::vector<Event> events;
    std::int64_t keepDays = defaultKeepDays;

    /// The slot that a date falls into; nothing for a date that the calendar does not cover.
    static std::optional<Slot> bucket(Date date, const Calendar& calendar);

    /// Adds a launch, once for each app and slot, and forgets what is older than `keepDays` before
    /// it. A date that the calendar does not cover is not recorded.
    void record(std::string_view app, Date at, const Calendar& calendar);

    /// The log in `file`, or an empty one when there is none that can be read.
    static HabitLog load(const std::filesystem::path& file);
    std::expected<void, std::error_code> save(const std::filesystem::path& file) const;

    friend bool operator==(const HabitLog&, const HabitLog&) = default;
};

void toJson(json::Value& object, const HabitLog::Event& event);
void fromJson(const json::Value& object, HabitLog::Event& event);
void toJson(json::Value& object, const HabitLog& log);
void fromJson(const json::Value& object, HabitLog& log);

} // namespace vellory
