#pragma once
// The batch run as a pipeline: worker threads decode, resize, apply the effect, rotate and
// encode each picture to bytes in memory, a bounded number of pictures at a time; the calling
// thread then, in list order, forms each name, applies the collision rule, writes the bytes
// atomically, records the output and reports progress. The output does not depend on the
// number of threads.
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "batch/BatchJob.h"
#include "batch/BatchRules.h"
#include "imaging/cDib.h"

namespace quorbel {

// One picture the run will process, with the rotation and effect that apply to it.
struct BatchItem {
    std::filesystem::path source;
    std::string rotation;
    std::string effect;
    std::string caption;  // the row's caption, shown under the picture in a slide show
};

// The job's picture list: the [Pictures] rows (relative names joined to the source folder;
// rotation and effect the row's own unless the job's "all" boxes are on), or else every
// picture of the source folder that the job's file filter admits (by default the extensions
// the format table lists, any case), sorted by name.
std::vector<BatchItem> BatchItems(const BatchJob& job);

// A row's effect and rotation words applied as the run applies them (the wizard's preview).
void ApplyBatchEffect(cDib& dib, std::string_view effect);
void ApplyBatchRotation(cDib& dib, std::string_view rotation);

enum class OverwriteAnswer { Yes, YesToAll, No, NoToAll };
enum class PictureStatus { Written, Skipped, Failed };

struct PictureResult {
    size_t index = 0;  // in the run's list
    std::filesystem::path source;
    std::filesystem::path output;  // the name formed (Written and Skipped)
    PictureStatus status = PictureStatus::Failed;
    std::string message;  // why a picture failed or was skipped; what a written one left out
    PixelSize size;       // of the written picture
};

struct BatchRunOptions {
    int threads = 0;  // worker threads; 0 or less: one per core
    // Takes every shardCount-th picture starting at shardIndex (counted from 0). Renamed
    // pictures of a shard are then numbered by their place in the whole list, so the shards'
    // names never clash.
    int shardIndex = 0;
    int shardCount = 1;
    int64_t continuationBase = 0;  // numbering goes on after this number
    // Asked, in list order on the calling thread, when the output name exists and the job's
    // policy is Ask. Without it the picture is skipped (the answer No).
    std::function<OverwriteAnswer(const std::filesystem::path& existing)> ask;
    // After each picture: percent of the pictures done and the picture's file name.
    std::function<void(int percent, const std::string& file)> progress;
    std::function<void(const PictureResult&)> onPicture;
    // Set from any thread to stop between pictures.
    const std::atomic<bool>* cancel = nullptr;
};

struct BatchRunReport {
    int total = 0;
    int written = 0;
    int skipped = 0;
    std::vector<std::filesystem::path> outputs;  // in order
    std::vector<PictureResult> failures;         // in order
    std::vector<PictureResult> notes;            // written, but metadata or colour profile left out
    bool stopped = false;                        // the run ended before its last picture
    std::string stopReason;

    // "N pictures could not be processed" and a line per picture's name; empty when none.
    std::string FailureText() const;
};

BatchRunReport RunBatch(const BatchJob& job, const BatchRunOptions& options = {});


}  // namespace quorbel
