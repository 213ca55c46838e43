// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace vellory {

/// The letters that activate tiles: two for each item, shown on it while hints are on and typed one
/// after the other.
class Hints {
  public:
    /// The letters of an item of the grid, such as "AS".
    static std::string label(int index);

    bool isOn() const { return isOn_; }
    /// The first of two letters, once it was typed.
    const std::string& typed() const { return typed_; }

    /// On or off; what was typed is forgotten.
    void set(bool on);
    void erase() { typed_.clear(); }

    /// The items that can be seen now.
    struct Range {
        int first = 0;
        int end = 0;
    };
    /// What the user types next; the item that it completes, and hints are off then. Letters that
    /// lead to none of these items are passed over; anything but a letter turns the hints off.
    std::optional<int> type(const std::string& text, Range items);

    friend bool operator==(const Hints&, const Hints&) = default;

  private:
    bool isOn_ = false;
    std::string typed_;
};

} // namespace vellory
