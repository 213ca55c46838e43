// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace vellory {

/// Where the program keeps its files: the one place that names them. Creates no folder; whoever
/// writes a file creates the folder that holds it.
class VelloryPaths {
  public:
    /// Below the user's folder for application data. `supportOverride` takes the place of the whole
    /// support folder, for a run on files of its own.
    explicit VelloryPaths(const std::filesystem::path& applicationSupport,
                          std::optional<std::filesystem::path> supportOverride = std::nullopt)
        : support_(supportOverride ? *std::move(supportOverride) : applicationSupport / "vellory") {
    }

    const std::filesystem::path& support() const { return support_; }

    /// The board.
    std::filesystem::path layout() const { return support_ / "layout.json"; }
    /// Folder of earlier boards.
    std::filesystem::path layoutHistory() const { return support_ / "LayoutHistory"; }
    /// Folder of boards saved under a name.
    std::filesystem::path savedLayouts() const { return support_ / "SavedLayouts"; }
    /// Folder of the user's own app icons and folder covers.
    std::filesystem::path icons() const { return support_ / "Icons"; }
    std::filesystem::path workspaces() const { return support_ / "workspaces.json"; }
    /// How often each app was opened.
    std::filesystem::path usage() const { return support_ / "usage.json"; }
    /// Which app was opened when.
    std::filesystem::path launchLog() const { return support_ / "launches.json"; }
    std::filesystem::path habits() const { return support_ / "habits.json"; }
    /// Folder of desk snapshots, one file a day.
    std::filesystem::path desk() const { return support_ / "DeskHistory"; }

    /// All folders that the program writes files into.
    std::vector<std::filesystem::path> folders() const {
        return {support_, layoutHistory(), savedLayouts(), icons(), desk()};
    }

    friend bool operator==(const VelloryPaths&, const VelloryPaths&) = default;

  private:
    std::filesystem::path support_;
};

} // namespace vellory
