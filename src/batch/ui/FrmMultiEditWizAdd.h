#pragma once
// The picker that Add opens: the pictures of the source folder not in the list yet, as
// thumbnails loaded off the window's thread behind "Loading images..." (with Cancel), and
// the rotation the picked pictures get.
#include <QDialog>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

class QListWidget;
class QPushButton;
class QRadioButton;

namespace quorbel {

class FrmMultiEditWizAdd : public QDialog {
    Q_OBJECT
public:
    FrmMultiEditWizAdd(const std::string& folder, const std::vector<std::string>& names, QWidget* parent = nullptr);
    ~FrmMultiEditWizAdd() override;

    // Loads the thumbnails while FrmMultiAdd shows; false when the user cancelled.
    bool LoadThumbnails();
    std::vector<std::string> Picked() const;
    std::string Rotation() const;

    QListWidget* lstPictures;
    QRadioButton* optRotation[5];  // "Rotate Left", "Rotate Right", "Flip", "Horizontal", "None"
    QPushButton* cmdAdd;
    QPushButton* cmdCancel;

private:
    std::string folder_;
    std::vector<std::string> names_;
    std::thread loader_;
    std::atomic<bool> cancel_{false};
};

}  // namespace quorbel
