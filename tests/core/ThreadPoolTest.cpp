#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "core/ThreadPool.h"

namespace quorbel {

TEST(ThreadPool, EveryItemIsVisitedExactlyOnceWhateverTheThreadCount) {
    const int saved = ThreadCount();
    for (int threads : {1, 2, 5}) {
        SetThreadCount(threads);
        for (int count : {0, 1, 7, 1000}) {
            std::vector<std::atomic<int>> seen(count);
            ParallelFor(count, 3, [&](int b, int e) {
                EXPECT_LT(b, e);
                for (int i = b; i < e; ++i) seen[i]++;
            });
            for (int i = 0; i < count; ++i) ASSERT_EQ(seen[i].load(), 1) << threads << " " << count;
        }
    }
    SetThreadCount(saved);
}

TEST(ThreadPool, NestedAndConcurrentLoopsFinish) {
    const int saved = ThreadCount();
    SetThreadCount(3);
    std::atomic<long> total{0};
    auto outer = [&] {
        ParallelFor(50, 1, [&](int b, int e) {
            for (int i = b; i < e; ++i)
                ParallelFor(20, 1, [&](int bb, int ee) { total += ee - bb; });
        });
    };
    std::thread a(outer), b(outer);
    a.join();
    b.join();
    EXPECT_EQ(total.load(), 2 * 50 * 20);
    SetThreadCount(saved);
}

TEST(ThreadPool, SerialLoopsStayOnTheThreadThatAskedUntilItLetsGo) {
    const int saved = ThreadCount();
    SetThreadCount(3);
    std::atomic<int> bands{0};
    const std::thread::id self = std::this_thread::get_id();
    {
        const SerialLoopsOnThisThread serial;
        const SerialLoopsOnThisThread inactive(false);  // an inactive one changes nothing
        ParallelFor(1000, 1, [&](int b, int e) {
            EXPECT_EQ(std::make_pair(b, e), std::make_pair(0, 1000));
            EXPECT_EQ(std::this_thread::get_id(), self);
            ++bands;
        });
        EXPECT_EQ(bands.load(), 1);
    }
    bands = 0;
    ParallelFor(1000, 1, [&](int, int) { ++bands; });
    EXPECT_GT(bands.load(), 1);  // split over the pool again
    SetThreadCount(saved);
}

}  // namespace quorbel
