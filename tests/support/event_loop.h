// Lets the toolkit's event loop run within a test. No test judges by how long that takes: the waits only end one that
// would hang.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMetaObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <utility>

namespace vantor::testing {

// Until `done()` holds, or for `longest`; the result is whether it holds.
template <typename Done>
bool runUntil(Done&& done, std::chrono::milliseconds longest = std::chrono::minutes(2)) {
    QElapsedTimer elapsed;
    elapsed.start();
    while (!done() && elapsed.elapsed() < longest.count())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
    return done();
}

// On the next turn of the event loop; may be called on any thread.
inline void post(std::function<void()> work) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}

// For at least so long, and until everything has happened that was due by then: on a busy machine as well.
inline void runFor(std::chrono::milliseconds time) {
    bool isOver = false;
    QTimer::singleShot(time, Qt::PreciseTimer, [&isOver] { isOver = true; });
    runUntil([&isOver] { return isOver; });
    // What that set off in its turn.
    for (int turn = 0; turn < 3; ++turn)
        QCoreApplication::processEvents();
}

} // namespace vantor::testing
