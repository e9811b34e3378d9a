#include "editor/UndoHistory.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "editor/RawPicture.h"

namespace quorbel {
namespace fs = std::filesystem;

std::string UndoHistory::SnapshotName(int step) {
    char name[16];
    std::snprintf(name, sizeof name, "b%03d.dat", step);
    return name;
}

void UndoHistory::ClearTable() {
    for (UndoRow& row : rows_) row.fill(std::string());
    current_ = last_ = 0;
}

void UndoHistory::DeleteFiles(const std::string& folder) {
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path& p = it->path();
        const std::string ext = p.extension().string();
        std::error_code statError;
        if ((ext == ".dat" || ext == ".tmp") && !it->is_directory(statError)) {
            std::error_code ignored;
            fs::remove(p, ignored);
        }
    }
}

void UndoHistory::ClearFiles(const std::string& folder) {
    DeleteFiles(folder);
    ClearTable();
}

int UndoHistory::NextStep(const std::string& folder) {
    std::error_code ignored;
    for (int step = current_ + 1; step <= last_; ++step) {
        fs::remove(folder + SnapshotName(step), ignored);
        rows_[static_cast<size_t>(step)].fill(std::string());
    }
    last_ = current_;
    if (last_ == kUndoSteps) {
        // Full: the oldest step goes and the others move down one place.
        fs::remove(folder + SnapshotName(1), ignored);
        for (int step = 2; step <= kUndoSteps; ++step) {
            fs::rename(folder + SnapshotName(step), folder + SnapshotName(step - 1), ignored);
            rows_[static_cast<size_t>(step - 1)] = rows_[static_cast<size_t>(step)];
            rows_[static_cast<size_t>(step - 1)][kUndoSnapshot] = SnapshotName(step - 1);
        }
        rows_[kUndoSteps].fill(std::string());
        last_ = current_ = kUndoSteps - 1;
    }
    return last_ + 1;
}

bool UndoHistory::WriteSnapshot(const std::string& folder, int step, const cDib& picture) {
    return WriteRawPicture(folder + SnapshotName(step), picture);
}

void UndoHistory::Commit(int step, UndoRow row) {
    if (step < 1 || step > kUndoSteps) return;
    row[kUndoSnapshot] = SnapshotName(step);
    rows_[static_cast<size_t>(step)] = std::move(row);
    current_ = last_ = step;
}

bool UndoHistory::Record(const std::string& folder, const cDib& picture, UndoRow row) {
    const int step = NextStep(folder);
    if (!WriteSnapshot(folder, step, picture)) return false;
    Commit(step, std::move(row));
    return true;
}

bool UndoHistory::Load(const std::string& folder, int step, cDib& picture, UndoRow& row) {
    if (!ReadRawPicture(folder + SnapshotName(step), picture)) return false;
    row = rows_[static_cast<size_t>(step)];
    current_ = step;
    return true;
}

bool UndoHistory::Undo(const std::string& folder, cDib& picture, UndoRow& row) {
    return CanUndo() && Load(folder, current_ - 1, picture, row);
}

bool UndoHistory::Redo(const std::string& folder, cDib& picture, UndoRow& row) {
    return CanRedo() && Load(folder, current_ + 1, picture, row);
}

}  // namespace quorbel
