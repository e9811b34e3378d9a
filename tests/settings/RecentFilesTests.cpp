#include "ShellFixture.h"
#include "settings/AppIni.h"
#include "settings/IniFile.h"
#include "settings/RecentFiles.h"

namespace quorbel::test {
namespace {

class RecentFiles : public ShellFixture {
protected:
    std::vector<std::string> MenuTexts() const {
        std::vector<std::string> texts;
        for (const RecentFilesMenuItem& item : menu_.items) texts.push_back(item.text);
        return texts;
    }

    RecentFilesMenu menu_;
};

using Files = std::vector<std::string>;

TEST_F(RecentFiles, EmptyListShowsADisabledPlaceholder) {
    FillRecentFilesMenu(menu_, ReadRecentFiles(4));
    ASSERT_EQ(menu_.items.size(), 1u);
    EXPECT_EQ(menu_.items[0].text, "(Empty)");
    EXPECT_FALSE(menu_.items[0].enabled);

    ASSERT_TRUE(AddRecentFile("/p/a.jpg", menu_, 4));
    ASSERT_EQ(menu_.items.size(), 1u);
    EXPECT_EQ(menu_.items[0].text, "/p/a.jpg");
    EXPECT_TRUE(menu_.items[0].enabled);
}

TEST_F(RecentFiles, NewestFirstWithoutDuplicatesWhateverTheCase) {
    ASSERT_TRUE(AddRecentFile("/p/a.jpg", menu_, 4));
    ASSERT_TRUE(AddRecentFile("/p/b.jpg", menu_, 4));
    ASSERT_TRUE(AddRecentFile("/P/A.JPG", menu_, 4));
    EXPECT_EQ(MenuTexts(), (Files{"/P/A.JPG", "/p/b.jpg"}));
    EXPECT_EQ(ReadRecentFiles(4), (Files{"/P/A.JPG", "/p/b.jpg"}));
    EXPECT_EQ(IniRead("Recent Files", "File 3", "none"), "none");
}

TEST_F(RecentFiles, KeepsAtMostMaxCount) {
    for (const char* path : {"/1", "/2", "/3", "/4", "/5"}) ASSERT_TRUE(AddRecentFile(path, menu_, 3));
    EXPECT_EQ(MenuTexts(), (Files{"/5", "/4", "/3"}));
    EXPECT_EQ(IniFile::Load(AppIniPath()).Keys("Recent Files"),
              (Files{"File 1", "File 2", "File 3"}));
}

TEST_F(RecentFiles, StoredListEndsAtTheFirstEmptyEntry) {
    WriteFile(AppIniPath(),
              "[Main]\nLast Path=/home\n[Recent Files]\nFile 1=/x\nFile 2=\nFile 3=/y\n");
    EXPECT_EQ(ReadRecentFiles(9), Files{"/x"});
    ASSERT_TRUE(AddRecentFile("/z", menu_, 9));
    EXPECT_EQ(MenuTexts(), (Files{"/z", "/x"}));
    // The section is written afresh; the rest of the file stays.
    EXPECT_EQ(ReadFile(AppIniPath()),
              "[Main]\nLast Path=/home\n\n[Recent Files]\nFile 1=/z\nFile 2=/x\n");
}

TEST_F(RecentFiles, AnEmptyPathAddsNothing) {
    ASSERT_TRUE(AddRecentFile("/a", menu_, 4));
    ASSERT_TRUE(AddRecentFile("", menu_, 4));
    EXPECT_EQ(ReadRecentFiles(4), Files{"/a"});
    EXPECT_EQ(MenuTexts(), Files{"/a"});
}

}  // namespace
}  // namespace quorbel::test
