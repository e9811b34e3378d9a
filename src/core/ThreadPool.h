#pragma once
// The program's one pool of worker threads for data-parallel pixel loops. Work is split
// into bands of rows; each band is computed exactly as a single thread would compute it,
// so results never depend on the number of threads.
#include <functional>

namespace quorbel {

// Calls body(begin, end) for consecutive bands covering [0, count), on the calling thread and
// the pool's workers, and returns when all bands are done. Bands hold at least minGrain
// items. A call made from inside a band runs serially on that thread.
void ParallelFor(int count, int minGrain, const std::function<void(int begin, int end)>& body);

// Threads that take part in a ParallelFor (the caller included). Starts at the number of
// cores, or at QUORBEL_THREADS when that is set.
int ThreadCount();

// Sets the number of threads that take part; 1 makes every loop serial. For benchmarks and
// tests only; call it while no loop is running anywhere.
void SetThreadCount(int count);

// While one is alive (and active), every ParallelFor started on the thread that made it runs
// serially on that thread, leaving the pool to others: for a batch worker when there is
// already a picture per core in flight.
class SerialLoopsOnThisThread {
public:
    explicit SerialLoopsOnThisThread(bool active = true);
    ~SerialLoopsOnThisThread();
    SerialLoopsOnThisThread(const SerialLoopsOnThisThread&) = delete;
    SerialLoopsOnThisThread& operator=(const SerialLoopsOnThisThread&) = delete;

private:
    bool previous_;
};

}  // namespace quorbel
