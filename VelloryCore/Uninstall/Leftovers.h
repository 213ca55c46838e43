// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "Apps/InstalledApp.h"

/// Finds what an app leaves in its user's Library folder, so that the user can put it into the
/// Trash together with the app. Looks only; touches nothing.
///
/// Places are made of exact names in a fixed list of folders: no patterns, no guesses. Every find
/// tells on what evidence it is listed, because names have been shared by apps that are strangers.
namespace vellory::Leftovers {

/// Why an item is thought to be the app's, the surest first.
enum class Evidence {
    identifier,         ///< its name is the app's identifier
    identifierAndMore,  ///< it begins with the identifier and a full stop: the app's helpers
    prefixedIdentifier, ///< it ends with a full stop and the identifier: "TEAM.com.example.app"
    name,               ///< its name is the app's name
    longerIdentifier    ///< it begins with the identifier, but goes on as another one might
};

/// A file or folder that may be a leftover.
struct Item {
    std::filesystem::path url;
    /// What it is, in words for the list: "Cache".
    std::string kind;
    /// Its size on disk, a folder's with everything inside it.
    std::int64_t bytes = 0;
    Evidence evidence = Evidence::identifier;

    /// The item's identity: its path.
    const std::string& id() const { return url.native(); }

    friend bool operator==(const Item&, const Item&) = default;
};

/// False for what belongs to the system and for this program itself.
bool canUninstall(const InstalledApp& app);

/// The leftovers of an app under `home`, in the order of the list of places; in the folders that
/// are searched by name, in the order of the bytes of their names. Each is listed once.
///
/// An identifier that is none (shorter than four characters, without a full stop, with an empty
/// part, or no possible file name) finds nothing. The name is used only if it is a possible file
/// name of three or more characters and none that says nothing ("Helper"). A folder of the list
/// that is missing, unreadable, or a link to somewhere outside of `home` is skipped. `home` must be
/// absolute.
///
/// Takes as long as looking at every file of what it finds: not for the main thread.
std::vector<Item> find(const BundleID& bundleID, std::string_view appName,
                       const std::filesystem::path& home);

/// The bytes on disk of a file, or of everything inside a folder; 0 when it cannot be read.
std::int64_t size(const std::filesystem::path& place);

} // namespace vellory::Leftovers
