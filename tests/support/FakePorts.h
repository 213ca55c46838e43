// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/AppCatalogue.h"
#include "platform/Desktop.h"
#include "platform/FolderWatcher.h"
#include "platform/ImageChooser.h"
#include "platform/Metadata.h"
#include "platform/RunningApps.h"
#include "platform/Scheduler.h"

// The platform in memory: it does what a test sets up and records what it was asked.
namespace vellory::test {

class FakeAppCatalogue final : public AppCatalogue {
  public:
    std::vector<std::filesystem::path> defaultRoots{"/apps"};
    std::vector<InstalledApp> installed; ///< in the order in which a scan finds them
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
    std::optional<std::string> category(const InstalledApp& app) const override {
        return find(categories, app.bundleID);
    }
    AppInfo info(const InstalledApp& app) const override {
        return find(infos, app.bundleID).value_or(AppInfo{});
    }
    std::vector<AppAction> actions(const InstalledApp& app) const override {
        return find(actionsOf, app.bundleID).value_or(std::vector<AppAction>{});
    }
    std::optional<std::string> displayName(const BundleID& id) const override {
        return find(knownElsewhere, id);
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
    /// What was asked, such as "open org.mail", "new org.mail", "compose org.mail", "hide
    /// org.mail".
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
        asked.push_back((mode == Open::newInstance ? "new " : "open ") + app.bundleID);
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

    void setActivationPolicy(ActivationPolicy policy) override { policies.push_back(policy); }
    std::optional<Image> backdrop(const Area&) const override { return std::nullopt; }
    std::map<BundleID, std::string> badges() const override { return badgeTexts; }
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

    /// Lets so many seconds pass: every task that falls due runs at its moment, in order.
    void advance(double seconds) {
        const Date end = clock_.time + seconds;
        while (const auto timer = nextUntil(end)) {
            clock_.time = timer->due;
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

    Handle after(double seconds, Task task) override { return add(seconds, 0, std::move(task)); }
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

} // namespace vellory::test
