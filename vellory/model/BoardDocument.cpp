// SPDX-License-Identifier: Apache-2.0
#include "model/BoardDocument.h"

#include <utility>

namespace vellory {

BoardDocument::BoardDocument(BoardStore store, QObject* parent)
    : QObject(parent), store_(std::move(store)) {}

bool BoardDocument::load() {
    std::optional<Board> stored = store_.load();
    if (!stored) {
        return false;
    }
    begin(*std::move(stored));
    return true;
}

void BoardDocument::begin(Board board) {
    board_ = std::move(board);
    isLoaded_ = true;
    Q_EMIT changed();
}

BoardDocument::Change BoardDocument::change(Board next, const std::optional<std::string>& reason) {
    if (!isLoaded_ || next == board_) {
        return Change::none;
    }
    board_ = std::move(next);
    const bool isSaved = save(reason);
    Q_EMIT changed();
    return isSaved ? Change::saved : Change::unsaved;
}

bool BoardDocument::save(const std::optional<std::string>& reason) {
    if (!isLoaded_) {
        return false;
    }
    const auto saved = store_.save(board_, reason);
    if (!saved) {
        Q_EMIT saveFailed(saved.error());
    }
    return saved.has_value();
}

} // namespace vellory
