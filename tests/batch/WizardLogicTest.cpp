#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "batch/BatchFinish.h"
#include "batch/PictureList.h"
#include "batch/WizardSteps.h"
#include "share/Disc.h"
#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

const std::string kSourceMissing =
    "The folder you have chosen to resize pictures from does not appear to exist, please check to see that you "
    "have entered the correct path to the folder.";
const std::string kRenameEmpty = "Please add a name in the New Name text box or uncheck Rename checkbox.";
const std::string kBadName = "The New Name contains characters that cannot be used to create files or folders.";
const std::string kTooLong = "Name too long, please shorten and try again.";

class WizardLogicTest : public testing::Test {
protected:
    void SetUp() override {
        root_ = fs::path(testing::TempDir()) /
                ("wizard_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(root_);
        fs::create_directories(root_ / "Pics");
        fs::create_directories(root_ / "out");
        ::setenv("XDG_CONFIG_HOME", (root_ / "config").c_str(), 1);
    }
    void TearDown() override { fs::remove_all(root_); }
    std::string Pics() const { return (root_ / "Pics").string(); }
    fs::path root_;
    ScriptedMessageBox messages;
};

TEST_F(WizardLogicTest, FolderStepChecksInOrderAndKeepsTheUserOnTheStep) {
    struct Case {
        std::string source, newName;
        bool rename;
        std::vector<std::string> texts;
    };
    const std::string out = (root_ / "out").string();
    const Case cases[] = {
        {"/no/such/folder", "", true, {kSourceMissing}},
        {Pics(), "", true, {kRenameEmpty}},
        {Pics(), "Holiday.2008", false, {kBadName}},
        {Pics(), "Ferien/1", true, {kBadName}},
        {Pics(), std::string(256, '.'), true, {kTooLong}},
    };
    for (const Case& c : cases) {
        messages.Clear();
        FolderStepValues v{c.source, out, c.rename, c.newName};
        EXPECT_FALSE(CheckFolderStep(v, messages)) << c.newName;
        EXPECT_EQ(messages.Texts(), c.texts) << c.newName;
    }
    messages.Clear();
    FolderStepValues good{Pics(), out, true, "Holiday 2008"};
    ASSERT_TRUE(CheckFolderStep(good, messages));
    EXPECT_TRUE(messages.Texts().empty());
    EXPECT_EQ(good.source, Pics() + "/");
    EXPECT_EQ(GetSetting(kAppName, "MultiEdit", "Source"), Pics() + "/");
    EXPECT_EQ(GetSetting(kAppName, "Settings", "Rename Name"), "Holiday 2008");
}

TEST_F(WizardLogicTest, SameFolderAsksAndNoStays) {
    // Equal once the "/" is added and both are lowered.
    FolderStepValues v{Pics(), Pics() + "/", false, ""};
    messages.Answer(MsgResult::No);
    EXPECT_FALSE(CheckFolderStep(v, messages));
    ASSERT_EQ(messages.Shown().size(), 1u);
    EXPECT_EQ(messages.Shown()[0].buttons, MsgButtons::YesNo);
    EXPECT_TRUE(messages.Shown()[0].text.starts_with("Warning! The Source folder is the same as the Target folder!"));
    messages.Answer(MsgResult::Yes);
    EXPECT_TRUE(CheckFolderStep(v, messages));
}

TEST_F(WizardLogicTest, SizeStepReportsTheHeightBeforeTheWidth) {
    EXPECT_FALSE(CheckSizeStep({"abc", "abc", "JPEG (*.jpg)", "Highest Quality", "95"}, messages));
    EXPECT_FALSE(CheckSizeStep({"640", "480", "JPEG (*.jpg)", "", "95"}, messages));
    EXPECT_FALSE(CheckSizeStep({"640", "480", "JPEG (*.jpg)", "Highest Quality", ""}, messages));
    EXPECT_TRUE(CheckSizeStep({"640", "480", "JPEG (*.jpg)", "Highest Quality", "95"}, messages));
    EXPECT_EQ(messages.Texts(),
              (std::vector<std::string>{
                  "The Height value does not appear to be valid please check it and try again",
                  "The the JPEG quick select quality value does not appear to be valid please check it and try again",
                  "The JPEG quality value does not appear to be valid please check it and try again"}));
    WizardSteps steps;
    steps.Next([](int) { return true; });
    EXPECT_EQ(steps.Next([](int leaving) { return leaving != kStepFolders; }), kStepFolders);
}

TEST_F(WizardLogicTest, PictureListAddsRemovesMovesAndSetsRows) {
    PictureList list;
    EXPECT_FALSE(list.RemoveSelected(messages));
    EXPECT_FALSE(list.RemoveAll(messages));
    EXPECT_TRUE(messages.Shown().empty());  // an empty list asks nothing

    const std::vector<std::string> folder{"a.jpg", "b.jpg", "c.jpg"};
    list.Add(list.AddCandidates(folder, messages), "Rotate Left");
    EXPECT_TRUE(list.AddCandidates(folder, messages).empty());
    EXPECT_EQ(messages.Texts(), std::vector<std::string>{kAllAddedText});

    list.Select(0);
    list.MoveUp();  // the first row stays first
    list.SetCaption("harbour");
    list.MoveDown();
    EXPECT_EQ(list.Selected(), 1u);
    EXPECT_EQ(list.Rows()[1], (BatchPicture{"a.jpg", "Rotate Left", "None", "harbour"}));
    list.SetEffect("Pixelate", false);
    EXPECT_EQ(list.Rows()[1].effect, "Pixalate");
    EXPECT_EQ(EffectBoxText(list.Rows()[1].effect), "Pixelate");
    list.SetRotation("Flip", true);
    for (const BatchPicture& row : list.Rows()) EXPECT_EQ(OptionForRotation(row.rotation), RotationOption::Flip);
    EXPECT_EQ(OptionForRotation("Horizontal"), RotationOption::None);

    messages.Clear();
    messages.Answer(MsgResult::No);
    EXPECT_FALSE(list.RemoveSelected(messages));
    EXPECT_TRUE(list.RemoveSelected(messages));
    EXPECT_EQ(messages.Shown()[0].text, kRemoveOneText);
    EXPECT_EQ(messages.Shown()[0].icon, MsgIcon::Question);
    EXPECT_EQ(list.Rows().size(), 2u);
    EXPECT_EQ(list.Rows()[1].file, "c.jpg");

    EXPECT_FALSE(PlanPreview("No Preview!", list.Rows()[0]).picture);
    EXPECT_FALSE(PlanPreview("Preview image only", list.Rows()[0]).rotation);
    EXPECT_FALSE(PlanPreview(kPreviewModes[0], {"x", "None", "None", ""}).effect);
    EXPECT_TRUE(PlanPreview(kPreviewModes[0], {"x", "None", "Blur", ""}).effect);
    EXPECT_FALSE(PlanPreview(kPreviewModes[1], {"x", "None", "Blur", ""}).effect);
}

class RecordingDesktop : public Desktop {
public:
    explicit RecordingDesktop(MessageBox& m) : Desktop(m) {}
    bool Open(const std::string& path) override {
        opened.push_back(path);
        return true;
    }
    std::vector<std::string> opened;
};

TEST_F(WizardLogicTest, FinishingWalksTheOutputsAndActsOnTheAfterRunChoice) {
    std::ofstream(root_ / "out/1.jpg") << "x";
    std::ofstream(root_ / "out/2.jpg") << "x";
    const std::vector<fs::path> outputs{root_ / "out/gone.jpg", root_ / "out/1.jpg", root_ / "out/2.jpg"};
    RecordingDesktop desktop(messages);
    JobCompletionServices completion{messages, desktop, root_};
    std::vector<std::string> waits, opened;
    FinishServices services{completion, [&](const std::string& t) { waits.push_back(t); },
                            [&](const std::string&, const std::string& p) { opened.push_back(p); }};
    BatchJob job;
    job.afterRun = kAfterRunTexts[0];
    const auto existing = FinishBatch(job, {}, outputs, "/t/", services);
    EXPECT_EQ(existing, (std::vector<fs::path>{outputs[1], outputs[2]}));
    EXPECT_EQ(waits, (std::vector<std::string>{kFinishingText, kAllDoneText, kOpeningFolderText}));
    EXPECT_EQ(desktop.opened, std::vector<std::string>{"/t/"});

    job.afterRun = "Open";
    FinishBatch(job, {}, outputs, "/t/", services);
    EXPECT_EQ(opened, std::vector<std::string>{outputs[1].string()});

    // Burn to CD/DVD ignores the choice and hands the files to the disc step, which with no
    // disc-writing program on PATH opens the folder and says so.
    job.afterRun = "Folder";
    job.destination = kDestinationDisc;
    waits.clear();
    const std::string savedPath = std::getenv("PATH");
    ::setenv("PATH", root_.c_str(), 1);
    FinishBatch(job, {}, outputs, "/t/", services);
    ::setenv("PATH", savedPath.c_str(), 1);
    EXPECT_EQ(desktop.opened, (std::vector<std::string>{"/t/", "/t/"}));
    EXPECT_EQ(waits.back(), kAllDoneText);
    EXPECT_EQ(messages.Texts().back(), kNoDiscWriter);
}

}  // namespace
}  // namespace quorbel
