// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/PropertyList.h"

/// Looks for newer versions of installed apps: decides whom to ask, and reads the answers. Fetching
/// and running are the caller's; nothing is ever installed.
///
/// Every answer comes from outside. One that is damaged, of another shape or larger than any honest
/// one reads as no news; a damaged entry of a list is skipped.
namespace vellory::AppUpdates {

// --- Reading what the sources answer ---------------------------------------------------------

/// The newest version that an update feed (an appcast: RSS with `sparkle:` elements) announces. Of
/// equal versions the first. Only items with a version count, and a short version, the one that
/// people read, goes before a build number.
std::optional<std::string> appcastLatest(std::string_view feed);

/// A Homebrew cask for which there is a newer version.
struct Outdated {
    std::string name;
    /// Several installed versions stand side by side: "1.0, 1.1".
    std::string installed;
    std::string current;

    friend bool operator==(const Outdated&, const Outdated&) = default;
};

/// The casks in what Homebrew prints for `homebrewArguments`, in its order.
std::vector<Outdated> brewOutdated(std::string_view output);

/// The version that the App Store's lookup service names for an app. An answer may hold one entry
/// for each platform that the app runs on: the Mac's goes before the first other.
std::optional<std::string> appStoreVersion(std::string_view reply, const BundleID& bundleID);

// --- Whom to ask -----------------------------------------------------------------------------

/// Where news of a newer version came from.
enum class Source { feed, appStore, homebrew };

/// What an installed app says about itself.
struct AppInfo {
    InstalledApp app;
    /// The version that people read; empty when the app states none.
    std::string version;
    /// The app came from the App Store: its bundle holds a receipt.
    bool fromAppStore = false;
    /// Where the app's own updater looks; empty for none.
    std::string feedUrl;

    friend bool operator==(const AppInfo&, const AppInfo&) = default;
};

/// Where in a bundle the App Store leaves its receipt.
inline constexpr std::string_view appStoreReceipt = "Contents/_MASReceipt";

/// `information` is the bundle's information dictionary.
AppInfo appInfo(const InstalledApp& app, const PropertyList::Value& information,
                bool holdsAppStoreReceipt);

/// One question to the network.
struct Request {
    Source source = Source::feed;
    std::string url;

    friend bool operator==(const Request&, const Request&) = default;
};

/// What to ask about an app. Nothing for an app of the system, for one without a version to compare
/// with, for a feed that is not fetched over https, and for an App Store app unless the user agreed
/// to `askAppStore`.
std::optional<Request> requestFor(const AppInfo& app, bool askAppStore);

/// Where Homebrew may be installed; the first one that is executable is run.
inline constexpr std::array<std::string_view, 2> homebrewPaths = {"/opt/homebrew/bin/brew",
                                                                  "/usr/local/bin/brew"};
inline constexpr std::array<std::string_view, 3> homebrewArguments = {"outdated", "--cask",
                                                                      "--json=v2"};

/// The command that upgrades a cask, for the user to paste into a terminal. Nothing for a name that
/// is none of a cask: a terminal would run whatever else it holds.
std::optional<std::string> brewUpgradeCommand(std::string_view cask);

// --- The list that is shown ------------------------------------------------------------------

/// One row: something for which there is a newer version.
struct Update {
    /// The app's name, or the cask's.
    std::string name;
    /// Empty for a cask.
    BundleID bundleID;
    std::string installed;
    std::string newer;
    Source source = Source::feed;

    friend bool operator==(const Update&, const Update&) = default;
};

/// The row for the answer to `requestFor(app, …)`; nothing when it holds no newer version.
std::optional<Update> updateFor(const AppInfo& app, Source source, std::string_view answer);

/// The rows for what Homebrew printed.
std::vector<Update> brewUpdates(std::string_view output);

/// The body behind a link; nothing when it cannot be had.
using Fetch = std::function<std::optional<std::string>(const std::string& url)>;

/// Asks about one app and waits for the answer: the body of one of the tasks that run side by side.
std::optional<Update> check(const AppInfo& app, bool askAppStore, const Fetch& fetch);

// --- What is said ----------------------------------------------------------------------------

namespace Texts {
inline constexpr std::string_view check = "Check for app updates";
inline constexpr std::string_view explanation =
    "Looks for newer versions of your apps. Apps with their own updater are checked against their "
    "update feed; Homebrew apps with `brew outdated`.";
inline constexpr std::string_view askAppStore =
    "Also ask the App Store (sends the App Store apps' IDs to Apple)";
inline constexpr std::string_view upToDate = "Everything is up to date.";
inline constexpr std::string_view copyCommand = "Copy brew command";
inline constexpr std::string_view copied = "Copied: paste it in Terminal";
} // namespace Texts

/// What the "from" column shows.
std::string_view label(Source source);

/// Opens the App Store at its list of updates: what a row with `Source::appStore` offers.
inline constexpr std::string_view appStoreUpdatesPage = "macappstore://showUpdatesPage";

} // namespace vellory::AppUpdates
