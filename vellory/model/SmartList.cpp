// SPDX-License-Identifier: Apache-2.0
#include "model/SmartList.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "Usage/Suggestions.h"
#include "model/AppModel.h"

namespace vellory {

SmartList::SmartList(AppModel& model, const AppRecords& records, Scheduler& scheduler,
                     Calendar calendar, BundleID ownID, QObject* parent)
    : QObject(parent), model_(model), records_(records), scheduler_(scheduler),
      calendar_(std::move(calendar)), ownID_(std::move(ownID)),
      mode_(model.prefs().smartListMode()) {
    connect(&model_, &AppModel::visibleTilesChanged, this, &SmartList::invalidate);
    connect(&model_, &AppModel::runningChanged, this, &SmartList::invalidate);
    connect(&model_, &AppModel::ticked, this, &SmartList::invalidate);
    connect(&model_.prefs(), &Prefs::changed, this, [this](const std::string& key) {
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
        pending_ = scheduler_.after(0, [this] {
            const Scheduler::Handle done = std::exchange(pending_, nullptr);
            update();
        });
    }
}

void SmartList::exclude(const BundleID& id) {
    auto excluded = model_.prefs().smartListExcluded();
    excluded.insert(id);
    model_.prefs().setSmartListExcluded(excluded);
}

void SmartList::update() {
    if (!isOutdated_) {
        return;
    }
    isOutdated_ = false;
    const Mode mode = std::exchange(mode_, model_.prefs().smartListMode());
    std::vector<BundleID> apps = worked();
    if (apps != apps_ || mode != mode_) {
        apps_ = std::move(apps);
        Q_EMIT changed();
    }
}

std::set<BundleID> SmartList::candidates() const {
    std::set<BundleID> out;
    for (const Tile& tile : model_.visibleTiles()) {
        if (const BundleID* app = tile.app()) {
            out.insert(*app);
        } else {
            const auto& apps = tile.folder()->apps;
            out.insert(apps.begin(), apps.end());
        }
    }
    for (const BundleID& id : model_.prefs().smartListExcluded()) {
        out.erase(id);
    }
    out.erase(ownID_);
    return out;
}

std::vector<BundleID> SmartList::newest(const std::set<BundleID>& among) const {
    // Apps without a date come last, as if they had always been there.
    const auto created = [this](const BundleID& id) {
        const auto record = records_.find(id);
        const auto date = record == records_.end() ? std::nullopt : record->second.created;
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
            model_.launchLog(),
            {model_.clock().now(), model_.workspaces().active(), model_.running()}, among, length,
            calendar_);
    case Mode::recent:
        return model_.usage().recent(length, among);
    case Mode::mostUsed:
        return model_.usage().mostUsed(length, among);
    case Mode::newest:
        return newest(among);
    case Mode::off:
        break;
    }
    return {};
}

} // namespace vellory
