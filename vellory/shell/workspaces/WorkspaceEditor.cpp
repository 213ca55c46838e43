// SPDX-License-Identifier: Apache-2.0
#include "shell/workspaces/WorkspaceEditor.h"

#include <algorithm>
#include <utility>

#include <QClipboard>
#include <QGuiApplication>
#include <QKeySequence>
#include <QLocale>
#include <QRegularExpression>

#include "Workspaces/WorkspaceTexts.h"
#include "shell/images/Symbols.h"
#include "shell/search/FoundApps.h"
#include "shell/search/ShownText.h"
#include "shell/workspaces/WorkspaceRows.h"

namespace vellory {

namespace {

template <class List>
bool hasIndex(const List& list, int index) {
    return index >= 0 && std::cmp_less(index, list.size());
}

bool isModifier(int key) {
    return key == Qt::Key_Control || key == Qt::Key_Shift || key == Qt::Key_Alt ||
           key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_Super_L ||
           key == Qt::Key_Super_R || key == Qt::Key_unknown || key == 0;
}

} // namespace

WorkspaceEditor::WorkspaceEditor(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), items_(itemFields), triggers_(triggerFields) {
    connect(&model_.workspaces(), &WorkspaceList::changed, this, &WorkspaceEditor::update);
    connect(&model_, &AppModel::appsChanged, this, &WorkspaceEditor::update);
    connect(&model_.workspaceShortcuts(), &WorkspaceShortcuts::changed, this,
            &WorkspaceEditor::shortcutChanged);
}

void WorkspaceEditor::open(const QString& id) {
    const auto next = Uuid::parse(id.toStdString());
    if (next == id_) {
        return;
    }
    id_ = next;
    update();
    Q_EMIT workspaceChanged();
    Q_EMIT shortcutChanged();
}

void WorkspaceEditor::update() {
    const Workspace* workspace = stored();
    items_.setRows(workspace == nullptr ? QList<QVariantMap>() : itemRows(model_, *workspace));
    triggers_.setRows(workspace == nullptr ? QList<QVariantMap>() : triggerRows(*workspace));
    if (id_ && workspace == nullptr) {
        id_.reset(); // deleted meanwhile
        Q_EMIT workspaceChanged();
    }
    Q_EMIT changed();
}

const Workspace* WorkspaceEditor::stored() const {
    return id_ ? model_.workspaces().find(*id_) : nullptr;
}

void WorkspaceEditor::change(const std::function<void(Workspace&)>& edit) {
    if (const Workspace* before = stored()) {
        Workspace after = *before;
        edit(after);
        if (after != *before) {
            model_.updateWorkspace(after);
        }
    }
}

QString WorkspaceEditor::workspace() const {
    return id_ ? QString::fromStdString(id_->string()) : QString();
}

QString WorkspaceEditor::name() const {
    const Workspace* workspace = stored();
    return workspace == nullptr ? QString() : QString::fromStdString(workspace->name).simplified();
}

void WorkspaceEditor::setName(const QString& name) {
    const QString line = name.simplified();
    // A name that was only shown in one line stays as it is stored.
    if (!line.isEmpty() && line != this->name()) {
        change([&](Workspace& workspace) { workspace.name = line.toStdString(); });
    }
}

QString WorkspaceEditor::symbol() const {
    const Workspace* workspace = stored();
    return workspace == nullptr ? QString() : QString::fromStdString(workspace->symbol);
}

void WorkspaceEditor::setSymbol(const QString& symbol) {
    change([&](Workspace& workspace) { workspace.symbol = symbol.toStdString(); });
}

QVariantList WorkspaceEditor::findSymbols(const QString& query) const {
    QVariantList groups;
    for (const Symbols::Group& group : Symbols::groups()) {
        QStringList names;
        for (const Symbols::Symbol& symbol : group.symbols) {
            if (Symbols::matches(symbol, query)) {
                names.append(toQString(symbol.name));
            }
        }
        if (!names.isEmpty()) {
            groups.append(QVariantMap{{"title", toQString(group.title)}, {"symbols", names}});
        }
    }
    return groups;
}

QStringList WorkspaceEditor::othersTitles() const {
    QStringList titles;
    for (const Workspace::Others each : Workspace::allOthers) {
        titles.append(toQString(title(each)));
    }
    return titles;
}

int WorkspaceEditor::others() const {
    const Workspace* workspace = stored();
    return workspace == nullptr
               ? 0
               : static_cast<int>(std::ranges::find(Workspace::allOthers, workspace->others) -
                                  Workspace::allOthers.begin());
}

void WorkspaceEditor::setOthers(int index) {
    if (hasIndex(Workspace::allOthers, index)) {
        change([&](Workspace& workspace) {
            workspace.others = Workspace::allOthers[static_cast<std::size_t>(index)];
        });
    }
}

bool WorkspaceEditor::focusGrid() const {
    const Workspace* workspace = stored();
    return workspace != nullptr && workspace->focusGrid;
}

void WorkspaceEditor::setFocusGrid(bool on) {
    change([&](Workspace& workspace) { workspace.focusGrid = on; });
}

QString WorkspaceEditor::focusGridText() const {
    return toQString(WorkspaceTexts::focusGrid);
}

QString WorkspaceEditor::link() const {
    const Workspace* workspace = stored();
    return workspace == nullptr
               ? QString()
               : QString::fromStdString(Link::command("workspace", workspace->name));
}

// --- What it opens ---

void WorkspaceEditor::addItem(const Workspace::Item& item) {
    change([&](Workspace& workspace) {
        if (std::ranges::find(workspace.items, item) == workspace.items.end()) {
            workspace.items.push_back(item);
        }
    });
}

void WorkspaceEditor::addApp(const QString& app) {
    addItem(Workspace::Item::app(app.toStdString()));
}

void WorkspaceEditor::addFiles(const QList<QUrl>& files) {
    for (const QUrl& file : files) {
        if (file.isLocalFile()) {
            addItem(Workspace::Item::file(file.toLocalFile().toStdString()));
        }
    }
}

bool WorkspaceEditor::addLink(const QString& text) {
    const QString typed = text.trimmed();
    auto link = Link::parseTyped(typed.toStdString());
    if (!link && typed.contains('.') && !typed.contains("://")) {
        link = Link::parseTyped("https://" + typed.toStdString());
    }
    if (!link) {
        return false;
    }
    addItem(Workspace::Item::url(link->text()));
    return true;
}

void WorkspaceEditor::removeItem(int index) {
    change([&](Workspace& workspace) {
        if (hasIndex(workspace.items, index)) {
            workspace.items.erase(workspace.items.begin() + index);
        }
    });
}

void WorkspaceEditor::moveItem(int from, int to) {
    change([&](Workspace& workspace) {
        if (hasIndex(workspace.items, from) && hasIndex(workspace.items, to)) {
            const Workspace::Item item = workspace.items[static_cast<std::size_t>(from)];
            workspace.items.erase(workspace.items.begin() + from);
            workspace.items.insert(workspace.items.begin() + to, item);
        }
    });
}

QVariantList WorkspaceEditor::findApps(const QString& query) const {
    const Workspace* workspace = stored();
    const auto added = workspace == nullptr ? std::vector<BundleID>() : workspace->appIDs();
    return foundApps(model_, query, {added.begin(), added.end()});
}

// --- Windows ---

int WorkspaceEditor::windowCount() const {
    const Workspace* workspace = stored();
    return workspace == nullptr ? 0 : static_cast<int>(workspace->windows.size());
}

void WorkspaceEditor::captureWindows() {
    const Workspace* workspace = stored();
    if (workspace == nullptr) {
        return;
    }
    auto windows = model_.workspaceCenter().captureWindows(*workspace);
    if (windows.empty()) {
        // What is saved stays.
        model_.notices().post(Notice::hint(tr("None of its apps has a window open").toStdString(),
                                           "macwindow.badge.plus"));
        return;
    }
    change([&](Workspace& changed) { changed.windows = std::move(windows); });
}

void WorkspaceEditor::clearWindows() {
    change([](Workspace& workspace) { workspace.windows.clear(); });
}

// --- What opens it ---

void WorkspaceEditor::addTrigger(const Workspace::Trigger& trigger) {
    change([&](Workspace& workspace) {
        if (std::ranges::find(workspace.triggers, trigger) == workspace.triggers.end()) {
            workspace.triggers.push_back(trigger);
        }
    });
}

void WorkspaceEditor::addSchedule() {
    constexpr int nine = 9;
    addTrigger(Workspace::Trigger::schedule({2, 3, 4, 5, 6}, nine, 0));
}

void WorkspaceEditor::changeSchedule(int index,
                                     const std::function<void(Workspace::Schedule&)>& edit) {
    change([&](Workspace& workspace) {
        if (hasIndex(workspace.triggers, index)) {
            auto& trigger = workspace.triggers[static_cast<std::size_t>(index)];
            if (auto* schedule = std::get_if<Workspace::Schedule>(&trigger.content)) {
                edit(*schedule);
            }
        }
    });
}

void WorkspaceEditor::toggleWeekday(int index, int weekday) {
    changeSchedule(index, [&](Workspace::Schedule& schedule) {
        if (schedule.weekdays.insert(weekday).second) {
            return;
        }
        if (schedule.weekdays.size() > 1) {
            schedule.weekdays.erase(weekday);
        }
    });
}

bool WorkspaceEditor::setTime(int index, const QString& time) {
    static const QRegularExpression pattern(R"(^\s*([01]?\d|2[0-3])\s*[:.]\s*([0-5]\d)\s*$)");
    const QRegularExpressionMatch match = pattern.match(time);
    if (!match.hasMatch()) {
        return false;
    }
    changeSchedule(index, [&](Workspace::Schedule& schedule) {
        schedule.hour = match.captured(1).toInt();
        schedule.minute = match.captured(2).toInt();
    });
    return true;
}

void WorkspaceEditor::addDisplay(const QString& text) {
    if (const QString line = text.simplified(); !line.isEmpty()) {
        addTrigger(Workspace::Trigger::display(line.toStdString()));
    }
}

void WorkspaceEditor::addFocus(const QString& name) {
    if (const QString line = name.simplified(); !line.isEmpty()) {
        addTrigger(Workspace::Trigger::focus(line.toStdString()));
    }
}

void WorkspaceEditor::removeTrigger(int index) {
    change([&](Workspace& workspace) {
        if (hasIndex(workspace.triggers, index)) {
            workspace.triggers.erase(workspace.triggers.begin() + index);
        }
    });
}

QStringList WorkspaceEditor::displayNames() const {
    QStringList names;
    for (const std::string& name : model_.triggers().displayNames()) {
        names.append(QString::fromStdString(name));
    }
    return names;
}

QStringList WorkspaceEditor::focusModes() const {
    QStringList names;
    for (const std::string& name : model_.triggers().focusModes()) {
        names.append(QString::fromStdString(name));
    }
    return names;
}

QVariantList WorkspaceEditor::weekdays() const {
    constexpr int daysInWeek = 7;
    const QLocale locale;
    QVariantList days;
    for (int i = 0; i < daysInWeek; ++i) {
        const int qtDay = (locale.firstDayOfWeek() - 1 + i) % daysInWeek + 1; // 1 is Monday
        days.append(QVariantMap{{"day", qtDay % daysInWeek + 1},
                                {"name", locale.standaloneDayName(qtDay, QLocale::ShortFormat)},
                                {"fullName", locale.standaloneDayName(qtDay)}});
    }
    return days;
}

QString WorkspaceEditor::focusModesText() const {
    return toQString(WorkspaceTexts::focusModes);
}

QString WorkspaceEditor::automationText() const {
    return toQString(WorkspaceTexts::focusByAutomation);
}

// --- Shortcut ---

QString WorkspaceEditor::shortcut() const {
    return id_ ? QString::fromStdString(model_.workspaceShortcuts().shortcut(*id_)) : QString();
}

bool WorkspaceEditor::isShortcutRefused() const {
    return id_ && model_.workspaceShortcuts().isRefused(*id_);
}

bool WorkspaceEditor::setShortcut(int key, int modifiers) {
    constexpr int commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const bool isFunctionKey = key >= Qt::Key_F1 && key <= Qt::Key_F35;
    if (!id_ || isModifier(key) || ((modifiers & commands) == 0 && !isFunctionKey)) {
        return false;
    }
    constexpr int shift = Qt::ShiftModifier;
    const int held = modifiers & (commands | shift);
    const QString keys = QKeySequence(held | key).toString(QKeySequence::PortableText);
    if (keys.isEmpty()) {
        return false;
    }
    model_.workspaceShortcuts().setShortcut(*id_, keys.toStdString());
    return true;
}

void WorkspaceEditor::clearShortcut() {
    if (id_) {
        model_.workspaceShortcuts().setShortcut(*id_, {});
    }
}

void WorkspaceEditor::copy(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    model_.notices().post(Notice::confirmation(tr("Copied").toStdString(), "square.on.square"));
}

} // namespace vellory
