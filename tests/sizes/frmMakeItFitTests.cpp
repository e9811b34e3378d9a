#include <QComboBox>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalSpy>

#include "../settings/ShellFixture.h"
#include "FitPictures.h"
#include "QtTestApp.h"
#include "core/MessageBox.h"
#include "settings/SettingsStore.h"
#include "sizes/ui/frmMakeItFit.h"

namespace quorbel::test {
namespace {

class FitWindow : public ShellFixture {
protected:
    void SetUp() override {
        ShellFixture::SetUp();
        EnsureQtApp();
    }

    static bool WaitFor(QSignalSpy& spy) { return spy.count() > 0 || spy.wait(60000); }
};

TEST_F(FitWindow, SearchesWhileTheWindowKeepsWorkingAndHandsBackAFit) {
    const cDib picture = Grainy(800, 600);
    ScriptedMessageBox box;
    frmMakeItFit window(picture, box, nullptr, 15.0);
    window.show();
    // Without remembered sizes the maximum is the picture's own.
    EXPECT_EQ(Child<QLineEdit>(window, "txtMaxWidth")->text(), "800");
    EXPECT_EQ(Child<QLineEdit>(window, "txtMaxHeight")->text(), "600");

    Type(window, "txtFileSize", "20");
    Type(window, "txtMinWidth", "80");
    Type(window, "txtMinHeight", "60");
    Child<QComboBox>(window, "cboQuality")->setCurrentText("Medium Quality");
    QTest::mouseClick(Child<QRadioButton>(window, "radHW"), Qt::LeftButton);

    QSignalSpy finished(&window, &frmMakeItFit::searchFinished);
    int progressWhileSearching = 0;
    QObject::connect(Child<QProgressBar>(window, "prgSearch"), &QProgressBar::valueChanged, [&](int value) {
        if (value > 0 && window.Searching()) ++progressWhileSearching;
    });
    Click(window, "cmdGo");
    EXPECT_TRUE(window.Searching());  // the click came back before the search ended
    EXPECT_FALSE(Child<QPushButton>(window, "cmdGo")->isEnabled());
    ASSERT_TRUE(WaitFor(finished));
    EXPECT_GT(progressWhileSearching, 0);

    ASSERT_TRUE(window.Result().has_value());
    const FitResult& r = *window.Result();
    EXPECT_LE(r.jpeg.size(), 20000u);
    EXPECT_EQ(r.quality, 75);
    ASSERT_EQ(box.Texts().size(), 1u);
    EXPECT_EQ(box.Texts()[0].rfind("reduced size reached: ", 0), 0u);
    EXPECT_EQ(window.result(), QDialog::Accepted);

    for (auto [key, value] : {std::pair{"FileSize", "20"}, {"SizeScale", "KB"}, {"Quality", "Medium Quality"},
                              {"MaxWidth", "800"}, {"MinHeight", "60"}, {"radHW", "True"}})
        EXPECT_EQ(GetSetting("Quorbel", "MakeItFit", key), value) << key;

    // The next opening shows the remembered choices.
    frmMakeItFit again(picture, box, nullptr, 15.0);
    EXPECT_EQ(Child<QLineEdit>(again, "txtFileSize")->text(), "20");
    EXPECT_TRUE(Child<QRadioButton>(again, "radHW")->isChecked());
    EXPECT_EQ(Child<QComboBox>(again, "cboQuality")->currentText(), "Medium Quality");
}

TEST_F(FitWindow, ALimitTooSmallIsReportedAndTheWindowStaysOpen) {
    const cDib picture = Grainy(300, 200);
    ScriptedMessageBox box;
    frmMakeItFit window(picture, box, nullptr, 15.0);
    window.show();
    Type(window, "txtFileSize", "0.2");
    Type(window, "txtMinWidth", "100");
    Type(window, "txtMinHeight", "100");
    QSignalSpy finished(&window, &frmMakeItFit::searchFinished);
    Click(window, "cmdGo");
    ASSERT_TRUE(WaitFor(finished));
    EXPECT_EQ(box.Texts(), std::vector<std::string>{"Cannot resize pic."});
    EXPECT_FALSE(window.Result().has_value());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(Child<QPushButton>(window, "cmdGo")->isEnabled());
}

TEST_F(FitWindow, StopEndsTheSearchAndAnotherCancelClosesTheWindow) {
    const cDib picture = Grainy(1600, 1200);
    ScriptedMessageBox box;
    frmMakeItFit window(picture, box, nullptr, 15.0);
    window.show();
    Type(window, "txtFileSize", "0.2");  // cannot fit: a long search
    Type(window, "txtMinWidth", "16");
    Type(window, "txtMinHeight", "12");
    QSignalSpy finished(&window, &frmMakeItFit::searchFinished);
    Click(window, "cmdGo");
    ASSERT_TRUE(window.Searching());
    Click(window, "cmdCancel");
    ASSERT_TRUE(WaitFor(finished));
    EXPECT_FALSE(window.Searching());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(box.Shown().empty());
    Click(window, "cmdCancel");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.result(), QDialog::Rejected);
}

TEST_F(FitWindow, AFieldThatIsNotANumberHoldsBackGo) {
    const cDib picture = Grainy(64, 48);
    ScriptedMessageBox box;
    frmMakeItFit window(picture, box, nullptr, 15.0);
    window.show();
    EXPECT_TRUE(Child<QPushButton>(window, "cmdGo")->isEnabled());
    Type(window, "txtMaxHeight", "tall");
    EXPECT_FALSE(Child<QPushButton>(window, "cmdGo")->isEnabled());
    Type(window, "txtMaxHeight", "48");
    EXPECT_TRUE(Child<QPushButton>(window, "cmdGo")->isEnabled());

    // Sizes follow the unit: 96 pixels an inch at 15 twips a pixel.
    Type(window, "txtMaxWidth", "192");
    Child<QComboBox>(window, "cboScale")->setCurrentText("Inches");
    EXPECT_EQ(Child<QLineEdit>(window, "txtMaxWidth")->text(), "2.");
    EXPECT_EQ(Child<QLineEdit>(window, "txtMaxHeight")->text(), ".5");
}

}  // namespace
}  // namespace quorbel::test
