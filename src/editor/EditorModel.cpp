// The main window's state: the size, unit and type fields, the preset rules, load and
// unload, and stepping through the undo history.
#include "editor/EditorModel.h"

#include <charconv>
#include <filesystem>

#include "core/RuntimeError.h"
#include "settings/AppFolders.h"
#include "settings/AppIni.h"
#include "settings/DataFolder.h"
#include "core/text/NumericText.h"
#include "settings/SettingsStore.h"
#include "sizes/SizePresets.h"
#include "core/text/TextCase.h"
#include "sizes/Units.h"
#include "editor/EditorTexts.h"
#include "editor/RawPicture.h"

namespace quorbel {
namespace {

int32_t ToInt(const std::string& text) {
    int32_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// Presets store units in any case ("inches"); the unit list shows its own spelling.
std::string ListUnitName(std::string_view unit) {
    for (std::string_view name : kUnitNames)
        if (EqualsIgnoreCase(name, unit)) return std::string(name);
    return std::string(unit);
}

}  // namespace

EditorModel::EditorModel(EditorServices services) : services_(std::move(services)) {}

std::string EditorModel::WorkingCopyPath() const {
    InitialiseDataFolder();
    return DataFolder() + std::string(kWorkingCopyName);
}

void EditorModel::Load() {
    EnsurePresets();
    const std::string smart = GetSetting(kAppName, "Options", "SmartSize", "True");
    smartSize_ = smart == "True" || smart == "1";
    autoAnalyzer_ = GetSetting(kAppName, "Options", "AutoAnalyzer", "False") == "True";
    preset_ = GetSetting(kAppName, "Options", "Quick Size", kPresetCustom);
    FillRecentFilesMenu(recent_, ReadRecentFiles(kRecentFilesMax));
    view_->FieldsChanged();
    view_->RecentFilesChanged();
}

void EditorModel::Unload(const std::string& windowPosition, bool maximized) {
    SaveSetting(kAppName, "Options", "Quick Size", preset_);
    SaveSetting(kAppName, "Options", "Scale", unit_);
    SaveSetting(kAppName, "Options", "Width", widthText_);
    SaveSetting(kAppName, "Options", "Height", heightText_);
    IniWrite("Main", "Window Position", windowPosition);
    IniWrite("Main", "Maximized", maximized ? "True" : "False");
}

void EditorModel::SetScreen(int32_t width, int32_t height, double twipsPerPixel) {
    if (width > 0 && height > 0) {
        screenWidth_ = width;
        screenHeight_ = height;
    }
    if (twipsPerPixel > 0) twipsPerPixel_ = twipsPerPixel;
}

void EditorModel::SetSmartSize(bool on) {
    smartSize_ = on;
    SaveSetting(kAppName, "Options", "SmartSize", on ? "True" : "False");
    RecomputeNewSize();
    view_->FieldsChanged();
}

void EditorModel::SetRememberedSize(const std::string& unit, const std::string& width, const std::string& height) {
    unit_ = ListUnitName(unit);
    widthText_ = width;
    heightText_ = height;
    RecomputeNewSize();
    view_->FieldsChanged();
}

void EditorModel::ChooseUnit(const std::string& unit) {
    const std::string name = ListUnitName(unit);
    if (name == unit_) return;
    preset_ = kPresetCustom;
    // The size stays; only the way it is written changes.
    if (newWidth_ > 0 && newHeight_ > 0) {
        widthText_ = PixelsToUnitText(newWidth_, name, twipsPerPixel_, false);
        heightText_ = PixelsToUnitText(newHeight_, name, twipsPerPixel_, true);
    }
    unit_ = name;
    RecomputeNewSize();
    view_->FieldsChanged();
}

void EditorModel::TypeWidth(const std::string& text) {
    widthText_ = text;
    preset_ = kPresetCustom;
    RecomputeNewSize();
    view_->FieldsChanged();
}

void EditorModel::TypeHeight(const std::string& text) {
    heightText_ = text;
    preset_ = kPresetCustom;
    RecomputeNewSize();
    view_->FieldsChanged();
}

void EditorModel::ShowPictureSizeInPixels() {
    unit_ = "Pixels";
    widthText_ = std::to_string(originalWidth_);
    heightText_ = std::to_string(originalHeight_);
    newWidth_ = originalWidth_;
    newHeight_ = originalHeight_;
}

void EditorModel::SelectPreset(const std::string& name) {
    if (busy_) return;
    preset_ = name;
    switch (ClassifyPreset(name)) {
        case SpecialPreset::OriginalSize:
            if (HasPicture() && differsFromWorkingCopy_) {
                cDib original;
                if (ReadRawPicture(WorkingCopyPath(), original)) {
                    picture_.Swap(original);
                    originalWidth_ = picture_.Width();
                    originalHeight_ = picture_.Height();
                    differsFromWorkingCopy_ = false;
                    ShowPictureSizeInPixels();
                    services_.undo.Record(DataFolder(), picture_, CurrentRow(kPresetOriginalSize));
                    view_->PictureChanged();
                }
            }
            if (HasPicture()) ShowPictureSizeInPixels();
            break;
        case SpecialPreset::FitScreen:
            if (HasPicture()) {
                int32_t left, top, w, h;
                picture_.GetBestFitInfo(screenWidth_, screenHeight_, true, left, top, w, h);
                unit_ = "Pixels";
                widthText_ = std::to_string(w);
                heightText_ = std::to_string(h);
                newWidth_ = w;
                newHeight_ = h;
            }
            break;
        case SpecialPreset::Custom:
            RecomputeNewSize();  // whatever is typed stays
            break;
        case SpecialPreset::None:
            if (const auto preset = ReadPreset(name)) {
                unit_ = ListUnitName(preset->unit);
                widthText_ = preset->width;
                heightText_ = preset->height;
            }
            RecomputeNewSize();
            break;
    }
    view_->FieldsChanged();
}

void EditorModel::RecomputeNewSize() {
    const SpecialPreset special = ClassifyPreset(preset_);
    if (special == SpecialPreset::OriginalSize && HasPicture()) {
        newWidth_ = originalWidth_;
        newHeight_ = originalHeight_;
        return;
    }
    if (special == SpecialPreset::FitScreen) return;  // fixed when chosen
    const auto w = ParseNumericText(widthText_), h = ParseNumericText(heightText_);
    if (!w || !h) return;  // half-typed: the last good size stays
    int32_t pw, ph;
    try {
        pw = UnitToPixels(*w, unit_, twipsPerPixel_, false);
        ph = UnitToPixels(*h, unit_, twipsPerPixel_, true);
    } catch (const RuntimeError&) {
        return;
    }
    if (pw < 1 || ph < 1) return;
    if (special == SpecialPreset::None && smartSize_ && HasPicture()) {
        // A named size is a box the picture fits into, turned to the picture's own way up.
        if ((picture_.Width() >= picture_.Height()) != (pw >= ph)) std::swap(pw, ph);
        int32_t left, top;
        try {
            picture_.GetBestFitInfo(pw, ph, true, left, top, pw, ph);
        } catch (const RuntimeError&) {
            return;
        }
        if (pw < 1) pw = 1;
        if (ph < 1) ph = 1;
    }
    newWidth_ = pw;
    newHeight_ = ph;
}

bool EditorModel::HandSized() const { return ClassifyPreset(preset_) == SpecialPreset::Custom; }

UndoRow EditorModel::CurrentRow(std::string_view command) const {
    UndoRow row;
    row[kUndoPreset] = preset_;
    row[kUndoUnit] = unit_;
    row[kUndoWidthText] = widthText_;
    row[kUndoHeightText] = heightText_;
    row[kUndoNewWidth] = std::to_string(newWidth_);
    row[kUndoNewHeight] = std::to_string(newHeight_);
    row[kUndoCommand] = std::string(command);
    return row;
}

void EditorModel::ApplyRow(const UndoRow& row) {
    preset_ = row[kUndoPreset];
    unit_ = row[kUndoUnit];
    widthText_ = row[kUndoWidthText];
    heightText_ = row[kUndoHeightText];
    newWidth_ = ToInt(row[kUndoNewWidth]);
    newHeight_ = ToInt(row[kUndoNewHeight]);
}

void EditorModel::Undo() { StepThroughHistory(&UndoHistory::Undo); }

void EditorModel::Redo() { StepThroughHistory(&UndoHistory::Redo); }

void EditorModel::StepThroughHistory(bool (UndoHistory::*step)(const std::string&, cDib&, UndoRow&)) {
    if (busy_) return;
    cDib picture;
    UndoRow row;
    if (!(services_.undo.*step)(DataFolder(), picture, row)) return;
    picture_.Swap(picture);
    ApplyRow(row);
    changed_ = true;
    differsFromWorkingCopy_ = true;
    view_->PictureChanged();
    view_->FieldsChanged();
}

void EditorModel::SetStatus(std::string text) {
    status_ = std::move(text);
    view_->StatusChanged(status_);
}

void EditorModel::BeginWork(std::string_view waitText) {
    busy_ = true;
    view_->WaitShown(std::string(waitText));
}

void EditorModel::EndWork() {
    busy_ = false;
    view_->WaitHidden();
}

}  // namespace quorbel
