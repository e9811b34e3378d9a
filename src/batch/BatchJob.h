#pragma once
// A batch job: every option the wizard collects, with its defaults, kept in an INI file
// (section [Job], and an optional [Pictures] section with the rows of the picture list).
#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "output/PictureFormat.h"
#include "settings/IniFile.h"

namespace quorbel {

inline constexpr std::string_view kJobSection = "Job";
inline constexpr std::string_view kPicturesSection = "Pictures";

inline constexpr std::string_view kDestinationFolder = "Copy to a folder on my computer";
inline constexpr std::string_view kDestinationDisc = "Burn to CD/DVD";

// The output types in the order of the type list, and the format each one writes.
enum class OutputType { KeepOriginal, Jpeg, Gif, Png, Tiff, Bmp, Webp, Avif };
inline constexpr PictureFormat kOutputFormats[] = {PictureFormat::Unknown, PictureFormat::Jpeg, PictureFormat::Gif,
                                                   PictureFormat::Png,     PictureFormat::Tiff, PictureFormat::Bmp,
                                                   PictureFormat::Webp,    PictureFormat::Avif};
inline constexpr std::string_view kKeepOriginalText = "Keep Original File Type";
// The type list's texts in its order: kKeepOriginalText, then each format's type text.
extern const std::array<std::string_view, std::size(kOutputFormats)> kOutputTypeTexts;

// What a run without windows does when the output name exists.
enum class OverwritePolicy { Ask, YesToAll, NoToAll };

// One row of the picture list: a file (relative to the source folder, or absolute), and its
// own rotation, effect and caption (used when the job's "all" check boxes are off).
struct BatchPicture {
    std::string file;
    std::string rotation = "None";
    std::string effect = "None";
    std::string caption;
    bool operator==(const BatchPicture&) const = default;
};

struct BatchJob {
    std::string type = "Resize";  // Resize, Web, CD, Email
    std::string destination = std::string(kDestinationFolder);
    std::string source;
    std::string target;
    bool createSubfolder = false;
    bool subfolders = false;
    bool rename = false;
    std::string newName;
    std::string effect = "None";
    bool effectAll = true;
    std::string rotation = "None";
    bool rotateAll = true;
    std::string preset = "Original Size";
    double width = 0;   // in unit
    double height = 0;  // in unit
    std::string unit = "Pixels";
    bool keepAspect = true;
    bool resample = true;
    bool bestFit = true;
    bool forceResize = false;
    // A portrait picture against a landscape box (or the other way round) is fitted into the
    // box turned, so its long side gets the box's long side.
    bool fitTurned = true;
    OutputType outputType = OutputType::KeepOriginal;
    std::string quality = "Highest Quality";  // a quality name or a number
    std::string afterRun;
    OverwritePolicy overwrite = OverwritePolicy::Ask;
    std::vector<BatchPicture> pictures;  // empty: every picture of the source folder
    std::string fileFilter;              // extensions a folder listing admits; empty: the default
    // Metadata and colour: see SetSharingDefaults for the defaults by job type.
    bool removeGps = false;       // "Remove location data (GPS)"
    bool removeMetadata = false;  // "Remove all metadata"
    bool convertToSrgb = false;   // pictures with another colour profile converted to sRGB

    // The JPEG quality the quality text stands for (97 for text that is neither).
    int32_t JpegQuality() const;
    // Rename is on: checked and a new name given.
    bool Renames() const { return rename && !newName.empty(); }
    bool operator==(const BatchJob&) const = default;
};

std::string_view OutputTypeText(OutputType type);
PictureFormat OutputFormat(OutputType type);  // Unknown for KeepOriginal
// Matches the list texts without regard to case; also takes the bare extension ("jpg").
std::optional<OutputType> ParseOutputType(std::string_view text);
std::string_view OverwritePolicyText(OverwritePolicy policy);
std::optional<OverwritePolicy> ParseOverwritePolicy(std::string_view text);

// "Email" and "Web" jobs share pictures with others: no location, colours as browsers and
// mail programs show them. Sets removeGps and convertToSrgb from the job's type.
void SetSharingDefaults(BatchJob& job);

// Reads a job; keys that are missing or cannot be understood keep their defaults.
BatchJob BatchJobFromIni(const IniFile& ini);
// Writes every key of the job into ini (replacing its [Pictures] section).
void BatchJobToIni(const BatchJob& job, IniFile& ini);

// The file forms. Load: nullopt when the file cannot be read. Save: an atomic write.
std::optional<BatchJob> LoadBatchJob(const std::filesystem::path& file);
std::error_code SaveBatchJob(const BatchJob& job, const std::filesystem::path& file);

}  // namespace quorbel
