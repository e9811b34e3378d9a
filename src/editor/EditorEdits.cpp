// Changes to the picture: rotation, the quick effects, the effect windows, paste.
#include <filesystem>
#include <memory>
#include <optional>

#include "core/SafeFile.h"
#include "effects/FilterList.h"
#include "output/Codecs.h"
#include "settings/DataFolder.h"
#include "settings/MessageOnce.h"
#include "core/text/TextCase.h"
#include "editor/EditorModel.h"
#include "editor/EditorTexts.h"
#include "editor/RawPicture.h"

namespace quorbel {
namespace fs = std::filesystem;
namespace {

bool WriteBmpFile(const std::string& path, const cDib& picture) {
    std::vector<uint8_t> bytes;
    return EncodeBmp(picture, bytes) &&
           !ReplaceFileContents(fs::path(path), bytes, {.keepOldTimes = false, .durable = false});
}

// The quick effects: the filter of the filter list each one runs and its settings.
struct QuickEffect {
    std::string_view key;
    std::string_view filter;
    std::array<int, 3> params;
};

constexpr std::array<QuickEffect, 18> kQuickEffects{{
    {"mnuBlur", "Blur", {10, 0, 0}},
    {"mnuSharpen", "Sharpen", {10, 0, 0}},
    {"mnuSoften", "Soften", {10, 0, 0}},
    {"mnuDiffuse", "Diffuse", {5, 5, 1}},
    {"mnuDespeckle", "Despeckle", {}},
    {"mnuDespeckleMore", "Despeckle more", {}},
    {"mnuContour", "Contour", {}},
    {"mnuDilate", "Dilate", {}},
    {"mnuErode", "Erode", {}},
    {"mnuGreys", "Greys", {}},
    {"mnuNegative", "Negative", {}},
    {"mnuNoise", "Noise", {40, 1, 0}},
    {"mnuOutline", "Outline", {0, 0, 0}},
    {"mnuRelieve", "Relieve", {25, 0, 0}},
    {"mnuSepia", "Sepia", {}},
    {"btnSharpenQuick", "Sharpen", {5, 0, 0}},
    {"btnSoftenQuick", "Soften", {5, 0, 0}},
    {"btnAutoCorrect", "Despeckle", {}},
}};

struct EditResult {
    cDib picture;
    bool ok = false;
    bool recorded = false;
};

}  // namespace

bool EditorModel::EnsureWorkingCopy() {
    std::error_code ec;
    if (fs::exists(WorkingCopyPath(), ec)) return true;
    return WriteRawPicture(WorkingCopyPath(), picture_);
}

void EditorModel::Rotate(bool clockwise) {
    if (busy_ || !HasPicture()) return;
    preset_ = kPresetCustom;
    EnsureWorkingCopy();
    const std::string folder = DataFolder();
    const int step = services_.undo.NextStep(folder);
    BeginWork(clockwise ? kWaitRotatingRight : kWaitRotatingLeft);
    auto work = std::make_shared<EditResult>();
    work->picture.Swap(picture_);
    services_.tasks.Run(
        [work, clockwise, folder, step](const TaskRunner::Post&) {
            cDib& p = work->picture;
            if (clockwise) {
                p.Orientation(false, false, true);
            } else {
                // A left turn passes through "rotate.bmp": half a turn and a quarter clockwise.
                WriteBmpFile(folder + std::string(kRotateFileName), p);
                p.Orientation(true, true, true);
            }
            WriteRawPicture(folder + std::string(kWorkingCopyName), p);
            work->recorded = UndoHistory::WriteSnapshot(folder, step, p);
            work->ok = true;
        },
        [this, work, step] {
            EndWork();
            picture_.Swap(work->picture);
            originalWidth_ = picture_.Width();
            originalHeight_ = picture_.Height();
            differsFromWorkingCopy_ = false;
            changed_ = true;
            SetStatus(std::string(kStatusImageRotated));
            SelectPreset(std::string(kPresetOriginalSize));
            if (work->recorded) services_.undo.Commit(step, CurrentRow("Rotate"));
            view_->PictureChanged();
        });
}

void EditorModel::ApplyQuickEffect(std::string_view key) {
    if (busy_ || !HasPicture()) return;
    const QuickEffect* effect = nullptr;
    for (const QuickEffect& e : kQuickEffects)
        if (e.key == key) effect = &e;
    if (!effect) return;
    const int index = FindFilter(effect->filter);
    FilterSettings settings = InitialSettings(index);
    settings.params = effect->params;
    const std::string folder = DataFolder();
    const int step = services_.undo.NextStep(folder);
    BeginWork(kWaitApplying);
    auto work = std::make_shared<EditResult>();
    work->picture.Swap(picture_);
    services_.tasks.Run(
        [work, index, settings, folder, step](const TaskRunner::Post&) {
            cDIBFilter engine;
            work->ok = ApplyFilter(engine, work->picture, index, settings);
            if (work->ok) work->recorded = UndoHistory::WriteSnapshot(folder, step, work->picture);
        },
        [this, work, step, key = std::string(key)] {
            EndWork();
            picture_.Swap(work->picture);
            if (!work->ok) return;
            changed_ = true;
            differsFromWorkingCopy_ = true;
            if (work->recorded) services_.undo.Commit(step, CurrentRow(key));
            view_->PictureChanged();
        });
}

void EditorModel::RunEffectDialog(EffectDialog which, bool refusesTiff) {
    if (busy_ || !HasPicture()) return;
    if (refusesTiff && EqualsIgnoreCase(fs::path(path_).extension().string(), ".tif")) {
        ShowMessageOnce(kTifRefusalKind, kTifFilterNoKey, kTifFilterNoText, MsgButtons::OK, MsgIcon::None, "",
                        services_.messages);
        return;
    }
    std::optional<cDib> result = services_.windows.RunEffect(which, picture_, path_);
    if (result && result->hDIB()) TakeEditedPicture(std::move(*result), "Effect");
}

void EditorModel::RunFitToFileSize() {
    if (busy_ || !HasPicture()) return;
    std::optional<cDib> result = services_.windows.FitToFileSize(picture_);
    if (result && result->hDIB()) TakeEditedPicture(std::move(*result), "makeitfit");
}

void EditorModel::RunPresetEditor() {
    if (services_.windows.OpenPresetEditor()) view_->PresetsChanged();
}

void EditorModel::TakeEditedPicture(cDib&& picture, std::string_view command) {
    picture_.Swap(picture);
    changed_ = true;
    differsFromWorkingCopy_ = true;
    RecomputeNewSize();
    services_.undo.Record(DataFolder(), picture_, CurrentRow(command));
    view_->PictureChanged();
    view_->FieldsChanged();
}

void EditorModel::Paste() {
    if (busy_) return;
    std::optional<cDib> pasted = services_.windows.PastePicture();
    if (!pasted || !pasted->hDIB()) return;
    preset_ = kPresetCustom;
    originalWidth_ = pasted->Width();
    originalHeight_ = pasted->Height();
    TakeEditedPicture(std::move(*pasted), cmd::Paste);
}

void EditorModel::SetWallpaper() {
    if (!HasPicture()) {
        services_.messages.Show(std::string(kOpenAnImageFirst));
        return;
    }
    InitialiseDataFolder();
    const std::string path = DataFolder() + std::string(kWallpaperFileName);
    const bool set = WriteBmpFile(path, picture_) && services_.desktop.SetWallpaper(path);
    services_.messages.Show(std::string(set ? kWallpaperSet : kWallpaperFailed));
}

}  // namespace quorbel
