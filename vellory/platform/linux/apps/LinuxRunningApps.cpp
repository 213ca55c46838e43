// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/LinuxRunningApps.h"

#include <algorithm>

#include <xcb/xcb_icccm.h>

#include "platform/linux/apps/AppPresence.h"
#include "platform/linux/apps/AppStarts.h"
#include "platform/linux/apps/DesktopEntryFile.h"
#include "platform/linux/apps/FileLinks.h"
#include "platform/linux/apps/ProcessInfo.h"
#include "platform/linux/apps/SystemdUnits.h"
#include "platform/linux/windows/AppWindows.h"
#include "platform/linux/windows/FocusKeeper.h"

namespace vellory {

namespace {

/// How long a new window manager may take to list the windows that it found, in seconds.
constexpr double settleSeconds = 3;

} // namespace

class LinuxRunningApps::Session {
  public:
    Session(const Options& options, std::shared_ptr<DesktopEntries> entries, EventLoop& loop,
            Scheduler& scheduler)
        : entries_(std::move(entries)), loop_(loop), scheduler_(scheduler),
          connection_(X11Connection::open(options.environment.value("DISPLAY"))),
          starts_(std::make_shared<AppStarts>(options.environment, connection_.get(), scheduler)),
          presence_({.processStart = processStart,
                     .isExpected = [this](const BundleID& id) { return starts_->isExpected(id); }},
                    secondsSinceBoot()),
          units_(options.environment, loop,
                 [this](const std::string& unit, SystemdUnits::Change change) {
                     noteUnit(unit, change);
                 }) {
        if (connection_ == nullptr) {
            return;
        }
        windows_.emplace(*connection_, entries_, [this](const std::string& startupId) {
            return starts_->appOf(startupId);
        });
        watch_ = loop_.watchReadable(connection_->fileDescriptor(), [this] { processEvents(); });
        windowManager_ = connection_->windowManager();
        presence_.begin(read());
        lookAfterEvents();
    }

    std::vector<AppWindow> windows() {
        auto windows = read();
        lookAfterEvents();
        return windows;
    }

    std::vector<AppWindow> windowsOf(const BundleID& id) {
        auto all = windows();
        std::erase_if(all, [&](const AppWindow& window) { return window.app != id; });
        return all;
    }

    void open(const InstalledApp& app, Open mode, Completion completion) {
        const bool isBackground = mode == Open::inBackground;
        if (mode != Open::newInstance &&
            ((isBackground ? showAgain(app.bundleID) : activate(app.bundleID)) ||
             starts_->isUnderWay(app.bundleID))) {
            starts_->report(std::move(completion));
            return;
        }
        if (isBackground) {
            keepFocusFrom(app.bundleID, {});
        }
        const bool isAnother = mode == Open::newInstance && !windowsOf(app.bundleID).empty();
        start({.app = app,
               .file = {},
               .action = isAnother ? DesktopEntryFile::newWindowAction(app.url) : "",
               .focus = isBackground ? AppStarts::Focus::unwanted : AppStarts::Focus::wanted},
              std::move(completion));
    }

    void start(AppStarts::Request request, Completion completion) {
        request.file = fileOf(request.app);
        starts_->start(std::move(request), std::move(completion));
        lookAfterEvents();
    }

    bool activate(const BundleID& id) {
        keeper_.drop(id);
        auto windows = windowsOf(id);
        if (windows.empty()) {
            return false;
        }
        windows = windows_->stacked(std::move(windows));
        // Iconified windows keep their old place in the stack or lose it: an open one is more
        // recent.
        const auto open = std::ranges::find_if(windows.rbegin(), windows.rend(),
                                               [](const AppWindow& w) { return !w.isHidden; });
        const AppWindow& front = open == windows.rend() ? windows.back() : *open;
        keeper_.drop(id, front.window);
        giveFocus(front.window);
        lookAfterEvents();
        return true;
    }

    bool hide(const BundleID& id) {
        return forWindowsOf(id, [&](const AppWindow& window) {
            keeper_.release(window.window);
            connection_->sendToWindowManager(window.window, connection_->atom("WM_CHANGE_STATE"),
                                             {XCB_ICCCM_WM_STATE_ICONIC});
        });
    }

    /// Whether the app runs; if it was hidden as a whole, it is not any more.
    bool showAgain(const BundleID& id) {
        const auto windows = windowsOf(id);
        if (std::ranges::all_of(windows, &AppWindow::isHidden)) {
            unhide(id);
        }
        return !windows.empty();
    }

    bool unhide(const BundleID& id) {
        const auto windows = windowsOf(id);
        std::vector<xcb_window_t> hidden;
        for (const AppWindow& window : windows) {
            if (window.isHidden) {
                hidden.push_back(window.window);
            }
        }
        if (!hidden.empty()) {
            keepFocusFrom(id, hidden);
            for (const xcb_window_t window : hidden) {
                xcb_map_window(connection_->get(), window);
            }
            connection_->flush();
        }
        return !windows.empty();
    }

    bool quit(const BundleID& id) {
        const xcb_timestamp_t time = isConnected() ? connection_->serverTime() : 0;
        return forWindowsOf(id, [&](const AppWindow& window) {
            xcb_ewmh_request_close_window(connection_->ewmh(), connection_->screenNumber(),
                                          window.window, time, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER);
        });
    }

    void observe(Observer observer) { observer_ = std::move(observer); }

  private:
    bool isConnected() const { return connection_ != nullptr && connection_->isAlive(); }

    std::vector<AppWindow> read() {
        auto windows = windows_ ? windows_->read() : std::nullopt;
        return std::move(windows).value_or(std::vector<AppWindow>());
    }

    xcb_window_t activeWindow() {
        const auto active = connection_->values(connection_->requestProperty(
            connection_->root(), connection_->ewmh()->_NET_ACTIVE_WINDOW));
        return active.empty() ? xcb_window_t{XCB_WINDOW_NONE} : active.front();
    }

    void giveFocus(xcb_window_t window) {
        xcb_ewmh_request_change_active_window(connection_->ewmh(), connection_->screenNumber(),
                                              window, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER,
                                              connection_->serverTime(), XCB_WINDOW_NONE);
        connection_->flush();
    }

    void keepFocusFrom(const BundleID& id, const std::vector<xcb_window_t>& shown) {
        if (isConnected()) {
            keeper_.begin(id, shown, activeWindow(), secondsSinceBoot());
        }
    }

    /// Gives the focus back when an app has taken it that was opened in the background.
    void keepFocus() {
        const double now = secondsSinceBoot();
        if (!keeper_.isOn(now)) {
            return;
        }
        const xcb_window_t active = activeWindow();
        const auto windows = read();
        const auto found = std::ranges::find(windows, active, &AppWindow::window);
        for (const AppWindow& window : windows) {
            keeper_.windowCame(window.app, window.window, now);
        }
        // One that is not listed has only just come; it will be, and then its app is known.
        if (active == XCB_WINDOW_NONE || !windows_->isListed(active)) {
            return;
        }
        if (const auto back =
                keeper_.focused(active, found == windows.end() ? "" : found->app, now)) {
            giveFocus(*back);
        }
    }

    bool forWindowsOf(const BundleID& id, const std::function<void(const AppWindow&)>& action) {
        const auto windows = windowsOf(id);
        std::ranges::for_each(windows, action);
        if (!windows.empty()) {
            connection_->flush();
        }
        return !windows.empty();
    }

    /// The app's entry: where the last scan found it, once an update has moved what its link led
    /// to.
    std::filesystem::path fileOf(const InstalledApp& app) const {
        std::error_code error;
        const DesktopEntry* known =
            std::filesystem::exists(app.url, error) ? nullptr : entries_->find(app.bundleID);
        return known == nullptr ? app.url : known->file;
    }

    void processEvents() {
        isPending_ = false;
        if (!isConnected()) {
            watch_.reset(); // Else the closed descriptor would be reported without end.
            return;
        }
        bool isChanged = false;
        for (const x11::Event& event : connection_->takeEvents()) {
            isChanged = windows_->noteEvent(*event) || isChanged;
        }
        if (isChanged) {
            compare();
        }
        if (isConnected()) {
            keepFocus();
        }
        lookAfterEvents();
    }

    /// Events that came with a reply are not seen by whoever watches the descriptor.
    void lookAfterEvents() {
        if (isConnected() && !isPending_ && connection_->hasUnseenEvents()) {
            isPending_ = true;
            spentPending_ = std::move(pending_);
            pending_ = scheduler_.after(0, [this] { processEvents(); });
        }
    }

    /// Tells the observer which apps were started or have lost their last window.
    void compare() {
        const auto manager = connection_->windowManager();
        if (manager != windowManager_) {
            // A window manager that starts takes over the windows one by one: nobody has quit.
            windowManager_ = manager;
            isSettling_ = true;
            spentSettling_ = std::move(settling_);
            settling_ = scheduler_.after(settleSeconds, [this] {
                isSettling_ = false;
                compare();
            });
        }
        if (!manager) {
            return;
        }
        const auto missing =
            isSettling_ ? AppPresence::Missing::stillListed : AppPresence::Missing::quit;
        const auto news = presence_.compare(read(), missing, secondsSinceBoot());
        for (const BundleID& id : news.withNewWindows) {
            starts_->end(id);
        }
        tell(news.launched, news.quit, news.isChangedBeside);
    }

    void noteUnit(const std::string& unit, SystemdUnits::Change change) {
        if (change == SystemdUnits::Change::went) {
            presence_.unitWent(unit, secondsSinceBoot());
            return;
        }
        const auto& entries = entries_->lastRead();
        for (const std::string& id : appIdsOfUnit(unit)) {
            const auto entry = entries.find(id);
            if (entry == entries.end()) {
                continue;
            }
            // What menus do not show is a part of the desktop, not an app that somebody starts.
            if (entry->second.isShown && presence_.unitCame(id, unit, secondsSinceBoot())) {
                tell({id}, {}, false);
            }
            return;
        }
    }

    void tell(const std::vector<BundleID>& launched, const std::vector<BundleID>& quit,
              bool isChangedBeside) const {
        // Callbacks may ask this object again or replace the observer.
        const Observer observer = observer_;
        for (const BundleID& id : launched) {
            if (observer.launched) {
                observer.launched(id);
            }
        }
        for (const BundleID& id : quit) {
            if (observer.quit) {
                observer.quit(id);
            }
        }
        if (isChangedBeside && observer.changed) {
            observer.changed();
        }
    }

    std::shared_ptr<DesktopEntries> entries_;
    EventLoop& loop_;
    Scheduler& scheduler_;
    std::unique_ptr<X11Connection> connection_;
    std::shared_ptr<AppStarts> starts_;
    std::optional<AppWindows> windows_;
    std::optional<xcb_window_t> windowManager_;
    AppPresence presence_;
    FocusKeeper keeper_;
    Observer observer_;
    bool isPending_ = false;
    bool isSettling_ = false;
    Scheduler::Handle pending_;
    Scheduler::Handle settling_;
    // Timers that have done their work; one of them may be running right now.
    Scheduler::Handle spentPending_;
    Scheduler::Handle spentSettling_;
    EventLoop::Handle watch_;
    SystemdUnits units_; ///< last: what it tells goes to all of the above
};

LinuxRunningApps::LinuxRunningApps(const Options& options, std::shared_ptr<DesktopEntries> entries,
                                   EventLoop& loop, Scheduler& scheduler)
    : session_(std::make_unique<Session>(options, std::move(entries), loop, scheduler)) {}

LinuxRunningApps::~LinuxRunningApps() = default;

std::vector<RunningApp> LinuxRunningApps::list() const {
    std::vector<RunningApp> apps;
    for (const AppWindow& window : session_->windows()) {
        const auto known = std::ranges::find(apps, window.app, &RunningApp::bundleID);
        if (known == apps.end()) {
            apps.push_back({window.app, window.pid, true, window.isHidden});
        } else {
            known->isHidden = known->isHidden && window.isHidden;
        }
    }
    return apps;
}

void LinuxRunningApps::open(const InstalledApp& app, Open mode, Completion completion) {
    session_->open(app, mode, std::move(completion));
}

void LinuxRunningApps::perform(const InstalledApp& app, const std::string& action,
                               Completion completion) {
    session_->start({.app = app, .file = {}, .action = action}, std::move(completion));
}

void LinuxRunningApps::openFile(const InstalledApp& app, const std::filesystem::path& file,
                                Completion completion) {
    openLink(app, FileLinks::linkTo(file).value_or(file.string()), std::move(completion));
}

void LinuxRunningApps::openLink(const InstalledApp& app, const std::string& link,
                                Completion completion) {
    session_->start({.app = app, .file = {}, .links = {link}}, std::move(completion));
}

bool LinuxRunningApps::activate(const BundleID& id) {
    return session_->activate(id);
}

bool LinuxRunningApps::hide(const BundleID& id) {
    return session_->hide(id);
}

bool LinuxRunningApps::unhide(const BundleID& id) {
    return session_->unhide(id);
}

bool LinuxRunningApps::quit(const BundleID& id) {
    return session_->quit(id);
}

void LinuxRunningApps::observe(Observer observer) {
    session_->observe(std::move(observer));
}

std::vector<AppWindow> LinuxRunningApps::windows() {
    return session_->windows();
}

} // namespace vellory
