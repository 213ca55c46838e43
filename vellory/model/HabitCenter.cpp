// SPDX-License-Identifier: Apache-2.0
#include "model/HabitCenter.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include <QPointer>

namespace vellory {

namespace {

/// Each group that was declined is one text, its apps on lines of their own.
constexpr std::string_view dismissedKey = "dismissedHabits";
/// The oldest go first; nobody declines that many on purpose.
constexpr std::size_t mostDismissed = 200;

std::string lines(const std::vector<BundleID>& apps) {
    std::string out;
    for (const BundleID& app : apps) {
        out += out.empty() ? app : "\n" + app;
    }
    return out;
}

std::set<BundleID> appsIn(std::string_view lines) {
    std::set<BundleID> apps;
    while (!lines.empty()) {
        const std::string_view app = lines.substr(0, lines.find('\n'));
        if (!app.empty()) {
            apps.emplace(app);
        }
        lines.remove_prefix(std::min(app.size() + 1, lines.size()));
    }
    return apps;
}

} // namespace

HabitCenter::HabitCenter(Parts parts, QObject* parent)
    : QObject(parent), parts_(std::move(parts)), save_(parts_.clock, parts_.scheduler, [this] {
          std::ignore = log_.save(parts_.file);
          if (!isEnding_) {
              refresh();
          }
      }) {
    connect(&parts_.workspaces, &WorkspaceList::changed, this, &HabitCenter::refresh);
}

void HabitCenter::load() {
    log_ = HabitLog::load(parts_.file);
}

void HabitCenter::record(const BundleID& app, Date at) {
    log_.record(app, at, parts_.calendar);
    save_.changed();
}

void HabitCenter::flush() {
    isEnding_ = true;
    save_.flush();
}

void HabitCenter::refresh() {
    // What is gone cannot be opened together.
    HabitLog log = log_;
    std::erase_if(log.events, [&](const auto& event) { return !parts_.isKnown(event.app); });
    const unsigned request = ++request_;
    parts_.scheduler.inBackground([self = QPointer(this), request, log = std::move(log),
                                   existing = workspaceApps(),
                                   dismissed = dismissed()]() -> Scheduler::Task {
        return [self, request,
                habits = HabitDetector::detect(log, {}, existing, {}, dismissed)]() mutable {
            if (self && self->request_ == request) {
                self->setHabits(std::move(habits));
            }
        };
    });
}

void HabitCenter::accept(const Habit& habit, const std::string& name,
                         HabitDetector::OpenAtTime openAtTime) {
    drop(habit);
    // The list tells of its change, and the search that follows leaves the habit out.
    parts_.workspaces.update(HabitDetector::workspace(habit, name, openAtTime, parts_.newID));
}

void HabitCenter::dismiss(const Habit& habit) {
    auto stored = parts_.defaults.strings(dismissedKey).value_or(std::vector<std::string>{});
    stored.push_back(lines(habit.apps));
    if (stored.size() > mostDismissed) {
        stored.erase(stored.begin(), stored.end() - static_cast<std::ptrdiff_t>(mostDismissed));
    }
    parts_.defaults.set(dismissedKey, stored);
    drop(habit);
    refresh();
}

HabitDetector::AppSets HabitCenter::workspaceApps() const {
    HabitDetector::AppSets sets;
    for (const Workspace& workspace : parts_.workspaces.all()) {
        const auto apps = workspace.appIDs();
        sets.emplace_back(apps.begin(), apps.end());
    }
    return sets;
}

HabitDetector::AppSets HabitCenter::dismissed() const {
    HabitDetector::AppSets sets;
    for (const std::string& group :
         parts_.defaults.strings(dismissedKey).value_or(std::vector<std::string>{})) {
        sets.push_back(appsIn(group));
    }
    return sets;
}

void HabitCenter::setHabits(std::vector<Habit> habits) {
    if (habits != habits_) {
        habits_ = std::move(habits);
        Q_EMIT habitsChanged();
    }
}

void HabitCenter::drop(const Habit& habit) {
    std::vector<Habit> left = habits_;
    std::erase(left, habit);
    setHabits(std::move(left));
}

} // namespace vellory
