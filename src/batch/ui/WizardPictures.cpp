#include "batch/ui/WizardPictures.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <filesystem>

#include "batch/BatchJob.h"
#include "batch/BatchRun.h"
#include "batch/ui/FrmMultiEditWizAdd.h"
#include "batch/ui/Thumbnails.h"
#include "batch/ui/WizardText.h"
#include "imaging/ui/DibImage.h"

namespace quorbel {

namespace fs = std::filesystem;
using namespace wizard;

namespace {
constexpr int kPreviewBox = 220;

// The picture files among paths: a folder gives its pictures, a file passes the filter or not.
std::vector<std::string> PicturesAmong(const std::vector<std::string>& paths, const PictureFilter& filter) {
    std::vector<std::string> names;
    for (const std::string& path : paths) {
        std::error_code ec;
        if (fs::is_directory(path, ec)) {
            for (const fs::path& file : ListPictures(path, filter)) names.push_back(file.string());
        } else if (filter.Admits(path)) {
            names.push_back(path);
        }
    }
    return names;
}

std::vector<std::string> NamesIn(const std::string& folder, const PictureFilter& filter) {
    std::vector<std::string> names;
    for (const fs::path& file : ListPictures(folder, filter)) names.push_back(file.filename().string());
    return names;
}
}  // namespace

WizardPictures::WizardPictures(MessageBox& messages, const std::string& jobWord) : messages_(messages) {
    lvDragDrop = Named(new QTreeWidget, "lvDragDrop");
    lvDragDrop->setHeaderLabels({"Images added:", "Rotation:", "Effect:"});
    lvDragDrop->setRootIsDecorated(false);
    lvDragDrop->header()->setStretchLastSection(false);
    lvDragDrop->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    lvDragDrop->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    lvDragDrop->header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    lvDragDrop->setAcceptDrops(false);  // drops go to the window
    cmdAdd = Named(new QPushButton("Add"), "cmdAdd");
    btnRemove = Named(new QPushButton("Remove"), "btnRemove");
    btnRemoveAll = Named(new QPushButton("Remove All"), "btnRemoveAll");
    btnMoveUp = Named(new QPushButton("Move Up"), "btnMoveUp");
    btnMoveDown = Named(new QPushButton("Move Down"), "btnMoveDown");
    auto* listButtons = new QHBoxLayout;
    for (QPushButton* b : {cmdAdd, btnRemove, btnRemoveAll, btnMoveUp, btnMoveDown}) listButtons->addWidget(b);

    optRotatLeft = Named(new QRadioButton("Rotate Left"), "optRotatLeft");
    optRotateRight = Named(new QRadioButton("Rotate Right"), "optRotateRight");
    OptFlipImage = Named(new QRadioButton("Flip Image"), "OptFlipImage");
    optFlipHorizontal = Named(new QRadioButton("Flip Horizontal"), "optFlipHorizontal");
    Option1 = Named(new QRadioButton("None"), "Option1");
    Option1->setChecked(true);
    chkRotateAll = Named(new QCheckBox("Rotate All Images"), "chkRotateAll");
    auto* rotation = new QGroupBox("Rotation");
    auto* rotationLayout = new QVBoxLayout(rotation);
    auto* group = new QButtonGroup(this);
    const std::pair<QRadioButton*, const char*> rotations[] = {{optRotatLeft, "Rotate Left"},
                                                               {optRotateRight, "Rotate Right"},
                                                               {OptFlipImage, "Flip"},
                                                               {optFlipHorizontal, "Horizontal"},
                                                               {Option1, "None"}};
    for (auto [button, word] : rotations) {
        group->addButton(button);
        rotationLayout->addWidget(button);
        connect(button, &QRadioButton::clicked, this, [this, word = word] { RotationChosen(word); });
    }
    rotationLayout->addWidget(chkRotateAll);

    cboEffect = Named(new QComboBox, "cboEffect");
    for (std::string_view e : kEffectWords) cboEffect->addItem(Q(e));
    // Editable only so that a "Pixalate" row can show as "Pixelate"; the user picks from the list.
    cboEffect->setEditable(true);
    cboEffect->lineEdit()->setReadOnly(true);
    ChkEffectApplyAll = Named(new QCheckBox("Apply to all images"), "ChkEffectApplyAll");
    cboPreviewMode = Named(new QComboBox, "cboPreviewMode");
    for (std::string_view m : kPreviewModes) cboPreviewMode->addItem(Q(m));
    Canvas = Named(new QLabel, "Canvas");
    Canvas->setFixedSize(kPreviewBox, kPreviewBox);
    Canvas->setAlignment(Qt::AlignCenter);
    Canvas->setFrameShape(QFrame::StyledPanel);
    txtTitle = Named(new QLineEdit, "txtTitle");
    txtCaption = Named(new QLineEdit, "txtCaption");
    btnAddCaption = Named(new QPushButton("Add Caption"), "btnAddCaption");

    auto* side = new QVBoxLayout;
    side->addWidget(Canvas);
    side->addWidget(cboPreviewMode);
    side->addWidget(rotation);
    side->addWidget(new QLabel("Effect:"));
    side->addWidget(cboEffect);
    side->addWidget(ChkEffectApplyAll);
    side->addStretch(1);
    auto* captions = new QHBoxLayout;
    captions->addWidget(new QLabel("Title:"));
    captions->addWidget(txtTitle);
    captions->addWidget(new QLabel("Caption:"));
    captions->addWidget(txtCaption, 1);
    captions->addWidget(btnAddCaption);
    auto* left = new QVBoxLayout;
    left->addWidget(lvDragDrop, 1);
    left->addLayout(listButtons);
    left->addLayout(captions);
    const bool slideShow = jobWord == "Web" || jobWord == "CD";
    for (QWidget* w : {static_cast<QWidget*>(txtTitle), static_cast<QWidget*>(txtCaption),
                       static_cast<QWidget*>(btnAddCaption)})
        w->setEnabled(slideShow);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(side);

    connect(lvDragDrop, &QTreeWidget::itemSelectionChanged, this, &WizardPictures::RowSelected);
    connect(cmdAdd, &QPushButton::clicked, this, &WizardPictures::AddPressed);
    connect(btnRemove, &QPushButton::clicked, this, [this] {
        if (list_.RemoveSelected(messages_)) RefreshList();
    });
    connect(btnRemoveAll, &QPushButton::clicked, this, [this] {
        if (list_.RemoveAll(messages_)) RefreshList();
    });
    connect(btnMoveUp, &QPushButton::clicked, this, [this] {
        list_.MoveUp();
        RefreshList();
    });
    connect(btnMoveDown, &QPushButton::clicked, this, [this] {
        list_.MoveDown();
        RefreshList();
    });
    connect(cboEffect, &QComboBox::activated, this, &WizardPictures::EffectChosen);
    connect(cboPreviewMode, &QComboBox::currentIndexChanged, this, &WizardPictures::ShowPreview);
    connect(btnAddCaption, &QPushButton::clicked, this, [this] {
        // The title and caption travel together in the row's caption, the title first.
        const QString title = txtTitle->text(), caption = txtCaption->text();
        list_.SetCaption(S(title.isEmpty() ? caption : title + "\n" + caption));
    });
}

bool WizardPictures::UseFolder(const std::string& folder, bool autoLoad) {
    const bool fill = autoLoad && (list_.Rows().empty() || folder != folder_);
    folder_ = folder;
    if (fill) FillFromFolder();
    return fill;
}

void WizardPictures::SetFilter(const PictureFilter& filter, bool refill) {
    filter_ = filter;
    if (refill) FillFromFolder();
}

void WizardPictures::Clear() {
    fill_.Drop();
    list_.SetRows({});
    RefreshList();
}

void WizardPictures::FillFromFolder() {
    fill_.Run([folder = folder_, filter = filter_] { return NamesIn(folder, filter); },
              [this](std::vector<std::string> names) {
                  std::vector<BatchPicture> rows;
                  for (std::string& name : names) rows.push_back({std::move(name), "None", "None", {}});
                  list_.SetRows(std::move(rows));
                  RefreshList();
              });
}

void WizardPictures::RefreshList() {
    {
        const QSignalBlocker block(lvDragDrop);
        lvDragDrop->clear();
        for (const BatchPicture& row : list_.Rows())
            lvDragDrop->addTopLevelItem(new QTreeWidgetItem({PathQ(row.file), Q(row.rotation), Q(row.effect)}));
        if (auto selected = list_.Selected())
            lvDragDrop->setCurrentItem(lvDragDrop->topLevelItem(static_cast<int>(*selected)));
    }
    emit listChanged();
    ShowPreview();
}

void WizardPictures::RowSelected() {
    const int index = lvDragDrop->indexOfTopLevelItem(lvDragDrop->currentItem());
    list_.Select(index >= 0 ? std::optional<size_t>(static_cast<size_t>(index)) : std::nullopt);
    if (!list_.Selected()) return;
    const BatchPicture& row = list_.Rows()[*list_.Selected()];
    QRadioButton* option = Option1;
    switch (OptionForRotation(row.rotation)) {
        case RotationOption::Flip: option = OptFlipImage; break;
        case RotationOption::RotateLeft: option = optRotatLeft; break;
        case RotationOption::RotateRight: option = optRotateRight; break;
        case RotationOption::None: break;
    }
    option->setChecked(true);
    const QSignalBlocker block(cboEffect);
    cboEffect->setEditText(Q(EffectBoxText(row.effect)));
    const std::string& caption = row.caption;
    const size_t cut = caption.find('\n');
    txtTitle->setText(Q(cut == std::string::npos ? std::string() : caption.substr(0, cut)));
    txtCaption->setText(Q(cut == std::string::npos ? caption : caption.substr(cut + 1)));
    ShowPreview();
}

void WizardPictures::ShowPreview() {
    const auto selected = list_.Selected();
    const std::string mode = S(cboPreviewMode->currentText());
    const PreviewPlan plan = selected ? PlanPreview(mode, list_.Rows()[*selected]) : PreviewPlan{};
    if (!plan.picture) {
        preview_.Drop();
        Canvas->clear();
        return;
    }
    const BatchPicture row = list_.Rows()[*selected];
    const fs::path file = fs::path(folder_) / row.file;
    preview_.Run(
        [file, plan, row] {
            cDib picture = LoadSmallPicture(file, kPreviewBox);
            if (picture.hDIB() && plan.rotation) ApplyBatchRotation(picture, row.rotation);
            if (picture.hDIB() && plan.effect) ApplyBatchEffect(picture, row.effect);
            return picture.hDIB() ? ToQImage(picture) : QImage();
        },
        [this](const QImage& image) {
            if (image.isNull()) Canvas->clear();
            else Canvas->setPixmap(QPixmap::fromImage(image));
        });
}

void WizardPictures::RotationChosen(const char* word) {
    list_.SetRotation(word, chkRotateAll->isChecked());
    RefreshList();
}

void WizardPictures::EffectChosen() {
    list_.SetEffect(S(cboEffect->currentText()), ChkEffectApplyAll->isChecked());
    RefreshList();
}

void WizardPictures::AddPressed() {
    scan_.Run([folder = folder_, filter = filter_] { return NamesIn(folder, filter); },
              [this, folder = folder_](const std::vector<std::string>& names) {
                  const std::vector<std::string> missing = list_.AddCandidates(names, messages_);
                  if (missing.empty()) return;
                  FrmMultiEditWizAdd picker(folder, missing, this);
                  if (!picker.LoadThumbnails()) return;
                  if (picker.exec() != QDialog::Accepted) return;
                  list_.Add(picker.Picked(), picker.Rotation());
                  RefreshList();
              });
}

void WizardPictures::AddDropped(const std::vector<std::string>& paths) {
    scan_.Run([paths, filter = filter_] { return PicturesAmong(paths, filter); },
              [this](const std::vector<std::string>& names) {
                  list_.Add(names);
                  RefreshList();
              });
}

void WizardPictures::Fill(BatchJob& job) const {
    const std::string effect = S(cboEffect->currentText());
    job.effect = effect == "Pixelate" ? "Pixalate" : effect;
    job.effectAll = ChkEffectApplyAll->isChecked();
    job.rotation = optRotatLeft->isChecked()        ? "Rotate Left"
                   : optRotateRight->isChecked()    ? "Rotate Right"
                   : OptFlipImage->isChecked()      ? "Flip"
                   : optFlipHorizontal->isChecked() ? "Horizontal"
                                                    : "None";
    job.rotateAll = chkRotateAll->isChecked();
    job.pictures = list_.Rows();
}

}  // namespace quorbel
