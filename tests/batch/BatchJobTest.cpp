#include <gtest/gtest.h>

#include <filesystem>

#include "batch/BatchJob.h"

namespace quorbel {
namespace {

TEST(BatchJob, EmptyFileGivesTheDefaults) {
    const BatchJob job = BatchJobFromIni(IniFile::FromText(""));
    EXPECT_EQ(job.type, "Resize");
    EXPECT_EQ(job.destination, "Copy to a folder on my computer");
    EXPECT_EQ(job.effect, "None");
    EXPECT_EQ(job.rotation, "None");
    EXPECT_EQ(job.preset, "Original Size");
    EXPECT_EQ(job.unit, "Pixels");
    EXPECT_EQ(job.outputType, OutputType::KeepOriginal);
    EXPECT_EQ(job.quality, "Highest Quality");
    EXPECT_EQ(job.JpegQuality(), 95);
    EXPECT_EQ(job.overwrite, OverwritePolicy::Ask);
    EXPECT_FALSE(job.rename);
    EXPECT_FALSE(job.forceResize);
    EXPECT_TRUE(job.pictures.empty());
    EXPECT_EQ(job, BatchJob{});
}

TEST(BatchJob, ReadsHandWrittenKeysAndIgnoresWhatItCannotUse) {
    const BatchJob job = BatchJobFromIni(IniFile::FromText(
        "[job]\n"
        "type=Web\n"
        "Width=12.5\n"
        "Height=abc\n"
        "Unit=Inches\n"
        "BestFit=False\n"
        "ForceResize=yes\n"
        "OutputType=png (*.PNG)\n"
        "Quality=80\n"
        "Overwrite=notoall\n"
        "Resample=maybe\n"
        "Colour=Blue\n"
        "[Pictures]\n"
        "Picture1=b.jpg\n"
        "Rotation1=Rotate Left\n"
        "Picture2=a.png\n"
        "Caption2=Beach\n"
        "Picture4=skipped because 3 is missing.jpg\n"));
    EXPECT_EQ(job.type, "Web");
    EXPECT_DOUBLE_EQ(job.width, 12.5);
    EXPECT_DOUBLE_EQ(job.height, 0);  // not a number: the default
    EXPECT_EQ(job.unit, "Inches");
    EXPECT_FALSE(job.bestFit);
    EXPECT_TRUE(job.forceResize);
    EXPECT_TRUE(job.resample);  // not a yes or no: the default
    EXPECT_EQ(job.outputType, OutputType::Png);
    EXPECT_EQ(job.JpegQuality(), 80);
    EXPECT_EQ(job.overwrite, OverwritePolicy::NoToAll);
    ASSERT_EQ(job.pictures.size(), 2u);
    EXPECT_EQ(job.pictures[0], (BatchPicture{"b.jpg", "Rotate Left", "None", ""}));
    EXPECT_EQ(job.pictures[1], (BatchPicture{"a.png", "None", "None", "Beach"}));

    EXPECT_EQ(BatchJobFromIni(IniFile::FromText("[Job]\nOutputType=Bogus\n")).outputType,
              OutputType::KeepOriginal);
    EXPECT_EQ(BatchJobFromIni(IniFile::FromText("[Job]\nQuality=Lowest Quality\n")).JpegQuality(), 50);
    EXPECT_EQ(BatchJobFromIni(IniFile::FromText("[Job]\nQuality=99999999999\n")).JpegQuality(), 97);
}

TEST(BatchJob, FileRoundTripKeepsEveryValue) {
    BatchJob job;
    job.type = "CD";
    job.destination = "Burn to CD/DVD";
    job.source = "/home/me/Pictures";
    job.target = "/home/me/Out";
    job.createSubfolder = true;
    job.subfolders = true;
    job.rename = true;
    job.newName = "Holiday 2008";
    job.effect = "Pixalate";
    job.effectAll = false;
    job.rotation = "Horizontal";
    job.rotateAll = false;
    job.preset = "Custom";
    job.width = 10.25;
    job.height = 7;
    job.unit = "Centimeters";
    job.keepAspect = false;
    job.resample = false;
    job.bestFit = false;
    job.forceResize = true;
    job.outputType = OutputType::Tiff;
    job.quality = "Lower Quality";
    job.afterRun = "Just finsh and close the Wizard.";
    job.overwrite = OverwritePolicy::YesToAll;
    job.pictures = {{"one.jpg", "Flip", "Blur", "First"}, {"sub/two.png", "None", "Despeckle More", ""}};

    const auto dir = std::filesystem::path(testing::TempDir()) / "batch_job_round_trip";
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    const auto file = dir / "job.ini";
    ASSERT_FALSE(SaveBatchJob(job, file));
    const auto loaded = LoadBatchJob(file);
    ASSERT_TRUE(loaded.has_value());
    EXPECT_EQ(*loaded, job);

    // Saving a shorter list over the file leaves no rows of the longer one behind.
    job.pictures.pop_back();
    ASSERT_FALSE(SaveBatchJob(job, file));
    EXPECT_EQ(LoadBatchJob(file)->pictures.size(), 1u);

    EXPECT_FALSE(LoadBatchJob(dir / "missing.ini").has_value());
    std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace quorbel
