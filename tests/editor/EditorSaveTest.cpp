#include <algorithm>
#include <filesystem>

#include "EditorFixture.h"
#include "ExifTestFiles.h"
#include "metadata/ExifFacts.h"
#include "output/JpegCodec.h"
#include "output/FileBytes.h"
#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"
#include "editor/SaveAsRules.h"

namespace quorbel::test {
namespace fs = std::filesystem;

using EditorSaveTest = EditorFixture;

namespace {

DecodedPicture Decode(const fs::path& path) {
    std::vector<uint8_t> bytes;
    DecodedPicture picture;
    EXPECT_FALSE(ReadWholeFile(path, bytes));
    EXPECT_TRUE(DecodePicture(bytes, picture));
    return picture;
}

constexpr const char* kSkew =
    "It appears you have manually sized this picture, did you know that you can remove any stretching or "
    "skewing in the picture by using the 'Fix Stretch and Skew' feature? Would you like to find out more "
    "about this feature before saving the picture? Click 'Yes' to find out more or 'No' to continue.";

}  // namespace

TEST(SaveAsRules, PatternsGiveTypesAndExtensions) {
    EXPECT_EQ(FileTypeForPattern("*.jpg"), "JPEG .jpg");
    EXPECT_EQ(FileTypeForPattern("*.bmp"), "Bitmap .bmp");
    EXPECT_EQ(FileTypeForPattern("*.ico"), "ICON .ico");
    EXPECT_EQ(FileTypeForPattern("*.jpeg"), "Unknown");
    EXPECT_EQ(WithPatternExtension("/p/holiday", "*.jpg"), "/p/holiday.jpg");
    EXPECT_EQ(WithPatternExtension("/p/holiday.JPG", "*.jpg"), "/p/holiday.JPG");
    EXPECT_EQ(WithPatternExtension("/p/holiday.jpg", "*.png"), "/p/holiday.jpg.png");
    EXPECT_EQ(WithPatternExtension("/p/x", "*.*"), "/p/x");
    EXPECT_TRUE(IsIconType("ICON (.ico)"));
    EXPECT_TRUE(IsIconType("Icon (.ico)"));
    EXPECT_FALSE(IsIconType("icon .ico"));
    EXPECT_EQ(SaveFilterIndexForType("Bitmap .bmp"), 1);
    EXPECT_EQ(SaveFilterIndexForType("TIFF .tif"), 5);
}

TEST_F(EditorSaveTest, SavesTheNewSizeAndAppendsTheChosenExtension) {
    OpenThroughDialog(SavePng("wide.png", MakePicture(200, 100)));
    model_->SelectPreset("Email Large");
    // 200 x 100 into 640 x 480 keeping its shape: 640 / 200 = 3.2 < 4.8, so 640 x 320.
    EXPECT_EQ(model_->NewWidth(), 640);
    EXPECT_EQ(model_->NewHeight(), 320);
    model_->Dispatch("mnuNegative");

    dialogs_.AnswerSave(SaveAnswer{(pictures_ / "out").string(), 3, "*.jpg"});
    model_->Dispatch("mnuSaveAs");
    ASSERT_EQ(dialogs_.saveRequests.size(), 1u);
    EXPECT_EQ(dialogs_.saveRequests[0].title, "Save as");
    EXPECT_EQ(dialogs_.saveRequests[0].filter,
              "Bitmap (*.bmp)|*.bmp|GIF (*.gif)|*.gif|JPEG (*.jpg)|*.jpg|PNG (*.png)|*.png|TIFF (*.tif)|*.tif");
    EXPECT_EQ(dialogs_.saveRequests[0].initialFilter, 3);
    EXPECT_TRUE(messages_.Texts().empty());
    const DecodedPicture saved = Decode(pictures_ / "out.jpg");
    EXPECT_EQ(saved.pixels.Width(), 640);
    EXPECT_EQ(saved.pixels.Height(), 320);
    EXPECT_FALSE(model_->Changed());
    EXPECT_EQ(model_->FileType(), "JPEG .jpg");
}

TEST_F(EditorSaveTest, EveryTypeIsWrittenByTheJpegSaver) {
    OpenThroughDialog(SavePng("a.png", MakePicture(20, 10)));
    dialogs_.AnswerSave(SaveAnswer{(pictures_ / "b").string(), 4, "*.png"});
    model_->Dispatch("mnuSaveAs");
    EXPECT_EQ(model_->FileType(), "PNG .png");
    // "b" + ".png" from the pattern, then the JPEG saver adds ".jpg" to a name not ending in it.
    std::vector<uint8_t> bytes;
    ASSERT_FALSE(ReadWholeFile(pictures_ / "b.png.jpg", bytes));
    EXPECT_EQ(bytes.at(0), 0xFF);
    EXPECT_EQ(bytes.at(1), 0xD8);

    // The next save offers the type just used.
    dialogs_.AnswerSave(SaveAnswer{(pictures_ / "c.jpg").string(), 1, "*.bmp"});
    model_->Dispatch("mnuSaveAs");
    EXPECT_EQ(dialogs_.saveRequests.at(1).initialFilter, 4);
    EXPECT_EQ(model_->FileType(), "Bitmap .bmp");
    EXPECT_TRUE(fs::exists(pictures_ / "c.jpg.bmp.jpg"));
}

TEST_F(EditorSaveTest, AFailedSaveIsReportedOnceAndKeepsTheChangedFlag) {
    OpenThroughDialog(SavePng("a.png", MakePicture(20, 10)));
    model_->Dispatch("mnuNegative");
    const std::string target = (root_ / "no such folder" / "x.jpg").string();
    dialogs_.AnswerSave(SaveAnswer{target, 3, "*.jpg"});
    model_->Dispatch("mnuSaveAs");
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"Failed to save the picture to the file: '" + target + "'"});
    EXPECT_TRUE(model_->Changed());
}

TEST_F(EditorSaveTest, AHandSizedPictureAsksAboutStretchAndSkewAndTheTickDoesNotStick) {
    OpenThroughDialog(SavePng("a.png", MakePicture(20, 10)));
    model_->TypeWidth("30");
    EXPECT_EQ(model_->Preset(), "Custom");
    EXPECT_EQ(model_->NewWidth(), 30);
    EXPECT_EQ(model_->NewHeight(), 10);

    messages_.Answer(MsgResult::Yes, /*tick=*/true);
    dialogs_.AnswerSave(SaveAnswer{(pictures_ / "s").string(), 3, "*.jpg"});
    model_->Dispatch("mnuSaveAs");
    ASSERT_EQ(messages_.Shown().size(), 1u);
    EXPECT_EQ(messages_.Shown()[0].text, kSkew);
    EXPECT_EQ(messages_.Shown()[0].buttons, MsgButtons::YesNo);
    EXPECT_TRUE(messages_.Shown()[0].noShowTick);
    EXPECT_NE(Calls().find("xdg-open file://" + help_.string() + "/Fix%20Stretch%20and%20Skew.htm"),
              std::string::npos);
    EXPECT_EQ(GetSetting(kAppName, "Settings", "Prompt Stretch Skew"), "0");
    EXPECT_EQ(Decode(pictures_ / "s.jpg").pixels.Width(), 30);

    // Written back to "0", so it asks again.
    messages_.Clear();
    dialogs_.AnswerSave(std::nullopt);
    model_->Dispatch("mnuSaveAs");
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{kSkew});

    // Either setting at "1" keeps it quiet.
    SaveSetting(kAppName, "Prompt Stretch Skew", "Prompt Stretch Skew", "1");
    messages_.Clear();
    model_->Dispatch("mnuSaveAs");
    EXPECT_TRUE(messages_.Texts().empty());
    SaveSetting(kAppName, "Prompt Stretch Skew", "Prompt Stretch Skew", "0");
    SaveSetting(kAppName, "Settings", "Prompt Stretch Skew", "1");
    model_->Dispatch("mnuSaveAs");
    EXPECT_TRUE(messages_.Texts().empty());

    // A preset is not sizing by hand.
    SaveSetting(kAppName, "Settings", "Prompt Stretch Skew", "0");
    model_->SelectPreset("Banner 88x31");
    model_->Dispatch("mnuSaveAs");
    EXPECT_TRUE(messages_.Texts().empty());
}

TEST_F(EditorSaveTest, UnitsConvertAndChangingTheUnitMeansCustom) {
    OpenThroughDialog(SavePng("a.png", MakePicture(96, 48)));
    model_->SelectPreset("Photo 4x6 inches");
    EXPECT_EQ(model_->Unit(), "Inches");
    // A 4 x 6 inch box at 96 pixels an inch, turned to the picture's way: 576 x 384; 96 x 48
    // fits as 576 x 288.
    EXPECT_EQ(model_->NewWidth(), 576);
    EXPECT_EQ(model_->NewHeight(), 288);
    model_->ChooseUnit("Inches");
    EXPECT_EQ(model_->Preset(), "Photo 4x6 inches");  // no change, no switch
    model_->ChooseUnit("Pixels");
    EXPECT_EQ(model_->Preset(), "Custom");
    EXPECT_EQ(model_->WidthText(), "576");
    model_->ChooseUnit("Inches");
    EXPECT_EQ(model_->WidthText(), "6.");
    EXPECT_EQ(model_->HeightText(), "3.");
    model_->TypeHeight("abc");  // half-typed: the size stays
    EXPECT_EQ(model_->NewHeight(), 288);
}

}  // namespace quorbel::test

namespace quorbel::test {

// A camera photo stored on its side opens upright, and Save as keeps its camera data with
// the orientation put back to 1.
TEST_F(EditorSaveTest, SaveAsKeepsCameraDataOfAPhotoOpenedUpright) {
    std::vector<uint8_t> jpeg;
    ASSERT_EQ(EncodeJpeg(MakePicture(60, 40).View(), 90, jpeg), kJpegOk);
    auto block = ExifBlock({{0x010F, 2, 8, 38}, {0x0112, 3, 1, 6}});  // the make stored at 38
    block.insert(block.end(), {'Q', 'u', 'o', 'r', 'c', 'a', 'm', 0});
    const fs::path source = pictures_ / "camera.jpg";
    const auto withExif = WithJpegExif(jpeg, block);
    WriteFile(source, std::string(withExif.begin(), withExif.end()));
    OpenThroughDialog(source.string());
    EXPECT_EQ(model_->Picture().Width(), 40);
    dialogs_.AnswerSave(SaveAnswer{(pictures_ / "copy").string(), 3, "*.jpg"});
    model_->Dispatch("mnuSaveAs");
    std::vector<uint8_t> saved;
    ASSERT_FALSE(ReadWholeFile(pictures_ / "copy.jpg", saved));
    EXPECT_NE(std::search(saved.begin(), saved.end(), block.end() - 8, block.end()), saved.end());
    const ExifFacts facts = ReadExifFacts(saved);
    EXPECT_TRUE(facts.present);
    EXPECT_EQ(facts.orientation, 1);
    EXPECT_EQ(Decode(pictures_ / "copy.jpg").pixels.Width(), 40);
}

}  // namespace quorbel::test
