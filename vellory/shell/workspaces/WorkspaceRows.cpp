// SPDX-License-Identifier: Apache-2.0
#include "shell/workspaces/WorkspaceRows.h"

#include <map>
#include <set>

#include <QUrl>

#include "shell/grid/TileItems.h"
#include "shell/search/ShownText.h"

namespace vellory {

namespace {

/// By its look: asking the disk could wait for a server.
bool looksLikeFile(const QString& name) {
    return name.lastIndexOf('.') > 0;
}

QVariantMap appRow(const AppModel& model, const BundleID& id) {
    const TileItem tile = TileItems(model, model.board()).of(Tile(id));
    const bool isInstalled = model.app(id) != nullptr;
    return {{"title", isInstalled ? tile.title : QString::fromStdString(model.displayName(id))},
            {"detail", isInstalled ? QString() : QObject::tr("Not installed")},
            {"icon", tile.icons.value(0)},
            {"symbol", QString()}};
}

QVariantMap fileRow(const std::string& path) {
    const QString text = oneLine(path);
    const QString name = text.section('/', -1, -1, QString::SectionSkipEmpty);
    return {{"title", name.isEmpty() ? text : name},
            {"detail", shortPath(text)},
            {"icon", QString()},
            {"symbol", looksLikeFile(name) ? "doc" : "folder"}};
}

QVariantMap linkRow(const std::string& link) {
    const QString text = oneLine(link);
    const QString host = QUrl(text).host();
    return {{"title", host.isEmpty() ? text : host},
            {"detail", text},
            {"icon", QString()},
            {"symbol", text.startsWith("mailto:") ? "envelope" : "globe"}};
}

QString summary(const Workspace& workspace) {
    const auto apps = workspace.appIDs().size();
    const auto others = workspace.items.size() - apps;
    QStringList parts;
    if (apps > 0) {
        parts.append(apps == 1 ? QObject::tr("1 app") : QObject::tr("%1 apps").arg(apps));
    }
    if (others > 0) {
        parts.append(others == 1 ? QObject::tr("1 file or link")
                                 : QObject::tr("%1 files and links").arg(others));
    }
    for (const Workspace::Trigger& trigger : workspace.triggers) {
        parts.append(oneLine(trigger.title()));
    }
    return parts.isEmpty() ? QObject::tr("Empty") : parts.join(" · ");
}

} // namespace

QList<QVariantMap> workspaceRows(AppModel& model) {
    QList<QVariantMap> rows;
    const auto& active = model.workspaces().active();
    std::set<Uuid> seen;
    for (const Workspace& workspace : model.workspaces().all()) {
        if (!seen.insert(workspace.id).second) {
            continue; // nobody could reach it
        }
        const WorkspaceShortcuts& shortcuts = model.workspaceShortcuts();
        rows.append({{"key", QString::fromStdString(workspace.id.string())},
                     {"name", oneLine(workspace.name)},
                     {"symbol", QString::fromStdString(workspace.symbol)},
                     {"shortcut", shortcuts.isRefused(workspace.id)
                                      ? QString()
                                      : QString::fromStdString(shortcuts.shortcut(workspace.id))},
                     {"active", active == workspace.id},
                     {"summary", summary(workspace)}});
    }
    return rows;
}

QList<QVariantMap> itemRows(const AppModel& model, const Workspace& workspace) {
    QList<QVariantMap> rows;
    std::map<QString, int> seen; // an item may be listed twice
    for (const Workspace::Item& item : workspace.items) {
        QVariantMap row;
        QString identity;
        if (const BundleID* app = item.bundleID()) {
            row = appRow(model, *app);
            identity = "app:" + QString::fromStdString(*app);
        } else if (const std::string* path = item.path()) {
            row = fileRow(*path);
            identity = "file:" + QString::fromStdString(*path);
        } else {
            row = linkRow(*item.link());
            identity = "link:" + QString::fromStdString(*item.link());
        }
        row["key"] = QString::number(seen[identity]++) + ' ' + identity;
        rows.append(row);
    }
    return rows;
}

QList<QVariantMap> triggerRows(const Workspace& workspace) {
    QList<QVariantMap> rows;
    std::map<QString, int> seen;
    int schedules = 0;
    for (const Workspace::Trigger& trigger : workspace.triggers) {
        QVariantMap row{{"title", oneLine(trigger.title())},
                        {"link", QString()},
                        {"weekdays", QVariantList()},
                        {"time", QString()}};
        QString identity;
        if (const auto* schedule = std::get_if<Workspace::Schedule>(&trigger.content)) {
            QVariantList days;
            for (const int day : schedule->weekdays) {
                days.append(day);
            }
            row["kind"] = "schedule";
            row["symbol"] = "calendar.badge.clock";
            row["weekdays"] = days;
            row["time"] = QString("%1:%2")
                              .arg(schedule->hour, 2, 10, QChar('0'))
                              .arg(schedule->minute, 2, 10, QChar('0'));
            identity = QString::number(schedules++);
        } else if (const auto* display =
                       std::get_if<Workspace::Trigger::Display>(&trigger.content)) {
            row["kind"] = "display";
            row["symbol"] = "display";
            identity = QString::fromStdString(display->text);
        } else {
            const std::string& focus = std::get<Workspace::Trigger::Focus>(trigger.content).name;
            row["kind"] = "focus";
            row["symbol"] = "moon";
            row["link"] = QString::fromStdString(Link::command("focus", focus));
            identity = QString::fromStdString(focus);
        }
        identity = row["kind"].toString() + ':' + identity;
        row["key"] = QString::number(seen[identity]++) + ' ' + identity;
        rows.append(row);
    }
    return rows;
}

} // namespace vellory
