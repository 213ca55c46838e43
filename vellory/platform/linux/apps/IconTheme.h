// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// Finds icons by name as the freedesktop Icon Theme Specification describes: the user's theme,
/// those that it inherits, "hicolor", then loose files. What the folders hold is read once and
/// again when they have changed. Any thread.
class IconTheme {
  public:
    /// `bases` are the folders that hold themes, the most important first; themes are spread over
    /// all of them. Loose files are looked for in `bases` and `looseFolders`. Whether any of it has
    /// changed is looked at again after `trust`: icons are asked for hundreds at a time.
    IconTheme(std::string theme, std::vector<std::filesystem::path> bases,
              std::vector<std::filesystem::path> looseFolders, std::chrono::milliseconds trust);

    /// The file of the icon that suits a square of `pixels` best: one made for exactly that size,
    /// else one that can be scaled, else the smallest that is larger, else the largest.
    std::optional<std::filesystem::path> find(std::string_view name, int pixels);

    static std::vector<std::filesystem::path> baseFolders(const SessionEnvironment& environment);

  private:
    /// One folder of a theme as its index describes it, in pixels (sizes times scale).
    struct Directory {
        std::string name;
        int smallest = 0;
        int largest = 0;
        bool isScalable = false;
    };
    /// Where an icon lies, kept small: large themes hold a hundred thousand files.
    struct Place {
        std::uint16_t base = 0;
        std::uint16_t directory = 0;
        std::uint8_t extension = 0;
    };
    struct Theme {
        std::vector<Directory> directories;
        std::vector<std::string> parents;
        std::map<std::string, std::vector<Place>, std::less<>> icons;
    };
    struct Times {
        std::map<std::filesystem::path, std::filesystem::file_time_type> changed;
        std::chrono::steady_clock::time_point seen; ///< when all of that was last true
    };

    void readAll();
    void readTheme(const std::string& name, int depth);
    void readFolder(const std::filesystem::path& folder, Place place, Theme& theme);
    void readLoose(const std::filesystem::path& folder);
    bool isStale(Times& times) const;
    std::optional<std::filesystem::path> lookUp(std::string_view name, int pixels) const;

    const std::string name_;
    const std::vector<std::filesystem::path> bases_;
    const std::vector<std::filesystem::path> looseFolders_;
    const std::chrono::milliseconds trust_;

    std::mutex mutex_;
    bool isRead_ = false;
    std::vector<std::string> order_; ///< themes as they are asked
    std::map<std::string, Theme> themes_;
    std::map<std::string, std::filesystem::path, std::less<>> loose_;
    Times roots_;   ///< few folders that installers touch; checked before every look-up
    Times folders_; ///< all others; checked before an icon is said to be missing
};

/// The icon theme that the user's desktop is set to; "hicolor" when it does not say.
std::string currentIconTheme(const SessionEnvironment& environment);

} // namespace vellory
