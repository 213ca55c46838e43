// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Date.h"

namespace vellory {

/// What the desktop remembers of an app.
struct AppRecord {
    std::optional<Date> lastUsed = {}; ///< also before this program was there
    std::optional<Date> created = {};  ///< when the app came to this machine
    /// Files that are there, those that the app used last first.
    std::vector<std::filesystem::path> recentDocuments = {};

    friend bool operator==(const AppRecord&, const AppRecord&) = default;
};

/// By app; one that nothing is known of may be missing.
using AppRecords = std::map<BundleID, AppRecord>;

/// The desktop's memory of apps and documents. Main thread.
class Metadata {
  public:
    virtual ~Metadata() = default;

    /// Looks up what is remembered of `apps`, off the main thread: the sources may be large or
    /// slow. `done` is called once and later, never after this object is gone.
    virtual void recall(const std::vector<InstalledApp>& apps,
                        std::function<void(AppRecords)> done) = 0;
};

} // namespace vellory
