// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "model/Notice.h"

namespace vellory {

/// The notices on show, oldest first; each leaves by itself when its time is over.
class NoticeList : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Notices come from the launcher")

  public:
    enum Role { TextRole = Qt::UserRole, SymbolRole, UndoableRole, IdRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void post(const Notice& notice) { postUndoable(notice, {}); }
    /// While the notice is shown, what it says can be taken back.
    void postUndoable(const Notice& notice, std::function<void()> undo);
    /// Takes back what the notice with that `noticeId` says; it goes.
    Q_INVOKABLE void undo(int id);

  private:
    struct Row {
        int id = 0;
        QString text;
        QString symbol;
        std::function<void()> undo;
    };

    void remove(int id);

    QList<Row> rows_;
    int lastId_ = 0;
};

} // namespace vellory
