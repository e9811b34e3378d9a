#pragma once
// The codec registry: the program's picture encoders and decoders behind one start-up with
// a token, a list of encoders found by MIME type, encoder parameter blocks, numbered
// statuses with their message texts, and the two routines the savers and windows call:
// SaveDibGdiplus and LoadPictureGdiplus.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "imaging/DecodedPicture.h"
#include "core/MessageBox.h"

namespace quorbel {

struct Guid {
    uint32_t data1 = 0;
    uint16_t data2 = 0, data3 = 0;
    uint8_t data4[8] = {};
    friend bool operator==(const Guid&, const Guid&) = default;
};

// Parses "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" (hex digits either case).
bool CLSIDFromString(std::string_view text, Guid& out);

enum GpStatus : int {
    Ok = 0, GenericError = 1, InvalidParameter = 2, OutOfMemory = 3, ObjectBusy = 4,
    InsufficientBuffer = 5, NotImplemented = 6, Win32Error = 7, WrongState = 8, Aborted = 9,
    FileNotFound = 10, ValueOverflow = 11, AccessDenied = 12, UnknownImageFormat = 13,
    FontFamilyNotFound = 14, FontStyleNotFound = 15, NotTrueTypeFont = 16,
    UnsupportedGdiplusVersion = 17, GdiplusNotInitialized = 18, PropertyNotFound = 19,
    PropertyNotSupported = 20,
};

// The message for a status; "Unknown GDI+ Error" for 0 and anything unlisted.
std::string GdiplusStatusText(int status);

// ---- start-up ----

struct GdiplusStartupInput {
    uint32_t GdiplusVersion = 1;
    void* DebugEventCallback = nullptr;
    bool SuppressBackgroundThread = false;
    bool SuppressExternalCodecs = false;
};

inline constexpr const char* kErrorLoadingGdiplus = "Error loading GDI+!";

// Checks that every codec library is present and usable and hands out a token; the
// registry runs while at least one token is out. Version 1 only.
int GdiplusStartup(uintptr_t& token, const GdiplusStartupInput& input);
void GdiplusShutdown(uintptr_t token);
bool GdiplusRunning();

// The main window's start: on failure shows "Error loading GDI+!" with the stop icon and
// returns false; the program carries on without the registry.
bool StartCodecRegistry(uintptr_t& token, MessageBox& messages);

// ---- encoders ----

inline constexpr int kEncoderParameterValueTypeLong = 4;
inline constexpr const char* kEncoderQuality = "{1D5BE4B5-FA4A-452D-9CDD-5DB35105E7EB}";
inline constexpr const char* kEncoderCompression = "{E09D739D-CCD4-44EE-8EBA-3FBF8BE4FC58}";
inline constexpr const char* kEncoderColorDepth = "{66087055-AD66-4C7C-9A18-38A2310B8337}";

struct EncoderParameter {
    Guid guid;
    uint32_t numberOfValues = 0;
    uint32_t type = 0;
    const void* value = nullptr;  // numberOfValues values of the type
};

// A count followed by the parameters; two is the most any format passes.
struct EncoderParameters {
    uint32_t count = 0;
    EncoderParameter parameter[2];
};

// The MIME type of format codes 0 gif, 1 jpeg, 2 png, 3 tiff; empty for any other code.
std::string_view MimeTypeOfFormat(int format);

// The block a format's save passes: GIF and PNG none, JPEG the quality, TIFF the compression
// then the colour depth. The values point at the arguments, which must outlive the block.
EncoderParameters BuildEncoderParameters(int format, const int32_t& quality, const int32_t& colorDepth,
                                         const int32_t& compression);

struct ImageCodecInfo {
    Guid clsid;
    std::string codecName;
    std::string filenameExtension;
    std::string mimeType;
};

// The installed encoders: BMP, JPEG, GIF, TIFF, PNG. Empty while the registry is not running.
std::vector<ImageCodecInfo> ImageEncoders();

// The class identifier of the first encoder with this MIME type; false when none has it.
bool GetEncoderClsid(std::string_view mimeType, Guid& clsid);

// Encodes pixels with the encoder of that identifier, reading the parameters it knows, and
// writes the file; the status says what failed.
int SaveImageToFile(const cDib& picture, const std::string& fileName, const Guid& encoder,
                    const EncoderParameters* parameters);

// Writes the picture in format 0 gif, 1 jpeg, 2 png or 3 tiff (any other code: no encoder,
// nothing written). As the savers rely on, the result is that of releasing the picture
// after the save, not of the save itself: a failed encode still returns true. Unlike a
// delete-then-write, a failed save leaves an existing file exactly as it was.
bool SaveDibGdiplus(cDib& dib, const std::string& fileName, int format, int32_t quality, int32_t colorDepth,
                    int32_t compression);

// Loads the file (JPEG, PNG, GIF first frame, TIFF first page, BMP, ICO/CUR largest picture,
// decided by content) as a bitmap with the source's depth and, for 8 bits or fewer, its
// palette and indices. Nothing on failure; status (when given) says why.
std::unique_ptr<DecodedPicture> LoadPictureGdiplus(const std::string& fileName, int* status = nullptr);

}  // namespace quorbel
