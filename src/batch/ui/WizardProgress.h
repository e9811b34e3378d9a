#pragma once
// The resizing frame shown while the run goes: a status line, the progress bar, the counts
// and the picture being written.
#include <QWidget>
#include <string>

class QLabel;
class QLineEdit;
class QProgressBar;

namespace quorbel {

class WizardProgress : public QWidget {
    Q_OBJECT
public:
    WizardProgress();
    void Start();
    void SetStatus(const std::string& text);
    void Show(int percent, int done, int total, const std::string& file);

private:
    QLabel* lblPleaseWait;
    QProgressBar* picProgress;
    QLabel* lblTotal;
    QLabel* LblCurrentCount;
    QLineEdit* txtFileName;
};

}  // namespace quorbel
