#include "batch/BatchJob.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

#include "core/RuntimeError.h"
#include "shell/JpegQuality.h"

#include "shell/TextCase.h"

namespace quorbel {
namespace {



std::optional<bool> ParseBool(std::string_view text) {
    const std::string t = ToLowerAscii(text);
    if (t == "1" || t == "true" || t == "yes" || t == "-1") return true;
    if (t == "0" || t == "false" || t == "no") return false;
    return std::nullopt;
}

std::optional<double> ParseNumber(std::string_view text) {
    double v = 0;
    const char* end = text.data() + text.size();
    const auto [p, ec] = std::from_chars(text.data(), end, v);
    if (ec != std::errc() || p != end || !std::isfinite(v) || v < 0) return std::nullopt;
    return v;
}

std::string NumberText(double v) {
    char buf[64];
    const auto [p, ec] = std::to_chars(buf, buf + sizeof buf, v);
    return ec == std::errc() ? std::string(buf, p) : std::string("0");
}

void ReadText(const IniFile& ini, std::string_view key, std::string& out) {
    if (auto v = ini.Get(kJobSection, key)) out = *v;
}

void ReadNonEmpty(const IniFile& ini, std::string_view key, std::string& out) {
    if (auto v = ini.Get(kJobSection, key); v && !v->empty()) out = *v;
}

void ReadBool(const IniFile& ini, std::string_view key, bool& out) {
    if (auto v = ini.Get(kJobSection, key))
        if (auto b = ParseBool(*v)) out = *b;
}

void ReadNumber(const IniFile& ini, std::string_view key, double& out) {
    if (auto v = ini.Get(kJobSection, key))
        if (auto n = ParseNumber(*v)) out = *n;
}

std::string PictureKey(std::string_view name, size_t row) {
    return std::string(name) + std::to_string(row + 1);
}

}  // namespace

int32_t BatchJob::JpegQuality() const {
    try {
        return JpegQualityFromName(quality);
    } catch (const RuntimeError&) {
        return kDefaultJpegQuality;
    }
}

std::string_view OutputTypeText(OutputType type) {
    return kOutputTypeTexts[static_cast<int>(type)];
}

std::optional<OutputType> ParseOutputType(std::string_view text) {
    static constexpr std::string_view kExtensions[] = {"", "jpg", "gif", "png", "tif", "bmp", "webp", "avif"};
    for (int i = 0; i < static_cast<int>(std::size(kExtensions)); ++i) {
        if (EqualsIgnoreCase(text, kOutputTypeTexts[i]) || (i > 0 && EqualsIgnoreCase(text, kExtensions[i])))
            return static_cast<OutputType>(i);
    }
    return std::nullopt;
}

std::string_view OverwritePolicyText(OverwritePolicy policy) {
    switch (policy) {
        case OverwritePolicy::YesToAll: return "YesToAll";
        case OverwritePolicy::NoToAll: return "NoToAll";
        case OverwritePolicy::Ask: break;
    }
    return "Ask";
}

std::optional<OverwritePolicy> ParseOverwritePolicy(std::string_view text) {
    for (auto p : {OverwritePolicy::Ask, OverwritePolicy::YesToAll, OverwritePolicy::NoToAll})
        if (EqualsIgnoreCase(text, OverwritePolicyText(p))) return p;
    return std::nullopt;
}

void SetSharingDefaults(BatchJob& job) {
    job.removeGps = job.convertToSrgb = job.type == "Email" || job.type == "Web";
}

BatchJob BatchJobFromIni(const IniFile& ini) {
    BatchJob job;
    ReadNonEmpty(ini, "Type", job.type);
    SetSharingDefaults(job);
    ReadBool(ini, "RemoveGps", job.removeGps);
    ReadBool(ini, "RemoveMetadata", job.removeMetadata);
    ReadBool(ini, "ConvertToSrgb", job.convertToSrgb);
    ReadNonEmpty(ini, "Destination", job.destination);
    ReadText(ini, "Source", job.source);
    ReadText(ini, "Target", job.target);
    ReadBool(ini, "CreateSubfolder", job.createSubfolder);
    ReadBool(ini, "Subfolders", job.subfolders);
    ReadBool(ini, "Rename", job.rename);
    ReadText(ini, "NewName", job.newName);
    ReadNonEmpty(ini, "Effect", job.effect);
    ReadBool(ini, "EffectAll", job.effectAll);
    ReadNonEmpty(ini, "Rotation", job.rotation);
    ReadBool(ini, "RotateAll", job.rotateAll);
    ReadNonEmpty(ini, "Preset", job.preset);
    ReadNumber(ini, "Width", job.width);
    ReadNumber(ini, "Height", job.height);
    ReadNonEmpty(ini, "Unit", job.unit);
    ReadBool(ini, "KeepAspect", job.keepAspect);
    ReadBool(ini, "Resample", job.resample);
    ReadBool(ini, "BestFit", job.bestFit);
    ReadBool(ini, "ForceResize", job.forceResize);
    ReadBool(ini, "FitTurned", job.fitTurned);
    ReadText(ini, "FileFilter", job.fileFilter);
    if (auto v = ini.Get(kJobSection, "OutputType"))
        if (auto t = ParseOutputType(*v)) job.outputType = *t;
    ReadNonEmpty(ini, "Quality", job.quality);
    ReadText(ini, "AfterRun", job.afterRun);
    if (auto v = ini.Get(kJobSection, "Overwrite"))
        if (auto p = ParseOverwritePolicy(*v)) job.overwrite = *p;

    // Rows Picture1, Picture2, ... until the first missing number.
    for (size_t row = 0;; ++row) {
        auto file = ini.Get(kPicturesSection, PictureKey("Picture", row));
        if (!file || file->empty()) break;
        BatchPicture picture;
        picture.file = *file;
        if (auto v = ini.Get(kPicturesSection, PictureKey("Rotation", row)); v && !v->empty())
            picture.rotation = *v;
        if (auto v = ini.Get(kPicturesSection, PictureKey("Effect", row)); v && !v->empty())
            picture.effect = *v;
        if (auto v = ini.Get(kPicturesSection, PictureKey("Caption", row))) picture.caption = *v;
        job.pictures.push_back(std::move(picture));
    }
    return job;
}

void BatchJobToIni(const BatchJob& job, IniFile& ini) {
    auto set = [&](std::string_view key, std::string_view value) { ini.Set(kJobSection, key, value); };
    auto setBool = [&](std::string_view key, bool value) { set(key, value ? "1" : "0"); };
    set("Type", job.type);
    set("Destination", job.destination);
    set("Source", job.source);
    set("Target", job.target);
    setBool("CreateSubfolder", job.createSubfolder);
    setBool("Subfolders", job.subfolders);
    setBool("Rename", job.rename);
    set("NewName", job.newName);
    set("Effect", job.effect);
    setBool("EffectAll", job.effectAll);
    set("Rotation", job.rotation);
    setBool("RotateAll", job.rotateAll);
    set("Preset", job.preset);
    set("Width", NumberText(job.width));
    set("Height", NumberText(job.height));
    set("Unit", job.unit);
    setBool("KeepAspect", job.keepAspect);
    setBool("Resample", job.resample);
    setBool("BestFit", job.bestFit);
    setBool("ForceResize", job.forceResize);
    setBool("FitTurned", job.fitTurned);
    set("FileFilter", job.fileFilter);
    setBool("RemoveGps", job.removeGps);
    setBool("RemoveMetadata", job.removeMetadata);
    setBool("ConvertToSrgb", job.convertToSrgb);
    set("OutputType", OutputTypeText(job.outputType));
    set("Quality", job.quality);
    set("AfterRun", job.afterRun);
    set("Overwrite", OverwritePolicyText(job.overwrite));

    ini.DeleteSection(kPicturesSection);
    for (size_t row = 0; row < job.pictures.size(); ++row) {
        const BatchPicture& p = job.pictures[row];
        ini.Set(kPicturesSection, PictureKey("Picture", row), p.file);
        ini.Set(kPicturesSection, PictureKey("Rotation", row), p.rotation);
        ini.Set(kPicturesSection, PictureKey("Effect", row), p.effect);
        ini.Set(kPicturesSection, PictureKey("Caption", row), p.caption);
    }
}

std::optional<BatchJob> LoadBatchJob(const std::filesystem::path& file) {
    const IniFile ini = ReadIniFile(file);
    if (ini.State() != IniFileState::Read) return std::nullopt;
    return BatchJobFromIni(ini);
}

std::error_code SaveBatchJob(const BatchJob& job, const std::filesystem::path& file) {
    std::error_code result;
    const bool ok = ModifyIniFile(file, [&](IniFile& ini) {
        BatchJobToIni(job, ini);
        return true;
    });
    if (!ok) result = std::make_error_code(std::errc::io_error);
    return result;
}

}  // namespace quorbel
