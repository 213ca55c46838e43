// SPDX-License-Identifier: Apache-2.0
#include "Usage/RecentDocuments.h"

#include <array>
#include <optional>
#include <string>

#include "Support/AtomicFile.h"
#include "Support/KeyedArchive.h"
#include "Support/Text.h"
#include "Usage/Bookmark.h"

namespace vellory::RecentDocuments {

namespace {

using Value = KeyedArchive::Value;

constexpr std::size_t largestFile = 8U * 1024U * 1024U;
/// Items of one list that are looked at; the system keeps at most 50.
constexpr std::size_t mostItems = 1000;
/// The system has changed the ending with the format's details; the newest first.
constexpr std::array endings{".sfl4", ".sfl3", ".sfl2", ".sfl"};

/// A link stored as text, or as a URL object that holds it.
std::optional<std::filesystem::path> fileOfLink(const KeyedArchive& archive, const Value* link) {
    if (link == nullptr) {
        return std::nullopt;
    }
    const std::string* text = archive.string(link);
    if (text == nullptr) {
        text = archive.string(archive.member(link, "NS.relative"));
    }
    return text == nullptr ? std::nullopt : Bookmark::fileOfLink(*text);
}

std::optional<std::filesystem::path> document(const KeyedArchive& archive, const Value* item) {
    for (const char* key : {"Bookmark", "bookmark"}) {
        if (const std::string* data = archive.data(archive.member(item, key))) {
            if (auto location = Bookmark::location(*data)) {
                return location;
            }
        }
    }
    for (const char* key : {"URL", "url"}) {
        if (auto location = fileOfLink(archive, archive.member(item, key))) {
            return location;
        }
    }
    return std::nullopt;
}

} // namespace

std::filesystem::path folder(const std::filesystem::path& home) {
    return home / "Library/Application Support/com.apple.sharedfilelist/"
                  "com.apple.LSSharedFileList.ApplicationRecentDocuments";
}

std::vector<std::filesystem::path> list(std::string_view app, std::size_t limit,
                                        const std::filesystem::path& folder) {
    // An identifier comes from other programs' files and must not lead out of the folder.
    if (app.empty() || app.find_first_of(std::string_view("/\0", 2)) != std::string_view::npos) {
        return {};
    }
    // The system spells the file names in lower case.
    for (const std::string& name : {Text::lowercased(app), std::string(app)}) {
        for (const char* ending : endings) {
            if (const auto archive = AtomicFile::read(folder / (name + ending), largestFile)) {
                return urls(*archive, limit);
            }
        }
    }
    return {};
}

std::vector<std::filesystem::path> urls(std::string_view archive, std::size_t limit) {
    const auto objects = KeyedArchive::parse(archive);
    if (!objects) {
        return {};
    }
    std::vector<std::filesystem::path> out;
    const Value* items = objects->member(objects->root(), "items");
    for (const Value* item : objects->elements(items, mostItems)) {
        if (out.size() == limit) {
            break;
        }
        if (auto location = document(*objects, item)) {
            out.push_back(std::move(*location));
        }
    }
    return out;
}

} // namespace vellory::RecentDocuments
