// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/WindowTiling.h"

#include <gmock/gmock.h>
#include <limits>

namespace vellory::workspaces_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using WindowTiling::Rect;
using WindowTiling::WindowSlot;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr Rect screen{0, 25, 1440, 875};

TEST(WindowTiling, ArrangementsFillTheAreaInsideTheGap) {
    EXPECT_THAT(WindowTiling::frames(Arrangement::split, 2, screen, 10),
                ElementsAre(Rect{10, 35, 705, 855}, Rect{725, 35, 705, 855}));
    EXPECT_THAT(WindowTiling::frames(Arrangement::split, 1, screen, 10),
                ElementsAre(Rect{10, 35, 1420, 855}));
    EXPECT_THAT(
        WindowTiling::frames(Arrangement::columns, 3, screen, 10),
        ElementsAre(Rect{10, 35, 466, 855}, Rect{486, 35, 466, 855}, Rect{962, 35, 466, 855}));
    EXPECT_THAT(
        WindowTiling::frames(Arrangement::grid, 3, screen, 10),
        ElementsAre(Rect{10, 35, 705, 422}, Rect{725, 35, 705, 422}, Rect{10, 467, 705, 422}));
    // 1420 × 0.72 = 1022.4, 855 × 0.88 = 752.4; (1420 − 1022) / 2 = 199, (855 − 752) / 2 = 51.5.
    EXPECT_THAT(WindowTiling::frames(Arrangement::focus, 5, screen, 10),
                ElementsAre(Rect{209, 87, 1022, 752}));
    // Halves go away from zero: −151 + 33.5 is −117.5.
    EXPECT_EQ(WindowTiling::frames(Arrangement::focus, 1, {-151, -151, 239, 239}, 0)[0].x, -118);
}

TEST(WindowTiling, CountsPastTheArrangementGetNoFrame) {
    const std::vector<std::tuple<Arrangement, int, std::size_t>> cases{
        {Arrangement::keep, 3, 0},    {Arrangement::focus, 1, 1},
        {Arrangement::split, 7, 2},   {Arrangement::columns, 1, 1},
        {Arrangement::columns, 7, 4}, {Arrangement::grid, 1, 1},
        {Arrangement::grid, 5, 4},    {Arrangement::focus, 0, 0},
        {Arrangement::grid, -1, 0},   {Arrangement::columns, std::numeric_limits<int>::max(), 4},
    };
    for (const auto& [arrangement, count, frames] : cases) {
        EXPECT_THAT(WindowTiling::frames(arrangement, count, screen, 10), SizeIs(frames))
            << rawValue(arrangement) << count;
        EXPECT_EQ(json::decode<Arrangement>(json::encode(arrangement)), arrangement);
    }
    EXPECT_FALSE(json::decode<Arrangement>(R"("Grid")"));
}

TEST(WindowTiling, AreaWithoutRoomGetsNoFrames) {
    const std::vector<std::pair<Rect, double>> cases{
        {{0, 0, 20, 800}, 10},      {{0, 0, -1440, 875}, 10},    {{0, 0, 1440, 875}, 1000},
        {{nan, 0, 1440, 875}, 10},  {{0, 0, infinity, 875}, 10}, {{0, 0, 1440, 875}, nan},
        {{1e300, 0, 1440, 875}, 10}};
    for (const auto& [area, gap] : cases) {
        for (const auto arrangement :
             {Arrangement::focus, Arrangement::split, Arrangement::columns, Arrangement::grid}) {
            EXPECT_THAT(WindowTiling::frames(arrangement, 4, area, gap), IsEmpty())
                << rawValue(arrangement) << area.width;
        }
    }
}

TEST(WindowTiling, FramesShareAreaOnlyWhenTheyOverlap) {
    const Rect frame{0, 0, 100, 100};
    const std::vector<std::pair<Rect, bool>> cases{
        {{99, 99, 5, 5}, true},     {{100, 0, 5, 5}, false},  {{-5, 0, 5, 5}, false},
        {{-5, -5, 500, 500}, true}, {{50, 50, 0, 5}, false},  {{50, 50, -5, 5}, false},
        {{nan, 0, 50, 50}, false},  {{0, 0, 1e308, 1}, true}, {{-1e308, 0, infinity, 1}, true},
    };
    for (const auto& [other, shared] : cases) {
        EXPECT_EQ(WindowTiling::intersects(frame, other), shared) << other.x;
        EXPECT_EQ(WindowTiling::intersects(other, frame), shared) << other.x;
    }
}

TEST(WindowTiling, CaptureSkipsSmallAndUnreadableWindowsAndKeepsTheirPlaces) {
    const std::vector<WindowTiling::Display> displays{{"Left", {-1000, 0, 1000, 800}},
                                                      {"Main", {0, 0, 1440, 900}}};
    const std::vector<std::optional<Rect>> windows{
        Rect{0, 0, 30, 500},     std::nullopt,
        Rect{0, 0, 500, 40},     Rect{10, 10, 41, 41},
        Rect{-10, 10, 100, 100}, Rect{5000, 10, 100, 100},
        Rect{nan, 0, 100, 100},  Rect{0, 0, 100, infinity}};
    EXPECT_THAT(WindowTiling::capture("app", windows, displays),
                ElementsAre(WindowSlot{"app", 3, {10, 10, 41, 41}, "Main"},
                            WindowSlot{"app", 4, {-10, 10, 100, 100}, "Left"},
                            WindowSlot{"app", 5, {5000, 10, 100, 100}, std::nullopt}));
}

TEST(WindowTiling, PlacingTriesAgainWhatFailedAndNeverTriesTheImpossible) {
    const auto slot = [](int index, Rect frame) {
        return WindowSlot{"app", index, frame, std::nullopt};
    };
    const std::vector<WindowSlot> slots{slot(0, screen),          slot(1, screen),
                                        slot(2, screen),          slot(-1, screen),
                                        slot(3, {0, 0, 0, 100}),  slot(4, {0, 0, -100, 100}),
                                        slot(5, {nan, 0, 9, 9}),  slot(6, {0, 0, 1e300, 9}),
                                        slot(7, {-1e9, 0, 9, 9}), slot(8, {0, 0, infinity, 9})};
    std::vector<int> tried;
    const auto pending = WindowTiling::placeRound(slots, [&](const WindowSlot& each) {
        tried.push_back(each.index);
        return each.index == 1;
    });
    EXPECT_THAT(tried, ElementsAre(0, 1, 2));
    EXPECT_THAT(pending, ElementsAre(slots[0], slots[2]));
}

} // namespace
} // namespace vellory::workspaces_tests
