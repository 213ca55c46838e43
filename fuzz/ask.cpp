// SPDX-License-Identifier: Apache-2.0
// Whatever is typed or generated, a plan names only what exists, and the quick ranking of apps
// agrees with the plain rule.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "Ask/AskFallback.h"
#include "Ask/AskQuery.h"
#include "Ask/AskResolve.h"
#include "Ask/AskTools.h"
#include "Search/AppKeywords.h"
#include "Support/Text.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// What installed apps know of the input: its own words, so that much of it matches.
std::vector<AskApp> appsFor(std::string_view input) {
    std::vector<AskApp> apps{{"com.example.notes", "Notes", {"notes", "writing"}, 3},
                             {"com.example.meet", "Meet", {"meeting", "calendar", "photo"}, 1},
                             {"com.example.old", "Uninstall Notes", {"notes", "meeting"}, 9}};
    const auto tokens = AppKeywords::tokens(input.substr(0, 256));
    for (std::size_t i = 0; i < std::min<std::size_t>(tokens.size(), 8); ++i) {
        apps.push_back({"id" + std::to_string(i),
                        tokens[i],
                        {tokens[i], tokens[(i * 3 + 1) % tokens.size()]},
                        static_cast<int>(i % 3)});
    }
    return apps;
}

void checkRanking(std::string_view need, const AskApps& apps) {
    constexpr std::array<std::string_view, 12> emptyWords{
        "document", "documents", "doc",   "file", "files", "image",
        "images",   "tool",      "tools", "app",  "apps",  "utility"};
    std::string said;
    for (const std::string& token : AppKeywords::tokens(need)) {
        if (std::ranges::find(emptyWords, token) == emptyWords.end()) {
            said += (said.empty() ? "" : " ") + token;
        }
    }
    const auto ranked = apps.rank(need);
    for (const AskApp& app : apps.all()) {
        const bool fits = !Text::lowercased(app.name).starts_with("uninstall") &&
                          AppKeywords::score(said, app.keywords) > 0;
        require(fits == (std::ranges::find(ranked, &app) != ranked.end()));
    }
    require(apps.best(need, {}) == (ranked.empty() ? nullptr : ranked.front()));
}

void checkPlan(const AskPlan& plan, const std::vector<AskApp>& apps) {
    for (const BundleID& id : plan.apps) {
        require(std::ranges::find(apps, id, &AskApp::id) != apps.end());
        require(id != "com.example.old" || plan.byModel);
        require(std::ranges::count(plan.apps, id) == 1);
    }
    require(json::decode<AskPlan>(json::encode(plan)).has_value());
    const auto workspace = plan.workspace(Workspace::Rect{0, 0, 1440, 900}, {}, Uuid::random);
    require(workspace.windows.size() <= plan.apps.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto list = appsFor(input);
    static const Text::Collator collator("en_US");
    const AskApps apps(list, collator);
    Workspace saved;
    saved.name = std::string(input.substr(0, input.find('\n')));
    saved.items = {Workspace::Item::app("com.example.notes")};
    const std::vector<std::string> layouts{std::string(input.substr(size / 2))};

    checkRanking(input, apps);
    for (const auto& workspaces : {std::vector<Workspace>{}, std::vector{saved}}) {
        if (const auto plan = AskFallback::plan(input, apps, workspaces, layouts)) {
            checkPlan(*plan, list);
            require(plan->basedOn || plan->apps.size() + plan->urls.size() > 0);
        }
    }
    for (const std::string& url : AskResolve::urls(input)) {
        require(url.find(':') != std::string::npos && url.find(' ') == std::string::npos);
    }
    AskQuery::parse(input);
    require(!AskTools::findApps(input, apps).empty());

    auto proposal = ProposedWorkspace::parse(input).value_or(ProposedWorkspace{});
    proposal.apps.emplace_back(input);
    proposal.needs.emplace_back(input);
    proposal.links.emplace_back(input);
    if (const auto plan = AskResolve::complete(proposal, input, apps, {saved}, layouts,
                                               [](std::string_view) { return false; })) {
        require(plan->byModel && !plan->apps.empty());
        checkPlan(*plan, list);
    }
    return 0;
}
