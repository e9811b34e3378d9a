#include "editor/ui/QtTaskRunner.h"

#include <QMetaObject>
#include <QPointer>

namespace quorbel {

QtTaskRunner::~QtTaskRunner() {
    if (worker_.joinable()) worker_.join();
}

void QtTaskRunner::Run(std::function<void(const Post& post)> work, std::function<void()> done) {
    if (worker_.joinable()) worker_.join();
    QPointer<QtTaskRunner> self(this);
    const Post post = [self](std::function<void()> callback) {
        if (self) QMetaObject::invokeMethod(self.data(), std::move(callback), Qt::QueuedConnection);
    };
    worker_ = std::thread([this, self, post, work = std::move(work), done = std::move(done)]() mutable {
        try {
            work(post);
        } catch (...) {
            // The work's own result says what was made; an exception leaves it unmade.
        }
        if (self)
            QMetaObject::invokeMethod(
                self.data(),
                [this, done = std::move(done)] {
                    if (worker_.joinable()) worker_.join();
                    done();
                },
                Qt::QueuedConnection);
    });
}

}  // namespace quorbel
