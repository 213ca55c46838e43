// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Workspaces/Workspace.h"

namespace vellory {

/// How the windows of a plan's apps are placed. Stored by name.
enum class Arrangement {
    keep,    ///< windows stay where they open
    focus,   ///< the first app large in the middle
    split,   ///< the first two apps side by side
    columns, ///< up to four apps in columns
    grid     ///< up to four apps, two by two
};

std::string_view rawValue(Arrangement arrangement);
std::optional<Arrangement> arrangementFromRawValue(std::string_view text);

/// As shown to the user, such as "First two apps side by side".
std::string_view title(Arrangement arrangement);

void toJson(json::Value& value, Arrangement arrangement);
void fromJson(const json::Value& value, Arrangement& arrangement);

/// Where windows stand and where they should: geometry only, in screen points with y growing
/// downwards. Frames may come from files and from other programs, so every number may be anything.
namespace WindowTiling {

using Rect = Workspace::Rect;
using WindowSlot = Workspace::WindowSlot;

/// The frames of an arrangement of `count` apps in `area`, `gap` points apart and off the edges:
/// frame i is meant for app i, and apps past the last frame keep their windows where they are.
/// None where the area leaves no room for a window.
std::vector<Rect> frames(Arrangement arrangement, int count, const Rect& area, double gap);

/// Whether the frames share some area: touching edges do not count, nor do empty frames.
bool intersects(const Rect& a, const Rect& b);

/// Whether a window of that frame is worth remembering: one 40 points or less wide or high is a
/// palette, a helper or hidden.
bool isCaptured(const Rect& frame);

/// Whether a window system can be asked for this frame: finite, not empty, and not beyond any desk
/// of displays. Others are never tried.
bool isPlaceable(const Rect& frame);

struct Display {
    std::string name; ///< as shown to the user
    Rect frame;
};

/// The slots of one app: `windows` are its windows in the order it lists them, nothing where a
/// frame could not be read; a slot names the first of `displays` that its window touches.
std::vector<WindowSlot> capture(const BundleID& app,
                                const std::vector<std::optional<Rect>>& windows,
                                const std::vector<Display>& displays);

/// One round of placing: hands every slot to `place`, which tells whether the frame was applied,
/// and returns the slots to try again, in their order. Slots that can never be placed are dropped.
std::vector<WindowSlot> placeRound(const std::vector<WindowSlot>& slots,
                                   const std::function<bool(const WindowSlot&)>& place);

} // namespace WindowTiling

} // namespace vellory
