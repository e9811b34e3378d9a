#pragma once
// The rules a batch run applies to each picture that do not need the picture's pixels: the
// output size, the output name and extension, the numbering, effects and rotations by word.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "batch/BatchJob.h"

namespace quorbel {

struct PixelSize {
    int32_t width = 0;
    int32_t height = 0;
    bool operator==(const PixelSize&) const = default;
};

// The size a source picture of width × height is written at:
// - "Original Size" (or a box with a side of 0 or less): the source size.
// - "Best Fit": fitted inside the box keeping the aspect ratio (cDib::GetBestFitInfo's
//   arithmetic); a picture that already fits keeps its size unless "Force resize" is on.
// - "Keep aspect ratio" alone: the box's width, the height following from the ratio; a
//   picture no wider than the box keeps its size unless "Force resize" is on.
// - neither: stretched to the box; a picture that fits inside the box keeps its size unless
//   "Force resize" is on.
// The box is the job's width and height converted from its unit to pixels at 96 dpi; with
// "FitTurned" it is turned when the picture is portrait and the box landscape, or the other
// way round (a 3000×4000 photo against 640×480 becomes 480×640, not 360×480).
PixelSize BatchTargetSize(const BatchJob& job, int32_t width, int32_t height);

// The box in pixels, or nullopt for "Original Size" or a side that is not positive.
std::optional<PixelSize> BatchBox(const BatchJob& job);

// The sequence number padded to three digits ("001", "010", "100", "1000").
std::string PadSequence(int64_t number);

// The extension the output type writes ("jpg", "tif", ...); for "Keep Original File Type"
// the one the format table keeps the source extension as (lowered; "jpeg" and "heic" give
// "jpg"), or nullopt when the extension selects none ("tiff" and "ico" among them).
std::optional<std::string> OutputExtension(OutputType type, const std::filesystem::path& source);

// The output file name: the base name (new name, "_" and the padded sequence number when
// renaming, else the source's name without extension) and the extension; the source's name
// whole when not renaming and the extension equals the source's (lowered).
std::string OutputFileName(const BatchJob& job, const std::filesystem::path& source,
                           std::string_view extension, int64_t sequence);

// The highest number following newName (with or without "_") in the names of the files of
// folder; 0 when there is none. "Trip_045.jpg" and "Trip45.png" count for Trip; "Trips3"
// does not.
int64_t HighestExistingNumber(const std::filesystem::path& folder, std::string_view newName);

// A collision is replaced without asking for "Burn to CD/DVD" and for "Email" and "CD" jobs.
bool ReplacesSilently(const BatchJob& job);

// Effect words to the filter list ("None" and unknown words: 0, nothing applied).
int EffectIndex(std::string_view effect);

struct Orientation {
    bool flipHorizontal = false;
    bool flipVertical = false;
    bool rotate = false;  // a quarter turn clockwise, after the flips
};
// "Rotate Left", "Rotate Right", "Flip" (vertical), "Horizontal"; anything else, nothing.
Orientation OrientationFor(std::string_view rotation);

}  // namespace quorbel
