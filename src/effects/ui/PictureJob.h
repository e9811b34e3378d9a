#pragma once
// Runs one picture operation on a worker thread so the window stays responsive. Progress
// and the end of the run arrive as signals on the thread that owns the job.
#include <QObject>
#include <QString>
#include <atomic>
#include <functional>
#include <thread>

#include "imaging/cDib.h"

namespace quorbel {

class PictureJob : public QObject {
    Q_OBJECT
public:
    // Makes result from source; false when nothing was made.
    using Operation = std::function<bool(const cDib& source, cDib& result, const ProgressFn& progress)>;

    explicit PictureJob(QObject* parent = nullptr);
    ~PictureJob() override;

    // Starts a run. source is read on the worker and must stay alive and unchanged until
    // finished arrives. False (nothing started) while a run is going.
    bool Start(const cDib& source, Operation operation);
    bool Running() const { return running_; }
    // Asks the run to stop at its next progress step; finished(false) follows.
    void Cancel();
    // Blocks until the worker has ended; for tearing a window down.
    void Wait();

    // The picture of the last run that finished well.
    cDib TakeResult();
    // Why the last run failed; empty when it was cancelled or simply made nothing.
    const QString& Error() const { return error_; }

signals:
    void progress(int percent);
    void finished(bool done);

private:
    void Finish(bool done);

    std::thread worker_;
    std::atomic<bool> cancel_{false};
    bool running_ = false;
    cDib result_;
    QString error_;
};

}  // namespace quorbel
