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
    return {.maxSize = kb, .unit = FileSizeUnit::KB, .maxWidth = maxW, .maxHeight = maxH, .minWidth = minW,
            .minHeight = minH, .startQuality = std::move(quality), .startMode = mode};
}

TEST(FitToFileSize, LimitsCountThousandsOfBytesAndQualityStepsAreTheNamedOnes) {
    // 0.0015 KB is 1.5 bytes, rounded down.
    for (auto [size, unit, bytes] : {std::tuple{100.0, FileSizeUnit::KB, 100000},
                                     {1.5, FileSizeUnit::MB, 1500000},
                                     {0.0015, FileSizeUnit::KB, 1},
                                     {0.0005, FileSizeUnit::KB, 0},
                                     {-3.0, FileSizeUnit::MB, 0}})
        EXPECT_EQ(LimitBytes(size, unit), bytes) << size;
    for (auto [from, to] : {std::pair{97, 95}, {95, 85}, {80, 75}, {51, 50}}) EXPECT_EQ(NextQualityBelow(from), to);
    EXPECT_EQ(NextQualityBelow(50), std::nullopt);
    EXPECT_EQ(ReducedSizeMessage(98765, FileSizeUnit::KB), "reduced size reached: 98.77 KB");
    EXPECT_EQ(ReducedSizeMessage(1250000, FileSizeUnit::MB), "reduced size reached: 1.25 MB");
}

TEST(FitToFileSize, QualityModeStepsDownThenSettlesOnTheBestQualityThatFits) {
    const cDib picture = Grainy(200, 150);
    const int64_t at85 = JpegBytes(picture, 85), at75 = JpegBytes(picture, 75);
    ASSERT_LT(at75, at85);
    const double kb = static_cast<double>(at75 + (at85 - at75) / 2) / 1000;

    const FitResult r = FitToFileSize(picture, Request(kb, 200, 150, 10, 10, "Highest Quality", FitMode::Quality));
    ASSERT_EQ(std::pair(r.status, r.mode), std::pair(FitStatus::Fitted, FitMode::Quality));
    EXPECT_TRUE(r.messages.empty());  // only a cut size is reported
    ASSERT_GE(r.trials.size(), 3u);
    for (size_t i = 0; i < 3; ++i) EXPECT_EQ(r.trials[i].quality, (std::array{95, 85, 75}[i]));
    for (const FitTrial& t : r.trials) EXPECT_EQ(std::make_pair(t.width, t.height), std::make_pair(200, 150));

    // The best that fits: this quality fits, the next one up does not.
    EXPECT_TRUE(r.quality >= 75 && r.quality < 85) << r.quality;
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
    ASSERT_EQ(std::pair(r.status, r.mode), std::pair(FitStatus::Fitted, FitMode::WidthHeight));
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

    EXPECT_EQ(box.Texts(), std::vector{ReducedSizeMessage(static_cast<int64_t>(r.jpeg.size()), FileSizeUnit::KB)});
}

// Limits the search cannot meet, or meets at once: how it steps and where it ends.
struct EndCase {
    const char* name;
    int width, height;
    FitRequest request;
    FitStatus status;
    std::vector<int> qualities;  // of the first trials
    std::tuple<int, int, int> last;  // width, height, quality of the last trial
    size_t trials;                   // how many; 0 when not fixed by the rules
    std::vector<std::string> messages;
};

TEST(FitToFileSize, SearchesEndAsTheRulesSay) {
    const std::string cannot = "Cannot resize pic.";
    const std::string retry = "Picture could not be resized to fit the selected parameters. Please try again.";
    const EndCase cases[] = {
        // Keeping 300 x 200 in proportion, 100 x 100 at least means 150 x 100 at least: every
        // quality step at full size, then cuts at 50.
        {"quality first", 300, 200, Request(0.2, 300, 200, 100, 100, "Highest Quality", FitMode::Quality),
         FitStatus::MinimumUsedUp, {95, 85, 75, 65, 50}, {150, 100, 50}, 0, {cannot}},
        // Cuts at 75 down to 150 x 100, then 65 and 50 at that size.
        {"size first", 300, 200, Request(0.2, 300, 200, 100, 100, "Medium Quality", FitMode::WidthHeight),
         FitStatus::QualityUsedUp, {75}, {150, 100, 50}, 0, {retry}},
        // A maximum size fits the picture inside first; nothing was cut to fit, so no message.
        {"fits at once", 400, 300, Request(10000, 200, 200, 10, 10, "80", FitMode::WidthHeight),
         FitStatus::Fitted, {80}, {200, 150, 80}, 1, {}},
        // A picture below the minimum is never cut: 85, then 75, 65, 50.
        {"below the minimum", 80, 60, Request(0.1, 500, 500, 100, 100, "85", FitMode::WidthHeight),
         FitStatus::QualityUsedUp, {85, 75, 65, 50}, {80, 60, 50}, 4, {retry}},
    };
    for (const EndCase& c : cases) {
        SCOPED_TRACE(c.name);
        const FitResult r = FitToFileSize(Grainy(c.width, c.height), c.request);
        ScriptedMessageBox box;
        ShowFitMessages(r, box);
        EXPECT_EQ(r.status, c.status);
        EXPECT_EQ(box.Texts(), c.messages);
        EXPECT_EQ(r.picture.hDIB(), c.status == FitStatus::Fitted);
        ASSERT_GE(r.trials.size(), c.qualities.size());
        if (c.trials) {
            EXPECT_EQ(r.trials.size(), c.trials);
        }
        for (size_t i = 0; i < r.trials.size(); ++i) {
            const FitTrial& t = r.trials[i];
            if (i < c.qualities.size()) {
                EXPECT_EQ(std::pair(t.quality, t.width), std::pair(c.qualities[i], r.trials[0].width)) << i;
            }
            // never grows back
            if (i > 0) {
                EXPECT_LE(t.width, r.trials[i - 1].width) << i;
            }
            EXPECT_FALSE(t.fits && c.status != FitStatus::Fitted) << i;
            EXPECT_TRUE(t.width >= std::get<0>(c.last) && t.height >= std::get<1>(c.last)) << i;
        }
        EXPECT_EQ(std::tuple(r.trials.back().width, r.trials.back().height, r.trials.back().quality), c.last);
        if (r.picture.hDIB()) {
            EXPECT_EQ(SizeOf(r.picture), std::pair(std::get<0>(c.last), std::get<1>(c.last)));
        }
    }
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
