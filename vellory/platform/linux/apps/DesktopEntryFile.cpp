// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/DesktopEntryFile.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "Support/AtomicFile.h"
#include "Support/Text.h"

namespace vellory::DesktopEntryFile {

namespace {

/// Honest entries with a hundred translations stay below 100 KB.
constexpr std::size_t maxFileBytes = 4U * 1024U * 1024U;
constexpr std::size_t maxNameCharacters = 120;
/// What is looked at of a name; leaves room for characters of many bytes.
constexpr std::size_t maxNameBytes = 16 * maxNameCharacters;

bool isPlainAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c < 0x7F; });
}

/// Whether a code point breaks lines, controls a terminal or reorders what stands around it.
bool isControl(gunichar c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029 ||
           (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

/// Asked before a value is: for one that is not there GLib writes the text of an error each time,
/// and most of what can be said in an entry is not.
bool has(GKeyFile* entry, const std::string& group, const std::string& key) {
    return g_key_file_has_key(entry, group.c_str(), key.c_str(), nullptr) != FALSE;
}

} // namespace

glib::KeyFile load(const std::filesystem::path& file) {
    const auto content = AtomicFile::read(file, maxFileBytes);
    if (!content || content->empty()) {
        return nullptr;
    }
    glib::KeyFile entry(g_key_file_new());
    if (!g_key_file_load_from_data(entry.get(), content->data(), content->size(), G_KEY_FILE_NONE,
                                   nullptr) ||
        !g_key_file_has_group(entry.get(), mainGroup)) {
        return nullptr;
    }
    return entry;
}

std::string text(GKeyFile* entry, const std::string& group, const std::string& key) {
    return has(entry, group, key)
               ? glib::text(
                     glib::Chars(g_key_file_get_string(entry, group.c_str(), key.c_str(), nullptr))
                         .get())
               : "";
}

std::string translation(GKeyFile* entry, const std::string& group, const char* key,
                        std::string_view language) {
    return text(entry, group, std::string(key).append("[").append(language).append("]"));
}

std::string translation(GKeyFile* entry, const std::string& group, const char* key) {
    for (const char* const* name = g_get_language_names(); *name != nullptr; ++name) {
        if (std::string found = translation(entry, group, key, *name); !found.empty()) {
            return found;
        }
    }
    return text(entry, group, key);
}

std::string localized(GKeyFile* entry, const std::string& group, const char* key) {
    if (const std::string translated = translation(entry, group, key); !translated.empty()) {
        return displayable(translated);
    }
    // Not in UTF-8, perhaps.
    const glib::Chars raw(has(entry, group, key)
                              ? g_key_file_get_value(entry, group.c_str(), key, nullptr)
                              : nullptr);
    return displayable(glib::text(raw.get()));
}

bool flag(GKeyFile* entry, const char* key) {
    return has(entry, mainGroup, key) &&
           g_key_file_get_boolean(entry, mainGroup, key, nullptr) != FALSE;
}

std::vector<std::string> list(GKeyFile* entry, const char* key) {
    if (!has(entry, mainGroup, key)) {
        return {};
    }
    const glib::Strings values(g_key_file_get_string_list(entry, mainGroup, key, nullptr, nullptr));
    std::vector<std::string> out;
    for (char** value = values.get(); value != nullptr && *value != nullptr; ++value) {
        out.emplace_back(*value);
    }
    return out;
}

std::string actionGroup(std::string_view action) {
    return std::string("Desktop Action ").append(action);
}

std::string newWindowAction(const std::filesystem::path& file) {
    const glib::KeyFile entry = load(file);
    if (entry == nullptr) {
        return "";
    }
    for (const std::string& action : list(entry.get(), G_KEY_FILE_DESKTOP_KEY_ACTIONS)) {
        std::string plain;
        for (const char c : action) {
            if (g_ascii_isalnum(c)) {
                plain += g_ascii_tolower(c);
            }
        }
        if (plain == "newwindow" &&
            g_key_file_has_group(entry.get(), actionGroup(action).c_str())) {
            return action;
        }
    }
    return "";
}

std::string displayable(std::string_view name) {
    if (name.size() <= maxNameCharacters && isPlainAscii(name) &&
        name.find("  ") == std::string_view::npos) {
        return std::string(Text::trimmed(name));
    }
    const std::string whole = Text::repairedUtf8(name.substr(0, maxNameBytes));
    std::string line;
    const char* next = nullptr;
    for (const char* at = whole.c_str(); at < whole.c_str() + whole.size(); at = next) {
        next = g_utf8_find_next_char(at, nullptr);
        const gunichar c = g_utf8_get_char(at);
        if (isControl(c) || g_unichar_isspace(c)) {
            if (!line.empty() && line.back() != ' ') {
                line += ' ';
            }
        } else {
            line.append(at, next);
        }
    }
    return std::string(Text::trimmed(Text::prefix(line, maxNameCharacters)));
}

} // namespace vellory::DesktopEntryFile
