// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellory::RivalImport {

/// The list of texts that bytes hold, in any of the forms in which lists of paths are stored: a
/// JSON array of strings, a property list array of strings, or a keyed archive of an array of
/// strings. Nothing when they hold anything else, be it one element that is no text.
std::optional<std::vector<std::string>> pathList(std::string_view bytes);

} // namespace vellory::RivalImport
