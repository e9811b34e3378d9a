#include "sizes/ui/frmMakeItFit.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDoubleValidator>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QThread>
#include <QVBoxLayout>

#include <cstdio>

#include "core/RuntimeError.h"
#include "core/text/NumericText.h"
#include "sizes/Units.h"

namespace quorbel {

namespace {

QString Q(std::string_view s) { return QString::fromUtf8(s.data(), static_cast<int>(s.size())); }
std::string S(const QString& s) { return s.toStdString(); }

QString TrialText(const FitTrial& t, FileSizeUnit unit) {
    char size[48];
    std::snprintf(size, sizeof size, "%.2f %s", static_cast<double>(t.bytes) / (unit == FileSizeUnit::MB ? 1e6 : 1e3),
                  unit == FileSizeUnit::MB ? "MB" : "KB");
    return QString("Tried %1 x %2 pixels at quality %3: %4").arg(t.width).arg(t.height).arg(t.quality).arg(size);
}

QLineEdit* NumberField(const char* name, QWidget* parent) {
    auto* e = new QLineEdit(parent);
    e->setObjectName(name);
    e->setMaximumWidth(90);
    return e;
}

}  // namespace

frmMakeItFit::frmMakeItFit(const cDib& picture, MessageBox& messages, QWidget* parent, double twipsPerPixel)
    : QDialog(parent), picture_(picture), messages_(messages),
      twipsPerPixel_(twipsPerPixel > 0 ? twipsPerPixel : 1440.0 / std::max(1, logicalDpiX())) {
    setObjectName("frmMakeItFit");
    setWindowTitle("Fit to File Size");

    txtFileSize_ = NumberField("txtFileSize", this);
    cboSizeScale_ = new QComboBox(this);
    cboSizeScale_->setObjectName("cboSizeScale");
    cboSizeScale_->addItems({"KB", "MB"});
    cboQuality_ = new QComboBox(this);
    cboQuality_->setObjectName("cboQuality");
    cboQuality_->setEditable(true);  // a number may be typed instead of a name
    cboQuality_->addItems({"Highest Quality", "Higher Quality", "Medium Quality", "Lower Quality", "Lowest Quality"});
    radQuality_ = new QRadioButton("Lower the &quality first (\"Quality\")", this);
    radQuality_->setObjectName("radQuality");
    radHW_ = new QRadioButton("Make the picture smaller &first (\"H+W\")", this);
    radHW_->setObjectName("radHW");
    auto* modes = new QButtonGroup(this);
    modes->addButton(radQuality_);
    modes->addButton(radHW_);

    auto* limitBox = new QGroupBox("File size", this);
    auto* limitForm = new QFormLayout(limitBox);
    auto* sizeRow = new QHBoxLayout;
    sizeRow->addWidget(txtFileSize_);
    sizeRow->addWidget(cboSizeScale_);
    sizeRow->addStretch(1);
    // Labels made here so their shortcuts reach the field (a row of a layout has no buddy).
    auto* lblFileSize = new QLabel("Largest file &size:", limitBox);
    lblFileSize->setBuddy(txtFileSize_);
    auto* lblQuality = new QLabel("Starting &JPEG quality:", limitBox);
    lblQuality->setBuddy(cboQuality_);
    limitForm->addRow(lblFileSize, sizeRow);
    limitForm->addRow(lblQuality, cboQuality_);
    limitForm->addRow(radQuality_);
    limitForm->addRow(radHW_);

    cboScale_ = new QComboBox(this);
    cboScale_->setObjectName("cboScale");
    for (const std::string_view unit : kUnitNames) cboScale_->addItem(Q(unit));
    txtMaxWidth_ = NumberField("txtMaxWidth", this);
    txtMaxHeight_ = NumberField("txtMaxHeight", this);
    txtMinWidth_ = NumberField("txtMinWidth", this);
    txtMinHeight_ = NumberField("txtMinHeight", this);

    auto* sizeBox = new QGroupBox("Picture size", this);
    auto* grid = new QGridLayout(sizeBox);
    grid->addWidget(new QLabel("Width", sizeBox), 0, 1);
    grid->addWidget(new QLabel("Height", sizeBox), 0, 2);
    auto* lblMax = new QLabel("Ma&ximum:", sizeBox);
    lblMax->setBuddy(txtMaxWidth_);
    auto* lblMin = new QLabel("Mi&nimum:", sizeBox);
    lblMin->setBuddy(txtMinWidth_);
    grid->addWidget(lblMax, 1, 0);
    grid->addWidget(txtMaxWidth_, 1, 1);
    grid->addWidget(txtMaxHeight_, 1, 2);
    grid->addWidget(lblMin, 2, 0);
    grid->addWidget(txtMinWidth_, 2, 1);
    grid->addWidget(txtMinHeight_, 2, 2);
    auto* lblUnit = new QLabel("&Unit:", sizeBox);
    lblUnit->setBuddy(cboScale_);
    grid->addWidget(lblUnit, 3, 0);
    grid->addWidget(cboScale_, 3, 1, 1, 2);
    lblPicture_ = new QLabel(QString("The picture is %1 x %2 pixels.").arg(picture.Width()).arg(picture.Height()), sizeBox);
    lblPicture_->setObjectName("lblPicture");
    grid->addWidget(lblPicture_, 4, 0, 1, 4);
    grid->setColumnStretch(3, 1);

    prgSearch_ = new QProgressBar(this);
    prgSearch_->setObjectName("prgSearch");
    prgSearch_->setRange(0, 100);
    prgSearch_->setValue(0);
    prgSearch_->setTextVisible(false);  // "0%" before any search reads as a stuck one
    lblStatus_ = new QLabel(this);
    lblStatus_->setObjectName("lblStatus");
    lblStatus_->setWordWrap(true);
    lblStatus_->setMinimumHeight(lblStatus_->fontMetrics().height() * 2);

    cmdGo_ = new QPushButton("&Go", this);
    cmdGo_->setObjectName("cmdGo");
    cmdGo_->setDefault(true);
    cmdCancel_ = new QPushButton("Cancel", this);
    cmdCancel_->setObjectName("cmdCancel");
    cmdCancel_->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdGo_);
    buttons->addWidget(cmdCancel_);

    auto* root = new QVBoxLayout(this);
    root->addWidget(limitBox);
    root->addWidget(sizeBox);
    root->addWidget(prgSearch_);
    root->addWidget(lblStatus_);
    root->addStretch(1);
    root->addLayout(buttons);

    setTabOrder(txtFileSize_, cboSizeScale_);
    setTabOrder(cboSizeScale_, cboQuality_);
    setTabOrder(cboQuality_, radQuality_);
    setTabOrder(radQuality_, radHW_);
    setTabOrder(radHW_, txtMaxWidth_);
    setTabOrder(txtMaxWidth_, txtMaxHeight_);
    setTabOrder(txtMaxHeight_, txtMinWidth_);
    setTabOrder(txtMinWidth_, txtMinHeight_);
    setTabOrder(txtMinHeight_, cboScale_);
    setTabOrder(cboScale_, cmdGo_);
    setTabOrder(cmdGo_, cmdCancel_);

    ShowFields(LoadFitSettings());

    connect(cmdGo_, &QPushButton::clicked, this, &frmMakeItFit::Go);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmMakeItFit::reject);
    connect(cboScale_, &QComboBox::currentTextChanged, this, &frmMakeItFit::ChangeUnit);
    for (QLineEdit* e : {txtFileSize_, txtMaxWidth_, txtMaxHeight_, txtMinWidth_, txtMinHeight_})
        connect(e, &QLineEdit::textChanged, this, &frmMakeItFit::CheckFields);
    CheckFields();
}

frmMakeItFit::~frmMakeItFit() { StopSearch(); }

void frmMakeItFit::ShowFields(const FitSettings& s) {
    txtFileSize_->setText(Q(s.fileSize));
    cboSizeScale_->setCurrentIndex(FileSizeUnitFromText(s.sizeScale) == FileSizeUnit::MB ? 1 : 0);
    cboQuality_->setCurrentText(Q(s.quality));
    (s.hw ? radHW_ : radQuality_)->setChecked(true);
    const int unit = cboScale_->findText(Q(s.scale), Qt::MatchFixedString);
    {
        const QSignalBlocker quiet(cboScale_);
        cboScale_->setCurrentIndex(unit >= 0 ? unit : cboScale_->findText("Pixels"));
    }
    unit_ = cboScale_->currentText();
    // Without a remembered maximum the picture's own size is the most it may be.
    auto inUnit = [this](int32_t pixels, bool isHeight) {
        return Q(PixelsToUnitText(pixels, S(unit_), twipsPerPixel_, isHeight));
    };
    txtMaxWidth_->setText(s.maxWidth.empty() ? inUnit(picture_.Width(), false) : Q(s.maxWidth));
    txtMaxHeight_->setText(s.maxHeight.empty() ? inUnit(picture_.Height(), true) : Q(s.maxHeight));
    txtMinWidth_->setText(Q(s.minWidth));
    txtMinHeight_->setText(Q(s.minHeight));
}

FitSettings frmMakeItFit::ReadFields() const {
    FitSettings s;
    s.fileSize = S(txtFileSize_->text().trimmed());
    s.sizeScale = S(cboSizeScale_->currentText());
    s.quality = S(cboQuality_->currentText());
    s.scale = S(cboScale_->currentText());
    s.maxWidth = S(txtMaxWidth_->text().trimmed());
    s.maxHeight = S(txtMaxHeight_->text().trimmed());
    s.minWidth = S(txtMinWidth_->text().trimmed());
    s.minHeight = S(txtMinHeight_->text().trimmed());
    s.hw = radHW_->isChecked();
    return s;
}

void frmMakeItFit::ChangeUnit() {
    // The four sizes follow the unit, through pixels, as the main window's fields do.
    const std::string from = S(unit_), to = S(cboScale_->currentText());
    const std::pair<QLineEdit*, bool> fields[] = {
        {txtMaxWidth_, false}, {txtMaxHeight_, true}, {txtMinWidth_, false}, {txtMinHeight_, true}};
    for (const auto& [field, isHeight] : fields) {
        const std::optional<double> value = ParseNumericText(S(field->text()));
        if (!value) continue;
        try {
            const int32_t pixels = UnitToPixels(*value, from, twipsPerPixel_, isHeight);
            field->setText(Q(PixelsToUnitText(pixels, to, twipsPerPixel_, isHeight)));
        } catch (const RuntimeError&) {
        }
    }
    unit_ = cboScale_->currentText();
}

void frmMakeItFit::CheckFields() {
    std::string badKey;
    const bool ok = MakeFitRequest(ReadFields(), twipsPerPixel_, &badKey).has_value();
    const std::pair<const char*, QLineEdit*> fields[] = {
        {"FileSize", txtFileSize_}, {"MaxWidth", txtMaxWidth_}, {"MaxHeight", txtMaxHeight_},
        {"MinWidth", txtMinWidth_}, {"MinHeight", txtMinHeight_}};
    for (const auto& [key, field] : fields)
        field->setStyleSheet(!ok && badKey == key ? "QLineEdit { background: #ffd8d8; }" : "");
    cmdGo_->setEnabled(ok && !Searching());
    if (!Searching()) lblStatus_->setText(ok ? QString() : "Please enter a number greater than zero in the marked field.");
}

void frmMakeItFit::SetSearching(bool searching) {
    for (QWidget* w : std::initializer_list<QWidget*>{txtFileSize_, cboSizeScale_, cboQuality_, radQuality_, radHW_,
                                                      cboScale_, txtMaxWidth_, txtMaxHeight_, txtMinWidth_, txtMinHeight_})
        w->setEnabled(!searching);
    cmdGo_->setEnabled(!searching);
    prgSearch_->setTextVisible(searching);
    cmdCancel_->setText(searching ? "&Stop" : "Cancel");
}

void frmMakeItFit::Go() {
    if (Searching()) return;
    const FitSettings settings = ReadFields();
    const std::optional<FitRequest> request = MakeFitRequest(settings, twipsPerPixel_);
    if (!request) return;
    SaveFitSettings(settings);

    cancel_ = false;
    result_.reset();
    pending_ = std::make_shared<FitResult>();
    prgSearch_->setValue(0);
    lblStatus_->setText("Searching...");
    SetSearching(true);

    const FileSizeUnit unit = request->unit;
    worker_ = QThread::create([this, req = *request, out = pending_, unit] {
        *out = FitToFileSize(picture_, req, [this, unit](const FitProgress& p) {
            QMetaObject::invokeMethod(this, [this, p, unit] {
                prgSearch_->setValue(p.percent);
                lblStatus_->setText(TrialText(p.trial, unit));
            }, Qt::QueuedConnection);
        }, &cancel_);
    });
    connect(worker_, &QThread::finished, this, &frmMakeItFit::OnFinished);
    worker_->start();
}

void frmMakeItFit::OnFinished() {
    if (!worker_) return;
    worker_->wait();
    worker_->deleteLater();
    worker_ = nullptr;
    std::shared_ptr<FitResult> done = std::move(pending_);
    SetSearching(false);
    CheckFields();
    if (done->status == FitStatus::Cancelled) {
        prgSearch_->setValue(0);
        lblStatus_->setText("Search stopped.");
        emit searchFinished();
        return;
    }
    prgSearch_->setValue(100);
    if (done->status == FitStatus::Fitted) {
        lblStatus_->setText(QString("Fits: %1 x %2 pixels at quality %3, %4 bytes.")
                                .arg(done->picture.Width()).arg(done->picture.Height())
                                .arg(done->quality).arg(static_cast<qlonglong>(done->jpeg.size())));
    }
    ShowFitMessages(*done, messages_);
    const bool fitted = done->status == FitStatus::Fitted;
    if (fitted) result_.emplace(std::move(*done));
    emit searchFinished();
    if (fitted) accept();
}

void frmMakeItFit::StopSearch() {
    if (!worker_) return;
    cancel_ = true;
    worker_->wait();  // a trial takes a fraction of a second
    delete worker_;
    worker_ = nullptr;
    pending_.reset();
}

void frmMakeItFit::reject() {
    if (Searching()) {
        cancel_ = true;  // the window stays open; OnFinished reports the stop
        return;
    }
    QDialog::reject();
}

std::optional<FitResult> RunFitToFileSizeResult(QWidget* parent, const cDib& picture, MessageBox& messages) {
    frmMakeItFit window(picture, messages, parent);
    if (window.exec() != QDialog::Accepted) return std::nullopt;
    return std::move(window.Result());
}

std::optional<cDib> RunFitToFileSize(QWidget* parent, const cDib& picture, MessageBox& messages) {
    std::optional<FitResult> result = RunFitToFileSizeResult(parent, picture, messages);
    if (!result) return std::nullopt;
    return std::move(result->picture);
}

}  // namespace quorbel
