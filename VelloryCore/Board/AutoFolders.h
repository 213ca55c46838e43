// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Board/Board.h"
#include "Support/Text.h"
#include "Support/Uuid.h"

/// A board made from nothing but the installed apps: folders by the category under which each app
/// is sold, the way the first board is made.
namespace vellory::AutoFolders {

/// An app's category, such as "public.app-category.developer-tools".
using CategoryOf = std::function<std::optional<std::string>(const InstalledApp&)>;

/// The category that an app's bundle declares.
std::optional<std::string> categoryOf(const InstalledApp& app);

/// The title of the folder for apps of a category; nothing for one that gets no folder.
std::optional<std::string_view> folderTitleForCategory(const std::optional<std::string>& category);

/// The board of `apps`: the folders by title, then the loose apps by name. A folder holds at least
/// `minimum` apps, sorted by name; apps of smaller groups stay loose. What the system keeps among
/// its utilities declares no category and is known by where it lies.
Board boardFor(const std::vector<InstalledApp>& apps, std::size_t minimum,
               const CategoryOf& category, const Text::Collator& collator, const UuidSource& uuids);

} // namespace vellory::AutoFolders
