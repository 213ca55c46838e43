// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "Board/Tile.h"

namespace vellory {

/// The apps that are selected in one window. What changes them tells whether it did.
///
/// A sweep, by a band or by Shift and the arrows, selects what it covers besides what was selected
/// when it began, and gives up again what it leaves.
class Selection {
  public:
    const std::set<BundleID>& apps() const { return apps_; }

    bool set(std::set<BundleID> apps);
    bool toggle(const BundleID& id);
    /// Gives up the apps that are gone.
    bool drop(const std::function<bool(const BundleID&)>& isGone);

    enum class Before {
        kept,   ///< the sweep adds to what was selected
        dropped ///< it selects anew
    };
    /// What is left of another sweep stays selected.
    void beginSweep(Before before);
    bool sweepOver(const std::vector<BundleID>& covered);

    /// A sweep over all items between the one where it began and another.
    bool isExtending() const { return anchor_.has_value(); }
    void beginExtending(int at);
    bool extendTo(int index, const std::vector<Tile>& items);
    void endExtending() { anchor_.reset(); }

  private:
    std::set<BundleID> apps_;
    std::set<BundleID> before_; ///< what was selected when the sweep began
    std::optional<int> anchor_;
};

} // namespace vellory
