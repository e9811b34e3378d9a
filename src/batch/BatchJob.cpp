#include "batch/BatchJob.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>
#include <variant>

#include "core/RuntimeError.h"
#include "output/PictureFormats.h"
#include "sizes/JpegQuality.h"
#include "core/text/TextCase.h"

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

// The [Job] keys in the order they are written, each with the member it stands for. A text
// that must not be empty keeps its default when the file gives an empty one.
struct Text {
    std::string BatchJob::*member;
    bool keepDefaultWhenEmpty;
};
using JobField =
    std::variant<Text, bool BatchJob::*, double BatchJob::*, OutputType BatchJob::*, OverwritePolicy BatchJob::*>;
struct JobKey {
    std::string_view key;
    JobField field;
};
const JobKey kJobKeys[] = {
    {"Type", Text{&BatchJob::type, true}},          {"Destination", Text{&BatchJob::destination, true}},
    {"Source", Text{&BatchJob::source, false}},     {"Target", Text{&BatchJob::target, false}},
    {"CreateSubfolder", &BatchJob::createSubfolder}, {"Subfolders", &BatchJob::subfolders},
    {"Rename", &BatchJob::rename},                  {"NewName", Text{&BatchJob::newName, false}},
    {"Effect", Text{&BatchJob::effect, true}},      {"EffectAll", &BatchJob::effectAll},
    {"Rotation", Text{&BatchJob::rotation, true}},  {"RotateAll", &BatchJob::rotateAll},
    {"Preset", Text{&BatchJob::preset, true}},      {"Width", &BatchJob::width},
    {"Height", &BatchJob::height},                  {"Unit", Text{&BatchJob::unit, true}},
    {"KeepAspect", &BatchJob::keepAspect},          {"Resample", &BatchJob::resample},
    {"BestFit", &BatchJob::bestFit},                {"ForceResize", &BatchJob::forceResize},
    {"FitTurned", &BatchJob::fitTurned},            {"FileFilter", Text{&BatchJob::fileFilter, false}},
    {"RemoveGps", &BatchJob::removeGps},            {"RemoveMetadata", &BatchJob::removeMetadata},
    {"ConvertToSrgb", &BatchJob::convertToSrgb},    {"OutputType", &BatchJob::outputType},
    {"Quality", Text{&BatchJob::quality, true}},    {"AfterRun", Text{&BatchJob::afterRun, false}},
    {"Overwrite", &BatchJob::overwrite},
};

template <class... F>
struct Overloaded : F... {
    using F::operator()...;
};
template <class... F>
Overloaded(F...) -> Overloaded<F...>;

// Sets the member from the value when the value can be understood; else the member stays.
void ReadKey(const JobKey& k, std::string_view value, BatchJob& job) {
    std::visit(Overloaded{[&](const Text& t) {
                              if (!value.empty() || !t.keepDefaultWhenEmpty) job.*t.member = value;
                          },
                          [&](bool BatchJob::*m) {
                              if (auto b = ParseBool(value)) job.*m = *b;
                          },
                          [&](double BatchJob::*m) {
                              if (auto n = ParseNumber(value)) job.*m = *n;
                          },
                          [&](OutputType BatchJob::*m) {
                              if (auto t = ParseOutputType(value)) job.*m = *t;
                          },
                          [&](OverwritePolicy BatchJob::*m) {
                              if (auto p = ParseOverwritePolicy(value)) job.*m = *p;
                          }},
               k.field);
}

std::string KeyText(const JobKey& k, const BatchJob& job) {
    return std::visit(Overloaded{[&](const Text& t) { return job.*t.member; },
                                 [&](bool BatchJob::*m) { return std::string(job.*m ? "1" : "0"); },
                                 [&](double BatchJob::*m) { return NumberText(job.*m); },
                                 [&](OutputType BatchJob::*m) { return std::string(OutputTypeText(job.*m)); },
                                 [&](OverwritePolicy BatchJob::*m) {
                                     return std::string(OverwritePolicyText(job.*m));
                                 }},
                      k.field);
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

const std::array<std::string_view, std::size(kOutputFormats)> kOutputTypeTexts = [] {
    std::array<std::string_view, std::size(kOutputFormats)> texts{kKeepOriginalText};
    for (size_t i = 1; i < texts.size(); ++i) texts[i] = FormatRow(kOutputFormats[i])->typeText;
    return texts;
}();

std::string_view OutputTypeText(OutputType type) {
    return kOutputTypeTexts[static_cast<size_t>(type)];
}

PictureFormat OutputFormat(OutputType type) { return kOutputFormats[static_cast<size_t>(type)]; }

std::optional<OutputType> ParseOutputType(std::string_view text) {
    for (size_t i = 0; i < kOutputTypeTexts.size(); ++i) {
        if (EqualsIgnoreCase(text, kOutputTypeTexts[i]) ||
            (i > 0 && EqualsIgnoreCase(text, FormatRow(kOutputFormats[i])->Extension())))
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
    // The type decides the sharing defaults, which the file's own keys may then change.
    if (auto v = ini.Get(kJobSection, "Type")) ReadKey(kJobKeys[0], *v, job);
    SetSharingDefaults(job);
    for (const JobKey& k : kJobKeys)
        if (auto v = ini.Get(kJobSection, k.key)) ReadKey(k, *v, job);

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
    for (const JobKey& k : kJobKeys) ini.Set(kJobSection, k.key, KeyText(k, job));

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
