// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Date.h"
#include "Support/Json.h"
#include "Support/Uuid.h"

namespace vellory {

/// The latest launches of all apps, oldest first, each with the workspace that was open: what the
/// suggestions are ranked from. Kept in "launches.json".
struct LaunchLog {
    static constexpr std::int64_t defaultLimit = 4000;
    /// A file that asks for more than this is not one of ours.
    static constexpr std::int64_t greatestLimit = 1'000'000;

    /// Stored: append only, never rename.
    struct Event {
        BundleID app;
        Date at;
        std::optional<Uuid> workspace; ///< open at the launch

        friend bool operator==(const Event&, const Event&) = default;
    };

    std::vector<Event> events;
    std::int64_t limit = defaultLimit; ///< the most events kept; 0 to `greatestLimit`

    /// Appends a launch and drops the oldest past `limit`. A date that is no number is not
    /// recorded.
    void record(std::string_view app, Date at, std::optional<Uuid> workspace = std::nullopt);

    /// The log in `file`, or an empty one when there is none that can be read.
    static LaunchLog load(const std::filesystem::path& file);
    std::expected<void, std::error_code> save(const std::filesystem::path& file) const;

    friend bool operator==(const LaunchLog&, const LaunchLog&) = default;
};

void toJson(json::Value& object, const LaunchLog::Event& event);
void fromJson(const json::Value& object, LaunchLog::Event& event);
void toJson(json::Value& object, const LaunchLog& log);
void fromJson(const json::Value& object, LaunchLog& log);

} // namespace vellory
