// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <string_view>

/// The order of version texts such as "1.10.2".
///
/// A version is the list of its parts between full stops, empty ones left out. A part counts as the
/// number that its leading digits spell ("12b3" counts 12, "beta" counts 0), of any length; missing
/// parts at the end count 0. So 1.10 is newer than 1.9, and 1.2, 1.2.0 and "1.2 beta" are equal.
namespace vellory::Versions {

/// Costs one pass over both texts and allocates nothing.
std::weak_ordering compare(std::string_view a, std::string_view b);

bool isNewer(std::string_view a, std::string_view than);

} // namespace vellory::Versions
