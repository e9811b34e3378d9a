#include "output/CodecRegistry.h"

#include <png.h>
#include <tiffio.h>
#include <turbojpeg.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <mutex>
#include <set>

#include "core/SafeFile.h"
#include "output/Codecs.h"
#include "output/FileBytes.h"
#include "output/JpegCodec.h"
#include "output/PictureFormats.h"

namespace quorbel {

namespace {

std::mutex gMutex;
std::set<uintptr_t> gTokens;
uintptr_t gNextToken = 1;

bool Running() {
    std::lock_guard lock(gMutex);
    return !gTokens.empty();
}

int Hex(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// Reads the first single 32-bit value of a parameter, if the block carries it.
bool FindLong(const EncoderParameters* params, const char* guidText, int32_t& value) {
    if (!params) return false;
    Guid wanted;
    CLSIDFromString(guidText, wanted);
    for (uint32_t i = 0; i < std::min<uint32_t>(params->count, 2); ++i) {
        const EncoderParameter& p = params->parameter[i];
        if (p.guid == wanted && p.numberOfValues >= 1 && p.type == kEncoderParameterValueTypeLong && p.value) {
            value = *static_cast<const int32_t*>(p.value);
            return true;
        }
    }
    return false;
}

// The registry's encoders, in the order it lists them; extensions, MIME type and encoder
// come from the format table.
struct Encoder {
    const char* clsid;
    const char* name;
    PictureFormat format;
};

const Encoder kEncoders[] = {
    {"{5D0A0F5B-8F6E-4C1E-9E7B-51A7B0C0BD01}", "Quorbel BMP Codec", PictureFormat::Bmp},
    {"{5D0A0F5B-8F6E-4C1E-9E7B-51A7B0C0BD02}", "Quorbel JPEG Codec", PictureFormat::Jpeg},
    {"{5D0A0F5B-8F6E-4C1E-9E7B-51A7B0C0BD03}", "Quorbel GIF Codec", PictureFormat::Gif},
    {"{5D0A0F5B-8F6E-4C1E-9E7B-51A7B0C0BD04}", "Quorbel TIFF Codec", PictureFormat::Tiff},
    {"{5D0A0F5B-8F6E-4C1E-9E7B-51A7B0C0BD05}", "Quorbel PNG Codec", PictureFormat::Png},
};

// The settings a parameter block gives; what it does not carry keeps the encoders' defaults.
EncodeSettings SettingsFrom(const EncoderParameters* p) {
    EncodeSettings s;
    FindLong(p, kEncoderQuality, s.quality);
    FindLong(p, kEncoderCompression, s.compression);
    FindLong(p, kEncoderColorDepth, s.colorDepth);
    return s;
}

// Every library answers: a handle can be made and the versions are the ones built against.
bool LibrariesUsable() {
    tjhandle h = tjInitCompress();
    if (!h) return false;
    tjDestroy(h);
    return png_access_version_number() / 100 == PNG_LIBPNG_VER / 100 && TIFFGetVersion() != nullptr;
}

// The registry's own bitmap object: a picture over the buffer's memory, no copy.
struct GpBitmap {
    const cDib* pixels;
};

int CreateBitmapFromDib(const cDib& dib, GpBitmap*& bitmap) {
    bitmap = nullptr;
    if (!Running()) return GdiplusNotInitialized;
    if (!dib.hDIB()) return InvalidParameter;
    bitmap = new GpBitmap{&dib};
    return Ok;
}

int DisposeImage(GpBitmap* bitmap) {
    if (!Running()) return GdiplusNotInitialized;
    if (!bitmap) return InvalidParameter;
    delete bitmap;
    return Ok;
}

}  // namespace

bool CLSIDFromString(std::string_view t, Guid& out) {
    // {8-4-4-4-12}
    if (t.size() != 38 || t[0] != '{' || t[37] != '}' || t[9] != '-' || t[14] != '-' || t[19] != '-' || t[24] != '-')
        return false;
    uint8_t bytes[16];
    int n = 0;
    for (size_t i = 1; i < 37; ++i) {
        if (t[i] == '-') continue;
        const int hi = Hex(t[i]), lo = Hex(t[i + 1]);
        if (hi < 0 || lo < 0) return false;
        bytes[n++] = static_cast<uint8_t>(hi * 16 + lo);
        ++i;
    }
    out.data1 = uint32_t(bytes[0]) << 24 | uint32_t(bytes[1]) << 16 | uint32_t(bytes[2]) << 8 | bytes[3];
    out.data2 = static_cast<uint16_t>(bytes[4] << 8 | bytes[5]);
    out.data3 = static_cast<uint16_t>(bytes[6] << 8 | bytes[7]);
    std::copy(bytes + 8, bytes + 16, out.data4);
    return true;
}

std::string GdiplusStatusText(int status) {
    static const char* const kTexts[] = {
        "Generic Error", "Invalid Parameter", "Out Of Memory", "Object Busy", "Insufficient Buffer",
        "Not Implemented", "Win32 Error", "Wrong State", "Aborted", "File Not Found", "Value Overflow",
        "Access Denied", "Unknown Image Format", "FontFamily Not Found", "FontStyle Not Found",
        "Not TrueType Font", "Unsupported Gdiplus Version", "Gdiplus Not Initialized", "Property Not Found",
        "Property Not Supported"};
    if (status >= 1 && status <= 20) return kTexts[status - 1];
    return "Unknown GDI+ Error";
}

int GdiplusStartup(uintptr_t& token, const GdiplusStartupInput& input) {
    token = 0;
    if (input.GdiplusVersion != 1) return UnsupportedGdiplusVersion;
    if (!LibrariesUsable()) return GenericError;
    std::lock_guard lock(gMutex);
    token = gNextToken++;
    gTokens.insert(token);
    return Ok;
}

void GdiplusShutdown(uintptr_t token) {
    std::lock_guard lock(gMutex);
    gTokens.erase(token);
}

bool GdiplusRunning() { return Running(); }

bool StartCodecRegistry(uintptr_t& token, MessageBox& messages) {
    if (GdiplusStartup(token, GdiplusStartupInput{}) == Ok) return true;
    messages.Show(std::string(kErrorLoadingGdiplus), MsgButtons::OK, MsgIcon::Critical);
    return false;
}

std::string_view MimeTypeOfFormat(int format) {
    static constexpr PictureFormat kCodes[] = {PictureFormat::Gif, PictureFormat::Jpeg, PictureFormat::Png,
                                               PictureFormat::Tiff};
    if (format < 0 || format >= static_cast<int>(std::size(kCodes))) return {};
    return FormatRow(kCodes[format])->mimeType;
}

EncoderParameters BuildEncoderParameters(int format, const int32_t& quality, const int32_t& colorDepth,
                                         const int32_t& compression) {
    EncoderParameters block;
    auto add = [&block](const char* guid, const int32_t& value) {
        EncoderParameter& p = block.parameter[block.count++];
        CLSIDFromString(guid, p.guid);
        p.numberOfValues = 1;
        p.type = kEncoderParameterValueTypeLong;
        p.value = &value;
    };
    if (format == 1) add(kEncoderQuality, quality);
    if (format == 3) {
        add(kEncoderCompression, compression);
        add(kEncoderColorDepth, colorDepth);
    }
    return block;
}

std::vector<ImageCodecInfo> ImageEncoders() {
    std::vector<ImageCodecInfo> list;
    if (!Running()) return list;
    for (const Encoder& e : kEncoders) {
        ImageCodecInfo info;
        CLSIDFromString(e.clsid, info.clsid);
        info.codecName = e.name;
        const PictureFormatRow& row = *FormatRow(e.format);
        info.filenameExtension = ExtensionPattern(row);
        info.mimeType = row.mimeType;
        list.push_back(std::move(info));
    }
    return list;
}

bool GetEncoderClsid(std::string_view mimeType, Guid& clsid) {
    for (const ImageCodecInfo& info : ImageEncoders())
        if (info.mimeType == mimeType) {
            clsid = info.clsid;
            return true;
        }
    return false;
}

int SaveImageToFile(const cDib& picture, const std::string& fileName, const Guid& encoder,
                    const EncoderParameters* parameters) {
    if (!Running()) return GdiplusNotInitialized;
    if (!picture.hDIB() || fileName.empty()) return InvalidParameter;
    const Encoder* found = nullptr;
    for (const Encoder& e : kEncoders) {
        Guid g;
        CLSIDFromString(e.clsid, g);
        if (g == encoder) found = &e;
    }
    if (!found) return FileNotFound;  // what the system says for an encoder it does not have
    std::vector<uint8_t> bytes;
    if (!FormatRow(found->format)->encode(picture, SettingsFrom(parameters), bytes)) return GenericError;
    const std::filesystem::path target(fileName);
    // An existing file the user may not write stays as it is, as it would if it were
    // deleted and written anew.
    if (access(target.c_str(), F_OK) == 0 && access(target.c_str(), W_OK) != 0) return AccessDenied;
    // The new file is complete on disk before it replaces the old one; on any failure the
    // old file stays. It is a new picture, so it gets the current time.
    if (ReplaceFileContents(target, bytes, {.keepOldTimes = false})) return Win32Error;
    return Ok;
}

bool SaveDibGdiplus(cDib& dib, const std::string& fileName, int format, int32_t quality, int32_t colorDepth,
                    int32_t compression) {
    GpBitmap* bitmap = nullptr;
    int status = CreateBitmapFromDib(dib, bitmap);
    const EncoderParameters params = BuildEncoderParameters(format, quality, colorDepth, compression);
    Guid clsid;
    const std::string_view mime = MimeTypeOfFormat(format);
    if (bitmap && !mime.empty() && GetEncoderClsid(mime, clsid))
        status = SaveImageToFile(dib, fileName, clsid, &params);
    // The save's own status is not what decides: releasing the bitmap does.
    status = DisposeImage(bitmap);
    return status == Ok;
}

std::unique_ptr<DecodedPicture> LoadPictureGdiplus(const std::string& fileName, int* status) {
    auto report = [status](int s) {
        if (status) *status = s;
    };
    if (!Running()) {
        report(GdiplusNotInitialized);
        return nullptr;
    }
    std::vector<uint8_t> bytes;
    if (ReadWholeFile(std::filesystem::path(fileName), bytes)) {
        report(FileNotFound);
        return nullptr;
    }
    auto picture = std::make_unique<DecodedPicture>();
    if (!DecodePicture(bytes, *picture)) {
        report(UnknownImageFormat);
        return nullptr;
    }
    report(Ok);
    return picture;
}

}  // namespace quorbel
