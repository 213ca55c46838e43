// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vellory {

/// The App Store category ("public.app-category.music") of an app that declares these categories of
/// the desktop menu's registry. A narrow category (`Spreadsheet`) decides over a main one
/// (`Office`), whatever their order; nothing when none of them says what the app is for.
std::optional<std::string> appStoreCategory(const std::vector<std::string>& categories);

} // namespace vellory
