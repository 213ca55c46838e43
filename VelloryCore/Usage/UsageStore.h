// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Date.h"
#include "Support/Json.h"

namespace vellory {

/// How often each app was launched and when last: what the lists of recent and of most used apps
/// are made from. Kept in "usage.json".
struct UsageStore {
    /// Stored: append only, never rename.
    struct Entry {
        std::int64_t count = 1; ///< at least 1
        Date last;

        friend bool operator==(const Entry&, const Entry&) = default;
    };

    std::map<BundleID, Entry, std::less<>> entries;

    /// Counts one launch. `at` becomes the last one also when it is earlier than the one stored:
    /// the clock may have been set back. A date that is no number is not recorded.
    void record(std::string_view app, Date at);

    /// Recorded launches; 0 for an app that is not known.
    std::int64_t count(std::string_view app) const;

    /// Up to `n` of the known apps in `among`, the one launched last first (then by identifier).
    std::vector<BundleID> recent(std::size_t n, const std::set<BundleID>& among) const;

    /// Up to `n` of the known apps in `among`, the one launched most often first (then by
    /// identifier).
    std::vector<BundleID> mostUsed(std::size_t n, const std::set<BundleID>& among) const;

    /// The store in `file`, or an empty one when there is none that can be read.
    static UsageStore load(const std::filesystem::path& file);
    std::expected<void, std::error_code> save(const std::filesystem::path& file) const;

    friend bool operator==(const UsageStore&, const UsageStore&) = default;
};

void toJson(json::Value& object, const UsageStore::Entry& entry);
void fromJson(const json::Value& object, UsageStore::Entry& entry);
void toJson(json::Value& object, const UsageStore& store);
void fromJson(const json::Value& object, UsageStore& store);

} // namespace vellory
