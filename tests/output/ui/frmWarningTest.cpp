// The overwrite window's wiring: its buttons and options reach the question, whose rules
// the savers' tests pin.
#include <gtest/gtest.h>

#include <QLabel>
#include <QRadioButton>

#include "QtUi.h"

#include "Scratch.h"
#include "output/ui/frmWarning.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

struct Fixture {
    Fixture() { WriteText(dir / "photo.jpg", "x"); }
    WarningQuestion Question(OverwriteState& s) {
        return WarningQuestion(s, messages, OverwriteQuestionText("photo.jpg"), (dir / "photo.jpg").string(), "photo.jpg");
    }
    ScratchDir dir;
    ScriptedMessageBox messages;
};

TEST(frmWarning, RenameShowsTheNameBoxDisablesYesToAllAndWritesUnderTheNewName) {
    Fixture f;
    OverwriteState state;
    WarningQuestion q = f.Question(state);
    frmWarning w(q, QImage());
    w.show();
    EXPECT_FALSE(w.txtRename->isVisibleTo(&w));
    EXPECT_TRUE(w.btnYesAll->isEnabled());

    w.optRename->click();
    EXPECT_TRUE(w.txtRename->isVisibleTo(&w));
    EXPECT_TRUE(w.lblRename->isVisibleTo(&w));
    EXPECT_FALSE(w.btnYesAll->isEnabled());
    w.Yes->click();  // no name yet: the window stays open
    EXPECT_TRUE(w.isVisible());
    QTest::keyClicks(w.txtRename, "fresh.jpg");
    w.Yes->click();
    EXPECT_TRUE(q.Closed());
    EXPECT_EQ(q.TargetPath(), (f.dir / "fresh.jpg").string());
    EXPECT_TRUE(state.WriteThis);

    // Choosing another option hides the box again and clears it.
    w.optSeq->click();
    EXPECT_FALSE(w.txtRename->isVisibleTo(&w));
    EXPECT_TRUE(w.txtRename->text().isEmpty());
}

TEST(frmWarning, TheAllButtonsAnswerForEveryFile) {
    Fixture f;
    const struct {
        const char* what;
        bool skipFirst, noToAllButton;
        bool yesToAll, noToAll;
    } cases[] = {
        {"yes to all", false, false, true, false},
        {"skip, then yes to all", true, false, false, true},
        {"no to all", false, true, false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OverwriteState state;
        WarningQuestion q = f.Question(state);
        frmWarning w(q, QImage());
        if (c.skipFirst) w.optSkip->click();
        (c.noToAllButton ? w.boolNoToAll : w.btnYesAll)->click();
        EXPECT_EQ(state.YesToAll, c.yesToAll);
        EXPECT_EQ(state.NoToAll, c.noToAll);
        EXPECT_EQ(state.WriteThis, c.yesToAll);
        EXPECT_EQ(w.result(), QDialog::Accepted);
    }
}

}  // namespace
}  // namespace quorbel
