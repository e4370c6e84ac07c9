// Long work beside the window: on a thread of its own, on copies, its result back on the user-interface thread.
#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <QPointer>
#include <QThreadPool>
#include <memory>
#include <utility>

namespace vantor::ui {

// Runs `work` on another thread and then `onDone` with its result on this one, unless `owner` has gone meanwhile.
// What `work` captures has to outlive it, whatever becomes of the owner.
template <typename Result, typename Owner, typename Work, typename OnDone>
void besideWindow(Owner* owner, Work work, OnDone onDone) {
    QThreadPool::globalInstance()->start([guard = QPointer<Owner>(owner), context = QPointer<QObject>(qApp),
                                          work = std::move(work), onDone = std::move(onDone)]() mutable {
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

} // namespace vantor::ui
