// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <QObject>

#include "Board/Board.h"
#include "Board/BoardStore.h"

namespace vellory {

/// The board in memory together with its file. Nothing is ever written before the file was looked
/// at, so that no start can overwrite a board that has not been read.
class BoardDocument : public QObject {
    Q_OBJECT

  public:
    enum class Change {
        none,   ///< the board is as it was
        saved,  ///< changed, also on the disk
        unsaved ///< changed in memory only; the next save tries again
    };

    explicit BoardDocument(BoardStore store, QObject* parent = nullptr);

    const Board& board() const { return board_; }
    /// Whether there is a board that may be changed and saved.
    bool isLoaded() const { return isLoaded_; }

    /// Takes the board from the file; false when there is none that can be read.
    bool load();
    /// Starts with this board in place of a file that could not be read. Saves nothing.
    void begin(Board board);

    /// Makes `next` the board and saves it. Nothing happens before there is a board.
    Change change(Board next, const std::optional<std::string>& reason);
    /// Writes the board; with a reason, what the file held goes into the history. Whether it is on
    /// the disk now.
    bool save(const std::optional<std::string>& reason);

    std::vector<BoardStore::Snapshot> snapshots() const { return store_.snapshots(); }
    std::optional<Board> boardIn(const BoardStore::Snapshot& snapshot) const {
        return store_.boardIn(snapshot);
    }

  Q_SIGNALS:
    void changed();
    void saveFailed(const std::error_code& error);

  private:
    BoardStore store_;
    Board board_;
    bool isLoaded_ = false;
};

} // namespace vellory
