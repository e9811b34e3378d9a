#pragma once
// Between the picture buffer and Qt's pictures: copies for the screen, small previews and
// colour values.
#include <QColor>
#include <QImage>

#include "imaging/cDib.h"

namespace quorbel {

// A top-down copy for painting. Format_RGB32 has the buffer's byte order; its fourth byte
// must be 0xFF, so it is set here rather than copied.
QImage ToQImage(const cDib& picture);

// A picture of any Qt format as a buffer (alpha dropped); empty for a null picture.
cDib FromQImage(const QImage& image);

// A copy of the whole picture (a cDib is never copied implicitly).
cDib CopyDib(const cDib& picture);

// The picture shrunk, aspect kept, to fit boxWidth × boxHeight, each pixel the average of
// the ones it covers. A picture that already fits is copied as it is.
cDib MakePreview(const cDib& picture, int boxWidth, int boxHeight);

// The middle of the picture at its own scale, at most width × height.
cDib CropCentre(const cDib& picture, int width, int height);

// The colour of pixel (x, y), top-down, as a colour value.
ColorRef PixelColour(const cDib& picture, int x, int y);

QColor ToQColor(ColorRef colour);
ColorRef ToColorRef(const QColor& colour);

}  // namespace quorbel
