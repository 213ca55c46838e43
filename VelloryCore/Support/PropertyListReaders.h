// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <string_view>

#include "Support/PropertyList.h"

/// The readers behind `PropertyList::parse`, one for each form.
namespace vellory::PropertyList {

inline constexpr std::string_view binaryMagic = "bplist00";

std::expected<Value, Error> parseBinary(std::string_view bytes, const Limits& limits);
std::expected<Value, Error> parseXml(std::string_view bytes, const Limits& limits);

} // namespace vellory::PropertyList
