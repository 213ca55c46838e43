// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Support/Date.h"
#include "Support/Json.h"
#include "Support/JsonReader.h"
#include "Support/Uuid.h"
#include "Workspaces/Workspace.h"

namespace vellory {

/// Which apps were open at one moment, which of them were hidden, and where their windows stood: no
/// titles and no contents. Its identity is its date.
struct DeskSnapshot {
    /// Why it was taken.
    enum class Reason { periodic, beforeWorkspace, manual };

    /// What restoring a desk does to the apps.
    struct RestorePlan {
        std::vector<BundleID> open{}; ///< apps to open again
        std::vector<BundleID> hide{}; ///< apps that were not open then

        friend bool operator==(const RestorePlan&, const RestorePlan&) = default;
    };

    Date date{}; ///< stored as seconds since 1970
    std::vector<BundleID> apps{};
    std::vector<BundleID> hidden{};
    /// Empty when the program may not look at windows.
    std::vector<Workspace::WindowSlot> windows{};
    std::optional<std::string> workspace{}; ///< the name of the workspace that was active
    Reason reason = Reason::periodic;

    /// Whether both show the same desk: the same apps, the same of them hidden, and the same
    /// windows in the same order, each edge and size within `tolerance` points.
    bool sameDesk(const DeskSnapshot& other, double tolerance) const;

    /// What brings this desk back. The file manager, the program itself and `protectedApps` are
    /// never hidden.
    RestorePlan restorePlan(const std::vector<BundleID>& running,
                            const std::set<BundleID>& protectedApps) const;

    /// A workspace that brings this desk back when it is opened.
    Workspace workspaceNamed(std::string name, bool hideOthers, const Uuid& id) const;

    friend bool operator==(const DeskSnapshot&, const DeskSnapshot&) = default;
};

/// As shown to the user, such as "Before a restore".
std::string_view title(DeskSnapshot::Reason reason);

void toJson(json::Value& object, const DeskSnapshot& snapshot);
void toJson(json::Value& value, DeskSnapshot::Reason reason);

/// Reads one snapshot; false when `reader` met a fault or a key is missing.
bool read(json::Reader& reader, DeskSnapshot& snapshot);

} // namespace vellory
