// The fit-to-file-size window's wiring: the fields reach the search, the search runs off the
// window's thread and its end, messages and result come back. The search's rules are pinned
// on FitToFileSize.
#include <QComboBox>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalSpy>

#include "FreshSettings.h"
#include "Pictures.h"
#include "QtUi.h"
#include "core/MessageBox.h"
#include "settings/SettingsStore.h"
#include "sizes/ui/frmMakeItFit.h"

namespace quorbel::test {
namespace {

struct FitCase {
    const char* name;
    int width, height;
    const char *fileSize, *minWidth, *minHeight;
    const char* inches;  // the maximum size shown in inches, at 96 pixels an inch
    bool hw;             // height and width first, from Medium Quality
    bool stop;        // Cancel pressed while searching
    bool fitted;      // a result handed back and the window closed
    const char* box;  // how the one message starts; "" for none
};

const FitCase kFits[] = {
    {"Fits", 800, 600, "20", "80", "60", "8.33x6.25", true, false, true, "reduced size reached: "},
    {"CannotFit", 300, 200, "0.2", "100", "100", "3.13x2.08", false, false, false, "Cannot resize pic."},
    {"Stopped", 1600, 1200, "0.2", "16", "12", "16.67x12.5", false, true, false, ""},
};

class FitWindow : public FreshSettings, public ::testing::WithParamInterface<FitCase> {};

TEST_P(FitWindow, FieldsReachTheSearchAndItsEndComesBack) {
    {
        const FitCase& c = GetParam();
        const cDib picture = Grainy(c.width, c.height);
        ScriptedMessageBox box;
        frmMakeItFit window(picture, box, nullptr, 15.0);
        window.show();
        const auto text = [&](const char* field) { return Child<QLineEdit>(window, field)->text().toStdString(); };
        // Without remembered sizes the maximum is the picture's own; the sizes follow the unit.
        EXPECT_EQ(text("txtMaxWidth") + "x" + text("txtMaxHeight"),
                  std::to_string(c.width) + "x" + std::to_string(c.height));
        Child<QComboBox>(window, "cboScale")->setCurrentText("Inches");
        EXPECT_EQ(text("txtMaxWidth") + "x" + text("txtMaxHeight"), c.inches);
        Child<QComboBox>(window, "cboScale")->setCurrentText("Pixels");
        EXPECT_EQ(text("txtMaxWidth"), std::to_string(c.width));
        // A field that is not a number holds back Go.
        for (auto [typed, go] : {std::pair<std::string, bool>{"tall", false}, {std::to_string(c.height), true}}) {
            Type(window, "txtMaxHeight", QString::fromStdString(typed));
            EXPECT_EQ(Child<QPushButton>(window, "cmdGo")->isEnabled(), go) << typed;
        }
        Type(window, "txtFileSize", c.fileSize);
        Type(window, "txtMinWidth", c.minWidth);
        Type(window, "txtMinHeight", c.minHeight);
        if (c.hw) {
            Child<QComboBox>(window, "cboQuality")->setCurrentText("Medium Quality");
            QTest::mouseClick(Child<QRadioButton>(window, "radHW"), Qt::LeftButton);
        }

        QSignalSpy finished(&window, &frmMakeItFit::searchFinished);
        int progressWhileSearching = 0;
        QObject::connect(Child<QProgressBar>(window, "prgSearch"), &QProgressBar::valueChanged, [&](int value) {
            if (value > 0 && window.Searching()) ++progressWhileSearching;
        });
        Click(window, "cmdGo");
        ASSERT_TRUE(window.Searching());  // the click came back before the search ended
        EXPECT_FALSE(Child<QPushButton>(window, "cmdGo")->isEnabled());
        if (c.stop) Click(window, "cmdCancel");
        ASSERT_TRUE(finished.count() > 0 || finished.wait(60000));
        EXPECT_FALSE(window.Searching());
        if (!c.stop) {
            EXPECT_GT(progressWhileSearching, 0);
        }

        EXPECT_EQ(window.Result().has_value(), c.fitted);
        EXPECT_EQ(window.isVisible(), !c.fitted);
        EXPECT_EQ(box.Texts().size(), *c.box ? 1u : 0u);
        if (!box.Texts().empty()) {
            EXPECT_EQ(box.Texts()[0].rfind(c.box, 0), 0u) << box.Texts()[0];
        }
        if (!c.fitted) {
            EXPECT_TRUE(Child<QPushButton>(window, "cmdGo")->isEnabled());
            Click(window, "cmdCancel");  // with no search running, Cancel closes
            EXPECT_EQ(window.result(), QDialog::Rejected);
            return;
        }
        EXPECT_LE(window.Result()->jpeg.size(), 20000u);
        EXPECT_EQ(window.Result()->quality, 75);
        EXPECT_EQ(window.result(), QDialog::Accepted);
    }
    // A fitted search remembers its choices, and the next opening shows them.
    for (auto [key, value] : {std::pair{"FileSize", "20"}, {"SizeScale", "KB"}, {"Quality", "Medium Quality"},
                              {"MaxWidth", "800"}, {"MinHeight", "60"}, {"radHW", "True"}})
        EXPECT_EQ(GetSetting("Quorbel", "MakeItFit", key), value) << key;
    ScriptedMessageBox box;
    frmMakeItFit again(Grainy(64, 48), box, nullptr, 15.0);
    EXPECT_EQ(Child<QLineEdit>(again, "txtFileSize")->text(), "20");
    EXPECT_TRUE(Child<QRadioButton>(again, "radHW")->isChecked());
    EXPECT_EQ(Child<QComboBox>(again, "cboQuality")->currentText(), "Medium Quality");
}

INSTANTIATE_TEST_SUITE_P(Searches, FitWindow, ::testing::ValuesIn(kFits),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace quorbel::test
