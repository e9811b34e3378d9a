#pragma once
// The end of a batch run: the job's own files (slide show page, disc files, mail), the walk
// over the output list, "All Done!" and the after-run choice: open the target folder, open
// the first picture in the main window, or nothing.
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/BatchJob.h"
#include "batch/JobCompletion.h"

namespace quorbel {

inline constexpr const char* kFinishingText = "Please wait, Finishing up after batch resizing pictures...";
inline constexpr const char* kAllDoneText = "All Done!";
inline constexpr const char* kOpeningFolderText =
    "Please wait...\r\nOpening Windows Explorer folder with the newly resized images...";
inline constexpr const char* kOpeningFirstText = "Please wait... \r\nOpening first image that was batch resized...";

inline constexpr std::string_view kAfterRunTexts[] = {"View the newly resized pictures in Windows Explorer",
                                                      "Open the newly resized pictures in Quorbel",
                                                      "Just finsh and close the Wizard."};

// The job file's AfterRun words: "Folder", "Open", "None".
enum class AfterRun { OpenFolder, OpenFirstPicture, Nothing };
// Takes the words and the option texts, any case; anything else is Nothing.
AfterRun ParseAfterRun(std::string_view text);
std::string_view AfterRunWord(AfterRun choice);

struct FinishServices {
    JobCompletionServices& completion;
    std::function<void(const std::string&)> wait;  // the wait notice's text
    // Opens folder in the main window with "Original Size" and shows picture.
    std::function<void(const std::string& folder, const std::string& picture)> openInEditor;
};

// Runs after the last picture: CompleteJob, then for every job but "Email" the finishing
// texts and the after-run choice (none for "Burn to CD/DVD"). targetFolder is the run's
// target root. Returns the output files that still exist, in order.
std::vector<std::filesystem::path> FinishBatch(const BatchJob& job, const std::vector<WrittenPicture>& pictures,
                                               std::vector<std::filesystem::path> outputs,
                                               const std::string& targetFolder, FinishServices& services);

}  // namespace quorbel
