// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "platform/FocusSource.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// "Do not disturb" as the desktop keeps it: it is the one Focus mode that desktops have. Where it
/// is kept depends on which program shows the notifications; none is started to be asked.
class LinuxFocusSource final : public FocusSource {
  public:
    explicit LinuxFocusSource(SessionEnvironment environment);
    ~LinuxFocusSource() override;

    bool canRead() override;
    std::vector<std::string> modes() override;
    std::optional<std::string> active() override;

  private:
    class Services;
    std::unique_ptr<Services> services_;
};

} // namespace vellory
