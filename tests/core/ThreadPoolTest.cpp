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

}  // namespace quorbel
