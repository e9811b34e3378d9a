#include "share/Mail.h"

#include "ShareFixture.h"

namespace quorbel {
namespace fs = std::filesystem;

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

    struct Case {
        const char* entry;
        std::vector<std::string> command;
    };
    const Case cases[] = {
        {"thunderbird.desktop", {"thunderbird", "-compose", "attachment='file:///t/a.jpg,file:///t/sub/b%20c%2Cd.jpg'"}},
        {"org.gnome.Evolution.desktop", {"evolution", "mailto:?attach=file:///t/a.jpg&attach=file:///t/sub/b%20c%2Cd.jpg"}},
        {"org.kde.kmail2.desktop", {"kmail", "--attach", "/t/a.jpg", "--attach", "/t/sub/b c,d.jpg"}},
        {"claws-mail.desktop", {"claws-mail", "--compose", "--attach", "/t/a.jpg", "/t/sub/b c,d.jpg"}},
        {"mutt.desktop", {"xdg-email", "--attach", "/t/a.jpg", "--attach", "/t/sub/b c,d.jpg"}},
    };
    for (const Case& c : cases) {
        const MailCommand command = MailCommandFor(c.entry, mail.Attachments());
        std::vector<std::string> got{command.program};
        got.insert(got.end(), command.args.begin(), command.args.end());
        EXPECT_EQ(got, c.command) << c.entry;
    }
}

TEST_F(MailTest, DefaultMailProgramTakesTheMessage) {
    StandIn("xdg-mime", 0, "thunderbird.desktop\n");
    StandIn("thunderbird");
    EXPECT_EQ(EmailPictures("/pics", {"/pics/a.jpg", "/pics/b.jpg"}, messages_), MailResult::Success);
    EXPECT_EQ(Calls(), "xdg-mime query default x-scheme-handler/mailto\n"
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
        fs::remove(dir_ / "bin" / "xdg-email");
        fs::remove(dir_ / "calls.log");
        if (c.installed) StandIn("xdg-email", c.exitCode);
        messages_.Clear();
        EmailPictures("/pics", {"/pics/a.jpg"}, messages_);
        EXPECT_EQ(messages_.Texts(), c.texts) << c.exitCode;
    }
    EXPECT_EQ(Calls(), "xdg-email --attach /pics/a.jpg\n");

    // A run that wrote nothing still opens a message, without attachments.
    fs::remove(dir_ / "calls.log");
    EmailPictures("/pics", {}, messages_);
    EXPECT_EQ(Calls(), "xdg-email \n");
}

}  // namespace quorbel
