#include <gtest/gtest.h>

#include <deque>
#include <functional>

#include "Pictures.h"
#include "Scratch.h"
#include "core/MessageBox.h"
#include "output/CodecRegistry.h"
#include "output/PictureFormat.h"
#include "output/Savers.h"

namespace quorbel {
namespace {

using namespace test;

// Answers the overwrite question as a user would, one scripted answer per question.
class ScriptedAsker : public OverwriteAsker {
public:
    std::deque<std::function<void(WarningQuestion&)>> answers;
    std::vector<std::string> asked;
    void Ask(WarningQuestion& q) override {
        asked.push_back(q.Message());
        if (answers.empty()) return;  // closed without an answer
        auto answer = std::move(answers.front());
        answers.pop_front();
        answer(q);
    }
};

class SaverTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(GdiplusStartup(token, {}), Ok);
        picture = Gradient(16, 12);
        ctx.control = {&picture, 16, 12, false};
        ctx.quality = 90;
        ctx.state = &state;
        ctx.messages = &messages;
        ctx.asker = &asker;
    }
    void TearDown() override { GdiplusShutdown(token); }
    std::string Folder() const { return dir.path.string(); }

    uintptr_t token = 0;
    cDib picture;
    OverwriteState state;
    ScriptedMessageBox messages;
    ScriptedAsker asker;
    SaveContext ctx;
    ScratchDir dir;
};

TEST_F(SaverTest, NamesFollowEachSaversExtensions) {
    clsSaveJPG jpg(ctx);
    clsSaveGIF gif(ctx);
    clsSavePNG png(ctx);
    ClsSaveTIFF tif(ctx);
    clsSaveBMP bmp(ctx);
    clsSaveICO ico(ctx);
    const struct {
        SaverBase* saver;
        const char *folder, *name, *path;
    } cases[] = {
        {&jpg, "/p", "a", "/p/a.jpg"},
        {&jpg, "/p/", "a.JPG", "/p/a.JPG"},  // a trailing separator is not doubled
        {&jpg, "/p", "a.jpeg", "/p/a.jpeg.jpg"},
        // GIF, PNG and TIFF compare with "jpg": .jpg stays, their own extension does not.
        {&gif, "/p", "a.jpg", "/p/a.jpg"},
        {&gif, "/p", "a.gif", "/p/a.gif.gif"},
        {&png, "/p", "a", "/p/a.png"},
        {&tif, "/p", "a.tif", "/p/a.tif.tif"},
        {&bmp, "/p", "a.BMP", "/p/a.BMP"},
        {&ico, "/p", "a.ico", "/p/a.ico"},
        {&ico, "/p", "a.bmp", "/p/a.bmp.ico"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.saver->TargetPath(c.folder, c.name), c.path) << c.name;
    EXPECT_STREQ(ico.TemporaryName(), "tmp.bmp");
    EXPECT_STREQ(tif.TemporaryName(), "tmp.tif");
}

TEST_F(SaverTest, EachSaverWritesItsFormat) {
    clsSaveGIF gif(ctx);
    clsSavePNG png(ctx);
    ClsSaveTIFF tif(ctx);
    clsSaveBMP bmp(ctx);
    EXPECT_EQ(DetectPictureFormat(ReadBytes(gif.SaveFiletoSpecLoc(Folder(), "g.jpg"))), PictureFormat::Gif);
    EXPECT_EQ(DetectPictureFormat(ReadBytes(png.SaveFiletoSpecLoc(Folder(), "p"))), PictureFormat::Png);
    EXPECT_EQ(DetectPictureFormat(ReadBytes(tif.SaveFiletoSpecLoc(Folder(), "t"))), PictureFormat::Tiff);
    EXPECT_EQ(DetectPictureFormat(ReadBytes(bmp.SaveFiletoSpecLoc(Folder(), "b"))), PictureFormat::Bmp);
    const std::string temp = png.SaveToTemporaryFile(dir.path);
    EXPECT_EQ(temp, (dir / "tmp.png").string());
    EXPECT_EQ(DetectPictureFormat(ReadBytes(temp)), PictureFormat::Png);
    ASSERT_TRUE(png.SaveDirect((dir / "direct.png").string()));
    EXPECT_EQ(DetectPictureFormat(ReadBytes(dir / "direct.png")), PictureFormat::Jpeg);
    EXPECT_TRUE(messages.Shown().empty());
}

TEST_F(SaverTest, FactoryAlwaysSavesThroughTheJpegSaver) {
    EXPECT_EQ(clsSaveFactory(ctx, "GIF .gif").SaveFiletoSpecLoc(Folder(), "x"), (dir / "x.jpg").string());
    EXPECT_EQ(DetectPictureFormat(ReadBytes(dir / "x.jpg")), PictureFormat::Jpeg);
    EXPECT_TRUE(messages.Shown().empty());
    EXPECT_EQ(clsSaveFactory(ctx, "ICON .ico").SaveFiletoSpecLoc(Folder(), "i.ico"), (dir / "i.ico.jpg").string());
    ASSERT_EQ(messages.Shown().size(), 1u);
    EXPECT_EQ(messages.Shown()[0].text, "Cannot create icon image saving as bmp");
    EXPECT_EQ(DetectPictureFormat(ReadBytes(dir / "i.ico.jpg")), PictureFormat::Jpeg);
}

using Answer = std::function<void(WarningQuestion&)>;
const Answer kNo = [](WarningQuestion& q) { q.No(); }, kNoToAll = [](WarningQuestion& q) { q.NoToAll(); },
             kYes = [](WarningQuestion& q) { q.Yes(); }, kYesToAll = [](WarningQuestion& q) { q.YesToAll(); };

// Existing a.jpg, b.jpg, … saved over in turn, the user answering each question as scripted.
TEST_F(SaverTest, ExistingFilesAreReplacedOnlyAsTheAnswersSay) {
    const struct {
        const char* what;
        bool batch, silent, png;
        std::vector<Answer> answers;
        int files, asked;
        bool replaced, yesToAll, noToAll;
    } cases[] = {
        {"outside a batch run", false, false, false, {}, 1, 0, false, false, false},
        // No asks again next time; No to All ends the asking.
        {"no, then no to all", true, false, false, {kNo, kNoToAll}, 4, 2, false, false, true},
        {"yes, then yes to all", true, false, false, {kYes, kYesToAll}, 3, 2, true, true, false},
        {"yes to all with skip chosen", true, false, false,
         {[](WarningQuestion& q) { q.Choose(WarningOption::Skip), q.YesToAll(); }}, 2, 1, false, false, true},
        // CD and e-mail jobs replace GIF, PNG and TIFF files without asking; JPEG still asks.
        {"CD job, PNG", true, true, true, {}, 2, 0, true, false, false},
        {"CD job, JPEG", true, true, false, {kNo, kNo}, 2, 2, false, false, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ScratchDir folder;
        state = {};
        state.BatchActive = c.batch;
        ctx.replaceSilently = c.silent;
        asker.asked.clear();
        asker.answers.assign(c.answers.begin(), c.answers.end());
        clsSaveJPG jpg(ctx);
        clsSavePNG png(ctx);
        SaverBase& saver = c.png ? static_cast<SaverBase&>(png) : jpg;
        for (int i = 0; i < c.files; ++i) {
            const fs::path file = folder / (std::string(1, char('a' + i)) + (c.png ? ".png" : ".jpg"));
            WriteText(file, "old");
            EXPECT_EQ(saver.SaveFiletoSpecLoc(folder.path.string(), file.stem().string()), c.replaced ? file.string() : "");
            EXPECT_EQ(ReadText(file) == "old", !c.replaced) << file;
        }
        ASSERT_EQ(int(asker.asked.size()), c.asked);
        if (c.asked)
            EXPECT_EQ(asker.asked[0], "The picture 'a.jpg' exists.\r\nDo you want to replace it?\r\nSelect 'Yes' to replace the picture.\r\n"
                                      "or 'No' to not replace the file..\r\nClick 'Yes to All' to replace all files,\r\n"
                                      "Select 'No to All' to not replace any files.");
        EXPECT_EQ(state.YesToAll, c.yesToAll);
        EXPECT_EQ(state.NoToAll, c.noToAll);
        EXPECT_FALSE(state.SkipThis);  // cleared by the saver after each question
        EXPECT_FALSE(state.WriteThis);
    }
}

TEST_F(SaverTest, RenameAsksAgainUntilTheNameIsFree) {
    state.BatchActive = true;
    for (const char* name : {"Photo.JPG", "taken.jpg"}) WriteText(dir / name, "old");
    asker.answers = {[this](WarningQuestion& q) {
        q.Choose(WarningOption::Rename);
        EXPECT_TRUE(q.RenameVisible());
        EXPECT_FALSE(q.YesToAllEnabled());
        q.YesToAll();  // disabled: nothing happens
        q.Yes();       // empty name: stays open
        EXPECT_FALSE(q.Closed());
        q.SetRenameText("taken.jpg");
        q.Yes();
        EXPECT_FALSE(q.Closed());
        ASSERT_EQ(messages.Shown().size(), 1u);
        EXPECT_EQ(messages.Shown()[0].text, "File Exists please try another name.");
        q.SetRenameText("fresh.jpg");
        q.Yes();
        EXPECT_TRUE(q.Closed());
    }};
    clsSaveJPG jpg(ctx);
    EXPECT_EQ(jpg.SaveFiletoSpecLoc(Folder(), "Photo.JPG"), (dir / "fresh.jpg").string());
    EXPECT_EQ(ReadText(dir / "Photo.JPG"), "old");
    EXPECT_EQ(ReadBytes(dir / "fresh.jpg")[0], 0xFF);
    EXPECT_FALSE(state.YesToAll);
}

TEST_F(SaverTest, QuestionOptionsAndFlagTable) {
    OverwriteState s;
    WarningQuestion q(s, messages, "m", "/x/a.jpg", "a.jpg");
    EXPECT_EQ(q.Option(), WarningOption::OverWrite);
    q.Choose(WarningOption::Rename);
    q.SetRenameText("b");
    q.Choose(WarningOption::Seq);  // every option clears the box
    EXPECT_EQ(q.RenameText(), "");
    EXPECT_TRUE(q.YesToAllEnabled());
    q.Yes();
    EXPECT_TRUE(s.WriteThis);
    EXPECT_FALSE(s.SkipThis);

    // The new name replaces the old one wherever it appears, whatever its case.
    WarningQuestion renamed(s, messages, "m", "/x/A.JPG", "a.jpg");
    renamed.Choose(WarningOption::Rename);
    renamed.SetRenameText("b.jpg");
    renamed.Yes();
    EXPECT_EQ(renamed.TargetPath(), "/x/b.jpg");

    OverwriteState t;
    t.WriteThis = true;
    WarningQuestion skip(t, messages, "m", "/x/a.jpg", "a.jpg");
    skip.Choose(WarningOption::Skip);
    skip.Yes();
    EXPECT_TRUE(t.SkipThis);
    EXPECT_FALSE(t.WriteThis);
    EXPECT_FALSE(t.NoToAll);
}

TEST_F(SaverTest, AFailedWriteShowsTheMessage) {
    GdiplusShutdown(token);  // nothing can be written now
    clsSavePNG png(ctx);
    EXPECT_EQ(png.SaveFiletoSpecLoc(Folder(), "p"), "");
    ASSERT_EQ(messages.Shown().size(), 1u);
    EXPECT_EQ(messages.Shown()[0].text, "Failed to save the picture to the file: '" + (dir / "p.png").string() + "'");
    EXPECT_EQ(messages.Shown()[0].icon, MsgIcon::Exclamation);
    EXPECT_FALSE(std::filesystem::exists(dir / "p.png"));
}

TEST_F(SaverTest, StretchedControlsSaveAtTheirShownSize) {
    ctx.control = {&picture, 8, 6, true};
    clsSaveBMP bmp(ctx);
    ASSERT_FALSE(bmp.SaveFiletoSpecLoc(Folder(), "s").empty());
    auto loaded = LoadPictureGdiplus((dir / "s.bmp").string());
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->pixels.Width(), 8);
    EXPECT_EQ(loaded->pixels.Height(), 6);
}

}  // namespace
}  // namespace quorbel
