#pragma once
// Fit to file size: the window collects the limit, the sizes and the starting quality, runs
// the search on a worker thread with progress, and hands back the picture that fits.
#include <QDialog>

#include <atomic>
#include <memory>
#include <optional>

#include "core/MessageBox.h"
#include "imaging/cDib.h"
#include "sizes/FitSettings.h"
#include "sizes/FitToFileSize.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QThread;

namespace quorbel {

class frmMakeItFit : public QDialog {
    Q_OBJECT
public:
    // picture must outlive the window. twipsPerPixel 0 takes the screen's.
    frmMakeItFit(const cDib& picture, MessageBox& messages, QWidget* parent = nullptr,
                 double twipsPerPixel = 0);
    ~frmMakeItFit() override;

    bool Searching() const { return worker_ != nullptr; }
    // The search's outcome once it fitted (the window is then accepted).
    std::optional<FitResult>& Result() { return result_; }
    FitSettings ReadFields() const;

public slots:
    void Go();
    void reject() override;  // stops a running search first

signals:
    void searchFinished();

private:
    void ShowFields(const FitSettings& settings);
    void OnProgress(const FitProgress& progress);
    void OnFinished();
    void SetSearching(bool searching);
    void ChangeUnit();
    void CheckFields();
    void StopSearch();

    const cDib& picture_;
    MessageBox& messages_;
    double twipsPerPixel_;
    QString unit_;  // the unit the four sizes are shown in

    QLineEdit* txtFileSize_;
    QComboBox* cboSizeScale_;
    QComboBox* cboQuality_;
    QRadioButton* radQuality_;
    QRadioButton* radHW_;
    QComboBox* cboScale_;
    QLineEdit* txtMaxWidth_;
    QLineEdit* txtMaxHeight_;
    QLineEdit* txtMinWidth_;
    QLineEdit* txtMinHeight_;
    QLabel* lblPicture_;
    QLabel* lblStatus_;
    QProgressBar* prgSearch_;
    QPushButton* cmdGo_;
    QPushButton* cmdCancel_;

    QThread* worker_ = nullptr;
    std::atomic<bool> cancel_{false};
    std::shared_ptr<FitResult> pending_;  // written by the worker, read once it finished
    std::optional<FitResult> result_;
};

// Opens the window modally on picture. The fitted picture, or nullopt when the user
// cancelled or nothing fitted (the messages were shown).
std::optional<cDib> RunFitToFileSize(QWidget* parent, const cDib& picture, MessageBox& messages);
// The same, with the JPEG quality the picture fits at and the exact bytes measured, for
// callers that save it: saving at another quality would miss the limit.
std::optional<FitResult> RunFitToFileSizeResult(QWidget* parent, const cDib& picture, MessageBox& messages);

}  // namespace quorbel
