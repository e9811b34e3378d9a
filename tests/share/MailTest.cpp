#include "share/Mail.h"

#include "ShareFixture.h"

namespace quorbel::test {
namespace {

using MailTest = ShareTest;

TEST_F(MailTest, EachMailProgramGetsEveryAttachmentInOrder) {
    clsMapi mail;
    mail.NewMessage();
    mail.AddAttachment("/t", "a.jpg");
    mail.AddAttachment("/t/", "sub/b c,d.jpg");
    ASSERT_EQ(mail.Attachments().size(), 2u);
    EXPECT_EQ(mail.Attachments()[0].pathName, "/t/a.jpg");
    EXPECT_EQ(mail.Attachments()[1].pathName, "/t/sub/b c,d.jpg");
    EXPECT_EQ(mail.Attachments()[1].displayName, "b c,d.jpg");

    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"thunderbird.desktop", {"thunderbird", "-compose", "attachment='file:///t/a.jpg,file:///t/sub/b%20c%2Cd.jpg'"}},
        {"org.gnome.Evolution.desktop", {"evolution", "mailto:?attach=file:///t/a.jpg&attach=file:///t/sub/b%20c%2Cd.jpg"}},
        {"org.kde.kmail2.desktop", {"kmail", "--attach", "/t/a.jpg", "--attach", "/t/sub/b c,d.jpg"}},
        {"claws-mail.desktop", {"claws-mail", "--compose", "--attach", "/t/a.jpg", "/t/sub/b c,d.jpg"}},
        {"mutt.desktop", {"xdg-email", "--attach", "/t/a.jpg", "--attach", "/t/sub/b c,d.jpg"}},
    };
    for (const auto& [entry, expected] : cases) {
        const MailCommand command = MailCommandFor(entry, mail.Attachments());
        std::vector<std::string> got{command.program};
        got.insert(got.end(), command.args.begin(), command.args.end());
        EXPECT_EQ(got, expected) << entry;
    }
}

TEST_F(MailTest, DefaultMailProgramTakesTheMessage) {
    bin_.Add("xdg-mime", 0, "thunderbird.desktop\n");
    bin_.Add("thunderbird");
    EXPECT_EQ(EmailPictures("/pics", {"/pics/a.jpg", "/pics/b.jpg"}, messages_), MailResult::Success);
    EXPECT_EQ(bin_.Calls(), "xdg-mime query default x-scheme-handler/mailto\n"
                            "thunderbird -compose attachment='file:///pics/a.jpg,file:///pics/b.jpg'\n");
    EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"Mail send succesfully."});
}

TEST_F(MailTest, XdgEmailResultsBecomeTheMessages) {
    struct Case {
        bool installed;
        int exitCode;
        std::vector<std::string> texts;
    };
    const Case cases[] = {{false, 0, {"Not logged on"}}, {true, 3, {"Not logged on"}}, {true, 4, {"Not logged on"}},
                          {true, 1, {}},                 {true, 0, {"Mail send succesfully."}}};
    for (const Case& c : cases) {
        fs::remove(bin_.Folder() / "xdg-email");
        fs::remove(bin_.Folder() / "calls.log");
        if (c.installed) bin_.Add("xdg-email", c.exitCode);
        messages_.Clear();
        EmailPictures("/pics", {"/pics/a.jpg"}, messages_);
        EXPECT_EQ(messages_.Texts(), c.texts) << c.exitCode;
    }
    EXPECT_EQ(bin_.Calls(), "xdg-email --attach /pics/a.jpg\n");

    // A run that wrote nothing still opens a message, without attachments.
    fs::remove(bin_.Folder() / "calls.log");
    EmailPictures("/pics", {}, messages_);
    EXPECT_EQ(bin_.Calls(), "xdg-email \n");
}

}  // namespace
}  // namespace quorbel::test
