// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellory {

/// The environment that the user's session gave this program, taken once at the start before
/// anything changes a variable: what started apps inherit, and where the desktop keeps things (the
/// freedesktop base directories; an empty or relative folder there counts as not set).
struct SessionEnvironment {
    /// "NAME=value", in the order of the process.
    std::vector<std::string> variables;

    static SessionEnvironment current();

    /// The value of a variable; nothing when it is unset or empty.
    std::optional<std::string> value(std::string_view name) const;

    /// The folder of the user; the password database's where HOME is not set.
    std::filesystem::path home() const;
    std::filesystem::path dataHome() const;
    std::filesystem::path configHome() const;
    std::filesystem::path cacheHome() const;
    /// The system's data folders, the most important first.
    std::vector<std::filesystem::path> dataDirs() const;
    /// The names that the desktop goes by ("ubuntu", "GNOME"), the most specific first.
    std::vector<std::string> desktopNames() const;
    /// Where the session bus listens; nothing when the session has none.
    std::optional<std::string> busAddress() const;
    /// The locale that names are sorted by, without its encoding: "sv_SE"; "" for the C locale.
    std::string sortLocale() const;
};

} // namespace vellory
