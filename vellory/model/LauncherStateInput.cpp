// SPDX-License-Identifier: Apache-2.0
// What keys and the wheel mean to the launcher.
#include "model/LauncherState.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "Support/Text.h"
#include "model/AppModel.h"

namespace vellory {

namespace {
constexpr std::string_view hintAlphabet = "ASDFGHJKLQWERTYUIOPZXCVBNM";
constexpr int hintLetters = static_cast<int>(hintAlphabet.size());
} // namespace

// --- Keys ---

bool LauncherState::handleKey(const KeyPress& press) {
    const KeyCommand command = KeyCommand::of(press, rightToLeft_);
    if (drag_->isActive()) {
        return handleDragKey(command);
    }
    if (command.kind != KeyCommand::Kind::extend) {
        selectionAnchor_.reset();
    }
    if (hintsMode_) {
        handleHintKey(command, press.text);
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
            beginRenaming(Tile(*model_.board().folder(*openFolder_)).id());
        }
        return true;
    case KeyCommand::Kind::menu:
        Q_EMIT menuRequested(highlight_.value_or(-1));
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
        search_.moveHighlight(move, columns_, rows_);
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
    if (!selectionAnchor_) {
        if (!highlight_) {
            moveHighlight(move);
        }
        selectionAnchor_ = highlight_;
        selectedBefore_ = selected_;
    }
    if (!selectionAnchor_) {
        return;
    }
    moveHighlight(move);
    std::set<BundleID> apps = selectedBefore_;
    const auto [first, last] =
        std::minmax({*selectionAnchor_, highlight_.value_or(*selectionAnchor_)});
    for (int index = first; index <= last && std::cmp_less(index, currentItems_.size()); ++index) {
        if (const BundleID* id = currentItems_[static_cast<std::size_t>(index)].app()) {
            apps.insert(*id);
        }
    }
    setSelected(apps);
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

void LauncherState::handleHintKey(const KeyCommand& command, const QString& text) {
    if (command.kind == KeyCommand::Kind::erase) {
        assign(hintBuffer_, std::string(), &LauncherState::hintBufferChanged);
        return;
    }
    const std::string letter = Text::uppercased(text.toStdString());
    if (command.kind != KeyCommand::Kind::type || letter.size() != 1 ||
        hintAlphabet.find(letter) == std::string_view::npos) {
        setHintsMode(false);
        return;
    }
    // A letter that leads to no tile on the page is passed over.
    const std::string typed = hintBuffer_ + letter;
    const GridNavigation::Grid grid = shownGrid();
    const int end = std::min(grid.firstShown() + grid.pageSize(), grid.count);
    for (int index = grid.firstShown(); index < end; ++index) {
        const std::string label = hint(index);
        if (label == typed) {
            setHintsMode(false);
            const Tile tile = currentItems_[static_cast<std::size_t>(index)];
            activate(tile);
            return;
        }
        if (label.starts_with(typed)) {
            assign(hintBuffer_, typed, &LauncherState::hintBufferChanged);
            return;
        }
    }
}

void LauncherState::setHintsMode(bool on) {
    assign(hintBuffer_, std::string(), &LauncherState::hintBufferChanged);
    assign(hintsMode_, on, &LauncherState::hintsModeChanged);
}

std::string LauncherState::hint(int index) {
    const int wrapped = std::max(index, 0);
    return {hintAlphabet[static_cast<std::size_t>(wrapped / hintLetters % hintLetters)],
            hintAlphabet[static_cast<std::size_t>(wrapped % hintLetters)]};
}

// --- Scrolling ---

bool LauncherState::handleScroll(const Scroll& scroll) {
    const bool inFolder = openFolder_ && !searching();
    const int count = inFolder ? folderPageCount() : pageCount_;
    if (count < 2 || (!inFolder && !isPaged())) {
        return false;
    }
    Scroll logical = scroll;
    if (rightToLeft_) {
        logical.dx = -logical.dx;
    }
    const ScrollPager::Result result =
        pager_.feed(logical, model_.clock().now().secondsSince2001,
                    {inFolder ? folderPage_ : page_, count, pageWidth_});
    setDragOffset(rightToLeft_ ? -result.offset : result.offset);
    if (inFolder) {
        setFolderPage(result.page);
    } else {
        goToPage(result.page);
    }
    return true;
}

} // namespace vellory
