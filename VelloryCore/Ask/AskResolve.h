// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Ask/AskApps.h"
#include "Ask/AskPlan.h"
#include "Ask/ProposedWorkspace.h"
#include "Workspaces/Workspace.h"

/// From loose words to things that exist: links, installed apps, saved workspaces and layouts.
namespace vellory::AskResolve {

/// The symbol of a plan that has no better one.
inline constexpr std::string_view plainSymbol = "sparkles";

/// The web links that a request names, in order: "https://…" and "http://…" as they stand, and bare
/// domains such as "example.com" with "https://" in front. Quotes, brackets and punctuation around
/// them do not count.
std::vector<std::string> urls(std::string_view request);

/// The first 32 characters of a request, trimmed: the name of a plan that has none.
std::string nameFrom(std::string_view request);

/// The installed apps that these texts mean, each once, in the order in which they are first meant.
/// A text is an identifier or a name in any letter case, the beginning of a name, a name with more
/// words after it, or close to a name in the eyes of `FuzzySearch`. A text that means no app is
/// dropped.
std::vector<BundleID> bundleIDs(const std::vector<std::string>& names,
                                const std::vector<AskApp>& apps);

enum class ProposalError { noInstalledApps };

/// For the settings' status line.
std::string_view issueText(ProposalError error);

/// What the model thought, for the log.
std::string diagnostic(const ProposedWorkspace& proposal);

/// Whether the desktop has a picture of that name.
using KnowsSymbol = std::function<bool(std::string_view symbol)>;

/// The plan that a model's proposal amounts to on this machine: a saved workspace that it names,
/// the installed apps that it names, and up to five apps in all the best one for each need that no
/// app yet fits; in that order. Fails when that leaves no app.
std::expected<AskPlan, ProposalError> complete(const ProposedWorkspace& proposal,
                                               std::string_view request, const AskApps& apps,
                                               const std::vector<Workspace>& workspaces,
                                               const std::vector<std::string>& layouts,
                                               const KnowsSymbol& knowsSymbol);

} // namespace vellory::AskResolve
