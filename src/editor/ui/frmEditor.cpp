#include "editor/ui/frmEditor.h"

#include <QApplication>
#include <filesystem>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QMenuBar>
#include <QScreen>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

#include "settings/AppIni.h"
#include "editor/Prompts.h"
#include "sizes/SizePresets.h"
#include "sizes/Units.h"
#include "editor/EditorTexts.h"
#include "editor/ui/PictureCanvas.h"
#include "editor/ui/WaitWindow.h"

namespace quorbel {
namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }
QString Q(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

void SetComboText(QComboBox* combo, const QString& text) {
    const QSignalBlocker block(combo);
    const int index = combo->findText(text, Qt::MatchFixedString);
    if (index >= 0) combo->setCurrentIndex(index);
    else if (combo->isEditable()) combo->setEditText(text);
}

}  // namespace

frmEditor::frmEditor(UndoHistory& undo, std::string helpFolder, const WindowsMaker& makeWindows, QWidget* parent)
    : QMainWindow(parent),
      helpFolder_(std::move(helpFolder)),
      messages_(this),
      dialogs_(this),
      desktop_(messages_),
      tasks_(this) {
    setWindowTitle("Quorbel");
    windows_ = makeWindows ? makeWindows(*this) : std::make_unique<EditorWindows>();
    model_ = std::make_unique<EditorModel>(
        EditorServices{messages_, dialogs_, desktop_, *windows_, tasks_, undo, helpFolder_});
    model_->SetView(this);

    Canvas = new PictureCanvas(this);
    Canvas->onPainted = [this] {
        if (onPictureShown) {
            auto shown = std::move(onPictureShown);
            onPictureShown = nullptr;
            shown();
        }
    };
    auto* central = new QWidget(this);
    auto* layout = new QHBoxLayout(central);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(BuildSizePanel());
    layout->addWidget(Canvas, 1);
    setCentralWidget(central);
    BuildMenus();
    BuildToolBar();

    lblStatus = new QLabel(this);
    lblZoom = new QLabel(Q(kZoomReset), this);
    statusBar()->addWidget(lblStatus, 1);
    statusBar()->addPermanentWidget(lblZoom);
    wait_ = new WaitWindow(this);

    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        model_->SetScreen(area.width(), area.height(), 1440.0 / screen->logicalDotsPerInch());
    }
    model_->Load();  // writes the shipped presets on a first start
    for (const std::string& key : PresetKeys()) cboQuickSize->addItem(Q(key));
    FieldsChanged();
    RestorePosition();
    UpdateEnabled();
}

frmEditor::~frmEditor() { model_->SetView(nullptr); }

void frmEditor::Command(std::string_view key) {
    model_->Dispatch(key);
    UpdateEnabled();
}

QAction* frmEditor::AddCommand(QMenu* menu, const QString& text, std::string_view key, const QKeySequence& shortcut) {
    QAction* action = menu->addAction(text);
    if (!shortcut.isEmpty()) action->setShortcut(shortcut);
    const std::string command(key);
    connect(action, &QAction::triggered, this, [this, command] { Command(command); });
    return action;
}

void frmEditor::BuildMenus() {
    QMenu* file = menuBar()->addMenu("&File");
    AddCommand(file, "&Open...", cmd::Browse, QKeySequence::Open);
    pictureActions_ << AddCommand(file, "Save &as...", cmd::SaveAs, QKeySequence(Qt::CTRL | Qt::Key_S));
    mnuRecent_ = file->addMenu("&Recent pictures");
    file->addSeparator();
    pictureActions_ << AddCommand(file, "&Previous picture in folder", cmd::Previous, QKeySequence(Qt::Key_PageUp));
    pictureActions_ << AddCommand(file, "&Next picture in folder", cmd::Next, QKeySequence(Qt::Key_PageDown));
    pictureActions_ << AddCommand(file, "Set as &wallpaper", cmd::Wallpaper);
    file->addSeparator();
    AddCommand(file, "E&xit", cmd::Exit, QKeySequence(Qt::CTRL | Qt::Key_Q));

    QMenu* edit = menuBar()->addMenu("&Edit");
    pictureActions_ << AddCommand(edit, "&Undo", cmd::Undo, QKeySequence::Undo);
    pictureActions_ << AddCommand(edit, "&Redo", cmd::Redo, QKeySequence(Qt::CTRL | Qt::Key_Y));
    AddCommand(edit, "&Paste", cmd::Paste, QKeySequence::Paste);
    edit->addSeparator();
    pictureActions_ << AddCommand(edit, "Rotate &left", cmd::RotateLeft, QKeySequence(Qt::CTRL | Qt::Key_L));
    pictureActions_ << AddCommand(edit, "Rotate &right", cmd::RotateRight, QKeySequence(Qt::CTRL | Qt::Key_R));
    edit->addSeparator();
    AddCommand(edit, "&Sizes...", cmd::CustomSizes);

    QMenu* effects = menuBar()->addMenu("Effec&ts");
    static constexpr std::pair<const char*, std::string_view> kQuick[] = {
        {"&Blur", "mnuBlur"},         {"&Sharpen", "mnuSharpen"},   {"S&often", "mnuSoften"},
        {"&Diffuse", "mnuDiffuse"},   {"Des&peckle", "mnuDespeckle"}, {"Despeckle &more", "mnuDespeckleMore"},
        {"&Contour", "mnuContour"},   {"D&ilate", "mnuDilate"},     {"&Erode", "mnuErode"},
        {"&Greys", "mnuGreys"},       {"&Negative", "mnuNegative"}, {"N&oise", "mnuNoise"},
        {"O&utline", "mnuOutline"},   {"&Relieve", "mnuRelieve"},   {"Sepi&a", "mnuSepia"},
    };
    for (const auto& [text, key] : kQuick) pictureActions_ << AddCommand(effects, text, key);
    effects->addSeparator();
    pictureActions_ << AddCommand(effects, "Brightness...", cmd::Brighten);
    pictureActions_ << AddCommand(effects, "Contrast...", cmd::Contrast);
    pictureActions_ << AddCommand(effects, "Colour balance...", cmd::ColourBalance);
    pictureActions_ << AddCommand(effects, "Sharpen...", cmd::SharpenDialog);
    pictureActions_ << AddCommand(effects, "Soften...", cmd::SoftenDialog);
    pictureActions_ << AddCommand(effects, "Filters...", cmd::ImageEditor, QKeySequence(Qt::CTRL | Qt::Key_F));
    pictureActions_ << AddCommand(effects, "Warp...", cmd::Warp);
    pictureActions_ << AddCommand(effects, "Fisheye...", cmd::Fisheye);

    QMenu* share = menuBar()->addMenu("&Share");
    AddCommand(share, "&Batch resize pictures...", cmd::QuickOpt, QKeySequence(Qt::CTRL | Qt::Key_B));
    AddCommand(share, "&Web slide show...", cmd::SlideShow);
    AddCommand(share, "Slide show on &CD/DVD...", cmd::DiscSlideShow);
    AddCommand(share, "E-mail &multiple pictures...", cmd::MultiplePictures);
    pictureActions_ << AddCommand(share, "&E-mail this picture...", cmd::Email);
    pictureActions_ << AddCommand(share, "&Fit to file size...", cmd::MakeItFit);

    QMenu* help = menuBar()->addMenu("&Help");
    AddCommand(help, "&Help", cmd::Help, QKeySequence::HelpContents);
    AddCommand(help, "&Getting started", cmd::GettingStarted);
    AddCommand(help, "&Tutorial: resizing pictures", cmd::Tutorial);
    AddCommand(help, "&Contents", cmd::HelpContents);
    AddCommand(help, "C&ommunity", cmd::Community);
}

void frmEditor::BuildToolBar() {
    QToolBar* bar = addToolBar("Commands");
    bar->setObjectName("Commands");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    auto add = [&](QStyle::StandardPixmap icon, const QString& text, std::string_view key, bool needsPicture) {
        QAction* action = bar->addAction(style()->standardIcon(icon), text);
        const std::string command(key);
        connect(action, &QAction::triggered, this, [this, command] { Command(command); });
        if (needsPicture) pictureActions_ << action;
        return action;
    };
    add(QStyle::SP_DialogOpenButton, "Open", cmd::Browse, false)->setToolTip("Open a picture (Ctrl+O)");
    add(QStyle::SP_DialogSaveButton, "Save as", cmd::SaveAs, true)->setToolTip("Save the picture at its new size (Ctrl+S)");
    bar->addSeparator();
    add(QStyle::SP_ArrowBack, "Previous", cmd::Previous, true);
    add(QStyle::SP_ArrowForward, "Next", cmd::Next, true);
    add(QStyle::SP_BrowserReload, "Rotate left", cmd::RotateLeft, true)
        ->setIcon(QPixmap::fromImage(style()->standardIcon(QStyle::SP_BrowserReload).pixmap(32).toImage().mirrored(true, false)));
    add(QStyle::SP_BrowserReload, "Rotate right", cmd::RotateRight, true);
    add(QStyle::SP_DialogResetButton, "Undo", cmd::Undo, true)->setToolTip("Undo (Ctrl+Z)");
    bar->addSeparator();
    add(QStyle::SP_DirIcon, "Batch resize", cmd::BatchResize, false);
    add(QStyle::SP_ComputerIcon, "Slide show", cmd::SlideShow, false);
    add(QStyle::SP_DriveCDIcon, "CD/DVD", cmd::CDSlideShow, false);
    add(QStyle::SP_FileDialogDetailedView, "E-mail", cmd::Email, true);
    add(QStyle::SP_FileDialogContentsView, "Fit to size", cmd::MakeItFit, true);
    bar->addSeparator();
    imgAutoAnalyzer = bar->addAction(style()->standardIcon(QStyle::SP_FileDialogInfoView), "Auto Analyzer");
    imgAutoAnalyzer->setCheckable(true);
    connect(imgAutoAnalyzer, &QAction::triggered, this, [this] { Command(cmd::AutoAnalyzer); });
}

QWidget* frmEditor::BuildSizePanel() {
    auto* panel = new QWidget(this);
    panel->setFixedWidth(270);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);

    auto* sizeBox = new QGroupBox("New size", panel);
    auto* form = new QFormLayout(sizeBox);
    cboQuickSize = new QComboBox(sizeBox);
    cboQuickSize->setMaxVisibleItems(20);
    // Long preset names must not push the labels out of the panel.
    cboQuickSize->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboQuickSize->setMinimumContentsLength(14);
    cboScale = new QComboBox(sizeBox);
    for (std::string_view unit : kUnitNames) cboScale->addItem(Q(unit));
    txtWidth = new QLineEdit(sizeBox);
    txtHeight = new QLineEdit(sizeBox);
    chkSmartSize = new QCheckBox("Keep the picture's shape", sizeBox);
    form->addRow("Quick size:", cboQuickSize);
    form->addRow("Unit:", cboScale);
    form->addRow("Width:", txtWidth);
    form->addRow("Height:", txtHeight);
    form->addRow(chkSmartSize);
    column->addWidget(sizeBox);

    auto* infoBox = new QGroupBox("Picture", panel);
    auto* info = new QFormLayout(infoBox);
    lblOriginalSize = new QLabel("-", infoBox);
    lblNewWidth = new QLabel("-", infoBox);
    lblNewHeight = new QLabel("-", infoBox);
    info->addRow("Original:", lblOriginalSize);
    info->addRow("New width:", lblNewWidth);
    info->addRow("New height:", lblNewHeight);
    column->addWidget(infoBox);

    auto* typeBox = new QGroupBox("Save as type", panel);
    auto* typeLayout = new QVBoxLayout(typeBox);
    cboFileType = new QComboBox(typeBox);
    for (std::string_view type : kFileTypes) cboFileType->addItem(Q(type));
    typeLayout->addWidget(cboFileType);
    column->addWidget(typeBox);
    column->addStretch(1);

    connect(cboQuickSize, &QComboBox::activated, this,
            [this](int index) { model_->SelectPreset(cboQuickSize->itemText(index).toStdString()); });
    connect(cboScale, &QComboBox::activated, this,
            [this](int index) { model_->ChooseUnit(cboScale->itemText(index).toStdString()); });
    connect(txtWidth, &QLineEdit::textEdited, this, [this](const QString& t) { model_->TypeWidth(t.toStdString()); });
    connect(txtHeight, &QLineEdit::textEdited, this, [this](const QString& t) { model_->TypeHeight(t.toStdString()); });
    connect(cboFileType, &QComboBox::activated, this,
            [this](int index) { model_->SetFileType(cboFileType->itemText(index).toStdString()); });
    connect(chkSmartSize, &QCheckBox::toggled, this, [this](bool on) { model_->SetSmartSize(on); });

    setTabOrder(cboQuickSize, cboScale);
    setTabOrder(cboScale, txtWidth);
    setTabOrder(txtWidth, txtHeight);
    setTabOrder(txtHeight, chkSmartSize);
    setTabOrder(chkSmartSize, cboFileType);
    return panel;
}

void frmEditor::RestorePosition() {
    // "x, y, width, height", as the window wrote it on its last unload.
    const QStringList parts = Q(IniRead("Main", "Window Position", "")).split(", ");
    if (parts.size() == 4) {
        const QRect r(parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt());
        if (r.width() >= 400 && r.height() >= 300) setGeometry(r);
    } else {
        resize(1100, 720);
    }
    if (IniRead("Main", "Maximized", "") == "True") setWindowState(windowState() | Qt::WindowMaximized);
}

void frmEditor::UpdateEnabled() {
    const bool picture = model_->HasPicture() && !model_->Busy();
    for (QAction* action : pictureActions_) action->setEnabled(picture);
}

void frmEditor::StatusChanged(const std::string& text) { lblStatus->setText(Q(text)); }

void frmEditor::WaitShown(const std::string& text) {
    Canvas->SetSource(nullptr);  // the worker owns the picture now
    wait_->ShowText(Q(text));
    UpdateEnabled();
}

void frmEditor::WaitHidden() {
    wait_->Dismiss();
    UpdateEnabled();
}

void frmEditor::PreviewReady(const cDib& preview) { Canvas->ShowPicture(preview, true); }

void frmEditor::PictureChanged() {
    Canvas->SetSource(model_->HasPicture() ? &model_->Picture() : nullptr);
    Canvas->ShowPicture(model_->Picture());
    if (model_->HasPicture()) {
        lblOriginalSize->setText(QString("%1 x %2 pixels").arg(model_->OriginalWidth()).arg(model_->OriginalHeight()));
        const QString name = Q(std::filesystem::path(model_->Path()).filename().string());
        setWindowTitle(name.isEmpty() ? "Quorbel" : name + " - Quorbel");
    }
    FieldsChanged();
}

void frmEditor::PresetsChanged() {
    {
        const QSignalBlocker block(cboQuickSize);
        cboQuickSize->clear();
        for (const std::string& key : PresetKeys()) cboQuickSize->addItem(Q(key));
    }
    FieldsChanged();
}

void frmEditor::FieldsChanged() {
    SetComboText(cboQuickSize, Q(model_->Preset()));
    SetComboText(cboScale, Q(model_->Unit()));
    SetComboText(cboFileType, Q(model_->FileType()));
    if (txtWidth->text() != Q(model_->WidthText())) txtWidth->setText(Q(model_->WidthText()));
    if (txtHeight->text() != Q(model_->HeightText())) txtHeight->setText(Q(model_->HeightText()));
    {
        const QSignalBlocker block(chkSmartSize);
        chkSmartSize->setChecked(model_->SmartSize());
    }
    imgAutoAnalyzer->setChecked(model_->AutoAnalyzer());
    const bool sized = model_->NewWidth() > 0 && model_->NewHeight() > 0;
    lblNewWidth->setText(sized ? QString("%1 pixels").arg(model_->NewWidth()) : "-");
    lblNewHeight->setText(sized ? QString("%1 pixels").arg(model_->NewHeight()) : "-");
    lblZoom->setText(Q(model_->ZoomText()));
    UpdateEnabled();
}

void frmEditor::RecentFilesChanged() {
    mnuRecent_->clear();
    for (const RecentFilesMenuItem& item : model_->RecentFiles().items) {
        QAction* action = mnuRecent_->addAction(Q(item.text));
        action->setEnabled(item.enabled);
        if (!item.enabled) continue;
        const std::string path = item.text;
        connect(action, &QAction::triggered, this, [this, path] {
            model_->Open(path);
            UpdateEnabled();
        });
    }
}

void frmEditor::ExitRequested() {
    closing_ = true;
    close();
    QApplication::exit(0);
}

void frmEditor::closeEvent(QCloseEvent* event) {
    if (!closing_ && model_->Busy()) {
        event->ignore();  // long work first; "Exit" still ends at once
        return;
    }
    if (!closing_ && PromptSaveIfChanged(model_->Changed(), messages_)) {
        event->ignore();
        model_->SaveAs([this] {
            closing_ = true;
            close();
        });
        return;
    }
    const QRect g = normalGeometry();
    model_->Unload(QString("%1, %2, %3, %4").arg(g.x()).arg(g.y()).arg(g.width()).arg(g.height()).toStdString(),
                   isMaximized());
    wait_->Dismiss();
    event->accept();
}

}  // namespace quorbel
