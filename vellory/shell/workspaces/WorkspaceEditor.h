// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "shell/workspaces/RowList.h"

namespace vellory {

/// One workspace, open to be changed. Every change is stored at once; there is nothing to confirm.
/// Rows are counted from 0; an index past the end changes nothing.
class WorkspaceEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one editor, the launcher's")

    /// Empty while no workspace is being edited.
    Q_PROPERTY(QString workspace READ workspace NOTIFY workspaceChanged)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(QString symbol READ symbol WRITE setSymbol NOTIFY changed)
    /// What it opens: each with `title`, `detail`, `icon` and `symbol`.
    Q_PROPERTY(vellory::RowList* items READ items CONSTANT)
    /// How many window positions are saved.
    Q_PROPERTY(int windowCount READ windowCount NOTIFY changed)
    Q_PROPERTY(QStringList othersTitles READ othersTitles CONSTANT)
    Q_PROPERTY(int others READ others WRITE setOthers NOTIFY changed)
    /// Each with `kind`, `title`, `symbol`, `link`, `weekdays` and `time`.
    Q_PROPERTY(vellory::RowList* triggers READ triggers CONSTANT)
    Q_PROPERTY(bool focusGrid READ focusGrid WRITE setFocusGrid NOTIFY changed)
    Q_PROPERTY(QString focusGridText READ focusGridText CONSTANT)
    Q_PROPERTY(QString shortcut READ shortcut NOTIFY shortcutChanged)
    /// The shortcut is another program's.
    Q_PROPERTY(bool shortcutRefused READ isShortcutRefused NOTIFY shortcutChanged)
    /// The link that opens the workspace.
    Q_PROPERTY(QString link READ link NOTIFY changed)
    Q_PROPERTY(QString focusModesText READ focusModesText CONSTANT)
    Q_PROPERTY(QString automationText READ automationText CONSTANT)

  public:
    explicit WorkspaceEditor(AppModel& model, QObject* parent = nullptr);

    Q_INVOKABLE void open(const QString& id);
    Q_INVOKABLE void close() { open({}); }

    QString workspace() const;
    QString name() const;
    /// Line breaks become spaces; a name of blanks leaves the old one.
    void setName(const QString& name);
    QString symbol() const;
    void setSymbol(const QString& symbol);
    RowList* items() { return &items_; }
    int windowCount() const;
    QStringList othersTitles() const;
    int others() const;
    void setOthers(int index);
    RowList* triggers() { return &triggers_; }
    bool focusGrid() const;
    void setFocusGrid(bool on);
    QString focusGridText() const;
    QString shortcut() const;
    bool isShortcutRefused() const;
    QString link() const;
    QString focusModesText() const;
    QString automationText() const;

    /// The symbols to choose from that `query` finds, in groups with `title` and `symbols` (names).
    Q_INVOKABLE QVariantList findSymbols(const QString& query) const;

    // --- What it opens ---

    Q_INVOKABLE void addApp(const QString& app);
    /// Files and folders on this machine.
    Q_INVOKABLE void addFiles(const QList<QUrl>& files);
    /// False when `text` is no link that could be opened.
    Q_INVOKABLE bool addLink(const QString& text);
    Q_INVOKABLE void removeItem(int index);
    Q_INVOKABLE void moveItem(int from, int to);
    /// Installed apps by what was typed, best first, with `app`, `name`, `icon` and `added`.
    Q_INVOKABLE QVariantList findApps(const QString& query) const;

    // --- Windows ---

    Q_INVOKABLE void captureWindows();
    Q_INVOKABLE void clearWindows();

    // --- What opens it ---

    /// Weekdays at nine.
    Q_INVOKABLE void addSchedule();
    /// `weekday` counts from 1 for Sunday. A schedule keeps at least one day.
    Q_INVOKABLE void toggleWeekday(int index, int weekday);
    /// False when `time` is none, such as "09:30" or "9:30".
    Q_INVOKABLE bool setTime(int index, const QString& time);
    Q_INVOKABLE void addDisplay(const QString& text);
    Q_INVOKABLE void addFocus(const QString& name);
    Q_INVOKABLE void removeTrigger(int index);
    /// The names there are to choose from.
    Q_INVOKABLE QStringList displayNames() const;
    Q_INVOKABLE QStringList focusModes() const;
    /// Short names of the weekdays in the order of the user's week, with `day` and `name`.
    Q_INVOKABLE QVariantList weekdays() const;

    // --- Shortcut ---

    /// Takes the pressed keys as the shortcut. False for keys that make none: a modifier alone, or
    /// a letter without one.
    Q_INVOKABLE bool setShortcut(int key, int modifiers);
    Q_INVOKABLE void clearShortcut();

    Q_INVOKABLE void copy(const QString& text);

  Q_SIGNALS:
    void workspaceChanged();
    void changed();
    void shortcutChanged();

  private:
    /// The workspace as it is stored; nothing while none is edited.
    const Workspace* stored() const;
    void update();
    void change(const std::function<void(Workspace&)>& edit);
    void addItem(const Workspace::Item& item);
    void addTrigger(const Workspace::Trigger& trigger);
    void changeSchedule(int index, const std::function<void(Workspace::Schedule&)>& edit);

    AppModel& model_;
    std::optional<Uuid> id_;
    RowList items_;
    RowList triggers_;
};

} // namespace vellory
