#pragma once
// Work for a window done on the program's thread pool, its result handed back on the window's
// thread. Only the newest request's result is shown: an older one still running is dropped
// when it ends, and one not started yet never starts. Nothing comes back once the owner is
// gone, so closing the window neither waits for the work nor sees its result.
#include <QCoreApplication>
#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <atomic>
#include <memory>
#include <utility>

namespace quorbel {

class NewestOnly {
public:
    explicit NewestOnly(QObject* owner) : owner_(owner) {}
    ~NewestOnly() { Drop(); }
    NewestOnly(const NewestOnly&) = delete;
    NewestOnly& operator=(const NewestOnly&) = delete;

    // work() runs on the pool and must not touch the owner; show(result) runs on the owner's
    // thread while the owner is alive and no newer request has been made.
    template <class Work, class Show>
    void Run(Work work, Show show) {
        const int token = ++*newest_;
        QThreadPool::globalInstance()->start(
            [newest = newest_, owner = QPointer<QObject>(owner_), token, work = std::move(work),
             show = std::move(show)]() mutable {
                if (*newest != token) return;  // a newer request came before this one started
                auto result = work();
                QCoreApplication* app = QCoreApplication::instance();
                if (!app || *newest != token) return;
                // Posted to the application, which outlives the owner; the owner is checked there.
                QMetaObject::invokeMethod(
                    app,
                    [newest, owner, token, show = std::move(show), result = std::move(result)]() mutable {
                        if (owner && *newest == token) show(std::move(result));
                    },
                    Qt::QueuedConnection);
            });
    }
    // Forgets every request made so far.
    void Drop() { ++*newest_; }

private:
    QObject* owner_;
    std::shared_ptr<std::atomic<int>> newest_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace quorbel
