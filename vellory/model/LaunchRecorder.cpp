// SPDX-License-Identifier: Apache-2.0
#include "model/LaunchRecorder.h"

#include <tuple>
#include <utility>

namespace vellory {

LaunchRecorder::LaunchRecorder(VelloryPaths paths, const Clock& clock, Scheduler& scheduler)
    : paths_(std::move(paths)), save_(clock, scheduler, [this] { save(); }) {}

void LaunchRecorder::load() {
    usage_ = UsageStore::load(paths_.usage());
    log_ = LaunchLog::load(paths_.launchLog());
}

void LaunchRecorder::seed(const std::vector<InstalledApp>& apps, const LastUsed::Source& lastUsed) {
    LaunchLog begun;
    begun.limit = log_.limit;
    begun = LastUsed::seeded(std::move(begun), apps, lastUsed);
    if (begun.events.empty()) {
        return;
    }
    for (const LaunchLog::Event& event : log_.events) {
        begun.record(event.app, event.at, event.workspace);
    }
    log_ = std::move(begun);
    std::ignore = log_.save(paths_.launchLog());
}

void LaunchRecorder::record(const BundleID& app, Date at, const std::optional<Uuid>& workspace) {
    usage_.record(app, at);
    log_.record(app, at, workspace);
    save_.changed();
}

void LaunchRecorder::save() const {
    std::ignore = usage_.save(paths_.usage());
    std::ignore = log_.save(paths_.launchLog());
}

} // namespace vellory
