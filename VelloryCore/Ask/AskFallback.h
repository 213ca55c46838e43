// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Ask/AskApps.h"
#include "Ask/AskPlan.h"
#include "Workspaces/Workspace.h"

/// The planner that needs no language model: it goes by the words of a request, the purposes of the
/// installed apps, a table of tasks (`AskTemplates`), and the names of what the user has saved.
namespace vellory::AskFallback {

/// The stems of the words of two or more characters in `text`, in order.
std::vector<std::string> words(std::string_view text);

/// A plan for the request, by the first of these that applies:
///   1. a saved workspace all of whose name's words are in the request is reused;
///   2. the first task of the table with a word of the request: the best app for each of its needs,
///      and every app that the request names;
///   3. the four apps that fit the request best, then those it names, five in all.
/// With it come the links in the request and the first saved grid layout that it names. Nothing
/// when no word, or neither an app nor a link, is found.
std::optional<AskPlan> plan(std::string_view request, const AskApps& apps,
                            const std::vector<Workspace>& workspaces,
                            const std::vector<std::string>& layouts);

} // namespace vellory::AskFallback
