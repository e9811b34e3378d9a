#pragma once
// Runs an inverse mapping over a picture: every destination pixel takes the colour at its
// source position, sampled bilinearly; positions outside the picture take the background.
#include <cstdint>
#include <functional>

#include "effects/Warp.h"
#include "imaging/Colour.h"
#include "imaging/cDib.h"

namespace quorbel {

using Mapping = std::function<SourcePoint(float x, float y)>;

// The bilinear sample at (sx, sy), as a pixel in memory order (blue, green, red, 0): inside
// means 0 <= sx <= width - 1 and 0 <= sy <= height - 1; anything else (NaN included) gives
// the background.
uint32_t SampleBilinear(const cDib& source, float sx, float sy, ColorRef background);

// Fills destination (made the source's size) from source through the mapping.
bool Remap(const cDib& source, cDib& destination, const Mapping& mapping, ColorRef background,
           const ProgressFn& progress = {});

// The Warp and Fish windows' runs, with their states made for the source's size.
bool ApplyWarp(const cDib& source, cDib& destination, int16_t transformation, ColorRef background,
               const ProgressFn& progress = {});
bool ApplyFish(const cDib& source, cDib& destination, ColorRef background, const ProgressFn& progress = {});

}  // namespace quorbel
