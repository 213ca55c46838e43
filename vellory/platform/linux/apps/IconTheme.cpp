// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/IconTheme.h"

#include <algorithm>
#include <array>
#include <limits>
#include <tuple>

#include "Support/AtomicFile.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/apps/ChangeTime.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t maxIndexBytes = 1024 * 1024;
constexpr std::size_t maxDirectories = 4096;
constexpr int maxParents = 16;
constexpr const char* group = "Icon Theme";

// In this order for icons of one name in one folder: what can be drawn at any size comes first.
constexpr std::array<std::string_view, 3> extensions{".svg", ".png", ".xpm"};

constexpr std::uint8_t vectorExtension = 0;

struct IconFile {
    std::string_view name; ///< without the extension; "" when the file is no icon
    std::uint8_t extension = 0;
};

IconFile iconFile(std::string_view file) {
    for (std::size_t i = 0; i < extensions.size(); ++i) {
        if (file.ends_with(extensions[i])) {
            return {file.substr(0, file.size() - extensions[i].size()),
                    static_cast<std::uint8_t>(i)};
        }
    }
    return {};
}

/// Whether a name from a file stays below the folder that it is looked up in.
bool staysBelow(std::string_view name) {
    return !name.empty() && !name.starts_with('/') && name.find("..") == std::string_view::npos;
}

std::vector<std::string> list(GKeyFile* file, const char* key) {
    g_key_file_set_list_separator(file, ',');
    const glib::Strings values(g_key_file_get_string_list(file, group, key, nullptr, nullptr));
    std::vector<std::string> out;
    for (char** value = values.get(); value != nullptr && *value != nullptr; ++value) {
        out.emplace_back(*value);
    }
    return out;
}

int number(GKeyFile* file, const std::string& section, const char* key, int otherwise) {
    glib::Error error;
    const int value = g_key_file_get_integer(file, section.c_str(), key, error.out());
    constexpr int largest = 1 << 14;
    return error ? otherwise : std::clamp(value, 0, largest);
}

glib::KeyFile loadKeyFile(const fs::path& file) {
    const auto content = AtomicFile::read(file, maxIndexBytes);
    glib::KeyFile loaded(g_key_file_new());
    if (!content || content->empty() ||
        !g_key_file_load_from_data(loaded.get(), content->data(), content->size(), G_KEY_FILE_NONE,
                                   nullptr)) {
        return nullptr;
    }
    return loaded;
}

} // namespace

IconTheme::IconTheme(std::string theme, std::vector<fs::path> bases,
                     std::vector<fs::path> looseFolders, std::chrono::milliseconds trust)
    : name_(std::move(theme)), bases_(std::move(bases)), looseFolders_(std::move(looseFolders)),
      trust_(trust) {}

std::vector<fs::path> IconTheme::baseFolders(const SessionEnvironment& environment) {
    std::vector<fs::path> bases{environment.home() / ".icons", environment.dataHome() / "icons"};
    for (const fs::path& folder : environment.dataDirs()) {
        bases.push_back(folder / "icons");
    }
    for (const fs::path& folder : {environment.dataHome() / "flatpak/exports/share/icons",
                                   fs::path("/var/lib/flatpak/exports/share/icons"),
                                   fs::path("/var/lib/snapd/desktop/icons")}) {
        if (std::ranges::find(bases, folder) == bases.end()) {
            bases.push_back(folder);
        }
    }
    return bases;
}

std::optional<fs::path> IconTheme::find(std::string_view name, int pixels) {
    if (const IconFile file = iconFile(name); !file.name.empty()) {
        name = file.name; // Many entries name the file instead of the icon.
    }
    if (!staysBelow(name) || name.find('/') != std::string_view::npos) {
        return std::nullopt;
    }
    const std::lock_guard lock(mutex_);
    if (!isRead_ || isStale(roots_)) {
        readAll();
    }
    auto found = lookUp(name, pixels);
    std::error_code ignored;
    if ((!found || !fs::exists(*found, ignored)) && isStale(folders_)) {
        readAll();
        found = lookUp(name, pixels);
    }
    return found;
}

bool IconTheme::isStale(Times& times) const {
    const auto now = std::chrono::steady_clock::now();
    if (now - times.seen < trust_) {
        return false;
    }
    const bool isStale = std::ranges::any_of(
        times.changed, [](const auto& entry) { return changeTime(entry.first) != entry.second; });
    if (!isStale) {
        times.seen = now;
    }
    return isStale;
}

void IconTheme::readAll() {
    isRead_ = true;
    order_.clear();
    themes_.clear();
    loose_.clear();
    roots_ = {.changed = {}, .seen = std::chrono::steady_clock::now()};
    folders_ = roots_;
    readTheme(name_, 0);
    readTheme("hicolor", 0);
    for (const fs::path& base : bases_) {
        readLoose(base);
    }
    for (const fs::path& folder : looseFolders_) {
        readLoose(folder);
    }
}

void IconTheme::readTheme(const std::string& name, int depth) {
    if (!staysBelow(name) || themes_.contains(name) || depth > maxParents) {
        return;
    }
    Theme& theme = themes_[name];
    order_.push_back(name);
    for (const fs::path& base : bases_) {
        roots_.changed[base / name] = changeTime(base / name);
        const glib::KeyFile index = loadKeyFile(base / name / "index.theme");
        if (index == nullptr || !theme.directories.empty()) {
            continue; // The first index counts.
        }
        auto names = list(index.get(), "Directories");
        std::ranges::move(list(index.get(), "ScaledDirectories"), std::back_inserter(names));
        for (const std::string& directory : names) {
            if (!staysBelow(directory) || theme.directories.size() >= maxDirectories) {
                continue;
            }
            const int scale = std::max(number(index.get(), directory, "Scale", 1), 1);
            const int size = number(index.get(), directory, "Size", 0);
            const glib::Chars type(
                g_key_file_get_string(index.get(), directory.c_str(), "Type", nullptr));
            const std::string kind = type == nullptr ? "Threshold" : type.get();
            const int threshold =
                kind == "Threshold" ? number(index.get(), directory, "Threshold", 2) : 0;
            Directory described{directory, (size - threshold) * scale, (size + threshold) * scale,
                                kind == "Scalable"};
            if (described.isScalable) {
                described.smallest = number(index.get(), directory, "MinSize", size) * scale;
                described.largest = number(index.get(), directory, "MaxSize", size) * scale;
            }
            theme.directories.push_back(std::move(described));
        }
        theme.parents = list(index.get(), "Inherits");
    }
    for (std::size_t base = 0; base < bases_.size(); ++base) {
        const fs::path folder = bases_[base] / name;
        std::error_code ignored;
        if (!fs::is_directory(folder, ignored)) {
            continue;
        }
        for (std::size_t i = 0; i < theme.directories.size(); ++i) {
            const Place place{static_cast<std::uint16_t>(base), static_cast<std::uint16_t>(i), 0};
            readFolder(folder / theme.directories[i].name, place, theme);
        }
    }
    // The map keeps its elements in place while parents are added.
    for (const std::string& parent : theme.parents) {
        if (parent != "hicolor") {
            readTheme(parent, depth + 1);
        }
    }
}

void IconTheme::readFolder(const fs::path& folder, Place place, Theme& theme) {
    folders_.changed[folder] = changeTime(folder);
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (const IconFile file = iconFile(name); !file.name.empty()) {
            place.extension = file.extension;
            theme.icons[std::string(file.name)].push_back(place);
        }
    }
}

void IconTheme::readLoose(const fs::path& folder) {
    roots_.changed[folder] = changeTime(folder);
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (const IconFile file = iconFile(name); !file.name.empty()) {
            loose_.emplace(file.name, entry->path());
        }
    }
}

std::optional<fs::path> IconTheme::lookUp(std::string_view name, int pixels) const {
    for (const std::string& themeName : order_) {
        const Theme& theme = themes_.at(themeName);
        const auto icon = theme.icons.find(name);
        if (icon == theme.icons.end()) {
            continue;
        }
        // Lower is better. A picture made smaller stays sharp, one made larger does not.
        const auto rank = [&](const Place& place) {
            const Directory& directory = theme.directories[place.directory];
            const bool isVector = place.extension == vectorExtension;
            const bool fits = pixels >= directory.smallest && pixels <= directory.largest;
            const int size = directory.isScalable ? directory.largest
                                                  : (directory.smallest + directory.largest) / 2;
            if (fits && (!directory.isScalable || isVector)) {
                return std::tuple(directory.isScalable ? 1 : 0, 0);
            }
            if (isVector) {
                return std::tuple(2, 0);
            }
            return size >= pixels ? std::tuple(3, size)
                                  : std::tuple(4, std::numeric_limits<int>::max() - size);
        };
        const Place& best = *std::ranges::min_element(icon->second, {}, rank);
        std::string file(name);
        file += extensions[best.extension];
        return bases_[best.base] / themeName / theme.directories[best.directory].name / file;
    }
    const auto loose = loose_.find(name);
    return loose == loose_.end() ? std::nullopt : std::optional(loose->second);
}

std::string currentIconTheme(const SessionEnvironment& environment) {
    struct Setting {
        const char* desktop;
        const char* schema;
    };
    const auto names = environment.desktopNames();
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    for (const Setting& setting :
         {Setting{"X-Cinnamon", "org.cinnamon.desktop.interface"},
          Setting{"MATE", "org.mate.interface"}, Setting{"GNOME", "org.gnome.desktop.interface"},
          Setting{"Unity", "org.gnome.desktop.interface"},
          Setting{"Budgie", "org.gnome.desktop.interface"},
          Setting{"Pantheon", "org.gnome.desktop.interface"}}) {
        if (source == nullptr || std::ranges::find(names, setting.desktop) == names.end()) {
            continue;
        }
        GSettingsSchema* schema = g_settings_schema_source_lookup(source, setting.schema, TRUE);
        if (schema == nullptr) {
            continue;
        }
        const bool hasKey = g_settings_schema_has_key(schema, "icon-theme") != FALSE;
        g_settings_schema_unref(schema);
        if (hasKey) {
            const glib::Object<GSettings> settings(g_settings_new(setting.schema));
            return glib::Chars(g_settings_get_string(settings.get(), "icon-theme")).get();
        }
    }
    struct File {
        const char* name;
        const char* group;
        const char* key;
    };
    for (const File& file : {File{"gtk-4.0/settings.ini", "Settings", "gtk-icon-theme-name"},
                             File{"gtk-3.0/settings.ini", "Settings", "gtk-icon-theme-name"},
                             File{"kdeglobals", "Icons", "Theme"}}) {
        if (const auto loaded = loadKeyFile(environment.configHome() / file.name)) {
            const glib::Chars theme(
                g_key_file_get_string(loaded.get(), file.group, file.key, nullptr));
            if (theme != nullptr && *theme != '\0') {
                return theme.get();
            }
        }
    }
    // What toolkits show when nobody has chosen; "hicolor" alone has the icons of apps only. A
    // theme that is not installed is an empty one.
    return "Adwaita";
}

} // namespace vellory
