// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "Support/Date.h"

/// The only way in which files are written, and the usual way in which they are read whole.
namespace vellory::AtomicFile {

/// What a store reads at most: far above any honest file, far below what would hurt.
inline constexpr std::size_t defaultLimit = 64U * 1024U * 1024U;

/// The whole content of a regular file. Fails with the file system's error; with
/// `std::errc::file_too_large` past `limit` bytes, and `std::errc::invalid_argument` when `file` is
/// not a regular file (a pipe or device is never opened for reading).
std::expected<std::string, std::error_code> read(const std::filesystem::path& file,
                                                 std::size_t limit = defaultLimit);

/// Replaces the content of `file`: a temporary file in the same folder is written and flushed to
/// disk, takes the name, and the folder is flushed. A reader sees the old or the new content, also
/// after a power cut; after a failure the old file stands untouched and no temporary file is left.
///
/// A symbolic link is followed, so that a file kept elsewhere stays there. The mode of an existing
/// file is kept; a new one is readable by its owner only. The folder must exist.
std::expected<void, std::error_code> write(const std::filesystem::path& file,
                                           std::string_view content);

/// As `write`, for a program: everybody may run it, whatever the file's mode was (octal 755), and a
/// symbolic link in its place is replaced rather than followed, for it may lead to another program.
std::expected<void, std::error_code> writeProgram(const std::filesystem::path& file,
                                                  std::string_view content);

/// Creates `folder` and its missing parents.
std::expected<void, std::error_code> createFolder(const std::filesystem::path& folder);

/// How many copies `keepUnreadable` leaves of one file.
inline constexpr int mostUnreadableCopies = 5;

/// Copies a file that could not be understood to `<file>.unreadable`, and when that is another such
/// file to `<file>.2.unreadable` and so on, unless the newest of them is the very same already. Of
/// more than `mostUnreadableCopies` the first, which is closest to what was lost, and the newest
/// are kept. Does nothing without `file`.
void keepUnreadable(const std::filesystem::path& file);

/// Deletes the temporary files directly in `folder` that a `write` cut short has left there, of
/// those last written before `before`.
void removeUnfinished(const std::filesystem::path& folder, Date before);

} // namespace vellory::AtomicFile
