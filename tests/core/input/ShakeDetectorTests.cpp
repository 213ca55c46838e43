// SPDX-License-Identifier: Apache-2.0
#include "Input/ShakeDetector.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <gmock/gmock.h>

namespace vellory::input_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Sensitivity = ShakeDetector::Sensitivity;

/// A hand that moves the pointer to and fro, and notes when the detector fires.
struct Hand {
    ShakeDetector detector;
    double x = 500;
    double time = 10;
    std::vector<double> fired;

    explicit Hand(Sensitivity sensitivity) : detector(sensitivity) { feed(); }

    void feed() {
        if (detector.feed(x, 0, time)) {
            fired.push_back(time);
        }
    }
    /// Moves by `distance` points in `seconds`, in steps of at most ten points.
    Hand& stroke(double distance, double seconds = 0.1) {
        const int steps = std::max(1, static_cast<int>(std::abs(distance) / 10));
        for (int i = 0; i < steps; ++i) {
            x += distance / steps;
            time += seconds / steps;
            feed();
        }
        return *this;
    }
    /// `count` strokes there and back, the first to the right.
    Hand& strokes(int count, double distance, double seconds = 0.1) {
        for (int i = 0; i < count; ++i) {
            stroke(i % 2 == 0 ? distance : -distance, seconds);
        }
        return *this;
    }
};

TEST(ShakeDetector, SensitivityDecidesHowFarHowOftenAndHowFast) {
    struct Case {
        Sensitivity sensitivity;
        int strokes;
        double distance;
        double seconds;
        std::size_t fires;
    };
    const Case cases[] = {
        // One more stroke than turns: the first begins the shake.
        {Sensitivity::gentle, 4, 50, 0.1, 1},
        {Sensitivity::gentle, 3, 50, 0.1, 0},
        {Sensitivity::gentle, 4, 39, 0.1, 0},
        {Sensitivity::gentle, 4, 50, 0.42, 0}, // 0.84 s from the first turn to the third
        {Sensitivity::normal, 5, 80, 0.1, 1},
        {Sensitivity::normal, 4, 80, 0.1, 0},
        {Sensitivity::normal, 5, 50, 0.1, 0},
        {Sensitivity::normal, 5, 80, 0.25, 0}, // 0.75 s
        {Sensitivity::firm, 6, 120, 0.1, 1},
        {Sensitivity::firm, 5, 120, 0.1, 0},
        {Sensitivity::firm, 6, 100, 0.1, 0},
        {Sensitivity::firm, 6, 120, 0.17, 0}, // 0.68 s
    };
    for (const Case& c : cases) {
        Hand hand(c.sensitivity);
        hand.strokes(c.strokes, c.distance, c.seconds);
        EXPECT_EQ(hand.fired.size(), c.fires)
            << ShakeDetector::rawValue(c.sensitivity) << ": " << c.strokes << " of " << c.distance;
    }
}

TEST(ShakeDetector, MovesOfUnderHalfAPointNeverCount) {
    ShakeDetector detector(Sensitivity::gentle);
    for (int i = 0; i < 10'000; ++i) {
        ASSERT_FALSE(detector.feed(i % 2 * 0.4, 0, i * 0.001));
    }
    // A slow drift in such steps is no stroke either.
    for (int i = 0; i < 1000; ++i) {
        ASSERT_FALSE(detector.feed(i * 0.49, 0, 10 + i * 0.0001));
    }
    EXPECT_THAT(Hand(Sensitivity::gentle).stroke(5).strokes(4, 50).fired, SizeIs(1));
}

TEST(ShakeDetector, JitterIsNoTurn) {
    // 7.9 points back in the middle of each stroke: still one stroke, and one turn at its end.
    Hand hand(Sensitivity::gentle);
    for (int i = 0; i < 4; ++i) {
        const double sign = i % 2 == 0 ? 1 : -1;
        hand.stroke(30 * sign, 0.05).stroke(-7.9 * sign, 0.01).stroke(30 * sign, 0.05);
    }
    EXPECT_THAT(hand.fired, SizeIs(1));
    // Eight points back are a turn, and the stroke after it is too short.
    Hand turned(Sensitivity::gentle);
    for (int i = 0; i < 8; ++i) {
        const double sign = i % 2 == 0 ? 1 : -1;
        turned.stroke(30 * sign, 0.02).stroke(-8 * sign, 0.01).stroke(30 * sign, 0.02);
    }
    EXPECT_THAT(turned.fired, IsEmpty());
}

TEST(ShakeDetector, ShortStrokeBreaksTheSequence) {
    Hand hand(Sensitivity::gentle);
    hand.stroke(50).stroke(-20).stroke(50).stroke(-50);
    EXPECT_THAT(hand.fired, IsEmpty());
    hand.stroke(50).stroke(-50);
    EXPECT_THAT(hand.fired, SizeIs(1));
}

TEST(ShakeDetector, DoesNotFireTwiceWithinASecond) {
    Hand hand(Sensitivity::gentle);
    hand.strokes(60, 50, 0.1); // six seconds of shaking
    ASSERT_THAT(hand.fired, SizeIs(testing::Ge(3U)));
    for (std::size_t i = 1; i < hand.fired.size(); ++i) {
        EXPECT_GT(hand.fired[i] - hand.fired[i - 1], 1.0);
        EXPECT_LT(hand.fired[i] - hand.fired[i - 1], 1.2);
    }
    // The count starts empty after a shake: a second later one more turn is not enough.
    Hand rested(Sensitivity::gentle);
    rested.strokes(4, 50);
    rested.time += 1.1;
    rested.strokes(2, 50);
    EXPECT_THAT(rested.fired, SizeIs(1));
    rested.strokes(2, 50);
    EXPECT_THAT(rested.fired, SizeIs(2));
}

TEST(ShakeDetector, SamplesThatAreNoNumbersAreAsIfTheyHadNotCome) {
    constexpr double inf = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    Hand hand(Sensitivity::gentle);
    for (int i = 0; i < 4; ++i) {
        hand.stroke(i % 2 == 0 ? 50 : -50);
        for (const double bad : {nan, inf, -inf}) {
            EXPECT_FALSE(hand.detector.feed(bad, bad, hand.time));
            EXPECT_FALSE(hand.detector.feed(hand.x, 0, bad));
        }
    }
    EXPECT_THAT(hand.fired, SizeIs(1));
    // From one end of the numbers to the other, a turn with each sample.
    constexpr double far = std::numeric_limits<double>::max();
    ShakeDetector detector(Sensitivity::gentle);
    int fired = 0;
    for (int i = 0; i < 6; ++i) {
        fired += detector.feed(i % 2 == 0 ? far : -far, 0, i * 0.1) ? 1 : 0;
    }
    EXPECT_EQ(fired, 1);
}

TEST(ShakeDetector, ClockThatRunsBackwardsDoesNotSilenceIt) {
    Hand hand(Sensitivity::gentle);
    hand.strokes(4, 50);
    ASSERT_THAT(hand.fired, SizeIs(1));
    hand.time -= 1000;
    hand.strokes(4, 50);
    EXPECT_THAT(hand.fired, SizeIs(2));
    // Turns of another time are no part of a shake now.
    Hand torn(Sensitivity::gentle);
    torn.strokes(3, 50);
    torn.time -= 1000;
    torn.stroke(-50);
    EXPECT_THAT(torn.fired, IsEmpty());
}

TEST(ShakeDetector, SensitivityIsStoredByName) {
    std::vector<std::string_view> names;
    for (const Sensitivity sensitivity : ShakeDetector::allSensitivities) {
        names.push_back(ShakeDetector::rawValue(sensitivity));
        EXPECT_EQ(ShakeDetector::sensitivity(names.back()), sensitivity);
    }
    EXPECT_THAT(names, ElementsAre("gentle", "normal", "firm"));
    EXPECT_EQ(ShakeDetector::sensitivity("Gentle"), std::nullopt);
}

} // namespace
} // namespace vellory::input_tests
