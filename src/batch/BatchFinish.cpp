#include "batch/BatchFinish.h"

#include "share/Disc.h"
#include "core/text/TextCase.h"

namespace quorbel {

namespace fs = std::filesystem;

AfterRun ParseAfterRun(std::string_view text) {
    if (EqualsIgnoreCase(text, "Folder") || EqualsIgnoreCase(text, kAfterRunTexts[0])) return AfterRun::OpenFolder;
    if (EqualsIgnoreCase(text, "Open") || EqualsIgnoreCase(text, kAfterRunTexts[1])) return AfterRun::OpenFirstPicture;
    return AfterRun::Nothing;
}

std::string_view AfterRunWord(AfterRun choice) {
    switch (choice) {
        case AfterRun::OpenFolder: return "Folder";
        case AfterRun::OpenFirstPicture: return "Open";
        case AfterRun::Nothing: break;
    }
    return "None";
}

std::vector<fs::path> FinishBatch(const BatchJob& job, const std::vector<WrittenPicture>& pictures,
                                  std::vector<fs::path> outputs, const std::string& targetFolder,
                                  FinishServices& services) {
    CompleteJob(job, pictures, outputs, services.completion);
    auto wait = [&](const char* text) {
        if (services.wait) services.wait(text);
    };
    const bool email = EqualsIgnoreCase(job.type, "Email");
    if (!email) wait(kFinishingText);
    std::vector<fs::path> existing;
    for (fs::path& file : outputs) {
        std::error_code ec;
        if (fs::is_regular_file(file, ec)) existing.push_back(std::move(file));
    }
    if (email) return existing;
    wait(kAllDoneText);
    // A disc job hands its files to the disc-writing program; nothing else is opened.
    if (EqualsIgnoreCase(job.destination, kDestinationDisc)) {
        WriteToDisc(existing, targetFolder, services.completion.desktop, services.completion.messages);
        return existing;
    }
    switch (ParseAfterRun(job.afterRun)) {
        case AfterRun::OpenFolder:
            wait(kOpeningFolderText);
            services.completion.desktop.Open(targetFolder);
            break;
        case AfterRun::OpenFirstPicture:
            wait(kOpeningFirstText);
            if (!existing.empty() && services.openInEditor)
                services.openInEditor(existing.front().parent_path().string(), existing.front().string());
            break;
        case AfterRun::Nothing: break;
    }
    return existing;
}

}  // namespace quorbel
