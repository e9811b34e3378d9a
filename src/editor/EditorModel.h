#pragma once
// The main picture window without its window: the current picture and its sizes, the size
// and type choices, the working copy, the undo history, and the one command dispatcher that
// every toolbar button, menu entry and welcome button ends in.
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/MessageBox.h"
#include "imaging/cDib.h"
#include "platform/Desktop.h"
#include "platform/FileDialogs.h"
#include "settings/RecentFiles.h"
#include "editor/EditorPorts.h"
#include "editor/UndoHistory.h"

namespace quorbel {

struct EditorServices {
    MessageBox& messages;
    FileDialogs& dialogs;
    Desktop& desktop;
    EditorWindows& windows;
    TaskRunner& tasks;
    UndoHistory& undo;
    std::string helpFolder;  // the help pages
};

class EditorModel {
public:
    explicit EditorModel(EditorServices services);
    void SetView(EditorView* view) { view_ = view ? view : &noView_; }

    // The window's load: preset list, remembered toggles and recent files. Its unload:
    // ("Options", "Quick Size") and the window's place in the application INI file.
    void Load();
    void Unload(const std::string& windowPosition, bool maximized);

    // Runs the command of key; an unknown key does nothing. False for an unknown key. While
    // long work runs only "Exit" is taken.
    bool Dispatch(std::string_view key);

    // The commands the dispatcher runs, for the window and start-up to call directly.
    // An empty path asks with the open dialog.
    void Open(const std::string& path = {});
    // after runs once the save is over (saved, failed or cancelled).
    void SaveAs(std::function<void()> after = {});
    void Rotate(bool clockwise);
    void Undo();
    void Redo();

    // ---- the size, unit and type fields ----
    // Selecting in the quick-size list: the preset's unit and size, or the special presets'
    // own rules ("Original Size" restores the working copy).
    void SelectPreset(const std::string& name);
    // The user changing the unit or typing a size: the preset becomes "Custom".
    void ChooseUnit(const std::string& unit);
    void TypeWidth(const std::string& text);
    void TypeHeight(const std::string& text);
    // Start-up's remembered unit and size; not a change by hand.
    void SetRememberedSize(const std::string& unit, const std::string& width, const std::string& height);
    void SetFileType(const std::string& fileType) { fileType_ = fileType; }
    void SetSmartSize(bool on);
    void SetQualityName(const std::string& name) { qualityName_ = name; }
    // The screen's work area in pixels, for "Fit Screen", and its twips per pixel.
    void SetScreen(int32_t width, int32_t height, double twipsPerPixel);

    // ---- state ----
    const cDib& Picture() const { return picture_; }
    bool HasPicture() const { return picture_.hDIB(); }
    const std::string& Path() const { return path_; }
    int32_t OriginalWidth() const { return originalWidth_; }
    int32_t OriginalHeight() const { return originalHeight_; }
    int32_t NewWidth() const { return newWidth_; }
    int32_t NewHeight() const { return newHeight_; }
    const std::string& Preset() const { return preset_; }
    const std::string& Unit() const { return unit_; }
    const std::string& WidthText() const { return widthText_; }
    const std::string& HeightText() const { return heightText_; }
    const std::string& FileType() const { return fileType_; }
    const std::string& Status() const { return status_; }
    const std::string& ZoomText() const { return zoomText_; }
    bool SmartSize() const { return smartSize_; }
    bool AutoAnalyzer() const { return autoAnalyzer_; }
    bool Changed() const { return changed_; }
    void SetChanged(bool changed) { changed_ = changed; }
    bool Busy() const { return busy_; }
    bool ExitRequested() const { return exitRequested_; }
    const RecentFilesMenu& RecentFiles() const { return recent_; }
    const UndoHistory& History() const { return services_.undo; }
    std::string WorkingCopyPath() const;

private:
    // The commands behind the dispatcher.
    void Browse() { Open(); }
    void OpenChosen(const std::string& path);
    void SaveChosen(std::function<void()> after);
    void StartBatch(WizardJob job);
    void Email();
    void ApplyQuickEffect(std::string_view key);
    void RunEffectDialog(EffectDialog which, bool refusesTiff);
    void RunFitToFileSize();
    void RunPresetEditor();
    void SetWallpaper();
    void ToggleAutoAnalyzer();
    void ShowHelp(std::string_view topic);
    void Paste();
    void ResetZoom();
    void OpenNeighbour(int direction);
    void Exit();

    // Shared steps.
    void SetStatus(std::string text);
    void BeginWork(std::string_view waitText);
    void EndWork();
    UndoRow CurrentRow(std::string_view command) const;
    void ApplyRow(const UndoRow& row);
    void RecomputeNewSize();
    void ShowPictureSizeInPixels();
    bool EnsureWorkingCopy();
    void TakeEditedPicture(cDib&& picture, std::string_view command);
    void StepThroughHistory(bool (UndoHistory::*step)(const std::string&, cDib&, UndoRow&));
    bool HandSized() const;

    EditorServices services_;
    EditorView noView_;
    EditorView* view_ = &noView_;

    cDib picture_;
    std::string path_;
    int32_t originalWidth_ = 0, originalHeight_ = 0;
    int32_t newWidth_ = 0, newHeight_ = 0;
    std::string preset_;
    std::string unit_ = "Inches";
    std::string widthText_, heightText_;
    std::string fileType_ = "JPEG .jpg";
    std::string qualityName_;
    std::string status_;
    std::string zoomText_ = "0%";
    bool smartSize_ = true;
    bool autoAnalyzer_ = false;
    bool changed_ = false;
    bool busy_ = false;
    bool exitRequested_ = false;
    // The picture no longer equals the working copy (an effect, paste or undo since).
    bool differsFromWorkingCopy_ = false;
    int32_t screenWidth_ = 1280, screenHeight_ = 800;
    double twipsPerPixel_ = 15.0;
    RecentFilesMenu recent_;
};

}  // namespace quorbel
