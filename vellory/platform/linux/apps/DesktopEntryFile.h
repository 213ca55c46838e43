// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/GLibPointers.h"

/// Reading one desktop entry as a file that anybody may have written: bounded, and never anything
/// but data.
namespace vellory::DesktopEntryFile {

inline constexpr const char* mainGroup = G_KEY_FILE_DESKTOP_GROUP;

/// The entry in `file`; null when it is no regular file, too large, or no desktop entry.
glib::KeyFile load(const std::filesystem::path& file);

/// A value in the user's language, fit to be shown; "" when there is none.
std::string localized(GKeyFile* entry, const std::string& group, const char* key);

/// A value as it stands; "" when there is none.
std::string text(GKeyFile* entry, const std::string& group, const std::string& key);

/// Its translation into a language, as it stands; "" when there is none.
std::string translation(GKeyFile* entry, const std::string& group, const char* key,
                        std::string_view language);

/// Its translation into the user's language, else the value, as it stands; "" when there is none.
std::string translation(GKeyFile* entry, const std::string& group, const char* key);

bool flag(GKeyFile* entry, const char* key);

std::vector<std::string> list(GKeyFile* entry, const char* key);

/// The group that describes an action.
std::string actionGroup(std::string_view action);

/// The action by which an app opens another window of itself, whatever it calls it; "" for none.
std::string newWindowAction(const std::filesystem::path& file);

/// `name` as one short line: control characters and those that turn the direction of the text
/// around become spaces, runs of white space one space, and the length is cut.
std::string displayable(std::string_view name);

} // namespace vellory::DesktopEntryFile
