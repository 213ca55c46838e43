// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "shell/workspaces/RowList.h"

namespace vellory {

/// The apps that the user wants left alone whatever opens or closes, to be seen and changed.
class ProtectedApps : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("They come from the settings")
    /// Each with `name` and `icon`; the key is the app.
    Q_PROPERTY(vellory::RowList* rows READ rows CONSTANT)

  public:
    explicit ProtectedApps(AppModel& model, QObject* parent = nullptr);

    RowList* rows() { return &rows_; }

    Q_INVOKABLE QVariantList findApps(const QString& query) const;
    Q_INVOKABLE void addApp(const QString& app);
    Q_INVOKABLE void removeApp(const QString& app);

  private:
    void update();

    AppModel& model_;
    RowList rows_;
};

} // namespace vellory
