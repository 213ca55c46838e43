// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "model/CommandLineTool.h"
#include "shell/workspaces/ProtectedApps.h"

namespace vellory {

/// What the settings show and change, over the grid or in a window of their own. Each page asks for
/// its part when it is made, which is when it is shown; nothing is gathered while no page shows it.
class SettingsViewModel : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Settings)
    QML_UNCREATABLE("The settings come from the program")

    Q_PROPERTY(int page READ page WRITE setPage NOTIFY pageChanged)

    Q_PROPERTY(bool showLabels READ showLabels WRITE setShowLabels NOTIFY prefsChanged)
    Q_PROPERTY(bool listMode READ listMode WRITE setListMode NOTIFY prefsChanged)
    Q_PROPERTY(bool showBadges READ showBadges WRITE setShowBadges NOTIFY prefsChanged)
    Q_PROPERTY(bool keepOpen READ keepOpen WRITE setKeepOpen NOTIFY prefsChanged)
    Q_PROPERTY(bool reduceMotion READ reduceMotion WRITE setReduceMotion NOTIFY prefsChanged)

    Q_PROPERTY(QStringList closeAppsTitles READ closeAppsTitles CONSTANT)
    Q_PROPERTY(int closeApps READ closeApps WRITE setCloseApps NOTIFY prefsChanged)
    Q_PROPERTY(QString closingText READ closingText CONSTANT)
    Q_PROPERTY(bool readFocus READ readFocus WRITE setReadFocus NOTIFY prefsChanged)
    /// Whether the desktop's Focus can be read now.
    Q_PROPERTY(bool canReadFocus READ canReadFocus NOTIFY prefsChanged)
    Q_PROPERTY(QString readFocusText READ readFocusText CONSTANT)
    Q_PROPERTY(QString cannotReadFocusText READ cannotReadFocusText CONSTANT)
    Q_PROPERTY(QString automationText READ automationText CONSTANT)
    Q_PROPERTY(vellory::ProtectedApps* protectedApps READ protectedApps CONSTANT)
    Q_PROPERTY(bool hasCommand READ hasCommand NOTIFY hasCommandChanged)

    Q_PROPERTY(QStringList smartListModes READ smartListModes CONSTANT)
    Q_PROPERTY(
        int smartListMode READ smartListMode WRITE setSmartListMode NOTIFY smartListModeChanged)
    Q_PROPERTY(QString habitPromise READ habitPromise CONSTANT)
    Q_PROPERTY(QString habitRecord READ habitRecord NOTIFY habitsChanged)
    Q_PROPERTY(int unusedDays READ unusedDays CONSTANT)
    Q_PROPERTY(QVariantList unusedApps READ unusedApps NOTIFY unusedAppsChanged)

  public:
    /// `home` is where the command for terminals is kept.
    SettingsViewModel(AppModel& model, const std::filesystem::path& home,
                      QObject* parent = nullptr);

    int page() const { return page_; }
    void setPage(int page);

    bool showLabels() const { return model_.prefs().showLabels(); }
    void setShowLabels(bool on) { model_.prefs().setShowLabels(on); }
    /// The grid as one list that scrolls, instead of pages.
    bool listMode() const { return model_.prefs().displayMode() == Prefs::DisplayMode::list; }
    void setListMode(bool on) {
        model_.prefs().setDisplayMode(on ? Prefs::DisplayMode::list : Prefs::DisplayMode::pages);
    }
    bool showBadges() const { return model_.prefs().showBadges(); }
    void setShowBadges(bool on) { model_.prefs().setShowBadges(on); }
    bool keepOpen() const { return model_.prefs().keepOpenAfterLaunch(); }
    void setKeepOpen(bool on) { model_.prefs().setKeepOpenAfterLaunch(on); }
    bool reduceMotion() const { return model_.prefs().reduceMotion(); }
    void setReduceMotion(bool on) { model_.prefs().setReduceMotion(on); }

    /// What closing a workspace can do with the apps it launched, in the order of
    /// `WorkspaceSession::CloseApps`.
    static QStringList closeAppsTitles();
    int closeApps() const { return static_cast<int>(model_.prefs().closeApps()); }
    void setCloseApps(int index);
    QString closingText() const;
    bool readFocus() const { return model_.prefs().readFocusDirectly(); }
    void setReadFocus(bool on) { model_.prefs().setReadFocusDirectly(on); }
    bool canReadFocus() const { return model_.triggers().canReadFocus(); }
    QString readFocusText() const;
    QString cannotReadFocusText() const;
    QString automationText() const;
    ProtectedApps* protectedApps() { return &protectedApps_; }
    /// Whether the command for terminals is there.
    bool hasCommand() const { return command_.isInstalled(); }
    Q_INVOKABLE void installCommand();

    /// The rules for the apps above the grid, in the order of `Prefs::SmartListMode`.
    QStringList smartListModes() const;
    int smartListMode() const { return static_cast<int>(model_.prefs().smartListMode()); }
    void setSmartListMode(int mode);

    QString habitPromise() const;
    /// How much is kept about habits.
    QString habitRecord() const;

    static int unusedDays() { return UsageCenter::unusedDays; }
    /// The apps that were not opened in `unusedDays`: each with `id`, `name`, `icon` and `lastUsed`
    /// as a sentence.
    QVariantList unusedApps() const;

  Q_SIGNALS:
    void pageChanged();
    void prefsChanged();
    void hasCommandChanged();
    void smartListModeChanged();
    void habitsChanged();
    void unusedAppsChanged();

  private:
    AppModel& model_;
    ProtectedApps protectedApps_;
    CommandLineTool command_;
    int page_ = 0;
};

} // namespace vellory
