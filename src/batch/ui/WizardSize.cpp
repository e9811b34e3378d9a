#include "batch/ui/WizardSize.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "batch/BatchJob.h"
#include "batch/WizardSteps.h"
#include "batch/ui/WizardText.h"
#include "core/text/NumericText.h"
#include "sizes/JpegQuality.h"
#include "sizes/SizePresets.h"
#include "sizes/Units.h"

namespace quorbel {

using namespace wizard;

namespace {
constexpr const char* kQualityNames[] = {"Highest Quality", "Higher Quality", "Medium Quality", "Lower Quality",
                                         "Lowest Quality"};
}  // namespace

WizardSize::WizardSize(const std::string& jobWord) {
    Check1 = Named(new QCheckBox("I want to set a custom size"), "Check1");
    cboSize = Named(new QComboBox, "cboSize");
    EnsurePresets();
    for (const std::string& key : PresetKeys()) cboSize->addItem(Q(key));
    if (cboSize->findText("Original Size", Qt::MatchFixedString) < 0) cboSize->insertItem(0, "Original Size");
    cboSize->setCurrentIndex(cboSize->findText("Original Size", Qt::MatchFixedString));
    txtWidth = Named(new QLineEdit("640"), "txtWidth");
    txtHeight = Named(new QLineEdit("480"), "txtHeight");
    cboscale = Named(new QComboBox, "cboscale");
    for (std::string_view u : kUnitNames) cboscale->addItem(Q(u));
    cboscale->setCurrentText("Pixels");
    chkAspectRatio = Named(new QCheckBox("Keep aspect ratio"), "chkAspectRatio");
    chkResample = Named(new QCheckBox("Resample"), "chkResample");
    chkBestfit = Named(new QCheckBox("Best Fit"), "chkBestfit");
    chkForceSize = Named(new QCheckBox("Force resize if source image size is smaller."), "chkForceSize");
    chkFitTurned = Named(new QCheckBox("Fit portrait pictures into the box turned"), "chkFitTurned");
    for (QCheckBox* c : {chkAspectRatio, chkResample, chkBestfit, chkFitTurned}) c->setChecked(true);
    chkRemoveGps = Named(new QCheckBox("Remove location data (GPS)"), "chkRemoveGps");
    chkRemoveMetadata = Named(new QCheckBox("Remove all metadata"), "chkRemoveMetadata");
    chkConvertSrgb = Named(new QCheckBox("Convert colours to sRGB"), "chkConvertSrgb");
    BatchJob sharing;
    sharing.type = jobWord;
    SetSharingDefaults(sharing);
    chkRemoveGps->setChecked(sharing.removeGps);
    chkRemoveMetadata->setChecked(sharing.removeMetadata);
    chkConvertSrgb->setChecked(sharing.convertToSrgb);
    cboImageType = Named(new QComboBox, "cboImageType");
    for (std::string_view t : kOutputTypeTexts) cboImageType->addItem(Q(t));
    // Few programs open HEIC pictures, so keeping the type writes them as JPEG; say so.
    auto* keepNote = new QLabel("HEIC and HEIF pictures are written as JPEG (*.jpg), which every program opens.");
    keepNote->setWordWrap(true);
    connect(cboImageType, &QComboBox::currentIndexChanged, keepNote,
            [keepNote](int index) { keepNote->setVisible(index == 0); });
    cboQuality = Named(new QComboBox, "cboQuality");
    for (const char* q : kQualityNames) cboQuality->addItem(q);
    txtJPEGVal = Named(new QLineEdit("95"), "txtJPEGVal");
    btnSaveJob = Named(new QPushButton("Save job..."), "btnSaveJob");

    auto* form = new QFormLayout;
    form->addRow(Check1);
    form->addRow("Size:", cboSize);
    form->addRow("Width:", txtWidth);
    form->addRow("Height:", txtHeight);
    form->addRow("Unit:", cboscale);
    auto* boxes = new QGridLayout;
    boxes->addWidget(chkAspectRatio, 0, 0);
    boxes->addWidget(chkResample, 0, 1);
    boxes->addWidget(chkBestfit, 1, 0);
    boxes->addWidget(chkForceSize, 1, 1);
    boxes->addWidget(chkFitTurned, 2, 0, 1, 2);
    boxes->addWidget(chkRemoveGps, 3, 0);
    boxes->addWidget(chkRemoveMetadata, 3, 1);
    boxes->addWidget(chkConvertSrgb, 4, 0);
    form->addRow(boxes);
    form->addRow("Image type:", cboImageType);
    form->addRow(keepNote);
    form->addRow("Quick select:", cboQuality);
    form->addRow("JPEG (*.jpg) Quality", txtJPEGVal);
    auto* save = new QHBoxLayout;
    save->addStretch(1);
    save->addWidget(btnSaveJob);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addStretch(1);
    layout->addLayout(save);

    connect(cboSize, &QComboBox::activated, this, &WizardSize::PresetChosen);
    connect(Check1, &QCheckBox::toggled, this, [this](bool on) {
        if (on) cboSize->setCurrentText("Custom");
        PresetChosen();
    });
    connect(cboQuality, &QComboBox::activated, this, [this] {
        txtJPEGVal->setText(QString::number(JpegQualityFromName(S(cboQuality->currentText()))));
    });
    connect(btnSaveJob, &QPushButton::clicked, this, &WizardSize::saveJobPressed);
    PresetChosen();
}

void WizardSize::PresetChosen() {
    const std::string name = S(cboSize->currentText());
    const SpecialPreset special = ClassifyPreset(name);
    {
        const QSignalBlocker block(Check1);
        Check1->setChecked(special == SpecialPreset::Custom);
    }
    const bool typed = special != SpecialPreset::OriginalSize;
    for (QWidget* w : {static_cast<QWidget*>(txtWidth), static_cast<QWidget*>(txtHeight),
                       static_cast<QWidget*>(cboscale)})
        w->setEnabled(typed);
    if (special == SpecialPreset::None)
        if (auto preset = ReadPreset(name)) {
            txtWidth->setText(Q(preset->width));
            txtHeight->setText(Q(preset->height));
            cboscale->setCurrentText(Q(preset->unit));
        }
}

bool WizardSize::Check(MessageBox& messages) const {
    const SizeStepValues v{S(txtWidth->text()), S(txtHeight->text()), S(cboImageType->currentText()),
                           S(cboQuality->currentText()), S(txtJPEGVal->text())};
    return CheckSizeStep(v, messages);
}

void WizardSize::Fill(BatchJob& job) const {
    job.preset = S(cboSize->currentText());
    job.width = ParseNumericText(S(txtWidth->text())).value_or(0);
    job.height = ParseNumericText(S(txtHeight->text())).value_or(0);
    job.unit = S(cboscale->currentText());
    job.keepAspect = chkAspectRatio->isChecked();
    job.resample = chkResample->isChecked();
    job.bestFit = chkBestfit->isChecked();
    job.forceResize = chkForceSize->isChecked();
    job.fitTurned = chkFitTurned->isChecked();
    job.removeGps = chkRemoveGps->isChecked();
    job.removeMetadata = chkRemoveMetadata->isChecked();
    job.convertToSrgb = chkConvertSrgb->isChecked();
    job.outputType = ParseOutputType(S(cboImageType->currentText())).value_or(OutputType::KeepOriginal);
    job.quality = S(txtJPEGVal->text());
}

}  // namespace quorbel
