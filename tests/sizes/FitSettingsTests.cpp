#include <gtest/gtest.h>

#include "sizes/FitSettings.h"

namespace quorbel::test {
namespace {

TEST(FitRequestFromFields, ConvertsUnitsAndTheFileSize) {
    // 1440 twips an inch, 15 twips a pixel: 96 pixels an inch.
    const FitSettings inches{.fileSize = "250", .sizeScale = "KB", .quality = "Medium Quality", .scale = "Inches",
                             .maxWidth = "10", .maxHeight = "7.5", .minWidth = "1", .minHeight = ".5", .hw = false};
    const std::optional<FitRequest> r = MakeFitRequest(inches, 15.0);
    ASSERT_TRUE(r);
    EXPECT_EQ(std::tuple(LimitBytes(r->maxSize, r->unit), r->maxWidth, r->maxHeight, r->minWidth, r->minHeight),
              std::tuple(250000, 960, 720, 96, 48));
    EXPECT_EQ(std::tuple(r->startQuality, r->startMode), std::tuple("Medium Quality", FitMode::Quality));

    FitSettings mb = inches;
    mb.sizeScale = std::string("mb");
    mb.hw = true;
    const std::optional<FitRequest> m = MakeFitRequest(mb, 15.0);
    ASSERT_TRUE(m);
    EXPECT_EQ(std::tuple(LimitBytes(m->maxSize, m->unit), m->startMode), std::tuple(250000000, FitMode::WidthHeight));
}

TEST(FitRequestFromFields, NamesTheFirstFieldThatIsNotAPositiveNumber) {
    const FitSettings good{.maxWidth = "640", .maxHeight = "480"};
    std::string bad;
    ASSERT_TRUE(MakeFitRequest(good, 15.0, &bad));

    const std::pair<FitSettings, std::string> cases[] = {
        {{.fileSize = "lots", .maxWidth = "640", .maxHeight = "480"}, "FileSize"},
        {{.maxWidth = "640", .maxHeight = "0"}, "MaxHeight"},
        {{.maxWidth = "640", .maxHeight = "480", .minWidth = ""}, "MinWidth"},
        {{.maxWidth = "640", .maxHeight = "480", .minWidth = "0.2"}, "MinWidth"},  // under one pixel
    };
    for (const auto& [settings, key] : cases) {
        bad.clear();
        EXPECT_FALSE(MakeFitRequest(settings, 15.0, &bad));
        EXPECT_EQ(bad, key);
    }
}

}  // namespace
}  // namespace quorbel::test
