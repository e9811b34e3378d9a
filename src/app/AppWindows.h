#pragma once
// The windows of other parts that the main window opens: effects, sizes, the batch wizard,
// e-mail and the clipboard. The one place that knows every window of the program.
#include "core/MessageBox.h"
#include "platform/Desktop.h"
#include "platform/ui/QtFileDialogs.h"
#include "editor/EditorPorts.h"

namespace quorbel {

class frmEditor;

class AppWindows : public EditorWindows {
public:
    explicit AppWindows(frmEditor& editor);
    std::optional<cDib> RunEffect(EffectDialog which, const cDib& picture, const std::string& fileName) override;
    std::optional<cDib> PastePicture() override;
    std::optional<cDib> FitToFileSize(const cDib& picture) override;
    bool OpenPresetEditor() override;
    void EmailPicture(const std::string& path) override;
    void OpenBatchWizard(WizardJob job) override;

private:
    frmEditor& editor_;
    QWidget* parent_;
    MessageBox& messages_;
    // For the batch wizard, which outlives the call that opens it.
    QtFileDialogs dialogs_{parent_};
    Desktop desktop_{messages_};
};

}  // namespace quorbel
