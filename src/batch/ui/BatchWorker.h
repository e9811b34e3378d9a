#pragma once
// One folder of a batch run on a worker thread. Progress and the end come back through the
// event loop; the overwrite question is asked on the window's thread while the worker waits
// for the answer, with a small picture of the existing file decoded on the worker. Cancel stops
// the run between pictures.
#include <QImage>
#include <QObject>
#include <atomic>
#include <functional>
#include <thread>

#include "batch/BatchSession.h"

namespace quorbel {

class BatchWorker : public QObject {
    Q_OBJECT
public:
    explicit BatchWorker(QObject* parent = nullptr) : QObject(parent) {}
    ~BatchWorker() override;

    // Each runs on the window's thread.
    std::function<void(int percent, int done, int total, const std::string& file)> onProgress;
    std::function<OverwriteAnswer(const std::filesystem::path& existing, const QImage& picture)> ask;
    std::function<void(const BatchRunReport& folderReport)> onDone;

    // The session must stay alive and untouched until onDone.
    void Start(BatchSession& session, const BatchJob& job, const BatchSession::Folder& folder,
               int64_t continuationBase);
    void Cancel() { cancel_ = true; }
    bool Running() const { return running_; }

private:
    std::thread thread_;
    std::atomic<bool> cancel_{false};
    bool running_ = false;
};

}  // namespace quorbel
