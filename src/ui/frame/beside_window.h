// Long work beside the window: on a thread of its own, on copies, its result back on the user-interface thread.
#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <QPointer>
#include <QThreadPool>
#include <memory>
#include <utility>

namespace vantor::ui {

// The threads that read what the user chose. Apart from others, so that the program can end without those whose
// disk does not answer; many, so that such ones hold up no other read.
[[nodiscard]] inline QThreadPool& readingThreads() {
    // Never deleted, as that would wait for them.
    static auto* const threads = [] {
        constexpr int kMostAtOnce = 16;
        auto* const pool = new QThreadPool;
        pool->setMaxThreadCount(kMostAtOnce);
        return pool;
    }();
    return *threads;
}

// Runs `work` on one of the threads and then `onDone` with its result on this one, unless `owner` has gone
// meanwhile. What `work` captures has to outlive it, whatever becomes of the owner.
template <typename Result, typename Owner, typename Work, typename OnDone>
void runBesideWindow(QThreadPool& threads, Owner* owner, Work work, OnDone onDone) {
    threads.start([guard = QPointer<Owner>(owner), context = QPointer<QObject>(qApp), work = std::move(work),
                   onDone = std::move(onDone)]() mutable {
        auto result = std::make_shared<Result>(work());
        QMetaObject::invokeMethod(
            context.data(),
            [guard, result, onDone = std::move(onDone)]() mutable {
                if (guard)
                    onDone(*result);
            },
            Qt::QueuedConnection);
    });
}

// For work that is to be brought to its end, such as writing a file: the program ends after it.
template <typename Result, typename Owner, typename Work, typename OnDone>
void besideWindow(Owner* owner, Work work, OnDone onDone) {
    runBesideWindow<Result>(*QThreadPool::globalInstance(), owner, std::move(work), std::move(onDone));
}

// For reading, which changes nothing and may be given up: the program does not wait for it to end.
template <typename Result, typename Owner, typename Work, typename OnDone>
void readBesideWindow(Owner* owner, Work work, OnDone onDone) {
    runBesideWindow<Result>(readingThreads(), owner, std::move(work), std::move(onDone));
}

} // namespace vantor::ui
