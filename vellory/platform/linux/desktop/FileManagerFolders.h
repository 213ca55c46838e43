// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "platform/linux/session/SessionEnvironment.h"

namespace vellory::FileManagerFolders {

/// The folders that the running file manager says it shows (`org.freedesktop.FileManager1`), as
/// absolute paths, none twice; none when no file manager runs or it keeps them to itself. It is not
/// started for this. Any thread; may wait for a second.
std::vector<std::string> open(const SessionEnvironment& environment);

} // namespace vellory::FileManagerFolders
