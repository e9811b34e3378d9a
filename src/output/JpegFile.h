#pragma once
// The four JPEG operations over the 24-bit buffer that the e-mail, slide-show and
// fit-to-size outputs use: save to a file or to bytes, load from a file or from bytes.
#include <cstdint>
#include <string>
#include <vector>

#include "core/MessageBox.h"

namespace quorbel {

class cDIBSection;

inline constexpr int kErrJpegSave = 26001;
inline constexpr const char* kFailedToReadJpg = "Failed to read JPG";

// Encodes at quality (passed to the library unchanged) and writes the file. Replacing an
// existing file keeps its modification and access times and its permissions (a read-only
// file stays read-only); a new file gets the current time. A non-zero status raises
// RuntimeError 26001, source ProgramName() + ".mIntelJPEGLibrary", description
// "Failed to save to JPG " + status. The old file is untouched after a failure.
bool SaveJPG(const cDIBSection& source, const std::string& fileName, int quality);
bool SaveJPGToBytes(const cDIBSection& source, std::vector<uint8_t>& bytes, int quality);

// Decodes into target (24-bit, upright). A file that cannot be read or whose header is
// not a JPEG of an allowed size shows "Failed to read JPG" (exclamation) and returns
// false; corrupt data further on returns false without a message. Target is replaced only
// on success.
bool LoadJPG(cDIBSection& target, const std::string& fileName, MessageBox& messages);
bool LoadJPGFromBytes(cDIBSection& target, const std::vector<uint8_t>& bytes, MessageBox& messages);

}  // namespace quorbel
