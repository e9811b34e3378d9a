#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "Scratch.h"
#include "output/ui/frmWarning.h"

namespace quorbel {
namespace {
using namespace quorbel::test;

struct Fixture {
    Fixture() { WriteText(dir / "photo.jpg", "x"); }
    // A question about photo.jpg, answered through its window.
    WarningQuestion Question(OverwriteState& s) {
        return WarningQuestion(s, messages, OverwriteQuestionText("photo.jpg"), (dir / "photo.jpg").string(), "photo.jpg");
    }
    ScratchDir dir;
    OverwriteState state;
    ScriptedMessageBox messages;
};

TEST(frmWarning, RenameShowsTheNameBoxDisablesYesToAllAndWritesUnderTheNewName) {
    Fixture f;
    WarningQuestion q = f.Question(f.state);
    frmWarning w(q, QImage());
    w.show();
    EXPECT_FALSE(w.txtRename->isVisibleTo(&w));
    EXPECT_TRUE(w.btnYesAll->isEnabled());

    w.optRename->click();
    EXPECT_TRUE(w.txtRename->isVisibleTo(&w));
    EXPECT_TRUE(w.lblRename->isVisibleTo(&w));
    EXPECT_FALSE(w.btnYesAll->isEnabled());

    // A name that exists is refused with its message and the window stays open.
    WriteText(f.dir / "taken.jpg", "y");
    QTest::keyClicks(w.txtRename, "taken.jpg");
    w.Yes->click();
    ASSERT_EQ(f.messages.Texts(), std::vector<std::string>{"File Exists please try another name."});
    EXPECT_FALSE(q.Closed());

    w.txtRename->clear();
    QTest::keyClicks(w.txtRename, "fresh.jpg");
    w.Yes->click();
    EXPECT_TRUE(q.Closed());
    EXPECT_EQ(q.TargetPath(), (f.dir / "fresh.jpg").string());
    EXPECT_TRUE(f.state.WriteThis);
    EXPECT_FALSE(f.state.SkipThis);

    // Choosing another option hides the box again and clears it.
    w.optSeq->click();
    EXPECT_FALSE(w.txtRename->isVisibleTo(&w));
    EXPECT_TRUE(w.txtRename->text().isEmpty());
}

TEST(frmWarning, YesToAllWithSkipChosenMeansNoToAll) {
    Fixture f;
    WarningQuestion q = f.Question(f.state);
    frmWarning w(q, QImage());
    w.show();
    w.optSkip->click();
    w.btnYesAll->click();
    EXPECT_TRUE(f.state.NoToAll);
    EXPECT_TRUE(f.state.SkipThis);
    EXPECT_FALSE(f.state.YesToAll);
    EXPECT_FALSE(f.state.WriteThis);

    OverwriteState fresh;
    WarningQuestion q2 = f.Question(fresh);
    frmWarning w2(q2, QImage());
    w2.btnYesAll->click();
    EXPECT_TRUE(fresh.YesToAll);
    EXPECT_TRUE(fresh.WriteThis);

    OverwriteState third;
    WarningQuestion q3 = f.Question(third);
    frmWarning w3(q3, QImage());
    w3.boolNoToAll->click();
    EXPECT_TRUE(third.NoToAll);
    EXPECT_TRUE(third.SkipThis);
    EXPECT_EQ(w3.result(), QDialog::Accepted);
}

}  // namespace
}  // namespace quorbel
