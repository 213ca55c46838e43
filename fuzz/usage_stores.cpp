// SPDX-License-Identifier: Apache-2.0
// The stores of launches: what can be read can be used, and is written and read back unchanged.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "Support/Json.h"
#include "Usage/HabitDetector.h"
#include "Usage/HabitLog.h"
#include "Usage/LaunchLog.h"
#include "Usage/Suggestions.h"
#include "Usage/UsageStore.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

template <class Store>
void checkWritten(const Store& store) {
    const auto again = json::decode<Store>(json::encode(store));
    require(again.has_value() && *again == store);
}

const Calendar& calendar() {
    static const Calendar stockholm("Europe/Stockholm");
    return stockholm;
}

void checkUsage(std::string_view text) {
    auto usage = json::decode<UsageStore>(text);
    if (!usage) {
        return;
    }
    checkWritten(*usage);
    std::set<BundleID> among;
    for (const auto& [app, entry] : usage->entries) {
        among.insert(app);
    }
    require(usage->recent(1000, among).size() == std::min<std::size_t>(1000, among.size()));
    require(usage->mostUsed(3, among).size() == std::min<std::size_t>(3, among.size()));
    usage->record("new", Date::since2001(0));
    checkWritten(*usage);
}

void checkLaunches(std::string_view text) {
    auto log = json::decode<LaunchLog>(text);
    if (!log) {
        return;
    }
    checkWritten(*log);
    std::set<BundleID> among;
    for (const LaunchLog::Event& event : log->events) {
        among.insert(event.app);
    }
    const Suggestions::Context context{
        log->events.empty() ? Date{} : log->events.back().at, {}, {}};
    require(Suggestions::rank(*log, context, among, 5, calendar()).size() <= 5);
    log->record("new", Date::since2001(0));
    require(std::cmp_less_equal(log->events.size(), log->limit));
}

void checkHabits(std::string_view text) {
    auto log = json::decode<HabitLog>(text);
    if (!log) {
        return;
    }
    checkWritten(*log);
    const HabitDetector::Settings settings;
    for (const auto& habit : HabitDetector::detect(*log, settings, {}, {}, {})) {
        require(habit.days >= settings.minDays);
        require(habit.apps.size() >= 3 && habit.apps.size() <= 6);
        require(std::ranges::is_sorted(habit.apps));
        require(habit.hour() >= 0 && habit.hour() < 24);
    }
    log->record("new", Date::since2001(0), calendar());
    checkWritten(*log);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkUsage(text);
    checkLaunches(text);
    checkHabits(text);
    return 0;
}
