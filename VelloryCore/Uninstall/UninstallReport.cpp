// SPDX-License-Identifier: Apache-2.0
#include "Uninstall/UninstallReport.h"

namespace vellory::Uninstall {

std::string isOpenText(std::string_view appName) {
    return std::string(appName).append(" is open. Quit it, then uninstall.");
}

Report report(std::string_view appName, const TrashResult& result) {
    const std::string name(appName);
    if (result.error && result.moved == 0) {
        return Failure{"Couldn't move " + name + " to the Trash",
                       *result.error + "\n\nYou can drag it to the Trash in Finder instead."};
    }
    return Success{name + " moved to the Trash (" + std::to_string(result.moved) + " items)",
                   "trash", 1.8};
}

} // namespace vellory::Uninstall
