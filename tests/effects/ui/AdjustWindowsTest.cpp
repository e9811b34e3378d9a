// The tone, warp and fisheye windows' wiring: each window's controls reach its effect, the
// preview follows, OK hands back the effect on the whole picture, Cancel hands back nothing.
// The pixels each effect makes are the logic tests' business.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTimer>

#include "Pictures.h"
#include "QtUi.h"
#include "effects/ColourRules.h"
#include "effects/Remap.h"
#include "effects/ui/PreviewBox.h"
#include "effects/ui/SliderRow.h"
#include "effects/ui/frmBright.h"
#include "effects/ui/frmColorBal.h"
#include "effects/ui/frmContrast.h"
#include "effects/ui/frmFish.h"
#include "effects/ui/frmWarp.h"
#include "imaging/ui/DibImage.h"

namespace quorbel::test {
namespace {

struct WindowCase {
    QString title;
    std::optional<cDib> (*run)(QWidget*, const cDib&);
    void (*set)(QWidget&);                            // the user's settings
    void (*effect)(const cDib&, cDib&, ColorRef);     // what they stand for, on a copy
};

const WindowCase kWindows[] = {
    {"Brightness", RunBrightnessDialog, [](QWidget& w) { static_cast<frmBright&>(w).hbarBrightness->SetValue(40); },
     [](const cDib&, cDib& p, ColorRef) { Brighten(p, 40); }},
    // The slider reads as more contrast to the right: the rule's amount is its negative.
    {"Contrast", RunContrastDialog, [](QWidget& w) { static_cast<frmContrast&>(w).hbarContrast->SetValue(-10); },
     [](const cDib&, cDib& p, ColorRef) { ContrastPicture(p, 10); }},
    {"Color Balance", RunColourBalanceDialog,
     [](QWidget& w) {
         auto& bal = static_cast<frmColorBal&>(w);
         bal.hbarBrightness[0]->SetValue(100);
         bal.hbarBrightness[2]->SetValue(-50);
     },
     [](const cDib&, cDib& p, ColorRef) { ColourBalance(p, 100, 0, -50); }},
    {"Warp", RunWarpDialog, [](QWidget& w) { static_cast<frmWarp&>(w).cboTransformation->setCurrentIndex(2); },
     [](const cDib& src, cDib& p, ColorRef back) { ApplyWarp(src, p, 2, back); }},
    {"Fisheye", RunFishDialog, [](QWidget&) {}, [](const cDib& src, cDib& p, ColorRef back) { ApplyFish(src, p, back); }},
};

TEST(AdjustWindows, ControlsReachTheEffectAndOkHandsItBack) {
    // Larger than the previews, every byte value somewhere.
    const cDib picture = Make(512, 300, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(x + y), uint8_t(255 - x)); });
    for (const WindowCase& c : kWindows) {
        SCOPED_TRACE(c.title.toStdString());
        for (bool ok : {true, false}) {
            ColorRef background = 0;
            QTimer::singleShot(0, [&] {
                auto* w = qobject_cast<AdjustWindow*>(QApplication::activeModalWidget());
                ASSERT_NE(w, nullptr);
                EXPECT_EQ(w->windowTitle(), c.title);
                c.set(*w);
                w->UpdateResult();
                EXPECT_NE(w->picResult->Image(), w->picOriginal->Image());
                background = ToColorRef(w->palette().color(QPalette::Window));
                QTest::mouseClick(ok ? w->btnOK : w->btnCancel, Qt::LeftButton);
            });
            const std::optional<cDib> result = c.run(nullptr, picture);
            ASSERT_EQ(result.has_value(), ok);
            if (!ok) continue;
            cDib expected = Copy(picture);
            c.effect(picture, expected, background);
            EXPECT_TRUE(Same(*result, expected));
        }
    }
}

TEST(AdjustWindows, WarpWaitsForAChoiceAndBalanceRefreshPutsTheBarsBack) {
    const cDib picture = Flat(1200, 600, Rgb(200, 0, 0));
    frmWarp warp(picture);
    EXPECT_EQ(warp.cboTransformation->count(), 6);
    EXPECT_EQ(warp.cboTransformation->itemText(2), "Wave");
    EXPECT_EQ(warp.btnCancel->toolTip(), kWarpCancelHint);
    // Nothing chosen: nothing to hand back, and the button only closes.
    EXPECT_EQ(warp.Transformation(), -1);
    EXPECT_FALSE(warp.btnOK->isEnabled());
    EXPECT_EQ(warp.btnCancel->text(), "Close");
    warp.cboTransformation->setCurrentIndex(2);
    EXPECT_TRUE(warp.btnOK->isEnabled());
    EXPECT_EQ(warp.btnCancel->text(), "Cancel");
    // The preview (360 wide) maps through the whole picture's geometry: the wave's 5-pixel
    // lift at column 0 covers just over one preview row, not five.
    const QImage preview = warp.picResult->Image();
    ASSERT_EQ(preview.size(), QSize(360, 180));
    EXPECT_EQ(preview.pixel(0, 1), warp.palette().color(QPalette::Window).rgb());
    EXPECT_EQ(preview.pixel(0, 2), qRgb(200, 0, 0));

    frmColorBal bal(picture);
    bal.hbarBrightness[1]->SetValue(100);
    QTest::mouseClick(bal.cmdUpdate, Qt::LeftButton);
    EXPECT_EQ(qGreen(bal.picResult->Image().pixel(3, 3)), 255);
    QTest::mouseClick(bal.cmdRefresh, Qt::LeftButton);
    EXPECT_EQ(bal.hbarBrightness[1]->Value(), 0);
    EXPECT_EQ(bal.picResult->Image(), bal.picOriginal->Image());
}

}  // namespace
}  // namespace quorbel::test
