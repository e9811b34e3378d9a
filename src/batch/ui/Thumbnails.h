#pragma once
// Small pictures for the wizard: the picker's thumbnails, the preview, the overwrite
// question's picture of the existing file. Safe to call from any thread.
#include <QImage>
#include <filesystem>

#include "imaging/cDib.h"

namespace quorbel {

// The picture shrunk to fit box × box (a JPEG decodes at a smaller scale first); an empty
// buffer when the file cannot be read.
cDib LoadSmallPicture(const std::filesystem::path& file, int box);
// The same as a QImage; a null image when the file cannot be read.
QImage LoadThumbnail(const std::filesystem::path& file, int box);

}  // namespace quorbel
