#include "FreshSettings.h"
#include "settings/AppIni.h"
#include "settings/IniFile.h"
#include "settings/RecentFiles.h"

namespace quorbel::test {
namespace {

using Files = std::vector<std::string>;

class RecentFiles : public FreshSettings {
protected:
    // Adds each path in turn, then gives the menu's texts.
    Files Add(std::initializer_list<const char*> paths, size_t max = 4) {
        for (const char* path : paths) EXPECT_TRUE(AddRecentFile(path, menu_, max)) << path;
        Files texts;
        for (const RecentFilesMenuItem& item : menu_.items) texts.push_back(item.text);
        return texts;
    }
    RecentFilesMenu menu_;
};

TEST_F(RecentFiles, EmptyListShowsADisabledPlaceholder) {
    FillRecentFilesMenu(menu_, ReadRecentFiles(4));
    ASSERT_EQ(menu_.items.size(), 1u);
    EXPECT_EQ(menu_.items[0].text, "(Empty)");
    EXPECT_FALSE(menu_.items[0].enabled);
    EXPECT_EQ(Add({"/p/a.jpg", ""}), Files{"/p/a.jpg"});  // an empty path adds nothing
    EXPECT_TRUE(menu_.items[0].enabled);
}

TEST_F(RecentFiles, NewestFirstWithoutDuplicatesWhateverTheCaseAndAtMostMaxCount) {
    EXPECT_EQ(Add({"/p/a.jpg", "/p/b.jpg", "/P/A.JPG"}), (Files{"/P/A.JPG", "/p/b.jpg"}));
    EXPECT_EQ(ReadRecentFiles(4), (Files{"/P/A.JPG", "/p/b.jpg"}));
    EXPECT_EQ(IniRead("Recent Files", "File 3", "none"), "none");

    EXPECT_EQ(Add({"/1", "/2", "/3"}, 3), (Files{"/3", "/2", "/1"}));
    EXPECT_EQ(IniFile::Load(AppIniPath()).Keys("Recent Files"), (Files{"File 1", "File 2", "File 3"}));
}

TEST_F(RecentFiles, StoredListEndsAtTheFirstEmptyEntry) {
    WriteText(AppIniPath(), "[Main]\nLast Path=/home\n[Recent Files]\nFile 1=/x\nFile 2=\nFile 3=/y\n");
    EXPECT_EQ(ReadRecentFiles(9), Files{"/x"});
    EXPECT_EQ(Add({"/z"}, 9), (Files{"/z", "/x"}));
    // The section is written afresh; the rest of the file stays.
    EXPECT_EQ(ReadText(AppIniPath()), "[Main]\nLast Path=/home\n\n[Recent Files]\nFile 1=/z\nFile 2=/x\n");
}

}  // namespace
}  // namespace quorbel::test
