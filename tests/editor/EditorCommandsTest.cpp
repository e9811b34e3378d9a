#include <filesystem>

#include "EditorFixture.h"
#include "effects/FilterList.h"
#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"
#include "editor/FolderPictures.h"
#include "editor/Prompts.h"

namespace quorbel::test {
namespace fs = std::filesystem;

using EditorCommandsTest = EditorFixture;

TEST_F(EditorCommandsTest, AnUnknownKeyDoesNothing) {
    OpenThroughDialog(SavePng("a.png", MakePicture(8, 8)));
    const std::string settings = ReadFile(SettingsFile());
    const size_t statuses = view_.statuses.size();
    for (const char* key : {"", "browse", "EXIT", "btnCreate ", "Save", "mnuNothing"})
        EXPECT_FALSE(model_->Dispatch(key)) << key;
    EXPECT_TRUE(messages_.Texts().empty());
    EXPECT_TRUE(windows_.batches.empty());
    EXPECT_TRUE(windows_.calls.empty());
    EXPECT_EQ(dialogs_.openRequests.size(), 1u);
    EXPECT_EQ(view_.statuses.size(), statuses);
    EXPECT_EQ(ReadFile(SettingsFile()), settings);
    EXPECT_FALSE(model_->ExitRequested());
}

TEST_F(EditorCommandsTest, ExitEndsAtOnceEvenWithUnsavedChanges) {
    OpenThroughDialog(SavePng("a.png", MakePicture(8, 8)));
    model_->Dispatch("mnuBlur");
    ASSERT_TRUE(model_->Changed());
    EXPECT_TRUE(model_->Dispatch("Exit"));
    EXPECT_TRUE(view_.exited);
    EXPECT_TRUE(messages_.Texts().empty());
    EXPECT_TRUE(dialogs_.saveRequests.empty());
}

TEST_F(EditorCommandsTest, BatchCommandsWriteTheJobWordAndOpenTheWizard) {
    const std::pair<const char*, const char*> cases[] = {
        {"btnCreate", "Resize"},          {"mnuquickopt", "Resize"},   {"btnSlideShow", "Web"},
        {"btnCDSlideShow", "CD"},         {"mnuDiscslideshow", "CD"},  {"btnMultiEmail", "Email"},
        {"mnuMultiplePictures", "Email"},
    };
    for (const auto& [key, word] : cases) {
        EXPECT_TRUE(model_->Dispatch(key));
        EXPECT_EQ(GetSetting(kAppName, "MultiEdit", "Type"), word) << key;
    }
    EXPECT_EQ(windows_.batches, (std::vector<WizardJob>{WizardJob::Resize, WizardJob::Resize, WizardJob::Web, WizardJob::CD,
                                                       WizardJob::CD, WizardJob::Email, WizardJob::Email}));
    for (const char* key : {"makeitfit", "Community", "Edit"}) EXPECT_TRUE(model_->Dispatch(key));
    // Fit to file size needs a picture; without one it opens nothing.
    EXPECT_EQ(windows_.calls, (std::vector<std::string>{"forums", "paint"}));
}

TEST_F(EditorCommandsTest, AFittedPictureIsAnUndoStepAndChangedPresetsRefillTheList) {
    OpenThroughDialog(SavePng("f.png", MakePicture(8, 6)));
    model_->Dispatch("makeitfit");  // cancelled: nothing changes
    EXPECT_FALSE(model_->Changed());
    EXPECT_EQ(model_->History().Current(), 1);

    windows_.fitted = MakePicture(4, 3);
    model_->Dispatch("makeitfit");
    EXPECT_EQ(model_->Picture().Width(), 4);
    EXPECT_TRUE(model_->Changed());
    EXPECT_EQ(model_->History().Current(), 2);
    model_->Dispatch("mnuUndo");
    EXPECT_EQ(model_->Picture().Width(), 8);

    model_->Dispatch("mnuCustomSizes");
    EXPECT_EQ(view_.presetRefills, 0);
    windows_.presetsChange = true;
    model_->Dispatch("mnuCustomSizes");
    EXPECT_EQ(view_.presetRefills, 1);
}

TEST_F(EditorCommandsTest, TiffPicturesRefuseTheEffectWindowsEveryTime) {
    std::vector<uint8_t> tiff;
    ASSERT_TRUE(EncodeTiff(MakePicture(10, 10), 2, 24, tiff));
    WriteFile(pictures_ / "scan.tif", std::string(tiff.begin(), tiff.end()));
    OpenThroughDialog((pictures_ / "scan.tif").string());
    ASSERT_TRUE(model_->HasPicture());

    messages_.Answer(MsgResult::OK, /*tick=*/true);
    for (const char* key : {"btnBrighten2", "btnContrast", "btnContras2", "btnSharpen", "btnSoften", "btnImageEditor"})
        model_->Dispatch(key);
    ASSERT_EQ(messages_.Shown().size(), 6u);
    for (const MsgRequest& shown : messages_.Shown()) {
        EXPECT_EQ(shown.text,
                  "Filters and effects cannot be applied to TIFF images, please save as another format to apply filter "
                  "and effects and then save back again as TIFF it needed.");
        EXPECT_TRUE(shown.noShowTick);
    }
    // The tick was stored, and still does not silence it.
    EXPECT_EQ(GetSetting(kAppName, "Settings", "Tif Filter No"), "1");
    EXPECT_TRUE(windows_.calls.empty());

    // Other pictures reach the window.
    OpenThroughDialog(SavePng("a.png", MakePicture(8, 8)));
    model_->Dispatch("btnBrighten2");
    EXPECT_EQ(windows_.calls, std::vector<std::string>{"effect"});
}

TEST_F(EditorCommandsTest, RotatingTurnsThePictureAndMakesItTheWorkingCopy) {
    const cDib source = MakePicture(3, 2);
    OpenThroughDialog(SavePng("r.png", source));
    model_->SelectPreset("Email Small");

    model_->Dispatch("RotateRight");
    const cDib& right = model_->Picture();
    ASSERT_EQ(right.Width(), 2);
    ASSERT_EQ(right.Height(), 3);
    // Clockwise: new (x, y) comes from (y, h - 1 - x).
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 2; ++x) EXPECT_EQ(PixelAt(right, x, y), PixelAt(source, y, 1 - x)) << x << "," << y;
    EXPECT_EQ(view_.waits.back(), "Rotating image Right...");
    EXPECT_EQ(view_.statuses.back(), "Image rotated.");
    EXPECT_EQ(model_->Preset(), "Original Size");
    EXPECT_EQ(model_->OriginalWidth(), 2);
    EXPECT_EQ(model_->WidthText(), "2");
    EXPECT_EQ(model_->HeightText(), "3");
    EXPECT_TRUE(model_->Changed());
    cDib working;
    ASSERT_TRUE(ReadRawPicture(DataFile("qorbixoriginal.tmp"), working));
    EXPECT_EQ(working.Width(), 2);
    EXPECT_EQ(PixelAt(working, 1, 2), PixelAt(right, 1, 2));
    EXPECT_FALSE(fs::exists(DataFile("rotate.bmp")));

    // Back the other way: the original again, through "rotate.bmp".
    model_->Dispatch("RotateLeft");
    EXPECT_EQ(view_.waits.back(), "Rotating image left...");
    EXPECT_TRUE(fs::exists(DataFile("rotate.bmp")));
    ASSERT_EQ(model_->Picture().Width(), 3);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) EXPECT_EQ(PixelAt(model_->Picture(), x, y), PixelAt(source, x, y));
    EXPECT_EQ(model_->History().Current(), 3);
}

TEST_F(EditorCommandsTest, EffectsAreStepsOfTheUndoHistory) {
    const cDib source = MakePicture(6, 5);
    OpenThroughDialog(SavePng("e.png", source));
    model_->SelectPreset("Banner 88x31");
    model_->Dispatch("mnuNegative");
    EXPECT_EQ(PixelAt(model_->Picture(), 2, 3), 0xFFFFFF - PixelAt(source, 2, 3));
    EXPECT_TRUE(model_->Changed());
    EXPECT_EQ(model_->History().Current(), 2);
    EXPECT_EQ(model_->History().Row(2)[kUndoPreset], "Banner 88x31");
    EXPECT_EQ(model_->History().Row(2)[kUndoCommand], "mnuNegative");

    model_->SelectPreset("Email Large");
    model_->Dispatch("mnuUndo");
    EXPECT_EQ(PixelAt(model_->Picture(), 2, 3), PixelAt(source, 2, 3));
    EXPECT_EQ(model_->Preset(), "Original Size");  // the size choice of step 1 comes back too
    model_->Dispatch("mnuUndo");  // nothing before step 1
    EXPECT_EQ(model_->History().Current(), 1);
    model_->Dispatch("mnuRedo");
    EXPECT_EQ(PixelAt(model_->Picture(), 2, 3), 0xFFFFFF - PixelAt(source, 2, 3));
    EXPECT_EQ(model_->Preset(), "Banner 88x31");

    // "Original Size" restores the picture as it was opened.
    model_->SelectPreset("Original Size");
    EXPECT_EQ(PixelAt(model_->Picture(), 2, 3), PixelAt(source, 2, 3));
}

TEST_F(EditorCommandsTest, TheHistoryKeepsTheLast25Steps) {
    OpenThroughDialog(SavePng("h.png", MakePicture(4, 4)));
    for (int i = 0; i < 30; ++i) model_->Dispatch("mnuNegative");  // odd steps negative
    EXPECT_EQ(model_->History().Last(), 25);
    EXPECT_TRUE(fs::exists(DataFile("b025.dat")));
    EXPECT_FALSE(fs::exists(DataFile("b026.dat")));
    int undone = 0;
    while (model_->History().CanUndo()) {
        model_->Dispatch("mnuUndo");
        ++undone;
    }
    EXPECT_EQ(undone, 24);
    // Step 1 is now the picture after the 6th negative: the original again.
    EXPECT_EQ(PixelAt(model_->Picture(), 1, 1), PixelAt(MakePicture(4, 4), 1, 1));

    // A new step after undoing drops the steps ahead.
    model_->Dispatch("mnuGreys");
    EXPECT_EQ(model_->History().Last(), 2);
    EXPECT_FALSE(fs::exists(DataFile("b003.dat")));
}

TEST_F(EditorCommandsTest, WallpaperMessages) {
    model_->Dispatch("mnuWallpaper");
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"Please open and image and try again."});

    OpenThroughDialog(SavePng("w.png", MakePicture(8, 8)));
    StandIn("gsettings", 0);
    messages_.Clear();
    model_->Dispatch("mnuWallpaper");
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"Picture set as wall paper!"});
    EXPECT_NE(Calls().find("gsettings set org.gnome.desktop.background picture-uri file://"), std::string::npos);
    EXPECT_NE(Calls().find("wallpaper.bmp"), std::string::npos);
    EXPECT_TRUE(fs::exists(DataFile("wallpaper.bmp")));

    StandIn("gsettings", 1);
    messages_.Clear();
    model_->Dispatch("mnuWallpaper");
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"Picture could not be set as wall paper."});
}

TEST_F(EditorCommandsTest, AutoAnalyzerWarnsWhenTurnedOn) {
    model_->Dispatch("imgAutoAnalyzer");
    EXPECT_EQ(messages_.Texts(),
              std::vector<std::string>{"Warning! Auto Analyzer may slow down the speed of Quorbel, as it will analyze "
                                       "the image each time it is resized. Turn off to gain back speed."});
    EXPECT_EQ(GetSetting(kAppName, "Options", "AutoAnalyzer"), "True");
    model_->Dispatch("imgAutoAnalyzer");
    EXPECT_EQ(messages_.Texts().size(), 1u);
    EXPECT_EQ(GetSetting(kAppName, "Options", "AutoAnalyzer"), "False");
}

TEST_F(EditorCommandsTest, HelpPasteAndZoom) {
    model_->Dispatch("btnHelp");
    model_->Dispatch("mnuGettingStarted");
    model_->Dispatch("mnuTutorial");
    const std::string base = "xdg-open file://" + help_.string() + "/";
    EXPECT_EQ(Calls(), base + "welcome.htm\n" + base + "Getting%20Started.html\n" + base +
                           "Tutorial%20Resizing%20Pictures.htm\n");

    windows_.clipboard = MakePicture(7, 3);
    model_->Dispatch("mnuPaste");
    EXPECT_EQ(model_->Picture().Width(), 7);
    EXPECT_EQ(model_->Preset(), "Custom");
    EXPECT_TRUE(model_->Changed());

    model_->Dispatch("btnFit");
    EXPECT_EQ(model_->ZoomText(), "0%");
}

TEST_F(EditorCommandsTest, PreviousAndNextStepThroughTheFolder) {
    model_->Dispatch("btnNext");
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"No pictures found please open a folder with pictures in it."});

    const std::string a = SavePng("a.png", MakePicture(2, 2));
    const std::string b = SavePng("b.PNG", MakePicture(3, 3));
    const std::string odd = SavePng("c\xff.png", MakePicture(4, 4));  // not UTF-8
    WriteFile(pictures_ / "notes.txt", "x");
    fs::create_directory(pictures_ / "folder.png");
    EXPECT_EQ(ListFolderPictures(pictures_), (std::vector<fs::path>{a, b, odd}));

    OpenThroughDialog(b);
    model_->Dispatch("btnNext");
    EXPECT_EQ(model_->Path(), odd);
    EXPECT_EQ(model_->Picture().Width(), 4);
    model_->Dispatch("btnNext");
    EXPECT_EQ(model_->Path(), a);  // round again
    model_->Dispatch("btnPrevious");
    EXPECT_EQ(model_->Path(), odd);
}

TEST(PromptSaveIfChanged, AsksOnlyAboutAChangedPicture) {
    ScriptedMessageBox box;
    EXPECT_FALSE(PromptSaveIfChanged(false, box));
    EXPECT_TRUE(box.Shown().empty());

    box.Answer(MsgResult::No);
    EXPECT_FALSE(PromptSaveIfChanged(true, box));
    box.Answer(MsgResult::Yes);
    EXPECT_TRUE(PromptSaveIfChanged(true, box));
    ASSERT_EQ(box.Shown().size(), 2u);
    EXPECT_EQ(box.Shown()[0].buttons, MsgButtons::YesNo);
    EXPECT_EQ(box.Shown()[0].text,
              "The picture appears to have changed.\r\nWould you like to save it first? Select "
              "'Yes' to save changes,\r\nor'No' to continue without saving changes.");
}

}  // namespace quorbel::test
