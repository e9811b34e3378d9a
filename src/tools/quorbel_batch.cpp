// quorbel-batch [--shard K/N] [--threads N] [--] JOB.ini: runs a saved batch job without
// windows. Relative folders in the job are taken from the job file's folder; a missing target
// folder is created. With Subfolders=1 every subfolder is run into a mirrored target folder.
// One line per picture, a summary; exit status 1 when a picture failed, 2 when the job could
// not run at all.
#include <charconv>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "batch/BatchJob.h"
#include "batch/BatchRun.h"
#include "batch/BatchSession.h"
#include "batch/JobCompletion.h"
#include "core/ProgramData.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kUsage =
    "usage: quorbel-batch [--shard K/N] [--threads N] [--] JOB.ini\n"
    "  --shard K/N   process every N-th picture of the list starting at K (0 <= K < N)\n"
    "  --threads N   worker threads (default: one per core)\n"
    "  --            ends the options: a job file whose name starts with '-' follows\n";

bool ParseInt(std::string_view text, int& out) {
    const auto [p, ec] = std::from_chars(text.data(), text.data() + text.size(), out);
    return ec == std::errc() && p == text.data() + text.size();
}

std::string Resolve(const std::string& folder, const fs::path& base) {
    if (folder.empty()) return base.string();
    const fs::path p(folder);
    return (p.is_absolute() ? p : base / p).lexically_normal().string();
}

// Without windows, the job's messages go to the output.
class PrintedMessages final : public quorbel::MessageBox {
public:
    quorbel::MsgReply Ask(const quorbel::MsgRequest& request) override {
        std::printf("%s\n", request.text.c_str());
        return {};
    }
};

}  // namespace

int main(int argc, char** argv) {
    using namespace quorbel;
    std::string jobFile;
    BatchRunOptions options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if ((arg == "--threads" || arg == "--shard") && i + 1 < argc) {
            const std::string_view value = argv[++i];
            if (arg == "--threads") {
                if (!ParseInt(value, options.threads) || options.threads < 1) {
                    std::fprintf(stderr, "quorbel-batch: --threads needs a number of 1 or more\n");
                    return 2;
                }
            } else {
                const size_t slash = value.find('/');
                if (slash == std::string_view::npos || !ParseInt(value.substr(0, slash), options.shardIndex) ||
                    !ParseInt(value.substr(slash + 1), options.shardCount) || options.shardCount < 1 ||
                    options.shardIndex < 0 || options.shardIndex >= options.shardCount) {
                    std::fprintf(stderr, "quorbel-batch: --shard needs K/N with 0 <= K < N\n");
                    return 2;
                }
            }
        } else if (arg == "-h" || arg == "--help") {
            std::fputs(kUsage, stdout);
            return 0;
        } else if (arg == "--" && jobFile.empty() && i + 2 == argc) {
            jobFile = argv[++i];
        } else if (jobFile.empty() && !arg.starts_with("-")) {
            jobFile = arg;
        } else {
            std::fputs(kUsage, stderr);
            return 2;
        }
    }
    if (jobFile.empty()) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    auto job = LoadBatchJob(jobFile);
    if (!job) {
        std::fprintf(stderr, "quorbel-batch: cannot read the job file %s\n", jobFile.c_str());
        return 2;
    }
    const fs::path base = fs::absolute(fs::path(jobFile)).parent_path();
    job->source = Resolve(job->source, base);
    job->target = Resolve(job->target, base);
    std::error_code ec;
    if (!fs::is_directory(job->source, ec)) {
        std::fprintf(stderr, "quorbel-batch: the source folder %s does not exist\n", job->source.c_str());
        return 2;
    }
    if (!fs::is_directory(job->target, ec) && !fs::create_directories(job->target, ec)) {
        std::fprintf(stderr, "quorbel-batch: cannot create the target folder %s\n", job->target.c_str());
        return 2;
    }
    if (job->overwrite == OverwritePolicy::Ask)
        std::printf("Overwrite=Ask: without windows, existing files are kept.\n");

    fs::path sourceRoot(job->source);
    if (!sourceRoot.has_filename()) sourceRoot = sourceRoot.parent_path();
    // The slide show's captions come from the rows of the picture list.
    std::map<fs::path, std::string> captions;
    for (const BatchItem& item : BatchItems(*job)) captions[item.source.lexically_normal()] = item.caption;
    std::vector<WrittenPicture> written;
    options.onPicture = [&sourceRoot, &captions, &written](const PictureResult& r) {
        if (r.status == PictureStatus::Written) written.push_back({r.output, captions[r.source.lexically_normal()]});
        // Named from the source folder on, so pictures of subfolders stay apart.
        const std::string name = r.source.lexically_relative(sourceRoot).string();
        switch (r.status) {
            case PictureStatus::Written:
                std::printf("written  %s -> %s (%dx%d)\n", name.c_str(), r.output.filename().c_str(),
                            r.size.width, r.size.height);
                break;
            case PictureStatus::Skipped:
                std::printf("skipped  %s -> %s %s\n", name.c_str(), r.output.filename().c_str(),
                            r.message.c_str());
                break;
            case PictureStatus::Failed:
                std::printf("failed   %s %s\n", name.c_str(), r.message.c_str());
                break;
        }
        std::fflush(stdout);
    };
    const auto start = std::chrono::steady_clock::now();
    BatchRunReport report = RunBatchTree(*job, options);
    if (!report.stopped) {
        PrintedMessages messages;
        Desktop desktop(messages);
        JobCompletionServices services{messages, desktop, FindProgramData(ProgramFolder())};
        CompleteJob(*job, written, report.outputs, services);
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%d pictures: %d written, %d skipped, %zu failed, in %.2f s; output in %s\n",
                report.total, report.written, report.skipped, report.failures.size(), seconds,
                job->target.c_str());
    if (!report.failures.empty()) std::printf("%s\n", report.FailureText().c_str());
    if (report.stopped) {
        std::fprintf(stderr, "quorbel-batch: %s\n", report.stopReason.c_str());
        return 1;
    }
    return report.failures.empty() ? 0 : 1;
}
