#include "share/Mail.h"

#include "platform/Desktop.h"
#include "platform/Process.h"
#include "platform/Launch.h"
#include "core/text/TextCase.h"

namespace quorbel {
namespace {

std::string TrimmedOutput(std::string s) {
    while (!s.empty() && (s.back() == '\n' || s.back() == '\r' || s.back() == ' ')) s.pop_back();
    return s;
}

std::string DefaultMailProgram() {
    const ProcessResult r = RunProgram("xdg-mime", {"query", "default", "x-scheme-handler/mailto"});
    return r.started && r.exitCode == 0 ? TrimmedOutput(r.output) : std::string();
}

MailCommand XdgEmail(const std::vector<MailAttachment>& attachments) {
    MailCommand c{"xdg-email", {}};
    for (const MailAttachment& a : attachments) {
        c.args.push_back("--attach");
        c.args.push_back(a.pathName);
    }
    return c;
}

}  // namespace

MailCommand MailCommandFor(const std::string& desktopEntry, const std::vector<MailAttachment>& attachments) {
    const std::string entry = ToLowerAscii(desktopEntry);
    if (entry.find("thunderbird") != std::string::npos || entry.find("icedove") != std::string::npos) {
        // Addresses, so that a comma or quote in a name cannot split the list.
        std::string list;
        for (const MailAttachment& a : attachments) {
            if (!list.empty()) list += ',';
            list += FileUri(a.pathName);
        }
        MailCommand c{"thunderbird", {"-compose"}};
        if (!list.empty()) c.args.push_back("attachment='" + list + "'");
        return c;
    }
    if (entry.find("evolution") != std::string::npos) {
        std::string uri = "mailto:";
        for (size_t i = 0; i < attachments.size(); ++i)
            uri.append(i == 0 ? "?attach=" : "&attach=").append(FileUri(attachments[i].pathName));
        return {"evolution", {uri}};
    }
    if (entry.find("kmail") != std::string::npos) {
        MailCommand c{"kmail", {}};
        for (const MailAttachment& a : attachments) {
            c.args.push_back("--attach");
            c.args.push_back(a.pathName);
        }
        return c;
    }
    if (entry.find("claws") != std::string::npos) {
        MailCommand c{"claws-mail", {"--compose"}};
        if (!attachments.empty()) c.args.push_back("--attach");
        for (const MailAttachment& a : attachments) c.args.push_back(a.pathName);
        return c;
    }
    return XdgEmail(attachments);
}

void clsMapi::AddAttachment(const std::string& folder, const std::string& fileName) {
    std::string path = folder;
    if (path.empty() || path.back() != '/') path += '/';
    attachments_.push_back({path + fileName, std::filesystem::path(fileName).filename().string()});
}

MailResult clsMapi::Send() {
    const MailCommand own = MailCommandFor(DefaultMailProgram(), attachments_);
    if (own.program != "xdg-email") {
        const LaunchResult r = LaunchProgram(own.program, own.args);
        if (r.started) return r.Ok() ? MailResult::Success : MailResult::Other;
    }
    const MailCommand fallback = XdgEmail(attachments_);
    const LaunchResult r = LaunchProgram(fallback.program, fallback.args);
    // xdg-email: 3 = no tool to compose with, 4 = the mail program failed.
    if (!r.started || (r.exited && (r.exitCode == 3 || r.exitCode == 4))) return MailResult::NotLoggedOn;
    return r.Ok() ? MailResult::Success : MailResult::Other;
}

MailResult EmailPictures(const std::string& targetFolder, const std::vector<std::filesystem::path>& files,
                         MessageBox& messages) {
    clsMapi mail;
    mail.NewMessage();
    // A picture of a subfolder keeps its way from the target folder.
    for (const std::filesystem::path& f : files) {
        const std::filesystem::path relative = f.lexically_relative(targetFolder);
        const bool inside = !relative.empty() && *relative.begin() != "..";
        mail.AddAttachment(targetFolder, (inside ? relative : f.filename()).string());
    }
    const MailResult result = mail.Send();
    switch (result) {
        case MailResult::Success: messages.Show(std::string(kMailSent)); break;
        case MailResult::NoRecipients: messages.Show(std::string(kMailNoRecipients)); break;
        case MailResult::NotLoggedOn: messages.Show(std::string(kMailNotLoggedOn)); break;
        case MailResult::Other: break;
    }
    return result;
}

}  // namespace quorbel
