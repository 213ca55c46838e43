// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/PropertyList.h"
#include "Support/Text.h"

/// The apps of a macOS system: bundles, which are folders named "….app" that hold a property list
/// about themselves. Bundles are anybody's files: one that cannot be read is no app.
namespace vellory::AppDiscovery {

/// Languages that the user reads, best first, such as "de" or "pt-BR".
using Languages = std::vector<std::string>;

/// The folders to scan, in order of precedence, whether they exist or not. `volumes` is the folder
/// in which the system mounts its disks.
std::vector<std::filesystem::path> defaultRoots(const std::filesystem::path& home,
                                                const std::filesystem::path& volumes = "/Volumes");

/// All apps in the roots and in the folders directly below them, one for each identifier (the first
/// found wins), sorted by name. A root that cannot be listed contributes nothing.
std::vector<InstalledApp> scan(const std::vector<std::filesystem::path>& roots,
                               const Text::Collator& collator, const Languages& languages = {});

/// The app that a bundle is; nothing for what cannot be opened, has no identifier or runs in the
/// background only. Its name is the bundle's file name without ".app", or what the bundle calls
/// itself in the user's language as long as the user has not renamed the file.
std::optional<InstalledApp> appAt(const std::filesystem::path& bundle,
                                  const Languages& languages = {});

/// What the bundle says of itself: its Info.plist, under "Contents" or, in a flat bundle, at the
/// top. Nothing when that is missing or no dictionary.
std::optional<PropertyList::Value> information(const std::filesystem::path& bundle);

} // namespace vellory::AppDiscovery
