#include "share/FolderIcon.h"

#include "ShareFixture.h"

namespace quorbel::test {
namespace {

using FolderIconTest = ShareTest;

TEST_F(FolderIconTest, RecycleBinAndDesktopAreRefused) {
    for (const char* refused : {"/media/c/RECYCLED", "/home/ann/Desktop/", "/home/ann/.local/share/Trash"}) {
        messages_.Clear();
        EXPECT_FALSE(AcceptIconFolder(refused, messages_)) << refused;
        ASSERT_EQ(messages_.Shown().size(), 1u);
        EXPECT_EQ(messages_.Shown()[0].text, std::string("Cannot change icon for this folder\r\n") + refused);
        EXPECT_EQ(messages_.Shown()[0].icon, MsgIcon::Critical);
    }
    messages_.Clear();
    EXPECT_TRUE(AcceptIconFolder("/home/ann/Desktop pictures", messages_));
    EXPECT_TRUE(messages_.Shown().empty());
}

TEST_F(FolderIconTest, SetTwiceThenReset) {
    bin_.Add("gio");
    const fs::path folder = dir_ / "Holiday", first = dir_ / "one.ico", second = dir_ / "two.ico";
    WriteText(first, "icon");
    WriteText(second, "icon");
    // The icon picker opens instead when the icon is missing; a missing folder does nothing.
    EXPECT_EQ(SetFolderIcon(folder, dir_ / "none.ico", messages_), SetIconResult::PickIcon);
    EXPECT_EQ(SetFolderIcon(folder, first, messages_), SetIconResult::NoFolder);
    WriteText(folder / ".directory", "[Desktop Entry]\nName=Holiday\n");

    EXPECT_EQ(SetFolderIcon(folder, first, messages_), SetIconResult::Changed);
    EXPECT_EQ(SetFolderIcon(folder, second, messages_), SetIconResult::Changed);
    EXPECT_EQ(ReadText(folder / ".directory"), "[Desktop Entry]\nName=Holiday\nIcon=" + second.string() + "\n");
    ASSERT_EQ(messages_.Shown().size(), 2u);
    EXPECT_EQ(messages_.Shown()[1].text,
              "The icon for the folder \r\n" + folder.string() + " is changed.\r\n\r\nFolder icon is " + second.string());
    EXPECT_EQ(messages_.Shown()[1].title, "Folder Icon changed");

    EXPECT_TRUE(ResetFolderIcon(folder, messages_));
    EXPECT_EQ(ReadText(folder / ".directory"), "[Desktop Entry]\nName=Holiday\n");
    EXPECT_EQ(messages_.Shown()[2].text, "Default folder icon Restored\r\n" + folder.string());
    const std::string set = "gio set " + folder.string() + " metadata::custom-icon file://";
    EXPECT_EQ(bin_.Calls(), set + first.string() + "\n" + set + second.string() + "\n" + "gio set -t unset " +
                                folder.string() + " metadata::custom-icon\n");

    EXPECT_FALSE(ResetFolderIcon(folder, messages_));
    EXPECT_EQ(messages_.Shown()[3].text,
              "The icon for the folder is either the default icon or the icon has been changed with an external "
              "application that cannot be changed\r\n" + folder.string());
}

TEST_F(FolderIconTest, UnwritableSettingsLeaveTheFolderAsItWas) {
    const fs::path folder = dir_ / "Locked", icon = dir_ / "one.ico";
    WriteText(icon, "icon");
    fs::create_directories(folder / ".directory");  // cannot be read or replaced as a file
    EXPECT_EQ(SetFolderIcon(folder, icon, messages_), SetIconResult::NotWritable);
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{std::string(kFolderNotWritable) + "\r\n" + folder.string()});
    EXPECT_TRUE(fs::is_directory(folder / ".directory"));
    EXPECT_EQ(bin_.Calls(), "");
}

}  // namespace
}  // namespace quorbel::test
