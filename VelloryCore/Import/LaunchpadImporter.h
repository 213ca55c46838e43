// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Board/Layout.h"
#include "Support/Sqlite.h"

/// Brings back the pages and folders of the system's former launcher, which kept them in a database
/// of its own. The database is only read, never locked or changed.
namespace vellory::LaunchpadImporter {

/// One row of the query: an item and, where it is an app or a folder, what names it.
struct Row {
    std::int64_t id = 0;
    std::string uuid{};      ///< empty where the database has none
    std::int64_t type = 0;   ///< one of `Type`, or another that is skipped
    std::int64_t parent = 0; ///< the id of the item that holds this one
    std::int64_t ordering = 0;
    std::optional<std::string> title{};
    std::optional<BundleID> bundleID{};

    friend bool operator==(const Row&, const Row&) = default;
};

/// What a row's `type` means.
namespace Type {
inline constexpr std::int64_t root = 1;
inline constexpr std::int64_t folder = 2;
inline constexpr std::int64_t page = 3;
inline constexpr std::int64_t app = 4;
} // namespace Type

struct ImportError {
    enum class Kind {
        notFound,   ///< no file at the path; `detail` is the path
        unreadable, ///< cannot be opened (the path) or queried (the engine's message)
        noRoot      ///< no item that could hold the pages
    };
    Kind kind = Kind::notFound;
    std::string detail;

    friend bool operator==(const ImportError&, const ImportError&) = default;
};

/// Rows, and bytes of text in them, that are read at most. Far above what anybody arranges by hand;
/// past them the rows count as ended, so that a database made to exhaust memory does not.
inline constexpr std::size_t maxRows = 300'000;
inline constexpr std::size_t maxTextBytes = 32U * 1024U * 1024U;

/// Folders within folders that are kept as such. What lies deeper moves up to the deepest one, so
/// that no app is lost and a layout can be copied and compared by recursion.
inline constexpr std::size_t maxNesting = 1000;

/// Where the system keeps the database, in the user's own temporary folder; nothing without one.
std::optional<std::filesystem::path>
defaultDatabaseURL(const std::optional<std::filesystem::path>& userTemporaryFolder);

/// The arrangement in the database at `location`.
std::expected<Layout, ImportError> importLayout(const std::filesystem::path& location);

/// All rows in the order in which the database returns them. Rows end early, without an error,
/// where the database is damaged or a limit is reached.
std::expected<std::vector<Row>, ImportError> readItems(const Sqlite::Database& database);

/// The tree that the rows describe. Folders nest as the rows say, up to `maxNesting`. What a folder
/// or page holds is placed once: where several rows share an id, with the one that is reached
/// first.
std::expected<Layout, ImportError> layoutFrom(const std::vector<Row>& rows);

} // namespace vellory::LaunchpadImporter
