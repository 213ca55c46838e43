// SPDX-License-Identifier: Apache-2.0
#include "shell/notices/NoticeList.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <QTimer>

namespace vellory {

namespace {
/// More than this at once would climb over the grid: the oldest makes room.
constexpr int mostNotices = 4;
} // namespace

int NoticeList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant NoticeList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Row& row = rows_[index.row()];
    switch (role) {
    case TextRole:
        return row.text;
    case SymbolRole:
        return row.symbol;
    case UndoableRole:
        return row.undo != nullptr;
    case IdRole:
        return row.id;
    default:
        return {};
    }
}

QHash<int, QByteArray> NoticeList::roleNames() const {
    return {{TextRole, "text"},
            {SymbolRole, "symbol"},
            {UndoableRole, "undoable"},
            {IdRole, "noticeId"}};
}

void NoticeList::postUndoable(const Notice& notice, std::function<void()> undo) {
    if (rows_.size() == mostNotices) {
        remove(rows_.front().id);
    }
    const int id = ++lastId_;
    beginInsertRows({}, static_cast<int>(rows_.size()), static_cast<int>(rows_.size()));
    rows_.append({id, QString::fromStdString(notice.text), QString::fromStdString(notice.symbol),
                  std::move(undo)});
    endInsertRows();
    const auto time = std::chrono::milliseconds(static_cast<int>(notice.seconds * 1000));
    QTimer::singleShot(time, this, [this, id] { remove(id); });
}

void NoticeList::undo(int id) {
    const auto row = std::ranges::find(rows_, id, &Row::id);
    if (row != rows_.end() && row->undo) {
        const auto undo = row->undo;
        remove(id);
        undo();
    }
}

void NoticeList::remove(int id) {
    const auto row = std::ranges::find(rows_, id, &Row::id);
    if (row == rows_.end()) {
        return;
    }
    const auto index = static_cast<int>(row - rows_.begin());
    beginRemoveRows({}, index, index);
    rows_.erase(row);
    endRemoveRows();
}

} // namespace vellory
