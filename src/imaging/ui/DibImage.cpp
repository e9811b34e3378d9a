#include "imaging/ui/DibImage.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace quorbel {

QImage ToQImage(const cDib& picture) {
    if (!picture.hDIB()) return {};
    const int w = picture.Width(), h = picture.Height();
    QImage image(w, h, QImage::Format_RGB32);
    for (int y = 0; y < h; ++y) {
        const uint8_t* src = picture.Row(y);
        auto* dst = reinterpret_cast<uint32_t*>(image.scanLine(y));
        for (int x = 0; x < w; ++x, src += 4) {
            uint32_t px;
            std::memcpy(&px, src, 4);
            dst[x] = px | 0xFF000000u;
        }
    }
    return image;
}

cDib FromQImage(const QImage& image) {
    cDib picture;
    if (image.isNull()) return picture;
    const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
    if (!picture.Create(rgb.width(), rgb.height())) return picture;
    for (int y = 0; y < rgb.height(); ++y)
        std::memcpy(picture.Row(y), rgb.constScanLine(y), static_cast<size_t>(rgb.width()) * 4);
    return picture;
}

cDib CopyDib(const cDib& picture) {
    cDib copy;
    if (picture.hDIB() && copy.Create(picture.Width(), picture.Height()))
        std::memcpy(copy.lpBits(), picture.lpBits(), static_cast<size_t>(picture.Size()));
    return copy;
}

cDib MakePreview(const cDib& picture, int boxWidth, int boxHeight) {
    const int w = picture.Width(), h = picture.Height();
    if (!picture.hDIB() || boxWidth <= 0 || boxHeight <= 0) return {};
    if (w <= boxWidth && h <= boxHeight) return CopyDib(picture);
    const double scale = std::min(double(boxWidth) / w, double(boxHeight) / h);
    const int pw = std::clamp(static_cast<int>(std::lround(w * scale)), 1, boxWidth);
    const int ph = std::clamp(static_cast<int>(std::lround(h * scale)), 1, boxHeight);
    cDib preview;
    if (!preview.Create(pw, ph)) return {};
    picture.Stretch(preview.hDC(), 0, 0, pw, ph, 0, 0, w, h, StretchMode::Halftone);
    return preview;
}

cDib CropCentre(const cDib& picture, int width, int height) {
    cDib crop;
    if (!picture.hDIB() || width <= 0 || height <= 0) return crop;
    const int w = std::min(width, picture.Width()), h = std::min(height, picture.Height());
    if (crop.Create(w, h)) crop.LoadBlt(picture.View(), (picture.Width() - w) / 2, (picture.Height() - h) / 2);
    return crop;
}

ColorRef PixelColour(const cDib& picture, int x, int y) {
    const uint8_t* p = picture.Row(y) + 4 * x;
    return RGBColor(p[2], p[1], p[0]);
}

QColor ToQColor(ColorRef colour) { return QColor(RedOf(colour), GreenOf(colour), BlueOf(colour)); }

ColorRef ToColorRef(const QColor& colour) {
    return RGBColor(static_cast<uint8_t>(colour.red()), static_cast<uint8_t>(colour.green()),
                    static_cast<uint8_t>(colour.blue()));
}

}  // namespace quorbel
