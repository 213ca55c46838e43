// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "model/ScrollPager.h"

namespace vellory::test {

namespace {

/// Pages of 1000 pixels that turn as the pager says.
struct Pages {
    ScrollPager pager;
    int page;
    int count = 10;
    double time = 100;
    double offset = 0;

    void scroll(Scroll event, double after = 0.01) {
        time += after;
        const auto result = pager.feed(event, time, {page, count, 1000});
        page = result.page;
        offset = result.offset;
    }
    void gesture(int steps, double pixels, double restBeforeEnd = 0.01) {
        scroll({.precise = true, .phase = Scroll::Phase::begin}, 1);
        for (int i = 0; i < steps; ++i) {
            scroll({.dx = pixels, .precise = true, .phase = Scroll::Phase::update});
        }
        scroll({.precise = true, .phase = Scroll::Phase::end}, restBeforeEnd);
    }
};

} // namespace

TEST(ScrollPager, OneNotchOfAWheelTurnsOnePageHoweverFinelyItReports) {
    for (const int parts : {1, 3, 4, 8, 15, 120}) {
        Pages pages{.pager = {}, .page = 3};
        for (int i = 0; i < parts; ++i) {
            EXPECT_EQ(pages.page, 3) << i << " of " << parts;
            pages.scroll({.dy = -1.0 / parts});
        }
        EXPECT_EQ(pages.page, 4) << parts;
        for (int i = 0; i < 2 * parts; ++i) {
            pages.scroll({.dy = 1.0 / parts});
        }
        EXPECT_EQ(pages.page, 2) << parts;
    }
}

TEST(ScrollPager, APartOfANotchIsForgottenAfterAPauseOrATurnBack) {
    Pages pages{.pager = {}, .page = 3};
    pages.scroll({.dy = -0.6});
    pages.scroll({.dy = -0.6}, 0.6);
    EXPECT_EQ(pages.page, 3);
    pages.scroll({.dy = 0.6});
    EXPECT_EQ(pages.page, 3);
}

TEST(ScrollPager, WheelsStopAtTheFirstAndLastPage) {
    Pages pages{.pager = {}, .page = 8};
    pages.scroll({.dx = -5});
    EXPECT_EQ(pages.page, 9);
    pages.scroll({.dx = 1e300});
    EXPECT_EQ(pages.page, 0);
    pages.scroll({.dx = std::numeric_limits<double>::quiet_NaN()});
    EXPECT_EQ(pages.page, 0);
}

TEST(ScrollPager, AFlickTurnsOnePageAndWhatRunsOnAfterwardsNone) {
    Pages pages{.pager = {}, .page = 3};
    pages.gesture(6, -12); // 1200 pixels a second, 72 in all
    EXPECT_EQ(pages.page, 4);
    for (int i = 0; i < 50; ++i) {
        pages.scroll({.dx = -40, .precise = true, .phase = Scroll::Phase::momentum});
    }
    EXPECT_EQ(pages.page, 4);
    pages.gesture(6, 12);
    EXPECT_EQ(pages.page, 3);
}

TEST(ScrollPager, AShortDragSpringsBackAndALongOneTurns) {
    Pages pages{.pager = {}, .page = 3};
    pages.gesture(20, -8, 0.5);
    EXPECT_EQ(pages.page, 3) << "160 pixels, and the fingers rested";
    pages.gesture(40, -8, 0.5);
    EXPECT_EQ(pages.page, 4) << "320 pixels";
    EXPECT_EQ(pages.offset, 0);
}

TEST(ScrollPager, PagesFollowTheFingersAndResistAtTheEnds) {
    for (const int page : {0, 3}) {
        Pages pages{.pager = {}, .page = page};
        pages.scroll({.precise = true, .phase = Scroll::Phase::begin});
        pages.scroll({.dx = 200, .precise = true, .phase = Scroll::Phase::update});
        if (page == 3) {
            EXPECT_EQ(pages.offset, 200);
        } else {
            EXPECT_GT(pages.offset, 0);
            EXPECT_LT(pages.offset, 120);
        }
    }
}

TEST(ScrollPager, ATouchPadThatTellsNoPhasesTurnsOnePageForEachFlick) {
    Pages pages{.pager = {}, .page = 3};
    const auto flick = [&](double pixels) {
        pages.scroll({.dy = pixels, .precise = true}, 1);
        for (int i = 0; i < 60; ++i) {
            pages.scroll({.dy = pixels, .precise = true});
        }
    };
    flick(-12);
    EXPECT_EQ(pages.page, 4);
    flick(-12);
    EXPECT_EQ(pages.page, 5);
    flick(12);
    EXPECT_EQ(pages.page, 4);
    pages.scroll({.dy = -10, .precise = true}, 1);
    pages.scroll({.dy = -10, .precise = true});
    EXPECT_EQ(pages.page, 4) << "fingers that came to rest";
}

} // namespace vellory::test
