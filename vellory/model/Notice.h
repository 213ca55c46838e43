// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

namespace vellory {

/// A short text that appears over the grid and goes by itself.
struct Notice {
    std::string text;
    std::string symbol; ///< the name of a system symbol; may be empty
    double seconds = 0; ///< how long it stays

    /// Something was done.
    static Notice confirmation(std::string text, std::string symbol = "checkmark") {
        return {std::move(text), std::move(symbol), 1.8};
    }
    /// Something could not be done.
    static Notice error(std::string text) {
        return {std::move(text), "exclamationmark.triangle", 3.0};
    }
    /// Something the user may want to act on, so it leaves time to read.
    static Notice hint(std::string text, std::string symbol) {
        return {std::move(text), std::move(symbol), 4.0};
    }

    friend bool operator==(const Notice&, const Notice&) = default;
};

} // namespace vellory
