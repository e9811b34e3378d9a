#pragma once
// The open, save and folder dialogs as Qt dialogs.
#include "platform/FileDialogs.h"

class QWidget;

namespace quorbel {

// "Supported files (*.bmp *.gif);;Bitmap files (*.bmp) (*.bmp)": Qt's filter list, whose
// names keep the classic descriptions.
std::string QtFilterString(const std::vector<FileFilter>& filters);

class QtFileDialogs : public FileDialogs {
public:
    explicit QtFileDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    std::optional<std::string> OpenFile(const OpenRequest& request) override;
    std::optional<SaveAnswer> SaveFile(const SaveRequest& request) override;
    std::optional<std::string> PickFolder(const std::string& title, const std::string& initialFolder) override;

private:
    QWidget* parent_;
};

}  // namespace quorbel
