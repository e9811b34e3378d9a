#include "batch/BatchSession.h"

#include <filesystem>

namespace quorbel {

std::string TargetRoot(const BatchJob& job) {
    std::string target = WithTrailingSlash(job.target);
    if (job.createSubfolder && !job.newName.empty()) target += job.newName + "/";
    return target;
}

BatchSession::BatchSession(const BatchJob& job)
    : sourceRoot_(WithTrailingSlash(job.source)), targetRoot_(TargetRoot(job)) {
    if (job.subfolders) walk_ = SubfolderWalk(sourceRoot_, targetRoot_);
    if (job.overwrite == OverwritePolicy::YesToAll) lasting_ = OverwriteAnswer::YesToAll;
    if (job.overwrite == OverwritePolicy::NoToAll) lasting_ = OverwriteAnswer::NoToAll;
}

std::optional<BatchSession::Folder> BatchSession::NextFolder() {
    if (!started_) {
        started_ = true;
        return Folder{sourceRoot_, targetRoot_, true};
    }
    if (auto step = walk_.Next()) return Folder{step->source, step->target, false};
    return std::nullopt;
}

BatchRunReport BatchSession::Run(BatchJob job, const Folder& folder, BatchRunOptions options) {
    job.source = folder.source;
    job.target = folder.target;
    if (!folder.ownRows) job.pictures.clear();
    if (lasting_) job.overwrite = *lasting_ == OverwriteAnswer::YesToAll ? OverwritePolicy::YesToAll
                                                                         : OverwritePolicy::NoToAll;
    options.continuationBase += total_.written;
    if (options.ask) {
        options.ask = [this, ask = options.ask](const std::filesystem::path& existing) {
            const OverwriteAnswer answer = ask(existing);
            if (answer == OverwriteAnswer::YesToAll || answer == OverwriteAnswer::NoToAll) lasting_ = answer;
            return answer;
        };
    }
    std::vector<std::pair<std::filesystem::path, std::string>> captions;
    if (!job.pictures.empty())
        for (const BatchItem& item : BatchItems(job))
            if (!item.caption.empty()) captions.emplace_back(item.source, item.caption);
    options.onPicture = [this, captions = std::move(captions), onPicture = options.onPicture](const PictureResult& r) {
        if (r.status == PictureStatus::Written) {
            WrittenPicture w{r.output, {}};
            for (const auto& [source, caption] : captions)
                if (source == r.source) w.caption = caption;
            written_.push_back(std::move(w));
        }
        if (onPicture) onPicture(r);
    };
    BatchRunReport report;
    std::error_code ec;
    if (!std::filesystem::is_directory(folder.target, ec) && !std::filesystem::create_directories(folder.target, ec)) {
        report.stopped = true;
        report.stopReason = "The target folder cannot be created: " + folder.target;
    } else {
        report = RunBatch(job, options);
    }
    total_.total += report.total;
    total_.written += report.written;
    total_.skipped += report.skipped;
    total_.outputs.insert(total_.outputs.end(), report.outputs.begin(), report.outputs.end());
    total_.failures.insert(total_.failures.end(), report.failures.begin(), report.failures.end());
    if (report.stopped) {
        total_.stopped = true;
        total_.stopReason = report.stopReason;
    }
    return report;
}

BatchRunReport RunBatchTree(const BatchJob& job, const BatchRunOptions& options) {
    BatchSession session(job);
    while (auto folder = session.NextFolder()) {
        if (session.Run(job, *folder, options).stopped) break;
    }
    return session.Total();
}

}  // namespace quorbel
