#include "sizes/FitSettings.h"

#include "core/RuntimeError.h"
#include "settings/AppFolders.h"
#include "core/text/NumericText.h"
#include "settings/SettingsStore.h"
#include "core/text/TextCase.h"
#include "sizes/Units.h"

namespace quorbel {

namespace {

std::string Read(std::string_view key, const std::string& fallback) {
    return GetSetting(kAppName, kMakeItFitSection, key, fallback);
}

}  // namespace

FitSettings LoadFitSettings() {
    FitSettings s;
    s.fileSize = Read("FileSize", s.fileSize);
    s.sizeScale = Read("SizeScale", s.sizeScale);
    s.quality = Read("Quality", s.quality);
    s.scale = Read("Scale", s.scale);
    s.maxWidth = Read("MaxWidth", s.maxWidth);
    s.maxHeight = Read("MaxHeight", s.maxHeight);
    s.minWidth = Read("MinWidth", s.minWidth);
    s.minHeight = Read("MinHeight", s.minHeight);
    s.hw = EqualsIgnoreCase(Read("radHW", "False"), "True");
    return s;
}

bool SaveFitSettings(const FitSettings& s) {
    const std::pair<std::string_view, std::string> pairs[] = {
        {"FileSize", s.fileSize}, {"SizeScale", s.sizeScale}, {"Quality", s.quality},
        {"Scale", s.scale},       {"MaxWidth", s.maxWidth},   {"MaxHeight", s.maxHeight},
        {"MinWidth", s.minWidth}, {"MinHeight", s.minHeight}, {"radHW", s.hw ? "True" : "False"},
    };
    bool ok = true;
    for (const auto& [key, value] : pairs) ok = SaveSetting(kAppName, kMakeItFitSection, key, value) && ok;
    return ok;
}

FileSizeUnit FileSizeUnitFromText(std::string_view text) {
    return EqualsIgnoreCase(TrimBlanks(text), "MB") ? FileSizeUnit::MB : FileSizeUnit::KB;
}

std::optional<FitRequest> MakeFitRequest(const FitSettings& s, double twipsPerPixel, std::string* badKey) {
    auto bad = [badKey](std::string_view key) -> std::optional<FitRequest> {
        if (badKey) *badKey = key;
        return std::nullopt;
    };
    FitRequest r;
    const std::optional<double> size = ParseNumericText(s.fileSize);
    if (!size || *size <= 0) return bad("FileSize");
    r.maxSize = *size;
    r.unit = FileSizeUnitFromText(s.sizeScale);
    if (LimitBytes(r.maxSize, r.unit) <= 0) return bad("FileSize");

    const std::pair<std::string_view, const std::string*> sides[] = {
        {"MaxWidth", &s.maxWidth}, {"MaxHeight", &s.maxHeight},
        {"MinWidth", &s.minWidth}, {"MinHeight", &s.minHeight}};
    int32_t* targets[] = {&r.maxWidth, &r.maxHeight, &r.minWidth, &r.minHeight};
    for (size_t i = 0; i < 4; ++i) {
        const std::optional<double> value = ParseNumericText(*sides[i].second);
        if (!value || *value <= 0) return bad(sides[i].first);
        try {
            *targets[i] = UnitToPixels(*value, s.scale, twipsPerPixel, i % 2 == 1);
        } catch (const RuntimeError&) {
            return bad(sides[i].first);
        }
        if (*targets[i] < 1) return bad(sides[i].first);
    }
    r.startQuality = s.quality;
    r.startMode = s.hw ? FitMode::WidthHeight : FitMode::Quality;
    return r;
}

}  // namespace quorbel
