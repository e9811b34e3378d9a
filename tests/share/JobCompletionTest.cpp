#include "batch/JobCompletion.h"

#include "ShareFixture.h"
#include "Pictures.h"
#include "core/ProgramData.h"
#include "output/Codecs.h"
#include "output/FileBytes.h"
#include "share/Disc.h"

namespace quorbel::test {
namespace {

class JobCompletionTest : public ShareTest {
protected:
    std::vector<fs::path> Run(const std::string& type, const std::vector<WrittenPicture>& pictures) {
        BatchJob job;
        job.type = type;
        job.target = dir_.path.string();
        std::vector<fs::path> outputs;
        for (const WrittenPicture& p : pictures) outputs.push_back(p.output);
        // The data as the build lays it out beside the programs.
        JobCompletionServices services{messages_, desktop_, FindProgramData(ProgramFolder())};
        CompleteJob(job, pictures, outputs, services);
        return outputs;
    }
};

TEST_F(JobCompletionTest, WebAddsThePageAndScriptCdAlsoItsThreeFiles) {
    const std::vector<WrittenPicture> pictures{{dir_ / "a.jpg", "Beach"}, {dir_ / "sub" / "b.jpg", ""}};
    std::vector<fs::path> expected{dir_ / "a.jpg", dir_ / "sub" / "b.jpg", dir_ / "slideshow.htm", dir_ / "SlideShow.js"};
    EXPECT_EQ(Run("Web", pictures), expected);
    const std::string page = ReadText(dir_ / "slideshow.htm");
    EXPECT_NE(page.find(" <option value ='a.jpg'>Beach</option> <option value ='sub/b.jpg'></option>"), std::string::npos);
    EXPECT_NE(page.find("<script src=\"SlideShow.js\">"), std::string::npos);

    for (const char* name : {"autorun.inf", "movie32.ico", "browsercall.exe"}) expected.push_back(dir_ / name);
    EXPECT_EQ(Run("CD", pictures), expected);
    EXPECT_NE(ReadText(dir_ / "autorun.inf").find("shellexecute=slideshow.htm"), std::string::npos);
    std::vector<uint8_t> bytes;
    DecodedPicture icon;
    ASSERT_FALSE(ReadWholeFile(dir_ / "movie32.ico", bytes));
    ASSERT_TRUE(DecodeIco(bytes, icon));
    EXPECT_EQ(SizeOf(icon.pixels), std::pair(32, 32));
    EXPECT_TRUE(messages_.Shown().empty());
}

TEST_F(JobCompletionTest, DiscWriterOrElseTheOpenFolder) {
    const std::vector<fs::path> files{dir_ / "a.jpg", dir_ / "slideshow.htm"};
    EXPECT_EQ(WriteToDisc(files, dir_.path, desktop_, messages_), "");
    EXPECT_EQ(desktop_.opened, std::vector<std::string>{dir_.path.string()});
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{std::string(kNoDiscWriter)});

    bin_.Add("k3b");
    bin_.Add("xfburn");
    EXPECT_EQ(WriteToDisc(files, dir_.path, desktop_, messages_), "k3b");
    EXPECT_EQ(bin_.Calls(), "k3b --data " + files[0].string() + " " + files[1].string() + "\n");
}

}  // namespace
}  // namespace quorbel::test
