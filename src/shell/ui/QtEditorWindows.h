#pragma once
// The windows of other parts that the main window opens: the effect windows when they are
// built into the program, the clipboard. Windows not built yet do nothing.
#include "core/MessageBox.h"
#include "platform/Desktop.h"
#include "platform/QtFileDialogs.h"
#include "shell/editor/EditorPorts.h"

class QWidget;

namespace quorbel {

class QtEditorWindows : public EditorWindows {
public:
    QtEditorWindows(QWidget* parent, MessageBox& messages) : parent_(parent), messages_(messages) {}
    std::optional<cDib> RunEffect(EffectDialog which, const cDib& picture, const std::string& fileName) override;
    std::optional<cDib> PastePicture() override;
    std::optional<cDib> FitToFileSize(const cDib& picture) override;
    bool OpenPresetEditor() override;
    void EmailPicture(const std::string& path) override;
    void OpenBatchWizard(BatchJob job) override;

private:
    QWidget* parent_;
    MessageBox& messages_;
    // For the batch wizard, which outlives the call that opens it.
    QtFileDialogs dialogs_{parent_};
    Desktop desktop_{messages_};
};

}  // namespace quorbel
