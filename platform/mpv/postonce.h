#pragma once

#include <QMetaObject>
#include <QObject>

#include <atomic>
#include <utility>

// For callbacks that mpv runs on a thread of its own: the work is handed to
// the owner's thread, and posted again only after it has cleared `posted`,
// so a burst of wakeups costs one queued call.
template<typename Work> void postOnce(QObject *owner, std::atomic<bool> &posted, Work work)
{
    if (posted.exchange(true))
        return;
    QMetaObject::invokeMethod(owner, std::move(work), Qt::QueuedConnection);
}
