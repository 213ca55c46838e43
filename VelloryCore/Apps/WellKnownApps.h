// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// Apps that are known by name. Opening a workspace or restoring a desk hides or quits neither; a
/// desktop adds its own file manager and shell to the protected apps that it passes in.
namespace vellory::WellKnownApps {

inline constexpr std::string_view finder = "com.apple.finder";
inline constexpr std::string_view vellory = "com.quorvel.vellory";

} // namespace vellory::WellKnownApps
