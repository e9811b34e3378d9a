#pragma once
// Fit to file size: finds the largest, best-quality JPEG of a picture that stays within a
// byte limit. Two modes hand over to each other: "Quality" steps down the named JPEG
// qualities, "H+W" cuts width and height by 10 % a trial, never below the minimum size.
// Every trial is resized from the original and encoded in memory; nothing touches the disk.
#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageBox.h"
#include "imaging/cDib.h"

namespace quorbel {

inline constexpr std::string_view kReducedSizeReached = "reduced size reached: ";
inline constexpr std::string_view kFitQualityUsedUp =
    "Picture could not be resized to fit the selected parameters. Please try again.";
inline constexpr std::string_view kFitMinimumUsedUp = "Cannot resize pic.";

enum class FitMode { Quality, WidthHeight };
enum class FileSizeUnit { KB, MB };  // 1000 and 1,000,000 bytes

struct FitRequest {
    double maxSize = 0;  // in unit; the limit is maxSize × unit bytes, rounded down
    FileSizeUnit unit = FileSizeUnit::KB;
    int32_t maxWidth = 0;
    int32_t maxHeight = 0;
    int32_t minWidth = 1;
    int32_t minHeight = 1;
    std::string startQuality = "Highest Quality";  // a quality name or a number
    FitMode startMode = FitMode::Quality;
};

struct FitTrial {
    int32_t width = 0;
    int32_t height = 0;
    int quality = 0;
    int64_t bytes = 0;
    bool fits = false;
};

struct FitProgress {
    int percent = 0;
    FitTrial trial;  // the trial just measured
};
using FitProgressFn = std::function<void(const FitProgress&)>;

enum class FitStatus {
    Fitted,
    QualityUsedUp,  // quality steps gone, the size already at its minimum
    MinimumUsedUp,  // minimum size reached, the quality steps already gone
    Cancelled,
    Failed,  // no picture, a bad request, or a size that could not be made
};

struct FitResult {
    FitStatus status = FitStatus::Failed;
    FitMode mode = FitMode::Quality;  // the mode whose trial fitted
    cDib picture;                     // the fitted picture (Fitted only)
    std::vector<uint8_t> jpeg;        // its JPEG, exactly as measured
    int quality = 0;
    int64_t limitBytes = 0;
    std::vector<FitTrial> trials;     // every trial in order
    std::vector<std::string> messages;  // to show the user, in order
};

int64_t LimitBytes(double maxSize, FileSizeUnit unit);

// The named quality just below quality (95, 85, 75, 65, 50); nullopt at 50 or less.
std::optional<int> NextQualityBelow(int quality);

// The search. progress is called from the searching thread after every trial; the search
// stops between trials once *cancel is true.
FitResult FitToFileSize(const cDib& original, const FitRequest& request,
                        const FitProgressFn& progress = {},
                        const std::atomic<bool>* cancel = nullptr);

// "reduced size reached: " + the file size in the request's unit, e.g. "97.66 KB".
std::string ReducedSizeMessage(int64_t bytes, FileSizeUnit unit);

void ShowFitMessages(const FitResult& result, MessageBox& messages);

}  // namespace quorbel
