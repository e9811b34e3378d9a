// Google Benchmark figures for the picture files: decode and encode of a 12-megapixel JPEG
// (full size, and decode at 1/4 and 1/8), PNG and TIFF encode, in megapixels of the full
// picture per second. scripts/bench runs djpeg and cjpeg on the same file beside it.
//
// QUORBEL_BENCH_JPEG names the JPEG; without it a made-up picture is encoded first.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

#include "imaging/cDib.h"
#include "output/Codecs.h"
#include "output/JpegCodec.h"

namespace quorbel {
namespace {

const std::vector<uint8_t>& JpegBytes() {
    static std::vector<uint8_t> bytes = [] {
        std::vector<uint8_t> b;
        if (const char* path = std::getenv("QUORBEL_BENCH_JPEG")) {
            std::ifstream in(path, std::ios::binary);
            b.assign(std::istreambuf_iterator<char>(in), {});
            if (!b.empty()) return b;
        }
        cDib d;
        d.Create(4000, 3000, 0);
        for (int y = 0; y < 3000; ++y)
            for (int x = 0; x < 4000; ++x) {
                uint8_t* p = d.Row(y) + x * 4;
                p[0] = static_cast<uint8_t>(x * 255 / 4000);
                p[1] = static_cast<uint8_t>(y * 255 / 3000);
                p[2] = static_cast<uint8_t>((x ^ y) & 0xFF);
            }
        EncodeJpeg(d.View(), 92, b);
        return b;
    }();
    return bytes;
}

const cDib& Decoded() {
    static cDib d = [] {
        cDib out;
        DecodeJpeg(JpegBytes(), out, 1);
        return out;
    }();
    return d;
}

void Megapixels(benchmark::State& state) {
    JpegInfo info;
    ReadJpegInfo(JpegBytes(), info);
    state.counters["MP/s"] = benchmark::Counter(info.width * double(info.height) / 1e6 * state.iterations(),
                                                benchmark::Counter::kIsRate);
}

void BM_JpegDecode(benchmark::State& state) {
    const int denominator = static_cast<int>(state.range(0));
    for (auto _ : state) {
        cDib out;
        if (DecodeJpeg(JpegBytes(), out, denominator) != kJpegOk) state.SkipWithError("decode failed");
        benchmark::DoNotOptimize(out.lpBits());
    }
    Megapixels(state);
}

void BM_JpegEncodeQ85(benchmark::State& state) {
    std::vector<uint8_t> out;
    for (auto _ : state) {
        out.clear();
        EncodeJpeg(Decoded().View(), 85, out);
        benchmark::DoNotOptimize(out.data());
    }
    Megapixels(state);
}

void BM_PngEncode(benchmark::State& state) {
    std::vector<uint8_t> out;
    for (auto _ : state) {
        out.clear();
        EncodePng(Decoded(), out);
        benchmark::DoNotOptimize(out.data());
    }
    Megapixels(state);
}

void BM_TiffEncode(benchmark::State& state) {
    std::vector<uint8_t> out;
    for (auto _ : state) {
        out.clear();
        EncodeTiff(Decoded(), 1, 24, out);
        benchmark::DoNotOptimize(out.data());
    }
    Megapixels(state);
}

BENCHMARK(BM_JpegDecode)->Arg(1)->Arg(4)->Arg(8)->ArgName("scale_1/")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_JpegEncodeQ85)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_PngEncode)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);
BENCHMARK(BM_TiffEncode)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace quorbel

BENCHMARK_MAIN();
