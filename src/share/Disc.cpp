#include "share/Disc.h"

#include "core/SafeFile.h"
#include "output/FileBytes.h"
#include "platform/Launch.h"

namespace quorbel {
namespace fs = std::filesystem;

int CopyDiscSupportFiles(const fs::path& from, const fs::path& target, std::vector<fs::path>& outputs) {
    int copied = 0;
    for (std::string_view name : kDiscSupportFiles) {
        std::vector<uint8_t> bytes;
        const fs::path copy = target / name;
        if (ReadWholeFile(from / name, bytes) || ReplaceFileContents(copy, bytes)) continue;
        outputs.push_back(copy);
        ++copied;
    }
    return copied;
}

std::string WriteToDisc(const std::vector<fs::path>& files, const fs::path& folder, Desktop& desktop,
                        MessageBox& messages) {
    struct Writer {
        const char* program;
        const char* dataDisc;  // the option that starts a data disc with the files after it
    };
    for (const Writer& w : {Writer{"brasero", "--data"}, Writer{"k3b", "--data"}, Writer{"xfburn", "--data-composition"}}) {
        std::vector<std::string> args{w.dataDisc};
        for (const fs::path& f : files) args.push_back(f.string());
        if (LaunchProgram(w.program, args).started) return w.program;
    }
    desktop.Open(folder.string());
    messages.Show(std::string(kNoDiscWriter), MsgButtons::OK, MsgIcon::Information);
    return {};
}

}  // namespace quorbel
