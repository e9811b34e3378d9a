#pragma once
// The program's own scratch picture files (the working copy and the undo snapshots): a short
// header and the buffer's memory exactly as it lies, so writing and reading back are one
// system call each and never decode anything.
#include <string>

#include "imaging/cDib.h"

namespace quorbel {

// False when the file could not be written completely; a partial file is removed.
bool WriteRawPicture(const std::string& path, const cDib& picture);

// Replaces picture only when the whole file was read and its header is sound.
bool ReadRawPicture(const std::string& path, cDib& picture);

}  // namespace quorbel
