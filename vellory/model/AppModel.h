// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <QObject>

#include "model/AppLibrary.h"
#include "model/AppOpener.h"
#include "model/BoardDocument.h"
#include "model/BoardEditor.h"
#include "model/Notices.h"
#include "model/Ports.h"
#include "model/Prefs.h"
#include "model/RunningTracker.h"
#include "model/ShownGrid.h"
#include "model/TriggerCenter.h"
#include "model/UsageCenter.h"
#include "model/WorkspaceCenter.h"
#include "model/WorkspaceList.h"
#include "model/WorkspaceShortcuts.h"
#include "platform/Scheduler.h"

namespace vellory {

/// The front of the application's state, through which every view and command goes: it owns the
/// classes that know the board, the apps, the grid and the workspaces, starts them in their order
/// and passes on what is asked of them and what they tell.
///
/// Main thread only. Nothing is read or written before `start`.
class AppModel : public QObject {
    Q_OBJECT

  public:
    AppModel(Ports ports, Environment environment, QObject* parent = nullptr);
    ~AppModel() override;

    // --- Life ---

    /// Reads what is stored, scans the apps, brings the board in step with them and begins to
    /// watch. Once.
    void start();
    /// Whether the board has been loaded. Until then no edit is made and nothing is saved.
    bool isStarted() const { return document_.isLoaded(); }

    /// Looks for installed apps again, and watches where it looked; the board stays as it is.
    void scanApps() { library_.scan(); }
    /// Makes the words by which each installed app is found. Part of every scan.
    void buildKeywords() { library_.buildKeywords(); }
    /// Looks for installed apps again and, when that changed anything, brings the board in step.
    void rescan();
    /// What runs once a minute, when a new one begins.
    void tick();
    /// Asks anew which apps run and which badges they show; the badges arrive later.
    void refreshBadges();

    // --- What there is ---

    const Board& board() const { return document_.board(); }
    const std::map<BundleID, InstalledApp>& apps() const { return library_.apps(); }
    /// Nothing when no such app is installed.
    const InstalledApp* app(const BundleID& id) const { return library_.app(id); }
    /// The installed apps in the order in which they were found: by name.
    const std::vector<BundleID>& installedOrder() const { return library_.installedOrder(); }
    /// The apps with windows of their own that run now.
    const std::set<BundleID>& running() const { return running_.running(); }
    const std::map<BundleID, std::string>& badges() const { return running_.badges(); }
    /// Everything that is told to the user.
    Notices& notices() { return notices_; }
    const Notices& notices() const { return notices_; }
    Prefs& prefs() { return prefs_; }
    const Prefs& prefs() const { return prefs_; }
    WorkspaceList& workspaces() { return workspaces_; }
    const WorkspaceList& workspaces() const { return workspaces_; }
    /// Opens and closes them, and makes new ones.
    WorkspaceCenter& workspaceCenter() { return workspaceCenter_; }
    const WorkspaceCenter& workspaceCenter() const { return workspaceCenter_; }
    WorkspaceShortcuts& workspaceShortcuts() { return workspaceShortcuts_; }
    /// What opens them by itself.
    TriggerCenter& triggers() { return triggers_; }
    /// What the opening of the active workspace changed on the desk.
    const std::optional<WorkspaceSession>& session() const { return workspaceCenter_.session(); }
    /// What is learned from how apps are used.
    UsageCenter& learned() { return learned_; }
    const UsageCenter& learned() const { return learned_; }
    const UsageStore& usage() const { return learned_.usage(); }
    const LaunchLog& launchLog() const { return learned_.launchLog(); }
    const Text::Collator& collator() const { return library_.collator(); }
    Clock& clock() const { return ports_.clock; }
    /// The locale of the order of names and of numbers, such as "en_US".
    const std::string& locale() const { return environment_.locale; }
    /// What is never hidden or quit: the user's choice, the file manager and this program.
    std::set<BundleID> protectedApps() const;

    /// The name the user gave the app, else its own, else the identifier.
    std::string name(const BundleID& id) const { return library_.name(id); }
    /// As `name`, but also right for apps that are not on the grid.
    std::string displayName(const BundleID& id) const { return library_.displayName(id); }
    /// What else an installed app offers beside being opened.
    std::vector<AppAction> actions(const BundleID& id) const { return library_.actions(id); }

    // --- What the grid shows: see `ShownGrid` ---

    const std::vector<Tile>& visibleTiles() const { return grid_.tiles(); }
    /// A folder as the grid shows it, with its shown apps only.
    std::optional<Folder> visibleFolder(const Uuid& folder) const { return grid_.folder(folder); }
    /// Installed apps on the board whose name matches, best first; all of them for a blank query.
    std::vector<BundleID> search(const std::string& query) const { return grid_.search(query); }
    /// Installed apps that do what `query` says: see `AppLibrary::purposeSearch`.
    std::vector<BundleID> purposeSearch(const std::string& query,
                                        const std::set<BundleID>& except = {}) const {
        return library_.purposeSearch(query, except);
    }
    /// The words by which each installed app is found.
    const PurposeSearch::Table& keywords() const { return library_.keywords(); }

    /// Shows everything in spite of filters and the active workspace.
    bool showAllApps() const { return grid_.showAllApps(); }
    void setShowAllApps(bool on) { grid_.setShowAllApps(on); }
    /// Whether a filter or the active workspace keeps apps from the grid, or would.
    bool hasFilter() const { return grid_.hasFilter(); }
    /// What a Focus mode of the desktop lets through; kept over restarts.
    const std::optional<GridFilter>& focusFilter() const { return grid_.focusFilter(); }
    void setFocusFilter(const std::optional<GridFilter>& filter) { grid_.setFocusFilter(filter); }

    // --- Opening apps: see `AppOpener` ---

    void launch(const BundleID& id) { opener_.launch(id); }
    /// Opens a new window or instance of the app.
    void launchNew(const BundleID& id) { opener_.launchNew(id); }
    /// One of the app's `actions`.
    void perform(const BundleID& id, const std::string& action) { opener_.perform(id, action); }
    /// Opens a file with the app; false when that is known to be in vain.
    bool openFile(const BundleID& id, const std::filesystem::path& file) {
        return opener_.openFile(id, file);
    }

    // --- Workspaces ---

    /// See `WorkspaceCenter::open`.
    void open(const Workspace& workspace, std::optional<int> minutes) {
        workspaceCenter_.open(workspace, minutes);
    }
    /// See `WorkspaceCenter::close`.
    void closeWorkspace(bool silently, const std::set<BundleID>& keep = {}) {
        workspaceCenter_.close(silently, keep);
    }
    /// Replaces the workspace with the same identity, or adds this one.
    void updateWorkspace(const Workspace& workspace) { workspaces_.update(workspace); }
    /// Its session, if it is open, goes on until it is closed.
    void deleteWorkspace(const Uuid& id);
    /// "New workspace from what's open": see `WorkspaceCenter::makeFromOpen`.
    void snapshotWorkspace(WorkspaceCenter::Choices choices,
                           std::function<void(const Workspace&)> done) {
        workspaceCenter_.makeFromOpen(choices, std::move(done));
    }

    // --- Editing the board: see `BoardEditor` ---

    void moveTile(const std::string& tileID, int place) { editor_.moveTile(tileID, place); }
    /// An app from a folder (or the top level) to a place on the top level.
    void moveApp(const BundleID& id, int place) { editor_.moveApp(id, place); }
    /// An app out of its folder to the place right after it.
    void moveOutOfFolder(const BundleID& id) { editor_.moveOutOfFolder(id); }
    /// An app to another place among the shown apps of its folder.
    void moveInFolder(const Uuid& folder, const BundleID& id, int place) {
        editor_.moveInFolder(folder, id, place);
    }
    /// A tile, or an app out of its folder, to the end of the grid.
    void moveToEnd(const std::string& tileID) { editor_.moveToEnd(tileID); }
    /// An app onto another tile: into that folder, or into a new folder made of both apps. The
    /// folder that now holds it, or nothing.
    std::optional<Uuid> drop(const BundleID& id, const std::string& targetTileID,
                             const std::string& newFolderTitle = "New folder") {
        return editor_.drop(id, targetTileID, newFolderTitle);
    }
    std::optional<Uuid> makeFolder(const std::vector<BundleID>& ids,
                                   const std::string& title = "New folder") {
        return editor_.makeFolder(ids, title);
    }
    /// An empty title leaves the folder's name as it is.
    void renameFolder(const Uuid& folder, const std::string& title) {
        editor_.renameFolder(folder, title);
    }
    void setFolderColor(const Uuid& folder, const std::optional<std::string>& color) {
        editor_.setFolderColor(folder, color);
    }
    void setFolderEmoji(const Uuid& folder, const std::optional<std::string>& emoji) {
        editor_.setFolderEmoji(folder, emoji);
    }
    void dissolveFolder(const Uuid& folder) { editor_.dissolveFolder(folder); }

    void hide(const std::vector<BundleID>& ids) { editor_.hide(ids); }
    void unhide(const BundleID& id) { editor_.unhide(id); }
    /// An empty name, or the app's own, takes the given name away.
    void rename(const BundleID& id, const std::string& name) { editor_.rename(id, name); }
    /// Lets the user pick a picture; the edit follows when they did.
    void chooseIcon(const BundleID& id) { editor_.chooseIcon(id); }
    void resetIcon(const BundleID& id) { editor_.resetIcon(id); }
    void chooseCover(const Uuid& folder) { editor_.chooseCover(folder); }
    void resetCover(const Uuid& folder) { editor_.resetCover(folder); }

    /// Arranges all apps anew in folders by category; names, icons and hidden apps stay.
    void autoFolders() { editor_.autoFolders(); }
    void sortAlphabetically() { editor_.sortAlphabetically(); }
    /// Every app by itself, by name: no folders.
    void layOutAlphabetically() { editor_.layOutAlphabetically(); }
    void sortByUse() { editor_.sortByUse(); }

    /// The history of the board, newest first.
    std::vector<BoardStore::Snapshot> snapshots() const { return document_.snapshots(); }
    /// The board of a step; nothing when its file cannot be read any more.
    std::optional<Board> boardIn(const BoardStore::Snapshot& snapshot) const {
        return document_.boardIn(snapshot);
    }
    void restore(const BoardStore::Snapshot& snapshot) { editor_.restore(snapshot); }

    /// Keeps the board under a name, or puts the one that was kept in its place.
    void saveLayout(const std::string& name) { editor_.saveLayout(name); }
    void loadSavedLayout(const std::string& name) { editor_.loadSavedLayout(name); }
    /// The names of the saved layouts.
    std::vector<std::string> savedLayouts() const { return editor_.savedLayouts(); }

    /// Writes the board; a `reason` names a step in the history. Does nothing before the board was
    /// loaded; a failure is told in a notice and the next save tries again.
    void saveBoard(const std::optional<std::string>& reason) { document_.save(reason); }

  Q_SIGNALS:
    void boardChanged();
    void appsChanged();
    void runningChanged();
    void badgesChanged();
    /// Anything about the grid changed: which tiles there are, their order, names or pictures.
    void visibleTilesChanged();
    /// The user has not been welcomed yet.
    void welcomeRequested();
    /// An app was started, here or elsewhere; it has been counted.
    void appLaunched(const std::string& id);
    void ticked();
    /// The launcher should go from the screen: the desk behind it is being set up.
    void launcherHideRequested();
    // After each change of the workspaces, in this order: what keeps a copy of stored data, what
    // lists workspaces outside the program.
    void storedDataChanged();
    void workspaceIndexChanged();

  private:
    void forwardSignals();
    void loadBoard();
    /// Brings the board in step with the apps, and tells of new ones.
    void reconcile(const std::optional<std::string>& reason);
    void observeApps();
    void onWorkspacesChanged();
    void scheduleTick();
    void onPrefChanged(const std::string& key);
    /// The desktop's shell and file manager, and this program.
    std::set<BundleID> partsOfTheDesktop() const;

    Ports ports_;
    Environment environment_;
    // In this order: each is handed some of those before it.
    Notices notices_;
    Prefs prefs_;
    BoardDocument document_;
    AppLibrary library_;
    WorkspaceList workspaces_;
    ShownGrid grid_;
    AppOpener opener_;
    RunningTracker running_;
    UsageCenter learned_;
    BoardEditor editor_;
    WorkspaceCenter workspaceCenter_;
    WorkspaceShortcuts workspaceShortcuts_;
    TriggerCenter triggers_;
    Scheduler::Handle minuteTimer_;
};

} // namespace vellory
