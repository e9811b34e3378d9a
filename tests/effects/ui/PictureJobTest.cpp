#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

#include "UiTestSupport.h"
#include "effects/ui/PictureJob.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

TEST(PictureJob, RunsOnAWorkerAndReportsOnTheOwnersThread) {
    PictureJob job;
    const cDib source = Flat(3, 2, Grey(9));
    std::thread::id workerThread;
    std::vector<int> seen;
    bool progressOnOwner = true;
    int finishedCount = 0;
    bool finishedDone = false;
    QObject::connect(&job, &PictureJob::progress, [&](int p) {
        seen.push_back(p);
        progressOnOwner = progressOnOwner && QThread::currentThread() == QCoreApplication::instance()->thread();
    });
    QObject::connect(&job, &PictureJob::finished, [&](bool done) {
        ++finishedCount;
        finishedDone = done;
    });
    ASSERT_TRUE(job.Start(source, [&](const cDib& src, cDib& result, const ProgressFn& progress) {
        workerThread = std::this_thread::get_id();
        for (int p : {0, 50, 100}) progress(p);
        result = Copy(src);
        return true;
    }));
    // Until its end has been handled here, the job counts as running and takes no other.
    EXPECT_TRUE(job.Running());
    EXPECT_FALSE(job.Start(source, [](const cDib&, cDib&, const ProgressFn&) { return true; }));

    ASSERT_TRUE(WaitUntil([&] { return finishedCount == 1; }));
    EXPECT_NE(workerThread, std::this_thread::get_id());
    EXPECT_EQ(seen, (std::vector<int>{0, 50, 100}));
    EXPECT_TRUE(progressOnOwner);
    EXPECT_TRUE(finishedDone);
    EXPECT_FALSE(job.Running());
    EXPECT_TRUE(Same(job.TakeResult(), source));
}

TEST(PictureJob, CancelStopsTheRunAtItsNextProgressStep) {
    PictureJob job;
    const cDib source = Flat(2, 2, Grey(1));
    bool ended = false, done = true;
    int steps = 0;
    QObject::connect(&job, &PictureJob::finished, [&](bool d) {
        ended = true;
        done = d;
    });
    QObject::connect(&job, &PictureJob::progress, [&](int) { ++steps; });
    const auto start = std::chrono::steady_clock::now();
    job.Start(source, [](const cDib& src, cDib& result, const ProgressFn& progress) {
        result = Copy(src);
        // Would take 20 seconds if nobody stopped it.
        for (int i = 0; i < 20000; ++i) {
            progress(i / 200);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    });
    ASSERT_TRUE(WaitUntil([&] { return steps > 0; }));
    job.Cancel();
    ASSERT_TRUE(WaitUntil([&] { return ended; }, 5000));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_FALSE(done);
    EXPECT_TRUE(job.Error().isEmpty());
    EXPECT_FALSE(job.TakeResult().hDIB());
}

TEST(PictureJob, AnErrorOfTheOperationEndsTheRunWithItsText) {
    PictureJob job;
    const cDib source = Flat(2, 2, Grey(1));
    bool ended = false, done = true;
    QObject::connect(&job, &PictureJob::finished, [&](bool d) {
        ended = true;
        done = d;
    });
    job.Start(source, [](const cDib&, cDib&, const ProgressFn&) -> bool { throw std::overflow_error("Overflow"); });
    ASSERT_TRUE(WaitUntil([&] { return ended; }));
    EXPECT_FALSE(done);
    EXPECT_EQ(job.Error(), QStringLiteral("Overflow"));
}

}  // namespace
}  // namespace quorbel
