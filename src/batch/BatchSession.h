#pragma once
// One batch run over the source folder and, with "Subfolders", every subfolder the scan
// finds, each written into the target folder that mirrors it. The run state lives here and
// is carried from folder to folder: the pictures written (the base of the sequence numbers),
// the lasting overwrite answer, the output list.
#include <optional>
#include <string>

#include "batch/BatchJob.h"
#include "batch/BatchRun.h"
#include "batch/FolderScan.h"
#include "batch/JobCompletion.h"

namespace quorbel {

// The target folder of the job's source folder: the target, or with "Create a subfolder
// with this name" the subfolder named after the new name inside it. Ends in "/".
std::string TargetRoot(const BatchJob& job);

class BatchSession {
public:
    // Starts a run: the roots are remembered and, with "Subfolders", the subfolders scanned.
    explicit BatchSession(const BatchJob& job);

    struct Folder {
        std::string source;  // ends in "/"
        std::string target;  // ends in "/"; created when missing
        // The job's picture rows apply: the source folder, or a subfolder whose list the
        // user made when prompted; other subfolders take all their pictures.
        bool ownRows = false;
    };
    // The folder to run next (the source folder first), or nothing when all are done.
    std::optional<Folder> NextFolder();
    const std::vector<std::string>& Subfolders() const { return walk_.Subfolders(); }

    // Runs job's pictures from folder into its target with the run state carried over; the
    // job's own folders are replaced by the folder's. Returns this folder's report.
    BatchRunReport Run(BatchJob job, const Folder& folder, BatchRunOptions options);

    // All folders so far together.
    const BatchRunReport& Total() const { return total_; }
    // The pictures written, in order, with their rows' captions.
    const std::vector<WrittenPicture>& Written() const { return written_; }
    const std::string& TargetRootFolder() const { return targetRoot_; }

private:
    std::string sourceRoot_, targetRoot_;
    bool started_ = false;
    SubfolderWalk walk_;
    std::optional<OverwriteAnswer> lasting_;
    BatchRunReport total_;
    std::vector<WrittenPicture> written_;
};

// The whole run without windows: every folder in turn with the same settings. A target
// folder that cannot be created stops the run.
BatchRunReport RunBatchTree(const BatchJob& job, const BatchRunOptions& options = {});

}  // namespace quorbel
