// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include <QDir>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "model/MenuEntry.h"
#include "platform/Scheduler.h"
#include "shell/workspaces/FocusSession.h"
#include "shell/workspaces/RowList.h"
#include "shell/workspaces/WorkspaceEditor.h"

namespace vellory {

class LauncherViewModel;

/// What the views see and ask of the workspaces: the strip above the grid, the list beside it, and
/// what makes new ones.
class WorkspacesViewModel : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Workspaces)
    QML_UNCREATABLE("The workspaces come from the program")

    /// Each with `name`, `symbol`, `shortcut`, `active` and `summary`.
    Q_PROPERTY(vellory::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(vellory::WorkspaceEditor* editor READ editor CONSTANT)
    Q_PROPERTY(vellory::FocusSession* session READ session CONSTANT)
    /// The workspace that a focus session is to be started of; empty for none chosen yet.
    Q_PROPERTY(QString sessionWorkspace READ sessionWorkspace WRITE setSessionWorkspace NOTIFY
                   sessionWorkspaceChanged)
    Q_PROPERTY(QVariantList sessionLengths READ sessionLengths CONSTANT)
    Q_PROPERTY(int usualMinutes READ usualMinutes CONSTANT)
    Q_PROPERTY(int leastMinutes READ leastMinutes CONSTANT)
    Q_PROPERTY(int mostMinutes READ mostMinutes CONSTANT)
    /// Whether windows can be read and moved; asked anew by `checkPermission`.
    Q_PROPERTY(bool canPlaceWindows READ canPlaceWindows NOTIFY permissionChanged)
    /// A dialog of the desktop is open, so the launcher stays although another window has the
    /// focus.
    Q_PROPERTY(
        bool choosingFiles READ isChoosingFiles WRITE setChoosingFiles NOTIFY choosingFilesChanged)

    /// Where a dialog for files begins.
    Q_PROPERTY(QUrl home READ home CONSTANT)
    Q_PROPERTY(QString newFromOpenText READ newFromOpenText CONSTANT)
    Q_PROPERTY(QStringList takeTexts READ takeTexts CONSTANT)
    Q_PROPERTY(QString asksOnceText READ asksOnceText CONSTANT)
    Q_PROPERTY(QString allowText READ allowText CONSTANT)
    Q_PROPERTY(QString allowHowText READ allowHowText CONSTANT)
    Q_PROPERTY(QString sessionText READ sessionText CONSTANT)

  public:
    WorkspacesViewModel(AppModel& model, LauncherState& state, Scheduler& scheduler,
                        LauncherViewModel& launcher, QObject* parent = nullptr);

    RowList* rows() { return &rows_; }
    WorkspaceEditor* editor() { return &editor_; }
    FocusSession* session() { return &session_; }
    QString sessionWorkspace() const { return sessionWorkspace_; }
    void setSessionWorkspace(const QString& id);
    /// In minutes, as they are offered.
    QVariantList sessionLengths() const;
    int usualMinutes() const;
    int leastMinutes() const;
    int mostMinutes() const;
    bool canPlaceWindows() const { return canPlaceWindows_; }
    bool isChoosingFiles() const { return choosingFiles_; }
    void setChoosingFiles(bool on);

    QUrl home() const { return QUrl::fromLocalFile(QDir::homePath()); }
    QString newFromOpenText() const;
    QStringList takeTexts() const;
    QString asksOnceText() const;
    QString allowText() const;
    QString allowHowText() const;
    QString sessionText() const;

    Q_INVOKABLE void open(const QString& id);
    Q_INVOKABLE void startSession(const QString& id, int minutes);
    Q_INVOKABLE void close() { model_.closeWorkspace(false); }

    Q_INVOKABLE void showMenu(const QString& id);
    /// The ways to make a workspace.
    Q_INVOKABLE void showNewMenu();
    /// A workspace with nothing in it yet, which the editor then shows.
    Q_INVOKABLE void create();
    /// Asks for how long, or what a new workspace takes in.
    Q_INVOKABLE void chooseSession(const QString& id);
    Q_INVOKABLE void chooseFromOpen();
    Q_INVOKABLE void makeFromOpen(bool windows, bool folders, bool tabs);
    Q_INVOKABLE void edit(const QString& id);
    Q_INVOKABLE void duplicate(const QString& id);
    /// For a while, a notice offers to have it back.
    Q_INVOKABLE void remove(const QString& id);
    /// Adds the apps of a tile of the grid: the app, or all apps of the folder.
    Q_INVOKABLE void addTile(const QString& id, const QString& tileId);
    Q_INVOKABLE void move(const QString& id, int index);
    /// So many places on, or back.
    Q_INVOKABLE void moveBy(const QString& id, int places);

    /// Looks whether windows can be read and moved; with `prompt` the user is asked to allow it.
    Q_INVOKABLE void checkPermission(bool prompt);

  Q_SIGNALS:
    void sessionWorkspaceChanged();
    void permissionChanged();
    void choosingFilesChanged();

  private:
    const Workspace* find(const QString& id) const;
    int indexOf(const Uuid& id) const;
    void updateRows();
    Menu menuOf(const Workspace& workspace);
    MenuEntry sessionMenu(const QString& id);
    void restore(const Workspace& workspace, int index, const std::string& shortcut);

    AppModel& model_;
    LauncherState& state_;
    LauncherViewModel& launcher_;
    RowList rows_;
    WorkspaceEditor editor_;
    FocusSession session_;
    QString sessionWorkspace_;
    bool canPlaceWindows_ = false;
    bool choosingFiles_ = false;
};

} // namespace vellory
