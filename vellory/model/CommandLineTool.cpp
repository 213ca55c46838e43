// SPDX-License-Identifier: Apache-2.0
#include "model/CommandLineTool.h"

#include <system_error>

#include "Support/AtomicFile.h"
#include "model/CommandLineToolScript.h"

namespace vellory {

std::string_view CommandLineTool::script() {
    return commandLineToolScript;
}

bool CommandLineTool::isInstalled() const {
    std::error_code error;
    return std::filesystem::exists(file_, error);
}

Notice CommandLineTool::install() const {
    if (AtomicFile::createFolder(file_.parent_path()) &&
        AtomicFile::writeProgram(file_, script())) {
        return Notice::confirmation("Installed ~/.local/bin/vellory", "terminal");
    }
    return Notice::error("Couldn't install the command");
}

} // namespace vellory
