// SPDX-License-Identifier: Apache-2.0
#include "Ask/AskQuery.h"

#include "Support/Text.h"

namespace vellory::AskQuery {

std::optional<std::string> parse(std::string_view text) {
    const std::string_view trimmed = Text::trimmed(text);
    for (const std::string_view mark : {"?", "？"}) {
        if (trimmed.starts_with(mark)) {
            return std::string(Text::trimmed(trimmed.substr(mark.size())));
        }
    }
    return std::nullopt;
}

} // namespace vellory::AskQuery
