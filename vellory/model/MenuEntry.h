// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vellory {

/// One line of a menu: something to do, a menu of its own, or a line between groups.
struct MenuEntry {
    enum class Kind { action, submenu, separator };

    Kind kind = Kind::action;
    std::string text = {};
    std::string symbol = {}; ///< the name of a symbol; empty for none
    std::string tint = {};   ///< a folder tint shown as a swatch instead of the symbol
    bool isChecked = false;
    std::function<void()> action = {};
    std::vector<MenuEntry> entries = {}; ///< of a submenu

    static MenuEntry separator() { return {.kind = Kind::separator}; }
};

using Menu = std::vector<MenuEntry>;

} // namespace vellory
