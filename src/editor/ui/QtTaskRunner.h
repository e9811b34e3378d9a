#pragma once
// Long work on a worker thread; the preview and the end come back through the event loop.
#include <QObject>
#include <thread>

#include "editor/EditorPorts.h"

namespace quorbel {

class QtTaskRunner : public QObject, public TaskRunner {
    Q_OBJECT
public:
    explicit QtTaskRunner(QObject* parent = nullptr) : QObject(parent) {}
    ~QtTaskRunner() override;
    // One run at a time: the model takes no second command while one is going.
    void Run(std::function<void(const Post& post)> work, std::function<void()> done) override;

private:
    std::thread worker_;
};

}  // namespace quorbel
