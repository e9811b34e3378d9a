// Google Benchmark figures for the pixel core: megapixels of source per second.
//
// The pictures are made in code unless QUORBEL_BENCH_PICTURE names a raw file of 32-bit
// blue-green-red-unused pixels, top row first, with QUORBEL_BENCH_SIZE=WxH (scripts/bench
// writes one from a real photograph, so that the peers and we work on the same pixels).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "core/ThreadPool.h"
#include "imaging/ResizeDib.h"
#include "imaging/cDib.h"

namespace quorbel {
namespace {

// A 4000 × 3000 picture: the real photograph when one is given, else smooth gradients with
// some texture.
const cDib& Source() {
    static cDib picture = [] {
        cDib d;
        const char* path = std::getenv("QUORBEL_BENCH_PICTURE");
        const char* size = std::getenv("QUORBEL_BENCH_SIZE");
        int w = 4000, h = 3000;
        if (path && size && std::sscanf(size, "%dx%d", &w, &h) == 2 && d.Create(w, h, 0)) {
            std::ifstream in(path, std::ios::binary);
            for (int y = 0; y < h && in; ++y) in.read(reinterpret_cast<char*>(d.Row(y)), static_cast<std::streamsize>(w) * 4);
            if (in) return d;
            std::fprintf(stderr, "cannot read %s, using a made-up picture\n", path);
        }
        d.Create(4000, 3000, 0);
        for (int y = 0; y < 3000; ++y)
            for (int x = 0; x < 4000; ++x) {
                uint8_t* p = d.Row(y) + x * 4;
                p[0] = static_cast<uint8_t>(x * 255 / 4000);
                p[1] = static_cast<uint8_t>(y * 255 / 3000);
                p[2] = static_cast<uint8_t>((x * 7 + y * 13) & 0xFF);
            }
        return d;
    }();
    return picture;
}

cDib Copy(const cDib& src) {
    cDib d;
    d.Create(src.Width(), src.Height(), 0);
    std::memcpy(d.lpBits(), src.lpBits(), static_cast<size_t>(src.Size()));
    return d;
}

void SetThreads(benchmark::State& state) { SetThreadCount(static_cast<int>(state.range(2))); }

void Report(benchmark::State& state, const cDib& src) {
    state.counters["src_MP/s"] = benchmark::Counter(src.Width() * double(src.Height()) / 1e6 * state.iterations(),
                                                    benchmark::Counter::kIsRate);
}

void BM_ResizeDib(benchmark::State& state, bool highQuality) {
    SetThreads(state);
    const cDib& src = Source();
    const int w = static_cast<int>(state.range(0)), h = static_cast<int>(state.range(1));
    for (auto _ : state) {
        state.PauseTiming();
        cDib d = Copy(src);
        state.ResumeTiming();
        ResizeDib(d, w, h, highQuality);
        benchmark::DoNotOptimize(d.lpBits());
    }
    Report(state, src);
}

void BM_QuarterTurn(benchmark::State& state) {
    SetThreads(state);
    cDib d;
    d.Create(3000, 4000, 0);
    for (auto _ : state) {
        d.Orientation(false, false, true);
        benchmark::DoNotOptimize(d.lpBits());
    }
    state.counters["src_MP/s"] = benchmark::Counter(12.0 * state.iterations(), benchmark::Counter::kIsRate);
}

void Sizes(benchmark::internal::Benchmark* b) {
    for (int threads : {1, 2}) {
        b->Args({640, 480, threads});
        b->Args({8000, 6000, threads});
    }
    b->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(1.0);
}

BENCHMARK_CAPTURE(BM_ResizeDib, high_quality, true)->Apply(Sizes)->ArgNames({"w", "h", "threads"});
BENCHMARK_CAPTURE(BM_ResizeDib, fast, false)->Apply(Sizes)->ArgNames({"w", "h", "threads"});
BENCHMARK(BM_QuarterTurn)->Args({0, 0, 1})->Args({0, 0, 2})->ArgNames({"", "", "threads"})
    ->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(1.0);

}  // namespace
}  // namespace quorbel

BENCHMARK_MAIN();
