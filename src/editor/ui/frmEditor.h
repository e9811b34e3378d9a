#pragma once
// frmEditor, the main picture window: a thin view of EditorModel. Every button and menu
// entry sends its command key to the model's dispatcher.
#include <QMainWindow>
#include <chrono>
#include <functional>
#include <memory>

#include "platform/Desktop.h"
#include "platform/ui/QtFileDialogs.h"
#include "platform/ui/QtMessageBox.h"
#include "editor/EditorModel.h"
#include "editor/ui/QtTaskRunner.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;

namespace quorbel {

class PictureCanvas;
class WaitWindow;

class frmEditor : public QMainWindow, public EditorView {
    Q_OBJECT
public:
    // The windows of other parts (effects, sizes, the batch wizard) are the program's to
    // choose: makeWindows builds them for this window. Without it those commands do nothing.
    using WindowsMaker = std::function<std::unique_ptr<EditorWindows>(frmEditor& window)>;
    frmEditor(UndoHistory& undo, std::string helpFolder, const WindowsMaker& makeWindows = {},
              QWidget* parent = nullptr);
    ~frmEditor() override;

    EditorModel& Model() { return *model_; }
    MessageBox& Messages() { return messages_; }
    Desktop& DesktopServices() { return desktop_; }
    const std::string& HelpFolder() const { return helpFolder_; }
    // Sends a command key to the dispatcher, as every button and menu entry does.
    void Command(std::string_view key);
    // Called once after the first frame that shows a picture (for timing the open).
    std::function<void()> onPictureShown;

    // The controls.
    PictureCanvas* Canvas;
    QComboBox* cboQuickSize;
    QComboBox* cboScale;
    QLineEdit* txtWidth;
    QLineEdit* txtHeight;
    QComboBox* cboFileType;
    QCheckBox* chkSmartSize;
    QLabel* lblOriginalSize;
    QLabel* lblNewWidth;
    QLabel* lblNewHeight;
    QLabel* lblStatus;
    QLabel* lblZoom;
    QAction* imgAutoAnalyzer;

    // EditorView
    void StatusChanged(const std::string& text) override;
    void WaitShown(const std::string& text) override;
    void WaitHidden() override;
    void PreviewReady(const cDib& preview) override;
    void PictureChanged() override;
    void FieldsChanged() override;
    void PresetsChanged() override;
    void RecentFilesChanged() override;
    void ExitRequested() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildMenus();
    void BuildToolBar();
    QWidget* BuildSizePanel();
    QAction* AddCommand(QMenu* menu, const QString& text, std::string_view key, const QKeySequence& shortcut = {});
    void RestorePosition();
    void UpdateEnabled();

    std::string helpFolder_;
    QtMessageBox messages_;
    QtFileDialogs dialogs_;
    Desktop desktop_;
    std::unique_ptr<EditorWindows> windows_;
    QtTaskRunner tasks_;
    std::unique_ptr<EditorModel> model_;
    WaitWindow* wait_;
    QMenu* mnuRecent_;
    QList<QAction*> pictureActions_;  // need a picture
    bool closing_ = false;
};

}  // namespace quorbel
