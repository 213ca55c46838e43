// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Board/Layout.h"

/// Brings along the grid of another launcher: from where it keeps its data, or from a backup file
/// that the user points at. Nothing of another program is ever written.
namespace vellory::RivalImport {

/// In the order of detection and of the menu.
enum class Source { launchNext, launchOS, launchie, appGrid, buho, launchMe };

inline constexpr std::array allSources{Source::launchNext, Source::launchOS, Source::launchie,
                                       Source::appGrid,    Source::buho,     Source::launchMe};

/// The name that people know the launcher by.
std::string_view displayName(Source source);

struct ImportError {
    enum class Kind {
        unreadable,  ///< `detail` is the database's message or the file's error
        nothingFound ///< read well, but no app in it
    };
    Kind kind = Kind::nothingFound;
    std::string detail;

    friend bool operator==(const ImportError&, const ImportError&) = default;
};

using Result = std::expected<Layout, ImportError>;

/// Tells the bundle identifier of the app at a path, or nothing where there is no app.
using Resolver = std::function<std::optional<BundleID>(const std::string& path)>;

/// How often a resolver is asked within one import: it looks at the disk, and a backup made to be
/// slow could name millions of paths.
inline constexpr int maxLookups = 100'000;

/// The resolver for app bundles: asks the bundle's own information.
std::optional<BundleID> bundleIDAtPath(const std::string& path);

/// Where a launcher may keep its data under the user's home, best first, there or not.
std::vector<std::filesystem::path> candidates(Source source, const std::filesystem::path& home);

/// The launchers that have data under `home`, in the order of `allSources`.
std::vector<Source> detected(const std::filesystem::path& home);

/// The app that a text names: the path of an app bundle, a link to one, or a bundle identifier
/// (three or more parts of ASCII letters, digits and hyphens, joined by dots). A text that ends in
/// ".app" is a path first, and an identifier when the resolver knows nothing there.
std::optional<BundleID> resolve(std::string_view text, const Resolver& resolver);

/// The grid of a launcher: from the first of its places that gives an app. Places that fail are
/// passed over.
Result importLayout(Source source, const std::filesystem::path& home, const Resolver& resolver);

/// The grid in LaunchNext's database. Empty where the database holds none.
Result launchNext(const std::filesystem::path& store, const Resolver& resolver);

/// The grid in a JSON or property-list backup, or in the first backup of a folder that gives an
/// app: the largest first, those in folders below included.
Result importFile(const std::filesystem::path& location, const Resolver& resolver);

/// The grid in whatever the user chose: a LaunchNext database (extension "store") or a backup. A
/// grid without apps is `nothingFound`.
Result importChosen(const std::filesystem::path& location, const Resolver& resolver);

} // namespace vellory::RivalImport
