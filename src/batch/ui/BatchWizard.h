#pragma once
// Opening the batch wizard from the main window. This header names no job type, so the
// main window's own job enumeration and the batch job model never meet.
#include <functional>
#include <string>

class QWidget;

namespace quorbel {

class MessageBox;
class FileDialogs;
class Desktop;

struct BatchWizardServices {
    MessageBox& messages;
    FileDialogs& dialogs;
    Desktop& desktop;
    std::string helpFolder;   // the help pages
    std::string programData;  // where the slide show templates and disc files ship
    // "Open the newly resized pictures in Quorbel": the main window opens folder and shows picture.
    std::function<void(const std::string& folder, const std::string& picture)> openInEditor;
};

// Opens the wizard, not modal, for the job word kept in ("MultiEdit", "Type"); it deletes
// itself when closed.
QWidget* OpenBatchWizardWindow(QWidget* parent, const BatchWizardServices& services);

}  // namespace quorbel
