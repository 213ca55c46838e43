// SPDX-License-Identifier: Apache-2.0
#include "model/AppModel.h"

#include <cmath>
#include <tuple>
#include <utility>

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
      document_(BoardStore(environment_.paths.layout(), environment_.paths.layoutHistory(),
                           BoardStore::defaultKeep,
                           [&clock = ports.clock] { return clock.now(); })),
      library_(ports, prefs_, document_, environment_.locale),
      workspaces_(environment_.paths.workspaces()),
      grid_(document_, library_, workspaces_, ports.defaults),
      opener_(library_, ports.runningApps, notices_), running_(ports),
      learned_({.library = library_,
                .grid = grid_,
                .running = running_,
                .workspaces = workspaces_,
                .prefs = prefs_,
                .ports = ports_,
                .environment = environment_}),
      editor_({.document = document_,
               .library = library_,
               .grid = grid_,
               .usage = learned_.usage(),
               .notices = notices_,
               .ports = ports_,
               .environment = environment_}),
      workspaceCenter_(
          {.runner = {.runningApps = ports.runningApps,
                      .windowPlacer = ports.windowPlacer,
                      .desktop = ports.desktop,
                      .displays = ports.displays,
                      .clock = ports.clock,
                      .scheduler = ports.scheduler,
                      .locate = [this](const BundleID& id) { return library_.locate(id); },
                      .notices = notices_},
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
                 .open = [this](const Workspace& workspace) { open(workspace, std::nullopt); }}) {
    connect(&prefs_, &Prefs::changed, this, &AppModel::onPrefChanged);
    connect(&library_, &AppLibrary::scanDue, this, &AppModel::rescan);
    connect(this, &AppModel::ticked, &learned_.smartList(), &SmartList::invalidate);
    connect(&workspaces_, &WorkspaceList::changed, this, &AppModel::onWorkspacesChanged);
    connect(&workspaceCenter_, &WorkspaceCenter::sessionChanged, this,
            [this] { setShowAllApps(false); });
    connect(&workspaceShortcuts_, &WorkspaceShortcuts::pressed, this, [this](const Uuid& id) {
        if (const Workspace* workspace = workspaces_.find(id)) {
            open(*workspace, std::nullopt);
        }
    });
    connect(this, &AppModel::appLaunched, &workspaceCenter_, &WorkspaceCenter::appLaunched);
    connect(&document_, &BoardDocument::saveFailed, this, [this](const std::error_code& error) {
        notices_.post(Notice::error("Couldn't save the layout: " + error.message()));
    });
    forwardSignals();
}

void AppModel::forwardSignals() {
    connect(&document_, &BoardDocument::changed, this, &AppModel::boardChanged);
    connect(&library_, &AppLibrary::changed, this, &AppModel::appsChanged);
    connect(&grid_, &ShownGrid::changed, this, &AppModel::visibleTilesChanged);
    connect(&editor_, &BoardEditor::pictureReplaced, this, &AppModel::visibleTilesChanged);
    connect(&running_, &RunningTracker::runningChanged, this, &AppModel::runningChanged);
    connect(&running_, &RunningTracker::badgesChanged, this, &AppModel::badgesChanged);
    connect(&workspaceCenter_, &WorkspaceCenter::launcherHideRequested, this,
            &AppModel::launcherHideRequested);
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
    library_.scan();
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
        // Where nothing was found, perhaps because nothing could be read, the next start is the
        // first one still.
        if (!board().tiles.empty()) {
            saveBoard(std::nullopt);
        }
    } else {
        reconcile(std::nullopt);
    }
}

void AppModel::rescan() {
    if (library_.scan()) {
        reconcile("Apps changed");
    }
}

void AppModel::reconcile(const std::optional<std::string>& reason) {
    if (!isStarted()) {
        return;
    }
    Board next = board();
    const std::vector<BundleID> added = library_.bringInStep(next);
    document_.change(std::move(next), reason);
    if (!added.empty() && prefs_.hasSeenWelcome()) {
        const std::string text = added.size() == 1
                                     ? library_.name(added.front()) + " added to vellory"
                                     : std::to_string(added.size()) + " new apps added";
        notices_.post(Notice::confirmation(text, "plus.app"));
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
    ports_.runningApps.observe({.launched = onLaunch,
                                .quit = [this](const BundleID&) { running_.refreshRunning(); },
                                .changed = [this] { running_.refreshRunning(); }});
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

// --- Workspaces ---

void AppModel::deleteWorkspace(const Uuid& id) {
    workspaces_.remove(id);
    workspaceShortcuts_.forget(id);
}

void AppModel::onWorkspacesChanged() {
    if (!isStarted()) {
        return;
    }
    Q_EMIT storedDataChanged();
    workspaceShortcuts_.apply();
    Q_EMIT workspaceIndexChanged();
    learned_.habits().refresh();
}

} // namespace vellory
