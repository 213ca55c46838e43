// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Workspaces/Workspace.h"

namespace vellory {

/// A display that is connected.
struct Display {
    std::string name; ///< as the user knows it: its model, else its connector
    /// All of it, in the space that window frames are in.
    Workspace::Rect frame;

    friend bool operator==(const Display&, const Display&) = default;
};

/// The displays of the desk. Main thread; the callback arrives there.
class Displays {
  public:
    virtual ~Displays() = default;

    /// In the desktop's order, the main one first.
    virtual std::vector<Display> list() const = 0;

    /// Calls `changed` after each change of what `list` gives, perhaps also without one; replaces
    /// the one before.
    virtual void observe(std::function<void()> changed) = 0;
};

} // namespace vellory
