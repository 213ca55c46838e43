// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QObject>

#include "Usage/HabitDetector.h"
#include "model/KeyCommand.h"
#include "model/SmartList.h"

namespace vellory {

class AppModel;
class LauncherState;

/// What one launcher window shows of the suggestions: the row of apps above the grid and the habit
/// that is offered below it. Main thread only.
///
/// Nothing moves under the pointer: while the window is shown the row keeps its apps and only loses
/// those that are gone, and a habit that was answered is followed by another at the next summons.
class SuggestionsState : public QObject {
    Q_OBJECT

  public:
    using Habit = HabitDetector::Habit;

    SuggestionsState(AppModel& model, LauncherState& launcher, QObject* parent = nullptr);

    // --- The row ---

    const std::vector<BundleID>& row() const { return row_; }
    std::string_view heading() const { return SmartList::heading(rowMode_); }
    /// The app of the row that the keyboard is on.
    std::optional<int> highlight() const { return highlight_; }
    /// Opens the app, or another window of it, and asks the launcher to hide unless it is kept
    /// open.
    void open(const BundleID& app, bool newInstance = false);

    /// Opens a file with the app; the launcher hides as after any other opening.
    void openDocument(const BundleID& app, const std::filesystem::path& file);

    // --- The habit ---

    const std::optional<Habit>& offered() const { return offered_; }
    /// What its workspace will be called: after its apps.
    std::string offeredName() const;
    /// Whether the workspace will open by itself; off until the user chooses it.
    bool opensAtTime() const { return opensAtTime_; }
    void setOpensAtTime(bool on);
    void accept();
    void dismiss();

    // --- Input ---

    /// What any key means to the launcher; whether it was used. The suggestions have theirs first:
    /// up from the grid's first line into the row, moving and opening there, and Ctrl+Shift+S to
    /// keep the habit. All others are for the grid.
    bool handleKey(const KeyPress& press);

  Q_SIGNALS:
    void rowChanged();
    void highlightChanged();
    void offeredChanged();
    void opensAtTimeChanged();

  private:
    enum class Apps {
        all,  ///< those of the list
        stay, ///< those that are shown, without what is gone
    };
    void updateRow();
    void showRow(Apps apps);
    void updateOffer();
    void setOffered(std::optional<Habit> habit);
    void setHighlight(std::optional<int> place);
    bool canEnterRow() const;
    /// The line of the grid page that the highlight is in, and its column there.
    bool isOnFirstLine() const;
    int gridColumn() const;
    void leaveTo(int column);
    bool handleOwnKey(const KeyPress& press);
    bool handleRowKey(const KeyCommand& command);

    AppModel& model_;
    LauncherState& launcher_;
    std::vector<BundleID> row_;
    SmartList::Mode rowMode_ = SmartList::Mode::off;
    int rowLength_ = 0;
    std::optional<int> highlight_;
    std::optional<Habit> offered_;
    bool hasAnswered_ = false; ///< since the window was shown
    bool opensAtTime_ = false;
};

} // namespace vellory
