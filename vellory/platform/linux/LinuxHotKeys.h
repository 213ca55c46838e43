// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/HotKeys.h"

namespace vellory {

/// Key grabs on the root window of an X server.
class LinuxHotKeys final : public HotKeys {
  public:
    std::set<std::string> set(const Shortcuts& shortcuts) override;
    void observe(std::function<void(const std::string& name)> pressed) override;
};

} // namespace vellory
