// SPDX-License-Identifier: Apache-2.0
#include "shell/search/FoundApps.h"

#include <QVariantMap>

#include "shell/grid/TileItems.h"

namespace vellory {

QVariantList foundApps(const AppModel& model, const QString& query,
                       const std::set<BundleID>& taken) {
    constexpr qsizetype most = 30;
    const TileItems tiles(model, model.board());
    QVariantList found;
    for (const BundleID& app : model.search(query.toStdString())) {
        if (found.size() == most) {
            break;
        }
        const TileItem tile = tiles.of(Tile(app));
        found.append(QVariantMap{{"app", QString::fromStdString(app)},
                                 {"name", tile.title},
                                 {"icon", tile.icons.value(0)},
                                 {"added", taken.contains(app)}});
    }
    return found;
}

} // namespace vellory
