#include <gtest/gtest.h>

#include "FreshSettings.h"
#include "ScriptedDesktop.h"
#include "StandIns.h"
#include "batch/BatchFinish.h"
#include "batch/PictureList.h"
#include "batch/WizardSteps.h"
#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"
#include "share/Disc.h"

namespace quorbel {
namespace {

using namespace test;

class WizardLogicTest : public FreshSettings {
protected:
    void SetUp() override {
        FreshSettings::SetUp();
        fs::create_directories(root_ / "out");
        fs::create_directories(root_ / "Pics");
    }
    std::string Pics() const { return (root_ / "Pics").string(); }
    ScriptedMessageBox messages;
};

TEST_F(WizardLogicTest, FolderStepChecksInOrderAndKeepsTheUserOnTheStep) {
    const std::string out = (root_ / "out").string(), badName =
        "The New Name contains characters that cannot be used to create files or folders.";
    const std::tuple<std::string, std::string, bool, std::string> cases[] = {
        {"/no/such/folder", "", true, "The folder you have chosen to resize pictures from does not appear to exist, "
                                      "please check to see that you have entered the correct path to the folder."},
        {Pics(), "", true, "Please add a name in the New Name text box or uncheck Rename checkbox."},
        {Pics(), "Holiday.2008", false, badName},
        {Pics(), "Ferien/1", true, badName},
        {Pics(), std::string(256, '.'), true, "Name too long, please shorten and try again."}};
    for (const auto& [source, newName, rename, text] : cases) {
        messages.Clear();
        FolderStepValues v{source, out, rename, newName};
        EXPECT_FALSE(CheckFolderStep(v, messages)) << newName;
        EXPECT_EQ(messages.Texts(), std::vector{text}) << newName;
    }
    messages.Clear();
    FolderStepValues good{Pics(), out, true, "Holiday 2008"};
    ASSERT_TRUE(CheckFolderStep(good, messages));
    EXPECT_TRUE(messages.Texts().empty());
    EXPECT_EQ(good.source, Pics() + "/");
    EXPECT_EQ(GetSetting(kAppName, "MultiEdit", "Source"), Pics() + "/");
    EXPECT_EQ(GetSetting(kAppName, "Settings", "Rename Name"), "Holiday 2008");
    // The same folder as source and target (once the "/" is added): asked, and No stays.
    FolderStepValues same{Pics(), Pics() + "/", false, ""};
    messages.Answer(MsgResult::No);
    EXPECT_FALSE(CheckFolderStep(same, messages));
    EXPECT_EQ(messages.Shown().back().buttons, MsgButtons::YesNo);
    EXPECT_TRUE(messages.Shown().back().text.starts_with("Warning! The Source folder is the same as the Target folder!"));
    messages.Answer(MsgResult::Yes);
    EXPECT_TRUE(CheckFolderStep(same, messages));
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
    EXPECT_FALSE(list.RemoveSelected(messages) || list.RemoveAll(messages));
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

TEST_F(WizardLogicTest, FinishingWalksTheOutputsAndActsOnTheAfterRunChoice) {
    WriteText(root_ / "out/1.jpg", "x");
    WriteText(root_ / "out/2.jpg", "x");
    const std::vector<fs::path> outputs{root_ / "out/gone.jpg", root_ / "out/1.jpg", root_ / "out/2.jpg"};
    ScriptedDesktop desktop(messages);
    JobCompletionServices completion{messages, desktop, root_};
    std::vector<std::string> waits, opened;
    FinishServices services{completion, [&](const std::string& t) { waits.push_back(t); },
                            [&](const std::string&, const std::string& p) { opened.push_back(p); }};
    BatchJob job;
    job.afterRun = kAfterRunTexts[0];
    EXPECT_EQ(FinishBatch(job, {}, outputs, "/t/", services), (std::vector{outputs[1], outputs[2]}));
    EXPECT_EQ(waits, (std::vector<std::string>{kFinishingText, kAllDoneText, kOpeningFolderText}));
    EXPECT_EQ(desktop.opened, std::vector<std::string>{"/t/"});
    job.afterRun = "Open";
    FinishBatch(job, {}, outputs, "/t/", services);
    EXPECT_EQ(opened, std::vector<std::string>{outputs[1].string()});

    // Burn to CD/DVD ignores the choice and hands the files to the disc step, which with no
    // disc-writing program on PATH opens the folder and says so.
    job.afterRun = "Folder";
    job.destination = kDestinationDisc;
    const StandIns nothing(root_ / "bin", true);
    FinishBatch(job, {}, outputs, "/t/", services);
    EXPECT_EQ(desktop.opened, (std::vector<std::string>{"/t/", "/t/"}));
    EXPECT_EQ(waits.back(), kAllDoneText);
    EXPECT_EQ(messages.Texts().back(), kNoDiscWriter);
}

}  // namespace
}  // namespace quorbel
