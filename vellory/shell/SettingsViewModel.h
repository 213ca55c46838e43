// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"

namespace vellory {

/// What the settings show and change. Each page asks for its part; nothing is gathered while no
/// page shows it.
class SettingsViewModel : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Settings)
    QML_UNCREATABLE("The settings come from the program")

    Q_PROPERTY(bool shown READ isShown WRITE setShown NOTIFY shownChanged)
    Q_PROPERTY(int page READ page WRITE setPage NOTIFY pageChanged)

    Q_PROPERTY(QStringList smartListModes READ smartListModes CONSTANT)
    Q_PROPERTY(
        int smartListMode READ smartListMode WRITE setSmartListMode NOTIFY smartListModeChanged)
    Q_PROPERTY(QString habitPromise READ habitPromise CONSTANT)
    Q_PROPERTY(QString habitRecord READ habitRecord NOTIFY habitsChanged)
    Q_PROPERTY(QVariantList unusedApps READ unusedApps NOTIFY unusedAppsChanged)

  public:
    explicit SettingsViewModel(AppModel& model, QObject* parent = nullptr);

    bool isShown() const { return shown_; }
    void setShown(bool shown);
    int page() const { return page_; }
    void setPage(int page);

    /// The rules for the apps above the grid, in the order of `Prefs::SmartListMode`.
    QStringList smartListModes() const;
    int smartListMode() const { return static_cast<int>(model_.prefs().smartListMode()); }
    void setSmartListMode(int mode);

    QString habitPromise() const;
    /// How much is kept about habits.
    QString habitRecord() const;

    /// The apps that were not opened for long: each with `id`, `name`, `icon` and `lastUsed` as a
    /// sentence.
    QVariantList unusedApps() const;

  Q_SIGNALS:
    void shownChanged();
    void pageChanged();
    void smartListModeChanged();
    void habitsChanged();
    void unusedAppsChanged();

  private:
    AppModel& model_;
    bool shown_ = false;
    int page_ = 0;
};

} // namespace vellory
