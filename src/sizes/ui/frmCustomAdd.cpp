#include "sizes/ui/frmCustomAdd.h"

#include <algorithm>

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "sizes/Units.h"

namespace quorbel {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }
std::string S(const QString& s) { return s.toStdString(); }

QPushButton* Button(const QString& text, const char* name, QWidget* parent) {
    auto* b = new QPushButton(text, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

}  // namespace

frmCustomAdd::frmCustomAdd(MessageBox& messages, QWidget* parent) : QDialog(parent), messages_(messages) {
    setObjectName("frmCustomAdd");
    setWindowTitle("Size Presets");

    lsvSettings_ = new QTreeWidget(this);
    lsvSettings_->setObjectName("lsvSettings");
    lsvSettings_->setColumnCount(4);
    lsvSettings_->setHeaderLabels({"Name", "Unit", "Width", "Height"});
    lsvSettings_->setRootIsDecorated(false);
    lsvSettings_->setUniformRowHeights(true);
    lsvSettings_->setAlternatingRowColors(true);
    lsvSettings_->setSelectionMode(QAbstractItemView::SingleSelection);
    lsvSettings_->header()->setStretchLastSection(false);
    lsvSettings_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int c = 1; c < 4; ++c) lsvSettings_->header()->setSectionResizeMode(c, QHeaderView::ResizeToContents);
    lsvSettings_->setMinimumSize(420, 300);

    cmdMoveUp_ = Button("Move &Up", "cmdMoveUp", this);
    cmdMoveDown_ = Button("Move Do&wn", "cmdMoveDown", this);
    cmdDelete_ = Button("&Delete", "cmdDelete", this);
    cmdReload_ = Button("Re&load", "cmdReload", this);
    cmdReset_ = Button("&Reset...", "cmdReset", this);
    cmdReload_->setToolTip("Read the saved list again, dropping changes not yet applied");
    cmdReset_->setToolTip("Put back the list the program came with");

    auto* side = new QVBoxLayout;
    side->addWidget(cmdMoveUp_);
    side->addWidget(cmdMoveDown_);
    side->addSpacing(12);
    side->addWidget(cmdDelete_);
    side->addStretch(1);
    side->addWidget(cmdReload_);
    side->addWidget(cmdReset_);

    txtAdd_ = new QLineEdit(this);
    txtAdd_->setObjectName("txtAdd");
    txtAdd_->setPlaceholderText("Name of the size");
    txtWidth_ = new QLineEdit(this);
    txtWidth_->setObjectName("txtWidth");
    txtHeight_ = new QLineEdit(this);
    txtHeight_->setObjectName("txtHeight");
    for (QLineEdit* e : {txtWidth_, txtHeight_}) e->setMaximumWidth(90);
    cboScale_ = new QComboBox(this);
    cboScale_->setObjectName("cboScale");
    for (const std::string_view unit : kUnitNames) cboScale_->addItem(QString::fromUtf8(unit.data(), static_cast<int>(unit.size())));
    cboScale_->setCurrentText("Pixels");
    cmdAdd_ = Button("&Add", "cmdAdd", this);
    cmdAdd_->setDefault(true);  // Enter in a field adds the row

    auto* addBox = new QGroupBox("Add or change a size", this);
    auto* grid = new QGridLayout(addBox);
    auto* lblName = new QLabel("&Name:", addBox);
    lblName->setBuddy(txtAdd_);
    auto* lblWidth = new QLabel("&Width:", addBox);
    lblWidth->setBuddy(txtWidth_);
    auto* lblHeight = new QLabel("&Height:", addBox);
    lblHeight->setBuddy(txtHeight_);
    auto* lblUnit = new QLabel("U&nit:", addBox);
    lblUnit->setBuddy(cboScale_);
    grid->addWidget(lblName, 0, 0);
    grid->addWidget(txtAdd_, 0, 1, 1, 5);
    grid->addWidget(lblWidth, 1, 0);
    grid->addWidget(txtWidth_, 1, 1);
    grid->addWidget(lblHeight, 1, 2);
    grid->addWidget(txtHeight_, 1, 3);
    grid->addWidget(lblUnit, 1, 4);
    grid->addWidget(cboScale_, 1, 5);
    grid->addWidget(cmdAdd_, 0, 6, 2, 1, Qt::AlignBottom);
    grid->setColumnStretch(5, 1);

    cmdApply_ = Button("A&pply", "cmdApply", this);
    cmdCancel_ = Button("Cancel", "cmdCancel", this);
    cmdClose_ = Button("&Close", "cmdClose", this);
    cmdApply_->setToolTip("Save the list and keep editing");
    cmdCancel_->setToolTip("Close without saving the changes not yet applied");
    cmdClose_->setToolTip("Save the list and close");
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdApply_);
    bottom->addWidget(cmdCancel_);
    bottom->addWidget(cmdClose_);

    auto* top = new QHBoxLayout;
    top->addWidget(lsvSettings_, 1);
    top->addLayout(side);
    auto* root = new QVBoxLayout(this);
    root->addLayout(top, 1);
    root->addWidget(addBox);
    root->addLayout(bottom);

    setTabOrder(lsvSettings_, cmdMoveUp_);
    setTabOrder(cmdMoveUp_, cmdMoveDown_);
    setTabOrder(cmdMoveDown_, cmdDelete_);
    setTabOrder(cmdDelete_, cmdReload_);
    setTabOrder(cmdReload_, cmdReset_);
    setTabOrder(cmdReset_, txtAdd_);
    setTabOrder(txtAdd_, txtWidth_);
    setTabOrder(txtWidth_, txtHeight_);
    setTabOrder(txtHeight_, cboScale_);
    setTabOrder(cboScale_, cmdAdd_);
    setTabOrder(cmdAdd_, cmdApply_);
    setTabOrder(cmdApply_, cmdCancel_);
    setTabOrder(cmdCancel_, cmdClose_);

    connect(cmdAdd_, &QPushButton::clicked, this, &frmCustomAdd::AddRow);
    connect(cmdDelete_, &QPushButton::clicked, this, &frmCustomAdd::DeleteRow);
    connect(cmdMoveUp_, &QPushButton::clicked, this, [this] { MoveRow(true); });
    connect(cmdMoveDown_, &QPushButton::clicked, this, [this] { MoveRow(false); });
    connect(cmdReset_, &QPushButton::clicked, this, &frmCustomAdd::ResetList);
    connect(cmdReload_, &QPushButton::clicked, this, &frmCustomAdd::ReloadList);
    connect(cmdApply_, &QPushButton::clicked, this, [this] { ApplyList(); });
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);  // drops unsaved edits
    connect(cmdClose_, &QPushButton::clicked, this, &frmCustomAdd::CloseSaving);
    connect(lsvSettings_, &QTreeWidget::currentItemChanged, this, [this] {
        ShowRow(SelectedRow());
        UpdateButtons();
    });

    model_.Reload();
    Fill(0);
}

int frmCustomAdd::SelectedRow() const {
    const QTreeWidgetItem* item = lsvSettings_->currentItem();
    return item ? lsvSettings_->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item)) : -1;
}

void frmCustomAdd::Fill(int selectRow) {
    const QSignalBlocker quiet(lsvSettings_);
    lsvSettings_->clear();
    for (const SizePreset& p : model_.Rows())
        lsvSettings_->addTopLevelItem(new QTreeWidgetItem({Q(p.name), Q(p.unit), Q(p.width), Q(p.height)}));
    const int count = lsvSettings_->topLevelItemCount();
    if (count > 0) {
        QTreeWidgetItem* item = lsvSettings_->topLevelItem(std::clamp(selectRow, 0, count - 1));
        lsvSettings_->setCurrentItem(item);
        lsvSettings_->scrollToItem(item);
    }
    UpdateButtons();
}

void frmCustomAdd::ShowRow(int row) {
    if (row < 0 || row >= static_cast<int>(model_.Rows().size())) return;
    const SizePreset& p = model_.Rows()[static_cast<size_t>(row)];
    txtAdd_->setText(Q(p.name));
    txtWidth_->setText(Q(p.width));
    txtHeight_->setText(Q(p.height));
    // Stored units may be lower case ("inches"); the list matches without regard to case.
    const int unit = cboScale_->findText(Q(p.unit), Qt::MatchFixedString);
    if (unit >= 0) cboScale_->setCurrentIndex(unit);
}

void frmCustomAdd::UpdateButtons() {
    const int row = SelectedRow();
    const int count = static_cast<int>(model_.Rows().size());
    const bool any = row >= 0 && row < count;
    cmdMoveUp_->setEnabled(any && row > 0);
    cmdMoveDown_->setEnabled(any && row + 1 < count);
    cmdDelete_->setEnabled(any && PresetEditModel::Deletable(model_.Rows()[static_cast<size_t>(row)]));
    cmdApply_->setEnabled(model_.Dirty());
}

void frmCustomAdd::AddRow() {
    const std::optional<size_t> row = model_.Add(S(txtAdd_->text()), S(cboScale_->currentText()),
                                                 S(txtWidth_->text()), S(txtHeight_->text()), messages_);
    if (!row) return;
    Fill(static_cast<int>(*row));
}

void frmCustomAdd::DeleteRow() {
    const int row = SelectedRow();
    if (row >= 0 && model_.Remove(static_cast<size_t>(row))) Fill(row);
}

void frmCustomAdd::MoveRow(bool up) {
    const int row = SelectedRow();
    if (row < 0) return;
    const bool moved = up ? model_.MoveUp(static_cast<size_t>(row)) : model_.MoveDown(static_cast<size_t>(row));
    if (moved) Fill(up ? row - 1 : row + 1);
}

void frmCustomAdd::ResetList() {
    if (model_.Reset(messages_)) Fill(0);
}

void frmCustomAdd::ReloadList() {
    model_.Reload();
    Fill(SelectedRow());
}

bool frmCustomAdd::ApplyList() {
    if (model_.Apply()) {
        UpdateButtons();
        return true;
    }
    messages_.Show("The sizes could not be saved.", MsgButtons::OK, MsgIcon::Exclamation);
    return false;
}

void frmCustomAdd::CloseSaving() {
    if (ApplyList()) accept();
}

bool RunPresetEditor(QWidget* parent, MessageBox& messages) {
    frmCustomAdd editor(messages, parent);
    editor.exec();
    return editor.ListChanged();
}

}  // namespace quorbel
