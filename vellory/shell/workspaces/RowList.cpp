// SPDX-License-Identifier: Apache-2.0
#include "shell/workspaces/RowList.h"

#include <algorithm>

#include <QSet>

namespace vellory {

namespace {

QString keyOf(const QVariantMap& row) {
    return row.value("key").toString();
}

} // namespace

RowList::RowList(const QStringList& fields, QObject* parent) : QAbstractListModel(parent) {
    int role = Qt::UserRole;
    roles_.insert(role++, "key");
    for (const QString& field : fields) {
        roles_.insert(role++, field.toUtf8());
    }
}

int RowList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant RowList::data(const QModelIndex& index, int role) const {
    return checkIndex(index, CheckIndexOption::IndexIsValid)
               ? rows_[index.row()].value(QString::fromUtf8(roles_.value(role)))
               : QVariant();
}

qsizetype RowList::find(const QString& key, qsizetype from) const {
    for (qsizetype at = from; at < rows_.size(); ++at) {
        if (keyOf(rows_[at]) == key) {
            return at;
        }
    }
    return -1;
}

// First what is gone goes, then each place gets its row: from further down, or a new one.
void RowList::setRows(QList<QVariantMap> rows) {
    const qsizetype before = rows_.size();
    QSet<QString> kept;
    for (const QVariantMap& row : rows) {
        kept.insert(keyOf(row));
    }
    const bool isOther = std::ranges::none_of(
        rows_, [&](const QVariantMap& row) { return kept.contains(keyOf(row)); });
    if (isOther) {
        beginResetModel();
        rows_ = std::move(rows);
        endResetModel();
        if (rows_.size() != before) {
            Q_EMIT countChanged();
        }
        return;
    }
    for (qsizetype at = rows_.size() - 1; at >= 0; --at) {
        if (!kept.contains(keyOf(rows_[at]))) {
            beginRemoveRows({}, static_cast<int>(at), static_cast<int>(at));
            rows_.removeAt(at);
            endRemoveRows();
        }
    }
    for (qsizetype at = 0; at < rows.size(); ++at) {
        const int place = static_cast<int>(at);
        const qsizetype found = find(keyOf(rows[at]), at);
        if (found < 0) {
            beginInsertRows({}, place, place);
            rows_.insert(at, rows[at]);
            endInsertRows();
            continue;
        }
        if (found != at) {
            beginMoveRows({}, static_cast<int>(found), static_cast<int>(found), {}, place);
            rows_.move(found, at);
            endMoveRows();
        }
        if (rows_[at] != rows[at]) {
            rows_[at] = rows[at];
            Q_EMIT dataChanged(index(place), index(place));
        }
    }
    if (rows_.size() != before) {
        Q_EMIT countChanged();
    }
}

} // namespace vellory
