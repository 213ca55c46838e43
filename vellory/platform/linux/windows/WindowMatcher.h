// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/apps/ProcessInfo.h"

namespace vellory {

/// What a window and its process say about the app that they belong to.
struct WindowEvidence {
    std::string gtkApplicationId;
    std::string desktopFileHint; ///< the path of a desktop entry
    std::string windowClass;     ///< the second text of WM_CLASS
    std::string windowInstance;  ///< the first
    BundleID startedAs;          ///< the app whose start carried the window's startup id
    ProcessInfo process;
};

/// Tells which app a window belongs to: the window's own statement first, its process last, an
/// uncertain answer never.
class WindowMatcher {
  public:
    explicit WindowMatcher(const std::map<BundleID, DesktopEntry>& entries);

    std::optional<BundleID> match(const WindowEvidence& window) const;

  private:
    using Index = std::map<std::string, BundleID>;

    std::optional<BundleID> byClass(const WindowEvidence& window) const;
    std::optional<BundleID> byProcess(const ProcessInfo& process) const;
    std::optional<BundleID> known(const std::string& id) const;

    Index ids_;
    Index files_;   ///< by the path of the entry
    Index classes_; ///< by StartupWMClass
    Index foldedIds_;
    Index foldedClasses_;
    Index lastParts_; ///< by what follows the last dot of an id, folded; only what is unique
    Index programs_;  ///< by the file name of the program; only what is unique
};

} // namespace vellory
