// Megapixels per second of a few filters on a 12-megapixel picture (4000 × 3000), on one
// thread and on all. Not part of the test run; the benchmark build picks it up.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "core/Random.h"
#include "core/ThreadPool.h"
#include "effects/FilterList.h"
#include "effects/Remap.h"
#include "imaging/cDIBDither.h"

namespace {
using namespace quorbel;

cDib& Photo() {
    static cDib pic = [] {
        cDib d;
        d.Create(4000, 3000);
        Random rnd(1);
        // Smooth gradients with a little noise, so that neither branch of any filter dominates.
        for (int y = 0; y < 3000; ++y) {
            uint8_t* row = d.Row(y);
            for (int x = 0; x < 4000; ++x) {
                const int n = static_cast<int>(rnd.Next() & 15);
                row[4 * x] = uint8_t((x / 16 + n) & 255);
                row[4 * x + 1] = uint8_t((y / 12 + n) & 255);
                row[4 * x + 2] = uint8_t(((x + y) / 28 + n) & 255);
            }
        }
        return d;
    }();
    return pic;
}

void Filter(benchmark::State& state, int index) {
    const int saved = ThreadCount();
    if (state.range(0) == 1) SetThreadCount(1);
    cDIBFilter engine;
    cDib work;
    work.Create(4000, 3000);
    FilterSettings s = InitialSettings(index);
    if (index == 1 || index == 25) s.params[0] = 10;
    for (auto _ : state) {
        state.PauseTiming();
        std::memcpy(work.lpBits(), Photo().lpBits(), static_cast<size_t>(work.Size()));
        state.ResumeTiming();
        ApplyFilter(engine, work, index, s);
        benchmark::DoNotOptimize(work.lpBits());
    }
    SetThreadCount(saved);
    state.counters["MP/s"] = benchmark::Counter(12.0 * state.iterations(), benchmark::Counter::kIsRate);
}

void Warp(benchmark::State& state) {
    const int saved = ThreadCount();
    if (state.range(0) == 1) SetThreadCount(1);
    cDib out;
    for (auto _ : state) ApplyWarp(Photo(), out, 1, 0);
    SetThreadCount(saved);
    state.counters["MP/s"] = benchmark::Counter(12.0 * state.iterations(), benchmark::Counter::kIsRate);
}

void Fish(benchmark::State& state) {
    const int saved = ThreadCount();
    if (state.range(0) == 1) SetThreadCount(1);
    cDib out;
    for (auto _ : state) ApplyFish(Photo(), out, 0);
    SetThreadCount(saved);
    state.counters["MP/s"] = benchmark::Counter(12.0 * state.iterations(), benchmark::Counter::kIsRate);
}

void Dither(benchmark::State& state) {
    cDIBPal pal;
    pal.CreateWebSafe();
    cDIBDither d;
    for (auto _ : state) d.Dither(Photo(), pal);
    state.counters["MP/s"] = benchmark::Counter(12.0 * state.iterations(), benchmark::Counter::kIsRate);
}

}  // namespace

// Every filter of the list on one thread and on all (argument 1, or 0 for all), then the
// twist, the fisheye and the dither.
int main(int argc, char** argv) {
    const auto& list = FilterList();
    for (int i = 0; i < static_cast<int>(list.size()); ++i)
        benchmark::RegisterBenchmark((std::string("Filter/") + list[i].name).c_str(), Filter, i)
            ->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(0.3);
    benchmark::RegisterBenchmark("Warp", Warp)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::RegisterBenchmark("Fish", Fish)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::RegisterBenchmark("Dither", Dither)->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
