// SPDX-License-Identifier: Apache-2.0
#include "model/SuggestionsState.h"

#include <algorithm>
#include <utility>

#include "model/AppModel.h"
#include "model/LauncherState.h"

namespace vellory {

namespace {

/// More names than this make no name.
constexpr std::size_t mostNamesInName = 3;

} // namespace

SuggestionsState::SuggestionsState(AppModel& model, LauncherState& launcher, QObject* parent)
    : QObject(parent), model_(model), launcher_(launcher) {
    const auto setLength = [this] { model_.learned().smartList().setLength(launcher_.columns()); };
    setLength();
    connect(&launcher_, &LauncherState::columnsChanged, this, setLength);
    connect(&model_.learned().smartList(), &SmartList::changed, this, &SuggestionsState::updateRow);
    connect(&model_.learned().habits(), &HabitCenter::habitsChanged, this,
            &SuggestionsState::updateOffer);
    // Renamed apps and new pictures.
    connect(&model_, &AppModel::visibleTilesChanged, this, &SuggestionsState::rowChanged);
    connect(&model_, &AppModel::visibleTilesChanged, this, &SuggestionsState::offeredChanged);
    connect(&launcher_, &LauncherState::presentedChanged, this, [this] {
        setHighlight(std::nullopt);
        hasAnswered_ = false;
        showRow(Apps::all);
        updateOffer();
        setOpensAtTime(false);
    });
    // The keyboard is in one place at a time.
    const auto leave = [this] {
        if (launcher_.highlight() || launcher_.searching() || launcher_.openFolder()) {
            setHighlight(std::nullopt);
        }
    };
    connect(&launcher_, &LauncherState::highlightChanged, this, leave);
    connect(&launcher_, &LauncherState::queryChanged, this, leave);
    connect(&launcher_, &LauncherState::openFolderChanged, this, leave);
    updateRow();
    updateOffer();
}

// --- The row ---

void SuggestionsState::updateRow() {
    const SmartList& list = model_.learned().smartList();
    const bool isAsChosen = rowMode_ == list.mode() && rowLength_ == list.length();
    showRow(launcher_.presented() && isAsChosen ? Apps::stay : Apps::all);
}

void SuggestionsState::showRow(Apps apps) {
    SmartList& list = model_.learned().smartList();
    std::vector<BundleID> next = list.apps();
    if (apps == Apps::stay) {
        next = row_;
        std::erase_if(next, [this](const BundleID& id) {
            return model_.app(id) == nullptr || model_.board().hidden.contains(id) ||
                   model_.prefs().smartListExcluded().contains(id);
        });
    }
    rowLength_ = list.length();
    if (next == row_ && rowMode_ == list.mode()) {
        return;
    }
    row_ = std::move(next);
    rowMode_ = list.mode();
    if (highlight_ && std::cmp_greater_equal(*highlight_, row_.size())) {
        setHighlight(std::nullopt);
    }
    Q_EMIT rowChanged();
}

void SuggestionsState::open(const BundleID& app, bool newInstance) {
    if (newInstance) {
        launcher_.activateNew(app);
    } else {
        launcher_.activate(Tile(app));
    }
}

void SuggestionsState::openDocument(const BundleID& app, const std::filesystem::path& file) {
    launcher_.openFile(app, file);
}

// --- The habit ---

void SuggestionsState::updateOffer() {
    const auto& habits = model_.learned().habits().habits();
    if (offered_ && std::ranges::find(habits, *offered_) != habits.end()) {
        return;
    }
    const bool isOfferedAnew = !habits.empty() && !hasAnswered_;
    setOffered(isOfferedAnew ? std::optional(habits.front()) : std::nullopt);
}

void SuggestionsState::setOffered(std::optional<Habit> habit) {
    if (habit != offered_) {
        offered_ = std::move(habit);
        setOpensAtTime(false);
        Q_EMIT offeredChanged();
    }
}

std::string SuggestionsState::offeredName() const {
    std::string name;
    for (std::size_t i = 0; offered_ && i < offered_->apps.size(); ++i) {
        if (i == mostNamesInName) {
            return name + "…";
        }
        name += (i == 0 ? "" : ", ") + model_.name(offered_->apps[i]);
    }
    return name;
}

void SuggestionsState::setOpensAtTime(bool on) {
    if (on != opensAtTime_) {
        opensAtTime_ = on;
        Q_EMIT opensAtTimeChanged();
    }
}

void SuggestionsState::accept() {
    if (!offered_) {
        return;
    }
    using HabitDetector::OpenAtTime;
    const std::string name = offeredName();
    const Habit habit = *offered_;
    hasAnswered_ = true;
    model_.learned().habits().accept(habit, name, opensAtTime_ ? OpenAtTime::yes : OpenAtTime::no);
    setOffered(std::nullopt);
    model_.notices().post(Notice::confirmation("Saved “" + name + "” as a workspace"));
}

void SuggestionsState::dismiss() {
    if (offered_) {
        const Habit habit = *offered_;
        hasAnswered_ = true;
        model_.learned().habits().dismiss(habit);
        setOffered(std::nullopt);
    }
}

// --- Keys ---

void SuggestionsState::setHighlight(std::optional<int> place) {
    if (place != highlight_) {
        highlight_ = place;
        Q_EMIT highlightChanged();
    }
}

bool SuggestionsState::isOnFirstLine() const {
    return !launcher_.highlight() || launcher_.shownGrid().isInFirstRow(*launcher_.highlight());
}

int SuggestionsState::gridColumn() const {
    return launcher_.highlight().value_or(0) % std::max(1, launcher_.columns());
}

bool SuggestionsState::canEnterRow() const {
    return !row_.empty() && !launcher_.searching() && !launcher_.openFolder() &&
           !launcher_.hints().isOn() && isOnFirstLine();
}

void SuggestionsState::leaveTo(int column) {
    setHighlight(std::nullopt);
    const GridNavigation::Grid grid = launcher_.shownGrid();
    launcher_.setHighlight(std::min(grid.firstShown() + column, grid.count - 1));
}

bool SuggestionsState::handleKey(const KeyPress& press) {
    return handleOwnKey(press) || launcher_.handleKey(press);
}

bool SuggestionsState::handleOwnKey(const KeyPress& press) {
    if (press.key == Qt::Key_S && press.modifiers == (Qt::ControlModifier | Qt::ShiftModifier)) {
        const bool isOffered = offered_.has_value();
        accept();
        return isOffered;
    }
    const KeyCommand command = KeyCommand::of(press, launcher_.rightToLeft());
    if (highlight_) {
        return handleRowKey(command);
    }
    const bool isUp =
        command.kind == KeyCommand::Kind::move && command.move == GridNavigation::Move::up;
    if (!isUp || !canEnterRow()) {
        return false;
    }
    const int column = gridColumn();
    launcher_.setHighlight(std::nullopt);
    setHighlight(std::min(column, static_cast<int>(row_.size()) - 1));
    return true;
}

bool SuggestionsState::handleRowKey(const KeyCommand& command) {
    using GridNavigation::Move;
    const int place = *highlight_;
    const int last = static_cast<int>(row_.size()) - 1;
    switch (command.kind) {
    case KeyCommand::Kind::back:
        setHighlight(std::nullopt);
        return true;
    case KeyCommand::Kind::activate:
    case KeyCommand::Kind::activateNew: {
        const BundleID app = row_[static_cast<std::size_t>(place)];
        open(app, command.kind == KeyCommand::Kind::activateNew);
        return true;
    }
    case KeyCommand::Kind::move:
        switch (command.move) {
        case Move::back:
            setHighlight(std::max(place - 1, 0));
            return true;
        case Move::on:
            setHighlight(std::min(place + 1, last));
            return true;
        case Move::first:
            setHighlight(0);
            return true;
        case Move::last:
            setHighlight(last);
            return true;
        case Move::up:
            return true;
        case Move::down:
            leaveTo(place);
            return true;
        case Move::pageBack:
        case Move::pageOn:
            break;
        }
        break;
    default:
        break;
    }
    // Everything else means the grid.
    if (command.kind != KeyCommand::Kind::none) {
        setHighlight(std::nullopt);
    }
    return false;
}

} // namespace vellory
