#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "batch/BatchRules.h"
#include "imaging/cDib.h"

namespace quorbel {
namespace {

BatchJob Box(double w, double h, bool bestFit, bool keepAspect, bool force, std::string unit = "Pixels") {
    BatchJob job;
    job.preset = "Custom";
    job.width = w;
    job.height = h;
    job.unit = std::move(unit);
    job.bestFit = bestFit;
    job.keepAspect = keepAspect;
    job.forceResize = force;
    job.fitTurned = false;  // the box as given; the turned box has its own test
    return job;
}

TEST(BatchSize, BestFitFitsInsideTheBoxKeepingTheRatio) {
    const BatchJob fit = Box(640, 480, true, false, false);
    EXPECT_EQ(BatchTargetSize(fit, 4000, 3000), (PixelSize{640, 480}));
    // Portrait: 480 / 4000 = 0.12 is the smaller ratio, 0.12 × 3000 = 360.
    EXPECT_EQ(BatchTargetSize(fit, 3000, 4000), (PixelSize{360, 480}));
    // 640 / 1000 = 0.64 against 480 / 500 = 0.96: width 640, 0.64 × 500 = 320.
    EXPECT_EQ(BatchTargetSize(fit, 1000, 500), (PixelSize{640, 320}));
    // A smaller picture keeps its size; Force resize stretches it: 640 / 320 = 2 < 2.4.
    EXPECT_EQ(BatchTargetSize(fit, 320, 200), (PixelSize{320, 200}));
    EXPECT_EQ(BatchTargetSize(Box(640, 480, true, false, true), 320, 200), (PixelSize{640, 400}));
    // Keep aspect makes no difference once Best Fit is on.
    EXPECT_EQ(BatchTargetSize(Box(640, 480, true, true, false), 1000, 500), (PixelSize{640, 320}));
}

TEST(BatchSize, BestFitAgreesWithThePictureBuffersFit) {
    const BatchJob fit = Box(300, 200, true, false, false);
    for (const auto& [w, h] : {std::pair{1000, 667}, {667, 1000}, {999, 333}, {301, 201}}) {
        cDib dib;
        ASSERT_TRUE(dib.Create(w, h));
        int32_t left, top, width, height;
        dib.GetBestFitInfo(300, 200, false, left, top, width, height);
        EXPECT_EQ(BatchTargetSize(fit, w, h), (PixelSize{width, height})) << w << "x" << h;
    }
}

TEST(BatchSize, KeepAspectAloneKeepsTheWidth) {
    const BatchJob job = Box(800, 600, false, true, false);
    EXPECT_EQ(BatchTargetSize(job, 1600, 1200), (PixelSize{800, 600}));
    EXPECT_EQ(BatchTargetSize(job, 1000, 3000), (PixelSize{800, 2400}));  // height follows, unbounded
    EXPECT_EQ(BatchTargetSize(job, 500, 100), (PixelSize{500, 100}));     // narrower: kept
    EXPECT_EQ(BatchTargetSize(Box(800, 600, false, true, true), 500, 100), (PixelSize{800, 160}));
}

TEST(BatchSize, NeitherBoxStretchesUnlessThePictureFits) {
    const BatchJob job = Box(800, 600, false, false, false);
    EXPECT_EQ(BatchTargetSize(job, 1000, 1000), (PixelSize{800, 600}));
    EXPECT_EQ(BatchTargetSize(job, 400, 700), (PixelSize{800, 600}));  // taller than the box
    EXPECT_EQ(BatchTargetSize(job, 400, 300), (PixelSize{400, 300}));
    EXPECT_EQ(BatchTargetSize(Box(800, 600, false, false, true), 400, 300), (PixelSize{800, 600}));
}

TEST(BatchSize, OriginalSizeUnitsAndEmptyBoxes) {
    BatchJob original = Box(640, 480, true, false, true);
    original.preset = "original size";
    EXPECT_EQ(BatchTargetSize(original, 4000, 3000), (PixelSize{4000, 3000}));
    EXPECT_EQ(BatchTargetSize(Box(0, 480, true, false, true), 4000, 3000), (PixelSize{4000, 3000}));
    // 2 × 1 inches at 96 dpi: 192 × 96 pixels.
    EXPECT_EQ(BatchBox(Box(2, 1, true, false, false, "Inches")), (PixelSize{192, 96}));
    EXPECT_EQ(BatchTargetSize(Box(2, 1, true, false, false, "Inches"), 1920, 960), (PixelSize{192, 96}));
    // 2.54 cm: 2.54 × 567 = 1440.18 twips, / 15 = 96.01 pixels.
    EXPECT_EQ(BatchBox(Box(2.54, 2.54, true, false, false, "Centimeters")), (PixelSize{96, 96}));
}

TEST(BatchNaming, SequenceNumbersArePaddedToThreeDigits) {
    BatchJob job;
    job.rename = true;
    job.newName = "Trip";
    const char* expected[] = {"Trip_001.jpg", "Trip_009.jpg", "Trip_010.jpg",
                              "Trip_099.jpg", "Trip_100.jpg", "Trip_1000.jpg"};
    const int numbers[] = {1, 9, 10, 99, 100, 1000};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(OutputFileName(job, "photo.jpg", "jpg", numbers[i]), expected[i]);
    // Rename checked with no name: the source's name.
    job.newName.clear();
    EXPECT_EQ(OutputFileName(job, "photo.jpg", "jpg", 4), "photo.jpg");
}

TEST(BatchNaming, ExtensionsByOutputType) {
    BatchJob job;
    EXPECT_EQ(OutputExtension(OutputType::KeepOriginal, "photo.JPEG"), "jpg");
    EXPECT_EQ(OutputFileName(job, "photo.JPEG", "jpg", 1), "photo.jpg");
    EXPECT_EQ(OutputFileName(job, "photo.jpg", "jpg", 1), "photo.jpg");
    EXPECT_EQ(OutputExtension(OutputType::Png, "photo.jpg"), "png");
    EXPECT_EQ(OutputFileName(job, "photo.jpg", "png", 1), "photo.png");
    EXPECT_EQ(OutputExtension(OutputType::KeepOriginal, "scan.TIF"), "tif");
    EXPECT_EQ(OutputExtension(OutputType::KeepOriginal, "scan.tiff"), std::nullopt);
    EXPECT_EQ(OutputExtension(OutputType::KeepOriginal, "icon.ico"), std::nullopt);
    EXPECT_EQ(OutputExtension(OutputType::Tiff, "icon.ico"), "tif");
}

TEST(BatchNaming, HighestExistingNumberAfterTheNewName) {
    const auto dir = std::filesystem::path(testing::TempDir()) / "batch_highest";
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    for (const char* name : {"Trip_001.jpg", "Trip_045.png", "trip_012.jpg", "Trips3.jpg", "Trip_x9.jpg",
                             "MyPics45.jpg", "Other_900.jpg"})
        std::ofstream(dir / name) << "x";
    EXPECT_EQ(HighestExistingNumber(dir, "Trip"), 45);
    EXPECT_EQ(HighestExistingNumber(dir, "MyPics"), 45);
    EXPECT_EQ(HighestExistingNumber(dir, "Nothing"), 0);
    EXPECT_EQ(HighestExistingNumber(dir / "missing", "Trip"), 0);
    std::filesystem::remove_all(dir);
}

TEST(BatchRules, WordsForEffectsRotationsAndSilentReplacement) {
    EXPECT_EQ(EffectIndex("None"), 0);
    EXPECT_EQ(EffectIndex("Unheard of"), 0);
    EXPECT_NE(EffectIndex("Pixalate"), 0);
    EXPECT_EQ(EffectIndex("Pixalate"), EffectIndex("Pixelaze"));
    EXPECT_NE(EffectIndex("Despeckle More"), EffectIndex("Despeckle"));
    const Orientation left = OrientationFor("Rotate Left");
    EXPECT_TRUE(left.flipHorizontal && left.flipVertical && left.rotate);
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
