// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/WindowGeometry.h"

#include <limits>

#include <gtest/gtest.h>

namespace vellory::test {
namespace {

using Rect = Workspace::Rect;
using Request = WindowGeometry::Request;

constexpr WindowGeometry::Edges none{};

TEST(WindowGeometry, RequestForItsOwnFrameIsWhereItIs) {
    for (const WindowGeometry& window :
         {WindowGeometry{100, 50, 300, 200, 0, {1, 2, 20, 5}, none},
          WindowGeometry{100, 50, 300, 200, 3, none, none},
          WindowGeometry{-10, -20, 300, 200, 0, none, {24, 25, 20, 30}},
          WindowGeometry{100, 50, 300, 200, 0, {1, 1, 1, 1}, {24, 24, 24, 24}}}) {
        const auto request = window.requestFor(window.frame());
        ASSERT_TRUE(request);
        // The corner is that of all that belongs to the window, shadows included.
        EXPECT_EQ(*request, (Request{window.x - window.decorations.left - window.border,
                                     window.y - window.decorations.top - window.border, 300, 200}));
    }
    EXPECT_EQ((WindowGeometry{100, 50, 300, 200, 0, {1, 2, 20, 5}, none}.frame()),
              (Rect{99, 30, 303, 225}));
    EXPECT_EQ((WindowGeometry{100, 50, 300, 200, 0, none, {24, 25, 20, 30}}.frame()),
              (Rect{124, 70, 251, 150}));
}

// What the server adds up stays within the protocol's numbers, or windows would come out at the
// other end.
TEST(WindowGeometry, NoFrameLeavesTheNumbersOfTheProtocol) {
    const WindowGeometry window{0, 0, 10, 10, 1, {5, 5, 25, 5}, {30, 30, 30, 30}};
    for (const double x : {-1e300, -40000.0, -32768.0, 0.0, 32767.0, 40000.0, 1e300}) {
        for (const double width : {1e-300, 0.4, 1.0, 61.0, 32767.0, 65536.0, 1e300}) {
            const auto request = window.requestFor({x, x, width, width});
            ASSERT_TRUE(request) << x << ' ' << width;
            EXPECT_GE(request->x, -32768);
            EXPECT_GE(request->y, -32768);
            EXPECT_GE(request->width, 1U);
            EXPECT_GE(request->height, 1U);
            EXPECT_LE(request->x + static_cast<int>(request->width) + 12, 32767);
            EXPECT_LE(request->y + static_cast<int>(request->height) + 32, 32767);
        }
    }
    EXPECT_EQ((WindowGeometry{}.requestFor({0.5, -0.5, 10.4, 10.5})), (Request{1, -1, 10, 11}));
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    for (const Rect& frame : {Rect{nan, 0, 100, 100}, Rect{0, nan, 100, 100}, Rect{0, 0, nan, 100},
                              Rect{0, 0, 100, infinite}, Rect{-infinite, 0, 100, 100},
                              Rect{0, 0, 0, 100}, Rect{0, 0, 100, -1}}) {
        EXPECT_EQ(window.requestFor(frame), std::nullopt);
    }
}

} // namespace
} // namespace vellory::test
