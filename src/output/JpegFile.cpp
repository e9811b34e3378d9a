#include "output/JpegFile.h"

#include <unistd.h>

#include <filesystem>

#include "core/ProgramData.h"
#include "core/RuntimeError.h"
#include "core/SafeFile.h"
#include "imaging/cDIBSection.h"
#include "output/FileBytes.h"
#include "output/JpegCodec.h"

namespace quorbel {

namespace {

[[noreturn]] void RaiseSaveError(int status) {
    throw RuntimeError(kErrJpegSave, ProgramName() + ".mIntelJPEGLibrary",
                       "Failed to save to JPG " + std::to_string(status));
}

int Encode(const cDIBSection& source, std::vector<uint8_t>& bytes, int quality) {
    if (!source.hDIB()) return kJpegNoPicture;
    return EncodeJpeg(source.View(), quality, bytes);
}

bool Load(cDIBSection& target, std::span<const uint8_t> bytes, MessageBox& messages) {
    JpegInfo info;
    if (ReadJpegInfo(bytes, info) != kJpegOk) {
        messages.Show(std::string(kFailedToReadJpg), MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }
    return DecodeJpeg(bytes, target) == kJpegOk;
}

}  // namespace

bool SaveJPG(const cDIBSection& source, const std::string& fileName, int quality) {
    std::vector<uint8_t> bytes;
    if (const int status = Encode(source, bytes, quality); status != kJpegOk) RaiseSaveError(status);
    // Encoded completely in memory first and renamed over the old file only once written:
    // a failed save never costs the user the picture that was there.
    if (ReplaceFileContents(std::filesystem::path(fileName), bytes, {.keepOldTimes = true}))
        RaiseSaveError(kJpegWriteFailed);
    return true;
}

bool SaveJPGToBytes(const cDIBSection& source, std::vector<uint8_t>& bytes, int quality) {
    if (const int status = Encode(source, bytes, quality); status != kJpegOk) RaiseSaveError(status);
    return true;
}

bool LoadJPG(cDIBSection& target, const std::string& fileName, MessageBox& messages) {
    std::vector<uint8_t> bytes;
    ReadWholeFile(std::filesystem::path(fileName), bytes);  // an unreadable file has no header
    return Load(target, bytes, messages);
}

bool LoadJPGFromBytes(cDIBSection& target, const std::vector<uint8_t>& bytes, MessageBox& messages) {
    return Load(target, bytes, messages);
}

}  // namespace quorbel
