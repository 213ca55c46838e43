// SPDX-License-Identifier: Apache-2.0
#include <map>
#include <utility>

#include "Import/EntryResolver.h"
#include "Import/PathList.h"
#include "Import/RivalImport.h"
#include "Support/Sqlite.h"

namespace vellory::RivalImport {

namespace {

constexpr const char* query =
    "SELECT ZPAGEINDEX, ZPOSITION, ZKIND, ZAPPPATH, ZFOLDERNAME, ZAPPPATHS FROM ZPAGEENTRYDATA "
    "ORDER BY ZPAGEINDEX, ZPOSITION";

/// Apps that are read at most; past it the rows count as ended.
constexpr std::size_t maxApps = 300'000;

std::optional<LayoutItem> appIn(const Sqlite::Statement& row, const EntryResolver& resolver) {
    const auto path = row.text(3);
    auto id = path ? resolver.resolve(*path) : std::nullopt;
    if (!id) {
        return std::nullopt;
    }
    return LayoutItem{LayoutItem::App{*id, *id}};
}

std::optional<LayoutItem> folderIn(const Sqlite::Statement& row, const EntryResolver& resolver) {
    const auto bytes = row.bytes(5);
    const auto paths = bytes ? pathList(*bytes) : std::nullopt;
    if (!paths) {
        return std::nullopt;
    }
    LayoutPage apps;
    for (const std::string& path : *paths) {
        if (const auto id = resolver.resolve(path)) {
            apps.push_back({LayoutItem::App{*id, *id}});
        }
    }
    if (apps.empty()) {
        return std::nullopt;
    }
    return LayoutItem{LayoutItem::Folder{row.text(4).value_or("Folder"), {std::move(apps)}}};
}

} // namespace

Result launchNext(const std::filesystem::path& store, const Resolver& resolver) {
    const auto unreadable = [](const Sqlite::Error& error) {
        return std::unexpected(ImportError{ImportError::Kind::unreadable, error.message});
    };
    const auto database = Sqlite::Database::open(store);
    if (!database) {
        return unreadable(database.error());
    }
    auto rows = database->prepare(query);
    if (!rows) {
        return unreadable(rows.error());
    }
    const EntryResolver entries(resolver);
    std::map<std::int64_t, LayoutPage> pages;
    std::size_t apps = 0;
    while (apps < maxApps && rows->step()) {
        const auto kind = rows->text(2);
        auto item = kind == "app"      ? appIn(*rows, entries)
                    : kind == "folder" ? folderIn(*rows, entries)
                                       : std::nullopt;
        if (item) {
            apps += item->appCount();
            pages[rows->integer(0).value_or(0)].push_back(*std::move(item));
        }
    }
    Layout layout;
    for (auto& [index, page] : pages) {
        layout.pages.push_back(std::move(page));
    }
    return layout;
}

} // namespace vellory::RivalImport
