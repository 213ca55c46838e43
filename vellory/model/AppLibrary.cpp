// SPDX-License-Identifier: Apache-2.0
#include "model/AppLibrary.h"

#include <utility>

namespace vellory {

AppLibrary::AppLibrary(const Ports& ports, const Prefs& prefs, const BoardDocument& document,
                       const std::string& locale, QObject* parent)
    : QObject(parent), catalogue_(ports.catalogue), prefs_(prefs), document_(document),
      collator_(locale),
      rescanner_(ports.folderWatcher, ports.scheduler, [this] { Q_EMIT scanDue(); }) {
    connect(&document_, &BoardDocument::changed, this, &AppLibrary::orderByName);
}

bool AppLibrary::scan() {
    std::map<BundleID, InstalledApp> apps;
    std::vector<BundleID> order;
    for (InstalledApp& found : catalogue_.scan(catalogue_.roots(prefs_.extraFolders()))) {
        if (const auto [place, isNew] = apps.try_emplace(found.bundleID, found); isNew) {
            order.push_back(std::move(found.bundleID));
        }
    }
    // At once: what comes from here on is told.
    rescanner_.watch(catalogue_.scannedFolders());
    const bool hasOthers = apps != apps_;
    const bool isReordered = order != order_;
    apps_ = std::move(apps);
    order_ = std::move(order);
    buildKeywords();
    if (hasOthers || isReordered) {
        Q_EMIT changed();
    }
    return hasOthers;
}

void AppLibrary::buildKeywords() {
    keywords_.clear();
    for (const auto& [id, app] : apps_) {
        const AppInfo info = catalogue_.info(app);
        keywords_.emplace_hint(keywords_.end(), id,
                               AppKeywords::keywords(app.name, info.dictionary, info.texts));
    }
    // Apps are found in the order of their own names.
    purposes_.setApps(order_, keywords_);
    orderedRenames_.clear();
    orderByName();
}

void AppLibrary::orderByName() {
    const auto& renames = document_.board().renames;
    if (renames != orderedRenames_) {
        orderedRenames_ = renames;
        std::vector<BundleID> byName = order_;
        Text::sortByName(byName, collator_, [this](const BundleID& id) { return name(id); });
        purposes_.setOrder(byName);
    }
}

const InstalledApp* AppLibrary::app(const BundleID& id) const {
    const auto found = apps_.find(id);
    return found == apps_.end() ? nullptr : &found->second;
}

std::vector<InstalledApp> AppLibrary::installedApps() const {
    std::vector<InstalledApp> installed;
    installed.reserve(order_.size());
    for (const BundleID& id : order_) {
        installed.push_back(apps_.at(id));
    }
    return installed;
}

std::optional<InstalledApp> AppLibrary::locate(const BundleID& id) const {
    const InstalledApp* installed = app(id);
    return installed == nullptr ? catalogue_.find(id) : std::optional(*installed);
}

std::vector<AppAction> AppLibrary::actions(const BundleID& id) const {
    const InstalledApp* installed = app(id);
    return installed == nullptr ? std::vector<AppAction>{} : catalogue_.actions(*installed);
}

std::string AppLibrary::name(const BundleID& id) const {
    const auto& renames = document_.board().renames;
    if (const auto given = renames.find(id); given != renames.end()) {
        return given->second;
    }
    const InstalledApp* installed = app(id);
    return installed == nullptr ? id : installed->name;
}

std::string AppLibrary::displayName(const BundleID& id) const {
    if (app(id) != nullptr) {
        return name(id);
    }
    const auto elsewhere = locate(id);
    return elsewhere ? elsewhere->name : id;
}

std::vector<BundleID> AppLibrary::purposeSearch(const std::string& query,
                                                const std::set<BundleID>& except) const {
    return purposes_.find(query, except);
}

std::vector<BundleID> AppLibrary::bringInStep(Board& board) const {
    return order_.empty() ? std::vector<BundleID>{} : board.reconcile(order_);
}

} // namespace vellory
