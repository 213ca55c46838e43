// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>

#include "Apps/InstalledApp.h"
#include "Support/Uuid.h"

namespace vellory {

/// The folder with the program's own copies of the pictures that users chose for apps and folders,
/// so that these survive when the original goes.
///
/// An app's icon carries a mark of its content in its name: another picture never takes the place
/// of one that an earlier board refers to. A folder has one cover for each extension; choosing
/// another replaces it.
class IconLibrary {
  public:
    /// What a picture may take at most, in bytes.
    static constexpr std::size_t limit = 64U * 1024U * 1024U;

    explicit IconLibrary(std::filesystem::path folder);

    /// Copies a picture and returns where the copy lies, always directly in the folder whatever the
    /// identifier holds. Fails with the file system's error, for what is not a regular file, and
    /// past `limit`.
    std::expected<std::filesystem::path, std::error_code>
    addIcon(const BundleID& app, const std::filesystem::path& picture) const;

    /// The same for a folder's cover, which is named "folder-" and the folder's UUID.
    std::expected<std::filesystem::path, std::error_code>
    addCover(const Uuid& folder, const std::filesystem::path& picture) const;

    /// Deletes the icons and covers with other file names than these. Other files stay.
    void keepOnly(const std::set<std::string>& names) const;

  private:
    std::expected<std::filesystem::path, std::error_code> add(const std::string& name,
                                                              const std::string& content) const;

    std::filesystem::path folder_;
};

} // namespace vellory
