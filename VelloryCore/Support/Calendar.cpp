// SPDX-License-Identifier: Apache-2.0
#include "Support/Calendar.h"

#include <cmath>
#include <limits>
#include <string>

#include <unicode/basictz.h>
#include <unicode/datefmt.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>
#include <unicode/tztrans.h>

namespace vellory {

namespace {

/// Past this the calendar's own arithmetic would overflow: about 100,000 years.
constexpr double furthestSeconds = 3.2e12;

UDate toMilliseconds(Date date) {
    return std::floor(date.secondsSince1970() * 1000.0);
}

Date fromMilliseconds(UDate milliseconds) {
    return Date::since1970(milliseconds / 1000.0);
}

} // namespace

struct Calendar::Zone {
    std::unique_ptr<icu::Calendar> prototype;

    explicit Zone(icu::TimeZone* adopted) {
        UErrorCode status = U_ZERO_ERROR;
        auto gregorian =
            std::make_unique<icu::GregorianCalendar>(adopted, icu::Locale::getRoot(), status);
        if (U_SUCCESS(status)) {
            // The Gregorian rules for all time: no jump in 1582.
            gregorian->setGregorianChange(-1e300, status);
            gregorian->setLenient(true);
            gregorian->setSkippedWallTimeOption(UCAL_WALLTIME_LAST);
            gregorian->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
            prototype = std::move(gregorian);
        }
    }

    /// A calendar of one's own to set and read: ICU calendars hold the moment they stand at.
    std::unique_ptr<icu::Calendar> scratch() const {
        return std::unique_ptr<icu::Calendar>(prototype ? prototype->clone() : nullptr);
    }
};

Calendar::Calendar(std::shared_ptr<const Zone> zone) : zone_(std::move(zone)) {}

Calendar::Calendar(std::string_view zone) {
    const std::string name(zone);
    icu::TimeZone* found = icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name));
    if (*found == icu::TimeZone::getUnknown()) {
        delete found;
        found = icu::TimeZone::getGMT()->clone();
    }
    zone_ = std::make_shared<const Zone>(found);
}

bool Calendar::covers(Date date) {
    return date.isFinite() && std::fabs(date.secondsSince2001) <= furthestSeconds;
}

std::optional<Calendar::Components> Calendar::components(Date date) const {
    const auto calendar = zone_->scratch();
    if (calendar == nullptr || !covers(date)) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    calendar->setTime(toMilliseconds(date), status);
    Components out;
    out.year = calendar->get(UCAL_EXTENDED_YEAR, status);
    out.month = calendar->get(UCAL_MONTH, status) + 1;
    out.day = calendar->get(UCAL_DAY_OF_MONTH, status);
    out.hour = calendar->get(UCAL_HOUR_OF_DAY, status);
    out.minute = calendar->get(UCAL_MINUTE, status);
    out.second = calendar->get(UCAL_SECOND, status);
    out.weekday = calendar->get(UCAL_DAY_OF_WEEK, status);
    return U_SUCCESS(status) ? std::optional(out) : std::nullopt;
}

std::optional<Date> Calendar::startOfDay(Date date) const {
    const auto found = components(date);
    if (!found) {
        return std::nullopt;
    }
    // Where midnight is skipped, ICU's UCAL_WALLTIME_NEXT_VALID gives the first moment after it.
    const auto calendar = zone_->scratch();
    UErrorCode status = U_ZERO_ERROR;
    calendar->setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
    calendar->clear();
    calendar->set(UCAL_EXTENDED_YEAR, found->year);
    calendar->set(UCAL_MONTH, found->month - 1);
    calendar->set(UCAL_DAY_OF_MONTH, found->day);
    const UDate time = calendar->getTime(status);
    return U_SUCCESS(status) ? std::optional(fromMilliseconds(time)) : std::nullopt;
}

std::optional<Date> Calendar::date(const Components& components) const {
    const auto calendar = zone_->scratch();
    if (calendar == nullptr) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    calendar->clear();
    calendar->set(UCAL_EXTENDED_YEAR, components.year);
    calendar->set(UCAL_MONTH, components.month - 1);
    calendar->set(UCAL_DAY_OF_MONTH, components.day);
    calendar->set(UCAL_HOUR_OF_DAY, components.hour);
    calendar->set(UCAL_MINUTE, components.minute);
    calendar->set(UCAL_SECOND, components.second);
    const UDate time = calendar->getTime(status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    const Date date = fromMilliseconds(time);
    return covers(date) ? std::optional(date) : std::nullopt;
}

std::optional<Calendar::Stretch> Calendar::stretch(Date date) const {
    if (zone_->prototype == nullptr || !covers(date)) {
        return std::nullopt;
    }
    const auto* zone = dynamic_cast<const icu::BasicTimeZone*>(&zone_->prototype->getTimeZone());
    if (zone == nullptr) {
        return std::nullopt;
    }
    const UDate milliseconds = toMilliseconds(date);
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t raw = 0;
    std::int32_t daylight = 0;
    zone->getOffset(milliseconds, false, raw, daylight, status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Stretch out{-infinity, infinity, std::int64_t{raw} + daylight};
    icu::TimeZoneTransition change;
    if (zone->getPreviousTransition(milliseconds, true, change)) {
        out.from = change.getTime();
    }
    if (zone->getNextTransition(milliseconds, false, change)) {
        out.until = change.getTime();
    }
    return out;
}

std::optional<Date> Calendar::addingDays(Date date, int days) const {
    const auto calendar = zone_->scratch();
    if (calendar == nullptr || !covers(date)) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    const double milliseconds = toMilliseconds(date);
    calendar->setTime(milliseconds, status);
    calendar->add(UCAL_DAY_OF_MONTH, days, status);
    const UDate time = calendar->getTime(status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    const Date moved = date + (time - milliseconds) / 1000.0;
    return covers(moved) ? std::optional(moved) : std::nullopt;
}

std::string Calendar::text(Date date, std::string_view locale) const {
    const auto calendar = zone_->scratch();
    if (calendar == nullptr || !covers(date)) {
        return "";
    }
    const std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateTimeInstance(
        icu::DateFormat::kMedium, icu::DateFormat::kShort,
        icu::Locale::createCanonical(std::string(locale).c_str())));
    if (format == nullptr) {
        return "";
    }
    format->setTimeZone(calendar->getTimeZone());
    icu::UnicodeString formatted;
    std::string out;
    format->format(toMilliseconds(date), formatted).toUTF8String(out);
    return out;
}

} // namespace vellory
