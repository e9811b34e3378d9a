#include "EditorFixture.h"
#include "effects/FilterList.h"
#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"
#include "editor/FolderPictures.h"

namespace quorbel::test {

using EditorCommandsTest = EditorFixture;
using Texts = std::vector<std::string>;

TEST_F(EditorCommandsTest, AnUnknownKeyDoesNothingAndExitEndsAtOnceEvenWithUnsavedChanges) {
    OpenThroughDialog(SavePng("a.png", Numbered(8, 8)));
    const std::string settings = ReadText(SettingsFile());
    const size_t statuses = view_.statuses.size();
    for (const char* key : {"", "browse", "EXIT", "btnCreate ", "Save", "mnuNothing"})
        EXPECT_FALSE(model_->Dispatch(key)) << key;
    EXPECT_TRUE(windows_.batches.empty() && windows_.calls.empty());
    EXPECT_EQ(std::tuple(dialogs_.openRequests.size(), view_.statuses.size()), std::tuple(1u, statuses));
    EXPECT_EQ(ReadText(SettingsFile()), settings);
    EXPECT_FALSE(model_->ExitRequested());

    model_->Dispatch("mnuBlur");
    ASSERT_TRUE(model_->Changed());
    EXPECT_TRUE(model_->Dispatch("Exit"));
    EXPECT_TRUE(view_.exited);
    EXPECT_TRUE(messages_.Texts().empty() && dialogs_.saveRequests.empty());
}

TEST_F(EditorCommandsTest, BatchCommandsWriteTheJobWordAndOpenTheWizard) {
    const std::tuple<const char*, const char*, WizardJob> cases[] = {
        {"btnCreate", "Resize", WizardJob::Resize}, {"mnuquickopt", "Resize", WizardJob::Resize},
        {"btnSlideShow", "Web", WizardJob::Web},    {"btnCDSlideShow", "CD", WizardJob::CD},
        {"mnuDiscslideshow", "CD", WizardJob::CD},  {"btnMultiEmail", "Email", WizardJob::Email},
        {"mnuMultiplePictures", "Email", WizardJob::Email}};
    for (const auto& [key, word, job] : cases) {
        EXPECT_TRUE(model_->Dispatch(key));
        EXPECT_EQ(GetSetting(kAppName, "MultiEdit", "Type"), word) << key;
        EXPECT_EQ(windows_.batches.back(), job) << key;
    }
    for (const char* key : {"makeitfit", "Community", "Edit"}) EXPECT_TRUE(model_->Dispatch(key));
    // Fit to file size needs a picture; without one it opens nothing.
    EXPECT_EQ(windows_.calls, (Texts{"forums", "paint"}));
}

TEST_F(EditorCommandsTest, AFittedPictureIsAnUndoStepAndChangedPresetsRefillTheList) {
    OpenThroughDialog(SavePng("f.png", Numbered(8, 6)));
    model_->Dispatch("makeitfit");  // cancelled: nothing changes
    EXPECT_FALSE(model_->Changed());
    windows_.fitted = Numbered(4, 3);
    model_->Dispatch("makeitfit");
    EXPECT_EQ(std::tuple(model_->Picture().Width(), model_->Changed(), model_->History().Current()),
              std::tuple(4, true, 2));
    model_->Dispatch("mnuUndo");
    EXPECT_EQ(model_->Picture().Width(), 8);

    for (const bool changes : {false, true}) {
        windows_.presetsChange = changes;
        model_->Dispatch("mnuCustomSizes");
        EXPECT_EQ(view_.presetRefills, changes ? 1 : 0);
    }
}

TEST_F(EditorCommandsTest, TiffPicturesRefuseTheEffectWindowsEveryTime) {
    std::vector<uint8_t> tiff;
    ASSERT_TRUE(EncodeTiff(Numbered(10, 10), 2, 24, tiff));
    WriteBytes(pictures_ / "scan.tif", tiff);
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

    OpenThroughDialog(SavePng("a.png", Numbered(8, 8)));  // other pictures reach the window
    model_->Dispatch("btnBrighten2");
    EXPECT_EQ(windows_.calls, Texts{"effect"});
}

TEST_F(EditorCommandsTest, RotatingTurnsThePictureAndMakesItTheWorkingCopy) {
    const cDib source = Numbered(3, 2);
    OpenThroughDialog(SavePng("r.png", source));
    model_->SelectPreset("Email Small");

    model_->Dispatch("RotateRight");
    const cDib& right = model_->Picture();
    ASSERT_EQ(SizeOf(right), std::pair(2, 3));
    // Clockwise: new (x, y) comes from (y, h - 1 - x).
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 2; ++x) EXPECT_EQ(At(right, x, y), At(source, y, 1 - x)) << x << "," << y;
    EXPECT_EQ(view_.waits.back() + " " + view_.statuses.back(), "Rotating image Right... Image rotated.");
    EXPECT_EQ(model_->Preset() + " " + model_->WidthText() + "x" + model_->HeightText(), "Original Size 2x3");
    EXPECT_EQ(std::pair(model_->OriginalWidth(), model_->Changed()), std::pair(2, true));
    cDib working;
    ASSERT_TRUE(ReadRawPicture(DataFile("qorbixoriginal.tmp"), working));
    EXPECT_TRUE(Same(working, right));
    EXPECT_FALSE(fs::exists(DataFile("rotate.bmp")));

    // Back the other way: the original again, through "rotate.bmp".
    model_->Dispatch("RotateLeft");
    EXPECT_EQ(view_.waits.back(), "Rotating image left...");
    EXPECT_TRUE(fs::exists(DataFile("rotate.bmp")));
    EXPECT_EQ(MaxDiff(model_->Picture(), source), 0);
    EXPECT_EQ(model_->History().Current(), 3);
}

TEST_F(EditorCommandsTest, EffectsAreStepsOfTheUndoHistory) {
    const cDib source = Numbered(6, 5);
    OpenThroughDialog(SavePng("e.png", source));
    model_->SelectPreset("Banner 88x31");
    model_->Dispatch("mnuNegative");
    EXPECT_EQ(At(model_->Picture(), 2, 3), Negative(At(source, 2, 3)));
    EXPECT_EQ(std::pair(model_->Changed(), model_->History().Current()), std::pair(true, 2));
    EXPECT_EQ(model_->History().Row(2)[kUndoPreset] + " " + model_->History().Row(2)[kUndoCommand],
              "Banner 88x31 mnuNegative");

    model_->SelectPreset("Email Large");
    model_->Dispatch("mnuUndo");
    EXPECT_EQ(At(model_->Picture(), 2, 3), At(source, 2, 3));
    EXPECT_EQ(model_->Preset(), "Original Size");  // the size choice of step 1 comes back too
    model_->Dispatch("mnuUndo");  // nothing before step 1
    model_->Dispatch("mnuRedo");
    EXPECT_EQ(At(model_->Picture(), 2, 3), Negative(At(source, 2, 3)));
    EXPECT_EQ(model_->Preset(), "Banner 88x31");

    model_->SelectPreset("Original Size");  // the picture as it was opened
    EXPECT_EQ(At(model_->Picture(), 2, 3), At(source, 2, 3));
}

TEST_F(EditorCommandsTest, TheHistoryKeepsTheLast25Steps) {
    OpenThroughDialog(SavePng("h.png", Numbered(4, 4)));
    for (int i = 0; i < 30; ++i) model_->Dispatch("mnuNegative");  // odd steps negative
    EXPECT_EQ(model_->History().Last(), 25);
    EXPECT_TRUE(fs::exists(DataFile("b025.dat")) && !fs::exists(DataFile("b026.dat")));
    int undone = 0;
    for (; model_->History().CanUndo(); ++undone) model_->Dispatch("mnuUndo");
    EXPECT_EQ(undone, 24);
    // Step 1 is now the picture after the 6th negative: the original again.
    EXPECT_EQ(At(model_->Picture(), 1, 1), At(Numbered(4, 4), 1, 1));

    model_->Dispatch("mnuGreys");  // a new step after undoing drops the steps ahead
    EXPECT_EQ(model_->History().Last(), 2);
    EXPECT_FALSE(fs::exists(DataFile("b003.dat")));
}

TEST_F(EditorCommandsTest, SimpleCommandsAnswerWithTheirMessages) {
    constexpr const char* kSlow = "Warning! Auto Analyzer may slow down the speed of Quorbel, as it will analyze the "
                                  "image each time it is resized. Turn off to gain back speed.";
    // key, whether a picture is open, the desktop setter's exit code, message (or "" for none)
    const std::tuple<const char*, bool, int, const char*> cases[] = {
        {"mnuWallpaper", false, 0, "Please open and image and try again."},
        {"btnNext", false, 0, "No pictures found please open a folder with pictures in it."},
        {"imgAutoAnalyzer", false, 0, kSlow},  // on: warns
        {"imgAutoAnalyzer", false, 0, ""},     // off again: quiet
        {"mnuWallpaper", true, 0, "Picture set as wall paper!"},
        {"mnuWallpaper", true, 1, "Picture could not be set as wall paper."}};
    for (const auto& [key, picture, code, text] : cases) {
        if (picture && !model_->HasPicture()) OpenThroughDialog(SavePng("w.png", Numbered(8, 8)));
        standIns_->Add("gsettings", code);
        messages_.Clear();
        model_->Dispatch(key);
        EXPECT_EQ(messages_.Texts(), *text ? Texts{text} : Texts{}) << key << " " << code;
    }
    EXPECT_EQ(GetSetting(kAppName, "Options", "AutoAnalyzer"), "False");
    EXPECT_NE(Calls().find("gsettings set org.gnome.desktop.background picture-uri file://"), std::string::npos);
    EXPECT_NE(Calls().find("wallpaper.bmp"), std::string::npos);
    EXPECT_TRUE(fs::exists(DataFile("wallpaper.bmp")));
}

TEST_F(EditorCommandsTest, HelpPasteAndZoom) {
    for (const char* key : {"btnHelp", "mnuGettingStarted", "mnuTutorial"}) model_->Dispatch(key);
    const std::string base = "xdg-open file://" + help_.string() + "/";
    EXPECT_EQ(Calls(), base + "welcome.htm\n" + base + "Getting%20Started.html\n" + base +
                           "Tutorial%20Resizing%20Pictures.htm\n");

    windows_.clipboard = Numbered(7, 3);
    model_->Dispatch("mnuPaste");
    EXPECT_EQ(std::tuple(model_->Picture().Width(), model_->Preset(), model_->Changed()),
              std::tuple(7, "Custom", true));
    model_->Dispatch("btnFit");
    EXPECT_EQ(model_->ZoomText(), "0%");
}

TEST_F(EditorCommandsTest, PreviousAndNextStepThroughTheFolder) {
    const std::string a = SavePng("a.png", Numbered(2, 2));
    const std::string b = SavePng("b.PNG", Numbered(3, 3));
    const std::string odd = SavePng("c\xff.png", Numbered(4, 4));  // not UTF-8
    WriteText(pictures_ / "notes.txt", "x");
    fs::create_directory(pictures_ / "folder.png");
    EXPECT_EQ(ListFolderPictures(pictures_), (std::vector<fs::path>{a, b, odd}));

    OpenThroughDialog(b);
    for (auto [key, path] : {std::pair{"btnNext", odd}, {"btnNext", a} /* round again */, {"btnPrevious", odd}}) {
        model_->Dispatch(key);
        EXPECT_EQ(model_->Path(), path) << key;
    }
    EXPECT_EQ(model_->Picture().Width(), 4);
}

}  // namespace quorbel::test
