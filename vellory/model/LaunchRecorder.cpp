// SPDX-License-Identifier: Apache-2.0
#include "model/LaunchRecorder.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace vellory {

LaunchRecorder::LaunchRecorder(VelloryPaths paths, Scheduler& scheduler)
    : paths_(std::move(paths)), scheduler_(scheduler) {}

void LaunchRecorder::load() {
    usage_ = UsageStore::load(paths_.usage());
    log_ = LaunchLog::load(paths_.launchLog());
}

void LaunchRecorder::seedIfEmpty(
    const std::vector<InstalledApp>& apps,
    const std::function<std::optional<Date>(const InstalledApp&)>& lastUsed) {
    if (!log_.events.empty()) {
        return;
    }
    std::vector<std::pair<Date, BundleID>> uses;
    for (const InstalledApp& app : apps) {
        if (const auto date = lastUsed(app); date && date->isFinite()) {
            uses.emplace_back(*date, app.bundleID);
        }
    }
    std::ranges::stable_sort(uses, {}, &std::pair<Date, BundleID>::first);
    for (const auto& [date, app] : uses) {
        log_.record(app, date);
    }
    std::ignore = log_.save(paths_.launchLog());
}

void LaunchRecorder::record(const BundleID& app, Date at, const std::optional<Uuid>& workspace) {
    usage_.record(app, at);
    log_.record(app, at, workspace);
    isDirty_ = true;
    pendingSave_ = scheduler_.after(saveDelay, [this] { save(); });
}

void LaunchRecorder::flush() {
    if (isDirty_) {
        save();
    }
}

void LaunchRecorder::save() {
    isDirty_ = false;
    std::ignore = usage_.save(paths_.usage());
    std::ignore = log_.save(paths_.launchLog());
}

} // namespace vellory
