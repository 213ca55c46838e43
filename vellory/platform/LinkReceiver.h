// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

namespace vellory {

/// A link that came from outside the program: from a second start of it, or through the desktop.
struct LinkRequest {
    /// Any text without NUL; nothing about it has been checked but that it is UTF-8 and of a
    /// bearable length. Empty asks for nothing.
    std::string link;
    /// What the desktop gave with the user's wish, so that the window may take the focus; may be
    /// empty.
    std::string activationToken = {};

    friend bool operator==(const LinkRequest&, const LinkRequest&) = default;
};

/// To be called once for each request: with true after it was obeyed, with false when there are too
/// many.
using LinkAnswer = std::function<void(bool obeyed)>;

/// Who obeys links. Main thread.
using LinkReceiver = std::function<void(LinkRequest request, LinkAnswer answer)>;

} // namespace vellory
