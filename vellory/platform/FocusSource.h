// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vellory {

/// The desktop's own Focus modes: "do not disturb" and what else silences it. Main thread; no call
/// waits for another program for longer than a moment.
class FocusSource {
  public:
    virtual ~FocusSource() = default;

    /// Whether the program can see which mode is on.
    virtual bool canRead() = 0;
    /// The names of the modes there are, in the order to offer them, as the desktop names them.
    virtual std::vector<std::string> modes() = 0;
    /// The name of the mode that is on.
    virtual std::optional<std::string> active() = 0;
};

} // namespace vellory
