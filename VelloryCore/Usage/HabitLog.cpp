// SPDX-License-Identifier: Apache-2.0
#include "Usage/HabitLog.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "Support/JsonFile.h"

namespace vellory {

namespace {

constexpr double secondsPerDay = 86'400;
constexpr int minutesPerDay = 1440;
constexpr int slotMinutes = 5;
/// How far back a launch is looked for that is the same: some apps start several processes.
constexpr std::ptrdiff_t repeatReach = 40;

} // namespace

std::optional<HabitLog::Slot> HabitLog::bucket(Date date, const Calendar& calendar) {
    const auto clock = calendar.components(date);
    const auto start = calendar.startOfDay(date);
    const auto reference = calendar.startOfDay(Date::since2001(0));
    if (!clock || !start || !reference) {
        return std::nullopt;
    }
    // Rounded, not cut off: where the clocks were moved since, the distance is an hour short of
    // whole days, and two days would share a number.
    const std::int64_t day = std::llround(start->since(*reference) / secondsPerDay);
    const int minute = (clock->hour * 60 + clock->minute) / slotMinutes * slotMinutes;
    return Slot{day, minute, clock->weekday};
}

void HabitLog::record(std::string_view app, Date at, const Calendar& calendar) {
    const auto slot = bucket(at, calendar);
    if (!slot) {
        return;
    }
    Event event{BundleID(app), *slot};
    const auto reach = std::min(std::ssize(events), repeatReach);
    if (std::find(events.end() - reach, events.end(), event) != events.end()) {
        return;
    }
    events.push_back(std::move(event));
    const std::int64_t oldest = slot->day - std::clamp<std::int64_t>(keepDays, 0, greatestKeepDays);
    std::erase_if(events, [&](const Event& kept) { return kept.slot.day < oldest; });
}

HabitLog HabitLog::load(const std::filesystem::path& file) {
    return JsonFile::load<HabitLog>(file).value_or(HabitLog{});
}

std::expected<void, std::error_code> HabitLog::save(const std::filesystem::path& file) const {
    return JsonFile::save(*this, file);
}

void toJson(json::Value& object, const HabitLog::Event& event) {
    json::write(object, "app", event.app);
    json::write(object, "day", event.slot.day);
    json::write(object, "minute", event.slot.minute);
    json::write(object, "weekday", event.slot.weekday);
}

void fromJson(const json::Value& object, HabitLog::Event& event) {
    json::require(object, "app", event.app);
    json::require(object, "day", event.slot.day);
    json::require(object, "minute", event.slot.minute);
    json::require(object, "weekday", event.slot.weekday);
    const auto& [day, minute, weekday] = event.slot;
    if (minute < 0 || minute >= minutesPerDay || weekday < 1 || weekday > 7) {
        throw json::DecodingError("no minute of a day, or no weekday");
    }
}

void toJson(json::Value& object, const HabitLog& log) {
    json::write(object, "events", log.events);
    json::write(object, "keepDays", log.keepDays);
}

void fromJson(const json::Value& object, HabitLog& log) {
    json::require(object, "events", log.events);
    json::require(object, "keepDays", log.keepDays);
    if (log.keepDays < 0 || log.keepDays > HabitLog::greatestKeepDays) {
        throw json::DecodingError("a number of days out of range");
    }
}

} // namespace vellory
