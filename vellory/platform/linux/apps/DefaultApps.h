// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "Apps/InstalledApp.h"

/// Which app the user has for what, as the desktop's associations say (mimeapps.list). Any thread.
namespace vellory::DefaultApps {

std::optional<InstalledApp> forScheme(const std::string& scheme);

/// By what the file is and holds. Nothing for a program of any kind: the app that "opens" one runs
/// it.
std::optional<InstalledApp> forFile(const std::filesystem::path& file);

} // namespace vellory::DefaultApps
