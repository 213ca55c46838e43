// SPDX-License-Identifier: Apache-2.0
#include "shell/grid/SuggestionsViewModel.h"

#include <algorithm>
#include <optional>

#include <QLocale>
#include <QTime>
#include <QVariantMap>

#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "shell/LauncherViewModel.h"
#include "shell/images/IconProvider.h"
#include "shell/search/ShownText.h"

namespace vellory {

namespace {

/// The app of a tile "app:<identifier>"; nothing for a folder.
std::optional<BundleID> appOf(const QString& tileId) {
    constexpr QLatin1String prefix("app:");
    return tileId.startsWith(prefix) ? std::optional(tileId.mid(prefix.size()).toStdString())
                                     : std::nullopt;
}

} // namespace

SuggestionsViewModel::SuggestionsViewModel(AppModel& model, LauncherState& launcher,
                                           SuggestionsState& state, const LauncherViewModel& tiles,
                                           QObject* parent)
    : QObject(parent), model_(model), launcher_(launcher), state_(state), tiles_(tiles) {
    connect(&state_, &SuggestionsState::rowChanged, this, &SuggestionsViewModel::updateRow);
    connect(&model_, &AppModel::runningChanged, this, &SuggestionsViewModel::updateRow);
    connect(&model_, &AppModel::badgesChanged, this, &SuggestionsViewModel::updateRow);
    connect(&state_, &SuggestionsState::highlightChanged, this,
            &SuggestionsViewModel::highlightChanged);
    connect(&state_, &SuggestionsState::offeredChanged, this,
            &SuggestionsViewModel::offeredChanged);
    connect(&state_, &SuggestionsState::opensAtTimeChanged, this,
            &SuggestionsViewModel::opensAtTimeChanged);
    connect(&launcher_.search(), &SearchState::resultsChanged, this,
            &SuggestionsViewModel::documentsChanged);
    connect(&launcher_.search(), &SearchState::highlightChanged, this,
            &SuggestionsViewModel::documentsChanged);
    connect(&model_.learned(), &UsageCenter::recordsChanged, this,
            &SuggestionsViewModel::documentsChanged);
    updateRow();
}

void SuggestionsViewModel::updateRow() {
    std::vector<Tile> tiles;
    for (const BundleID& app : state_.row()) {
        tiles.emplace_back(app);
    }
    row_.setItems(tiles_.items(tiles));
    Q_EMIT rowChanged();
}

QString SuggestionsViewModel::heading() const {
    const std::string_view text = state_.heading();
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QStringList SuggestionsViewModel::offerIcons() const {
    QStringList icons;
    if (state_.offered()) {
        for (const BundleID& app : state_.offered()->apps) {
            const auto& custom = model_.board().icons;
            const auto icon = custom.find(app);
            icons.append(
                IconProvider::appSource(app, icon == custom.end() ? std::string() : icon->second));
        }
    }
    return icons;
}

QString SuggestionsViewModel::offerNames() const {
    QStringList names;
    if (state_.offered()) {
        for (const BundleID& app : state_.offered()->apps) {
            names.append(QString::fromStdString(model_.name(app)));
        }
    }
    return QLocale().createSeparatedList(names);
}

QString SuggestionsViewModel::offerTime() const {
    if (!state_.offered()) {
        return {};
    }
    return QTime(state_.offered()->hour(), state_.offered()->minute % 60).toString("HH:mm");
}

QString SuggestionsViewModel::offerSchedule() const {
    if (!state_.offered()) {
        return {};
    }
    const auto& habit = *state_.offered();
    return QString::fromStdString(
        Workspace::Trigger::schedule(habit.weekdays, habit.hour(), habit.minute % 60).title());
}

QString SuggestionsViewModel::documentsTile() const {
    const SearchState& search = launcher_.search();
    const BundleID* app = search.highlight() ? search.results().app(*search.highlight()) : nullptr;
    return app == nullptr ? QString() : QString::fromStdString(Tile(*app).id());
}

QString SuggestionsViewModel::documentsApp() const {
    const auto app = appOf(documentsTile());
    return app ? QString::fromStdString(model_.name(*app)) : QString();
}

void SuggestionsViewModel::activate(const QString& tileId, bool newWindow) {
    if (const auto app = appOf(tileId)) {
        state_.open(*app, newWindow);
    }
}

bool SuggestionsViewModel::handleKey(int key, int modifiers, const QString& text) {
    return state_.handleKey({static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers), text});
}

QVariantList SuggestionsViewModel::recentDocuments(const QString& tileId) const {
    QVariantList out;
    const auto app = appOf(tileId);
    for (const auto& file :
         app ? model_.learned().recentDocuments(*app) : std::vector<std::filesystem::path>{}) {
        out.append(
            QVariantMap{{"name", QString::fromStdString(file.filename().string())},
                        {"folder", shortPath(QString::fromStdString(file.parent_path().string()))},
                        {"path", QString::fromStdString(file.string())}});
    }
    return out;
}

void SuggestionsViewModel::openDocument(const QString& tileId, const QString& path) {
    if (const auto app = appOf(tileId)) {
        state_.openDocument(*app, path.toStdString());
    }
}

void SuggestionsViewModel::exclude(const QString& tileId) {
    if (const auto app = appOf(tileId)) {
        model_.learned().smartList().exclude(*app);
    }
}

} // namespace vellory
