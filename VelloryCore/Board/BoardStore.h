// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "Board/Board.h"
#include "Support/Date.h"
#include "Support/Json.h"
#include "Workspaces/Workspace.h"

namespace vellory {

/// One board file and the folder of what it held before: each save that carries a reason first puts
/// the file's content into the history, so that the user can step back.
///
/// Holds no board: every read goes to the disk. Costs no more than one read and one atomic write,
/// and one more write when the history grows.
class BoardStore {
  public:
    /// What the file held up to a change. Made from the name of a history file.
    struct Snapshot {
        /// When the change was saved, to the millisecond.
        Date date;
        /// What the change was, as the file name spells it: blanks are underscores.
        std::string reason;
        std::filesystem::path url;

        friend bool operator==(const Snapshot&, const Snapshot&) = default;
    };

    /// The user's whole setup, as it is exported and synchronised.
    ///
    /// Stored: append fields only, never rename.
    struct Backup {
        int version = 1;
        Board board;
        std::vector<Workspace> workspaces;

        friend bool operator==(const Backup&, const Backup&) = default;
    };

    enum class ReadError {
        missing,   ///< there is no file
        unreadable ///< there is one that cannot be read, or whose content is no board
    };

    /// How many history files the program keeps.
    static constexpr std::size_t defaultKeep = 60;

    BoardStore(std::filesystem::path file, std::filesystem::path historyFolder, std::size_t keep,
               std::function<Date()> now);

    /// The board that the file holds, or why there is none.
    std::expected<Board, ReadError> read() const;
    /// The board that the file holds; a file that is missing and one that cannot be understood are
    /// both nothing.
    std::optional<Board> load() const;

    /// Writes the board. With a reason, what the file held before goes into the history, unless it
    /// is the very same; the history is then cut to the newest `keep` files.
    ///
    /// A file that is about to be replaced without having been understood is kept beside first (see
    /// `AtomicFile::keepUnreadable`). After a failure the file stands as it was.
    std::expected<void, std::error_code>
    save(const Board& board, std::optional<std::string_view> reason = std::nullopt) const;

    /// The history, newest first. Files that are not of its kind are passed over.
    std::vector<Snapshot> snapshots() const;
    /// The board of a history entry; nothing when its file is gone or cannot be understood.
    std::optional<Board> boardIn(const Snapshot& snapshot) const;

  private:
    std::expected<void, std::error_code>
    saveWithHistory(std::string_view content, std::string_view old, std::string_view reason) const;

    std::filesystem::path file_;
    std::filesystem::path historyFolder_;
    std::size_t keep_;
    std::function<Date()> now_;
};

void toJson(json::Value& object, const BoardStore::Backup& backup);
void fromJson(const json::Value& object, BoardStore::Backup& backup);

} // namespace vellory
