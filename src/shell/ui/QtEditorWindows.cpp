#include "shell/ui/QtEditorWindows.h"

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <cstring>
#include <filesystem>

#include "batch/ui/BatchWizard.h"
#include "shell/ui/frmEditor.h"
#include "shell/ui/frmCustomAdd.h"
#include "shell/ui/frmMakeItFit.h"
#include "share/Mail.h"

#ifdef QUORBEL_HAVE_EFFECTS_UI
#include "effects/ui/fFilter.h"
#include "effects/ui/frmBright.h"
#include "effects/ui/frmColorBal.h"
#include "effects/ui/frmContrast.h"
#include "effects/ui/frmFish.h"
#include "effects/ui/frmWarp.h"
#endif

namespace quorbel {

std::optional<cDib> QtEditorWindows::RunEffect(EffectDialog which, const cDib& picture, const std::string& fileName) {
#ifdef QUORBEL_HAVE_EFFECTS_UI
    constexpr int kSharpen = 25, kSoften = 27;  // their places in the filter list
    switch (which) {
        case EffectDialog::Brightness: return RunBrightnessDialog(parent_, picture);
        case EffectDialog::Contrast: return RunContrastDialog(parent_, picture);
        case EffectDialog::ColourBalance: return RunColourBalanceDialog(parent_, picture);
        case EffectDialog::Sharpen: return RunFilterDialog(parent_, picture, fileName, messages_, kSharpen);
        case EffectDialog::Soften: return RunFilterDialog(parent_, picture, fileName, messages_, kSoften);
        case EffectDialog::ImageEditor: return RunFilterDialog(parent_, picture, fileName, messages_, 0);
        case EffectDialog::Warp: return RunWarpDialog(parent_, picture);
        case EffectDialog::Fisheye: return RunFishDialog(parent_, picture);
    }
    return std::nullopt;
#else
    (void)which, (void)picture, (void)fileName, (void)parent_, (void)messages_;
    return std::nullopt;
#endif
}

std::optional<cDib> QtEditorWindows::PastePicture() {
    const QImage image = QApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
    if (image.isNull()) return std::nullopt;
    cDib picture;
    if (!picture.Create(image.width(), image.height())) return std::nullopt;
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(picture.Row(y), image.constScanLine(y), static_cast<size_t>(image.width()) * 4);
    return picture;
}

std::optional<cDib> QtEditorWindows::FitToFileSize(const cDib& picture) {
    return RunFitToFileSize(parent_, picture, messages_);
}

bool QtEditorWindows::OpenPresetEditor() { return RunPresetEditor(parent_, messages_); }

void QtEditorWindows::EmailPicture(const std::string& path) {
    const std::filesystem::path picture(path);
    EmailPictures(picture.parent_path().string(), {picture}, messages_);
}

// The wizard reads the job word that the dispatcher has just stored.
void QtEditorWindows::OpenBatchWizard(BatchJob) {
    auto* editor = qobject_cast<frmEditor*>(parent_);
    const std::string help = editor ? editor->HelpFolder() : std::string();
    BatchWizardServices services{messages_, dialogs_, desktop_, help,
                                 std::filesystem::path(help).parent_path().string(), {}};
    if (editor)
        services.openInEditor = [editor](const std::string&, const std::string& picture) {
            editor->Model().SelectPreset("Original Size");
            editor->Model().Open(picture);
        };
    OpenBatchWizardWindow(parent_, services);
}

}  // namespace quorbel
