#pragma once
// The main window's fixed texts and command keys. Texts are the program's own and are kept
// exactly, misspellings included.
#include <array>
#include <string_view>

namespace quorbel {

// ---- messages ----
inline constexpr std::string_view kErrorOpeningImage = "Error opening image.";
inline constexpr std::string_view kWallpaperFailed = "Picture could not be set as wall paper.";
inline constexpr std::string_view kWallpaperSet = "Picture set as wall paper!";
inline constexpr std::string_view kOpenAnImageFirst = "Please open and image and try again.";
inline constexpr std::string_view kNoPicturesFound = "No pictures found please open a folder with pictures in it.";
inline constexpr std::string_view kAutoAnalyzerWarning =
    "Warning! Auto Analyzer may slow down the speed of Quorbel, as it will analyze the image each "
    "time it is resized. Turn off to gain back speed.";
inline constexpr std::string_view kStretchSkewKey = "Prompt Stretch Skew";
inline constexpr std::string_view kStretchSkewQuestion =
    "It appears you have manually sized this picture, did you know that you can remove any "
    "stretching or skewing in the picture by using the 'Fix Stretch and Skew' feature? Would you "
    "like to find out more about this feature before saving the picture? Click 'Yes' to find out "
    "more or 'No' to continue.";
// Spelt so on purpose: it does not match "MsgBoxOK", so the refusal is never silenced.
inline constexpr std::string_view kTifRefusalKind = "MsgboxOK";
inline constexpr std::string_view kUpdateQuestion = "Would you like to check for updates to the latest version?";
inline constexpr std::string_view kUpdateTitle = "Update?";

// ---- status and wait texts ----
inline constexpr std::string_view kStatusOpeningPrefix = "Opening  ";  // two blanks
inline constexpr std::string_view kStatusImageOpened = "Image Opened...";
inline constexpr std::string_view kWaitRotatingRight = "Rotating image Right...";
inline constexpr std::string_view kWaitRotatingLeft = "Rotating image left...";
inline constexpr std::string_view kStatusImageRotated = "Image rotated.";
inline constexpr std::string_view kWaitSaving = "Saving picture...";
inline constexpr std::string_view kWaitApplying = "Applying effect...";
inline constexpr std::string_view kZoomReset = "0%";

// ---- dialogs ----
inline constexpr std::string_view kOpenTitle = "Open";
inline constexpr std::string_view kOpenFilter =
    "Supported files|*.bmp;*.gif;*.jpg;*.jpeg;*.png;*.tif;*.webp;*.avif;*.heic;*.heif|Bitmap files (*.bmp)|*.bmp|GIF files "
    "(*.gif)|*.gif|JPEG files (*.jpg, *.jpeg)|*.jpg;*.jpeg|PNG files (*.png)|*.png|TIFF files (*.tif)|*.tif";
inline constexpr std::string_view kSaveTitle = "Save as";
inline constexpr std::string_view kSaveFilter =
    "Bitmap (*.bmp)|*.bmp|GIF (*.gif)|*.gif|JPEG (*.jpg)|*.jpg|PNG (*.png)|*.png|TIFF (*.tif)|*.tif";

// ---- working files in the data folder ----
inline constexpr std::string_view kWorkingCopyName = "qorbixoriginal.tmp";
inline constexpr std::string_view kRotateFileName = "rotate.bmp";
inline constexpr std::string_view kWallpaperFileName = "wallpaper.bmp";

// ---- lists ----
inline constexpr std::array<std::string_view, 6> kFileTypes{
    "JPEG .jpg", "GIF .gif", "PNG .png", "TIFF .tif", "Bitmap .bmp", "ICON .ico"};
inline constexpr std::string_view kUnknownFileType = "Unknown";
inline constexpr std::string_view kPresetOriginalSize = "Original Size";
inline constexpr std::string_view kPresetCustom = "Custom";
inline constexpr std::string_view kPresetFitScreen = "Fit Screen";
inline constexpr int kRecentFilesMax = 8;

// ---- help topics ----
inline constexpr std::string_view kHelpWelcome = "welcome.htm";
inline constexpr std::string_view kHelpGettingStartedMenu = "Getting Started.html";  // with a blank, as the menu has it
inline constexpr std::string_view kHelpFixStretchSkew = "Fix Stretch and Skew.htm";

// ---- command keys ----
namespace cmd {
// The dispatcher's own table.
inline constexpr std::string_view Browse = "Browse";
inline constexpr std::string_view Edit = "Edit";
inline constexpr std::string_view Refresh = "Refresh";
inline constexpr std::string_view BatchResize = "btnCreate";
inline constexpr std::string_view SlideShow = "btnSlideShow";
inline constexpr std::string_view MakeItFit = "makeitfit";
inline constexpr std::string_view Email = "Email";
inline constexpr std::string_view Community = "Community";
inline constexpr std::string_view RotateRight = "RotateRight";
inline constexpr std::string_view RotateLeft = "RotateLeft";
inline constexpr std::string_view Exit = "Exit";
// Menu entries and buttons that reach the dispatcher under their own names.
inline constexpr std::string_view QuickOpt = "mnuquickopt";
inline constexpr std::string_view CDSlideShow = "btnCDSlideShow";
inline constexpr std::string_view DiscSlideShow = "mnuDiscslideshow";
inline constexpr std::string_view MultiEmail = "btnMultiEmail";
inline constexpr std::string_view MultiplePictures = "mnuMultiplePictures";
inline constexpr std::string_view SaveAs = "mnuSaveAs";
inline constexpr std::string_view Undo = "mnuUndo";
inline constexpr std::string_view Redo = "mnuRedo";
inline constexpr std::string_view Wallpaper = "mnuWallpaper";
inline constexpr std::string_view AutoAnalyzer = "imgAutoAnalyzer";
inline constexpr std::string_view Help = "btnHelp";
inline constexpr std::string_view GettingStarted = "mnuGettingStarted";
inline constexpr std::string_view Tutorial = "mnuTutorial";
inline constexpr std::string_view HelpContents = "mnuhelpshow";
inline constexpr std::string_view Paste = "mnuPaste";
inline constexpr std::string_view Scan = "MnuScan";
inline constexpr std::string_view ZoomOut = "btnZoomOut";
inline constexpr std::string_view ZoomQuick = "btnZoomQuick";
inline constexpr std::string_view Fit = "btnFit";
inline constexpr std::string_view Previous = "btnPrevious";
inline constexpr std::string_view Next = "btnNext";
inline constexpr std::string_view CustomSizes = "mnuCustomSizes";
inline constexpr std::string_view Warp = "mnuWarp";
inline constexpr std::string_view Fisheye = "mnuFisheye";
// Dialog-based effects (refused for TIFF pictures).
inline constexpr std::string_view Brighten = "btnBrighten2";
inline constexpr std::string_view Contrast = "btnContrast";
inline constexpr std::string_view ColourBalance = "btnContras2";
inline constexpr std::string_view SharpenDialog = "btnSharpen";
inline constexpr std::string_view SoftenDialog = "btnSoften";
inline constexpr std::string_view ImageEditor = "btnImageEditor";
}  // namespace cmd

// Quick effects from the menu and the quick buttons.
inline constexpr std::array<std::string_view, 18> kQuickEffectKeys{
    "mnuBlur",    "mnuSharpen",  "mnuSoften",   "mnuDiffuse", "mnuDespeckle",    "mnuDespeckleMore",
    "mnuContour", "mnuDilate",   "mnuErode",    "mnuGreys",   "mnuNegative",     "mnuNoise",
    "mnuOutline", "mnuRelieve",  "mnuSepia",    "btnSharpenQuick", "btnSoftenQuick", "btnAutoCorrect"};

}  // namespace quorbel
