// Lets the toolkit's event loop run within a test.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <chrono>

namespace vantor::testing {

// Until `done()` holds, or for `longest`; the result is whether it holds.
template <typename Done>
bool runUntil(Done&& done, std::chrono::milliseconds longest = std::chrono::seconds(10)) {
    QElapsedTimer elapsed;
    elapsed.start();
    while (!done() && elapsed.elapsed() < longest.count())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
    return done();
}

inline void runFor(std::chrono::milliseconds time) {
    runUntil([] { return false; }, time);
}

} // namespace vantor::testing
