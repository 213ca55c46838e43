// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <optional>
#include <system_error>

#include "Support/AtomicFile.h"
#include "Support/Json.h"

/// A record that lives in a JSON file of its own: how every small store is read and written.
namespace vellory::JsonFile {

/// Larger files are not read: many times what a store fills in a lifetime.
inline constexpr std::size_t defaultLimit = 16U * 1024U * 1024U;

/// The record in `file`; nothing when the file is missing, too large or holds something else. A
/// file that was read but not understood is kept beside (see `AtomicFile::keepUnreadable`) before
/// anyone writes over it.
template <class Record>
std::optional<Record> load(const std::filesystem::path& file, std::size_t limit = defaultLimit) {
    const auto text = AtomicFile::read(file, limit);
    if (!text) {
        return std::nullopt;
    }
    auto record = json::decode<Record>(*text);
    if (!record) {
        AtomicFile::keepUnreadable(file);
        return std::nullopt;
    }
    return std::move(*record);
}

/// Writes the whole record, and creates the folder when it is missing.
template <class Record>
std::expected<void, std::error_code> save(const Record& record, const std::filesystem::path& file) {
    if (file.has_parent_path()) {
        if (const auto created = AtomicFile::createFolder(file.parent_path()); !created) {
            return created;
        }
    }
    return AtomicFile::write(file, json::encode(record));
}

} // namespace vellory::JsonFile
