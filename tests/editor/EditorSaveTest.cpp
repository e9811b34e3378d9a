#include <algorithm>
#include "EditorFixture.h"
#include "ExifTestFiles.h"
#include "metadata/ExifFacts.h"
#include "output/JpegCodec.h"
#include "output/FileBytes.h"
#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"
#include "editor/SaveAsRules.h"

namespace quorbel::test {

using EditorSaveTest = EditorFixture;

namespace {

// The size of the JPEG at path, which must be one whatever its name.
std::pair<int, int> SavedJpegSize(const fs::path& path) {
    std::vector<uint8_t> bytes;
    DecodedPicture picture;
    EXPECT_FALSE(ReadWholeFile(path, bytes)) << path;
    EXPECT_TRUE(bytes.size() > 2 && bytes[0] == 0xFF && bytes[1] == 0xD8) << path;
    EXPECT_TRUE(DecodePicture(bytes, picture)) << path;
    return SizeOf(picture.pixels);
}

constexpr const char* kSkew =
    "It appears you have manually sized this picture, did you know that you can remove any stretching or "
    "skewing in the picture by using the 'Fix Stretch and Skew' feature? Would you like to find out more "
    "about this feature before saving the picture? Click 'Yes' to find out more or 'No' to continue.";

}  // namespace

TEST(SaveAsRules, PatternsGiveTypesAndExtensions) {
    for (auto [pattern, type] : {std::pair{"*.jpg", "JPEG .jpg"}, {"*.bmp", "Bitmap .bmp"}, {"*.ico", "ICON .ico"},
                                 {"*.jpeg", "Unknown"}})
        EXPECT_EQ(FileTypeForPattern(pattern), type);
    for (auto [name, pattern, path] : {std::tuple{"/p/holiday", "*.jpg", "/p/holiday.jpg"},
                                       {"/p/holiday.JPG", "*.jpg", "/p/holiday.JPG"},
                                       {"/p/holiday.jpg", "*.png", "/p/holiday.jpg.png"}, {"/p/x", "*.*", "/p/x"}})
        EXPECT_EQ(WithPatternExtension(name, pattern), path);
    for (auto [type, icon] : {std::pair{"ICON (.ico)", true}, {"Icon (.ico)", true}, {"icon .ico", false}})
        EXPECT_EQ(IsIconType(type), icon) << type;
    EXPECT_EQ(SaveFilterIndexForType("Bitmap .bmp"), 1);
    EXPECT_EQ(SaveFilterIndexForType("TIFF .tif"), 5);
}

TEST_F(EditorSaveTest, SaveAsWritesAJpegOfTheNewSizeUnderTheChosenTypesName) {
    OpenThroughDialog(SavePng("wide.png", Numbered(200, 100)));
    model_->SelectPreset("Email Large");
    // 200 x 100 into 640 x 480 keeping its shape: 640 / 200 = 3.2 < 4.8, so 640 x 320.
    EXPECT_EQ(std::pair(model_->NewWidth(), model_->NewHeight()), std::pair(640, 320));
    const std::string failed = (root_ / "no such folder" / "x.jpg").string();
    // The name answered, the type chosen, the file written (the pattern's extension added when
    // missing, then ".jpg" by the JPEG saver, which writes every type), the type then shown.
    const std::tuple<std::string, int, const char*, const char*, const char*> answers[] = {
        {"out", 3, "*.jpg", "out.jpg", "JPEG .jpg"}, {"b", 4, "*.png", "b.png.jpg", "PNG .png"},
        {"c.jpg", 1, "*.bmp", "c.jpg.bmp.jpg", "Bitmap .bmp"}, {failed, 3, "*.jpg", "", ""}};
    int offered = 3;  // then the type used last
    for (const auto& [name, index, pattern, file, type] : answers) {
        model_->Dispatch("mnuNegative");
        messages_.Clear();
        dialogs_.AnswerSave(SaveAnswer{name[0] == '/' ? name : (pictures_ / name).string(), index, pattern});
        model_->Dispatch("mnuSaveAs");
        EXPECT_EQ(dialogs_.saveRequests.back().initialFilter, offered) << name;
        EXPECT_EQ(model_->Changed(), !*file) << name;
        if (!*file) {
            EXPECT_EQ(messages_.Texts(),
                      std::vector<std::string>{"Failed to save the picture to the file: '" + failed + "'"});
            break;
        }
        EXPECT_TRUE(messages_.Texts().empty()) << name;
        EXPECT_EQ(SavedJpegSize(pictures_ / file), std::pair(640, 320));
        EXPECT_EQ(model_->FileType(), type);
        offered = index;
    }
    EXPECT_EQ(dialogs_.saveRequests[0].title, "Save as");
    EXPECT_EQ(dialogs_.saveRequests[0].filter,
              "Bitmap (*.bmp)|*.bmp|GIF (*.gif)|*.gif|JPEG (*.jpg)|*.jpg|PNG (*.png)|*.png|TIFF (*.tif)|*.tif");
}

TEST_F(EditorSaveTest, AHandSizedPictureAsksAboutStretchAndSkewAndTheTickDoesNotStick) {
    OpenThroughDialog(SavePng("a.png", Numbered(20, 10)));
    model_->TypeWidth("30");
    EXPECT_EQ(std::tuple(model_->Preset(), model_->NewWidth(), model_->NewHeight()), std::tuple("Custom", 30, 10));

    messages_.Answer(MsgResult::Yes, /*tick=*/true);
    dialogs_.AnswerSave(SaveAnswer{(pictures_ / "s").string(), 3, "*.jpg"});
    model_->Dispatch("mnuSaveAs");
    ASSERT_EQ(messages_.Shown().size(), 1u);
    EXPECT_EQ(messages_.Shown()[0].text, kSkew);
    EXPECT_EQ(std::pair(messages_.Shown()[0].buttons, messages_.Shown()[0].noShowTick),
              std::pair(MsgButtons::YesNo, true));
    EXPECT_NE(Calls().find("xdg-open file://" + help_.string() + "/Fix%20Stretch%20and%20Skew.htm"),
              std::string::npos);
    EXPECT_EQ(GetSetting(kAppName, "Settings", "Prompt Stretch Skew"), "0");
    EXPECT_EQ(SavedJpegSize(pictures_ / "s.jpg"), std::pair(30, 10));

    // Written back to "0", so it asks again.
    messages_.Clear();
    dialogs_.AnswerSave(std::nullopt);
    model_->Dispatch("mnuSaveAs");
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{kSkew});

    // Either setting at "1" keeps it quiet, and a preset is not sizing by hand.
    messages_.Clear();
    for (auto [section, other, preset] : {std::tuple{"Prompt Stretch Skew", "Settings", ""},
                                          {"Settings", "Prompt Stretch Skew", ""}, {"", "Settings", "Banner 88x31"}}) {
        SaveSetting(kAppName, other, "Prompt Stretch Skew", "0");
        if (*section) SaveSetting(kAppName, section, "Prompt Stretch Skew", "1");
        if (*preset) model_->SelectPreset(preset);
        model_->Dispatch("mnuSaveAs");
        EXPECT_TRUE(messages_.Texts().empty()) << section << preset;
    }
}

TEST_F(EditorSaveTest, UnitsConvertAndChangingTheUnitMeansCustom) {
    OpenThroughDialog(SavePng("a.png", Numbered(96, 48)));
    model_->SelectPreset("Photo 4x6 inches");
    // A 4 x 6 inch box at 96 pixels an inch, turned to the picture's way: 576 x 384; 96 x 48
    // fits as 576 x 288.
    EXPECT_EQ(std::tuple(model_->Unit(), model_->NewWidth(), model_->NewHeight()), std::tuple("Inches", 576, 288));
    // The unit chosen (the same one first: no change, no switch, and the preset's own numbers
    // stay), then the preset and the new size shown.
    for (auto [unit, preset, fields] : {std::tuple{"Inches", "Photo 4x6 inches", "4x6"},
                                        {"Pixels", "Custom", "576x288"},
                                        {"Inches", "Custom", "6.x3."}}) {
        model_->ChooseUnit(unit);
        EXPECT_EQ(model_->Preset() + " " + model_->WidthText() + "x" + model_->HeightText(),
                  std::string(preset) + " " + fields);
    }
    model_->TypeHeight("abc");  // half-typed: the size stays
    EXPECT_EQ(model_->NewHeight(), 288);
}

// A camera photo stored on its side opens upright, and Save as keeps its camera data with
// the orientation put back to 1.
TEST_F(EditorSaveTest, SaveAsKeepsCameraDataOfAPhotoOpenedUpright) {
    std::vector<uint8_t> jpeg;
    ASSERT_EQ(EncodeJpeg(Numbered(60, 40).View(), 90, jpeg), kJpegOk);
    auto block = ExifBlock({{0x010F, 2, 8, 38}, {0x0112, 3, 1, 6}});  // the make stored at 38
    block.insert(block.end(), {'Q', 'u', 'o', 'r', 'c', 'a', 'm', 0});
    WriteBytes(pictures_ / "camera.jpg", WithJpegExif(jpeg, block));
    OpenThroughDialog((pictures_ / "camera.jpg").string());
    EXPECT_EQ(model_->Picture().Width(), 40);
    dialogs_.AnswerSave(SaveAnswer{(pictures_ / "copy").string(), 3, "*.jpg"});
    model_->Dispatch("mnuSaveAs");
    std::vector<uint8_t> saved;
    ASSERT_FALSE(ReadWholeFile(pictures_ / "copy.jpg", saved));
    EXPECT_NE(std::search(saved.begin(), saved.end(), block.end() - 8, block.end()), saved.end());
    const ExifFacts facts = ReadExifFacts(saved);
    EXPECT_EQ(std::pair(facts.present, facts.orientation), std::pair(true, 1));
    EXPECT_EQ(SavedJpegSize(pictures_ / "copy.jpg"), std::pair(40, 60));
}

}  // namespace quorbel::test
