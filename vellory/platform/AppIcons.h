// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "Apps/InstalledApp.h"
#include "platform/Image.h"

namespace vellory {

/// The icons that apps come with. Called from several threads at once, never from the main thread:
/// it reads files and draws.
class AppIcons {
  public:
    virtual ~AppIcons() = default;

    /// The app's icon fitted into a square of `pixels` (at least one side fills it), from the best
    /// source for that size. Nothing when the app has none or it cannot be read.
    virtual std::optional<Image> icon(const InstalledApp& app, int pixels) const = 0;
};

} // namespace vellory
