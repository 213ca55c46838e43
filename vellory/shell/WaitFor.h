// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

namespace vellory {

/// Lets events run until `done`; false when patience ends first.
template <class Condition>
bool waitFor(Condition done) {
    constexpr int patienceMilliseconds = 15'000;
    const QDeadlineTimer deadline(patienceMilliseconds);
    while (!done()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

} // namespace vellory
