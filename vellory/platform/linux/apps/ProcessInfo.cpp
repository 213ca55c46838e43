// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/ProcessInfo.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <optional>
#include <ranges>

#include <unistd.h>

namespace vellory {

namespace fs = std::filesystem;

namespace {

/// Far above any honest environment or command line; the kernel would allow megabytes.
constexpr std::size_t maxBytes = 256 * 1024;

std::string readAll(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string content(maxBytes, '\0');
    stream.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(std::max<std::streamsize>(stream.gcount(), 0)));
    return content;
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (const auto part : std::views::split(text, separator)) {
        parts.emplace_back(part.begin(), part.end());
    }
    return parts;
}

/// Undoes the "\x2d" escapes of systemd's unit names.
std::string unescaped(std::string_view name) {
    std::string out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        unsigned value = 0;
        const std::string_view rest = name.substr(i);
        if (rest.size() >= 4 && rest.starts_with("\\x") &&
            std::from_chars(rest.data() + 2, rest.data() + 4, value, 16).ptr == rest.data() + 4) {
            out += static_cast<char>(value);
            i += 3;
        } else {
            out += name[i];
        }
    }
    return out;
}

std::optional<std::string_view> without(std::string_view text, std::string_view prefix,
                                        std::string_view suffix) {
    if (text.size() < prefix.size() + suffix.size() || !text.starts_with(prefix) ||
        !text.ends_with(suffix)) {
        return std::nullopt;
    }
    return text.substr(prefix.size(), text.size() - prefix.size() - suffix.size());
}

/// Whether the first argument of such a program is the script that it runs.
bool isInterpreter(std::string_view program) {
    constexpr std::array<std::string_view, 8> names{"bash", "dash", "gjs",    "node",
                                                    "perl", "ruby", "python", "sh"};
    return std::ranges::any_of(names, [&](std::string_view name) {
        // Versions follow the name, as in python3.11.
        return program.starts_with(name) &&
               program.find_first_not_of("0123456789.", name.size()) == std::string_view::npos;
    });
}

std::string launchedFile(std::int64_t pid, const std::string& environment) {
    constexpr std::string_view fileKey = "GIO_LAUNCHED_DESKTOP_FILE=";
    constexpr std::string_view pidKey = "GIO_LAUNCHED_DESKTOP_FILE_PID=";
    std::string file;
    bool isOwn = false;
    for (const std::string& variable : split(environment, '\0')) {
        if (variable.starts_with(fileKey)) {
            file = variable.substr(fileKey.size());
        } else if (variable.starts_with(pidKey)) {
            // Children inherit both variables; only for the process itself do they mean its app.
            isOwn = variable.substr(pidKey.size()) == std::to_string(pid);
        }
    }
    return isOwn ? file : std::string();
}

} // namespace

std::vector<std::string> appIdsOfUnit(std::string_view unit) {
    if (const auto snap = without(unit, "snap.", ".scope")) {
        // snap.<snap>.<app>-<uuid>, in older versions with a dot before the uuid.
        const auto parts = split(*snap, '.');
        if (parts.size() < 2) {
            return {};
        }
        return {parts[0] + '_' + parts[1].substr(0, parts[1].find('-')), parts[0] + '_' + parts[0]};
    }
    std::vector<std::string> parts;
    if (const auto scope = without(unit, "app-", ".scope")) {
        parts = split(*scope, '-');
        if (!parts.empty()) {
            parts.pop_back(); // The part that tells instances apart.
        }
    } else if (const auto service = without(unit, "app-", ".service")) {
        parts = split(service->substr(0, service->find('@')), '-');
    }
    std::vector<std::string> ids;
    for (std::size_t first = 0; first < parts.size(); ++first) {
        std::string id = parts[first];
        for (std::size_t next = first + 1; next < parts.size(); ++next) {
            id += '-' + parts[next];
        }
        ids.push_back(unescaped(id));
    }
    return ids;
}

double secondsSinceBoot() {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::optional<double> processStart(std::int64_t pid) {
    if (pid <= 0) {
        return std::nullopt;
    }
    const std::string stat = readAll(fs::path("/proc") / std::to_string(pid) / "stat");
    // The program's name, in parentheses, may hold anything; the start is the 20th word after it.
    const std::size_t nameEnd = stat.rfind(')');
    if (nameEnd == std::string::npos) {
        return std::nullopt;
    }
    constexpr std::size_t startWord = 20;
    const auto words = split(std::string_view(stat).substr(nameEnd + 1), ' ');
    std::uint64_t ticks = 0;
    if (words.size() <= startWord ||
        std::from_chars(words[startWord].data(), words[startWord].data() + words[startWord].size(),
                        ticks)
                .ec != std::errc{}) {
        return std::nullopt;
    }
    return static_cast<double>(ticks) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

ProcessInfo readProcess(std::int64_t pid) {
    ProcessInfo info;
    if (pid <= 0) {
        return info;
    }
    const fs::path folder = fs::path("/proc") / std::to_string(pid);
    info.launchedFile = launchedFile(pid, readAll(folder / "environ"));
    for (const std::string& line : split(readAll(folder / "cgroup"), '\n')) {
        const std::string unit = line.substr(line.rfind('/') + 1);
        if (info.unitIds.empty()) {
            info.unitIds = appIdsOfUnit(unit);
        }
    }
    const auto arguments = split(readAll(folder / "cmdline"), '\0');
    const auto addArgument = [&](std::size_t index) {
        if (index < arguments.size() && !arguments[index].empty() &&
            !arguments[index].starts_with('-')) {
            info.programs.push_back(fs::path(arguments[index]).filename().string());
        }
    };
    std::error_code error;
    const std::string program = fs::read_symlink(folder / "exe", error).filename().string();
    if (!program.empty()) {
        info.programs.push_back(program);
    }
    addArgument(0);
    if (isInterpreter(program)) {
        addArgument(1);
    }
    return info;
}

} // namespace vellory
