#include <gtest/gtest.h>

#include "Scratch.h"
#include "batch/BatchRules.h"
#include "effects/FilterList.h"
#include "imaging/cDib.h"

namespace quorbel {
namespace {

// A box with its rules: b Best Fit, a Keep aspect ratio, f Force resize, t Fit turned.
BatchJob Box(double w, double h, std::string_view rules, std::string unit = "Pixels") {
    BatchJob job;
    job.preset = "Custom";
    job.width = w;
    job.height = h;
    job.unit = std::move(unit);
    job.bestFit = rules.find('b') != rules.npos;
    job.keepAspect = rules.find('a') != rules.npos;
    job.forceResize = rules.find('f') != rules.npos;
    job.fitTurned = rules.find('t') != rules.npos;
    return job;
}

TEST(BatchSize, EachRuleOnItsBox) {
    struct Case {
        int boxW, boxH;
        const char* rules;
        int w, h;
        PixelSize expected;
    };
    const Case cases[] = {
        {640, 480, "b", 4000, 3000, {640, 480}}, {640, 480, "b", 1000, 500, {640, 320}},  // 0.64 < 0.96
        {640, 480, "b", 3000, 4000, {360, 480}},    // 480 / 4000 = 0.12, × 3000 = 360
        {640, 480, "b", 320, 200, {320, 200}},      // smaller: kept
        {640, 480, "bf", 320, 200, {640, 400}},     // 640 / 320 = 2 < 2.4
        {640, 480, "ba", 1000, 500, {640, 320}},    // Keep aspect adds nothing to Best Fit
        {800, 600, "a", 1600, 1200, {800, 600}}, {800, 600, "a", 1000, 3000, {800, 2400}},  // height unbounded
        {800, 600, "a", 500, 100, {500, 100}},      // narrower: kept
        {800, 600, "af", 500, 100, {800, 160}}, {800, 600, "", 1000, 1000, {800, 600}},
        {800, 600, "", 400, 700, {800, 600}},       // taller than the box: stretched
        {800, 600, "", 400, 300, {400, 300}}, {800, 600, "f", 400, 300, {800, 600}},
        {0, 480, "bf", 4000, 3000, {4000, 3000}},   // an empty box: the original
        // Turned: 3000 × 4000 into 480 × 640, both ratios 0.16; square pictures never turn.
        {640, 480, "bat", 3000, 4000, {480, 640}}, {640, 480, "bat", 4000, 3000, {640, 480}},
        {640, 480, "bat", 2000, 2000, {480, 480}}, {640, 480, "at", 1000, 3000, {480, 1440}},  // 480 / 1000 × 3000
    };
    for (const Case& c : cases)
        EXPECT_EQ(BatchTargetSize(Box(c.boxW, c.boxH, c.rules), c.w, c.h), c.expected) << c.rules << " " << c.w << "x" << c.h;
    BatchJob original = Box(640, 480, "bf");
    original.preset = "original size";
    EXPECT_EQ(BatchTargetSize(original, 4000, 3000), (PixelSize{4000, 3000}));
    // 96 dpi: 2 × 1 inches are 192 × 96 pixels; 2.54 cm = 1440.18 twips, / 15 = 96.01 pixels.
    EXPECT_EQ(BatchTargetSize(Box(2, 1, "b", "Inches"), 1920, 960), (PixelSize{192, 96}));
    EXPECT_EQ(BatchBox(Box(2.54, 2.54, "b", "Centimeters")), (PixelSize{96, 96}));
}

TEST(BatchSize, BestFitAgreesWithThePictureBuffersFit) {
    for (const auto& [w, h] : {std::pair{1000, 667}, {667, 1000}, {999, 333}, {301, 201}}) {
        cDib dib;
        ASSERT_TRUE(dib.Create(w, h));
        int32_t left, top, width, height;
        dib.GetBestFitInfo(300, 200, false, left, top, width, height);
        EXPECT_EQ(BatchTargetSize(Box(300, 200, "b"), w, h), (PixelSize{width, height})) << w << "x" << h;
    }
}

TEST(BatchNaming, NamesAndExtensions) {
    BatchJob job;
    job.rename = true;
    job.newName = "Trip";
    for (const auto& [number, name] : {std::pair{1, "Trip_001.jpg"}, {9, "Trip_009.jpg"}, {10, "Trip_010.jpg"},
                                       {99, "Trip_099.jpg"}, {100, "Trip_100.jpg"}, {1000, "Trip_1000.jpg"}})
        EXPECT_EQ(OutputFileName(job, "photo.jpg", "jpg", number), name);
    job.newName.clear();  // Rename checked with no name: the source's name
    EXPECT_EQ(OutputFileName(job, "photo.jpg", "jpg", 4), "photo.jpg");
    EXPECT_EQ(OutputFileName(job, "photo.JPEG", "jpg", 1), "photo.jpg");
    EXPECT_EQ(OutputFileName(job, "photo.jpg", "png", 1), "photo.png");

    const std::tuple<OutputType, const char*, std::optional<std::string>> extensions[] = {
        {OutputType::KeepOriginal, "photo.JPEG", "jpg"}, {OutputType::KeepOriginal, "scan.TIF", "tif"},
        {OutputType::KeepOriginal, "scan.tiff", std::nullopt}, {OutputType::KeepOriginal, "icon.ico", std::nullopt},
        {OutputType::KeepOriginal, "phone.HEIC", "jpg"}, {OutputType::KeepOriginal, "a.webp", "webp"},
        {OutputType::KeepOriginal, "old.dib", std::nullopt}, {OutputType::KeepOriginal, "noext", std::nullopt},
        {OutputType::Png, "photo.jpg", "png"}, {OutputType::Tiff, "icon.ico", "tif"},
        {OutputType::Avif, "a.gif", "avif"}};
    for (const auto& [type, source, expected] : extensions) EXPECT_EQ(OutputExtension(type, source), expected) << source;
}

TEST(BatchNaming, HighestExistingNumberAfterTheNewName) {
    const test::ScratchDir dir;
    for (const char* name : {"Trip_001.jpg", "Trip_045.png", "trip_012.jpg", "Trips3.jpg", "Trip_x9.jpg",
                             "MyPics45.jpg", "Other_900.jpg"})
        test::WriteText(dir / name, "x");
    EXPECT_EQ(HighestExistingNumber(dir.path, "Trip"), 45);
    EXPECT_EQ(HighestExistingNumber(dir.path, "MyPics"), 45);
    EXPECT_EQ(HighestExistingNumber(dir.path, "Nothing"), 0);
    EXPECT_EQ(HighestExistingNumber(dir / "missing", "Trip"), 0);
}

TEST(BatchRules, WordsForEffectsRotationsAndSilentReplacement) {
    // The list entry each word finds, by the name the filter window shows.
    for (const auto& [word, entry] : {std::pair{"None", "<None>"}, {"Unheard of", "<None>"}, {"Pixalate", "Pixelaze"},
                                      {"pixelate", "Pixelaze"}, {"Despeckle More", "Despeckle more"}, {"soften", "Soften"}})
        EXPECT_STREQ(FilterList()[static_cast<size_t>(EffectIndex(word))].name, entry) << word;
    const Orientation flip = OrientationFor("Flip");
    EXPECT_TRUE(!flip.flipHorizontal && flip.flipVertical && !flip.rotate);

    BatchJob job;
    EXPECT_FALSE(ReplacesSilently(job));
    job.type = "Email";
    EXPECT_TRUE(ReplacesSilently(job));
    job.type = "Web";
    job.destination = "Burn to CD/DVD";
    EXPECT_TRUE(ReplacesSilently(job));
}

}  // namespace
}  // namespace quorbel
