// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// The notices around layouts that are saved under a name.
namespace vellory::LayoutTexts {

inline constexpr std::string_view savedSymbol = "square.and.arrow.down";
inline std::string saved(std::string_view name) {
    return "Saved layout “" + std::string(name) + "”";
}
inline std::string couldNotSave(std::string_view error) {
    return "Couldn't save the layout: " + std::string(error);
}
inline std::string missing(std::string_view name) {
    return "No saved layout “" + std::string(name) + "”";
}
inline std::string switchedTo(std::string_view name) {
    return "Switched to layout " + std::string(name);
}

} // namespace vellory::LayoutTexts
