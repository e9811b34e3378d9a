#pragma once
// The picture decoders and encoders below the codec registry. Decoders check the caps
// from the header before allocating, never crash on bad bytes, and on failure return
// false with out left as it was. Encoders write complete files into memory.
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/DecodedPicture.h"
#include "metadata/PictureMetadata.h"

namespace quorbel {

bool DecodeJpegPicture(std::span<const uint8_t> bytes, DecodedPicture& out);
bool DecodePng(std::span<const uint8_t> bytes, DecodedPicture& out);
bool DecodeTiff(std::span<const uint8_t> bytes, DecodedPicture& out);  // first page
bool DecodeGif(std::span<const uint8_t> bytes, DecodedPicture& out);   // first frame
bool DecodeBmp(std::span<const uint8_t> bytes, DecodedPicture& out);
bool DecodeIco(std::span<const uint8_t> bytes, DecodedPicture& out);   // largest image; cursors too
bool DecodeWebp(std::span<const uint8_t> bytes, DecodedPicture& out);  // still pictures
bool DecodeAvif(std::span<const uint8_t> bytes, DecodedPicture& out);  // primary picture, turned upright
bool DecodeHeif(std::span<const uint8_t> bytes, DecodedPicture& out);  // primary picture, turned upright

// Picks the decoder by the file's content.
bool DecodePicture(std::span<const uint8_t> bytes, DecodedPicture& out);

// RGB, 8 bits a channel.
bool EncodePng(const cDib& picture, std::vector<uint8_t>& out);
// compression: 2 LZW, anything else none; colorDepth 32 adds an unused fourth sample,
// anything else writes 24-bit RGB.
bool EncodeTiff(const cDib& picture, int compression, int colorDepth, std::vector<uint8_t>& out);
// 256 colours at most: the picture's own when it has that few, else a median-cut palette
// with error diffusion.
bool EncodeGif(const cDib& picture, std::vector<uint8_t>& out);
// 24-bit, bottom-up, uncompressed.
bool EncodeBmp(const cDib& picture, std::vector<uint8_t>& out);
// Lossy, quality 0..100 as for JPEG. AVIF takes its metadata at encoding time.
bool EncodeWebp(const cDib& picture, int quality, std::vector<uint8_t>& out);
bool EncodeAvif(const cDib& picture, int quality, std::vector<uint8_t>& out, const MetadataBlocks* metadata = nullptr);

// Makes out.pixels from out.palette and out.indices (width × height, top row first);
// indices past the palette's end show black.
bool FillPixelsFromIndices(DecodedPicture& out, int width, int height);

}  // namespace quorbel
