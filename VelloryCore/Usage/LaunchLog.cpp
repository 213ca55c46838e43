// SPDX-License-Identifier: Apache-2.0
#include "Usage/LaunchLog.h"

#include <algorithm>

#include "Support/JsonFile.h"

namespace vellory {

void LaunchLog::record(std::string_view app, Date at, std::optional<Uuid> workspace) {
    // A date that JSON cannot spell would make the whole file unreadable.
    if (!at.isFinite()) {
        return;
    }
    events.push_back({BundleID(app), at, workspace});
    const auto count = static_cast<std::int64_t>(events.size());
    const std::int64_t excess = count - std::clamp<std::int64_t>(limit, 0, count);
    events.erase(events.begin(), events.begin() + excess);
}

LaunchLog LaunchLog::load(const std::filesystem::path& file) {
    return JsonFile::load<LaunchLog>(file).value_or(LaunchLog{});
}

std::expected<void, std::error_code> LaunchLog::save(const std::filesystem::path& file) const {
    return JsonFile::save(*this, file);
}

void toJson(json::Value& object, const LaunchLog::Event& event) {
    json::write(object, "app", event.app);
    json::write(object, "at", event.at);
    json::write(object, "workspace", event.workspace);
}

void fromJson(const json::Value& object, LaunchLog::Event& event) {
    json::require(object, "app", event.app);
    json::require(object, "at", event.at);
    json::readIfPresent(object, "workspace", event.workspace);
}

void toJson(json::Value& object, const LaunchLog& log) {
    json::write(object, "events", log.events);
    json::write(object, "limit", log.limit);
}

void fromJson(const json::Value& object, LaunchLog& log) {
    json::require(object, "events", log.events);
    json::require(object, "limit", log.limit);
    if (log.limit < 0 || log.limit > LaunchLog::greatestLimit) {
        throw json::DecodingError("a limit out of range");
    }
}

} // namespace vellory
