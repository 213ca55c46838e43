// SPDX-License-Identifier: Apache-2.0
#include "Apps/AppDiscovery.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "Support/AtomicFile.h"

namespace vellory::AppDiscovery {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view bundleExtension = ".app";

/// Real ones take a few kilobytes; a scan reads one for each of many hundred bundles.
constexpr std::size_t largestInformation = 4U * 1024U * 1024U;

std::optional<PropertyList::Value> dictionaryAt(const fs::path& file) {
    const auto bytes = AtomicFile::read(file, largestInformation);
    if (!bytes) {
        return std::nullopt;
    }
    auto list = PropertyList::parse(*bytes);
    if (!list || list->dictionary() == nullptr) {
        return std::nullopt;
    }
    return *std::move(list);
}

const std::string* stringAt(const PropertyList::Value& dictionary, std::string_view key) {
    const PropertyList::Value* value = dictionary.find(key);
    return value == nullptr ? nullptr : value->string();
}

/// Older bundles spell a flag as a number or a text.
bool isSet(const PropertyList::Value& dictionary, std::string_view key) {
    const PropertyList::Value* value = dictionary.find(key);
    if (value == nullptr) {
        return false;
    }
    if (const bool* flag = value->boolean()) {
        return *flag;
    }
    if (const std::int64_t* number = value->integer()) {
        return *number != 0;
    }
    const std::string* text = value->string();
    if (text == nullptr) {
        return false;
    }
    const std::string lower = Text::lowercased(*text);
    return lower == "1" || lower == "yes" || lower == "true";
}

std::string withoutExtension(std::string_view name) {
    return Text::replacingAll(name, bundleExtension, "");
}

/// The name a bundle goes by within itself: the one to show, else the short one.
const std::string* ownName(const PropertyList::Value& information) {
    const std::string* name = stringAt(information, "CFBundleDisplayName");
    return name != nullptr ? name : stringAt(information, "CFBundleName");
}

/// How the bundle's folders may spell a language: "pt-BR" as "pt-BR", "pt_BR" or "pt".
std::vector<std::string> spellings(const std::string& language) {
    std::string underscored = language;
    std::ranges::replace(underscored, '-', '_');
    return {language, underscored, language.substr(0, language.find_first_of("-_"))};
}

/// The bundle's name in the first of the languages that it speaks.
std::optional<std::string> localizedName(const fs::path& bundle, const Languages& languages) {
    const fs::path resources = bundle / "Contents" / "Resources";
    // One table of all languages, as newer bundles have it, or a folder for each.
    const auto table = dictionaryAt(resources / "InfoPlist.loctable");
    for (const std::string& language : languages) {
        for (const std::string& spelling : spellings(language)) {
            // A language names one folder and never a way out of the bundle.
            if (spelling.empty() || spelling.find('/') != std::string::npos) {
                continue;
            }
            if (const auto* texts = table ? table->find(spelling) : nullptr) {
                if (const std::string* name = ownName(*texts)) {
                    return *name;
                }
            }
            if (const auto texts =
                    dictionaryAt(resources / (spelling + ".lproj") / "InfoPlist.strings")) {
                if (const std::string* name = ownName(*texts)) {
                    return *name;
                }
            }
        }
    }
    return std::nullopt;
}

std::string displayName(const fs::path& bundle, const PropertyList::Value& information,
                        const Languages& languages) {
    const std::string fileName = withoutExtension(bundle.filename().string());
    const std::string* own = ownName(information);
    const bool isRenamed = own == nullptr || withoutExtension(*own) != fileName;
    if (!languages.empty() && !isRenamed) {
        if (const auto localized = localizedName(bundle, languages)) {
            return withoutExtension(*localized);
        }
    }
    // What the file system spells ":" was typed as "/": the two change places on macOS.
    return Text::replacingAll(fileName, ":", "/");
}

/// The entries of a folder that are not hidden, by name: listings have no order of their own.
std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::vector<fs::path> found;
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
        if (!entries->path().filename().string().starts_with('.')) {
            found.push_back(entries->path());
        }
    }
    std::ranges::sort(found);
    return found;
}

bool isBundle(const fs::path& entry) {
    return entry.extension() == bundleExtension;
}

} // namespace

std::vector<fs::path> defaultRoots(const fs::path& home, const fs::path& volumes) {
    std::vector<fs::path> roots = {
        "/Applications",
        "/Applications/Utilities",
        "/Applications/Setapp",
        "/System/Applications",
        "/System/Applications/Utilities",
        "/System/Library/CoreServices/Applications",
        home / "Applications",
        home / "Applications" / "Chrome Apps.localized",
    };
    for (const fs::path& volume : entriesOf(volumes)) {
        if (volume.filename() != "Macintosh HD") {
            roots.push_back(volume / "Applications");
        }
    }
    return roots;
}

std::vector<InstalledApp> scan(const std::vector<fs::path>& roots, const Text::Collator& collator,
                               const Languages& languages) {
    std::vector<InstalledApp> apps;
    std::set<BundleID> taken;
    std::set<fs::path> visited; // some roots lie within others
    const auto visit = [&](const fs::path& bundle) {
        if (!visited.insert(bundle).second) {
            return;
        }
        auto app = appAt(bundle, languages);
        if (app && taken.insert(app->bundleID).second) {
            apps.push_back(*std::move(app));
        }
    };
    for (const fs::path& root : roots) {
        for (const fs::path& entry : entriesOf(root)) {
            if (isBundle(entry)) {
                visit(entry);
                continue;
            }
            for (const fs::path& inner : entriesOf(entry)) {
                if (isBundle(inner)) {
                    visit(inner);
                }
            }
        }
    }
    Text::sortByName(apps, collator, [](const InstalledApp& app) { return app.name; });
    return apps;
}

std::optional<InstalledApp> appAt(const fs::path& bundle, const Languages& languages) {
    const auto facts = information(bundle);
    if (!facts) {
        return std::nullopt;
    }
    const std::string* id = stringAt(*facts, "CFBundleIdentifier");
    if (id == nullptr || id->empty() || isSet(*facts, "LSBackgroundOnly")) {
        return std::nullopt;
    }
    std::error_code error;
    fs::path location = fs::canonical(bundle, error);
    if (error) {
        return std::nullopt;
    }
    return InstalledApp{*id, displayName(bundle, *facts, languages), std::move(location)};
}

std::optional<PropertyList::Value> information(const fs::path& bundle) {
    if (auto facts = dictionaryAt(bundle / "Contents" / "Info.plist")) {
        return facts;
    }
    return dictionaryAt(bundle / "Info.plist");
}

} // namespace vellory::AppDiscovery
