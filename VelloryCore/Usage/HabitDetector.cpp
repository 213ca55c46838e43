// SPDX-License-Identifier: Apache-2.0
#include "Usage/HabitDetector.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <span>
#include <string_view>
#include <tuple>
#include <utility>

#include "Usage/HabitWindows.h"

namespace vellory::HabitDetector {

namespace {

/// A group of apps with the days on which it keeps its time.
struct Candidate {
    std::vector<AppIndex> apps;
    std::vector<const Window*> run; ///< in the order of their minutes

    /// Whether this is the stronger habit.
    bool operator<(const Candidate& other) const {
        const auto rank = [](const Candidate& c) {
            return std::tuple(-std::ssize(c.run), -std::ssize(c.apps));
        };
        return rank(*this) != rank(other) ? rank(*this) < rank(other) : apps < other.apps;
    }
};

/// Searches the groups from small to large: a group is only looked at when each group that it grew
/// from opened on enough days, and with the windows that hold it at hand.
class Search {
  public:
    Search(const std::vector<Window>& windows, std::size_t appCount, const Settings& settings,
           std::vector<std::vector<AppIndex>> matched)
        : windows_(windows), settings_(settings), matched_(std::move(matched)),
          levels_(static_cast<std::size_t>(
              std::clamp(settings.maxApps, 0, static_cast<int>(mostAppsInWindow)))) {
        for (Level& level : levels_) {
            level.places.resize(appCount);
        }
    }

    std::vector<Candidate> strongest() {
        std::vector<Place> all(windows_.size());
        for (std::uint32_t i = 0; i < all.size(); ++i) {
            all[i].window = i;
        }
        if (!levels_.empty() && settings_.limit > 0) {
            grow(all);
        }
        return std::move(best_);
    }

  private:
    /// A window that holds the group, and where in it the apps begin that the group can grow by.
    struct Place {
        std::uint32_t window = 0;
        std::uint32_t rest = 0;
    };
    /// The groups that are one app larger, by that app. Kept for the next group of the same size.
    struct Level {
        std::vector<std::vector<Place>> places;
        std::vector<AppIndex> touched;
    };

    /// Looks at every group that is `group_`, which `places` hold, and one app more.
    void grow(const std::vector<Place>& places) {
        Level& level = levels_[group_.size()];
        for (const Place& place : places) {
            const auto apps = windows_[place.window].all();
            for (std::uint32_t i = place.rest; i < apps.size(); ++i) {
                auto& larger = level.places[apps[i]];
                if (larger.empty()) {
                    level.touched.push_back(apps[i]);
                }
                larger.push_back({place.window, i + 1});
            }
        }
        for (const AppIndex app : level.touched) {
            auto& larger = level.places[app];
            group_.push_back(app);
            if (std::cmp_greater_equal(larger.size(), settings_.minDays) && opensOften(larger)) {
                if (std::cmp_greater_equal(group_.size(), settings_.minApps)) {
                    consider();
                }
                if (group_.size() < levels_.size()) {
                    grow(larger);
                }
            }
            group_.pop_back();
            larger.clear();
        }
        level.touched.clear();
    }

    /// Collects the first of `places` on each day in `firsts_`.
    bool opensOften(const std::vector<Place>& places) {
        firsts_.clear();
        for (const Place& place : places) {
            const Window& window = windows_[place.window];
            if (firsts_.empty() || firsts_.back()->day != window.day) {
                firsts_.push_back(&window);
            }
        }
        return std::cmp_greater_equal(firsts_.size(), settings_.minDays);
    }

    /// Keeps `group_` when it is among the strongest so far.
    void consider() {
        const bool full = std::cmp_greater_equal(best_.size(), settings_.limit);
        if (full && firsts_.size() < best_.back().run.size()) {
            return;
        }
        const auto run = longestRun();
        if (std::cmp_less(run.size(), settings_.minDays)) {
            return;
        }
        Candidate candidate{group_, {run.begin(), run.end()}};
        if ((full && !(candidate < best_.back())) || isMatched()) {
            return;
        }
        best_.insert(std::upper_bound(best_.begin(), best_.end(), candidate), std::move(candidate));
        if (full) {
            best_.pop_back();
        }
    }

    /// The most of `firsts_` that lie within the time spread, the earliest where several do.
    std::span<const Window* const> longestRun() {
        std::ranges::stable_sort(firsts_, {}, &Window::minute);
        std::size_t begin = 0;
        std::size_t bestBegin = 0;
        std::size_t bestSize = 0;
        for (std::size_t end = 0; end < firsts_.size(); ++end) {
            const std::int64_t latest = firsts_[end]->minute;
            while (begin < end && latest - firsts_[begin]->minute > settings_.timeSpread) {
                ++begin;
            }
            if (end + 1 - begin > bestSize) {
                bestBegin = begin;
                bestSize = end + 1 - begin;
            }
        }
        return std::span<const Window* const>(firsts_).subspan(bestBegin, bestSize);
    }

    bool isMatched() const {
        return std::ranges::any_of(matched_, [&](const std::vector<AppIndex>& set) {
            const auto shared = std::ranges::count_if(
                group_, [&](AppIndex app) { return std::ranges::binary_search(set, app); });
            return 2 * shared >= std::ssize(group_);
        });
    }

    const std::vector<Window>& windows_;
    const Settings& settings_;
    const std::vector<std::vector<AppIndex>> matched_;
    std::vector<Level> levels_; ///< by the size of the group that grows
    std::vector<AppIndex> group_;
    std::vector<const Window*> firsts_;
    std::vector<Candidate> best_; ///< the strongest first
};

/// The listed sets as far as their apps are in the log, ascending.
std::vector<std::vector<AppIndex>> known(const History& history,
                                         std::initializer_list<const AppSets*> lists) {
    std::vector<std::vector<AppIndex>> out;
    for (const AppSets* sets : lists) {
        for (const std::set<BundleID>& apps : *sets) {
            std::vector<AppIndex> indexes;
            for (const BundleID& app : apps) {
                const auto place = std::ranges::lower_bound(history.names, std::string_view(app));
                if (place != history.names.end() && *place == app) {
                    indexes.push_back(static_cast<AppIndex>(place - history.names.begin()));
                }
            }
            if (!indexes.empty()) {
                out.push_back(std::move(indexes));
            }
        }
    }
    return out;
}

Habit habit(const Candidate& candidate, const History& history) {
    Habit out;
    for (const AppIndex app : candidate.apps) {
        out.apps.emplace_back(history.names[app]);
    }
    out.days = static_cast<int>(candidate.run.size());
    for (const Window* window : candidate.run) {
        out.weekdays.insert(window->weekday);
    }
    out.minute = candidate.run[candidate.run.size() / 2]->minute;
    return out;
}

} // namespace

std::string Habit::id() const {
    std::string out;
    for (const BundleID& app : apps) {
        out.append(out.empty() ? "" : "+").append(app);
    }
    return out;
}

std::vector<Habit> detect(const HabitLog& log, const Settings& settings, const AppSets& existing,
                          const AppSets& ignoring, const AppSets& dismissed) {
    const History history(log);
    const std::vector<Window> all = windows(history, settings);
    Search search(all, history.names.size(), settings,
                  known(history, {&existing, &ignoring, &dismissed}));
    std::vector<Habit> out;
    for (const Candidate& candidate : search.strongest()) {
        out.push_back(habit(candidate, history));
    }
    return out;
}

std::vector<std::vector<BundleID>> combinations(const std::vector<BundleID>& apps,
                                                std::size_t size) {
    std::vector<std::vector<BundleID>> out;
    if (size > apps.size()) {
        return out;
    }
    std::vector<std::size_t> places(size);
    std::iota(places.begin(), places.end(), std::size_t{0});
    while (true) {
        auto& subset = out.emplace_back();
        for (const std::size_t place : places) {
            subset.push_back(apps[place]);
        }
        // The last place that can still move to the right moves, and those after it close up.
        std::size_t moving = size;
        while (moving > 0 && places[moving - 1] == apps.size() - size + moving - 1) {
            --moving;
        }
        if (moving == 0) {
            return out;
        }
        std::iota(places.begin() + static_cast<std::ptrdiff_t>(moving) - 1, places.end(),
                  places[moving - 1] + 1);
    }
}

Workspace workspace(const Habit& habit, std::string name, OpenAtTime openAtTime,
                    const UuidSource& newID) {
    Workspace out;
    out.id = newID();
    out.name = std::move(name);
    out.symbol = "sparkles";
    for (const BundleID& app : habit.apps) {
        out.items.push_back(Workspace::Item::app(app));
    }
    if (openAtTime == OpenAtTime::yes) {
        out.triggers.push_back(
            Workspace::Trigger::schedule(habit.weekdays, habit.hour(), habit.minute % 60));
    }
    return out;
}

} // namespace vellory::HabitDetector
