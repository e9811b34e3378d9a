#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "Pictures.h"
#include "core/MessageBox.h"
#include "imaging/ResizeDib.h"
#include "output/JpegCodec.h"
#include "sizes/FitToFileSize.h"

namespace quorbel::test {
namespace {

int64_t JpegBytes(const cDib& picture, int quality) {
    std::vector<uint8_t> bytes;
    EXPECT_EQ(EncodeJpeg(picture.View(), quality, bytes), kJpegOk);
    return static_cast<int64_t>(bytes.size());
}

FitRequest Request(double kb, int maxW, int maxH, int minW, int minH, std::string quality, FitMode mode) {
    FitRequest r;
    r.maxSize = kb;
    r.unit = FileSizeUnit::KB;
    r.maxWidth = maxW;
    r.maxHeight = maxH;
    r.minWidth = minW;
    r.minHeight = minH;
    r.startQuality = std::move(quality);
    r.startMode = mode;
    return r;
}

TEST(FitToFileSize, LimitsCountThousandsOfBytes) {
    EXPECT_EQ(LimitBytes(100, FileSizeUnit::KB), 100000);
    EXPECT_EQ(LimitBytes(1.5, FileSizeUnit::MB), 1500000);
    EXPECT_EQ(LimitBytes(0.0015, FileSizeUnit::KB), 1);  // 1.5 bytes, rounded down
    EXPECT_EQ(LimitBytes(0.0005, FileSizeUnit::KB), 0);
    EXPECT_EQ(LimitBytes(-3, FileSizeUnit::MB), 0);
}

TEST(FitToFileSize, QualityStepsAreTheNamedOnes) {
    for (auto [from, to] : {std::pair{97, 95}, {95, 85}, {80, 75}, {51, 50}}) EXPECT_EQ(NextQualityBelow(from), to);
    EXPECT_EQ(NextQualityBelow(50), std::nullopt);
}

TEST(FitToFileSize, ReducedSizeIsShownInTheChosenUnit) {
    EXPECT_EQ(ReducedSizeMessage(98765, FileSizeUnit::KB), "reduced size reached: 98.77 KB");
    EXPECT_EQ(ReducedSizeMessage(1250000, FileSizeUnit::MB), "reduced size reached: 1.25 MB");
}

TEST(FitToFileSize, QualityModeStepsDownThenSettlesOnTheBestQualityThatFits) {
    const cDib picture = Grainy(200, 150);
    const int64_t at85 = JpegBytes(picture, 85), at75 = JpegBytes(picture, 75);
    ASSERT_LT(at75, at85);
    const double kb = static_cast<double>(at75 + (at85 - at75) / 2) / 1000;

    const FitResult r = FitToFileSize(picture, Request(kb, 200, 150, 10, 10, "Highest Quality", FitMode::Quality));
    ASSERT_EQ(r.status, FitStatus::Fitted);
    EXPECT_EQ(r.mode, FitMode::Quality);
    EXPECT_TRUE(r.messages.empty());  // only a cut size is reported
    ASSERT_GE(r.trials.size(), 3u);
    for (size_t i = 0; i < 3; ++i) EXPECT_EQ(r.trials[i].quality, (std::array{95, 85, 75}[i]));
    for (const FitTrial& t : r.trials) EXPECT_EQ(std::make_pair(t.width, t.height), std::make_pair(200, 150));

    // The best that fits: this quality fits, the next one up does not.
    EXPECT_GE(r.quality, 75);
    EXPECT_LT(r.quality, 85);
    EXPECT_LE(static_cast<int64_t>(r.jpeg.size()), r.limitBytes);
    EXPECT_EQ(JpegBytes(r.picture, r.quality), static_cast<int64_t>(r.jpeg.size()));
    EXPECT_GT(JpegBytes(picture, r.quality + 1), r.limitBytes);
    EXPECT_TRUE(Same(r.picture, picture));
}

TEST(FitToFileSize, HeightAndWidthModeCutsTenPercentFromTheOriginalEachTrial) {
    const cDib picture = Grainy(400, 300);
    const double kb = static_cast<double>(JpegBytes(picture, 75)) / 1000 / 2;

    ScriptedMessageBox box;
    const FitResult r = FitToFileSize(picture, Request(kb, 400, 300, 40, 30, "Medium Quality", FitMode::WidthHeight));
    ShowFitMessages(r, box);
    ASSERT_EQ(r.status, FitStatus::Fitted);
    EXPECT_EQ(r.mode, FitMode::WidthHeight);
    // 400 x 300, then 90 % of it, 81 %, 72.9 % (291.6 x 218.7 rounds to 292 x 219).
    ASSERT_GE(r.trials.size(), 4u);
    const std::pair<int, int> sizes[] = {{400, 300}, {360, 270}, {324, 243}, {292, 219}};
    for (size_t i = 0; i < 4; ++i) EXPECT_EQ(std::make_pair(r.trials[i].width, r.trials[i].height), sizes[i]) << i;
    for (const FitTrial& t : r.trials) EXPECT_EQ(t.quality, 75);

    EXPECT_LE(static_cast<int64_t>(r.jpeg.size()), r.limitBytes);
    EXPECT_NEAR(static_cast<double>(r.picture.Width()) / r.picture.Height(), 4.0 / 3.0, 0.01);
    // Refined upward: a couple of pixels more on each side no longer fits.
    cDib larger = Copy(picture);
    ASSERT_TRUE(ResizeDib(larger, r.picture.Width() + 2, r.picture.Height() + 2, true));
    EXPECT_GT(JpegBytes(larger, 75), r.limitBytes);
    // Drawn from the original, not from an earlier trial.
    cDib direct = Copy(picture);
    ASSERT_TRUE(ResizeDib(direct, r.picture.Width(), r.picture.Height(), true));
    EXPECT_TRUE(Same(direct, r.picture));

    ASSERT_EQ(box.Texts().size(), 1u);
    EXPECT_EQ(box.Texts()[0].rfind("reduced size reached: ", 0), 0u);
    EXPECT_EQ(box.Texts()[0], ReducedSizeMessage(static_cast<int64_t>(r.jpeg.size()), FileSizeUnit::KB));
}

TEST(FitToFileSize, TooSmallALimitFromQualityEndsAtTheMinimumSize) {
    const cDib picture = Grainy(300, 200);
    ScriptedMessageBox box;
    // Keeping 300 x 200 in proportion, 100 x 100 at least means 150 x 100 at least.
    const FitResult r = FitToFileSize(picture, Request(0.2, 300, 200, 100, 100, "Highest Quality", FitMode::Quality));
    ShowFitMessages(r, box);
    EXPECT_EQ(r.status, FitStatus::MinimumUsedUp);
    EXPECT_EQ(box.Texts(), std::vector<std::string>{"Cannot resize pic."});
    EXPECT_FALSE(r.picture.hDIB());

    ASSERT_GE(r.trials.size(), 6u);
    const int qualities[] = {95, 85, 75, 65, 50};
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(r.trials[i].quality, qualities[i]);
        EXPECT_EQ(r.trials[i].width, 300);
    }
    for (size_t i = 5; i < r.trials.size(); ++i) {
        EXPECT_EQ(r.trials[i].quality, 50);
        EXPECT_LT(r.trials[i].width, r.trials[i - 1].width);
    }
    for (const FitTrial& t : r.trials) {
        EXPECT_FALSE(t.fits);
        EXPECT_GE(t.width, 150);
        EXPECT_GE(t.height, 100);
    }
    EXPECT_EQ(std::make_pair(r.trials.back().width, r.trials.back().height), std::make_pair(150, 100));
}

TEST(FitToFileSize, TooSmallALimitFromHeightAndWidthEndsWithTheQualitySteps) {
    const cDib picture = Grainy(300, 200);
    ScriptedMessageBox box;
    const FitResult r = FitToFileSize(picture, Request(0.2, 300, 200, 100, 100, "Medium Quality", FitMode::WidthHeight));
    ShowFitMessages(r, box);
    EXPECT_EQ(r.status, FitStatus::QualityUsedUp);
    EXPECT_EQ(box.Texts(),
              std::vector<std::string>{"Picture could not be resized to fit the selected parameters. Please try again."});
    // Cut at 75 down to 150 x 100, then 65 and 50 at that size.
    ASSERT_GE(r.trials.size(), 3u);
    const FitTrial& last = r.trials.back();
    const FitTrial& before = r.trials[r.trials.size() - 2];
    EXPECT_EQ(std::make_tuple(before.width, before.height, before.quality), std::make_tuple(150, 100, 65));
    EXPECT_EQ(std::make_tuple(last.width, last.height, last.quality), std::make_tuple(150, 100, 50));
    for (const FitTrial& t : r.trials) EXPECT_GE(t.height, 100);
}

TEST(FitToFileSize, MaximumSizeFitsThePictureInsideFirst) {
    const cDib picture = Grainy(400, 300);
    const FitResult r = FitToFileSize(picture, Request(10000, 200, 200, 10, 10, "80", FitMode::WidthHeight));
    ASSERT_EQ(r.status, FitStatus::Fitted);
    ASSERT_EQ(r.trials.size(), 1u);
    EXPECT_EQ(std::make_pair(r.picture.Width(), r.picture.Height()), std::make_pair(200, 150));
    EXPECT_EQ(r.quality, 80);
    EXPECT_TRUE(r.messages.empty());  // nothing was cut to fit
}

TEST(FitToFileSize, APictureBelowTheMinimumIsNeverCut) {
    const cDib picture = Grainy(80, 60);
    const FitResult r = FitToFileSize(picture, Request(0.1, 500, 500, 100, 100, "85", FitMode::WidthHeight));
    EXPECT_EQ(r.status, FitStatus::QualityUsedUp);
    for (const FitTrial& t : r.trials) EXPECT_EQ(std::make_pair(t.width, t.height), std::make_pair(80, 60));
    ASSERT_EQ(r.trials.size(), 4u);  // 85, then 75, 65, 50
    EXPECT_EQ(r.trials.back().quality, 50);
}

TEST(FitToFileSize, StopsWhenCancelledAndRefusesBadRequests) {
    const cDib picture = Grainy(64, 64);
    std::atomic<bool> cancel{true};
    const FitResult stopped = FitToFileSize(picture, Request(1, 64, 64, 8, 8, "95", FitMode::Quality), {}, &cancel);
    EXPECT_EQ(stopped.status, FitStatus::Cancelled);
    EXPECT_TRUE(stopped.messages.empty());
    EXPECT_TRUE(stopped.trials.empty());

    EXPECT_EQ(FitToFileSize(cDib{}, Request(1, 64, 64, 8, 8, "95", FitMode::Quality)).messages,
              std::vector<std::string>{"Cannot resize pic."});
    EXPECT_EQ(FitToFileSize(picture, Request(0, 64, 64, 8, 8, "95", FitMode::Quality)).status, FitStatus::Failed);
}

TEST(FitToFileSize, ProgressRisesToAHundred) {
    const cDib picture = Grainy(120, 90);
    std::vector<int> seen;
    const FitResult r = FitToFileSize(picture, Request(0.5, 120, 90, 30, 30, "95", FitMode::Quality),
                                      [&](const FitProgress& p) { seen.push_back(p.percent); });
    ASSERT_FALSE(seen.empty());
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(seen.back(), 100);
    EXPECT_EQ(seen.size(), r.trials.size() + 1);  // one a trial, then the end
}

}  // namespace
}  // namespace quorbel::test
