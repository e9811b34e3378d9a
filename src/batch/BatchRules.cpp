#include "batch/BatchRules.h"

#include <algorithm>
#include <system_error>

#include "core/Rounding.h"
#include "effects/FilterList.h"
#include "output/PictureFormats.h"
#include "sizes/SizePresets.h"
#include "sizes/Units.h"

#include "core/text/TextCase.h"

namespace quorbel {
namespace {


// The source extension without its dot, lowered.
std::string SourceExtension(const std::filesystem::path& source) {
    std::string ext = source.extension().string();
    if (!ext.empty() && ext.front() == '.') ext.erase(0, 1);
    return ToLowerAscii(ext);
}

}  // namespace

std::optional<PixelSize> BatchBox(const BatchJob& job) {
    if (ClassifyPreset(job.preset) == SpecialPreset::OriginalSize) return std::nullopt;
    try {
        const int32_t w = UnitToPixels(job.width, job.unit, kTwipsPerPixelAt96Dpi, false);
        const int32_t h = UnitToPixels(job.height, job.unit, kTwipsPerPixelAt96Dpi, true);
        if (w <= 0 || h <= 0 || w > kMaxSide || h > kMaxSide) return std::nullopt;
        return PixelSize{w, h};
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

PixelSize BatchTargetSize(const BatchJob& job, int32_t width, int32_t height) {
    const PixelSize source{width, height};
    auto box = BatchBox(job);
    if (!box || width <= 0 || height <= 0) return source;
    // Long side to long side: a portrait photo against a landscape box uses the box turned.
    const bool portrait = height > width, tall = box->height > box->width;
    if (job.fitTurned && width != height && box->width != box->height && portrait != tall)
        std::swap(box->width, box->height);
    const bool fits = width <= box->width && height <= box->height;
    if (job.bestFit) {
        // The same arithmetic as cDib::GetBestFitInfo: ratios in single precision.
        if (fits && !job.forceResize) return source;
        const float rx = static_cast<float>(static_cast<double>(box->width) / width);
        const float ry = static_cast<float>(static_cast<double>(box->height) / height);
        PixelSize out;
        if (rx < ry) {
            out.width = box->width;
            out.height = RoundToInt32(static_cast<double>(rx) * height, "BatchTargetSize");
        } else {
            out.height = box->height;
            out.width = RoundToInt32(static_cast<double>(ry) * width, "BatchTargetSize");
        }
        out.width = std::max(out.width, 1);
        out.height = std::max(out.height, 1);
        return out;
    }
    if (job.keepAspect) {
        if (width <= box->width && !job.forceResize) return source;
        const double h = static_cast<double>(height) * box->width / width;
        return PixelSize{box->width, std::clamp(RoundToInt32(h, "BatchTargetSize"), 1, kMaxSide)};
    }
    if (fits && !job.forceResize) return source;
    return *box;
}

std::string PadSequence(int64_t number) {
    std::string digits = std::to_string(number);
    if (number >= 0 && digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
    return digits;
}

std::optional<std::string> OutputExtension(OutputType type, const std::filesystem::path& source) {
    if (type != OutputType::KeepOriginal) return std::string(FormatRow(OutputFormat(type))->Extension());
    const std::string ext = SourceExtension(source);
    for (const PictureFormatRow& row : PictureFormats())
        for (int i = 0; i < row.kept; ++i)
            if (ext == row.extensions[static_cast<size_t>(i)]) return std::string(FormatRow(row.keptAs)->Extension());
    return std::nullopt;
}

std::string OutputFileName(const BatchJob& job, const std::filesystem::path& source,
                           std::string_view extension, int64_t sequence) {
    const bool renames = job.Renames();
    if (!renames && SourceExtension(source) == extension) return source.filename().string();
    const std::string base =
        renames ? job.newName + "_" + PadSequence(sequence) : source.stem().string();
    return base + "." + std::string(extension);
}

int64_t HighestExistingNumber(const std::filesystem::path& folder, std::string_view newName) {
    int64_t highest = 0;
    if (newName.empty()) return 0;
    const std::string prefix = ToLowerAscii(newName);
    std::error_code ec;
    for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        std::string stem = ToLowerAscii(it->path().stem().string());
        if (stem.size() <= prefix.size() || stem.compare(0, prefix.size(), prefix) != 0) continue;
        std::string_view rest(stem);
        rest.remove_prefix(prefix.size());
        if (rest.front() == '_') rest.remove_prefix(1);
        if (rest.empty() || rest.size() > 15 ||
            !std::all_of(rest.begin(), rest.end(), [](char c) { return c >= '0' && c <= '9'; }))
            continue;
        highest = std::max<int64_t>(highest, std::stoll(std::string(rest)));
    }
    return highest;
}

bool ReplacesSilently(const BatchJob& job) {
    const std::string type = ToLowerAscii(job.type);
    return ToLowerAscii(job.destination) == ToLowerAscii(kDestinationDisc) || type == "email" || type == "cd";
}

int EffectIndex(std::string_view effect) {
    // The job's spellings of Pixelate find the list's own.
    if (EqualsIgnoreCase(effect, "pixalate") || EqualsIgnoreCase(effect, "pixelate")) return FindFilter("Pixelaze");
    return FindFilter(effect);  // "None" and unknown words: 0
}

Orientation OrientationFor(std::string_view rotation) {
    const std::string word = ToLowerAscii(rotation);
    // A left turn is a half turn (both flips) and then a quarter turn clockwise.
    if (word == "rotate left") return {true, true, true};
    if (word == "rotate right") return {false, false, true};
    if (word == "flip") return {false, true, false};
    if (word == "horizontal") return {true, false, false};
    return {};
}

}  // namespace quorbel
