// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Support/UserDefaults.h"
#include "model/Ports.h"
#include "platform/AppCatalogue.h"
#include "platform/Desktop.h"
#include "platform/Displays.h"
#include "platform/FocusSource.h"
#include "platform/FolderWatcher.h"
#include "platform/HotKeys.h"
#include "platform/ImageChooser.h"
#include "platform/Metadata.h"
#include "platform/RunningApps.h"
#include "platform/Scheduler.h"
#include "platform/WindowPlacer.h"

// The platform in memory: it does what a test sets up and records what it was asked.
namespace vellory::test {

class FakeAppCatalogue final : public AppCatalogue {
  public:
    std::vector<std::filesystem::path> defaultRoots{"/apps"};
    std::vector<std::filesystem::path> subfolders; ///< that scans look into beside the roots
    std::vector<InstalledApp> installed;           ///< in the order in which a scan finds them
    std::map<BundleID, std::string> categories;
    std::map<BundleID, AppInfo> infos;
    std::map<BundleID, std::vector<AppAction>> actionsOf;
    std::map<BundleID, std::string> knownElsewhere; ///< names of apps that no scan finds

    std::vector<std::vector<std::filesystem::path>> scans; ///< the roots of each

    void install(const BundleID& id, const std::string& name) {
        installed.push_back({id, name, "/apps/" + id});
    }
    void uninstall(const BundleID& id) {
        std::erase_if(installed, [&](const InstalledApp& app) { return app.bundleID == id; });
    }

    std::vector<std::filesystem::path>
    roots(const std::vector<std::filesystem::path>& extraFolders) const override {
        auto all = defaultRoots;
        all.insert(all.end(), extraFolders.begin(), extraFolders.end());
        return all;
    }
    std::vector<InstalledApp> scan(const std::vector<std::filesystem::path>& roots) override {
        scans.push_back(roots);
        return installed;
    }
    std::vector<std::filesystem::path> scannedFolders() const override {
        auto folders = scans.back();
        folders.insert(folders.end(), subfolders.begin(), subfolders.end());
        return folders;
    }
    std::optional<std::string> category(const InstalledApp& app) const override {
        return find(categories, app.bundleID);
    }
    AppInfo info(const InstalledApp& app) const override {
        return find(infos, app.bundleID).value_or(AppInfo{});
    }
    std::vector<AppAction> actions(const InstalledApp& app) const override {
        return find(actionsOf, app.bundleID).value_or(std::vector<AppAction>{});
    }
    std::optional<InstalledApp> find(const BundleID& id) const override {
        if (const auto name = find(knownElsewhere, id)) {
            return InstalledApp{id, *name, "/elsewhere/" + id};
        }
        return std::nullopt;
    }

  private:
    template <class T>
    static std::optional<T> find(const std::map<BundleID, T>& table, const BundleID& id) {
        const auto found = table.find(id);
        return found == table.end() ? std::nullopt : std::optional(found->second);
    }
};

class FakeRunningApps final : public RunningApps {
  public:
    std::vector<RunningApp> apps;
    /// What was asked, such as "open org.mail", "new org.mail", "start org.mail" (in the
    /// background), "compose org.mail", "hide org.mail".
    std::vector<std::string> asked;
    /// What waits to be told how a start went, oldest first.
    std::vector<Completion> completions;
    Observer observer;

    void starts(const BundleID& id) {
        apps.push_back({.bundleID = id, .pid = static_cast<std::int64_t>(apps.size()) + 100});
        observer.launched(id);
    }
    void quits(const BundleID& id) {
        std::erase_if(apps, [&](const RunningApp& app) { return app.bundleID == id; });
        observer.quit(id);
    }

    std::vector<RunningApp> list() const override { return apps; }
    void open(const InstalledApp& app, Open mode, Completion completion) override {
        static const std::map<Open, std::string> verbs{{Open::bringForward, "open "},
                                                       {Open::newInstance, "new "},
                                                       {Open::inBackground, "start "}};
        asked.push_back(verbs.at(mode) + app.bundleID);
        completions.push_back(std::move(completion));
    }
    void perform(const InstalledApp& app, const std::string& action,
                 Completion completion) override {
        asked.push_back(action + " " + app.bundleID);
        completions.push_back(std::move(completion));
    }
    void openFile(const InstalledApp& app, const std::filesystem::path& file,
                  Completion completion) override {
        asked.push_back("open " + file.string() + " with " + app.bundleID);
        completions.push_back(std::move(completion));
    }
    bool activate(const BundleID& id) override { return ask("activate", id); }
    bool hide(const BundleID& id) override { return ask("hide", id); }
    bool unhide(const BundleID& id) override { return ask("unhide", id); }
    bool quit(const BundleID& id) override { return ask("quit", id); }
    void observe(Observer next) override { observer = std::move(next); }

  private:
    bool ask(const std::string& what, const BundleID& id) {
        asked.push_back(what + " " + id);
        return std::ranges::find(apps, id, &RunningApp::bundleID) != apps.end();
    }
};

class FakeDesktop final : public Desktop {
  public:
    std::vector<ActivationPolicy> policies;
    std::map<BundleID, std::string> badgeTexts;
    /// What was asked, such as "link https://a.example", "file /home/me/notes", "sound Glass".
    std::vector<std::string> asked;
    std::vector<std::string> folders; ///< open in the file manager
    std::vector<std::string> tabs;    ///< open in browsers

    void setActivationPolicy(ActivationPolicy policy) override { policies.push_back(policy); }
    std::optional<Image> backdrop(const Area&) const override { return std::nullopt; }
    std::map<BundleID, std::string> badges() const override { return badgeTexts; }
    bool openLink(const std::string& link) override {
        asked.push_back("link " + link);
        return true;
    }
    bool openFile(const std::filesystem::path& file) override {
        asked.push_back("file " + file.string());
        return true;
    }
    void playSound(const std::string& name) override { asked.push_back("sound " + name); }
    std::vector<std::string> openFolders() const override { return folders; }
    std::vector<std::string> openTabs() const override { return tabs; }
};

class FakeWindowPlacer final : public WindowPlacer {
  public:
    bool trusted = true;
    std::vector<bool> trustAsked; ///< whether each question was with a prompt
    std::map<BundleID, std::vector<Window>> windowsOf;
    /// Windows that do not take a frame, such as one that hangs.
    std::set<WindowID> stuck;
    /// What was done, such as "3 -> 10 20 300 200" and "raise 3".
    std::vector<std::string> asked;
    int readings = 0;

    bool isTrusted(bool prompt) override {
        trustAsked.push_back(prompt);
        return trusted;
    }
    std::vector<std::vector<Window>> windows(const std::vector<RunningApp>& apps) override {
        ++readings;
        std::vector<std::vector<Window>> all;
        for (const RunningApp& app : apps) {
            all.push_back(windowsOf[app.bundleID]);
        }
        return all;
    }
    bool setFrame(WindowID window, const Workspace::Rect& frame) override {
        std::ostringstream line;
        line << window << " -> " << frame.x << ' ' << frame.y << ' ' << frame.width << ' '
             << frame.height;
        asked.push_back(line.str());
        return !stuck.contains(window);
    }
    bool raise(WindowID window) override {
        asked.push_back("raise " + std::to_string(window));
        return true;
    }
};

class FakeDisplays final : public Displays {
  public:
    std::vector<Display> connected{{"Built-in Display", {0, 0, 1440, 900}}};
    std::function<void()> changed;

    /// Connects a display at the right of the others and tells so.
    void connect(const std::string& name) {
        const double x = static_cast<double>(connected.size()) * 1440;
        connected.push_back({name, {x, 0, 1440, 900}});
        changed();
    }
    void disconnect(const std::string& name) {
        std::erase_if(connected, [&](const Display& display) { return display.name == name; });
        changed();
    }

    std::vector<Display> list() const override { return connected; }
    void observe(std::function<void()> onChange) override { changed = std::move(onChange); }
};

class FakeFocusSource final : public FocusSource {
  public:
    bool isReadable = true;
    std::vector<std::string> known;
    std::optional<std::string> on;

    bool canRead() override { return isReadable; }
    std::vector<std::string> modes() override { return known; }
    std::optional<std::string> active() override { return on; }
};

class FakeHotKeys final : public HotKeys {
  public:
    Shortcuts shortcuts;
    std::set<std::string> taken; ///< names that cannot be had
    std::function<void(const std::string&)> press;

    std::set<std::string> set(const Shortcuts& next) override {
        shortcuts = next;
        return taken;
    }
    void observe(std::function<void(const std::string&)> pressed) override {
        press = std::move(pressed);
    }
};

class FakeMetadata final : public Metadata {
  public:
    AppRecords records; ///< what there is to remember
    /// The apps of each question that waits for its answer, oldest first.
    std::vector<std::vector<InstalledApp>> asked;

    /// Answers all that was asked, as if the sources had been read now.
    void answer() {
        asked.clear();
        for (auto& done : std::exchange(waiting_, {})) {
            done(records);
        }
    }

    void recall(const std::vector<InstalledApp>& apps,
                std::function<void(AppRecords)> done) override {
        asked.push_back(apps);
        waiting_.push_back(std::move(done));
    }

  private:
    std::vector<std::function<void(AppRecords)>> waiting_;
};

class FakeFolderWatcher final : public FolderWatcher {
  public:
    std::vector<std::vector<std::filesystem::path>> watched; ///< each call's folders
    std::function<void()> changed;

    void watch(const std::vector<std::filesystem::path>& folders,
               std::function<void()> onChange) override {
        watched.push_back(folders);
        changed = std::move(onChange);
    }
};

class FakeImageChooser final : public ImageChooser {
  public:
    std::vector<std::string> titles;
    /// The question that was asked last: call it for the user to choose.
    std::function<void(const std::filesystem::path&)> choose;

    void chooseImage(const std::string& title,
                     std::function<void(const std::filesystem::path&)> chosen) override {
        titles.push_back(title);
        choose = std::move(chosen);
    }
};

class FakeClock final : public Clock {
  public:
    Date time = Date::since2001(700'000'000);
    Date now() const override { return time; }
};

/// Time that passes only when a test says so, and background work that runs only then.
class FakeScheduler final : public Scheduler {
  public:
    explicit FakeScheduler(FakeClock& clock) : clock_(clock) {}

    /// By how many seconds a timer of more than ten comes early, as one of a machine may.
    double haste = 0;

    /// Lets so many seconds pass: every task that falls due runs at its moment, in order.
    void advance(double seconds) {
        const Date end = clock_.time + seconds;
        while (const auto timer = nextUntil(end)) {
            // One that fell due while the machine slept runs late.
            clock_.time = std::max(clock_.time, timer->due);
            if (timer->interval > 0) {
                timer->due = timer->due + timer->interval;
            } else {
                timer->isDone = true;
            }
            // A copy: the task may destroy its own handle.
            const Task task = timer->task;
            task();
        }
        clock_.time = end;
    }

    /// Does the first half of the background work that waits; what that returns waits in turn.
    void runBackground() {
        for (auto& work : std::exchange(background_, {})) {
            finished_.push_back(work());
        }
    }
    /// Hands results of background work to the main thread.
    void deliver() {
        for (auto& task : std::exchange(finished_, {})) {
            if (task) {
                task();
            }
        }
    }

    Handle after(double seconds, Task task) override {
        return add(seconds > 10 ? seconds - haste : seconds, 0, std::move(task));
    }
    Handle every(double seconds, Task task) override {
        return add(seconds, seconds, std::move(task));
    }
    void inBackground(std::function<Task()> work) override {
        background_.push_back(std::move(work));
    }

  private:
    struct Timer {
        Date due;
        double interval = 0;
        Task task;
        bool isDone = false;
    };
    class Cancelling final : public Pending {
      public:
        explicit Cancelling(std::shared_ptr<Timer> timer) : timer_(std::move(timer)) {}
        Cancelling(const Cancelling&) = delete;
        Cancelling& operator=(const Cancelling&) = delete;
        ~Cancelling() override { timer_->isDone = true; }

      private:
        std::shared_ptr<Timer> timer_;
    };

    Handle add(double seconds, double interval, Task task) {
        timers_.push_back(
            std::make_shared<Timer>(clock_.time + seconds, interval, std::move(task)));
        return std::make_unique<Cancelling>(timers_.back());
    }

    std::shared_ptr<Timer> nextUntil(Date end) {
        std::erase_if(timers_, [](const auto& timer) { return timer->isDone; });
        const auto next = std::ranges::min_element(
            timers_, {}, [](const auto& timer) { return timer->due.secondsSince2001; });
        return next == timers_.end() || (*next)->due > end ? nullptr : *next;
    }

    FakeClock& clock_;
    std::vector<std::shared_ptr<Timer>> timers_;
    std::vector<std::function<Task()>> background_;
    std::vector<Task> finished_;
};

/// A machine made of fakes.
struct FakePorts {
    FakeAppCatalogue catalogue;
    FakeRunningApps runningApps;
    FakeWindowPlacer windowPlacer;
    FakeDesktop desktop;
    FakeDisplays displays;
    FakeFocusSource focusSource;
    FakeHotKeys hotKeys;
    FakeMetadata metadata;
    FakeFolderWatcher folderWatcher;
    FakeImageChooser imageChooser;
    FakeClock clock;
    FakeScheduler scheduler{clock};
    MemoryDefaults defaults;

    Ports ports() {
        return {.catalogue = catalogue,
                .runningApps = runningApps,
                .windowPlacer = windowPlacer,
                .desktop = desktop,
                .displays = displays,
                .focusSource = focusSource,
                .hotKeys = hotKeys,
                .metadata = metadata,
                .folderWatcher = folderWatcher,
                .imageChooser = imageChooser,
                .clock = clock,
                .scheduler = scheduler,
                .defaults = defaults};
    }
};

} // namespace vellory::test
