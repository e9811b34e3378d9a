#include "batch/ui/BatchWorker.h"

#include <QMetaObject>
#include <chrono>
#include <future>

#include "batch/ui/Thumbnails.h"

namespace quorbel {

namespace {
constexpr int kQuestionPicture = 160;  // the overwrite question's picture of the existing file
}  // namespace

BatchWorker::~BatchWorker() {
    // A worker waiting for an answer sees the cancel flag and takes No.
    cancel_ = true;
    if (thread_.joinable()) thread_.join();
}

void BatchWorker::Start(BatchSession& session, const BatchJob& job, const BatchSession::Folder& folder,
                        int64_t continuationBase) {
    if (thread_.joinable()) thread_.join();
    cancel_ = false;
    running_ = true;
    thread_ = std::thread([this, &session, job, folder, continuationBase] {
        BatchRunOptions options;
        options.cancel = &cancel_;
        options.continuationBase = continuationBase;
        BatchJob listed = job;  // the folder's list, for the counter's total
        listed.source = folder.source;
        if (!folder.ownRows) listed.pictures.clear();
        const int total = static_cast<int>(BatchItems(listed).size());
        auto done = std::make_shared<std::atomic<int>>(0);
        options.progress = [this, total, done](int percent, const std::string& file) {
            const int count = ++*done;
            QMetaObject::invokeMethod(
                this, [this, percent, count, total, file] {
                    if (onProgress) onProgress(percent, count, total, file);
                },
                Qt::QueuedConnection);
        };
        options.ask = [this](const std::filesystem::path& existing) {
            const QImage picture = LoadThumbnail(existing, kQuestionPicture);
            auto answer = std::make_shared<std::promise<OverwriteAnswer>>();
            std::future<OverwriteAnswer> future = answer->get_future();
            QMetaObject::invokeMethod(
                this,
                [this, answer, existing, picture] {
                    answer->set_value(ask ? ask(existing, picture) : OverwriteAnswer::No);
                },
                Qt::QueuedConnection);
            while (future.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready)
                if (cancel_) return OverwriteAnswer::No;
            return future.get();
        };
        BatchRunReport report = session.Run(job, folder, options);
        QMetaObject::invokeMethod(
            this, [this, report = std::move(report)] {
                if (thread_.joinable()) thread_.join();
                running_ = false;
                if (onDone) onDone(report);
            },
            Qt::QueuedConnection);
    });
}

}  // namespace quorbel
