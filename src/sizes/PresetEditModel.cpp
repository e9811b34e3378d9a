#include "sizes/PresetEditModel.h"

#include <algorithm>

#include "core/text/TextCase.h"

namespace quorbel {

void PresetEditModel::Reload() {
    EnsurePresets();
    rows_ = LoadPresetList();
    dirty_ = false;
}

std::optional<size_t> PresetEditModel::Add(std::string_view name, std::string_view unit,
                                           std::string_view width, std::string_view height,
                                           MessageBox& messages) {
    if (const std::optional<std::string_view> refusal = CheckNewPreset(name, width, height)) {
        messages.Show(std::string(*refusal));
        return std::nullopt;
    }
    SizePreset row{std::string(TrimBlanks(name)), std::string(unit), std::string(TrimBlanks(width)),
                   std::string(TrimBlanks(height))};
    dirty_ = true;
    const auto same = std::find_if(rows_.begin(), rows_.end(), [&](const SizePreset& p) {
        return EqualsIgnoreCase(p.name, row.name);
    });
    if (same != rows_.end()) {
        *same = std::move(row);
        return static_cast<size_t>(same - rows_.begin());
    }
    rows_.push_back(std::move(row));
    return rows_.size() - 1;
}

bool PresetEditModel::Remove(size_t index) {
    if (index >= rows_.size() || !Deletable(rows_[index])) return false;
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(index));
    dirty_ = true;
    return true;
}

bool PresetEditModel::MoveUp(size_t index) {
    if (!MovePresetUp(rows_, index)) return false;
    dirty_ = true;
    return true;
}

bool PresetEditModel::MoveDown(size_t index) {
    if (!MovePresetDown(rows_, index)) return false;
    dirty_ = true;
    return true;
}

bool PresetEditModel::Apply() {
    if (!dirty_) return true;
    if (!SavePresetList(rows_)) return false;
    dirty_ = false;
    saved_ = true;
    return true;
}

bool PresetEditModel::Reset(MessageBox& messages) {
    if (!AskAndResetPresets(messages)) return false;
    saved_ = true;
    Reload();
    return true;
}

bool PresetEditModel::Deletable(const SizePreset& preset) {
    return ClassifyPreset(preset.name) == SpecialPreset::None;
}

}  // namespace quorbel
