#include "effects/ui/fFilter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <cctype>

#include "effects/ui/ColourPicker.h"
#include "imaging/ui/DibImage.h"
#include "effects/ui/PreviewBox.h"
#include "effects/ui/SliderRow.h"

namespace quorbel {
namespace {

constexpr int kPreviewWidth = 480;
constexpr int kPreviewHeight = 360;

}  // namespace

bool IsTifFile(std::string_view fileName) {
    const size_t dot = fileName.find_last_of('.');
    if (dot == std::string_view::npos || fileName.find('/', dot) != std::string_view::npos) return false;
    const std::string_view ext = fileName.substr(dot + 1);
    if (ext.size() != 3) return false;
    for (size_t i = 0; i < 3; ++i)
        if (std::tolower(static_cast<unsigned char>(ext[i])) != "tif"[i]) return false;
    return true;
}

fFilter::fFilter(const cDib& picture, std::string fileName, MessageBox& messages, QWidget* parent)
    : QDialog(parent), picture_(picture), fileName_(std::move(fileName)), messages_(messages),
      previewTimer_(new QTimer(this)) {
    setWindowTitle(tr("Filters and Effects"));

    picPreview = new PreviewBox;
    // The 3 × 3 filters and the scatterings work in pixels, so on a shrunken copy they
    // look stronger than they will; the middle at full scale shows them as they will be.
    chkActualSize = new QCheckBox(tr("Show the middle at actual size"));
    MakePreviewSource();

    cbFilter = new QComboBox;
    for (const FilterEntry& entry : FilterList()) cbFilter->addItem(QString::fromUtf8(entry.name));
    cbFilter->setMaxVisibleItems(kFilterCount);
    auto* filterLabel = new QLabel(tr("&Filter:"));
    filterLabel->setBuddy(cbFilter);

    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->addWidget(filterLabel, 0, 0);
    grid->addWidget(cbFilter, 0, 1, 1, 2);
    for (int i = 0; i < 3; ++i) sbParam[i] = new SliderRow(grid, 1 + i, this);
    for (int i = 0; i < 2; ++i) lblColor[i] = new ColourPicker(grid, 4 + i, this);

    lblHint = new QLabel;
    lblHint->setWordWrap(true);
    lblHint->setText(tr("Click the preview to pick the color to find; right-click it to pick the "
                        "color to replace it with."));

    cmdPreview = new QPushButton(tr("&Preview"));
    cmdApply = new QPushButton(tr("&Apply"));
    cmdClose = new QPushButton(tr("Close"));
    // Enter in a value box must not start a full-size Apply.
    for (QPushButton* b : {cmdPreview, cmdApply, cmdClose}) b->setAutoDefault(false);

    prgApply = new QProgressBar;
    prgApply->setRange(0, 100);
    QSizePolicy keep = prgApply->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    prgApply->setSizePolicy(keep);
    prgApply->hide();

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(prgApply, 1);
    buttons->addWidget(cmdPreview);
    buttons->addWidget(cmdApply);
    buttons->addWidget(cmdClose);

    auto* side = new QWidget;
    auto* sideLayout = new QVBoxLayout(side);
    sideLayout->setContentsMargins(0, 0, 0, 0);
    sideLayout->addLayout(grid);
    sideLayout->addWidget(lblHint);
    sideLayout->addStretch(1);
    sideLayout->addWidget(chkActualSize);

    auto* top = new QHBoxLayout;
    top->addWidget(picPreview, 1);
    top->addWidget(side);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addLayout(buttons);

    previewTimer_->setSingleShot(true);
    previewTimer_->setInterval(40);
    connect(previewTimer_, &QTimer::timeout, this, &fFilter::Preview);
    connect(cbFilter, &QComboBox::currentIndexChanged, this, &fFilter::OnFilterChosen);
    for (SliderRow* row : sbParam)
        connect(row, &SliderRow::valueChanged, previewTimer_, qOverload<>(&QTimer::start));
    for (ColourPicker* c : lblColor)
        connect(c, &ColourPicker::colourChanged, previewTimer_, qOverload<>(&QTimer::start));
    connect(picPreview, &PreviewBox::picked, this, &fFilter::OnPicked);
    connect(chkActualSize, &QCheckBox::toggled, this, [this] {
        MakePreviewSource();
        Preview();
    });
    connect(cmdPreview, &QPushButton::clicked, this, &fFilter::Preview);
    connect(cmdApply, &QPushButton::clicked, this, &fFilter::Apply);
    connect(cmdClose, &QPushButton::clicked, this, &fFilter::reject);
    connect(&job_, &PictureJob::progress, prgApply, &QProgressBar::setValue);
    connect(&job_, &PictureJob::finished, this, &fFilter::OnApplyFinished);

    side_ = side;
    OnFilterChosen(0);
}

void fFilter::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (sideSized_) return;
    sideSized_ = true;
    // The side keeps the size of the fullest entry, so the window does not jump about
    // while the user goes through the list. Measured here: before the first show the
    // controls do not count in the layout yet.
    const int chosen = FilterIndex();
    const FilterSettings settings = Settings();
    QSize fullest;
    for (int i = 0; i < kFilterCount; ++i) {
        OnFilterChosen(i);
        for (QObject* child : side_->layout()->children())
            if (auto* inner = qobject_cast<QLayout*>(child)) inner->invalidate();
        side_->layout()->invalidate();
        fullest = fullest.expandedTo(side_->sizeHint());
    }
    side_->setMinimumSize(fullest);
    OnFilterChosen(chosen);
    for (int i = 0; i < 3; ++i) sbParam[i]->SetValue(settings.params[i]);
    adjustSize();
}

fFilter::~fFilter() {
    job_.Cancel();
    job_.Wait();
}

void fFilter::SelectFilter(int index) {
    if (index >= 0 && index < kFilterCount) cbFilter->setCurrentIndex(index);
}

int fFilter::FilterIndex() const { return cbFilter->currentIndex(); }

FilterSettings fFilter::Settings() const {
    FilterSettings s;
    for (int i = 0; i < 3; ++i) s.params[i] = sbParam[i]->Value();
    for (int i = 0; i < 2; ++i) s.colours[i] = lblColor[i]->Colour();
    return s;
}

cDib fFilter::TakeResult() {
    applied_ = false;
    return std::move(working_);
}

void fFilter::OnFilterChosen(int index) {
    if (index < 0 || index >= kFilterCount) return;
    const FilterEntry& entry = FilterList()[index];
    for (int i = 0; i < 3; ++i) {
        const FilterParam& p = entry.params[i];
        sbParam[i]->Set(QString::fromUtf8(p.caption), p.minimum, p.maximum, p.initial);
        sbParam[i]->SetVisible(i < entry.paramCount);
    }
    lblColor[0]->SetCaption(entry.colourCount == 1 ? tr("Color:") : tr("Find color:"));
    lblColor[1]->SetCaption(tr("Replace with:"));
    for (int i = 0; i < 2; ++i) lblColor[i]->SetVisible(i < entry.colourCount);
    picPreview->SetPicking(entry.picksFromPreview);
    lblHint->setVisible(entry.picksFromPreview);
    cmdPreview->setEnabled(index > 0);
    cmdApply->setEnabled(index > 0);
    previewTimer_->start();
}

void fFilter::Preview() {
    previewTimer_->stop();
    const int index = FilterIndex();
    if (index <= 0) {
        picPreview->SetPicture(previewSource_);
        return;
    }
    cDib result = CopyDib(previewSource_);
    cDIBFilter engine;
    if (ApplyFilter(engine, result, index, Settings())) picPreview->SetPicture(result);
}

void fFilter::Apply() {
    const int index = FilterIndex();
    if (index <= 0 || Busy()) return;
    if (IsTifFile(fileName_)) {
        // The same box the main window shows for this refusal, tick included.
        messages_.Ask({kTifFilterNoText, {}, MsgButtons::OK, MsgIcon::None, true});
        emit applyFinished(false);
        return;
    }
    const FilterSettings settings = Settings();
    prgApply->setFormat(cbFilter->currentText() + QStringLiteral(": %p%"));
    SetBusy(true);
    job_.Start(Current(), [index, settings](const cDib& source, cDib& result, const ProgressFn& progress) {
        result = CopyDib(source);
        cDIBFilter engine;
        engine.Progress = progress;
        return ApplyFilter(engine, result, index, settings);
    });
}

void fFilter::OnApplyFinished(bool done) {
    SetBusy(false);
    if (done) {
        working_ = job_.TakeResult();
        applied_ = true;
        // The preview now shows the picture as it is; the next change previews on top of it.
        MakePreviewSource();
    } else if (!job_.Error().isEmpty() && !closeWhenDone_) {
        messages_.Show(job_.Error().toStdString(), MsgButtons::OK, MsgIcon::Critical);
    }
    emit applyFinished(done);
    if (closeWhenDone_) reject();
}

void fFilter::reject() {
    if (Busy()) {
        // Close during an Apply stops it; the window goes when the worker has let go.
        closeWhenDone_ = true;
        job_.Cancel();
        return;
    }
    done(applied_ ? Accepted : Rejected);
}

void fFilter::MakePreviewSource() {
    previewSource_ = chkActualSize->isChecked() ? CropCentre(Current(), kPreviewWidth, kPreviewHeight)
                                                : MakePreview(Current(), kPreviewWidth, kPreviewHeight);
    picPreview->SetPicture(previewSource_);
    picPreview->SetBefore(previewSource_);
}

void fFilter::OnPicked(QPoint pixel, Qt::MouseButton button) {
    if (Busy()) return;
    // Colours come from the picture itself, not from the filtered preview.
    const ColorRef colour = PixelColour(previewSource_, pixel.x(), pixel.y());
    if (button == Qt::LeftButton) lblColor[0]->SetColour(colour);
    if (button == Qt::RightButton) lblColor[1]->SetColour(colour);
}

void fFilter::SetBusy(bool busy) {
    const bool live = !busy && FilterIndex() > 0;
    cbFilter->setEnabled(!busy);
    chkActualSize->setEnabled(!busy);
    for (SliderRow* row : sbParam) row->SetEnabled(!busy);
    for (ColourPicker* c : lblColor) c->SetEnabled(!busy);
    cmdPreview->setEnabled(live);
    cmdApply->setEnabled(live);
    prgApply->setValue(0);
    prgApply->setVisible(busy);
    if (busy) previewTimer_->stop();
}

std::optional<cDib> RunFilterDialog(QWidget* parent, const cDib& picture, const std::string& fileName,
                                    MessageBox& messages, int initialFilter) {
    if (!picture.hDIB()) return std::nullopt;
    fFilter window(picture, fileName, messages, parent);
    window.SelectFilter(initialFilter);
    window.exec();
    if (!window.Applied()) return std::nullopt;
    return window.TakeResult();
}

}  // namespace quorbel
