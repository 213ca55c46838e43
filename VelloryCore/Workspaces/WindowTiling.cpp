// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/WindowTiling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vellory {

namespace {

constexpr std::array<std::pair<Arrangement, std::string_view>, 5> names{{
    {Arrangement::keep, "keep"},
    {Arrangement::focus, "focus"},
    {Arrangement::split, "split"},
    {Arrangement::columns, "columns"},
    {Arrangement::grid, "grid"},
}};

/// No desk of displays reaches as far from the main one, and every integer type of a window system
/// holds it.
constexpr double furthest = 1'000'000;

} // namespace

std::string_view rawValue(Arrangement arrangement) {
    const auto* found = std::ranges::find(names, arrangement, &decltype(names)::value_type::first);
    return found != names.end() ? found->second : std::string_view();
}

std::optional<Arrangement> arrangementFromRawValue(std::string_view text) {
    const auto* found = std::ranges::find(names, text, &decltype(names)::value_type::second);
    return found != names.end() ? std::optional(found->first) : std::nullopt;
}

std::string_view title(Arrangement arrangement) {
    switch (arrangement) {
    case Arrangement::keep:
        return "Windows stay where they open";
    case Arrangement::focus:
        return "First app large in the middle";
    case Arrangement::split:
        return "First two apps side by side";
    case Arrangement::columns:
        return "Apps in columns, side by side";
    case Arrangement::grid:
        return "Apps in a 2 × 2 grid";
    }
    return {};
}

void toJson(json::Value& value, Arrangement arrangement) {
    value = rawValue(arrangement);
}

void fromJson(const json::Value& value, Arrangement& arrangement) {
    std::string name;
    json::fromJson(value, name);
    const auto found = arrangementFromRawValue(name);
    if (!found) {
        throw json::DecodingError("no arrangement is called " + name);
    }
    arrangement = *found;
}

namespace WindowTiling {

namespace {

std::vector<Rect> columns(int count, const Rect& inset, double gap) {
    const double width = std::floor((inset.width - gap * (count - 1)) / count);
    std::vector<Rect> out;
    for (int i = 0; i < count; ++i) {
        out.push_back({inset.x + i * (width + gap), inset.y, width, inset.height});
    }
    return out;
}

std::vector<Rect> cells(int count, const Rect& inset, double gap) {
    const double width = std::floor((inset.width - gap) * 0.5);
    const double height = std::floor((inset.height - gap) * 0.5);
    std::vector<Rect> out;
    for (int i = 0; i < count; ++i) {
        const int column = i % 2;
        const int row = i / 2;
        out.push_back(
            {inset.x + column * (width + gap), inset.y + row * (height + gap), width, height});
    }
    return out;
}

/// One frame in the middle, each number rounded to the nearest whole one, halves away from zero.
Rect middle(const Rect& inset) {
    const double width = std::round(inset.width * 0.72);
    const double height = std::round(inset.height * 0.88);
    return {std::round(inset.x + (inset.width - width) * 0.5),
            std::round(inset.y + (inset.height - height) * 0.5), width, height};
}

} // namespace

std::vector<Rect> frames(Arrangement arrangement, int count, const Rect& area, double gap) {
    if (count < 1) {
        return {};
    }
    const Rect inset{area.x + gap, area.y + gap, area.width - 2 * gap, area.height - 2 * gap};
    std::vector<Rect> out;
    switch (arrangement) {
    case Arrangement::keep:
        break;
    case Arrangement::focus:
        out = {middle(inset)};
        break;
    case Arrangement::split:
        out = columns(std::min(count, 2), inset, gap);
        break;
    case Arrangement::columns:
        out = columns(std::min(count, 4), inset, gap);
        break;
    case Arrangement::grid:
        out = cells(std::min(count, 4), inset, gap);
        break;
    }
    if (!std::ranges::all_of(out, isPlaceable)) {
        out.clear();
    }
    return out;
}

bool intersects(const Rect& a, const Rect& b) {
    return a.width > 0 && a.height > 0 && b.width > 0 && b.height > 0 && a.x < b.x + b.width &&
           b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

bool isCaptured(const Rect& frame) {
    return frame.isFinite() && frame.width > 40 && frame.height > 40;
}

bool isPlaceable(const Rect& frame) {
    // Said so that a number that is none fails every comparison.
    return std::fabs(frame.x) <= furthest && std::fabs(frame.y) <= furthest && frame.width >= 1 &&
           frame.width <= furthest && frame.height >= 1 && frame.height <= furthest;
}

std::vector<WindowSlot> capture(const BundleID& app,
                                const std::vector<std::optional<Rect>>& windows,
                                const std::vector<Display>& displays) {
    std::vector<WindowSlot> out;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (!windows[i] || !isCaptured(*windows[i])) {
            continue;
        }
        WindowSlot slot{app, static_cast<int>(i), *windows[i], std::nullopt};
        const auto display = std::ranges::find_if(
            displays, [&](const Display& each) { return intersects(each.frame, slot.frame); });
        if (display != displays.end()) {
            slot.screenName = display->name;
        }
        out.push_back(std::move(slot));
    }
    return out;
}

std::vector<WindowSlot> placeRound(const std::vector<WindowSlot>& slots,
                                   const std::function<bool(const WindowSlot&)>& place) {
    std::vector<WindowSlot> pending;
    for (const WindowSlot& slot : slots) {
        if (slot.index >= 0 && isPlaceable(slot.frame) && !place(slot)) {
            pending.push_back(slot);
        }
    }
    return pending;
}

} // namespace WindowTiling

} // namespace vellory
