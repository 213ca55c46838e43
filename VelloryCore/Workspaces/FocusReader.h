// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reads the files in which the desktop notes its Focus modes and which of them is on. They belong
/// to the desktop, which may reshape them with any version: what is not where it is looked for is
/// passed over.
namespace vellory::FocusReader {

/// A Focus mode.
struct Mode {
    std::string identifier;
    std::string name; ///< as shown to the user

    friend bool operator==(const Mode&, const Mode&) = default;
};

/// Files past this size count as unreadable; honest ones are a hundred times smaller.
inline constexpr std::size_t fileLimit = 4U * 1024U * 1024U;

/// Where the files lie under a user's home folder.
std::filesystem::path defaultDirectory(const std::filesystem::path& home);

/// Whether the program may read the files: the user has to allow it.
bool canRead(const std::filesystem::path& directory);

/// All modes, in the order of their names in `locale`; equal names by identifier.
std::vector<Mode> modes(const std::filesystem::path& directory, std::string_view locale = {});

/// The mode that is on, if one is.
std::optional<Mode> active(const std::filesystem::path& directory);

// The same on the texts of the files.

/// The modes that a "ModeConfigurations.json" lists, in its order.
std::vector<Mode> modesIn(std::string_view configurations);

/// The identifier of the mode that an "Assertions.json" says is on: the last one it names.
std::optional<std::string> activeIdentifierIn(std::string_view assertions);

} // namespace vellory::FocusReader
