#pragma once
// What a job adds once its pictures are written: the slide show page beside them for "Web"
// and "CD", the disc's support files for "CD", the hand-off to the mail program for "Email".
#include <filesystem>
#include <string>
#include <vector>

#include "batch/BatchJob.h"
#include "core/MessageBox.h"
#include "platform/Desktop.h"

namespace quorbel {

// A picture the run wrote, with the caption of its row.
struct WrittenPicture {
    std::filesystem::path output;
    std::string caption;
};

struct JobCompletionServices {
    MessageBox& messages;
    Desktop& desktop;
    std::filesystem::path programData;  // where the page templates and disc files ship
};

// Adds the job's own files to the target folder, appending each to outputs in order; for
// "Email" hands the written pictures to the user's mail program.
void CompleteJob(const BatchJob& job, const std::vector<WrittenPicture>& pictures,
                 std::vector<std::filesystem::path>& outputs, JobCompletionServices& services);

}  // namespace quorbel
