#pragma once
// What the preset editor edits: a working copy of the preset list that is written to the
// settings store only on apply or close; cancel and reload drop the unsaved edits.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageBox.h"
#include "sizes/SizePresets.h"

namespace quorbel {

class PresetEditModel {
public:
    // Reads the stored list (writing the shipped one on first use). Unsaved edits are lost.
    void Reload();

    const std::vector<SizePreset>& Rows() const { return rows_; }
    bool Dirty() const { return dirty_; }
    // True once anything was written to the store since construction.
    bool Saved() const { return saved_; }

    // Runs the add checks; on a refusal shows its message and returns nullopt. A name that is
    // already listed (keys ignore case) has its row replaced in place, since the store keeps
    // one preset per name; otherwise the row goes to the end. Returns the row's index.
    std::optional<size_t> Add(std::string_view name, std::string_view unit, std::string_view width,
                              std::string_view height, MessageBox& messages);
    bool Remove(size_t index);
    bool MoveUp(size_t index);
    bool MoveDown(size_t index);

    // Writes the list when it has unsaved edits. False when the store could not be written.
    bool Apply();
    // Asks the reset question; on Yes the shipped list is written and reloaded.
    bool Reset(MessageBox& messages);

    // The special presets the main window depends on may not be deleted.
    static bool Deletable(const SizePreset& preset);

private:
    std::vector<SizePreset> rows_;
    bool dirty_ = false;
    bool saved_ = false;
};

}  // namespace quorbel
