// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

/// The records in which the system remembers files.
namespace vellory::Bookmark {

/// The location that bookmark data names: the path it was made with, or else the file link in it.
/// Whether the file is still there is not asked. Nothing for data that is damaged or names no file.
///
/// The data ("book" at its begin) is a header, records, and a chain of tables that tell where the
/// record for each property is; all numbers are little-endian and of 32 bits.
std::optional<std::filesystem::path> location(std::string_view data);

/// The absolute path that a link of the form "file:///…" names.
std::optional<std::filesystem::path> fileOfLink(std::string_view link);

} // namespace vellory::Bookmark
