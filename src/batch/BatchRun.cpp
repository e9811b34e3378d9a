#include "batch/BatchRun.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

#include "batch/FolderScan.h"
#include "core/SafeFile.h"
#include "core/ThreadPool.h"
#include "effects/FilterList.h"
#include "imaging/ResizeDib.h"
#include "output/Codecs.h"
#include "output/FileBytes.h"
#include "output/JpegCodec.h"
#include "output/PictureFormat.h"
#include "output/PictureFormats.h"
#include "output/Upright.h"
#include "output/ColourProfile.h"
#include "metadata/PictureMetadata.h"
#include "metadata/ExifFacts.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

// The slider positions an effect word runs with: the filter window's initial ones, except
// for the two filters whose initial positions change nothing.
FilterSettings BatchEffectSettings(int index) {
    FilterSettings s = InitialSettings(index);
    const std::string_view name = FilterList()[index].name;
    if (name == "Diffuse") s.params = {2, 2, 1};
    if (name == "Pixelaze") s.params = {4, 0, 0};
    return s;
}

// What the parallel stage hands to the ordered stage.
struct Encoded {
    std::vector<uint8_t> bytes;
    std::string extension;
    PixelSize size;
    std::string error;
    std::string note;  // metadata or colour profile left out
};

// The source's colour profile: converted away when the job asks for sRGB or the output
// type cannot carry a profile, else kept.
void ApplyColourProfile(const BatchJob& job, const PictureFormatRow& output, cDib& dib, SourceMetadata& metadata,
                        std::string& note) {
    if ((output.carriesProfile && !job.convertToSrgb) || metadata.IccProfile().empty()) return;
    if (!ConvertToSrgb(dib, metadata.IccProfile())) note = "colour profile left out: it is damaged";
    metadata.SetIccProfile({});
}

bool Decode(const BatchJob& job, std::span<const uint8_t> bytes, cDib& dib, PixelSize& target) {
    if (DetectPictureFormat(bytes) == PictureFormat::Jpeg) {
        JpegInfo info;
        const int orientation = FileOrientation(bytes);
        if (ReadJpegInfo(bytes, info) == kJpegOk) {
            // Sizes are those of the upright picture; the scale is chosen on the stored one.
            const bool swaps = SwapsSides(orientation);
            const int w = swaps ? info.height : info.width, h = swaps ? info.width : info.height;
            target = BatchTargetSize(job, w, h);
            const bool resizes = target != PixelSize{w, h};
            // Shrink-on-load: the smallest DCT scale that is still at least twice the target.
            const int denominator =
                resizes ? JpegScaleDenominator(w, h, target.width, target.height) : 1;
            if (DecodeJpeg(bytes, dib, denominator) == kJpegOk && TurnUpright(dib, orientation)) return true;
        }
    }
    DecodedPicture picture;
    if (!DecodePicture(bytes, picture) || !picture.pixels.hDIB()) return false;
    dib = std::move(picture.pixels);
    target = BatchTargetSize(job, dib.Width(), dib.Height());
    return true;
}

// The parallel stage for one picture: read, decode, resize, effect, rotation, encode.
Encoded Process(const BatchJob& job, const BatchItem& item) {
    Encoded result;
    const auto extension = OutputExtension(job.outputType, item.source);
    if (!extension) {
        result.error = "no picture type to save it as";
        return result;
    }
    result.extension = *extension;
    const PictureFormatRow& output = *RowWritingExtension(result.extension);
    std::vector<uint8_t> bytes;
    if (ReadWholeFile(item.source, bytes)) {
        result.error = "could not be read";
        return result;
    }
    cDib dib;
    PixelSize target;
    if (!Decode(job, bytes, dib, target)) {
        result.error = "is not a picture that can be read";
        return result;
    }
    SourceMetadata metadata = ReadMetadata(bytes);
    result.note = metadata.Note();
    bytes = {};
    ApplyColourProfile(job, output, dib, metadata, result.note);
    if (target != PixelSize{dib.Width(), dib.Height()} &&
        !ResizeDib(dib, target.width, target.height, job.resample)) {
        result.error = "could not be resized";
        return result;
    }
    ApplyBatchEffect(dib, item.effect);
    ApplyBatchRotation(dib, item.rotation);
    const MetadataOptions keep{job.removeGps, job.removeMetadata};
    EncodeSettings settings{.quality = job.JpegQuality()};
    MetadataBlocks blocks;
    if (output.metadataWhileEncoding) {
        blocks = OutputBlocks(metadata, dib.Width(), dib.Height(), keep);
        settings.metadata = &blocks;
    }
    if (!output.encode(dib, settings, result.bytes)) {
        result.error = "could not be encoded";
        result.bytes.clear();
        return result;
    }
    result.size = {dib.Width(), dib.Height()};
    WriteMetadata(metadata, result.bytes, dib.Width(), dib.Height(), keep, &result.note);
    return result;
}

// A file that replaces an existing one is made durable before the rename, so the old file
// is never lost. New files are renamed into place complete but not flushed one by one (two
// fsyncs a picture made them the slowest step of a run); the run flushes them all at its end.
ReplaceOptions WriteOptions(bool replaces, bool& newFilesToSync) {
    ReplaceOptions o;
    o.durable = replaces;
    if (!replaces) newFilesToSync = true;
    return o;
}

void SyncFolder(const fs::path& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::syncfs(fd);
    ::close(fd);
}

// Process, with whatever it throws turned into the picture's error.
Encoded ProcessCatching(const BatchJob& job, const BatchItem& item) {
    try {
        return Process(job, item);
    } catch (const std::exception& e) {
        Encoded failed;
        failed.error = std::string("failed: ") + e.what();
        return failed;
    } catch (...) {
        Encoded failed;
        failed.error = "failed";
        return failed;
    }
}

// This run's share of the picture list, each with its place in the whole list (renamed
// pictures of a shard are numbered by that place).
struct ShardList {
    std::vector<BatchItem> items;
    std::vector<size_t> listIndex;
};

ShardList TakeShard(std::vector<BatchItem> all, const BatchRunOptions& options) {
    ShardList shard;
    const size_t shards = static_cast<size_t>(std::max(1, options.shardCount));
    for (size_t i = 0; i < all.size(); ++i) {
        if (static_cast<int>(i % shards) != options.shardIndex) continue;
        shard.items.push_back(std::move(all[i]));
        shard.listIndex.push_back(i);
    }
    return shard;
}

// The target must be a folder; what a killed earlier run left half-written there goes
// before this run writes. False (the report says why) when the run cannot start.
bool PrepareTarget(const fs::path& target, BatchRunReport& report) {
    std::error_code ec;
    if (!fs::is_directory(target, ec)) {
        report.stopped = true;
        report.stopReason = "The target folder does not exist: " + target.string();
        return false;
    }
    RemoveStaleTemporaries(target);
    return true;
}

int WorkerCount(const BatchRunOptions& options, size_t pictures) {
    const int threads = options.threads > 0 ? options.threads
                                            : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    return static_cast<int>(std::min<size_t>(static_cast<size_t>(threads), pictures));
}

// The parallel stage: worker threads process pictures in list order, at most two per
// thread ahead of the last one the ordered stage took. The workers are stopped and joined
// however the ordered stage ends (a callback may throw): Stop runs on destruction too.
class EncodeWorkers {
public:
    EncodeWorkers(const BatchJob& job, const std::vector<BatchItem>& items, int threads)
        : job_(job), items_(items), threads_(threads), window_(static_cast<size_t>(threads) * 2),
          slots_(items.size()) {}
    ~EncodeWorkers() { Stop(); }
    EncodeWorkers(const EncodeWorkers&) = delete;
    EncodeWorkers& operator=(const EncodeWorkers&) = delete;

    void Start() {
        for (int t = 0; t < threads_; ++t) workers_.emplace_back([this] { Work(); });
    }

    // Waits for picture i, hands it over and makes room for one more in flight.
    Encoded Take(size_t i) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return slots_[i].has_value(); });
        Encoded encoded = std::move(*slots_[i]);
        slots_[i].reset();
        consumed_ = i + 1;
        changed_.notify_all();
        return encoded;
    }

    void Stop() {
        {
            std::lock_guard lock(mutex_);
            stop_ = true;
            changed_.notify_all();
        }
        for (auto& w : workers_)
            if (w.joinable()) w.join();
    }

private:
    void Work() {
        // With a picture per core in flight, each worker keeps its pixel loops to itself.
        const SerialLoopsOnThisThread serial(threads_ > 1);
        const size_t n = items_.size();
        for (;;) {
            size_t i;
            {
                std::unique_lock lock(mutex_);
                changed_.wait(lock, [&] { return stop_ || next_ >= n || next_ < consumed_ + window_; });
                if (stop_ || next_ >= n) return;
                i = next_++;
            }
            Encoded encoded = ProcessCatching(job_, items_[i]);
            std::lock_guard lock(mutex_);
            slots_[i] = std::move(encoded);
            changed_.notify_all();
        }
    }

    const BatchJob& job_;
    const std::vector<BatchItem>& items_;
    const int threads_;
    const size_t window_;  // pictures in flight at most
    std::vector<std::optional<Encoded>> slots_;
    std::mutex mutex_;
    std::condition_variable changed_;
    size_t next_ = 0, consumed_ = 0;
    bool stop_ = false;
    std::vector<std::thread> workers_;
};

// The ordered stage, on the calling thread: names each encoded picture, asks before
// replacing, writes and records, in list order.
class OrderedWrites {
public:
    OrderedWrites(const BatchJob& job, const BatchRunOptions& options, const fs::path& target,
                  BatchRunReport& report)
        : job_(job), options_(options), target_(target), report_(report) {
        if (job.overwrite == OverwritePolicy::YesToAll) lasting_ = OverwriteAnswer::YesToAll;
        if (job.overwrite == OverwritePolicy::NoToAll) lasting_ = OverwriteAnswer::NoToAll;
    }

    // Writes picture i (numbered sequence when renamed), records it and tells the callbacks.
    void Write(size_t i, const BatchItem& item, int64_t sequence, const Encoded& encoded) {
        PictureResult result;
        result.index = i;
        result.source = item.source;
        if (!encoded.error.empty()) result.message = encoded.error;
        else WriteFile(result, OutputFileName(job_, item.source, encoded.extension, sequence), encoded);
        Record(result, encoded);
        if (options_.onPicture) options_.onPicture(result);
    }

    bool NewFilesToSync() const { return newFilesToSync_; }

private:
    void WriteFile(PictureResult& result, const std::string& name, const Encoded& encoded) {
        result.output = target_ / name;
        std::error_code existsError;
        const bool exists = fs::exists(fs::symlink_status(result.output, existsError));
        if (exists && !ReplacesSilently(job_) && !MayReplace(result.output)) {
            result.status = PictureStatus::Skipped;
            result.message = "exists, not replaced";
        } else if (const std::error_code writeError = ReplaceFileContents(
                       result.output, encoded.bytes, WriteOptions(exists, newFilesToSync_))) {
            result.message = "could not be written: " + writeError.message();
            StopWhenTargetFails(writeError);
        } else {
            result.status = PictureStatus::Written;
            result.size = encoded.size;
        }
    }

    // The overwrite question; a Yes to All or No to All answer (or the job's policy) holds
    // for the rest of the run. Without a question the answer is No.
    bool MayReplace(const fs::path& existing) {
        OverwriteAnswer answer = lasting_;
        if (lasting_ == OverwriteAnswer::No && options_.ask) answer = options_.ask(existing);
        if (answer == OverwriteAnswer::YesToAll || answer == OverwriteAnswer::NoToAll) lasting_ = answer;
        return answer == OverwriteAnswer::Yes || answer == OverwriteAnswer::YesToAll;
    }

    // A folder that is gone, read-only or full fails every picture after this one.
    void StopWhenTargetFails(const std::error_code& e) {
        std::error_code ec;
        if (!fs::is_directory(target_, ec)) {
            report_.stopped = true;
            report_.stopReason = "The target folder is gone: " + target_.string();
        } else if (e == std::errc::permission_denied || e == std::errc::read_only_file_system ||
                   e == std::errc::no_space_on_device || e == std::errc::operation_not_permitted) {
            report_.stopped = true;
            report_.stopReason = "The target folder cannot be written: " + e.message();
        }
    }

    void Record(PictureResult& result, const Encoded& encoded) {
        switch (result.status) {
            case PictureStatus::Written:
                ++report_.written;
                report_.outputs.push_back(result.output);
                if (!encoded.note.empty()) {
                    result.message = encoded.note;
                    report_.notes.push_back(result);
                }
                break;
            case PictureStatus::Skipped: ++report_.skipped; break;
            case PictureStatus::Failed: report_.failures.push_back(result); break;
        }
    }

    const BatchJob& job_;
    const BatchRunOptions& options_;
    const fs::path& target_;
    BatchRunReport& report_;
    // Yes to All or No to All once given; No (a plain No never lasts) until then.
    OverwriteAnswer lasting_ = OverwriteAnswer::No;
    bool newFilesToSync_ = false;
};

}  // namespace

void ApplyBatchEffect(cDib& dib, std::string_view effect) {
    if (const int index = EffectIndex(effect); index > 0) {
        cDIBFilter engine;
        ApplyFilter(engine, dib, index, BatchEffectSettings(index));
    }
}

void ApplyBatchRotation(cDib& dib, std::string_view rotation) {
    const Orientation o = OrientationFor(rotation);
    if (o.flipHorizontal || o.flipVertical || o.rotate) dib.Orientation(o.flipHorizontal, o.flipVertical, o.rotate);
}

std::vector<BatchItem> BatchItems(const BatchJob& job) {
    std::vector<BatchItem> items;
    const fs::path folder(job.source);
    if (!job.pictures.empty()) {
        for (const BatchPicture& row : job.pictures) {
            items.push_back({folder / row.file, job.rotateAll ? job.rotation : row.rotation,
                             job.effectAll ? job.effect : row.effect, row.caption});
        }
        return items;
    }
    for (auto& f : ListPictures(folder, PictureFilter::FromText(job.fileFilter))) items.push_back({std::move(f), job.rotation, job.effect, {}});
    return items;
}

std::string BatchRunReport::FailureText() const {
    if (failures.empty()) return {};
    std::string text = std::to_string(failures.size()) + " pictures could not be processed";
    for (const PictureResult& f : failures) {
        text += '\n';
        text += f.source.filename().string();
    }
    return text;
}

BatchRunReport RunBatch(const BatchJob& job, const BatchRunOptions& options) {
    BatchRunReport report;
    const ShardList shard = TakeShard(BatchItems(job), options);
    const size_t n = shard.items.size();
    report.total = static_cast<int>(n);
    const fs::path target(job.target);
    if (!PrepareTarget(target, report) || n == 0) return report;

    EncodeWorkers workers(job, shard.items, WorkerCount(options, n));
    workers.Start();
    OrderedWrites writes(job, options, target, report);
    for (size_t i = 0; i < n && !report.stopped; ++i) {
        if (options.cancel && options.cancel->load()) {
            report.stopped = true;
            report.stopReason = "Cancelled";
            break;
        }
        const int64_t sequence = options.shardCount > 1 ? static_cast<int64_t>(shard.listIndex[i]) + 1
                                                        : options.continuationBase + report.written + 1;
        writes.Write(i, shard.items[i], sequence, workers.Take(i));
        if (options.progress)
            options.progress(static_cast<int>((i + 1) * 100 / n), shard.items[i].source.filename().string());
    }
    workers.Stop();
    if (writes.NewFilesToSync()) SyncFolder(target);
    return report;
}

}  // namespace quorbel
