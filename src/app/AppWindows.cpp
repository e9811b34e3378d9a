#include "app/AppWindows.h"

#include <QApplication>
#include <QClipboard>
#include <filesystem>

#include "batch/ui/BatchWizard.h"
#include "core/ProgramData.h"
#include "editor/ui/frmEditor.h"
#include "sizes/ui/frmCustomAdd.h"
#include "sizes/ui/frmMakeItFit.h"
#include "share/Mail.h"

#include "effects/FilterList.h"
#include "effects/ui/fFilter.h"
#include "effects/ui/frmBright.h"
#include "effects/ui/frmColorBal.h"
#include "effects/ui/frmContrast.h"
#include "effects/ui/frmFish.h"
#include "effects/ui/frmWarp.h"
#include "imaging/ui/DibImage.h"

namespace quorbel {

AppWindows::AppWindows(frmEditor& editor) : editor_(editor), parent_(&editor), messages_(editor.Messages()) {}

std::optional<cDib> AppWindows::RunEffect(EffectDialog which, const cDib& picture, const std::string& fileName) {
    const auto filterWindow = [&](std::string_view filter) {
        return RunFilterDialog(parent_, picture, fileName, messages_, FindFilter(filter));
    };
    switch (which) {
        case EffectDialog::Brightness: return RunBrightnessDialog(parent_, picture);
        case EffectDialog::Contrast: return RunContrastDialog(parent_, picture);
        case EffectDialog::ColourBalance: return RunColourBalanceDialog(parent_, picture);
        case EffectDialog::Sharpen: return filterWindow("Sharpen");
        case EffectDialog::Soften: return filterWindow("Soften");
        case EffectDialog::ImageEditor: return filterWindow("<None>");
        case EffectDialog::Warp: return RunWarpDialog(parent_, picture);
        case EffectDialog::Fisheye: return RunFishDialog(parent_, picture);
    }
    return std::nullopt;
}

std::optional<cDib> AppWindows::PastePicture() {
    cDib picture = FromQImage(QApplication::clipboard()->image());
    if (!picture.hDIB()) return std::nullopt;
    return picture;
}

std::optional<cDib> AppWindows::FitToFileSize(const cDib& picture) {
    return RunFitToFileSize(parent_, picture, messages_);
}

bool AppWindows::OpenPresetEditor() { return RunPresetEditor(parent_, messages_); }

void AppWindows::EmailPicture(const std::string& path) {
    const std::filesystem::path picture(path);
    EmailPictures(picture.parent_path().string(), {picture}, messages_);
}

// The wizard reads the job word that the dispatcher has just stored.
void AppWindows::OpenBatchWizard(WizardJob) {
    BatchWizardServices services{messages_, dialogs_, desktop_, editor_.HelpFolder(),
                                 FindProgramData(ProgramFolder()).string(), {}};
    services.openInEditor = [this](const std::string&, const std::string& picture) {
        editor_.Model().SelectPreset("Original Size");
        editor_.Model().Open(picture);
    };
    OpenBatchWizardWindow(parent_, services);
}

}  // namespace quorbel
