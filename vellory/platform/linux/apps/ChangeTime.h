// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

namespace vellory {

/// When a folder last got or lost a file; the least time for one that cannot be looked at.
inline std::filesystem::file_time_type changeTime(const std::filesystem::path& folder) {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(folder, error);
    return error ? std::filesystem::file_time_type::min() : time;
}

} // namespace vellory
