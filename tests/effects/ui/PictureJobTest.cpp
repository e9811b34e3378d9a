#include "effects/ui/PictureJob.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

#include "Pictures.h"
#include "QtUi.h"

namespace quorbel::test {
namespace {

// A job whose progress and end are recorded as they reach the owner's thread.
struct Recorded {
    PictureJob job;
    std::vector<int> seen;
    bool onOwner = true, done = false;
    int ends = 0;
    Recorded() {
        QObject::connect(&job, &PictureJob::progress, [this](int p) {
            seen.push_back(p);
            onOwner = onOwner && QThread::currentThread() == QCoreApplication::instance()->thread();
        });
        QObject::connect(&job, &PictureJob::finished, [this](bool d) { ++ends, done = d; });
    }
};

TEST(PictureJob, RunsOnAWorkerAndReportsOnTheOwnersThread) {
    Recorded r;
    const cDib source = Flat(3, 2, Grey(9));
    std::thread::id worker;
    ASSERT_TRUE(r.job.Start(source, [&](const cDib& src, cDib& result, const ProgressFn& progress) {
        worker = std::this_thread::get_id();
        for (int p : {0, 50, 100}) progress(p);
        result = Copy(src);
        return true;
    }));
    // Until its end has been handled here, the job counts as running and takes no other.
    EXPECT_TRUE(r.job.Running());
    EXPECT_FALSE(r.job.Start(source, [](const cDib&, cDib&, const ProgressFn&) { return true; }));
    ASSERT_TRUE(WaitUntil([&] { return r.ends == 1; }));
    EXPECT_NE(worker, std::this_thread::get_id());
    EXPECT_EQ(r.seen, (std::vector<int>{0, 50, 100}));
    EXPECT_TRUE(r.onOwner && r.done);
    EXPECT_FALSE(r.job.Running());
    EXPECT_TRUE(Same(r.job.TakeResult(), source));
}

TEST(PictureJob, CancelAndErrorsEndTheRunWithNothing) {
    Recorded r;
    const cDib source = Flat(2, 2, Grey(1));
    const auto start = std::chrono::steady_clock::now();
    r.job.Start(source, [](const cDib& src, cDib& result, const ProgressFn& progress) {
        result = Copy(src);
        for (int i = 0; i < 20000; ++i) {  // 20 seconds unless stopped
            progress(i / 200);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    });
    ASSERT_TRUE(WaitUntil([&] { return !r.seen.empty(); }));
    r.job.Cancel();
    ASSERT_TRUE(WaitUntil([&] { return r.ends == 1; }, 5000));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_FALSE(r.done);
    EXPECT_TRUE(r.job.Error().isEmpty());
    EXPECT_FALSE(r.job.TakeResult().hDIB());

    Recorded failing;
    failing.job.Start(source, [](const cDib&, cDib&, const ProgressFn&) -> bool { throw std::overflow_error("Overflow"); });
    ASSERT_TRUE(WaitUntil([&] { return failing.ends == 1; }));
    EXPECT_FALSE(failing.done);
    EXPECT_EQ(failing.job.Error(), QStringLiteral("Overflow"));
}

}  // namespace
}  // namespace quorbel::test
