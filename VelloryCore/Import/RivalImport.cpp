// SPDX-License-Identifier: Apache-2.0
#include "Import/RivalImport.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <tuple>

#include "Apps/AppDiscovery.h"
#include "Import/BackupReader.h"
#include "Support/AtomicFile.h"
#include "Support/Text.h"

namespace vellory::RivalImport {

namespace fs = std::filesystem;

namespace {

struct SourceInfo {
    std::string_view name;
    std::array<std::string_view, 2> places; ///< under the home; empty where there is none
};

/// In the order of `Source`.
constexpr std::array<SourceInfo, allSources.size()> sources{{
    {"LaunchNext", {"Library/Application Support/LaunchNext/Data.store"}},
    {"LaunchOS", {"Library/Application Support/LaunchOS"}},
    {"Launchie",
     {"Library/Application Support/Launchie",
      "Library/Containers/com.launchie.app/Data/Library/Application Support"}},
    {"AppGrid", {"Library/Application Support/AppGrid"}},
    {"BuhoLaunchpad", {"Library/Application Support/BuhoLaunchpad"}},
    {"LaunchMe", {"Library/Application Support/LaunchMe"}},
}};

const SourceInfo& info(Source source) {
    return sources[static_cast<std::size_t>(source)];
}

constexpr std::array<std::string_view, 4> backupExtensions{".json", ".plist", ".launchie",
                                                           ".backup"};

// A folder is searched as far as anybody's data goes: enough for every launcher, an end for a
// folder that turns out to be a whole disk.
constexpr int maxFolderDepth = 16;
constexpr int maxFolderEntries = 20'000;
constexpr std::uintmax_t maxFolderBytes = 96U * 1024U * 1024U;

bool hasExtension(const fs::path& file, std::string_view extension) {
    return Text::lowercased(file.extension().string()) == extension;
}

struct Backup {
    fs::path file;
    std::uintmax_t size = 0;
};

/// The backups in a folder and below, largest first, equal ones by path. Links to folders are not
/// followed, so the search ends and stays inside.
std::vector<Backup> backupsIn(const fs::path& folder) {
    std::vector<Backup> backups;
    std::error_code error;
    fs::recursive_directory_iterator entries(folder, fs::directory_options::skip_permission_denied,
                                             error);
    int seen = 0;
    for (; !error && entries != fs::recursive_directory_iterator() && seen < maxFolderEntries;
         entries.increment(error), ++seen) {
        std::error_code ignored;
        if (entries.depth() >= maxFolderDepth) {
            entries.disable_recursion_pending();
        }
        const bool isBackup =
            std::ranges::any_of(backupExtensions, [&](std::string_view extension) {
                return hasExtension(entries->path(), extension);
            });
        if (isBackup && entries->is_regular_file(ignored)) {
            const std::uintmax_t size = entries->file_size(ignored);
            backups.push_back({entries->path(), ignored ? 0 : size});
        }
    }
    std::ranges::sort(backups, [](const Backup& a, const Backup& b) {
        return std::tie(b.size, a.file) < std::tie(a.size, b.file);
    });
    return backups;
}

Result importBackup(const fs::path& file, const Resolver& resolver) {
    const auto bytes = AtomicFile::read(file);
    if (!bytes) {
        return std::unexpected(ImportError{ImportError::Kind::unreadable, bytes.error().message()});
    }
    return layoutInBackup(*bytes, resolver);
}

Result nothingFound() {
    return std::unexpected(ImportError{ImportError::Kind::nothingFound, {}});
}

} // namespace

std::string_view displayName(Source source) {
    return info(source).name;
}

std::optional<BundleID> bundleIDAtPath(const std::string& path) {
    const auto information = AppDiscovery::information(path);
    const auto* id = information ? information->find("CFBundleIdentifier") : nullptr;
    const std::string* text = id != nullptr ? id->string() : nullptr;
    return text != nullptr && !text->empty() ? std::optional(*text) : std::nullopt;
}

std::vector<fs::path> candidates(Source source, const fs::path& home) {
    std::vector<fs::path> out;
    for (const std::string_view place : info(source).places) {
        if (!place.empty()) {
            out.push_back(home / place);
        }
    }
    return out;
}

std::vector<Source> detected(const fs::path& home) {
    std::vector<Source> out;
    std::ranges::copy_if(allSources, std::back_inserter(out), [&](Source source) {
        return std::ranges::any_of(candidates(source, home), [](const fs::path& place) {
            std::error_code error;
            return fs::exists(place, error);
        });
    });
    return out;
}

Result importLayout(Source source, const fs::path& home, const Resolver& resolver) {
    for (const fs::path& place : candidates(source, home)) {
        std::error_code error;
        if (!fs::exists(place, error)) {
            continue;
        }
        auto layout = source == Source::launchNext ? launchNext(place, resolver)
                                                   : importFile(place, resolver);
        if (layout && layout->appCount() > 0) {
            return layout;
        }
    }
    return nothingFound();
}

Result importFile(const fs::path& location, const Resolver& resolver) {
    std::error_code error;
    if (!fs::is_directory(location, error)) {
        return importBackup(location, resolver);
    }
    std::uintmax_t bytesLeft = maxFolderBytes;
    for (const Backup& backup : backupsIn(location)) {
        if (backup.size > bytesLeft) {
            continue;
        }
        bytesLeft -= backup.size;
        auto layout = importBackup(backup.file, resolver);
        if (layout && layout->appCount() > 0) {
            return layout;
        }
    }
    return nothingFound();
}

Result importChosen(const fs::path& location, const Resolver& resolver) {
    auto layout = hasExtension(location, ".store") ? launchNext(location, resolver)
                                                   : importFile(location, resolver);
    if (layout && layout->appCount() == 0) {
        return nothingFound();
    }
    return layout;
}

} // namespace vellory::RivalImport
