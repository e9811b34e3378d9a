// The one command dispatcher and the small commands behind it.
#include <algorithm>
#include <filesystem>
#include <utility>

#include "settings/AppFolders.h"
#include "editor/Prompts.h"
#include "settings/SettingsStore.h"
#include "editor/EditorModel.h"
#include "editor/EditorTexts.h"
#include "editor/FolderPictures.h"

namespace quorbel {
namespace fs = std::filesystem;

bool EditorModel::Dispatch(std::string_view key) {
    if (key == cmd::Exit) {
        Exit();
        return true;
    }
    if (busy_) return false;

    using Handler = void (*)(EditorModel&);
    static const std::pair<std::string_view, Handler> kTable[] = {
        {cmd::Browse, [](EditorModel& m) { m.Browse(); }},
        {cmd::Edit, [](EditorModel& m) { m.services_.windows.OpenPaintEditor(); }},
        {cmd::Refresh, [](EditorModel& m) { m.view_->PictureChanged(); }},
        {cmd::BatchResize, [](EditorModel& m) { m.StartBatch(WizardJob::Resize); }},
        {cmd::QuickOpt, [](EditorModel& m) { m.StartBatch(WizardJob::Resize); }},
        {cmd::SlideShow, [](EditorModel& m) { m.StartBatch(WizardJob::Web); }},
        {cmd::CDSlideShow, [](EditorModel& m) { m.StartBatch(WizardJob::CD); }},
        {cmd::DiscSlideShow, [](EditorModel& m) { m.StartBatch(WizardJob::CD); }},
        {cmd::MultiEmail, [](EditorModel& m) { m.StartBatch(WizardJob::Email); }},
        {cmd::MultiplePictures, [](EditorModel& m) { m.StartBatch(WizardJob::Email); }},
        {cmd::MakeItFit, [](EditorModel& m) { m.RunFitToFileSize(); }},
        {cmd::Email, [](EditorModel& m) { m.Email(); }},
        {cmd::Community, [](EditorModel& m) { m.services_.windows.OpenForums(); }},
        {cmd::RotateRight, [](EditorModel& m) { m.Rotate(true); }},
        {cmd::RotateLeft, [](EditorModel& m) { m.Rotate(false); }},
        {cmd::SaveAs, [](EditorModel& m) { m.SaveAs(); }},
        {cmd::Undo, [](EditorModel& m) { m.Undo(); }},
        {cmd::Redo, [](EditorModel& m) { m.Redo(); }},
        {cmd::Wallpaper, [](EditorModel& m) { m.SetWallpaper(); }},
        {cmd::AutoAnalyzer, [](EditorModel& m) { m.ToggleAutoAnalyzer(); }},
        {cmd::Help, [](EditorModel& m) { m.ShowHelp(kHelpWelcome); }},
        {cmd::GettingStarted, [](EditorModel& m) { m.ShowHelp(kHelpGettingStartedMenu); }},
        {cmd::Tutorial, [](EditorModel& m) { m.ShowHelp("Tutorial Resizing Pictures.htm"); }},
        {cmd::HelpContents, [](EditorModel& m) { m.ShowHelp(""); }},
        {cmd::Paste, [](EditorModel& m) { m.Paste(); }},
        {cmd::Scan, [](EditorModel& m) { m.services_.windows.Scan(); }},
        {cmd::ZoomOut, [](EditorModel& m) { m.ResetZoom(); }},
        {cmd::ZoomQuick, [](EditorModel& m) { m.ResetZoom(); }},
        {cmd::Fit, [](EditorModel& m) { m.ResetZoom(); }},
        {cmd::Previous, [](EditorModel& m) { m.OpenNeighbour(-1); }},
        {cmd::Next, [](EditorModel& m) { m.OpenNeighbour(+1); }},
        {cmd::CustomSizes, [](EditorModel& m) { m.RunPresetEditor(); }},
        {cmd::Brighten, [](EditorModel& m) { m.RunEffectDialog(EffectDialog::Brightness, true); }},
        {cmd::Contrast, [](EditorModel& m) { m.RunEffectDialog(EffectDialog::Contrast, true); }},
        {cmd::ColourBalance, [](EditorModel& m) { m.RunEffectDialog(EffectDialog::ColourBalance, true); }},
        {cmd::SharpenDialog, [](EditorModel& m) { m.RunEffectDialog(EffectDialog::Sharpen, true); }},
        {cmd::SoftenDialog, [](EditorModel& m) { m.RunEffectDialog(EffectDialog::Soften, true); }},
        {cmd::ImageEditor, [](EditorModel& m) { m.RunEffectDialog(EffectDialog::ImageEditor, true); }},
        {cmd::Warp, [](EditorModel& m) { m.RunEffectDialog(EffectDialog::Warp, false); }},
        {cmd::Fisheye, [](EditorModel& m) { m.RunEffectDialog(EffectDialog::Fisheye, false); }},
    };
    for (const auto& [name, handler] : kTable) {
        if (name == key) {
            handler(*this);
            return true;
        }
    }
    if (std::find(kQuickEffectKeys.begin(), kQuickEffectKeys.end(), key) != kQuickEffectKeys.end()) {
        ApplyQuickEffect(key);
        return true;
    }
    return false;
}

void EditorModel::StartBatch(WizardJob job) {
    static constexpr std::string_view kWords[] = {"Resize", "Web", "CD", "Email"};
    SaveSetting(kAppName, "MultiEdit", "Type", kWords[static_cast<int>(job)]);
    services_.windows.OpenBatchWizard(job);
}

void EditorModel::Email() {
    if (PromptSaveIfChanged(changed_, services_.messages)) {
        SaveAs([this] { services_.windows.EmailPicture(path_); });
        return;
    }
    services_.windows.EmailPicture(path_);
}

void EditorModel::ToggleAutoAnalyzer() {
    autoAnalyzer_ = !autoAnalyzer_;
    if (autoAnalyzer_) services_.messages.Show(std::string(kAutoAnalyzerWarning));
    SaveSetting(kAppName, "Options", "AutoAnalyzer", autoAnalyzer_ ? "True" : "False");
    view_->FieldsChanged();
}

void EditorModel::ShowHelp(std::string_view topic) {
    services_.desktop.OpenHelp(services_.helpFolder, std::string(topic));
}

void EditorModel::ResetZoom() {
    zoomText_ = kZoomReset;
    view_->FieldsChanged();
}

void EditorModel::OpenNeighbour(int direction) {
    const fs::path next =
        path_.empty() ? fs::path() : NeighbourPicture(ListFolderPictures(fs::path(path_).parent_path()), path_, direction);
    if (next.empty()) {
        services_.messages.Show(std::string(kNoPicturesFound));
        return;
    }
    if (next == fs::path(path_)) return;  // the only picture of its folder
    Open(next.string());
}

void EditorModel::Exit() {
    // At once: no question about unsaved changes.
    exitRequested_ = true;
    view_->ExitRequested();
}

}  // namespace quorbel
