// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "Board/Board.h"
#include "Support/Text.h"

namespace vellory {

/// Boards that the user saved under a name, one file for each in a folder of their own.
///
/// A name may be any text; what a file name cannot hold is replaced, so two names can mean the same
/// layout ("Work/Home" and "Work-Home"), and no name leads out of the folder.
class SavedLayouts {
  public:
    explicit SavedLayouts(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// The names of the saved layouts, as a desktop lists names. Each can be loaded by its name.
    std::vector<std::string> names(const Text::Collator& collator) const;

    /// Saves the board under a name and replaces what was saved under it before. The folder is
    /// created when it is missing. Fails with the file system's error.
    std::expected<void, std::error_code> save(const Board& board, std::string_view name) const;

    /// The board saved under a name; nothing when there is none that can be read.
    std::optional<Board> load(std::string_view name) const;

    /// Removes a saved layout. That it is missing is no error.
    std::expected<void, std::error_code> remove(std::string_view name) const;

    /// The file name of a layout: "/" and ":" and what cannot be written become "-", no name
    /// becomes "Layout". Of a name that is too long for a file the begin is kept, with a mark made
    /// from the whole of it, so that long names stay different.
    static std::string fileName(std::string_view name);

    /// What the board file and the history folder of a display are named after, such as
    /// "display-lg-ultrafine-5k": lower-case letters and digits, everything else a "-".
    static std::string displayKey(std::string_view display);

  private:
    std::filesystem::path file(std::string_view name) const;

    std::filesystem::path folder_;
};

} // namespace vellory
