#include "effects/ui/PictureJob.h"

#include <exception>

namespace quorbel {
namespace {

// Thrown from the progress callback to leave an operation early. Progress is raised
// between slices of rows on the calling thread, so nothing is half-way through a band.
struct Cancelled {};

}  // namespace

PictureJob::PictureJob(QObject* parent) : QObject(parent) {}

PictureJob::~PictureJob() {
    Cancel();
    Wait();
}

bool PictureJob::Start(const cDib& source, Operation operation) {
    if (running_) return false;
    Wait();  // the previous worker has posted its end already; only joining is left
    running_ = true;
    cancel_ = false;
    error_.clear();
    result_.Destroy();
    worker_ = std::thread([this, &source, operation = std::move(operation)] {
        const ProgressFn onProgress = [this](int percent) {
            if (cancel_) throw Cancelled{};
            QMetaObject::invokeMethod(this, [this, percent] { emit progress(percent); },
                                      Qt::QueuedConnection);
        };
        bool done = false;
        QString error;
        cDib result;
        try {
            done = operation(source, result, onProgress) && !cancel_;
        } catch (const Cancelled&) {
        } catch (const std::exception& e) {
            error = QString::fromStdString(e.what());
        } catch (...) {
            error = QStringLiteral("Unexpected error");
        }
        QMetaObject::invokeMethod(
            this,
            [this, done, error, r = std::make_shared<cDib>(std::move(result))] {
                if (done) result_.Swap(*r);
                error_ = error;
                Finish(done);
            },
            Qt::QueuedConnection);
    });
    return true;
}

void PictureJob::Cancel() { cancel_ = true; }

void PictureJob::Wait() {
    if (worker_.joinable()) worker_.join();
}

void PictureJob::Finish(bool done) {
    Wait();
    running_ = false;
    // A Cancel made after the worker ended, but before this, still wins.
    if (cancel_ && done) {
        done = false;
        result_.Destroy();
    }
    emit finished(done);
}

cDib PictureJob::TakeResult() { return std::move(result_); }

}  // namespace quorbel
