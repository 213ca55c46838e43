// SPDX-License-Identifier: Apache-2.0
#include "model/SmartList.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "Usage/Suggestions.h"

namespace vellory {

SmartList::SmartList(Parts parts, QObject* parent)
    : QObject(parent), parts_(std::move(parts)), mode_(parts_.prefs.smartListMode()) {
    connect(&parts_.grid, &ShownGrid::changed, this, &SmartList::invalidate);
    connect(&parts_.running, &RunningTracker::runningChanged, this, &SmartList::invalidate);
    connect(&parts_.prefs, &Prefs::changed, this, [this](const std::string& key) {
        if (key == "smartListMode" || key == "smartListExcluded") {
            invalidate();
        }
    });
}

std::string_view SmartList::heading(Mode mode) {
    switch (mode) {
    case Mode::suggested:
        return "Suggested for now";
    case Mode::recent:
        return "Recently opened";
    case Mode::mostUsed:
        return "Most used";
    case Mode::newest:
        return "Newest";
    case Mode::off:
        break;
    }
    return "";
}

const std::vector<BundleID>& SmartList::apps() {
    update();
    return apps_;
}

void SmartList::setLength(int length) {
    if (length != length_) {
        length_ = length;
        invalidate();
    }
}

void SmartList::invalidate() {
    isOutdated_ = true;
    // Several changes in one turn of the event loop are worked out once.
    if (pending_ == nullptr) {
        pending_ = parts_.scheduler.after(0, [this] {
            const Scheduler::Handle done = std::exchange(pending_, nullptr);
            update();
        });
    }
}

void SmartList::exclude(const BundleID& id) {
    auto excluded = parts_.prefs.smartListExcluded();
    excluded.insert(id);
    parts_.prefs.setSmartListExcluded(excluded);
}

void SmartList::update() {
    if (!isOutdated_) {
        return;
    }
    isOutdated_ = false;
    const Mode mode = std::exchange(mode_, parts_.prefs.smartListMode());
    std::vector<BundleID> apps = worked();
    if (apps != apps_ || mode != mode_) {
        apps_ = std::move(apps);
        Q_EMIT changed();
    }
}

std::set<BundleID> SmartList::candidates() const {
    std::set<BundleID> out;
    for (const Tile& tile : parts_.grid.tiles()) {
        if (const BundleID* app = tile.app()) {
            out.insert(*app);
        } else {
            const auto& apps = tile.folder()->apps;
            out.insert(apps.begin(), apps.end());
        }
    }
    for (const BundleID& id : parts_.prefs.smartListExcluded()) {
        out.erase(id);
    }
    out.erase(parts_.ownID);
    return out;
}

std::vector<BundleID> SmartList::newest(const std::set<BundleID>& among) const {
    // Apps without a date come last, as if they had always been there.
    const auto created = [this](const BundleID& id) {
        const auto record = parts_.records.find(id);
        const auto date = record == parts_.records.end() ? std::nullopt : record->second.created;
        return date ? date->secondsSince2001 : -std::numeric_limits<double>::infinity();
    };
    std::vector<std::pair<double, BundleID>> dated;
    for (const BundleID& id : among) {
        dated.emplace_back(-created(id), id);
    }
    std::ranges::sort(dated);
    std::vector<BundleID> out;
    for (auto& [date, id] : dated) {
        if (std::cmp_equal(out.size(), length_)) {
            break;
        }
        out.push_back(std::move(id));
    }
    return out;
}

std::vector<BundleID> SmartList::worked() const {
    if (mode_ == Mode::off || length_ < 1) {
        return {};
    }
    const std::set<BundleID> among = candidates();
    const auto length = static_cast<std::size_t>(length_);
    switch (mode_) {
    case Mode::suggested:
        return Suggestions::rank(
            parts_.launches.log(),
            {parts_.clock.now(), parts_.workspaces.active(), parts_.running.running()}, among,
            length, parts_.calendar);
    case Mode::recent:
        return parts_.launches.usage().recent(length, among);
    case Mode::mostUsed:
        return parts_.launches.usage().mostUsed(length, among);
    case Mode::newest:
        return newest(among);
    case Mode::off:
        break;
    }
    return {};
}

} // namespace vellory
