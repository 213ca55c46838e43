// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string_view>

#include "model/Notice.h"

namespace vellory {

/// The command `vellory` for terminals and scripts: a shell script in the user's home folder that
/// drives the program through "vellory://" links.
class CommandLineTool {
  public:
    explicit CommandLineTool(const std::filesystem::path& home)
        : file_(home / ".local" / "bin" / "vellory") {}

    /// The script, for any POSIX shell.
    static std::string_view script();

    /// Where the user's script is, or would be.
    const std::filesystem::path& file() const { return file_; }

    /// Whether there is one, be it an older one or not ours.
    bool isInstalled() const;

    /// Writes the script, in place of one that is there, and tells the user what came of it.
    Notice install() const;

  private:
    std::filesystem::path file_;
};

} // namespace vellory
