#pragma once
// The main window's undo history: up to 25 steps, each a snapshot of the picture
// ("b001.dat" ... "b025.dat" in the data folder) and a row of ten text fields with the size
// choice that was in force. Step 0 is unused; the current and last step move through it.
#include <array>
#include <string>

#include "imaging/cDib.h"

namespace quorbel {

inline constexpr int kUndoSteps = 25;
inline constexpr int kUndoFields = 10;

// What each field of a row holds.
enum UndoField : int {
    kUndoPreset = 0,
    kUndoUnit = 1,
    kUndoWidthText = 2,
    kUndoHeightText = 3,
    kUndoNewWidth = 4,   // pixels
    kUndoNewHeight = 5,  // pixels
    kUndoCommand = 6,    // the command that made the step
    kUndoSnapshot = 7,   // the snapshot's file name
};

using UndoRow = std::array<std::string, kUndoFields>;

class UndoHistory {
public:
    // "b" + step with three digits + ".dat".
    static std::string SnapshotName(int step);

    // Start-up: every row to empty text, both counters to 0. Files are left alone.
    void ClearTable();
    // Opening a picture: deletes every "*.dat" and "*.tmp" of folder (the working copy
    // included) and clears the table.
    void ClearFiles(const std::string& folder);

    // Records picture as the step after the current one; steps after the current one are
    // dropped. With 25 steps kept the oldest goes. False when the snapshot could not be
    // written.
    bool Record(const std::string& folder, const cDib& picture, UndoRow row);

    // Record in three parts, so the snapshot can be written away from the window: NextStep
    // drops the steps after the current one (and the oldest when full) and returns the step
    // to write; WriteSnapshot may run on any thread; Commit makes the written step current.
    int NextStep(const std::string& folder);
    static bool WriteSnapshot(const std::string& folder, int step, const cDib& picture);
    void Commit(int step, UndoRow row);
    // Deletes every "*.dat" and "*.tmp" of folder; touches no table, so any thread may call it.
    static void DeleteFiles(const std::string& folder);

    bool CanUndo() const { return current_ > 1; }
    bool CanRedo() const { return current_ < last_; }
    // One step back or forward: the picture and row of that step. False, with nothing
    // changed, when there is no such step or its snapshot cannot be read.
    bool Undo(const std::string& folder, cDib& picture, UndoRow& row);
    bool Redo(const std::string& folder, cDib& picture, UndoRow& row);

    int Current() const { return current_; }
    int Last() const { return last_; }
    // Row of step 1..25.
    const UndoRow& Row(int step) const { return rows_.at(static_cast<size_t>(step)); }

private:
    bool Load(const std::string& folder, int step, cDib& picture, UndoRow& row);

    // Every text starts empty. No "{}" here: clang 14 crashes on it for nested arrays of strings.
    std::array<UndoRow, kUndoSteps + 1> rows_;
    int current_ = 0;
    int last_ = 0;
};

}  // namespace quorbel
