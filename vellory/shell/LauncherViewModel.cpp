// SPDX-License-Identifier: Apache-2.0
#include "shell/LauncherViewModel.h"

#include <algorithm>

#include "Search/EmojiSearch.h"
#include "model/TileMenu.h"
#include "shell/grid/TileItems.h"

namespace vellory {

namespace {
constexpr double eighthsPerNotch = 120.0; // what Qt calls the angle of one notch

/// Held with these, a drag over the background adds to the selection.
bool isAdding(int modifiers) {
    return (modifiers & (Qt::ShiftModifier | Qt::ControlModifier)) != 0;
}
} // namespace

LauncherViewModel::LauncherViewModel(AppModel& model, LauncherState& state,
                                     std::shared_ptr<IconSources> iconSources, QObject* parent)
    : QObject(parent), model_(model), state_(state), iconSources_(std::move(iconSources)),
      search_(model, state), restriction_(model, state), drag_(state), history_(model) {
    connect(&model_, &AppModel::visibleTilesChanged, this, &LauncherViewModel::updateIconSources);
    connect(&model_, &AppModel::visibleTilesChanged, this, &LauncherViewModel::scheduleUpdate);
    // At once: whoever shows a new app asks for its icon in the same turn.
    connect(&model_, &AppModel::appsChanged, this, &LauncherViewModel::updateIconSources);
    connect(&model_, &AppModel::runningChanged, this, &LauncherViewModel::scheduleUpdate);
    connect(&model_, &AppModel::badgesChanged, this, &LauncherViewModel::scheduleUpdate);
    connect(&model_.notices(), &Notices::posted, &notices_, &NoticeList::post);
    connect(&model_, &AppModel::welcomeRequested, this, [this] {
        welcoming_ = true;
        Q_EMIT welcomingChanged();
    });
    connect(&model_.prefs(), &Prefs::changed, this, &LauncherViewModel::prefsChanged);

    connect(&state_, &LauncherState::queryChanged, this, &LauncherViewModel::queryChanged);
    connect(&state_, &LauncherState::positionChanged, this, &LauncherViewModel::positionChanged);
    connect(&state_, &LauncherState::displayModeChanged, this,
            &LauncherViewModel::displayModeChanged);
    connect(&model_, &AppModel::visibleTilesChanged, this, &LauncherViewModel::listRowsChanged);
    connect(&state_, &LauncherState::columnsChanged, this, &LauncherViewModel::listRowsChanged);
    connect(&state_, &LauncherState::pageCountChanged, this, &LauncherViewModel::pageCountChanged);
    connect(&state_, &LauncherState::columnsChanged, this, &LauncherViewModel::gridChanged);
    connect(&state_, &LauncherState::rowsChanged, this, &LauncherViewModel::gridChanged);
    connect(&state_, &LauncherState::highlightChanged, this, &LauncherViewModel::highlightChanged);
    connect(&state_, &LauncherState::openFolderChanged, this, [this] {
        // The panel needs its tiles in the same turn in which it opens.
        updateLists();
        Q_EMIT openFolderChanged();
    });
    connect(&state_, &LauncherState::folderPageChanged, this,
            &LauncherViewModel::folderPageChanged);
    connect(&state_, &LauncherState::hintsChanged, this, &LauncherViewModel::hintsChanged);
    connect(&state_, &LauncherState::presentedChanged, this, &LauncherViewModel::presentedChanged);
    connect(&state_, &LauncherState::rightToLeftChanged, this, &LauncherViewModel::mirroredChanged);
    connect(&state_, &LauncherState::rippleOriginChanged, this,
            &LauncherViewModel::rippleOriginChanged);
    connect(&state_, &LauncherState::selectedChanged, this, &LauncherViewModel::scheduleUpdate);
    connect(&state_, &LauncherState::renamingChanged, this, &LauncherViewModel::renamingChanged);
    connect(&state_, &LauncherState::panelChanged, this, [this] {
        if (state_.panel() == LauncherState::Panel::history) {
            history_.load();
        }
        Q_EMIT panelChanged();
    });
    connect(&state_, &LauncherState::menuRequested, this, &LauncherViewModel::menuRequested);
    connect(&state_, &LauncherState::presentedChanged, &menu_, &MenuViewModel::close);
    // Others make room under the pointer in the same frame.
    connect(&drag_, &TileDragViewModel::changed, this, &LauncherViewModel::updateLists);
    connect(&model_, &AppModel::visibleTilesChanged, this, &LauncherViewModel::hiddenAppsChanged);
    updateIconSources();
    updateLists();
}

QString LauncherViewModel::openFolder() const {
    return state_.openFolder() ? "folder:" + QString::fromStdString(state_.openFolder()->string())
                               : QString();
}

QString LauncherViewModel::folderTitle() const {
    if (!state_.openFolder()) {
        return {};
    }
    const Folder* folder = model_.board().folder(*state_.openFolder());
    return folder == nullptr ? QString() : QString::fromStdString(folder->title);
}

int LauncherViewModel::iconSize() const {
    return state_.compact() ? model_.prefs().compactIconSize() : model_.prefs().iconSize();
}

void LauncherViewModel::setDark(bool dark) {
    if (dark != dark_) {
        dark_ = dark;
        Q_EMIT darkChanged();
    }
}

void LauncherViewModel::setBackdrop(const QString& source) {
    if (source != backdrop_) {
        backdrop_ = source;
        Q_EMIT backdropChanged();
    }
}

void LauncherViewModel::activate(const QString& tileId, bool newWindow) {
    const std::string id = tileId.toStdString();
    const auto& tiles = state_.currentItems();
    const auto tile =
        std::ranges::find_if(tiles, [&](const Tile& candidate) { return candidate.id() == id; });
    if (tile == tiles.end()) {
        return;
    }
    const BundleID* app = tile->app();
    if (newWindow && app != nullptr) {
        state_.activateNew(BundleID(*app));
        return;
    }
    state_.activate(*tile);
}

QStringList LauncherViewModel::hiddenApps() const {
    QStringList apps;
    for (const BundleID& id : model_.installedOrder()) {
        if (model_.board().hidden.contains(id)) {
            apps.append(QString::fromStdString(id));
        }
    }
    return apps;
}

QString LauncherViewModel::appName(const QString& app) const {
    return QString::fromStdString(model_.name(app.toStdString()));
}

QString LauncherViewModel::appIcon(const QString& app) const {
    return TileItems(model_, model_.board()).of(Tile(app.toStdString())).icons.value(0);
}

void LauncherViewModel::toggleSelected(const QString& tileId) {
    const std::string id = tileId.toStdString();
    if (id.starts_with(Tile::appPrefix)) {
        state_.toggleSelected(id.substr(Tile::appPrefix.size()));
    }
}

void LauncherViewModel::beginBand(int modifiers) {
    state_.beginBand(isAdding(modifiers) ? Selection::Before::kept : Selection::Before::dropped);
}

void LauncherViewModel::selectInBand(const QStringList& tileIds) {
    std::vector<BundleID> covered;
    for (const QString& tileId : tileIds) {
        const std::string id = tileId.toStdString();
        if (id.starts_with(Tile::appPrefix)) {
            covered.push_back(id.substr(Tile::appPrefix.size()));
        }
    }
    state_.selectInBand(covered);
}

void LauncherViewModel::showMenu(const QString& tileId) {
    const TileMenu menus(model_, state_);
    const std::string id = tileId.toStdString();
    if (tileId == openFolder() && state_.openFolder()) {
        if (const Folder* folder = model_.board().folder(*state_.openFolder())) {
            menu_.show(menus.forTile(Tile(*folder)));
        }
        return;
    }
    const auto& items = state_.currentItems();
    const auto item = std::ranges::find(items, id, &Tile::id);
    if (item != items.end()) {
        menu_.show(menus.forTile(*item));
    } else if (const BundleID app =
                   id.starts_with(Tile::appPrefix) ? id.substr(Tile::appPrefix.size()) : BundleID();
               model_.app(app) != nullptr) {
        menu_.show(menus.forTile(Tile(app))); // one of those above the grid
    } else if (tileId.isEmpty() && !state_.searching()) {
        menu_.show(menus.forBackground());
    }
}

void LauncherViewModel::beginRenaming(const QString& tileId) {
    state_.beginRenaming(tileId.toStdString());
}

void LauncherViewModel::setEmoji(const QString& emoji) {
    if (state_.emojiFolder()) {
        model_.setFolderEmoji(*state_.emojiFolder(),
                              emoji.isEmpty() ? std::nullopt : std::optional(emoji.toStdString()));
    }
    closePanel();
}

QVariantList LauncherViewModel::findEmoji(const QString& query) const {
    constexpr std::size_t most = 120;
    QVariantList found;
    for (const EmojiSearch::Hit& hit : EmojiSearch::search((":" + query).toStdString(), most)) {
        found.append(QVariantMap{{"emoji", QString::fromStdString(hit.emoji)},
                                 {"name", QString::fromStdString(hit.name)}});
    }
    return found;
}

void LauncherViewModel::closeFolder() {
    state_.setOpenFolder(std::nullopt);
}

void LauncherViewModel::clearQuery() {
    state_.setQuery({});
}

bool LauncherViewModel::dragsPages(const QPointF& delta, int modifiers) const {
    return !isAdding(modifiers) && state_.view().pageDrag().beginsWith(delta.x(), delta.y());
}

void LauncherViewModel::fitGrid(qreal width, qreal height) {
    state_.setPageWidth(width);
    state_.fitRows(height);
}

bool LauncherViewModel::wheel(const QPointF& pixels, const QPointF& angle, int phase) {
    auto meaning = Scroll::Phase::none;
    switch (phase) {
    case Qt::ScrollBegin:
        meaning = Scroll::Phase::begin;
        break;
    case Qt::ScrollUpdate:
        meaning = Scroll::Phase::update;
        break;
    case Qt::ScrollEnd:
        meaning = Scroll::Phase::end;
        break;
    case Qt::ScrollMomentum:
        meaning = Scroll::Phase::momentum;
        break;
    default:
        break;
    }
    const bool precise = !pixels.isNull();
    const QPointF amount = precise ? pixels : angle / eighthsPerNotch;
    return state_.handleScroll({amount.x(), amount.y(), precise, meaning});
}

void LauncherViewModel::startWithFolders() {
    model_.autoFolders();
    endWelcome();
}

void LauncherViewModel::startAlphabetically() {
    model_.layOutAlphabetically();
    endWelcome();
}

void LauncherViewModel::endWelcome() {
    if (welcoming_) {
        welcoming_ = false;
        model_.prefs().setHasSeenWelcome(true);
        Q_EMIT welcomingChanged();
    }
}

QString LauncherViewModel::hint(int index) const {
    return QString::fromStdString(Hints::label(index));
}

std::vector<TileItem> LauncherViewModel::items(const std::vector<Tile>& tiles) const {
    std::vector<TileItem> out = TileItems(model_, model_.board()).of(tiles);
    if (!state_.selected().empty()) {
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            const BundleID* app = tiles[i].app();
            out[i].isSelected = app != nullptr && state_.selected().contains(*app);
        }
    }
    return out;
}

void LauncherViewModel::updateIconSources() {
    IconSources::Table table;
    for (const auto& [id, app] : model_.apps()) {
        const auto icon = model_.board().icons.find(id);
        table.emplace(id,
                      IconSources::Source{app, icon == model_.board().icons.end() ? std::string()
                                                                                  : icon->second});
    }
    iconSources_->replace(std::move(table));
}

void LauncherViewModel::scheduleUpdate() {
    // Several changes in one turn of the event loop become one update of the views.
    if (!updateScheduled_) {
        updateScheduled_ = true;
        QMetaObject::invokeMethod(this, &LauncherViewModel::updateLists, Qt::QueuedConnection);
    }
}

void LauncherViewModel::updateLists() {
    updateScheduled_ = false;
    const TileDrag& drag = state_.drag();
    const bool arrangesGrid = drag.isActive() && !drag.isInFolder();
    tiles_.setItems(items(arrangesGrid ? drag.arranged() : model_.visibleTiles()));
    if (state_.openFolder()) {
        if (const auto folder = model_.visibleFolder(*state_.openFolder())) {
            std::vector<Tile> apps;
            for (const BundleID& id : folder->apps) {
                apps.push_back(Tile(id));
            }
            folderTiles_.setItems(items(drag.isInFolder() ? drag.arranged() : apps));
        }
    }
    Q_EMIT folderTitleChanged();
}

} // namespace vellory
