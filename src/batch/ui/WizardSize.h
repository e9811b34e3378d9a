#pragma once
// The size step: the preset or a custom size and unit, how pictures fit, what is kept of
// their metadata, the file type and quality, and saving the job to a file.
#include <QWidget>
#include <string>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

namespace quorbel {

class MessageBox;
struct BatchJob;

class WizardSize : public QWidget {
    Q_OBJECT
public:
    explicit WizardSize(const std::string& jobWord);
    // The step's checks before leaving it; true to go on.
    bool Check(MessageBox& messages) const;
    void Fill(BatchJob& job) const;

signals:
    void saveJobPressed();

private:
    void PresetChosen();

    QCheckBox* Check1;
    QComboBox* cboSize;
    QLineEdit* txtWidth;
    QLineEdit* txtHeight;
    QComboBox* cboscale;
    QCheckBox* chkAspectRatio;
    QCheckBox* chkResample;
    QCheckBox* chkBestfit;
    QCheckBox* chkForceSize;
    QCheckBox* chkFitTurned;
    QCheckBox* chkRemoveGps;
    QCheckBox* chkRemoveMetadata;
    QCheckBox* chkConvertSrgb;
    QComboBox* cboImageType;
    QComboBox* cboQuality;
    QLineEdit* txtJPEGVal;
    QPushButton* btnSaveJob;
};

}  // namespace quorbel
