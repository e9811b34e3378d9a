#include <gtest/gtest.h>

#include <set>

#include "Scratch.h"
#include "batch/BatchJob.h"

namespace quorbel {
namespace {

BatchJob Read(const std::string& text) { return BatchJobFromIni(IniFile::FromText(text)); }

// The [Job] keys of the README's job-file example, copied from it, each with a value that is
// not its default; then the keys written and read that the example leaves out.
const std::pair<std::string, std::string> kReadmeKeys[] = {
    {"Type", "Web"}, {"Source", "/home/me/Pictures"}, {"Target", "/home/me/Small"}, {"Subfolders", "1"},
    {"CreateSubfolder", "1"}, {"FileFilter", "jpg;png"}, {"Rename", "1"}, {"NewName", "holiday"}, {"Effect", "Blur"},
    {"Rotation", "Rotate Right"}, {"Preset", "Custom"}, {"Width", "640"}, {"Height", "480"}, {"Unit", "Inches"},
    {"KeepAspect", "0"}, {"Resample", "0"}, {"BestFit", "0"}, {"ForceResize", "1"}, {"FitTurned", "0"},
    {"OutputType", "JPEG (*.jpg)"}, {"Quality", "Higher Quality"}, {"Overwrite", "YesToAll"}, {"AfterRun", "Folder"}};
const std::pair<std::string, std::string> kUnlistedKeys[] = {
    {"Destination", "Burn to CD/DVD"}, {"EffectAll", "0"}, {"RotateAll", "0"},
    {"RemoveGps", "1"}, {"RemoveMetadata", "1"}, {"ConvertToSrgb", "1"}};

TEST(BatchJob, TheReadmesKeysAreTheOnesWrittenAndRead) {
    std::string text = "[Job]\n";
    std::set<std::string> keys;
    using Keys = std::span<const std::pair<std::string, std::string>>;
    for (const Keys table : {Keys(kReadmeKeys), Keys(kUnlistedKeys)})
        for (const auto& [key, value] : table) {
            EXPECT_NE(Read("[Job]\n" + key + "=" + value), BatchJob{}) << key << " is not read";
            text += key + "=" + value + "\n";
            keys.insert(key);
        }
    const BatchJob job = Read(text + "[Pictures]\nPicture1=a.jpg\nRotation1=Flip\nEffect1=Blur\nCaption1=The harbour\n");
    EXPECT_EQ(job.pictures, (std::vector<BatchPicture>{{"a.jpg", "Flip", "Blur", "The harbour"}}));
    IniFile written;
    BatchJobToIni(job, written);
    const std::vector<std::string> jobKeys = written.Keys(kJobSection);
    EXPECT_EQ(std::set(jobKeys.begin(), jobKeys.end()), keys);
    EXPECT_EQ(written.Keys(kPicturesSection), (std::vector<std::string>{"Picture1", "Rotation1", "Effect1", "Caption1"}));
    EXPECT_EQ(BatchJobFromIni(written), job);
}

TEST(BatchJob, ReadsHandWrittenValuesAndIgnoresWhatItCannotUse) {
    EXPECT_EQ(Read(""), BatchJob{});
    EXPECT_EQ(BatchJob{}.JpegQuality(), 95);  // "Highest Quality"
    const BatchJob job = Read("[job]\ntype=Web\nWidth=12.5\nHeight=abc\nBestFit=False\nForceResize=yes\n"
                              "OutputType=png (*.PNG)\nQuality=80\nOverwrite=notoall\nResample=maybe\nColour=Blue\n"
                              "[Pictures]\nPicture1=b.jpg\nPicture2=a.png\nCaption2=Beach\nPicture4=after a gap.jpg\n");
    EXPECT_EQ(job.type, "Web");
    EXPECT_TRUE(job.removeGps && job.convertToSrgb);  // a web job's sharing defaults
    EXPECT_DOUBLE_EQ(job.width, 12.5);
    EXPECT_DOUBLE_EQ(job.height, 0);  // not a number: the default
    EXPECT_FALSE(job.bestFit);
    EXPECT_TRUE(job.forceResize);
    EXPECT_TRUE(job.resample);  // not a yes or no: the default
    EXPECT_EQ(job.outputType, OutputType::Png);
    EXPECT_EQ(job.JpegQuality(), 80);
    EXPECT_EQ(job.overwrite, OverwritePolicy::NoToAll);
    EXPECT_EQ(job.pictures, (std::vector<BatchPicture>{{"b.jpg"}, {"a.png", "None", "None", "Beach"}}));
    EXPECT_EQ(Read("[Job]\nOutputType=tif\n").outputType, OutputType::Tiff);
    EXPECT_EQ(Read("[Job]\nOutputType=Bogus\n").outputType, OutputType::KeepOriginal);
    EXPECT_EQ(Read("[Job]\nQuality=Lowest Quality\n").JpegQuality(), 50);
    EXPECT_EQ(Read("[Job]\nQuality=99999999999\n").JpegQuality(), 97);
}

TEST(BatchJob, FileRoundTripLeavesNoOldRowsBehind) {
    const test::ScratchDir dir;
    BatchJob job = Read("[Job]\nType=CD\nNewName=Holiday 2008\nWidth=10.25\nAfterRun=Just finsh and close the Wizard.\n");
    job.pictures = {{"one.jpg", "Flip", "Blur", "First"}, {"sub/two.png", "None", "Despeckle More", ""}};
    ASSERT_FALSE(SaveBatchJob(job, dir / "job.ini"));
    EXPECT_EQ(LoadBatchJob(dir / "job.ini"), job);
    job.pictures.pop_back();
    ASSERT_FALSE(SaveBatchJob(job, dir / "job.ini"));
    EXPECT_EQ(LoadBatchJob(dir / "job.ini"), job);
    EXPECT_FALSE(LoadBatchJob(dir / "missing.ini").has_value());
}

}  // namespace
}  // namespace quorbel
