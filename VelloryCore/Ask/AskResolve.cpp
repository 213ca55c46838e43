// SPDX-License-Identifier: Apache-2.0
#include "Ask/AskResolve.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <utility>

#include "Search/AppKeywords.h"
#include "Search/FuzzySearch.h"
#include "Search/PreparedNames.h"
#include "Support/Link.h"
#include "Support/Text.h"

namespace vellory::AskResolve {

namespace {

constexpr std::size_t nameLength = 32;

/// A model's plan is filled up with apps for its needs while it has no more than these.
constexpr std::size_t fillUpTo = 4;

/// What the model's tools are called. A small model puts one of them where the name belongs.
constexpr std::array<std::string_view, 3> toolNames{"findapps", "listworkspaces", "listlayouts"};

std::string_view trimmedOf(std::string_view text, std::string_view characters) {
    const std::size_t begin = text.find_first_not_of(characters);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(characters) + 1 - begin);
}

/// The pieces of `text` between white space.
std::vector<std::string_view> pieces(std::string_view text) {
    std::vector<std::string_view> out;
    const char* begin = text.data();
    std::size_t size = 0;
    for (const std::string_view character : Text::graphemes(text)) {
        if (!Text::isWhitespace(character)) {
            size += character.size();
            continue;
        }
        if (size > 0) {
            out.emplace_back(begin, size);
        }
        begin = character.data() + character.size();
        size = 0;
    }
    if (size > 0) {
        out.emplace_back(begin, size);
    }
    return out;
}

bool hasWebScheme(std::string_view text) {
    const auto beginsWith = [&](std::string_view scheme) {
        return Text::equalsIgnoringCase(text.substr(0, scheme.size()), scheme);
    };
    return beginsWith("https://") || beginsWith("http://");
}

bool isWebAddress(std::string_view text) {
    const auto link = Link::parseTyped(text);
    return link && !link->host().value_or("").empty();
}

/// Whether a piece of text is a domain by its looks: "example.com", not "3.14" or "src/main.rs".
bool isBareDomain(std::string_view text) {
    const std::size_t lastDot = text.rfind('.');
    if (lastDot == std::string_view::npos) {
        return false;
    }
    const auto characters = Text::graphemes(text);
    const auto last = Text::graphemes(text.substr(lastDot + 1));
    return Text::isLetter(characters.front()) && last.size() >= 2 &&
           std::ranges::all_of(last, Text::isLetter) &&
           std::ranges::all_of(characters, [](std::string_view c) {
               return Text::isLetter(c) || Text::isNumber(c) || c == "-" || c == "." || c == "_";
           });
}

/// Finds the app that one text means, among the same apps for many texts.
class AppFinder {
  public:
    explicit AppFinder(const std::vector<AskApp>& apps) : apps_(apps) {
        lowered_.reserve(apps.size());
        for (const AskApp& app : apps) {
            lowered_.push_back(Text::lowercased(app.name));
        }
    }

    const AskApp* find(std::string_view text) {
        if (const auto* app = byCase(text, &AskApp::id)) {
            return app;
        }
        if (const auto* app = byCase(text, &AskApp::name)) {
            return app;
        }
        if (const auto* app = byBeginning(Text::lowercased(text))) {
            return app;
        }
        return byLikeness(text);
    }

  private:
    const AskApp* byCase(std::string_view text, std::string AskApp::* field) const {
        const auto app = std::ranges::find_if(apps_, [&](const AskApp& candidate) {
            return Text::equalsIgnoringCase(candidate.*field, text);
        });
        return app != apps_.end() ? &*app : nullptr;
    }

    const AskApp* byBeginning(const std::string& text) const {
        for (std::size_t i = 0; i < apps_.size(); ++i) {
            const std::string& name = lowered_[i];
            if (name.starts_with(text) || (!name.empty() && text.starts_with(name) &&
                                           text.substr(name.size()).starts_with(' '))) {
                return &apps_[i];
            }
        }
        return nullptr;
    }

    /// Scattered letters are no likeness, though 300, what a single typo scores, is also what one
    /// of the scattered matches does.
    const AskApp* byLikeness(std::string_view text) {
        if (prepared_.size() == 0) {
            for (const AskApp& app : apps_) {
                prepared_.add(app.name);
            }
        }
        const auto matches = prepared_.rank(text);
        if (matches.empty()) {
            return nullptr;
        }
        const auto [index, score] = matches.front();
        const bool isClose = score >= 500 || score == FuzzySearch::Tier::typo;
        return isClose ? &apps_[index] : nullptr;
    }

    const std::vector<AskApp>& apps_;
    std::vector<std::string> lowered_;
    FuzzySearch::PreparedNames prepared_;
};

/// Apps in order, each once, with those that were added first.
class AppList {
  public:
    void add(const BundleID& id) {
        if (known_.insert(id).second) {
            ids_.push_back(id);
        }
    }
    const std::vector<BundleID>& ids() const { return ids_; }
    const std::set<BundleID>& known() const { return known_; }

  private:
    std::vector<BundleID> ids_;
    std::set<BundleID> known_;
};

void addNeeds(AppList& list, const std::vector<std::string>& needs, const AskApps& apps) {
    for (const std::string& need : needs) {
        if (list.ids().size() > fillUpTo) {
            return;
        }
        const bool isCovered = std::ranges::any_of(apps.all(), [&](const AskApp& app) {
            return list.known().contains(app.id) && AppKeywords::score(need, app.keywords) > 0;
        });
        if (isCovered) {
            continue;
        }
        if (const AskApp* best = apps.best(need, list.known())) {
            list.add(best->id);
        }
    }
}

std::string joined(const std::vector<std::string>& texts) {
    std::string out;
    for (const std::string& text : texts) {
        out.append(out.empty() ? "" : ", ").append(text);
    }
    return out;
}

} // namespace

std::vector<std::string> urls(std::string_view request) {
    std::vector<std::string> found;
    for (const std::string_view piece : pieces(request)) {
        const std::string_view text = trimmedOf(piece, "\".(),;");
        if (hasWebScheme(text)) {
            if (isWebAddress(text)) {
                found.emplace_back(text);
            }
        } else if (isBareDomain(text)) {
            found.push_back(std::string("https://").append(text));
        }
    }
    return found;
}

std::string nameFrom(std::string_view request) {
    return std::string(Text::prefix(Text::trimmed(request), nameLength));
}

std::vector<BundleID> bundleIDs(const std::vector<std::string>& names,
                                const std::vector<AskApp>& apps) {
    AppFinder finder(apps);
    AppList list;
    for (const std::string& name : names) {
        const std::string_view text = trimmedOf(Text::trimmed(name), "\"'.,");
        const AskApp* app = text.empty() ? nullptr : finder.find(text);
        if (app != nullptr) {
            list.add(app->id);
        }
    }
    return list.ids();
}

std::string_view issueText(ProposalError error) {
    switch (error) {
    case ProposalError::noInstalledApps:
        return "the model proposed no installed apps";
    }
    return {};
}

std::string diagnostic(const ProposedWorkspace& proposal) {
    return "needs: " + joined(proposal.needs) + "; apps: " + joined(proposal.apps);
}

std::expected<AskPlan, ProposalError> complete(const ProposedWorkspace& proposal,
                                               std::string_view request, const AskApps& apps,
                                               const std::vector<Workspace>& workspaces,
                                               const std::vector<std::string>& layouts,
                                               const KnowsSymbol& knowsSymbol) {
    AskPlan plan;
    AppList list;
    const auto saved = std::ranges::find_if(workspaces, [&](const Workspace& workspace) {
        return !proposal.existingWorkspace.empty() &&
               Text::equalsIgnoringCase(workspace.name, proposal.existingWorkspace);
    });
    if (saved != workspaces.end()) {
        plan.basedOn = saved->id;
        std::ranges::for_each(saved->appIDs(), [&](const BundleID& id) { list.add(id); });
    }
    for (const BundleID& id : bundleIDs(proposal.apps, apps.all())) {
        list.add(id);
    }
    addNeeds(list, proposal.needs, apps);
    if (list.ids().empty()) {
        return std::unexpected(ProposalError::noInstalledApps);
    }
    plan.apps = list.ids();

    for (const std::string& link : proposal.links) {
        if (hasWebScheme(link)) {
            plan.urls.push_back(link);
        } else {
            std::ranges::move(urls(link), std::back_inserter(plan.urls));
        }
    }
    const auto layout = std::ranges::find_if(layouts, [&](const std::string& name) {
        return !proposal.gridLayout.empty() && Text::equalsIgnoringCase(name, proposal.gridLayout);
    });
    if (layout != layouts.end()) {
        plan.gridLayout = *layout;
    }
    plan.symbol = knowsSymbol(proposal.symbol) ? proposal.symbol : std::string(plainSymbol);
    plan.name = Text::trimmed(proposal.name);
    if (plan.name.empty() ||
        std::ranges::find(toolNames, Text::lowercased(plan.name)) != toolNames.end()) {
        plan.name = nameFrom(request);
    }
    plan.arrangement = arrangementFromRawValue(proposal.arrangement).value_or(Arrangement::keep);
    plan.hideOthers = proposal.hideOtherApps;
    plan.note = proposal.reason;
    plan.byModel = true;
    return plan;
}

} // namespace vellory::AskResolve
