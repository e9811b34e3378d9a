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
    std::vector<BatchItem> all = BatchItems(job);
    std::vector<BatchItem> items;
    std::vector<size_t> listIndex;  // place in the whole list, for sharded numbering
    const int shards = std::max(1, options.shardCount);
    for (size_t i = 0; i < all.size(); ++i) {
        if (static_cast<int>(i % static_cast<size_t>(shards)) != options.shardIndex) continue;
        items.push_back(std::move(all[i]));
        listIndex.push_back(i);
    }
    const size_t n = items.size();
    report.total = static_cast<int>(n);

    const fs::path target(job.target);
    std::error_code ec;
    if (!fs::is_directory(target, ec)) {
        report.stopped = true;
        report.stopReason = "The target folder does not exist: " + target.string();
        return report;
    }
    // What a killed earlier run left half-written here goes before this run writes.
    RemoveStaleTemporaries(target);
    if (n == 0) return report;

    int threads = options.threads > 0 ? options.threads
                                      : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    threads = static_cast<int>(std::min<size_t>(static_cast<size_t>(threads), n));
    const size_t window = static_cast<size_t>(threads) * 2;  // pictures in flight at most

    std::vector<std::optional<Encoded>> slots(n);
    std::mutex mutex;
    std::condition_variable changed;
    size_t next = 0, consumed = 0;
    bool stop = false;

    auto worker = [&] {
        // With a picture per core in flight, each worker keeps its pixel loops to itself.
        const SerialLoopsOnThisThread serial(threads > 1);
        for (;;) {
            size_t i;
            {
                std::unique_lock lock(mutex);
                changed.wait(lock, [&] { return stop || next >= n || next < consumed + window; });
                if (stop || next >= n) return;
                i = next++;
            }
            Encoded encoded;
            try {
                encoded = Process(job, items[i]);
            } catch (const std::exception& e) {
                encoded = {};
                encoded.error = std::string("failed: ") + e.what();
            } catch (...) {
                encoded = {};
                encoded.error = "failed";
            }
            std::lock_guard lock(mutex);
            slots[i] = std::move(encoded);
            changed.notify_all();
        }
    };
    std::vector<std::thread> workers;
    // The workers are stopped and joined however the ordered stage ends (a callback may throw).
    auto stopWorkers = [&] {
        {
            std::lock_guard lock(mutex);
            stop = true;
            changed.notify_all();
        }
        for (auto& w : workers)
            if (w.joinable()) w.join();
    };
    struct Joiner {
        decltype(stopWorkers)& join;
        ~Joiner() { join(); }
    } joiner{stopWorkers};
    for (int t = 0; t < threads; ++t) workers.emplace_back(worker);

    bool newFilesToSync = false;
    std::optional<OverwriteAnswer> lasting;
    if (job.overwrite == OverwritePolicy::YesToAll) lasting = OverwriteAnswer::YesToAll;
    if (job.overwrite == OverwritePolicy::NoToAll) lasting = OverwriteAnswer::NoToAll;

    for (size_t i = 0; i < n; ++i) {
        if (options.cancel && options.cancel->load()) {
            report.stopped = true;
            report.stopReason = "Cancelled";
            break;
        }
        Encoded encoded;
        {
            std::unique_lock lock(mutex);
            changed.wait(lock, [&] { return slots[i].has_value(); });
            encoded = std::move(*slots[i]);
            slots[i].reset();
            consumed = i + 1;
            changed.notify_all();
        }
        PictureResult result;
        result.index = i;
        result.source = items[i].source;
        if (!encoded.error.empty()) {
            result.message = encoded.error;
        } else {
            const int64_t sequence = shards > 1 ? static_cast<int64_t>(listIndex[i]) + 1
                                                : options.continuationBase + report.written + 1;
            result.output = target / OutputFileName(job, items[i].source, encoded.extension, sequence);
            bool write = true;
            std::error_code existsError;
            const bool exists = fs::exists(fs::symlink_status(result.output, existsError));
            if (exists && !ReplacesSilently(job)) {
                OverwriteAnswer answer = OverwriteAnswer::No;
                if (lasting) answer = *lasting;
                else if (options.ask) answer = options.ask(result.output);
                if (answer == OverwriteAnswer::YesToAll || answer == OverwriteAnswer::NoToAll)
                    lasting = answer;
                write = answer == OverwriteAnswer::Yes || answer == OverwriteAnswer::YesToAll;
            }
            if (!write) {
                result.status = PictureStatus::Skipped;
                result.message = "exists, not replaced";
            } else if (const std::error_code writeError = ReplaceFileContents(
                           result.output, encoded.bytes, WriteOptions(exists, newFilesToSync))) {
                result.message = "could not be written: " + writeError.message();
                // A folder that is gone, read-only or full fails every picture after this one.
                const std::error_code& e = writeError;
                if (!fs::is_directory(target, existsError)) {
                    report.stopped = true;
                    report.stopReason = "The target folder is gone: " + target.string();
                } else if (e == std::errc::permission_denied || e == std::errc::read_only_file_system ||
                           e == std::errc::no_space_on_device || e == std::errc::operation_not_permitted) {
                    report.stopped = true;
                    report.stopReason = "The target folder cannot be written: " + writeError.message();
                }
            } else {
                result.status = PictureStatus::Written;
                result.size = encoded.size;
            }
        }
        switch (result.status) {
            case PictureStatus::Written:
                ++report.written;
                report.outputs.push_back(result.output);
                if (!encoded.note.empty()) {
                    result.message = encoded.note;
                    report.notes.push_back(result);
                }
                break;
            case PictureStatus::Skipped: ++report.skipped; break;
            case PictureStatus::Failed: report.failures.push_back(result); break;
        }
        if (options.onPicture) options.onPicture(result);
        if (options.progress)
            options.progress(static_cast<int>((i + 1) * 100 / n), items[i].source.filename().string());
        if (report.stopped) break;
    }
    stopWorkers();
    if (newFilesToSync) SyncFolder(target);
    return report;
}

}  // namespace quorbel
