// SPDX-License-Identifier: Apache-2.0
#include <atomic>
#include <semaphore>
#include <thread>

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/qt/QtScheduler.h"

namespace vellory::test {

// What work refers to may go after that.
TEST(QtScheduler, EndingBackgroundWorkWaitsForWhatHasBegunAndDropsTheRest) {
    QtScheduler scheduler;
    std::atomic<int> begun = 0;
    std::atomic<int> over = 0;
    std::atomic<int> delivered = 0;
    std::counting_semaphore<> first(0);
    std::counting_semaphore<> gate(0);
    const auto work = [&]() -> Scheduler::Task {
        ++begun;
        first.release();
        gate.acquire();
        ++over;
        return [&] { ++delivered; };
    };
    constexpr int jobs = 20;
    for (int i = 0; i < jobs; ++i) {
        scheduler.inBackground(work);
    }
    first.acquire();
    const std::jthread opener([&] { gate.release(jobs); });
    scheduler.endBackground();
    const int ran = begun;
    EXPECT_EQ(over, ran);

    scheduler.inBackground(work);
    gate.release(jobs);
    QCoreApplication::processEvents();
    scheduler.endBackground();
    EXPECT_EQ(begun, ran);
    EXPECT_EQ(delivered, 0);
}

} // namespace vellory::test
