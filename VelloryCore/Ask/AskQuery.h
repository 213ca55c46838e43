// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The search field doubles as the field in which one asks.
namespace vellory::AskQuery {

/// The request in a text that begins with a question mark, also a full-width one, perhaps empty.
/// Nothing for any other text: that is an ordinary search.
std::optional<std::string> parse(std::string_view text);

} // namespace vellory::AskQuery
