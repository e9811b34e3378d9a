#pragma once
// The e-mail hand-off: the written pictures become the attachments of one new message in the
// user's own mail program, whose compose window then takes the recipients. The program never
// talks to a mail server itself.
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageBox.h"

namespace quorbel {

inline constexpr std::string_view kMailSent = "Mail send succesfully.";
inline constexpr std::string_view kMailNoRecipients = "No recipients";
inline constexpr std::string_view kMailNotLoggedOn = "Not logged on";

// The "Email" job's wizard texts.
inline constexpr std::string_view kEmailSelectText = "Select the Images to email";
inline constexpr std::string_view kEmailReadyText = "We are now ready to create the email with mulitiple attachments";
inline constexpr std::string_view kEmailDoneHeading = "Multi Email Creation Complete!";
inline constexpr std::string_view kEmailDoneLines[] = {
    "You have just resized you favorite pictures and attached them to a new email.",
    "Now you are ready to send the email and share your great pictures with friends and family."};

struct MailAttachment {
    std::string pathName;     // the folder, a separator, the file name
    std::string displayName;  // the file name alone
};

// NoRecipients is never reported here: recipients are entered in the mail program's own
// window. NotLoggedOn: no mail program could take the message.
enum class MailResult { Success, NoRecipients, NotLoggedOn, Other };

// A program and its arguments.
struct MailCommand {
    std::string program;
    std::vector<std::string> args;
};

// The command that opens one new message with every attachment in the mail program named by
// its desktop entry ("thunderbird.desktop"); xdg-email for programs we do not know.
MailCommand MailCommandFor(const std::string& desktopEntry, const std::vector<MailAttachment>& attachments);

class clsMapi {
public:
    void NewMessage() { attachments_.clear(); }
    // folder gets a separator when it has none; fileName may lead through subfolders.
    void AddAttachment(const std::string& folder, const std::string& fileName);
    const std::vector<MailAttachment>& Attachments() const { return attachments_; }
    // Hands the message to the default mail program (xdg-mime's handler for mailto:),
    // falling back to xdg-email when that program is not known or will not start.
    MailResult Send();

private:
    std::vector<MailAttachment> attachments_;
};

// Attaches the files (by name, from targetFolder, in order) to a new message and tells the
// user the outcome. The files stay where they are whatever happens.
MailResult EmailPictures(const std::string& targetFolder, const std::vector<std::filesystem::path>& files,
                         MessageBox& messages);

}  // namespace quorbel
