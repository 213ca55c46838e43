// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/FocusSource.h"

namespace vellory {

/// "Do not disturb" as the desktop's notification service keeps it.
class LinuxFocusSource final : public FocusSource {
  public:
    bool canRead() override { return false; }
    std::vector<std::string> modes() override { return {}; }
    std::optional<std::string> active() override { return std::nullopt; }
};

} // namespace vellory
