// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>

namespace vellory {

/// Keyboard shortcuts that work whatever window has the focus. Main thread; callbacks arrive there.
class HotKeys {
  public:
    /// By a name of the caller's choice, the shortcut in portable text: modifiers of "Ctrl", "Alt",
    /// "Shift", "Meta" and one key, joined by "+", such as "Ctrl+Alt+W" or "F4".
    using Shortcuts = std::map<std::string, std::string>;

    virtual ~HotKeys() = default;

    /// Takes these shortcuts in place of those before. Returns the names of those that cannot be
    /// had: no such key, no modifier where one is needed, or taken by another program.
    virtual std::set<std::string> set(const Shortcuts& shortcuts) = 0;

    /// Who is told which shortcut was pressed; replaces the one before.
    virtual void observe(std::function<void(const std::string& name)> pressed) = 0;
};

} // namespace vellory
