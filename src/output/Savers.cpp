#include "output/Savers.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>

#include "core/SafeFile.h"
#include "imaging/Blit.h"
#include "imaging/cDIBSection.h"
#include "output/CodecRegistry.h"
#include "output/Codecs.h"
#include "output/JpegFile.h"

namespace quorbel {

std::string FailedToSaveText(const std::string& path) {
    return "Failed to save the picture to the file: '" + path + "'";
}

namespace {

std::string LowerExtension(const std::string& name) {
    const size_t dot = name.rfind('.');
    if (dot == std::string::npos || name.find('/', dot) != std::string::npos) return {};
    std::string ext = name.substr(dot + 1);
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext;
}

bool Exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

}  // namespace

std::string SaverBase::TargetPath(const std::string& folder, const std::string& fileName) const {
    std::string name = fileName;
    if (LowerExtension(name) != ComparedExtension()) name += AppendedExtension();
    if (folder.empty() || folder.back() == '/') return folder + name;
    return folder + "/" + name;
}

bool SaverBase::TakePicture(cDib& out) const {
    const PictureControl& c = ctx_.control;
    if (!c.picture || !c.picture->hDIB()) return false;
    const bool stretched = c.stretch && c.width > 0 && c.height > 0 &&
                           (c.width != c.picture->Width() || c.height != c.picture->Height());
    const int w = stretched ? c.width : c.picture->Width(), h = stretched ? c.height : c.picture->Height();
    if (!out.Create(w, h)) return false;
    StretchBlt(out.View(), 0, 0, w, h, c.picture->View(), 0, 0, c.picture->Width(), c.picture->Height(),
               StretchMode::Halftone);
    return true;
}

std::string SaverBase::SaveFiletoSpecLoc(const std::string& folder, const std::string& fileName) {
    std::string path = TargetPath(folder, fileName);
    OverwriteState& s = *ctx_.state;
    if (Exists(path)) {
        if (!s.BatchActive || s.NoToAll) return {};  // outside a batch run a file is never replaced here
        if (!s.YesToAll && !(AsksSilently() && ctx_.replaceSilently)) {
            static SilentMessageBox silent;
            const std::string name = path.substr(path.rfind('/') + 1);
            WarningQuestion question(s, ctx_.messages ? *ctx_.messages : silent, OverwriteQuestionText(name), path,
                                     name);
            if (ctx_.asker) ctx_.asker->Ask(question);
            const bool skip = s.SkipThis;
            s.SkipThis = s.WriteThis = false;
            if (skip) return {};
            path = question.TargetPath();
        }
    }
    cDib picture;
    if (!TakePicture(picture) || !Write(picture, path)) {
        if (ctx_.messages) ctx_.messages->Show(std::string(FailedToSaveText(path)), MsgButtons::OK, MsgIcon::Exclamation);
        return {};
    }
    return path;
}

std::string SaverBase::SaveToTemporaryFile(const std::filesystem::path& folder) {
    const std::string path = (folder / TemporaryName()).string();
    cDib picture;
    if (!TakePicture(picture) || !Write(picture, path)) return {};
    return path;
}

bool SaverBase::SaveDirect(const std::string& path) {
    cDib picture;
    if (!TakePicture(picture)) return false;
    cDIBSection section;
    if (!section.Create(picture.Width(), picture.Height())) return false;
    section.LoadPictureBlt(picture.View());
    return SaveJPG(section, path, ctx_.quality);
}

bool SaverBase::WriteThroughRegistry(cDib& picture, const std::string& path, int format, int quality) {
    return SaveDibGdiplus(picture, path, format, quality, 24, 6);
}

bool SaverBase::WriteBmp(cDib& picture, const std::string& path) {
    std::vector<uint8_t> bytes;
    return EncodeBmp(picture, bytes) && !ReplaceFileContents(std::filesystem::path(path), bytes, {.keepOldTimes = false});
}

std::string clsSaveFactory::SaveFiletoSpecLoc(const std::string& folder, const std::string& fileName) {
    // Whatever the type, the JPEG saver does the work (users' files depend on it); the type
    // only decides whether the icon message is shown first.
    if (fileType_ == "ICON .ico" && ctx_.messages) ctx_.messages->Show(std::string(kCannotCreateIcon), MsgButtons::OK, MsgIcon::None);
    clsSaveJPG saver(ctx_);
    return saver.SaveFiletoSpecLoc(folder, fileName);
}

}  // namespace quorbel
