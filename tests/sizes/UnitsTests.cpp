#include <gtest/gtest.h>

#include "core/RuntimeError.h"
#include "sizes/JpegQuality.h"
#include "core/text/NumberFormat.h"
#include "core/text/NumericText.h"
#include "sizes/Units.h"

namespace quorbel::test {
namespace {

constexpr double kTpp = kTwipsPerPixelAt96Dpi;

// 1440 twips an inch, 567 a centimetre, 20 a point; a character is 120 twips wide, 240 high.
struct UnitCase {
    int32_t px;
    const char* unit;
    double tpp;
    bool isHeight;
    const char* text;
};

TEST(Units, PixelsAreShownInEveryUnitWithTheHashFormat) {
    const UnitCase cases[] = {
        {96, "Inches", kTpp, false, "1."},          {100, "inches", kTpp, true, "1.04"},  // 1500 / 1440 = 1.0417
        {48, "INCHES", kTpp, false, ".5"},          {0, "Inches", kTpp, false, "."},
        {100, "Centimeters", kTpp, false, "2.65"},  // 1500 / 567 = 2.6455
        {100, "Millimeters", kTpp, false, "26.46"}, {100, "Points", kTpp, false, "75."},
        {100, "Twips", kTpp, false, "1500."},       {100, "Characters", kTpp, false, "12.5"},
        {100, "Characters", kTpp, true, "6.25"},    {100, "Pixels", kTpp, false, "100"},
        {100, "furlongs", kTpp, false, "100"},      {120, "Inches", 12.0, false, "1."},  // at 120 dpi
    };
    for (const UnitCase& c : cases)
        EXPECT_EQ(PixelsToUnitText(c.px, c.unit, c.tpp, c.isHeight), c.text) << c.px << " " << c.unit;
}

TEST(Units, UnitsToWholePixelsRoundHalfToEven) {
    const std::tuple<double, const char*, bool, int32_t> cases[] = {
        {4, "Inches", false, 384},   {2.54, "centimeters", false, 96},  // 1440.18 twips = 96.012 px
        {1, "Characters", false, 8}, {1, "Characters", true, 16},
        {22.5, "Twips", false, 2},   {37.5, "Twips", false, 2},  // 1.5 and 2.5 px
        {640.5, "Pixels", false, 640}};
    for (const auto& [value, unit, isHeight, px] : cases)
        EXPECT_EQ(UnitToPixels(value, unit, kTpp, isHeight), px) << value << unit;
    EXPECT_THROW(UnitToPixels(1e12, "Inches", kTpp, false), RuntimeError);
}

TEST(Units, ShownTextConvertsBackToTheSamePixels) {
    for (const std::string_view unit : kUnitNames)
        for (int32_t px = 0; px <= 3000; ++px)
            for (const bool isHeight : {false, true}) {
                const std::string text = PixelsToUnitText(px, unit, kTpp, isHeight);
                const std::optional<double> value = ParseNumericText(text == "." ? "0" : text);
                ASSERT_TRUE(value) << text;
                ASSERT_EQ(UnitToPixels(*value, unit, kTpp, isHeight), px) << unit << " " << text;
            }
}

TEST(Units, ScaleConvertRefusesWhatItCannotConvert) {
    EXPECT_DOUBLE_EQ(ScaleConvert(1, ScaleCode::Inches, ScaleCode::Centimeters, kTpp, false), 1440.0 / 567.0);
    EXPECT_DOUBLE_EQ(ScaleConvert(10, ScaleCode::Millimeters, ScaleCode::Centimeters, kTpp, false), 1.0);
    try {
        ScaleConvert(1, static_cast<ScaleCode>(9), ScaleCode::Pixels, kTpp, false);
        ADD_FAILURE() << "an unknown scale code was converted";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Number(), 5);
    }
    EXPECT_THROW(ScaleConvert(1, ScaleCode::Inches, ScaleCode::Pixels, 0.0, false), RuntimeError);
}

TEST(NumberFormat, HashFormatDropsLeadingAndTrailingZeros) {
    // 0.125 is exactly half: away from zero.
    const std::pair<double, const char*> cases[] = {{1.0, "1."},     {1.5, "1.5"},     {0.5, ".5"},
                                                    {0.004, "."},    {0.125, ".13"},   {0.996, "1."},
                                                    {-2.25, "-2.25"}, {-0.001, "."},  {1234567.891, "1234567.89"}};
    for (const auto& [value, text] : cases) EXPECT_EQ(FormatUpToTwoDecimals(value), text) << value;
}

TEST(JpegQuality, NamesNumbersAndEverythingElse) {
    const std::pair<const char*, int> cases[] = {
        {"Highest Quality", 95}, {"Higher Quality", 85}, {"Medium Quality", 75}, {"Lower Quality", 65},
        {"Lowest Quality", 50},  {"80", 80},  {" 70 ", 70}, {"80.5", 80}, {"81.5", 82},  // halves to even
        {"", 97}, {"highest quality", 97}, {"80%", 97}, {"inf", 97}};  // anything else: 97
    for (const auto& [name, quality] : cases) EXPECT_EQ(JpegQualityFromName(name), quality) << name;
    EXPECT_THROW(JpegQualityFromName("1e10"), RuntimeError);
}

TEST(NumericText, AcceptsPlainDecimalNumbersOnly) {
    EXPECT_EQ(ParseNumericText("3.5"), 3.5);
    EXPECT_EQ(ParseNumericText(" -.5 "), -0.5);
    EXPECT_EQ(ParseNumericText("+4."), 4.0);
    EXPECT_EQ(ParseNumericText("1e3"), 1000.0);
    for (const char* bad : {"", " ", ".", "+-1", "4 6", "0x10", "nan", "1e999", "3,5"})
        EXPECT_EQ(ParseNumericText(bad), std::nullopt) << bad;
}

}  // namespace
}  // namespace quorbel::test
