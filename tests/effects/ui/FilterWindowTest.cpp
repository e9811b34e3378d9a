// The filter window's wiring: each entry shows its own sliders, the settings reach the
// filter list, Applies stack, closing hands back only what was applied. The pixels each
// filter makes are the logic tests' business.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include "Pictures.h"
#include "QtUi.h"
#include "effects/FilterList.h"
#include "effects/ui/ColourPicker.h"
#include "effects/ui/PreviewBox.h"
#include "effects/ui/SliderRow.h"
#include "effects/ui/fFilter.h"

namespace quorbel::test {
namespace {

bool ApplyAndWait(fFilter& w) {
    QSignalSpy spy(&w, &fFilter::applyFinished);
    QTest::mouseClick(w.cmdApply, Qt::LeftButton);
    return WaitUntil([&] { return spy.count() > 0; }) && spy.front().front().toBool();
}

class FilterWindowTest : public ::testing::Test {
protected:
    ScriptedMessageBox messages;
};

TEST_F(FilterWindowTest, EachEntryShowsItsOwnSlidersAndColours) {
    const cDib picture = Noisy(40, 30);
    fFilter w(picture, "a.jpg", messages);
    ASSERT_EQ(w.cbFilter->count(), kFilterCount);
    EXPECT_EQ(w.FilterIndex(), 0);  // "<None>" at first, which applies nothing
    EXPECT_FALSE(w.cmdApply->isEnabled());
    for (int i = kFilterCount - 1; i >= 0; --i) {
        const FilterEntry& e = FilterList()[i];
        SCOPED_TRACE(e.name);
        // A moved slider does not carry over: each entry starts from its initial values.
        if (w.sbParam[0]->IsVisible()) w.sbParam[0]->SetValue(w.sbParam[0]->Maximum());
        w.SelectFilter(i);
        EXPECT_EQ(w.cbFilter->itemText(i), e.name);
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(w.sbParam[k]->IsVisible(), k < e.paramCount);
            if (k >= e.paramCount) continue;
            EXPECT_EQ(w.sbParam[k]->Caption(), e.params[k].caption);
            EXPECT_EQ(std::pair(w.sbParam[k]->Minimum(), w.sbParam[k]->Maximum()), std::pair(e.params[k].minimum, e.params[k].maximum));
            EXPECT_EQ(w.sbParam[k]->Value(), e.params[k].initial);
        }
        EXPECT_EQ(int(w.lblColor[0]->IsVisible()) + int(w.lblColor[1]->IsVisible()), e.colourCount);
        EXPECT_EQ(w.picPreview->Picking(), e.picksFromPreview);
        EXPECT_EQ(w.cmdApply->isEnabled(), i > 0);
    }
}

TEST_F(FilterWindowTest, AppliesStackAndReachTheFilterWithTheSliders) {
    const cDib picture = Make(640, 480, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(y), uint8_t(x + y)); });
    const cDib before = Copy(picture);
    cDib expected = Copy(picture);
    fFilter w(picture, "photo.jpg", messages);
    struct Step {
        int index;
        std::array<int, 3> sliders;
    };
    // Negative twice: starting each Apply from the opened picture would not give this.
    for (const Step& step : {Step{20, {10, -20, 0}}, Step{13, {}}, Step{13, {}}, Step{1, {25}}}) {
        w.SelectFilter(step.index);
        for (int k = 0; k < FilterList()[step.index].paramCount; ++k) w.sbParam[k]->SetValue(step.sliders[k]);
        QSignalSpy spy(&w, &fFilter::applyFinished);
        QTest::mouseClick(w.cmdApply, Qt::LeftButton);
        // The run is on a worker: the window answers, its settings locked until the end.
        EXPECT_TRUE(w.Busy() && !w.cbFilter->isEnabled() && !w.cmdApply->isEnabled() && w.cmdClose->isEnabled());
        ASSERT_TRUE(WaitUntil([&] { return spy.count() == 1; }));
        EXPECT_TRUE(spy.front().front().toBool());
        EXPECT_TRUE(w.cbFilter->isEnabled());
        cDIBFilter engine;
        ApplyFilter(engine, expected, step.index, {{step.sliders}, {}});
    }
    EXPECT_TRUE(w.Applied());
    EXPECT_TRUE(Same(w.TakeResult(), expected));
    EXPECT_TRUE(Same(picture, before));
    EXPECT_TRUE(messages.Shown().empty());
}

TEST_F(FilterWindowTest, PreviewFiltersASmallCopyOrTheMiddleAtActualSize) {
    const cDib picture = Noisy(1200, 900);
    const cDib before = Copy(picture);
    fFilter w(picture, "a.jpg", messages);
    const QImage original = w.picPreview->Image();
    ASSERT_EQ(original.size(), QSize(480, 360));
    w.SelectFilter(13);  // Negative
    QTest::mouseClick(w.cmdPreview, Qt::LeftButton);
    const QImage shown = w.picPreview->Image();
    ASSERT_EQ(shown.size(), original.size());
    for (const QPoint p : {QPoint(0, 0), QPoint(479, 359), QPoint(100, 7)}) {
        const QRgb o = original.pixel(p);
        EXPECT_EQ(shown.pixel(p), qRgb(255 - qRed(o), 255 - qGreen(o), 255 - qBlue(o)));
    }
    // At actual size its corner is picture pixel ((1200 - 480) / 2, (900 - 360) / 2).
    w.chkActualSize->setChecked(true);
    ASSERT_EQ(w.picPreview->Image().size(), QSize(480, 360));
    for (const QPoint p : {QPoint(0, 0), QPoint(479, 359), QPoint(100, 7)}) {
        const Px o = At(picture, 360 + p.x(), 270 + p.y());
        EXPECT_EQ(w.picPreview->Image().pixel(p), qRgb(255 - o.r, 255 - o.g, 255 - o.b));
    }
    EXPECT_FALSE(w.Applied());
    EXPECT_TRUE(Same(picture, before));
}

TEST_F(FilterWindowTest, ReplaceFiltersPickColoursAndHoldingShowsTheBefore) {
    // Left half red, right half blue; small enough to be previewed as it is.
    const cDib picture = Make(200, 100, [](int x, int) { return x < 100 ? Rgb(200, 10, 10) : Rgb(10, 20, 220); });
    fFilter w(picture, "a.png", messages);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    w.SelectFilter(18);  // Replace HS
    const QRect r = w.picPreview->ImageRect();
    ASSERT_EQ(r.size(), QSize(200, 100));
    const QPoint left(r.left() + 50, r.center().y()), right(r.left() + 150, r.center().y());
    QTest::mouseClick(w.picPreview, Qt::LeftButton, {}, left);
    QTest::mouseClick(w.picPreview, Qt::RightButton, {}, right);
    EXPECT_EQ(w.Settings().colours, (std::array{RGBColor(200, 10, 10), RGBColor(10, 20, 220)}));
    w.SelectFilter(26);  // Shift: a colour, but no picking
    QTest::mouseClick(w.picPreview, Qt::LeftButton, {}, right);
    EXPECT_EQ(w.lblColor[0]->Colour(), RGBColor(200, 10, 10));

    w.SelectFilter(13);  // Negative
    w.Preview();
    auto shown = [&] { return QColor(w.picPreview->grab().toImage().pixel(left)); };
    EXPECT_EQ(shown(), QColor(55, 245, 245));
    QTest::mousePress(w.picPreview, Qt::LeftButton, {}, left);
    EXPECT_EQ(shown(), QColor(200, 10, 10));
    QTest::mouseRelease(w.picPreview, Qt::LeftButton, {}, left);
    EXPECT_EQ(shown(), QColor(55, 245, 245));
}

TEST_F(FilterWindowTest, NothingComesBackUnlessAnApplyWentThrough) {
    const cDib picture = Make(50, 40, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(y), 9); });
    // A TIFF is refused with the kept wording.
    fFilter tif(picture, "/home/ann/Scans/Holiday.TIF", messages);
    tif.SelectFilter(13);
    EXPECT_FALSE(ApplyAndWait(tif));
    EXPECT_EQ(messages.Texts(), std::vector<std::string>{kTifFilterNoText});
    EXPECT_EQ(messages.Shown()[0].buttons, MsgButtons::OK);
    EXPECT_FALSE(tif.Busy() || tif.Applied());
    for (const auto& [name, refused] : {std::pair{"/home/ann/scan.tif", true}, {"SCAN.TIF", true}, {"a.b.Tif", true},
                                        {"scan.tiff", false}, {"tif", false}, {"/photos.tif/scan", false}, {"", false}})
        EXPECT_EQ(IsTifFile(name), refused) << name;

    // Closing during an Apply stops it.
    const cDib big = Noisy(3000, 2000);
    fFilter w(big, "a.jpg", messages);
    w.show();
    w.SelectFilter(7);  // Despeckle more
    QSignalSpy spy(&w, &fFilter::applyFinished);
    QTest::mouseClick(w.cmdApply, Qt::LeftButton);
    QTest::mouseClick(w.cmdClose, Qt::LeftButton);
    ASSERT_TRUE(WaitUntil([&] { return spy.count() == 1; }));
    EXPECT_FALSE(spy.front().front().toBool());
    EXPECT_FALSE(w.isVisible() || w.Applied());
    EXPECT_EQ(w.result(), QDialog::Rejected);

    // The dialog opens on the entry asked for and hands back what was applied, or nothing.
    for (bool apply : {true, false}) {
        int openedWith = -1;
        QTimer::singleShot(0, [&] {
            auto* d = qobject_cast<fFilter*>(QApplication::activeModalWidget());
            ASSERT_NE(d, nullptr);
            openedWith = d->FilterIndex();
            if (apply) ApplyAndWait(*d);
            QTest::mouseClick(d->cmdClose, Qt::LeftButton);
        });
        const std::optional<cDib> result = RunFilterDialog(nullptr, picture, "a.jpg", messages, 13);
        EXPECT_EQ(openedWith, 13);
        ASSERT_EQ(result.has_value(), apply);
        if (apply) EXPECT_EQ(At(*result, 3, 7), Rgb(252, 248, 246));
    }
}

}  // namespace
}  // namespace quorbel::test
