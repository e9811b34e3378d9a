#pragma once
// The filter engine: one operation per filter, each taking the picture first. Every
// operation raises Progress (0..100, from the calling thread) and returns false, leaving
// nothing changed, only when the picture is empty. Arguments outside an operation's range
// are clamped to it. The 3 × 3 filters follow the border rule of Kernel3x3.h.
#include <array>
#include <cstdint>

#include "effects/Kernel3x3.h"
#include "imaging/Colour.h"
#include "imaging/cDib.h"

namespace quorbel {

// One 256-entry table per colour byte.
struct ChannelTables {
    std::array<uint8_t, 256> blue{}, green{}, red{};
};

class cDIBFilter {
public:
    cDIBFilter();

    ProgressFn Progress;
    // Seed of the random filters (Diffuse, Noise); the same seed gives the same picture.
    uint64_t Seed;

    // Centre weight 101 - strength against the eight neighbours; strength 76..100.
    bool Blur(cDib& picture, int strength);
    // A pencil drawing: dark lines where the grey changes, white where it is flat.
    bool Contour(cDib& picture);
    // Spreads the channels away from 128 by (100 + level) %; -100 gives flat grey.
    bool Contrast(cDib& picture, int level);
    // Old photo toning: the grey of each pixel, its red and green lifted by their factors
    // most in the mid-tones, mixed with the original by strength (1 = full).
    bool Sepia(cDib& picture, float redFactor, float greenFactor, float strength);
    // Nudges each colour byte one step toward each of its eight neighbours that differs by
    // more than one; borders untouched.
    bool Despeckle(cDib& picture);
    // The same nudges, the eight neighbours taken twice over.
    bool DespeckleMore(cDib& picture);
    // Scatters pixels: each visited pixel takes a random pixel up to h columns and v rows away.
    bool Diffuse(cDib& picture, int horizontal, int vertical, int step);
    // Grey relief: 128 plus the bottom-right neighbours minus the top-left ones, deepened
    // by (100 + level) %; direction -1 lights from the top left, +1 from the bottom right.
    bool Emboss(cDib& picture, int level, int direction);
    // Emboss on the grey of the picture, so the relief carries no colour fringes.
    bool EmbossGrey(cDib& picture, int level, int direction);
    bool Greys(cDib& picture);
    bool Negative(cDib& picture);
    // Adds random values in -amount..amount to each colour byte of every step-th pixel.
    bool Noise(cDib& picture, int amount, int step);
    // Glowing edges: the size of the change around each pixel, scaled by (100 + level) %
    // and raised by shift, on black.
    bool Outline(cDib& picture, int level, int shift);
    bool Pixelate(cDib& picture, int size);
    // Each colour byte becomes the largest of its 3 × 3 block: light areas grow.
    bool Dilate(cDib& picture);
    // Each colour byte becomes the smallest of its 3 × 3 block: dark areas grow.
    bool Erode(cDib& picture);
    // The colours kept with a relief laid over them, level / 25 of the emboss difference.
    bool Relieve(cDib& picture, int level);
    // Pixels whose hue and saturation lie within the tolerances (percent of the full range)
    // of colour `from` take the hue and saturation of `to`, their luminosity moved by the
    // difference of the two; extent 0..255 mixes the result with the original.
    bool ReplaceHS(cDib& picture, ColorRef from, ColorRef to, int extent, int hTolerance,
                   int sTolerance);
    // Pixels whose luminosity lies within the tolerance of colour `from` become `to`,
    // mixed with the original by extent / 255.
    bool ReplaceL(cDib& picture, ColorRef from, ColorRef to, int extent, int lTolerance);
    // A colour byte that differs from the median of its 3 × 3 block by more than
    // 255 - level takes the median: lone specks go, straight edges stay.
    bool SaltPepper(cDib& picture, int level);
    // Moves the channels away from the pixel's grey by (100 + level) %; -100 gives grey.
    bool Saturation(cDib& picture, int level);
    // Television lines: odd rows darkened by black %, even rows lightened by white %.
    bool Scanlines(cDib& picture, int blackPoint, int whitePoint);
    // Centre weight 109 - strength against the eight neighbours, divided by its excess.
    bool Sharpen(cDib& picture, int strength);
    // Pixels within extent (on every channel) of colour `colour` are brightened by amount
    // (darkened when negative); the rest stay.
    bool Shift(cDib& picture, ColorRef colour, int amount, int extent);
    bool RGBLevels(cDib& picture, int red, int green, int blue);
    // Centre weight 101 - strength against the four orthogonal neighbours.
    bool Soften(cDib& picture, int strength);

    // Tints the picture: every pixel takes hue and saturation (percent of the full range)
    // and keeps its own luminosity, scaled by luminosity %.
    bool Colorize(cDib& picture, int hue, int saturation, int luminosity);

    // The two building blocks the filters above share.
    bool Convolve(cDib& picture, const Kernel3x3& kernel);
    bool ApplyTables(cDib& picture, const ChannelTables& tables);
};

}  // namespace quorbel
