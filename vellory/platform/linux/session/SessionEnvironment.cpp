// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/session/SessionEnvironment.h"

#include <algorithm>
#include <array>
#include <ranges>

#include <pwd.h>
#include <unistd.h>

namespace vellory {

namespace {

/// The folders in a list such as $PATH.
std::vector<std::string> searchPath(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (const auto part : std::views::split(text, separator)) {
        if (!part.empty()) {
            parts.emplace_back(part.begin(), part.end());
        }
    }
    return parts;
}

std::filesystem::path folderOr(const std::optional<std::string>& value,
                               std::filesystem::path otherwise) {
    if (value && value->starts_with('/')) {
        return *value;
    }
    return otherwise;
}

} // namespace

SessionEnvironment SessionEnvironment::current() {
    SessionEnvironment environment;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        environment.variables.emplace_back(*variable);
    }
    return environment;
}

std::optional<std::string> SessionEnvironment::value(std::string_view name) const {
    const auto found = std::ranges::find_if(variables, [&](std::string_view variable) {
        return variable.starts_with(name) && variable.substr(name.size()).starts_with('=');
    });
    if (found == variables.end() || found->size() == name.size() + 1) {
        return std::nullopt;
    }
    return found->substr(name.size() + 1);
}

std::filesystem::path SessionEnvironment::home() const {
    if (const auto home = value("HOME"); home && home->starts_with('/')) {
        return *home;
    }
    std::array<char, 4096> texts{};
    passwd record{};
    passwd* found = nullptr;
    const bool known =
        getpwuid_r(getuid(), &record, texts.data(), texts.size(), &found) == 0 && found != nullptr;
    return known ? found->pw_dir : "/";
}

std::filesystem::path SessionEnvironment::dataHome() const {
    return folderOr(value("XDG_DATA_HOME"), home() / ".local/share");
}

std::filesystem::path SessionEnvironment::configHome() const {
    return folderOr(value("XDG_CONFIG_HOME"), home() / ".config");
}

std::filesystem::path SessionEnvironment::cacheHome() const {
    return folderOr(value("XDG_CACHE_HOME"), home() / ".cache");
}

std::vector<std::filesystem::path> SessionEnvironment::dataDirs() const {
    std::vector<std::filesystem::path> folders;
    for (const auto& folder :
         searchPath(value("XDG_DATA_DIRS").value_or("/usr/local/share:/usr/share"), ':')) {
        if (folder.starts_with('/')) {
            folders.emplace_back(folder);
        }
    }
    return folders;
}

std::vector<std::string> SessionEnvironment::desktopNames() const {
    return searchPath(value("XDG_CURRENT_DESKTOP").value_or(""), ':');
}

std::optional<std::string> SessionEnvironment::busAddress() const {
    if (auto address = value("DBUS_SESSION_BUS_ADDRESS")) {
        return address;
    }
    const auto runtime = value("XDG_RUNTIME_DIR");
    std::error_code error;
    if (runtime && std::filesystem::is_socket(std::filesystem::path(*runtime) / "bus", error)) {
        return "unix:path=" + *runtime + "/bus";
    }
    return std::nullopt;
}

std::string SessionEnvironment::sortLocale() const {
    for (const char* name : {"LC_ALL", "LC_COLLATE", "LANG"}) {
        if (const auto locale = value(name)) {
            const std::string language = locale->substr(0, locale->find('.'));
            return language == "C" || language == "POSIX" ? "" : language;
        }
    }
    return "";
}

} // namespace vellory
