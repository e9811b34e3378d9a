#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include "UiTestSupport.h"
#include "effects/FilterList.h"
#include "effects/ui/ColourPicker.h"
#include "effects/ui/PreviewBox.h"
#include "effects/ui/SliderRow.h"
#include "effects/ui/fFilter.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

constexpr const char* kTifText =
    "Filters and effects cannot be applied to TIFF images, please save as another format to "
    "apply filter and effects and then save back again as TIFF it needed.";

struct Row {
    QString caption;
    int minimum, maximum, value;
    friend bool operator==(const Row&, const Row&) = default;
    friend void PrintTo(const Row& r, std::ostream* os) {
        *os << r.caption.toStdString() << " " << r.minimum << ".." << r.maximum << " = " << r.value;
    }
};

std::vector<Row> VisibleRows(const fFilter& w) {
    std::vector<Row> rows;
    for (const SliderRow* r : w.sbParam)
        if (r->IsVisible()) rows.push_back({r->Caption(), r->Minimum(), r->Maximum(), r->Value()});
    return rows;
}

int VisibleColours(const fFilter& w) {
    return int(w.lblColor[0]->IsVisible()) + int(w.lblColor[1]->IsVisible());
}

bool ApplyAndWait(fFilter& w) {
    QSignalSpy spy(&w, &fFilter::applyFinished);
    QTest::mouseClick(w.cmdApply, Qt::LeftButton);
    return WaitUntil([&] { return spy.count() > 0; }) && spy.front().front().toBool();
}

class FilterWindowTest : public ::testing::Test {
protected:
    ScriptedMessageBox messages;
};

TEST_F(FilterWindowTest, ListsTheEntriesWithTheirOwnSpellings) {
    const cDib picture = Noisy(40, 30);
    fFilter w(picture, "a.jpg", messages);
    // The spellings themselves are pinned by the filter list's own test.
    ASSERT_EQ(w.cbFilter->count(), kFilterCount);
    for (int i = 0; i < kFilterCount; ++i) EXPECT_EQ(w.cbFilter->itemText(i), FilterList()[i].name) << i;
    // "<None>" is chosen at first and applies nothing.
    EXPECT_EQ(w.FilterIndex(), 0);
    EXPECT_FALSE(w.cmdApply->isEnabled());
    EXPECT_TRUE(VisibleRows(w).empty());
}

TEST_F(FilterWindowTest, EachEntryShowsItsSlidersAndColours) {
    const cDib picture = Noisy(40, 30);
    fFilter w(picture, "a.jpg", messages);
    auto rows = [&](int index) {
        w.SelectFilter(index);
        return VisibleRows(w);
    };
    using Rows = std::vector<Row>;
    EXPECT_EQ(rows(1), (Rows{{"Level", 1, 25, 1}}));
    EXPECT_EQ(rows(3), (Rows{{"Hue", 0, 100, 0}, {"Saturation", 0, 100, 50}, {"Luminosity", 0, 100, 100}}));
    EXPECT_EQ(rows(5), (Rows{{"Level", -100, 250, 0}}));
    EXPECT_EQ(rows(8), (Rows{{"Horizontal factor", 0, 100, 0}, {"Vertical factor", 0, 100, 0}, {"Step", 1, 10, 1}}));
    EXPECT_EQ(rows(15), (Rows{{"Level", -100, 100, 0}, {"Shift", -50, 50, 0}}));
    EXPECT_EQ(rows(21), (Rows{{"Threshold", 0, 255, 0}}));
    EXPECT_TRUE(rows(4).empty());
    EXPECT_TRUE(w.cmdApply->isEnabled());
    EXPECT_EQ(VisibleColours(w), 0);

    EXPECT_EQ(rows(18), (Rows{{"Extent", 0, 255, 0}, {"H Tolerance", 0, 100, 0}, {"S Tolerance", 0, 100, 0}}));
    EXPECT_EQ(VisibleColours(w), 2);
    EXPECT_TRUE(w.picPreview->Picking());
    EXPECT_EQ(rows(19), (Rows{{"Extent", 0, 255, 0}, {"L Tolerance", 0, 100, 0}}));
    EXPECT_EQ(VisibleColours(w), 2);
    EXPECT_TRUE(w.picPreview->Picking());
    EXPECT_EQ(rows(26), (Rows{{"Amount", -255, 255, 0}, {"Extent", 0, 255, 0}}));
    EXPECT_EQ(VisibleColours(w), 1);
    EXPECT_FALSE(w.picPreview->Picking());

    // Coming back to an entry starts it from its initial values again.
    w.SelectFilter(1);
    w.sbParam[0]->SetValue(20);
    EXPECT_EQ(rows(27), (Rows{{"Level", 1, 25, 1}}));
    EXPECT_EQ(rows(1), (Rows{{"Level", 1, 25, 1}}));
}

TEST_F(FilterWindowTest, PreviewFiltersASmallCopyOnly) {
    const cDib picture = Noisy(1200, 900);
    const cDib before = Copy(picture);
    fFilter w(picture, "a.jpg", messages);
    const QImage original = w.picPreview->Image();
    ASSERT_EQ(original.size(), QSize(480, 360));
    w.SelectFilter(13);  // Negative
    QTest::mouseClick(w.cmdPreview, Qt::LeftButton);
    const QImage shown = w.picPreview->Image();
    ASSERT_EQ(shown.size(), original.size());
    for (int y = 0; y < 360; y += 37)
        for (int x = 0; x < 480; x += 41) {
            const QRgb o = original.pixel(x, y), s = shown.pixel(x, y);
            EXPECT_EQ(qRed(s), 255 - qRed(o));
            EXPECT_EQ(qBlue(s), 255 - qBlue(o));
        }
    EXPECT_FALSE(w.Applied());
    EXPECT_TRUE(Same(picture, before));

    // At actual size the preview is the picture's middle, pixel for pixel: its corner is
    // picture pixel ((1200 - 480) / 2, (900 - 360) / 2).
    w.chkActualSize->setChecked(true);
    const QImage middle = w.picPreview->Image();
    ASSERT_EQ(middle.size(), QSize(480, 360));
    for (const QPoint p : {QPoint(0, 0), QPoint(479, 359), QPoint(100, 7)}) {
        const Px o = At(picture, 360 + p.x(), 270 + p.y());
        EXPECT_EQ(middle.pixel(p), qRgb(255 - o.r, 255 - o.g, 255 - o.b));
    }
}

TEST_F(FilterWindowTest, ApplyRunsTheWholePictureOffTheUiThreadAndStacks) {
    const cDib picture = Make(640, 480, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(y), uint8_t(x + y)); });
    const cDib before = Copy(picture);
    fFilter w(picture, "photo.jpg", messages);
    w.SelectFilter(20);  // RGB levels: red, green, blue
    w.sbParam[0]->SetValue(10);
    w.sbParam[1]->SetValue(-20);

    QSignalSpy spy(&w, &fFilter::applyFinished);
    QTest::mouseClick(w.cmdApply, Qt::LeftButton);
    // The run is on a worker: the window answers, its settings locked until the end.
    EXPECT_TRUE(w.Busy());
    EXPECT_FALSE(w.cbFilter->isEnabled());
    EXPECT_FALSE(w.cmdApply->isEnabled());
    EXPECT_TRUE(w.cmdClose->isEnabled());
    ASSERT_TRUE(WaitUntil([&] { return spy.count() == 1; }));
    EXPECT_TRUE(spy.front().front().toBool());
    EXPECT_TRUE(w.Applied());
    EXPECT_TRUE(w.cbFilter->isEnabled());

    // Negative twice is the identity, so two more Applies on top of the first give its
    // result back; starting each from the opened picture would give its negative instead.
    w.SelectFilter(13);
    ASSERT_TRUE(ApplyAndWait(w));
    ASSERT_TRUE(ApplyAndWait(w));
    const cDib result = w.TakeResult();
    ASSERT_EQ(result.Width(), 640);
    ASSERT_EQ(result.Height(), 480);
    for (int y = 0; y < 480; y += 13)
        for (int x = 0; x < 640; x += 17) {
            const Px o = At(before, x, y);
            ASSERT_EQ(At(result, x, y), Rgb(uint8_t(std::min(255, o.r + 10)), uint8_t(std::max(0, o.g - 20)), o.b))
                << x << "," << y;
        }
    EXPECT_TRUE(Same(picture, before));
    EXPECT_TRUE(messages.Shown().empty());
}

TEST_F(FilterWindowTest, TifPictureIsRefusedWithTheKeptWording) {
    const cDib picture = Noisy(30, 20);
    const cDib before = Copy(picture);
    fFilter w(picture, "/home/ann/Scans/Holiday.TIF", messages);
    w.SelectFilter(13);
    QSignalSpy spy(&w, &fFilter::applyFinished);
    QTest::mouseClick(w.cmdApply, Qt::LeftButton);
    ASSERT_EQ(messages.Shown().size(), 1u);
    EXPECT_EQ(messages.Shown()[0].text, kTifText);
    EXPECT_EQ(messages.Shown()[0].buttons, MsgButtons::OK);
    EXPECT_FALSE(w.Busy());
    ASSERT_EQ(spy.count(), 1);
    EXPECT_FALSE(spy.front().front().toBool());
    EXPECT_FALSE(w.Applied());
    EXPECT_TRUE(Same(picture, before));
}

TEST_F(FilterWindowTest, ReplaceFiltersPickTheirColoursFromThePreview) {
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
    EXPECT_EQ(w.lblColor[0]->Colour(), RGBColor(200, 10, 10));
    EXPECT_EQ(w.lblColor[1]->Colour(), RGBColor(10, 20, 220));
    EXPECT_EQ(w.Settings().colours[0], RGBColor(200, 10, 10));

    // Other entries do not pick.
    w.SelectFilter(26);  // Shift: a colour, but no picking
    QTest::mouseClick(w.picPreview, Qt::LeftButton, {}, right);
    EXPECT_EQ(w.lblColor[0]->Colour(), RGBColor(200, 10, 10));
}

TEST_F(FilterWindowTest, HoldingTheButtonOnThePreviewShowsTheBefore) {
    const cDib picture = Flat(200, 100, Grey(100));
    fFilter w(picture, "a.png", messages);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    w.SelectFilter(13);  // Negative
    w.Preview();
    const QPoint centre = w.picPreview->ImageRect().center();
    auto shown = [&] { return QColor(w.picPreview->grab().toImage().pixel(centre)); };
    EXPECT_EQ(shown(), QColor(155, 155, 155));
    QTest::mousePress(w.picPreview, Qt::LeftButton, {}, centre);
    EXPECT_EQ(shown(), QColor(100, 100, 100));
    QTest::mouseRelease(w.picPreview, Qt::LeftButton, {}, centre);
    EXPECT_EQ(shown(), QColor(155, 155, 155));
}

TEST_F(FilterWindowTest, CloseDuringApplyStopsItAndKeepsThePicture) {
    const cDib picture = Noisy(3000, 2000);
    fFilter w(picture, "a.jpg", messages);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    w.SelectFilter(7);  // Despeckle more
    QSignalSpy spy(&w, &fFilter::applyFinished);
    QTest::mouseClick(w.cmdApply, Qt::LeftButton);
    QTest::mouseClick(w.cmdClose, Qt::LeftButton);
    ASSERT_TRUE(WaitUntil([&] { return spy.count() == 1; }));
    EXPECT_FALSE(spy.front().front().toBool());
    EXPECT_FALSE(w.isVisible());
    EXPECT_EQ(w.result(), QDialog::Rejected);
    EXPECT_FALSE(w.Applied());
}

TEST_F(FilterWindowTest, RunFilterDialogHandsBackWhatWasApplied) {
    const cDib picture = Make(50, 40, [](int x, int y) { return Rgb(uint8_t(x), uint8_t(y), 9); });
    int openedWith = -1;
    QTimer::singleShot(0, [&] {
        auto* w = qobject_cast<fFilter*>(QApplication::activeModalWidget());
        ASSERT_NE(w, nullptr);
        openedWith = w->FilterIndex();
        ApplyAndWait(*w);
        QTest::mouseClick(w->cmdClose, Qt::LeftButton);
    });
    const std::optional<cDib> result = RunFilterDialog(nullptr, picture, "a.jpg", messages, 13);
    EXPECT_EQ(openedWith, 13);
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(At(*result, 3, 7), Rgb(252, 248, 246));

    // Closed without an Apply: nothing comes back.
    QTimer::singleShot(0, [] {
        auto* w = qobject_cast<fFilter*>(QApplication::activeModalWidget());
        ASSERT_NE(w, nullptr);
        QTest::mouseClick(w->cmdClose, Qt::LeftButton);
    });
    EXPECT_FALSE(RunFilterDialog(nullptr, picture, "a.jpg", messages, 13).has_value());
}

TEST(FilterWindow, TifExtensionInAnyCaseIsRefused) {
    EXPECT_TRUE(IsTifFile("/home/ann/scan.tif"));
    EXPECT_TRUE(IsTifFile("SCAN.TIF"));
    EXPECT_TRUE(IsTifFile("a.b.Tif"));
    EXPECT_FALSE(IsTifFile("scan.tiff"));
    EXPECT_FALSE(IsTifFile("scan.jpg"));
    EXPECT_FALSE(IsTifFile("tif"));
    EXPECT_FALSE(IsTifFile("/photos.tif/scan"));
    EXPECT_FALSE(IsTifFile(""));
}

}  // namespace
}  // namespace quorbel
