// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/LinuxWindowPlacer.h"

namespace vellory {

bool LinuxWindowPlacer::isTrusted(bool /*prompt*/) {
    return false;
}

std::vector<std::vector<WindowPlacer::Window>>
LinuxWindowPlacer::windows(const std::vector<RunningApp>& apps) {
    return std::vector<std::vector<Window>>(apps.size());
}

bool LinuxWindowPlacer::setFrame(WindowID /*window*/, const Workspace::Rect& /*frame*/) {
    return false;
}

bool LinuxWindowPlacer::raise(WindowID /*window*/) {
    return false;
}

} // namespace vellory
