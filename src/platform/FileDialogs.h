#pragma once
// Open, save and pick-folder dialogs. Filters are written the classic way,
// "Description|*.a;*.b|Other|*.c", and indices count from 1.
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace quorbel {

struct FileFilter {
    std::string description;
    std::vector<std::string> patterns;  // "*.jpg", …
};

// Splits "Supported files|*.bmp;*.gif|Bitmap files (*.bmp)|*.bmp" into its pairs.
std::vector<FileFilter> ParseFilter(const std::string& filter);

struct OpenRequest {
    std::string title;
    std::string filter;
    std::string initialFolder;
};

struct SaveRequest {
    std::string title;
    std::string filter;
    int initialFilter = 1;  // 1-based, as the classic dialogs count
    std::string initialFolder;
    std::string initialName;
};

struct SaveAnswer {
    std::string path;
    int filterIndex = 1;        // the filter chosen, 1-based
    std::string pattern;        // its first pattern, "*.jpg"
};

class FileDialogs {
public:
    virtual ~FileDialogs() = default;
    // An empty optional means the user cancelled.
    virtual std::optional<std::string> OpenFile(const OpenRequest& request) = 0;
    virtual std::optional<SaveAnswer> SaveFile(const SaveRequest& request) = 0;
    virtual std::optional<std::string> PickFolder(const std::string& title, const std::string& initialFolder) = 0;
};

// For tests: records the requests and answers from queues (cancel when a queue is empty).
class ScriptedFileDialogs : public FileDialogs {
public:
    std::optional<std::string> OpenFile(const OpenRequest& request) override;
    std::optional<SaveAnswer> SaveFile(const SaveRequest& request) override;
    std::optional<std::string> PickFolder(const std::string& title, const std::string& initialFolder) override;

    void AnswerOpen(std::optional<std::string> path) { opens_.push_back(std::move(path)); }
    void AnswerSave(std::optional<SaveAnswer> answer) { saves_.push_back(std::move(answer)); }
    void AnswerFolder(std::optional<std::string> path) { folders_.push_back(std::move(path)); }

    std::vector<OpenRequest> openRequests;
    std::vector<SaveRequest> saveRequests;
    std::vector<std::string> folderRequests;

private:
    std::deque<std::optional<std::string>> opens_;
    std::deque<std::optional<SaveAnswer>> saves_;
    std::deque<std::optional<std::string>> folders_;
};

}  // namespace quorbel
