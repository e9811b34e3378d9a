#pragma once
// What a picture file holds, decided by its first bytes and never by its name: a PNG
// named .jpg loads as a PNG.
#include <cstdint>
#include <span>

namespace quorbel {

enum class PictureFormat : uint8_t { Unknown, Jpeg, Png, Gif, Tiff, Bmp, Ico, Webp, Avif, Heif };

PictureFormat DetectPictureFormat(std::span<const uint8_t> bytes);

}  // namespace quorbel
