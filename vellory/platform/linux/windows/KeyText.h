// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vellory {

/// A keyboard shortcut as its portable text names it ("Ctrl+Alt+W", "F4", "Meta++").
struct KeyText {
    bool hasControl = false;
    bool hasAlt = false;
    bool hasShift = false;
    bool hasMeta = false;
    std::uint32_t keysym = 0; ///< letters in lower case

    /// Nothing when it names no key, or one that people type with while no modifier beside Shift
    /// is held: those stay with the window that has the focus.
    static std::optional<KeyText> parse(std::string_view text);

    friend bool operator==(const KeyText&, const KeyText&) = default;
};

} // namespace vellory
