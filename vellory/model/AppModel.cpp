// SPDX-License-Identifier: Apache-2.0
#include "model/AppModel.h"

#include <cmath>
#include <tuple>
#include <unordered_set>
#include <utility>

#include <QPointer>

#include "Apps/WellKnownApps.h"
#include "Support/AtomicFile.h"
#include "platform/Desktop.h"

namespace vellory {

namespace {

constexpr double tickInterval = 60.0;
/// What is half written for longer is written no more, in seconds.
constexpr double unfinishedAge = 24.0 * 3600;

double minuteOf(Date date) {
    return std::floor(date.secondsSince1970() / tickInterval);
}

double untilNextMinute(Date now) {
    return (minuteOf(now) + 1) * tickInterval - now.secondsSince1970();
}

} // namespace

AppModel::AppModel(Ports ports, Environment environment, QObject* parent)
    : QObject(parent), ports_(ports), environment_(std::move(environment)), prefs_(ports.defaults),
      collator_(environment_.locale),
      document_(BoardStore(environment_.paths.layout(), environment_.paths.layoutHistory(),
                           BoardStore::defaultKeep,
                           [&clock = ports.clock] { return clock.now(); })),
      workspaces_(environment_.paths.workspaces()),
      workspaceCenter_(
          {.runner = {.runningApps = ports.runningApps,
                      .windowPlacer = ports.windowPlacer,
                      .desktop = ports.desktop,
                      .displays = ports.displays,
                      .clock = ports.clock,
                      .scheduler = ports.scheduler,
                      .locate = [this](const BundleID& id) { return locate(id); },
                      .post = [this](const Notice& notice) { Q_EMIT noticePosted(notice); }},
           .workspaces = workspaces_,
           .prefs = prefs_,
           .protectedApps = [this] { return protectedApps(); },
           .locale = environment_.locale,
           .calendar = environment_.calendar,
           .newID = environment_.newID,
           .neverTaken = partsOfTheDesktop()}),
      workspaceShortcuts_(workspaces_, prefs_, ports.hotKeys),
      triggers_({.workspaces = workspaces_,
                 .prefs = prefs_,
                 .displays = ports.displays,
                 .focusSource = ports.focusSource,
                 .clock = ports.clock,
                 .scheduler = ports.scheduler,
                 .calendar = environment_.calendar,
                 .locale = environment_.locale,
                 .open = [this](const Workspace& workspace) { open(workspace, std::nullopt); }}),
      learned_(*this, ports_, environment_), running_(ports),
      editor_(*this, document_, ports_, environment_),
      rescanner_(ports.folderWatcher, ports.scheduler, [this] { rescan(); }),
      focusFilter_(GridFilter::load(ports.defaults)) {
    connect(&prefs_, &Prefs::changed, this, &AppModel::onPrefChanged);
    connect(&running_, &RunningTracker::runningChanged, this, &AppModel::runningChanged);
    connect(&running_, &RunningTracker::badgesChanged, this, &AppModel::badgesChanged);
    connect(&workspaces_, &WorkspaceList::changed, this, &AppModel::onWorkspacesChanged);
    connect(&workspaces_, &WorkspaceList::activeChanged, this, &AppModel::refreshGrid);
    connect(&workspaceCenter_, &WorkspaceCenter::sessionChanged, this,
            [this] { setShowAllApps(false); });
    connect(&workspaceCenter_, &WorkspaceCenter::noticePosted, this, &AppModel::noticePosted);
    connect(&workspaceCenter_, &WorkspaceCenter::launcherHideRequested, this,
            &AppModel::launcherHideRequested);
    connect(&workspaceShortcuts_, &WorkspaceShortcuts::pressed, this, [this](const Uuid& id) {
        if (const Workspace* workspace = workspaces_.find(id)) {
            open(*workspace, std::nullopt);
        }
    });
    connect(this, &AppModel::appLaunched, &workspaceCenter_, &WorkspaceCenter::appLaunched);
    connect(&editor_, &BoardEditor::noticePosted, this, &AppModel::noticePosted);
    connect(&editor_, &BoardEditor::pictureReplaced, this, &AppModel::visibleTilesChanged);
    connect(&document_, &BoardDocument::changed, this, [this] {
        Q_EMIT boardChanged();
        refreshGrid();
    });
    connect(&document_, &BoardDocument::saveFailed, this, [this](const std::error_code& error) {
        Q_EMIT noticePosted(Notice::error("Couldn't save the layout: " + error.message()));
    });
}

AppModel::~AppModel() {
    ports_.runningApps.observe({});
    learned_.flush();
}

// --- Life ---

void AppModel::start() {
    if (isStarted()) {
        return;
    }
    // A folder that cannot be made shows when the first file in it cannot be written.
    std::ignore = AtomicFile::createFolder(environment_.paths.support());
    for (const std::filesystem::path& folder : environment_.paths.folders()) {
        AtomicFile::removeUnfinished(folder, ports_.clock.now() - unfinishedAge);
    }
    onPrefChanged("showInDock");
    learned_.load();
    workspaces_.load();
    scanApps();
    loadBoard();
    learned_.begin();
    observeApps();
    refreshBadges();
    workspaceShortcuts_.apply();
    triggers_.start();
    scheduleTick();
    if (!prefs_.hasSeenWelcome()) {
        Q_EMIT welcomeRequested();
    }
}

void AppModel::loadBoard() {
    if (!document_.load()) {
        document_.begin(editor_.autoFolderBoard());
        saveBoard(std::nullopt);
    } else {
        reconcile(std::nullopt);
    }
}

void AppModel::scanApps() {
    std::map<BundleID, InstalledApp> apps;
    std::vector<BundleID> order;
    for (InstalledApp& found :
         ports_.catalogue.scan(ports_.catalogue.roots(prefs_.extraFolders()))) {
        if (const auto [place, isNew] = apps.try_emplace(found.bundleID, found); isNew) {
            order.push_back(std::move(found.bundleID));
        }
    }
    // At once: what comes from here on is told.
    rescanner_.watch(ports_.catalogue.scannedFolders());
    const bool isNew = apps != apps_ || order != installedOrder_;
    apps_ = std::move(apps);
    installedOrder_ = std::move(order);
    buildKeywords();
    if (isNew) {
        Q_EMIT appsChanged();
        refreshGrid();
    }
}

void AppModel::buildKeywords() {
    keywords_.clear();
    for (const auto& [id, app] : apps_) {
        const AppInfo info = ports_.catalogue.info(app);
        keywords_.emplace_hint(keywords_.end(), id,
                               AppKeywords::keywords(app.name, info.dictionary, info.texts));
    }
    // Apps are found in the order of their own names.
    purposes_.setApps(installedOrder_, keywords_);
    orderedRenames_.clear();
}

void AppModel::rescan() {
    const auto before = apps_;
    scanApps();
    if (apps_ != before) {
        reconcile("Apps changed");
    }
}

void AppModel::reconcile(const std::optional<std::string>& reason) {
    if (!isStarted()) {
        return;
    }
    Board next = board();
    const std::vector<BundleID> added = bringInStep(next);
    document_.change(std::move(next), reason);
    if (!added.empty() && prefs_.hasSeenWelcome()) {
        const std::string text = added.size() == 1
                                     ? name(added.front()) + " added to vellory"
                                     : std::to_string(added.size()) + " new apps added";
        Q_EMIT noticePosted(Notice::confirmation(text, "plus.app"));
    }
}

void AppModel::observeApps() {
    const auto onLaunch = [this](const BundleID& id) {
        running_.refreshRunning();
        // What has no identifier cannot be told from anything else.
        if (!id.empty()) {
            learned_.record(id);
            Q_EMIT appLaunched(id);
        }
    };
    const auto onQuit = [this](const BundleID& id) {
        running_.refreshRunning();
        Q_EMIT appQuit(id);
    };
    ports_.runningApps.observe(
        {.launched = onLaunch, .quit = onQuit, .changed = [this] { running_.refreshRunning(); }});
}

void AppModel::onPrefChanged(const std::string& key) {
    if (key == "showInDock") {
        ports_.desktop.setActivationPolicy(prefs_.showInDock()
                                               ? Desktop::ActivationPolicy::regular
                                               : Desktop::ActivationPolicy::accessory);
    } else if (key == "extraFolders" && isStarted()) {
        rescan();
    } else if (key == "showBadges" && isStarted()) {
        refreshBadges();
    }
}

// Timers come a little early or late, and later still after the machine slept; and clocks are set.
void AppModel::scheduleTick() {
    const Date now = ports_.clock.now();
    minuteTimer_ = ports_.scheduler.after(untilNextMinute(now), [this, minute = minuteOf(now)] {
        const bool hasBegun = minuteOf(ports_.clock.now()) != minute;
        scheduleTick();
        if (hasBegun) {
            tick();
        }
    });
}

void AppModel::tick() {
    triggers_.minute();
    Q_EMIT ticked();
}

void AppModel::refreshBadges() {
    running_.refreshRunning();
    if (prefs_.showBadges()) {
        running_.refreshBadges();
    } else {
        running_.clearBadges();
    }
}

// --- What there is ---

const InstalledApp* AppModel::app(const BundleID& id) const {
    const auto found = apps_.find(id);
    return found == apps_.end() ? nullptr : &found->second;
}

std::vector<BundleID> AppModel::bringInStep(Board& board) const {
    return installedOrder_.empty() ? std::vector<BundleID>{} : board.reconcile(installedOrder_);
}

std::vector<InstalledApp> AppModel::installedApps() const {
    std::vector<InstalledApp> installed;
    installed.reserve(installedOrder_.size());
    for (const BundleID& id : installedOrder_) {
        installed.push_back(apps_.at(id));
    }
    return installed;
}

std::optional<InstalledApp> AppModel::locate(const BundleID& id) const {
    const InstalledApp* installed = app(id);
    return installed == nullptr ? ports_.catalogue.find(id) : std::optional(*installed);
}

std::set<BundleID> AppModel::partsOfTheDesktop() const {
    std::set<BundleID> apps = environment_.desktopApps;
    apps.emplace(WellKnownApps::finder);
    apps.emplace(WellKnownApps::vellory);
    apps.insert(environment_.ownID);
    return apps;
}

std::set<BundleID> AppModel::protectedApps() const {
    std::set<BundleID> apps = prefs_.protectedApps();
    apps.merge(partsOfTheDesktop());
    return apps;
}

std::string AppModel::name(const BundleID& id) const {
    if (const auto given = board().renames.find(id); given != board().renames.end()) {
        return given->second;
    }
    const InstalledApp* installed = app(id);
    return installed == nullptr ? id : installed->name;
}

std::string AppModel::displayName(const BundleID& id) const {
    if (app(id) != nullptr) {
        return name(id);
    }
    const auto elsewhere = locate(id);
    return elsewhere ? elsewhere->name : id;
}

std::vector<AppAction> AppModel::actions(const BundleID& id) const {
    const InstalledApp* installed = app(id);
    return installed == nullptr ? std::vector<AppAction>{} : ports_.catalogue.actions(*installed);
}

std::optional<Folder> AppModel::visibleFolder(const Uuid& folder) const {
    for (const Tile& tile : visibleTiles_) {
        if (const Folder* shown = tile.folder(); shown != nullptr && shown->id == folder) {
            return *shown;
        }
    }
    return std::nullopt;
}

std::vector<BundleID> AppModel::search(const std::string& query) const {
    return search_.find(query);
}

std::vector<BundleID> AppModel::purposeSearch(const std::string& query,
                                              const std::set<BundleID>& except) const {
    return purposes_.find(query, except);
}

void AppModel::setShowAllApps(bool on) {
    if (on != showAllApps_) {
        showAllApps_ = on;
        refreshGrid();
    }
}

bool AppModel::hasFilter() const {
    const Workspace* workspace = workspaces_.activeWorkspace();
    return focusFilter_ || (workspace != nullptr && workspace->focusGrid);
}

void AppModel::setFocusFilter(const std::optional<GridFilter>& filter) {
    if (filter != focusFilter_) {
        focusFilter_ = filter;
        GridFilter::save(filter, ports_.defaults);
        refreshGrid();
    }
}

bool AppModel::isShown(const BundleID& id) const {
    return apps_.contains(id) && !board().hidden.contains(id) &&
           (!allowed_ || allowed_->contains(id));
}

void AppModel::refreshGrid() {
    allowed_.reset();
    const Workspace* workspace = workspaces_.activeWorkspace();
    if (!showAllApps_ && workspace != nullptr && workspace->focusGrid) {
        const auto ids = workspace->appIDs();
        allowed_.emplace(ids.begin(), ids.end());
    }
    const bool isFiltered = !showAllApps_ && focusFilter_;
    visibleTiles_ = GridContents::shownTiles(
        isFiltered ? focusFilter_->tiles(board().tiles, workspaces_.all()) : board().tiles,
        [this](const BundleID& id) { return isShown(id); });
    refreshSearch();
    Q_EMIT visibleTilesChanged();
}

void AppModel::refreshSearch() {
    std::vector<std::pair<BundleID, std::string>> candidates;
    std::unordered_set<BundleID> seen;
    for (BundleID& id : board().allApps()) {
        if (apps_.contains(id) && seen.insert(id).second) {
            std::string itsName = name(id);
            candidates.emplace_back(std::move(id), std::move(itsName));
        }
    }
    search_.setCandidates(candidates);
    if (board().renames != orderedRenames_) {
        orderedRenames_ = board().renames;
        std::vector<BundleID> byName = installedOrder_;
        Text::sortByName(byName, collator_, [this](const BundleID& id) { return name(id); });
        purposes_.setOrder(byName);
    }
}

// --- Opening apps ---

void AppModel::launch(const BundleID& id) {
    open(id, RunningApps::Open::bringForward);
}

void AppModel::launchNew(const BundleID& id) {
    open(id, RunningApps::Open::newInstance);
}

void AppModel::open(const BundleID& id, RunningApps::Open mode) {
    if (const InstalledApp* installed = app(id)) {
        ports_.runningApps.open(*installed, mode, noticeOnFailure(id));
    }
}

void AppModel::perform(const BundleID& id, const std::string& action) {
    if (const InstalledApp* installed = app(id)) {
        ports_.runningApps.perform(*installed, action, noticeOnFailure(id));
    }
}

bool AppModel::openFile(const BundleID& id, const std::filesystem::path& file) {
    const InstalledApp* installed = app(id);
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        Q_EMIT noticePosted(Notice::error("Couldn't open " + file.filename().string()));
        return false;
    }
    if (installed != nullptr) {
        ports_.runningApps.openFile(*installed, file, noticeOnFailure(id));
    }
    return installed != nullptr;
}

RunningApps::Completion AppModel::noticeOnFailure(const BundleID& id) {
    return [self = QPointer(this),
            text = "Couldn't open " + name(id)](const std::optional<std::string>& failure) {
        if (self && failure) {
            Q_EMIT self->noticePosted(Notice::error(text));
        }
    };
}

// --- Workspaces ---

void AppModel::deleteWorkspace(const Uuid& id) {
    workspaces_.remove(id);
    workspaceShortcuts_.forget(id);
}

void AppModel::onWorkspacesChanged() {
    refreshGrid();
    if (!isStarted()) {
        return;
    }
    Q_EMIT storedDataChanged();
    workspaceShortcuts_.apply();
    Q_EMIT workspaceIndexChanged();
    learned_.habits().refresh();
}

// --- The board ---

void AppModel::saveBoard(const std::optional<std::string>& reason) {
    document_.save(reason);
}

} // namespace vellory
