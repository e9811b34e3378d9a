#include "batch/JobCompletion.h"

#include "batch/BatchSession.h"
#include "share/Disc.h"
#include "share/Mail.h"
#include "share/SlideShow.h"
#include "core/text/TextCase.h"

namespace quorbel {
namespace fs = std::filesystem;

void CompleteJob(const BatchJob& job, const std::vector<WrittenPicture>& pictures, std::vector<fs::path>& outputs,
                 JobCompletionServices& services) {
    const std::string type = ToLowerAscii(job.type);
    const fs::path target(TargetRoot(job));
    if (type == "web" || type == "cd") {
        // Pictures of subfolders are named from the page's folder on, so the page finds them.
        std::vector<SlideShowEntry> entries;
        for (const WrittenPicture& p : pictures) {
            const fs::path relative = p.output.lexically_relative(target);
            const bool inside = !relative.empty() && *relative.begin() != "..";
            entries.push_back({(inside ? relative : p.output.filename()).generic_string(), p.caption});
        }
        if (const std::error_code ec = WriteSlideShow(target, services.programData / "slideshow", entries, outputs))
            services.messages.Show("The slide show page could not be written to the folder: '" + target.string() +
                                   "' (" + ec.message() + ")");
        if (type == "cd") CopyDiscSupportFiles(services.programData / "cd", target, outputs);
    } else if (type == "email") {
        EmailPictures(target.string(), outputs, services.messages);
    }
}

}  // namespace quorbel
