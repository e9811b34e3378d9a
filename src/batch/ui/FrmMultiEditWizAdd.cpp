#include "batch/ui/FrmMultiEditWizAdd.h"

#include <QEventLoop>
#include <QHBoxLayout>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <filesystem>

#include "batch/ui/Thumbnails.h"

namespace quorbel {

namespace {
constexpr int kThumb = 96;
constexpr const char* kRotations[] = {"Rotate Left", "Rotate Right", "Flip", "Horizontal", "None"};
}  // namespace

FrmMultiEditWizAdd::FrmMultiEditWizAdd(const std::string& folder, const std::vector<std::string>& names,
                                       QWidget* parent)
    : QDialog(parent), folder_(folder), names_(names) {
    setWindowTitle("Add pictures");
    lstPictures = new QListWidget;
    lstPictures->setViewMode(QListView::IconMode);
    lstPictures->setIconSize(QSize(kThumb, kThumb));
    lstPictures->setGridSize(QSize(kThumb + 24, kThumb + 32));
    lstPictures->setResizeMode(QListView::Adjust);
    lstPictures->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lstPictures->setMinimumSize(560, 360);
    for (const std::string& name : names_) {
        auto* item = new QListWidgetItem(QString::fromStdString(std::filesystem::path(name).filename().string()));
        item->setSizeHint(QSize(kThumb + 20, kThumb + 28));
        lstPictures->addItem(item);
    }
    auto* rotations = new QHBoxLayout;
    for (int i = 0; i < 5; ++i) {
        optRotation[i] = new QRadioButton(kRotations[i]);
        rotations->addWidget(optRotation[i]);
    }
    optRotation[4]->setChecked(true);
    cmdAdd = new QPushButton("Add");
    cmdCancel = new QPushButton("Cancel");
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdAdd);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lstPictures, 1);
    layout->addLayout(rotations);
    layout->addLayout(buttons);
    connect(cmdAdd, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

FrmMultiEditWizAdd::~FrmMultiEditWizAdd() {
    cancel_ = true;
    if (loader_.joinable()) loader_.join();
}

bool FrmMultiEditWizAdd::LoadThumbnails() {
    const int total = static_cast<int>(names_.size());
    QProgressDialog FrmMultiAdd("Loading images...", "Cancel", 0, total, this);
    FrmMultiAdd.setWindowTitle("Loading images...");
    FrmMultiAdd.setWindowModality(Qt::WindowModal);
    FrmMultiAdd.setMinimumDuration(300);
    connect(&FrmMultiAdd, &QProgressDialog::canceled, this, [this] { cancel_ = true; });
    QEventLoop loop;
    int loaded = 0;
    cancel_ = false;
    // Each thumbnail is posted back as it is made; the loop ends with the loader's last post,
    // which comes after every picture's.
    loader_ = std::thread([this, &loop, &loaded, &FrmMultiAdd] {
        for (size_t i = 0; i < names_.size() && !cancel_; ++i) {
            const QImage thumb = LoadThumbnail(std::filesystem::path(folder_) / names_[i], kThumb);
            QMetaObject::invokeMethod(
                this,
                [this, i, thumb, &loaded, &FrmMultiAdd] {
                    if (!thumb.isNull()) lstPictures->item(static_cast<int>(i))->setIcon(QPixmap::fromImage(thumb));
                    FrmMultiAdd.setValue(++loaded);
                },
                Qt::QueuedConnection);
        }
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    loader_.join();
    return !cancel_ && loaded == total;
}

std::vector<std::string> FrmMultiEditWizAdd::Picked() const {
    std::vector<std::string> picked;
    for (int i = 0; i < lstPictures->count(); ++i)
        if (lstPictures->item(i)->isSelected()) picked.push_back(names_[static_cast<size_t>(i)]);
    return picked;
}

std::string FrmMultiEditWizAdd::Rotation() const {
    for (int i = 0; i < 5; ++i)
        if (optRotation[i]->isChecked()) return kRotations[i];
    return "None";
}

}  // namespace quorbel
