#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <filesystem>
#include <fstream>

#include "output/ui/frmWarning.h"

namespace quorbel {
namespace fs = std::filesystem;

namespace {
struct Fixture {
    Fixture() : dir(fs::temp_directory_path() / fs::path("quorbel-warning-" + std::to_string(::getpid()))) {
        fs::create_directories(dir);
        std::ofstream(dir / "photo.jpg") << "x";
    }
    ~Fixture() { fs::remove_all(dir); }
    fs::path dir;
    OverwriteState state;
    ScriptedMessageBox messages;
};
}  // namespace

TEST(frmWarning, RenameShowsTheNameBoxDisablesYesToAllAndWritesUnderTheNewName) {
    Fixture f;
    WarningQuestion q(f.state, f.messages, OverwriteQuestionText("photo.jpg"), (f.dir / "photo.jpg").string(),
                      "photo.jpg");
    frmWarning w(q, QImage());
    w.show();
    EXPECT_FALSE(w.txtRename->isVisibleTo(&w));
    EXPECT_TRUE(w.btnYesAll->isEnabled());

    w.optRename->click();
    EXPECT_TRUE(w.txtRename->isVisibleTo(&w));
    EXPECT_TRUE(w.lblRename->isVisibleTo(&w));
    EXPECT_FALSE(w.btnYesAll->isEnabled());

    // A name that exists is refused with its message and the window stays open.
    std::ofstream(f.dir / "taken.jpg") << "y";
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
    WarningQuestion q(f.state, f.messages, "m", (f.dir / "photo.jpg").string(), "photo.jpg");
    frmWarning w(q, QImage());
    w.show();
    w.optSkip->click();
    w.btnYesAll->click();
    EXPECT_TRUE(f.state.NoToAll);
    EXPECT_TRUE(f.state.SkipThis);
    EXPECT_FALSE(f.state.YesToAll);
    EXPECT_FALSE(f.state.WriteThis);

    OverwriteState fresh;
    WarningQuestion q2(fresh, f.messages, "m", (f.dir / "photo.jpg").string(), "photo.jpg");
    frmWarning w2(q2, QImage());
    w2.btnYesAll->click();
    EXPECT_TRUE(fresh.YesToAll);
    EXPECT_TRUE(fresh.WriteThis);

    OverwriteState third;
    WarningQuestion q3(third, f.messages, "m", (f.dir / "photo.jpg").string(), "photo.jpg");
    frmWarning w3(q3, QImage());
    w3.boolNoToAll->click();
    EXPECT_TRUE(third.NoToAll);
    EXPECT_TRUE(third.SkipThis);
    EXPECT_EQ(w3.result(), QDialog::Accepted);
}

}  // namespace quorbel
