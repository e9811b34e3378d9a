#include "batch/PictureList.h"

#include <algorithm>

namespace quorbel {

RotationOption OptionForRotation(std::string_view rotation) {
    if (rotation == "Flip") return RotationOption::Flip;
    if (rotation == "Rotate Left") return RotationOption::RotateLeft;
    if (rotation == "Rotate Right") return RotationOption::RotateRight;
    return RotationOption::None;  // "Horizontal" too: selecting such a row shows no option
}

std::string EffectBoxText(std::string_view effect) {
    return effect == "Pixalate" ? "Pixelate" : std::string(effect);
}

PreviewPlan PlanPreview(std::string_view mode, const BatchPicture& row) {
    if (mode == "No Preview!") return {};
    PreviewPlan plan{true, false, false};
    plan.rotation = mode != "Preview image only";
    plan.effect = mode.find("effect") != std::string_view::npos && row.effect != "None";
    return plan;
}

void PictureList::Select(std::optional<size_t> row) {
    selected_ = row && *row < rows_.size() ? row : std::nullopt;
}

std::vector<std::string> PictureList::AddCandidates(const std::vector<std::string>& folderPictures,
                                                    MessageBox& messages) const {
    std::vector<std::string> missing;
    for (const std::string& name : folderPictures)
        if (std::none_of(rows_.begin(), rows_.end(), [&](const BatchPicture& r) { return r.file == name; }))
            missing.push_back(name);
    if (missing.empty()) messages.Show(kAllAddedText);
    return missing;
}

void PictureList::Add(const std::vector<std::string>& names, std::string_view rotation) {
    for (const std::string& name : names)
        if (std::none_of(rows_.begin(), rows_.end(), [&](const BatchPicture& r) { return r.file == name; }))
            rows_.push_back({name, std::string(rotation), "None", {}});
}

bool PictureList::RemoveSelected(MessageBox& messages) {
    if (rows_.empty()) return false;
    if (messages.Show(kRemoveOneText, MsgButtons::YesNo, MsgIcon::Question) != MsgResult::Yes || !selected_)
        return false;
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(*selected_));
    selected_.reset();
    return true;
}

bool PictureList::RemoveAll(MessageBox& messages) {
    if (rows_.empty()) return false;
    if (messages.Show(kRemoveAllText, MsgButtons::YesNo, MsgIcon::Question) != MsgResult::Yes) return false;
    rows_.clear();
    selected_.reset();
    return true;
}

void PictureList::Move(int by) {
    if (!selected_) return;
    const size_t from = *selected_;
    if ((by < 0 && from == 0) || (by > 0 && from + 1 >= rows_.size())) return;
    const size_t to = by < 0 ? from - 1 : from + 1;
    std::swap(rows_[from], rows_[to]);
    selected_ = to;
}

void PictureList::MoveUp() { Move(-1); }
void PictureList::MoveDown() { Move(1); }

void PictureList::SetRotation(std::string_view rotation, bool all) {
    for (size_t i = 0; i < rows_.size(); ++i)
        if (all || selected_ == i) rows_[i].rotation = rotation;
}

void PictureList::SetEffect(std::string_view effect, bool all) {
    // The box may show "Pixelate"; the row keeps the list's word.
    const std::string_view word = effect == "Pixelate" ? "Pixalate" : effect;
    for (size_t i = 0; i < rows_.size(); ++i)
        if (all || selected_ == i) rows_[i].effect = word;
}

void PictureList::SetCaption(std::string caption) {
    if (selected_) rows_[*selected_].caption = std::move(caption);
}

void PictureList::SetRows(std::vector<BatchPicture> rows) {
    rows_ = std::move(rows);
    selected_.reset();
}

}  // namespace quorbel
