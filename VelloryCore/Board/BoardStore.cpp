// SPDX-License-Identifier: Apache-2.0
#include "Board/BoardStore.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <utility>

#include "Support/AtomicFile.h"
#include "Support/Calendar.h"
#include "Support/Text.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longestReason = 60; // characters
/// Leaves room, in the 255 bytes that a file name may have, for the time and the extension. Sixty
/// characters may need more: an emoji of a family takes 25 bytes.
constexpr std::size_t longestReasonInBytes = 200;
constexpr std::string_view extension = ".json";

/// The reason as a part of a file name.
std::string cleaned(std::string_view reason) {
    std::string text = Text::repairedUtf8(reason);
    for (char& c : text) {
        if (c == '/') {
            c = '-';
        } else if (static_cast<unsigned char>(c) <= ' ' || c == '\x7f') {
            // Folder titles come from files too: a NUL would cut the name short.
            c = '_';
        }
    }
    std::string_view kept = Text::prefix(text, longestReason);
    for (std::size_t count = Text::length(kept); kept.size() > longestReasonInBytes; --count) {
        kept = Text::prefix(kept, count - 1);
    }
    return std::string(kept);
}

std::int64_t milliseconds(Date date) {
    return std::llround(date.secondsSince1970() * 1000.0);
}

/// What a history file's name says; nothing for other files' names.
std::optional<BoardStore::Snapshot> snapshotOf(const fs::path& file) {
    if (file.extension() != extension) {
        return std::nullopt;
    }
    const std::string name = file.stem().string();
    const std::size_t separator = name.find('_');
    if (separator == std::string::npos) {
        return std::nullopt;
    }
    double time = 0;
    const char* const end = name.data() + separator;
    const auto [parsed, error] = std::from_chars(name.data(), end, time);
    const Date date = Date::since1970(time / 1000.0);
    // A time that no calendar reaches is none that a save was made at.
    if (error != std::errc{} || parsed != end || !Calendar::covers(date)) {
        return std::nullopt;
    }
    return BoardStore::Snapshot{date, name.substr(separator + 1), file};
}

} // namespace

BoardStore::BoardStore(fs::path file, fs::path historyFolder, std::size_t keep,
                       std::function<Date()> now)
    : file_(std::move(file)), historyFolder_(std::move(historyFolder)), keep_(keep),
      now_(std::move(now)) {}

std::expected<Board, BoardStore::ReadError> BoardStore::read() const {
    const auto content = AtomicFile::read(file_);
    if (!content) {
        return std::unexpected(content.error() == std::errc::no_such_file_or_directory
                                   ? ReadError::missing
                                   : ReadError::unreadable);
    }
    auto board = json::decode<Board>(*content);
    if (!board) {
        return std::unexpected(ReadError::unreadable);
    }
    return *std::move(board);
}

std::optional<Board> BoardStore::load() const {
    auto board = read();
    return board ? std::optional(*std::move(board)) : std::nullopt;
}

std::expected<void, std::error_code>
BoardStore::save(const Board& board, std::optional<std::string_view> reason) const {
    if (auto created = AtomicFile::createFolder(file_.parent_path()); !created) {
        return created;
    }
    const std::string content = json::encode(board);
    const auto old = AtomicFile::read(file_);
    if (old != content) {
        const bool isUnderstood = old ? json::decode<Board>(*old).has_value()
                                      : old.error() == std::errc::no_such_file_or_directory;
        if (!isUnderstood) {
            AtomicFile::keepUnreadable(file_);
        }
        if (reason && old) {
            return saveWithHistory(content, *old, *reason);
        }
    }
    return AtomicFile::write(file_, content);
}

std::expected<void, std::error_code> BoardStore::saveWithHistory(std::string_view content,
                                                                 std::string_view old,
                                                                 std::string_view reason) const {
    if (auto created = AtomicFile::createFolder(historyFolder_); !created) {
        return created;
    }
    // No two entries share a millisecond: neither is lost, and their order is known.
    std::set<std::int64_t> taken;
    for (const Snapshot& snapshot : snapshots()) {
        taken.insert(milliseconds(snapshot.date));
    }
    std::int64_t time = milliseconds(now_());
    while (taken.contains(time)) {
        ++time;
    }
    std::string name = std::to_string(time) + '_' + cleaned(reason);
    const fs::path entry = historyFolder_ / name.append(extension);
    auto saved = AtomicFile::write(entry, old);
    if (saved) {
        saved = AtomicFile::write(file_, content);
    }
    // An entry that stayed after a save that failed would push older ones out, try after try.
    std::error_code ignored;
    if (!saved) {
        fs::remove(entry, ignored);
        return saved;
    }
    const std::vector<Snapshot> all = snapshots();
    for (std::size_t i = keep_; i < all.size(); ++i) {
        // One that cannot be deleted is tried again after the next change.
        fs::remove(all[i].url, ignored);
    }
    return {};
}

std::vector<BoardStore::Snapshot> BoardStore::snapshots() const {
    std::vector<Snapshot> found;
    std::error_code error;
    fs::directory_iterator entries(historyFolder_, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
        std::error_code ignored;
        if (!entries->is_regular_file(ignored)) {
            continue;
        }
        if (auto snapshot = snapshotOf(entries->path())) {
            found.push_back(*std::move(snapshot));
        }
    }
    std::ranges::sort(found, [](const Snapshot& a, const Snapshot& b) {
        return a.date != b.date ? a.date > b.date : a.url < b.url;
    });
    return found;
}

std::optional<Board> BoardStore::boardIn(const Snapshot& snapshot) const {
    const auto content = AtomicFile::read(snapshot.url);
    if (!content) {
        return std::nullopt;
    }
    auto board = json::decode<Board>(*content);
    return board ? std::optional(*std::move(board)) : std::nullopt;
}

void toJson(json::Value& object, const BoardStore::Backup& backup) {
    json::write(object, "version", backup.version);
    json::write(object, "board", backup.board);
    json::write(object, "workspaces", backup.workspaces);
}

void fromJson(const json::Value& object, BoardStore::Backup& backup) {
    json::require(object, "version", backup.version);
    json::require(object, "board", backup.board);
    json::require(object, "workspaces", backup.workspaces);
}

} // namespace vellory
