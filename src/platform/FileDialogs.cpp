#include "platform/FileDialogs.h"

namespace quorbel {
namespace {

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    size_t start = 0;
    for (;;) {
        const size_t at = text.find(separator, start);
        parts.push_back(text.substr(start, at == std::string::npos ? std::string::npos : at - start));
        if (at == std::string::npos) return parts;
        start = at + 1;
    }
}

template <typename T>
std::optional<T> Next(std::deque<std::optional<T>>& queue) {
    if (queue.empty()) return std::nullopt;
    std::optional<T> answer = std::move(queue.front());
    queue.pop_front();
    return answer;
}

}  // namespace

std::vector<FileFilter> ParseFilter(const std::string& filter) {
    std::vector<FileFilter> result;
    if (filter.empty()) return result;
    const std::vector<std::string> parts = Split(filter, '|');
    for (size_t i = 0; i + 1 < parts.size(); i += 2) result.push_back({parts[i], Split(parts[i + 1], ';')});
    return result;
}

std::optional<std::string> ScriptedFileDialogs::OpenFile(const OpenRequest& request) {
    openRequests.push_back(request);
    return Next(opens_);
}

std::optional<SaveAnswer> ScriptedFileDialogs::SaveFile(const SaveRequest& request) {
    saveRequests.push_back(request);
    return Next(saves_);
}

std::optional<std::string> ScriptedFileDialogs::PickFolder(const std::string& title, const std::string& initialFolder) {
    folderRequests.push_back(title + "|" + initialFolder);
    return Next(folders_);
}

}  // namespace quorbel
