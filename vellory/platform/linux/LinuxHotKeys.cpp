// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/LinuxHotKeys.h"

namespace vellory {

std::set<std::string> LinuxHotKeys::set(const Shortcuts& shortcuts) {
    std::set<std::string> refused;
    for (const auto& [name, keys] : shortcuts) {
        refused.insert(name);
    }
    return refused;
}

void LinuxHotKeys::observe(std::function<void(const std::string& name)> /*pressed*/) {}

} // namespace vellory
