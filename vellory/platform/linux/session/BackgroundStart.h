// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/linux/session/Descriptor.h"

namespace vellory {

/// Lets the program go on in the background while the command that started it ends as soon as the
/// start has succeeded: what started it (a terminal, a script, a browser) neither waits for it nor
/// takes it along when it ends.
class BackgroundStart {
  public:
    /// Returns in a process of its own, in a session of its own. The process that called waits
    /// there and never returns: it ends with 0 after `succeeded`, or as the other one does. To be
    /// called before there are other threads. Where no process can be made it goes on in this one.
    BackgroundStart();

    /// From here on nobody waits, and the program holds neither input nor output.
    void succeeded();

  private:
    Descriptor news_; ///< what the process that waits reads from the other end of
};

} // namespace vellory
