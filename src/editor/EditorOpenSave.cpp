// Opening a picture and saving it under a new name.
#include <sys/stat.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

#include "imaging/ResizeDib.h"
#include "output/CodecRegistry.h"
#include "output/Codecs.h"
#include "output/FileBytes.h"
#include "output/JpegCodec.h"
#include "output/PictureFormat.h"
#include "output/Savers.h"
#include "output/Upright.h"
#include "metadata/PictureMetadata.h"
#include "core/SafeFile.h"
#include "settings/AppFolders.h"
#include "settings/AppIni.h"
#include "settings/DataFolder.h"
#include "sizes/JpegQuality.h"
#include "settings/MessageOnce.h"
#include "editor/Prompts.h"
#include "settings/SettingsStore.h"
#include "core/text/TextCase.h"
#include "editor/EditorModel.h"
#include "editor/EditorTexts.h"
#include "editor/RawPicture.h"
#include "editor/SaveAsRules.h"

namespace quorbel {
namespace fs = std::filesystem;
namespace {

// Below this a preview is not worth a second decode.
constexpr int64_t kPreviewMinPixels = 4'000'000;

std::string HomeFolder() {
    const char* home = std::getenv("HOME");
    return home && *home ? home : "/";
}

// Keeps the savers' messages until the save is back on the window's thread, where they are
// shown in the order the savers gave them.
class DeferredMessages final : public MessageBox {
public:
    MsgReply Ask(const MsgRequest& request) override {
        requests.push_back(request);
        return {MsgResult::OK, false};
    }
    std::vector<MsgRequest> requests;
};

struct OpenResult {
    cDib picture;
    bool ok = false;
};

struct SaveResult {
    std::string written;
    std::string failed;  // the path the savers claimed but did not write
    DeferredMessages messages;
};

// A file's place on disk: a replaced file gets a new one.
struct FileIdentity {
    bool exists = false;
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const FileIdentity&) const = default;
};

FileIdentity Identify(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) return {};
    return {true, st.st_dev, st.st_ino};
}

// The source's camera data, dates and colour profile go into the saved file too.
void CarryMetadata(const std::string& written, const SourceMetadata& metadata, int width, int height) {
    if (!metadata.HasMetadata() && metadata.IccProfile().empty()) return;
    std::vector<uint8_t> bytes;
    if (ReadWholeFile(fs::path(written), bytes)) return;
    if (WriteMetadata(metadata, bytes, width, height, {})) ReplaceFileContents(written, bytes);
}

// The name the JPEG saver will write for path.
std::string TargetOf(const std::string& path) {
    return ToLowerAscii(fs::path(path).extension().string()) == ".jpg" ? path : path + ".jpg";
}

}  // namespace

void EditorModel::Open(const std::string& path) {
    if (busy_) return;
    if (PromptSaveIfChanged(changed_, services_.messages)) {
        SaveAs([this, path] { OpenChosen(path); });
        return;
    }
    OpenChosen(path);
}

void EditorModel::OpenChosen(const std::string& given) {
    std::string path = given;
    if (path.empty()) {
        std::string folder = GetSetting(kAppName, "Folder", "Path");
        std::error_code ec;
        if (folder.empty() || !fs::is_directory(folder, ec)) folder = HomeFolder();
        const auto answer = services_.dialogs.OpenFile(
            {std::string(kOpenTitle), std::string(kOpenFilter), folder});
        if (!answer || answer->empty()) return;
        path = *answer;
    }
    SetStatus(std::string(kStatusOpeningPrefix) + fs::path(path).filename().string());
    BeginWork(status_);
    InitialiseDataFolder();
    const std::string folder = DataFolder();
    auto result = std::make_shared<OpenResult>();
    services_.tasks.Run(
        [this, path, folder, result](const TaskRunner::Post& post) {
            std::vector<uint8_t> bytes;
            if (ReadWholeFile(fs::path(path), bytes) || !GdiplusRunning()) return;
            JpegInfo info;
            if (DetectPictureFormat(bytes) == PictureFormat::Jpeg && ReadJpegInfo(bytes, info) == kJpegOk &&
                int64_t(info.width) * info.height >= kPreviewMinPixels) {
                // An eighth-size decode costs a fraction of the full one: show it meanwhile.
                auto preview = std::make_shared<cDib>();
                if (DecodeJpeg(bytes, *preview, 8) == kJpegOk && TurnUpright(*preview, FileOrientation(bytes)))
                    post([this, preview] { view_->PreviewReady(*preview); });
            }
            DecodedPicture decoded;
            if (!DecodePicture(bytes, decoded) || decoded.type != PictureType::Bitmap || !decoded.pixels.hDIB())
                return;
            result->picture.Swap(decoded.pixels);
            // The old picture's history goes only now that the new one is in hand.
            UndoHistory::DeleteFiles(folder);
            WriteRawPicture(folder + std::string(kWorkingCopyName), result->picture);
            UndoHistory::WriteSnapshot(folder, 1, result->picture);
            result->ok = true;
        },
        [this, path, result] {
            EndWork();
            if (!result->ok) {
                services_.messages.Show(std::string(kErrorOpeningImage));
                SetStatus("");
                view_->PictureChanged();  // back from any preview to the picture there was
                return;
            }
            picture_.Swap(result->picture);
            path_ = path;
            originalWidth_ = picture_.Width();
            originalHeight_ = picture_.Height();
            ShowPictureSizeInPixels();
            services_.undo.ClearTable();
            const std::string folder = fs::path(path).parent_path().string();
            IniWrite("Main", "Last Path", folder);
            SaveSetting(kAppName, "Folder", "Path", folder);
            SaveSetting(kAppName, "Images", "Last Opened", path);
            AddRecentFile(path, recent_, kRecentFilesMax);
            preset_ = kPresetOriginalSize;
            changed_ = false;
            differsFromWorkingCopy_ = false;
            SetStatus(std::string(kStatusImageOpened));
            services_.undo.Commit(1, CurrentRow(cmd::Browse));
            view_->PictureChanged();
            view_->FieldsChanged();
            view_->RecentFilesChanged();
        });
}

void EditorModel::SaveAs(std::function<void()> after) {
    if (busy_) return;
    if (!HasPicture()) {
        if (after) after();
        return;
    }
    if (HandSized() && GetSetting(kAppName, kStretchSkewKey, kStretchSkewKey, "0") != "1") {
        const auto reply = ShowMessageOnce(kMessageOnceOk, kStretchSkewKey, kStretchSkewQuestion,
                                           MsgButtons::YesNo, MsgIcon::Question, "", services_.messages);
        if (reply && reply->result == MsgResult::Yes)
            services_.desktop.OpenHelp(services_.helpFolder, std::string(kHelpFixStretchSkew));
        // Written back to "0" after a tick, as the program always has: the tick does not stick.
        if (reply && reply->noShowTicked) SaveSetting(kAppName, "Settings", kStretchSkewKey, "0");
    }
    SaveChosen(std::move(after));
}

void EditorModel::SaveChosen(std::function<void()> after) {
    SaveRequest request;
    request.title = kSaveTitle;
    request.filter = kSaveFilter;
    request.initialFilter = SaveFilterIndexForType(fileType_);
    if (!path_.empty()) {
        request.initialFolder = fs::path(path_).parent_path().string();
        request.initialName = fs::path(path_).stem().string();
    }
    const auto answer = services_.dialogs.SaveFile(request);
    if (!answer || answer->path.empty()) {
        if (after) after();
        return;
    }
    fileType_ = FileTypeForPattern(answer->pattern);
    view_->FieldsChanged();
    const std::string path = WithPatternExtension(answer->path, answer->pattern);
    const std::string type = IsIconType(fileType_) ? "ICON .ico" : fileType_;
    const int quality = JpegQualityFromName(qualityName_);
    const int32_t width = newWidth_ > 0 ? newWidth_ : picture_.Width();
    const int32_t height = newHeight_ > 0 ? newHeight_ : picture_.Height();

    BeginWork(kWaitSaving);
    auto result = std::make_shared<SaveResult>();
    services_.tasks.Run(
        [this, path, type, quality, width, height, result, source = path_](const TaskRunner::Post&) {
            // Read first: the save may replace the source itself.
            SourceMetadata metadata;
            if (std::vector<uint8_t> sourceBytes; !source.empty() && !ReadWholeFile(fs::path(source), sourceBytes))
                metadata = ReadMetadata(sourceBytes);
            cDib sized;
            if (!sized.Create(picture_.Width(), picture_.Height())) return;
            std::memcpy(sized.lpBits(), picture_.lpBits(), static_cast<size_t>(picture_.Size()));
            if ((width != sized.Width() || height != sized.Height()) && !ResizeDib(sized, width, height, true))
                return;
            // The dialog has already asked about replacing a file: the saver may replace it.
            OverwriteState answered;
            answered.BatchActive = true;
            answered.YesToAll = true;
            SaveContext context;
            context.control = {&sized, sized.Width(), sized.Height(), false};
            context.quality = quality;
            context.state = &answered;
            context.messages = &result->messages;
            const fs::path p(path);
            clsSaveFactory factory(context, type);
            const FileIdentity before = Identify(TargetOf(path));
            result->written = factory.SaveFiletoSpecLoc(p.parent_path().string(), p.filename().string());
            // The registry reports success even when the encoder failed: a save is done only
            // when a new file stands at the target.
            if (!result->written.empty() && !(Identify(result->written).exists && Identify(result->written) != before))
                result->failed = result->written;
            if (!result->failed.empty()) result->written.clear();
            if (!result->written.empty()) CarryMetadata(result->written, metadata, sized.Width(), sized.Height());
        },
        [this, path, result, after] {
            EndWork();
            bool failureShown = false;
            for (const MsgRequest& request : result->messages.requests) {
                services_.messages.Ask(request);
                failureShown = failureShown || request.text.rfind("Failed to save", 0) == 0;
            }
            if (result->written.empty()) {
                if (!failureShown)
                    services_.messages.Show(FailedToSaveText(result->failed.empty() ? path : result->failed),
                                            MsgButtons::OK, MsgIcon::Exclamation);
            } else {
                changed_ = false;
            }
            if (after) after();
        });
}

}  // namespace quorbel
