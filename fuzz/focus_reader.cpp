// SPDX-License-Identifier: Apache-2.0
// Any texts as the two files of the Focus state: the input is cut at its first NUL.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Support/Text.h"
#include "Workspaces/FocusReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vellory;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto cut = std::min(text.find('\0'), size);
    const auto modes = FocusReader::modesIn(text.substr(0, cut));
    const auto active = FocusReader::activeIdentifierIn(text.substr(std::min(cut + 1, size)));
    for (const auto& mode : modes) {
        if (!Text::isValidUtf8(mode.identifier) || !Text::isValidUtf8(mode.name)) {
            std::abort();
        }
    }
    if (active && !Text::isValidUtf8(*active)) {
        std::abort();
    }
    return 0;
}
