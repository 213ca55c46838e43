// SPDX-License-Identifier: Apache-2.0
#include "shell/settings/LayoutHistory.h"

#include <algorithm>

#include <QDateTime>
#include <QLocale>
#include <QVariantMap>

#include "model/ShownGrid.h"
#include "shell/grid/TileItems.h"

namespace vellory {

namespace {

/// The day in words where it is near, and the time, as the user's language writes them.
QString whenText(Date date, Date now) {
    const auto local = [](Date each) {
        return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(each.secondsSince1970() * 1000));
    };
    const QDateTime at = local(date);
    const qint64 daysAgo = at.date().daysTo(local(now).date());
    const QLocale locale;
    const QString time = locale.toString(at.time(), QLocale::ShortFormat);
    if (daysAgo == 0) {
        return LayoutHistory::tr("Today, %1").arg(time);
    }
    if (daysAgo == 1) {
        return LayoutHistory::tr("Yesterday, %1").arg(time);
    }
    return locale.toString(at.date(), QLocale::ShortFormat) + ", " + time;
}

} // namespace

LayoutHistory::LayoutHistory(AppModel& model, QObject* parent) : QObject(parent), model_(model) {}

void LayoutHistory::load() {
    snapshots_ = model_.snapshots();
    steps_.clear();
    for (const BoardStore::Snapshot& snapshot : snapshots_) {
        // In file names blanks are stored as "_".
        const QString reason = QString::fromStdString(snapshot.reason).replace('_', ' ');
        steps_.append(QVariantMap{{"when", whenText(snapshot.date, model_.clock().now())},
                                  {"reason", reason}});
    }
    current_ = snapshots_.empty() ? -1 : 0;
    Q_EMIT stepsChanged();
    Q_EMIT currentChanged();
    showPreview();
}

void LayoutHistory::setCurrent(int index) {
    const int nearest =
        std::clamp(index, snapshots_.empty() ? -1 : 0, static_cast<int>(snapshots_.size()) - 1);
    if (nearest != current_) {
        current_ = nearest;
        Q_EMIT currentChanged();
        showPreview();
    }
}

void LayoutHistory::showPreview() {
    const auto board = current_ < 0
                           ? std::nullopt
                           : model_.boardIn(snapshots_[static_cast<std::size_t>(current_)]);
    if (!board) {
        preview_.setItems({});
        return;
    }
    const auto shown = ShownGrid::shownTiles(board->tiles, [&](const BundleID& id) {
        return model_.app(id) != nullptr && !board->hidden.contains(id);
    });
    preview_.setItems(TileItems(model_, *board).of(shown));
}

bool LayoutHistory::restore() {
    if (current_ < 0) {
        return false;
    }
    const BoardStore::Snapshot& chosen = snapshots_[static_cast<std::size_t>(current_)];
    if (!model_.boardIn(chosen)) {
        return false;
    }
    model_.restore(chosen);
    return true;
}

} // namespace vellory
