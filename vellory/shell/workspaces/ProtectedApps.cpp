// SPDX-License-Identifier: Apache-2.0
#include "shell/workspaces/ProtectedApps.h"

#include "shell/images/IconProvider.h"
#include "shell/search/FoundApps.h"

namespace vellory {

ProtectedApps::ProtectedApps(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), rows_({"name", "icon"}) {
    connect(&model_.prefs(), &Prefs::changed, this, [this](const std::string& key) {
        if (key == "protectedApps") {
            update();
        }
    });
    connect(&model_, &AppModel::appsChanged, this, &ProtectedApps::update);
    update();
}

void ProtectedApps::update() {
    QList<QVariantMap> rows;
    for (const BundleID& app : model_.prefs().protectedApps()) {
        rows.append({{"key", QString::fromStdString(app)},
                     {"name", QString::fromStdString(model_.displayName(app))},
                     {"icon", IconProvider::appSource(app, {})}});
    }
    rows_.setRows(rows);
}

QVariantList ProtectedApps::findApps(const QString& query) const {
    return foundApps(model_, query, model_.prefs().protectedApps());
}

void ProtectedApps::addApp(const QString& app) {
    auto apps = model_.prefs().protectedApps();
    apps.insert(app.toStdString());
    model_.prefs().setProtectedApps(apps);
}

void ProtectedApps::removeApp(const QString& app) {
    auto apps = model_.prefs().protectedApps();
    apps.erase(app.toStdString());
    model_.prefs().setProtectedApps(apps);
}

} // namespace vellory
