#pragma once
// The welcome window: Open, Last Edited, Getting Started, Tutorials, Batch Resize, the
// web site, Close, and the "Show This Welcome Screen at Startup" tick.
#include <QDialog>

#include "editor/Welcome.h"

class QCheckBox;
class QPushButton;

namespace quorbel {

class frmWelcome : public QDialog {
    Q_OBJECT
public:
    frmWelcome(EditorModel& editor, Desktop& desktop, const std::string& helpFolder, QWidget* parent = nullptr);
    WelcomeChoice Choice() const { return model_.Choice(); }

    QPushButton* cmdOpen;
    QPushButton* cmdLastEdited;
    QPushButton* cmdGettingStarted;
    QPushButton* cmdTutorials;
    QPushButton* cmdBatchResize;
    QPushButton* cmdWebSite;
    QPushButton* cmdClose;
    QCheckBox* chkShowWelcome;

protected:
    void done(int result) override;

private:
    QPushButton* AddButton(const QString& title, const QString& note, WelcomeButton button);
    WelcomeModel model_;
};

}  // namespace quorbel
