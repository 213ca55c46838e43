// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

/// What the uninstall sheet says, and what it makes of the desktop's answer.
namespace vellory::Uninstall {

namespace Texts {
inline constexpr std::string_view command = "Uninstall with leftovers";
inline constexpr std::string_view searching = "Looking for leftover files…";
inline constexpr std::string_view reassurance =
    "Everything goes to the Trash. Until you empty it, you can restore any item with Put Back in "
    "Finder.";
} // namespace Texts

/// Why a running app is not uninstalled.
std::string isOpenText(std::string_view appName);

/// How the one request that moved the app and the chosen leftovers to the Trash ended.
struct TrashResult {
    std::size_t moved = 0;
    /// The desktop's description of what went wrong.
    std::optional<std::string> error;
};

/// Nothing was moved: a dialog in front of everything, and the sheet stays.
struct Failure {
    std::string title;
    std::string message;

    friend bool operator==(const Failure&, const Failure&) = default;
};

/// Something was moved: the sheet closes, the installed apps are scanned again, and a notice tells.
struct Success {
    std::string notice;
    std::string symbol;
    double seconds = 0;

    friend bool operator==(const Success&, const Success&) = default;
};

using Report = std::variant<Failure, Success>;

/// A request that moved some of its items is a success; its notice tells how many.
Report report(std::string_view appName, const TrashResult& result);

} // namespace vellory::Uninstall
