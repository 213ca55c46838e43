// SPDX-License-Identifier: Apache-2.0
#include "model/UsageCenter.h"

#include <algorithm>
#include <map>
#include <utility>

#include <QPointer>

#include "Usage/LastUsed.h"

namespace vellory {

namespace {

/// The library asks by location, and no two apps share one.
LastUsed::Source byLocation(const std::vector<InstalledApp>& apps,
                            const std::function<std::optional<Date>(const BundleID&)>& use) {
    std::map<std::filesystem::path, std::optional<Date>> dates;
    for (const InstalledApp& app : apps) {
        dates.emplace(app.url, use(app.bundleID));
    }
    return [dates = std::move(dates)](const std::filesystem::path& url) {
        const auto date = dates.find(url);
        return date == dates.end() ? std::nullopt : date->second;
    };
}

} // namespace

UsageCenter::UsageCenter(Parts parts, QObject* parent)
    : QObject(parent), parts_(std::move(parts)),
      launches_(parts_.environment.paths, parts_.ports.clock, parts_.ports.scheduler),
      habits_({.file = parts_.environment.paths.habits(),
               .defaults = parts_.ports.defaults,
               .workspaces = parts_.workspaces,
               .clock = parts_.ports.clock,
               .scheduler = parts_.ports.scheduler,
               .calendar = parts_.environment.calendar,
               .newID = parts_.environment.newID,
               .isKnown =
                   [&library = parts_.library, ownID = parts_.environment.ownID](
                       const BundleID& id) { return id != ownID && library.app(id) != nullptr; }}),
      smartList_({.grid = parts_.grid,
                  .running = parts_.running,
                  .workspaces = parts_.workspaces,
                  .launches = launches_,
                  .records = records_,
                  .prefs = parts_.prefs,
                  .clock = parts_.ports.clock,
                  .scheduler = parts_.ports.scheduler,
                  .calendar = parts_.environment.calendar,
                  .ownID = parts_.environment.ownID}) {}

void UsageCenter::load() {
    launches_.load();
    habits_.load();
}

void UsageCenter::begin() {
    isToBeSeeded_ = launches_.isEmpty();
    connect(&parts_.library, &AppLibrary::changed, this, [this] {
        recall();
        habits_.refresh();
    });
    recall();
    habits_.refresh();
}

void UsageCenter::refresh() {
    recall();
}

void UsageCenter::recall() {
    const unsigned request = ++request_;
    parts_.ports.metadata.recall(parts_.library.installedApps(),
                                 [self = QPointer(this), request](AppRecords records) {
                                     if (self && self->request_ == request) {
                                         self->take(std::move(records));
                                     }
                                 });
}

void UsageCenter::take(AppRecords records) {
    records_ = std::move(records);
    if (std::exchange(isToBeSeeded_, false)) {
        const auto apps = parts_.library.installedApps();
        launches_.seed(
            apps, byLocation(apps, [this](const BundleID& app) { return rememberedUse(app); }));
    }
    smartList_.invalidate();
    Q_EMIT recordsChanged();
}

void UsageCenter::record(const BundleID& app) {
    const Date now = parts_.ports.clock.now();
    launches_.record(app, now, parts_.workspaces.active());
    habits_.record(app, now);
    smartList_.invalidate();
}

void UsageCenter::flush() {
    launches_.flush();
    habits_.flush();
}

std::vector<std::filesystem::path> UsageCenter::recentDocuments(const BundleID& app) const {
    const auto record = records_.find(app);
    if (record == records_.end()) {
        return {};
    }
    std::vector<std::filesystem::path> documents = record->second.recentDocuments;
    documents.resize(std::min(documents.size(), documentsShown));
    return documents;
}

std::optional<Date> UsageCenter::rememberedUse(const BundleID& app) const {
    const auto record = records_.find(app);
    const auto date = record == records_.end() ? std::nullopt : record->second.lastUsed;
    // A date in the future is a clock that was wrong once; the app has been used all the same.
    return date && date->isFinite() ? std::optional(std::min(*date, parts_.ports.clock.now()))
                                    : std::nullopt;
}

std::optional<Date> UsageCenter::lastUse(const BundleID& app) const {
    if (parts_.running.running().contains(app)) {
        return parts_.ports.clock.now();
    }
    std::optional<Date> last = rememberedUse(app);
    const auto counted = usage().entries.find(app);
    if (counted != usage().entries.end() && counted->second.last.isFinite()) {
        last = last ? std::max(*last, counted->second.last) : counted->second.last;
    }
    return last;
}

std::vector<UsageCenter::UnusedApp> UsageCenter::unusedApps() const {
    std::vector<InstalledApp> apps = parts_.library.installedApps();
    std::erase_if(
        apps, [this](const InstalledApp& app) { return app.bundleID == parts_.environment.ownID; });
    std::vector<UnusedApp> out;
    const auto source = byLocation(apps, [this](const BundleID& app) { return lastUse(app); });
    for (const InstalledApp& app :
         LastUsed::unused(apps, unusedDays, parts_.ports.clock.now(), source)) {
        out.push_back({app.bundleID, source(app.url)});
    }
    return out;
}

} // namespace vellory
