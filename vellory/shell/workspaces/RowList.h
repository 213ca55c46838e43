// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QStringList>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

namespace vellory {

/// A list for views whose rows come as maps, all with the same fields. The field "key" tells rows
/// apart: a row keeps its delegate, and with it the focus, when it changes or moves.
class RowList : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Lists come from the program")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    /// `fields` without "key", which every row has.
    explicit RowList(const QStringList& fields, QObject* parent = nullptr);

    int count() const { return static_cast<int>(rows_.size()); }
    const QList<QVariantMap>& rows() const { return rows_; }
    /// Replaces the rows; no key may come twice.
    void setRows(QList<QVariantMap> rows);
    /// A row as a map; empty past the ends.
    Q_INVOKABLE QVariantMap row(int index) const { return rows_.value(index); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override { return roles_; }

  Q_SIGNALS:
    void countChanged();

  private:
    qsizetype find(const QString& key, qsizetype from) const;

    QHash<int, QByteArray> roles_;
    QList<QVariantMap> rows_;
};

} // namespace vellory
