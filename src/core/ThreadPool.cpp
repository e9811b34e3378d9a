#include "core/ThreadPool.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace quorbel {
namespace {

// Set inside a band and by SerialLoopsOnThisThread: loops started here then run serially.
thread_local bool tSerial = false;

struct Job {
    const std::function<void(int, int)>* body;
    int count;
    int bandSize;
    int bands;
    std::atomic<int> nextBand{0};
    std::atomic<int> bandsDone{0};
    std::atomic<int> workersInside{0};  // pool threads that took this job off the queue
    std::mutex mutex;
    std::condition_variable finished;

    // Takes bands until none are left; returns after the last band it ran.
    void Work() {
        const bool wasSerial = tSerial;
        tSerial = true;
        for (int band; (band = nextBand.fetch_add(1)) < bands;) {
            const int begin = band * bandSize;
            (*body)(begin, std::min(count, begin + bandSize));
            if (bandsDone.fetch_add(1) + 1 == bands) {
                std::lock_guard lock(mutex);
                finished.notify_all();
            }
        }
        tSerial = wasSerial;
    }
};

class Pool {
public:
    explicit Pool(int threads) { Resize(threads); }
    ~Pool() { Stop(); }

    int Threads() const { return threads_; }

    void Resize(int threads) {
        Stop();
        threads_ = std::max(1, threads);
        stopping_ = false;
        for (int i = 1; i < threads_; ++i) workers_.emplace_back([this] { Loop(); });
    }

    void Run(Job& job) {
        {
            std::lock_guard lock(mutex_);
            for (int i = 1; i < std::min(threads_, job.bands); ++i) queue_.push_back(&job);
        }
        wake_.notify_all();
        job.Work();
        std::unique_lock lock(job.mutex);
        job.finished.wait(lock, [&] { return job.bandsDone.load() == job.bands; });
        lock.unlock();
        // Workers that never got to this job must not touch it once it is gone.
        {
            std::lock_guard qlock(mutex_);
            queue_.erase(std::remove(queue_.begin(), queue_.end(), &job), queue_.end());
        }
        // A worker that took the job may still be leaving Work(); it is only moments away.
        while (job.workersInside.load() != 0) std::this_thread::yield();
    }

private:

    void Loop() {
        std::unique_lock lock(mutex_);
        for (;;) {
            wake_.wait(lock, [&] { return stopping_ || !queue_.empty(); });
            if (stopping_) return;
            Job* job = queue_.front();
            queue_.pop_front();
            job->workersInside.fetch_add(1);
            lock.unlock();
            job->Work();
            job->workersInside.fetch_sub(1);
            lock.lock();
        }
    }

    void Stop() {
        {
            std::lock_guard lock(mutex_);
            stopping_ = true;
        }
        wake_.notify_all();
        for (auto& w : workers_) w.join();
        workers_.clear();
    }

    int threads_ = 1;
    bool stopping_ = false;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Job*> queue_;
    std::vector<std::thread> workers_;
};

int DefaultThreads() {
    if (const char* env = std::getenv("QUORBEL_THREADS")) {
        const int n = std::atoi(env);
        if (n > 0) return n;
    }
    return std::max(1u, std::thread::hardware_concurrency());
}

Pool& ThePool() {
    static Pool pool(DefaultThreads());
    return pool;
}

}  // namespace

void ParallelFor(int count, int minGrain, const std::function<void(int, int)>& body) {
    if (count <= 0) return;
    Pool& pool = ThePool();
    const int threads = pool.Threads();
    minGrain = std::max(1, minGrain);
    if (threads == 1 || tSerial || count <= minGrain) {
        body(0, count);
        return;
    }
    // A few bands per thread evens out bands that cost more than others.
    const int wanted = threads * 4;
    const int bandSize = std::max(minGrain, (count + wanted - 1) / wanted);
    Job job;
    job.body = &body;
    job.count = count;
    job.bandSize = bandSize;
    job.bands = (count + bandSize - 1) / bandSize;
    pool.Run(job);
}

int ThreadCount() { return ThePool().Threads(); }

void SetThreadCount(int count) { ThePool().Resize(count); }

SerialLoopsOnThisThread::SerialLoopsOnThisThread(bool active) : previous_(tSerial) { tSerial = tSerial || active; }

SerialLoopsOnThisThread::~SerialLoopsOnThisThread() { tSerial = previous_; }

}  // namespace quorbel
