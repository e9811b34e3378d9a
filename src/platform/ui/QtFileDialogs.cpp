#include "platform/ui/QtFileDialogs.h"

#include <QFileDialog>
#include <QStringList>

namespace quorbel {
namespace {

std::string FilterName(const FileFilter& f) {
    std::string name = f.description + " (";
    for (size_t i = 0; i < f.patterns.size(); ++i) name += (i ? " " : "") + f.patterns[i];
    return name + ")";
}

}  // namespace

std::string QtFilterString(const std::vector<FileFilter>& filters) {
    std::string joined;
    for (size_t i = 0; i < filters.size(); ++i) joined += (i ? ";;" : "") + FilterName(filters[i]);
    return joined;
}

std::optional<std::string> QtFileDialogs::OpenFile(const OpenRequest& request) {
    const QString path = QFileDialog::getOpenFileName(
        parent_, QString::fromStdString(request.title), QString::fromStdString(request.initialFolder),
        QString::fromStdString(QtFilterString(ParseFilter(request.filter))));
    if (path.isEmpty()) return std::nullopt;
    return path.toStdString();
}

std::optional<SaveAnswer> QtFileDialogs::SaveFile(const SaveRequest& request) {
    const std::vector<FileFilter> filters = ParseFilter(request.filter);
    QString selected;
    if (request.initialFilter >= 1 && request.initialFilter <= static_cast<int>(filters.size()))
        selected = QString::fromStdString(FilterName(filters[request.initialFilter - 1]));
    std::string start = request.initialFolder;
    if (!request.initialName.empty()) start += (start.empty() ? "" : "/") + request.initialName;
    const QString path = QFileDialog::getSaveFileName(parent_, QString::fromStdString(request.title),
                                                      QString::fromStdString(start),
                                                      QString::fromStdString(QtFilterString(filters)), &selected);
    if (path.isEmpty()) return std::nullopt;
    SaveAnswer answer{path.toStdString(), 1, {}};
    for (size_t i = 0; i < filters.size(); ++i) {
        if (QString::fromStdString(FilterName(filters[i])) == selected) {
            answer.filterIndex = static_cast<int>(i) + 1;
            if (!filters[i].patterns.empty()) answer.pattern = filters[i].patterns.front();
        }
    }
    return answer;
}

std::optional<std::string> QtFileDialogs::PickFolder(const std::string& title, const std::string& initialFolder) {
    const QString path = QFileDialog::getExistingDirectory(parent_, QString::fromStdString(title),
                                                           QString::fromStdString(initialFolder));
    if (path.isEmpty()) return std::nullopt;
    return path.toStdString();
}

}  // namespace quorbel
