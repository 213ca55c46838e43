// SPDX-License-Identifier: Apache-2.0
#include "Ask/AskFallback.h"

#include <algorithm>
#include <set>
#include <utility>

#include "Ask/AskResolve.h"
#include "Ask/AskTemplates.h"
#include "Search/AppKeywords.h"
#include "Support/Text.h"

namespace vellory::AskFallback {

namespace {

using Stems = std::set<std::string>;
using Template = AskTemplates::Template;

constexpr std::size_t bestOfFreeRequest = 4;
constexpr std::size_t appsOfFreeRequest = 5;
/// Shorter words of a request name too many apps by chance.
constexpr std::size_t shortestNameWord = 4;

/// Apps in the order in which they were chosen, each once.
class Choice {
  public:
    void add(const AskApp& app) {
        if (taken_.insert(app.id).second) {
            apps_.push_back(app.id);
        }
    }
    void keepFirst(std::size_t count) { apps_.resize(std::min(apps_.size(), count)); }

    const std::set<BundleID>& taken() const { return taken_; }
    const std::vector<BundleID>& apps() const { return apps_; }

  private:
    std::vector<BundleID> apps_;
    std::set<BundleID> taken_;
};

/// Whether every word of a name, and there is one, is in the request.
bool names(const Stems& request, std::string_view name) {
    const auto own = words(name);
    return !own.empty() &&
           std::ranges::all_of(own, [&](const auto& stem) { return request.contains(stem); });
}

const Template* templateFor(const Stems& request) {
    const auto isTriggered = [&](const Template& task) {
        return std::ranges::any_of(task.triggers, [&](std::string_view trigger) {
            return request.contains(AppKeywords::stem(trigger));
        });
    };
    const auto task = std::ranges::find_if(AskTemplates::all, isTriggered);
    return task != AskTemplates::all.end() ? &*task : nullptr;
}

/// The words of a request that may name apps: not those that selected the task.
Stems namingWords(Stems request, const Template* task) {
    if (task != nullptr) {
        for (const std::string_view trigger : task->triggers) {
            request.erase(AppKeywords::stem(trigger));
        }
    }
    std::erase_if(request, [](const std::string& stem) {
        return Text::length(stem) < shortestNameWord ||
               std::ranges::find(AppKeywords::stopWords, stem) != AppKeywords::stopWords.end();
    });
    return request;
}

void fillFromTemplate(AskPlan& plan, Choice& choice, const Template& task, const AskApps& apps) {
    for (const std::string_view need : task.needs) {
        if (const AskApp* best = apps.best(need, choice.taken())) {
            choice.add(*best);
        }
    }
    plan.name = task.name;
    plan.symbol = task.symbol;
    plan.arrangement = task.arrangement;
    plan.hideOthers = task.hideOthers;
}

} // namespace

std::vector<std::string> words(std::string_view text) {
    auto tokens = AppKeywords::tokens(text);
    for (std::string& token : tokens) {
        token = AppKeywords::stem(token);
    }
    return tokens;
}

std::optional<AskPlan> plan(std::string_view request, const AskApps& apps,
                            const std::vector<Workspace>& workspaces,
                            const std::vector<std::string>& layouts) {
    const auto list = words(request);
    const Stems stems(list.begin(), list.end());
    if (stems.empty()) {
        return std::nullopt;
    }
    AskPlan plan;
    plan.urls = AskResolve::urls(request);
    const auto layout =
        std::ranges::find_if(layouts, [&](const auto& name) { return names(stems, name); });
    if (layout != layouts.end()) {
        plan.gridLayout = *layout;
    }

    const auto saved = std::ranges::find_if(
        workspaces, [&](const Workspace& workspace) { return names(stems, workspace.name); });
    if (saved != workspaces.end()) {
        plan.name = saved->name;
        plan.symbol = saved->symbol;
        plan.apps = saved->appIDs();
        plan.basedOn = saved->id;
        return plan;
    }

    Choice choice;
    const Template* task = templateFor(stems);
    if (task != nullptr) {
        fillFromTemplate(plan, choice, *task, apps);
    } else {
        const auto ranked = apps.rank(request);
        for (std::size_t i = 0; i < std::min(ranked.size(), bestOfFreeRequest); ++i) {
            choice.add(*ranked[i]);
        }
    }
    for (const AskApp* app : apps.named(namingWords(stems, task))) {
        choice.add(*app);
    }
    if (choice.apps().empty() && plan.urls.empty()) {
        return std::nullopt;
    }
    if (task == nullptr) {
        choice.keepFirst(appsOfFreeRequest);
        plan.name = Text::capitalized(AskResolve::nameFrom(request));
        plan.symbol = AskResolve::plainSymbol;
        plan.arrangement = choice.apps().size() <= 1 ? Arrangement::focus : Arrangement::split;
    }
    plan.apps = choice.apps();
    return plan;
}

} // namespace vellory::AskFallback
