#pragma once

#include <QFutureWatcher>
#include <QtConcurrentRun>

#include <type_traits>
#include <utility>

//! Runs the work on a pool thread and hands its result to \a done on the main thread. A context
//! that dies first hears nothing; the work itself must not touch it.
template <typename Work, typename Done>
void inBackground(QObject *context, Work work, Done done)
{
    auto *watcher = new QFutureWatcher<std::invoke_result_t<Work>>(context);
    QObject::connect(
        watcher, &QFutureWatcherBase::finished, context, [watcher, done = std::move(done)] {
            watcher->deleteLater();
            done(watcher->result());
        });
    watcher->setFuture(QtConcurrent::run(std::move(work)));
}
