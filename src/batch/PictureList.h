#pragma once
// The wizard's picture list without the window: rows of file name, rotation, effect and
// caption in processing order, the selected row, and the questions Add and Remove ask.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/BatchJob.h"
#include "core/MessageBox.h"

namespace quorbel {

inline constexpr std::string_view kRotationWords[] = {"None", "Rotate Left", "Rotate Right", "Flip", "Horizontal"};
inline constexpr std::string_view kEffectWords[] = {"None",     "Blur",      "Sharpen",   "Soften",
                                                    "Diffuse",  "Pixalate",  "Despeckle", "Despeckle More"};
inline constexpr std::string_view kPreviewModes[] = {"Preview image, rotation and image effect.",
                                                     "Preview image and rotation only.", "Preview image only",
                                                     "No Preview!"};
inline constexpr const char* kAllAddedText = "All Pictures from folder are already added.";
inline constexpr const char* kRemoveOneText =
    "This action will remove the picture from the list. \r\nAre you sure you want to remove it?";
inline constexpr const char* kRemoveAllText =
    "This action will remove all the pictures from the list. \r\nAre you sure you want to remove them?";

// The rotation option buttons a selected row shows.
enum class RotationOption { None, RotateLeft, RotateRight, Flip };
// "Flip", "Rotate Left" and "Rotate Right" select theirs; anything else ("Horizontal"
// included) selects none.
RotationOption OptionForRotation(std::string_view rotation);
// The effect box's text for a row: the effect, with "Pixalate" shown as "Pixelate".
std::string EffectBoxText(std::string_view effect);

// What the preview shows for a row in a preview mode.
struct PreviewPlan {
    bool picture = false;
    bool rotation = false;
    bool effect = false;
};
PreviewPlan PlanPreview(std::string_view mode, const BatchPicture& row);

class PictureList {
public:
    const std::vector<BatchPicture>& Rows() const { return rows_; }
    std::optional<size_t> Selected() const { return selected_; }
    void Select(std::optional<size_t> row);

    // The names of folderPictures not in the list yet (compared by name). When there are
    // none, tells the user so and returns nothing.
    std::vector<std::string> AddCandidates(const std::vector<std::string>& folderPictures, MessageBox& messages) const;
    // Appends the picked names with a rotation (names already present are left out).
    void Add(const std::vector<std::string>& names, std::string_view rotation = "None");

    // Both ask first; an empty list asks nothing. True when rows went.
    bool RemoveSelected(MessageBox& messages);
    bool RemoveAll(MessageBox& messages);
    // The selected row one place up or down, staying selected; the ends stay put.
    void MoveUp();
    void MoveDown();

    // The value into the selected row, or into every row when all is true.
    void SetRotation(std::string_view rotation, bool all);
    void SetEffect(std::string_view effect, bool all);
    void SetCaption(std::string caption);
    void SetRows(std::vector<BatchPicture> rows);

private:
    void Move(int by);
    std::vector<BatchPicture> rows_;
    std::optional<size_t> selected_;
};

}  // namespace quorbel
