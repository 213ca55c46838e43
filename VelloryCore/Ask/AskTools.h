// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Ask/AskApps.h"
#include "Workspaces/Workspace.h"

/// What a language model is told before it plans, and what its tools answer. Every word here is
/// read by the model.
namespace vellory::AskTools {

inline constexpr std::string_view instructions =
    "You set up a Mac for a task. The user says what they are about to do. List what the task "
    "needs as short app purposes in needs (for example a client call needs video calls, notes and "
    "calendar). You can call findApps to see which installed apps fit a purpose, and "
    "listWorkspaces to see the user's saved workspaces; if a saved workspace clearly fits, put its "
    "exact name in existingWorkspace. Put an app in apps only if the user named it or findApps "
    "returned it. Never invent apps or links. Arrangement: focus for one main app, split for two "
    "main apps (a call and notes), columns or grid for three or four.";

struct Tool {
    std::string_view name;
    std::string_view description;
    /// The one argument, a text; empty for a tool that takes none.
    std::string_view argument;
    std::string_view argumentDescription;
};

inline constexpr Tool findAppsTool{
    "findApps",
    "Finds installed apps on this Mac for a purpose (for example video calls, notes, code editor, "
    "web browser, terminal) or by app name. Returns app names.",
    "purpose", "What the app is for, or an app name, in English, for example video calls"};
inline constexpr Tool listWorkspacesTool{
    "listWorkspaces", "Lists the user's saved vellory workspaces with the apps in each.", {}, {}};
inline constexpr Tool listLayoutsTool{
    "listLayouts",
    "Lists the user's saved grid layouts and the window arrangements available.",
    {},
    {}};
inline constexpr std::array<Tool, 3> all{findAppsTool, listWorkspacesTool, listLayoutsTool};

/// The names of up to eight apps, one to a line: those that fit the purpose, then those of the
/// three that it names best.
std::string findApps(std::string_view purpose, const AskApps& apps);

/// What an app is called on the grid.
using NameOf = std::function<std::string(const BundleID& id)>;

/// One line for each workspace, with its apps' names.
std::string listWorkspaces(const std::vector<Workspace>& workspaces, const NameOf& nameOf);

std::string listLayouts(const std::vector<std::string>& layouts);

} // namespace vellory::AskTools
