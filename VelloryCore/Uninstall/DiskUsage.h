// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>

namespace vellory::DiskUsage {

/// The bytes that a file, or everything inside a folder, takes on disk: allocated blocks, not
/// lengths, so a sparse file counts little. A file with several names inside the folder counts
/// once.
///
/// Symbolic links are never followed: one counts for itself. What cannot be read counts 0. Any
/// depth of folders is walked with a bounded number of open files; the cost is one look at each
/// entry.
std::int64_t allocated(const std::filesystem::path& place);

} // namespace vellory::DiskUsage
