// Bombs made at test time: each must be refused fast, with bounded memory, and with the
// loader's own message; a batch over all of them reports each and writes nothing.
#include <zlib.h>

#include <chrono>
#include <cstdio>
#include <cstring>
// jpeglib.h needs size_t and FILE declared first.
#include <jpeglib.h>

#include "Hardening.h"
#include "batch/BatchRun.h"
#include "output/CodecRegistry.h"
#include "output/Codecs.h"
#include "output/JpegCodec.h"

namespace quorbel {
namespace {

using namespace test;

void Put(Bytes& b, uint64_t v, int n, bool bigEndian) {
    for (int i = 0; i < n; ++i) b.push_back(uint8_t(v >> 8 * (bigEndian ? n - 1 - i : i)));
}

void PngChunk(Bytes& png, const char* type, const Bytes& data) {
    Put(png, data.size(), 4, true);
    const size_t start = png.size();
    png.insert(png.end(), type, type + 4);
    png.insert(png.end(), data.begin(), data.end());
    Put(png, crc32(0, png.data() + start, static_cast<uInt>(png.size() - start)), 4, true);
}

// colorType 0 grey, 2 RGB; idat is the zlib stream of the rows.
Bytes Png(uint32_t w, uint32_t h, int bitDepth, int colorType, const Bytes& idat) {
    Bytes png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'}, ihdr;
    Put(ihdr, w, 4, true);
    Put(ihdr, h, 4, true);
    ihdr.insert(ihdr.end(), {uint8_t(bitDepth), uint8_t(colorType), 0, 0, 0});
    PngChunk(png, "IHDR", ihdr);
    PngChunk(png, "IDAT", idat);
    PngChunk(png, "IEND", {});
    return png;
}

// A zlib stream of `matches` × 258 + 1 zero bytes, 13 bits per 258 bytes: one literal
// zero, then fixed-Huffman copies of length 258 at distance 1.
Bytes ZerosStream(uint64_t matches) {
    Bytes z = {0x78, 0x01};
    uint32_t acc = 0;
    int bits = 0;
    auto put = [&](uint32_t v, int n) {  // least significant bit first
        acc |= v << bits;
        for (bits += n; bits >= 8; bits -= 8, acc >>= 8) z.push_back(uint8_t(acc));
    };
    auto code = [&](uint32_t c, int n) {  // Huffman codes go most significant bit first
        for (int i = n - 1; i >= 0; --i) put((c >> i) & 1, 1);
    };
    put(1, 1), put(1, 2);      // last block, fixed codes
    code(0x30, 8);             // literal 0
    for (uint64_t i = 0; i < matches; ++i) code(0xC5, 8), code(0, 5);  // length 258, distance 1
    code(0, 7);                // end of block
    if (bits) z.push_back(uint8_t(acc));
    const uint64_t total = matches * 258 + 1;  // Adler-32 of zeros: a = 1, b = count
    Put(z, ((total % 65521) << 16) | 1, 4, true);
    return z;
}

// A progressive JPEG. The bomb's scan script is valid and long: a DC scan, then every AC
// coefficient of every component alone, first at 10 bits down, then refined bit by bit:
// 1 + 3 × 63 × 11 = 2,080 scans. Otherwise the library's usual ten.
Bytes ManyScanJpeg(int size, bool bomb = true) {
    jpeg_compress_struct c{};
    jpeg_error_mgr err{};
    c.err = jpeg_std_error(&err);
    jpeg_create_compress(&c);
    unsigned char* out = nullptr;
    unsigned long outSize = 0;
    jpeg_mem_dest(&c, &out, &outSize);
    c.image_width = c.image_height = static_cast<JDIMENSION>(size);
    c.input_components = 3;
    c.in_color_space = JCS_RGB;
    jpeg_set_defaults(&c);
    std::vector<jpeg_scan_info> script = {{3, {0, 1, 2, 0}, 0, 0, 0, 0}};
    for (int comp = 0; comp < 3; ++comp)
        for (int k = 1; k < 64; ++k) {
            script.push_back({1, {comp}, k, k, 0, 10});
            for (int a = 10; a > 0; --a) script.push_back({1, {comp}, k, k, a, a - 1});
        }
    c.scan_info = script.data();
    c.num_scans = static_cast<int>(script.size());
    if (!bomb) jpeg_simple_progression(&c);
    jpeg_start_compress(&c, TRUE);
    std::vector<JSAMPLE> row(size_t(size) * 3);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size * 3; ++x) row[x] = JSAMPLE((x * 7 + y * 13) ^ (x * y));
        JSAMPROW r = row.data();
        jpeg_write_scanlines(&c, &r, 1);
    }
    jpeg_finish_compress(&c);
    jpeg_destroy_compress(&c);
    Bytes jpeg(out, out + outSize);
    std::free(out);
    return jpeg;
}

// The last scan repeated until the file holds `copies` more scans than the script.
Bytes RepeatLastScan(Bytes jpeg, int copies) {
    size_t sos = jpeg.size() - 2;
    while (sos > 0 && !(jpeg[sos] == 0xFF && jpeg[sos + 1] == 0xDA)) --sos;
    const Bytes scan(jpeg.begin() + sos, jpeg.end() - 2);
    jpeg.resize(jpeg.size() - 2);
    for (int i = 0; i < copies; ++i) jpeg.insert(jpeg.end(), scan.begin(), scan.end());
    jpeg.insert(jpeg.end(), {0xFF, 0xD9});
    return jpeg;
}

// A JPEG whose frame header claims w × h.
Bytes JpegClaiming(int w, int h) {
    cDib d;
    d.Create(16, 16);
    Bytes jpeg;
    EXPECT_EQ(EncodeJpeg(d.View(), 80, jpeg), kJpegOk);
    for (size_t i = 2; i + 9 < jpeg.size(); ++i)
        if (jpeg[i] == 0xFF && jpeg[i + 1] == 0xC0) {
            jpeg[i + 5] = uint8_t(h >> 8), jpeg[i + 6] = uint8_t(h);
            jpeg[i + 7] = uint8_t(w >> 8), jpeg[i + 8] = uint8_t(w);
            break;
        }
    return jpeg;
}

// A screen of w × h with a one-pixel frame in colour 0.
Bytes GifScreen(int w, int h) {
    Bytes g = {'G', 'I', 'F', '8', '9', 'a'};
    Put(g, w, 2, false), Put(g, h, 2, false);
    g.insert(g.end(), {0x80, 0, 0, 0, 0, 0, 255, 255, 255,  // two global colours
                       0x2C, 0, 0, 0, 0, 1, 0, 1, 0, 0,     // the frame at 0,0, 1 × 1
                       2, 2, 0x44, 0x01, 0, 0x3B});         // clear, 0, end; trailer
    return g;
}

// A grey w × h TIFF in one strip whose offset and byte count point far past the file's end.
Bytes TiffBogusStrip(uint32_t w, uint32_t h) {
    Bytes t = {'I', 'I', 42, 0, 8, 0, 0, 0};
    const uint32_t entries[][3] = {{256, 4, w}, {257, 4, h}, {258, 3, 8}, {259, 3, 1}, {262, 3, 1},
                                   {273, 4, 0x7FFFFF00}, {277, 3, 1}, {278, 4, h}, {279, 4, w * h}};
    Put(t, std::size(entries), 2, false);
    for (const auto& e : entries) Put(t, e[0], 2, false), Put(t, e[1], 2, false), Put(t, 1, 4, false),
                                  Put(t, e[2], 4, false);
    Put(t, 0, 4, false);
    return t;
}

// A 24-bit bitmap header claiming w × h with no pixel data behind it.
Bytes BmpClaiming(int32_t w, int32_t h) {
    Bytes b = {'B', 'M'};
    Put(b, 54, 4, false), Put(b, 0, 4, false), Put(b, 54, 4, false), Put(b, 40, 4, false);
    Put(b, uint32_t(w), 4, false), Put(b, uint32_t(h), 4, false), Put(b, 1, 2, false), Put(b, 24, 2, false);
    for (int i = 0; i < 6; ++i) Put(b, 0, 4, false);
    return b;
}

struct Bomb {
    const char* name;
    Bytes bytes;
};

std::vector<Bomb> Bombs() {
    const Bytes tinyIdat = {0x78, 0x01, 0x63, 0, 0, 0, 0x01, 0, 0x01};
    return {
        {"jpeg-2080-scans.jpg", ManyScanJpeg(1024)},
        {"jpeg-20000-repeated-scans.jpg", RepeatLastScan(ManyScanJpeg(64), 20000)},
        {"png-inflates-to-1.3-GB.png", Png(100000, 100000, 1, 0, ZerosStream(5'000'000))},
        {"png-claims-16384-square-holds-9-bytes.png", Png(16384, 16384, 8, 2, tinyIdat)},
        {"gif-16000-square-screen.gif", GifScreen(16000, 16000)},
        {"tiff-16000-square-bogus-strip.tif", TiffBogusStrip(16000, 16000)},
        {"png-over-the-pixel-cap.png", Png(20000, 20000, 8, 2, tinyIdat)},
        {"jpeg-over-the-pixel-cap.jpg", JpegClaiming(30000, 30000)},
        {"bmp-over-the-pixel-cap.bmp", BmpClaiming(20000, -20000)},
    };
}

long StatusKiB(const char* field) {
    std::FILE* f = std::fopen("/proc/self/status", "r");
    char line[256];
    long kib = -1;
    while (f && std::fgets(line, sizeof line, f))
        if (std::strncmp(line, field, std::strlen(field)) == 0) kib = std::atol(line + std::strlen(field));
    if (f) std::fclose(f);
    return kib;
}

TEST(Limits, EveryBombIsRefusedFastWithBoundedMemoryAndTheLoadersMessage) {
    ScratchDir dir;
    uintptr_t token = 0;
    ASSERT_EQ(GdiplusStartup(token, {}), Ok);
    for (const Bomb& bomb : Bombs()) {
        SCOPED_TRACE(bomb.name);
        std::FILE* reset = std::fopen("/proc/self/clear_refs", "w");  // peak RSS := current RSS
        ASSERT_TRUE(reset);
        std::fputs("5", reset);
        std::fclose(reset);
        const long before = StatusKiB("VmRSS:");
        const auto start = std::chrono::steady_clock::now();
        DecodedPicture picture;
        EXPECT_FALSE(DecodePicture(bomb.bytes, picture));
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        const double grewMiB = (StatusKiB("VmHWM:") - before) / 1024.0;
        EXPECT_LT(seconds, 1.0);
        EXPECT_LT(grewMiB, 512.0);
        std::printf("%-44s %7zu bytes  %6.3f s  peak +%6.1f MiB\n", bomb.name, bomb.bytes.size(), seconds, grewMiB);

        WriteBytes(dir.path / bomb.name, bomb.bytes);
        int status = -1;
        EXPECT_EQ(LoadPictureGdiplus((dir.path / bomb.name).string(), &status), nullptr);
        EXPECT_EQ(GdiplusStatusText(status), "Unknown Image Format");
    }
    GdiplusShutdown(token);

    // The batch reports each by name and goes on; nothing is written.
    BatchJob job;
    job.source = dir.path.string();
    job.target = (dir.path / "out").string();
    job.outputType = OutputType::Png;
    fs::create_directory(job.target);
    std::vector<PictureResult> results;
    BatchRunOptions options;
    options.onPicture = [&](const PictureResult& r) { results.push_back(r); };
    const BatchRunReport report = RunBatch(job, options);
    EXPECT_EQ(report.written, 0);
    ASSERT_EQ(results.size(), Bombs().size());
    for (const PictureResult& r : results) {
        EXPECT_EQ(r.status, PictureStatus::Failed) << r.source;
        EXPECT_EQ(r.message, "is not a picture that can be read") << r.source;
    }
    EXPECT_TRUE(fs::is_empty(job.target));
}

// The caps refuse bombs, not honest files: an ordinary progressive JPEG, a 16-megapixel
// screen around a small frame and a small PNG whose data holds its rows all still load.
TEST(Limits, HonestFilesNearTheCapsStillLoad) {
    Bytes rows(1 + 3 * 4, 0), idat(64);
    uLongf idatSize = idat.size();
    ASSERT_EQ(compress(idat.data(), &idatSize, rows.data(), rows.size()), Z_OK);
    idat.resize(idatSize);
    const std::pair<Bytes, int> cases[] = {
        {ManyScanJpeg(64, false), 64}, {GifScreen(4096, 4096), 4096}, {Png(4, 1, 8, 2, idat), 4}};
    for (const auto& [bytes, width] : cases) {
        DecodedPicture picture;
        ASSERT_TRUE(DecodePicture(bytes, picture)) << width;
        EXPECT_EQ(picture.pixels.Width(), width);
    }
}

}  // namespace
}  // namespace quorbel
