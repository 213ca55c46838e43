// SPDX-License-Identifier: Apache-2.0
// What users do to the launcher, and what keys and the wheel mean to it.
#include "model/LauncherState.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "Support/Text.h"
#include "model/AppModel.h"

namespace vellory {

// --- What users do ---

void LauncherState::back() {
    if (!selected().empty()) {
        setSelected({});
    } else if (openFolder_) {
        setOpenFolder(std::nullopt);
    } else if (searching()) {
        setQuery({});
    } else if (showWindows_) {
        setShowWindows(false);
    } else if (panel_ != Panel::none) {
        setPanel(Panel::none);
    } else {
        requestHide();
    }
}

void LauncherState::activate(const Tile& tile) {
    if (const Folder* folder = tile.folder()) {
        setOpenFolder(folder->id);
        return;
    }
    model_.launch(*tile.app());
    hideAfterLaunch();
}

void LauncherState::copy(const std::string& text) {
    Q_EMIT copyRequested(text);
    hideAfterLaunch();
}

void LauncherState::activateNew(const BundleID& id) {
    model_.launchNew(id);
    hideAfterLaunch();
}

void LauncherState::perform(const BundleID& id, const std::string& action) {
    model_.perform(id, action);
    hideAfterLaunch();
}

void LauncherState::openFile(const BundleID& id, const std::filesystem::path& file) {
    if (model_.openFile(id, file)) {
        hideAfterLaunch();
    }
}

void LauncherState::hideAfterLaunch() {
    if (!keepOpen_) {
        requestHide();
    }
}

// --- Keys ---

bool LauncherState::handleKey(const KeyPress& press) {
    const KeyCommand command = KeyCommand::of(press, rightToLeft());
    if (drag_->isActive()) {
        return handleDragKey(command);
    }
    if (command.kind != KeyCommand::Kind::extend) {
        selection_.endExtending();
    }
    if (hints_.isOn()) {
        handleHintKey(command, press.text.toStdString());
        return true;
    }
    switch (command.kind) {
    case KeyCommand::Kind::none:
        return false;
    case KeyCommand::Kind::back:
        back();
        return true;
    case KeyCommand::Kind::activate:
    case KeyCommand::Kind::activateNew:
        return activateHighlighted(command.kind == KeyCommand::Kind::activateNew);
    case KeyCommand::Kind::select:
        if (const Tile* tile = highlighted(); tile != nullptr && tile->app() != nullptr) {
            toggleSelected(*tile->app());
        }
        return true;
    case KeyCommand::Kind::selectAll:
        // While something is typed the key selects the text.
        if (searching()) {
            return false;
        }
        selectAll();
        return true;
    case KeyCommand::Kind::extend:
        extendSelection(command.move);
        return true;
    case KeyCommand::Kind::rename:
        if (const Tile* tile = highlighted()) {
            beginRenaming(tile->id());
        } else if (openFolder_) {
            beginRenaming(std::string(Tile::folderPrefix) + openFolder_->string());
        }
        return true;
    case KeyCommand::Kind::menu:
        requestMenu(highlight_.value_or(-1));
        return true;
    case KeyCommand::Kind::pickUp:
        if (const Tile* tile = highlighted()) {
            pickUp(tile->id());
        }
        return true;
    case KeyCommand::Kind::aim:
        // Into the grid; from there on the window moves the focus on.
        if (highlight_ || currentItems_.empty()) {
            return false;
        }
        moveHighlight(GridNavigation::Move::on);
        return true;
    case KeyCommand::Kind::hints:
        setHintsMode(true);
        return true;
    case KeyCommand::Kind::move:
        moveHighlight(command.move);
        return true;
    case KeyCommand::Kind::turnPage:
        if (searching()) {
            return false; // moves within the text
        }
        step(command.pages);
        setHighlight(std::nullopt);
        return true;
    case KeyCommand::Kind::erase:
        if (!searching()) {
            return false;
        }
        setQuery(std::string(Text::prefix(query_, Text::length(query_) - 1)));
        return true;
    case KeyCommand::Kind::type:
        type(press.text.toStdString());
        return true;
    }
    return false;
}

void LauncherState::moveHighlight(GridNavigation::Move move) {
    using GridNavigation::Move;
    if (searching()) {
        search_.moveHighlight(move, columns(), rows());
    } else if (!highlight_ && (move == Move::pageBack || move == Move::pageOn)) {
        step(move == Move::pageOn ? 1 : -1);
    } else {
        setHighlight(GridNavigation::moved(highlight_, move, shownGrid()));
    }
}

bool LauncherState::activateHighlighted(bool newInstance) {
    if (const auto text = search_.highlightedText()) {
        copy(*text);
        return true;
    }
    if (highlighted() == nullptr) {
        return false;
    }
    // A copy: what follows may change the items.
    const Tile tile = *highlighted();
    if (!newInstance || tile.app() == nullptr) {
        activate(tile);
        return true;
    }
    activateNew(*tile.app());
    return true;
}

void LauncherState::extendSelection(GridNavigation::Move move) {
    if (!selection_.isExtending()) {
        if (!highlight_) {
            moveHighlight(move);
        }
        if (!highlight_) {
            return;
        }
        selection_.beginExtending(*highlight_);
    }
    moveHighlight(move);
    if (highlight_) {
        tellIfSelected(selection_.extendTo(*highlight_, currentItems_));
    }
}

bool LauncherState::handleDragKey(const KeyCommand& command) {
    switch (command.kind) {
    case KeyCommand::Kind::back:
        drag_->cancel();
        break;
    case KeyCommand::Kind::activate:
        dropTile();
        break;
    case KeyCommand::Kind::aim:
        drag_->aimAt(drag_->target() ? 0 : 1);
        break;
    case KeyCommand::Kind::move: {
        GridNavigation::Grid grid = shownGrid();
        grid.count = static_cast<int>(drag_->arranged().size());
        if (const auto place = GridNavigation::moved(drag_->place(), command.move, grid)) {
            drag_->moveTo(*place);
            showItem(*place);
        }
        break;
    }
    default:
        break;
    }
    // Whatever else is typed waits until the tile has its place.
    return true;
}

void LauncherState::type(const std::string& text) {
    // A search does not begin with a blank: that would turn the grid into a list of everything.
    if (searching() || !Text::trimmed(text).empty()) {
        setQuery(query_ + text);
    }
}

void LauncherState::handleHintKey(const KeyCommand& command, const std::string& text) {
    const Hints before = hints_;
    std::optional<int> chosen;
    if (command.kind == KeyCommand::Kind::erase) {
        hints_.erase();
    } else {
        const bool isTyped = command.kind == KeyCommand::Kind::type;
        const GridView::Range items = itemsInView();
        chosen = hints_.type(isTyped ? text : std::string(), {items.first, items.end});
    }
    if (hints_ != before) {
        Q_EMIT hintsChanged();
    }
    if (chosen) {
        const Tile tile = currentItems_[static_cast<std::size_t>(*chosen)];
        activate(tile);
    }
}

void LauncherState::setHintsMode(bool on) {
    Hints next;
    next.set(on);
    assign(hints_, next, &LauncherState::hintsChanged);
}

// --- Scrolling ---

bool LauncherState::handleScroll(const Scroll& scroll) {
    if (searching()) {
        return false;
    }
    const bool inFolder = openFolder_.has_value();
    if (!inFolder && view_.isList()) {
        changeView(scroll.precise ? Motion::jump : Motion::animated,
                   [&](GridView& view) { view.scrollTo(view.list().scrolled(scroll)); });
        return true;
    }
    const int count = inFolder ? folderPageCount() : pageCount();
    if (count < 2) {
        return false;
    }
    Scroll logical = scroll;
    if (rightToLeft()) {
        logical.dx = -logical.dx;
    }
    const ScrollPager::Result result =
        pager_.feed(logical, model_.clock().now().secondsSince2001,
                    {inFolder ? folderPage_ : page(), count, view_.width()});
    setDragOffset(rightToLeft() ? -result.offset : result.offset);
    if (inFolder) {
        setFolderPage(result.page);
    } else {
        goToPage(result.page);
    }
    return true;
}

} // namespace vellory
