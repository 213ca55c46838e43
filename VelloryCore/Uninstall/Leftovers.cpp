// SPDX-License-Identifier: Apache-2.0
#include "Uninstall/Leftovers.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "Apps/WellKnownApps.h"
#include "Support/Text.h"
#include "Uninstall/DiskUsage.h"

namespace vellory::Leftovers {

namespace fs = std::filesystem;

namespace {

/// A place made of one name: the file or folder `folder/<name><suffix>` under Library.
struct Place {
    std::string_view folder;
    std::string_view suffix;
    std::string_view kind;
};

constexpr std::array<Place, 10> placesByIdentifier = {{
    {"Application Support", "", "App data"},
    {"Caches", "", "Cache"},
    {"HTTPStorages", "", "Web data"},
    {"HTTPStorages", ".binarycookies", "Cookies"},
    {"WebKit", "", "Web data"},
    {"Preferences", ".plist", "Settings"},
    {"Saved Application State", ".savedState", "Saved windows"},
    {"Containers", "", "Sandbox container"},
    {"Application Scripts", "", "Scripts"},
    {"Cookies", ".binarycookies", "Cookies"},
}};

constexpr std::array<Place, 3> placesByName = {{
    {"Application Support", "", "App data"},
    {"Logs", "", "Logs"},
    {"Caches", "", "Cache"},
}};

/// Folders whose entries are matched against the identifier.
constexpr std::array<Place, 2> searchedFolders = {{
    {"LaunchAgents", "", "Login helper"},
    {"Group Containers", "", "Shared data"},
}};

/// Names that many apps go by.
constexpr std::array<std::string_view, 9> genericNames = {
    "app", "apps", "helper", "launcher", "update", "updater", "installer", "uninstaller", "setup"};

/// Whether `name` names an entry of a folder and nothing else.
bool isFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && std::ranges::none_of(name, [](char c) {
        return c == '/' || static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
    });
}

bool isIdentifier(std::string_view id) {
    return isFileName(id) && Text::length(id) >= 4 && id.contains('.') && !id.contains("..") &&
           id.front() != '.' && id.back() != '.';
}

bool isTellingName(std::string_view name) {
    return isFileName(name) && Text::length(name) >= 3 &&
           std::ranges::find(genericNames, Text::lowercased(name)) == genericNames.end();
}

/// Why an entry of a searched folder would belong to the app; nothing when it would not.
std::optional<Evidence> evidenceIn(std::string_view entry, std::string_view id) {
    if (entry.starts_with(id)) {
        const std::string_view rest = entry.substr(id.size());
        if (rest.empty() || rest == ".plist") {
            return Evidence::identifier;
        }
        return rest.front() == '.' ? Evidence::identifierAndMore : Evidence::longerIdentifier;
    }
    if (entry.ends_with(id) && entry.size() > id.size() &&
        entry[entry.size() - id.size() - 1] == '.') {
        return Evidence::prefixedIdentifier;
    }
    return std::nullopt;
}

/// The names inside a folder in the order of their bytes; none when it cannot be read.
std::vector<std::string> entriesOf(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        names.push_back(entry->path().filename().native());
    }
    std::ranges::sort(names);
    return names;
}

class Search {
  public:
    explicit Search(const fs::path& home) : library_(home / "Library") {
        std::error_code error;
        home_ = fs::canonical(home, error);
    }

    void look(const Place& place, std::string_view name, Evidence evidence) {
        if (isInsideHome(place.folder)) {
            add(place, std::string(name).append(place.suffix), evidence);
        }
    }

    void lookThrough(const Place& place, std::string_view id) {
        if (!isInsideHome(place.folder)) {
            return;
        }
        for (const std::string& entry : entriesOf(library_ / place.folder)) {
            if (const auto evidence = evidenceIn(entry, id)) {
                add(place, entry, *evidence);
            }
        }
    }

    std::vector<Item> found() && { return std::move(found_); }

  private:
    /// A folder that is a link to another disk holds what that disk's owner put there.
    bool isInsideHome(std::string_view folder) const {
        std::error_code error;
        const fs::path real = fs::canonical(library_ / folder, error);
        return !error && !home_.empty() && std::ranges::mismatch(home_, real).in1 == home_.end();
    }

    void add(const Place& place, const std::string& name, Evidence evidence) {
        fs::path url = (library_ / place.folder / name).lexically_normal();
        std::error_code error;
        if (fs::exists(fs::symlink_status(url, error)) && listed_.insert(url.native()).second) {
            const std::int64_t bytes = size(url);
            found_.push_back({std::move(url), std::string(place.kind), bytes, evidence});
        }
    }

    fs::path home_;
    fs::path library_;
    std::set<std::string> listed_;
    std::vector<Item> found_;
};

} // namespace

bool canUninstall(const InstalledApp& app) {
    return !app.url.lexically_normal().native().starts_with("/System/") &&
           !app.bundleID.starts_with("com.apple.") && app.bundleID != WellKnownApps::vellory;
}

std::vector<Item> find(const BundleID& bundleID, std::string_view appName, const fs::path& home) {
    if (!isIdentifier(bundleID) || !home.is_absolute()) {
        return {};
    }
    Search search(home);
    for (const Place& place : placesByIdentifier) {
        search.look(place, bundleID, Evidence::identifier);
    }
    if (const std::string_view name = Text::trimmed(appName); isTellingName(name)) {
        for (const Place& place : placesByName) {
            search.look(place, name, Evidence::name);
        }
    }
    for (const Place& folder : searchedFolders) {
        search.lookThrough(folder, bundleID);
    }
    return std::move(search).found();
}

std::int64_t size(const fs::path& place) {
    return DiskUsage::allocated(place);
}

} // namespace vellory::Leftovers
