#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include "UiTestSupport.h"
#include "effects/Remap.h"
#include "imaging/ui/DibImage.h"
#include "effects/ui/PreviewBox.h"
#include "effects/ui/SliderRow.h"
#include "effects/ui/frmBright.h"
#include "effects/ui/frmColorBal.h"
#include "effects/ui/frmContrast.h"
#include "effects/ui/frmFish.h"
#include "effects/ui/frmWarp.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

// Presses OK and waits for the whole-picture run; the result, or an empty picture.
cDib RunOK(AdjustWindow& w) {
    QSignalSpy spy(&w, &AdjustWindow::runFinished);
    QTest::mouseClick(w.btnOK, Qt::LeftButton);
    if (!WaitUntil([&] { return spy.count() > 0; }) || !w.Done()) return {};
    return w.TakeResult();
}

// A picture with every byte value in each channel somewhere, larger than the previews.
cDib AllValues() {
    return Make(512, 300, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(x + y), uint8_t(255 - x)); });
}

TEST(BrightnessWindow, FullAmountMakesEveryPixelWhite) {
    const cDib picture = AllValues();
    frmBright w(picture);
    EXPECT_EQ(w.windowTitle(), "Brightness");
    w.hbarBrightness->SetValue(255);
    w.UpdateResult();
    const QImage preview = w.picResult->Image();
    EXPECT_EQ(preview.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(preview.pixel(preview.width() - 1, preview.height() - 1), qRgb(255, 255, 255));

    const cDib result = RunOK(w);
    ASSERT_EQ(result.Width(), 512);
    ASSERT_EQ(result.Height(), 300);
    EXPECT_TRUE(Same(result, Flat(512, 300, Grey(255))));
    EXPECT_EQ(w.result(), QDialog::Accepted);
}

TEST(ContrastWindow, SliderToTheLeftPullsTowardTheMiddle) {
    // 128 with amount 10 becomes 118 and 127 becomes 137; the slider shows -amount.
    const cDib picture = Make(20, 10, [](int x, int) { return Grey(x < 10 ? 128 : 127); });
    frmContrast w(picture);
    w.hbarContrast->SetValue(-10);
    EXPECT_EQ(w.Amount(), 10);
    const cDib result = RunOK(w);
    ASSERT_TRUE(result.hDIB());
    EXPECT_EQ(At(result, 0, 0), Grey(118));
    EXPECT_EQ(At(result, 19, 9), Grey(137));
}

TEST(ColourBalanceWindow, RedBarMovesRedAloneAndRefreshPutsItBack) {
    const cDib picture = AllValues();
    {
        frmColorBal w(picture);
        EXPECT_EQ(w.windowTitle(), "Color Balance");
        EXPECT_EQ(w.cmdUpdate->text(), "Update Image");
        EXPECT_EQ(w.cmdRefresh->text(), "Refresh");
        w.hbarBrightness[0]->SetValue(100);
        QTest::mouseClick(w.cmdUpdate, Qt::LeftButton);
        EXPECT_EQ(qRed(w.picResult->Image().pixel(3, 3)), 255);
        EXPECT_NE(w.picResult->Image(), w.picOriginal->Image());

        QTest::mouseClick(w.cmdRefresh, Qt::LeftButton);
        EXPECT_EQ(w.hbarBrightness[0]->Value(), 0);
        EXPECT_EQ(w.picResult->Image(), w.picOriginal->Image());

        w.hbarBrightness[0]->SetValue(100);
        const cDib result = RunOK(w);
        ASSERT_TRUE(result.hDIB());
        for (int x = 0; x < 512; x += 7) {
            const Px o = At(picture, x, 5);
            EXPECT_EQ(At(result, x, 5), (Px{o.b, o.g, 255, o.x})) << x;
        }
    }
    frmColorBal w(picture);
    w.hbarBrightness[0]->SetValue(-100);
    const cDib result = RunOK(w);
    ASSERT_TRUE(result.hDIB());
    EXPECT_EQ(At(result, 200, 100).r, 0);
    EXPECT_EQ(At(result, 200, 100).g, At(picture, 200, 100).g);
}

TEST(AdjustWindows, CancelHandsNothingBack) {
    const cDib picture = AllValues();
    QTimer::singleShot(0, [] {
        auto* w = qobject_cast<frmBright*>(QApplication::activeModalWidget());
        ASSERT_NE(w, nullptr);
        w->hbarBrightness->SetValue(40);
        QTest::mouseClick(w->btnCancel, Qt::LeftButton);
    });
    EXPECT_FALSE(RunBrightnessDialog(nullptr, picture).has_value());

    QTimer::singleShot(0, [] {
        auto* w = qobject_cast<frmContrast*>(QApplication::activeModalWidget());
        ASSERT_NE(w, nullptr);
        w->hbarContrast->SetValue(-10);
        QTest::mouseClick(w->btnOK, Qt::LeftButton);
    });
    const std::optional<cDib> result = RunContrastDialog(nullptr, Flat(8, 8, Grey(128)));
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(At(*result, 4, 4), Grey(118));
}

TEST(WarpWindow, ListButtonsAndTheHint) {
    const cDib picture = AllValues();
    frmWarp w(picture);
    EXPECT_EQ(w.windowTitle(), "Warp");
    const char* names[] = {"Fish Eye", "Twist", "Wave", "Small Top", "Wiggles", "Double Wave"};
    ASSERT_EQ(w.cboTransformation->count(), 6);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(w.cboTransformation->itemText(i), names[i]);
    EXPECT_EQ(w.btnCancel->toolTip(), "Click here to cancel your changes or to close this window");
    // Nothing chosen: nothing to hand back, and the button only closes.
    EXPECT_EQ(w.Transformation(), -1);
    EXPECT_FALSE(w.btnOK->isEnabled());
    EXPECT_EQ(w.btnCancel->text(), "Close");
    w.cboTransformation->setCurrentIndex(1);
    EXPECT_TRUE(w.btnOK->isEnabled());
    EXPECT_EQ(w.btnCancel->text(), "Cancel");
    EXPECT_NE(w.picResult->Image(), w.picOriginal->Image());
}

TEST(WarpWindow, WaveShiftsColumnsAndFillsFromTheWindowColour) {
    // Red tells the source row; the wave moves column 0 by -5, 25 by -15 and 75 by +5.
    const cDib picture = Make(120, 60, [](int x, int y) { return Rgb(uint8_t(4 * y), uint8_t(x), 0); });
    frmWarp w(picture);
    w.cboTransformation->setCurrentIndex(2);
    const ColorRef window = ToColorRef(w.palette().color(QPalette::Window));
    const cDib result = RunOK(w);
    ASSERT_EQ(result.Width(), 120);
    ASSERT_EQ(result.Height(), 60);
    EXPECT_EQ(At(result, 0, 30).r, 4 * 25);
    EXPECT_EQ(At(result, 25, 30).r, 4 * 15);
    EXPECT_EQ(At(result, 75, 30).r, 4 * 35);
    EXPECT_EQ(At(result, 75, 30).g, 75);
    // Column 0's first five rows look above the picture.
    EXPECT_EQ(PixelColour(result, 0, 2), window);
    EXPECT_NE(PixelColour(result, 0, 6), window);
}

TEST(WarpWindow, PreviewShowsThePicturesWavesShrunk) {
    // A picture 1200 wide is previewed at 360: the wave's 5-pixel lift at column 0 covers
    // just over one preview row, not five.
    const cDib picture = Flat(1200, 600, Rgb(200, 0, 0));
    frmWarp w(picture);
    w.cboTransformation->setCurrentIndex(2);
    const QImage preview = w.picResult->Image();
    ASSERT_EQ(preview.size(), QSize(360, 180));
    const QRgb window = w.palette().color(QPalette::Window).rgb();
    EXPECT_EQ(preview.pixel(0, 1), window);
    EXPECT_EQ(preview.pixel(0, 2), qRgb(200, 0, 0));
}

TEST(FishWindow, OkBendsTheWholePictureOnTheWindowColour) {
    const cDib picture = AllValues();
    frmFish w(picture);
    EXPECT_NE(w.picResult->Image(), w.picOriginal->Image());
    cDib expected;
    ASSERT_TRUE(ApplyFish(picture, expected, ToColorRef(w.palette().color(QPalette::Window))));
    const cDib result = RunOK(w);
    ASSERT_EQ(result.Width(), 512);
    EXPECT_TRUE(Same(result, expected));
    // The middle is magnified about itself.
    EXPECT_EQ(At(result, 256, 150), At(picture, 256, 150));
}

}  // namespace
}  // namespace quorbel
