#pragma once
// The savers: one per output type, each writing the caller's current picture to a folder
// and name, asking the overwrite question when the file exists during a batch run; and
// the save factory that picks one from the type list's text.
#include <filesystem>
#include <string>

#include "imaging/cDib.h"
#include "core/MessageBox.h"
#include "output/OverwriteState.h"
#include "output/WarningQuestion.h"

namespace quorbel {

inline constexpr const char* kCannotCreateIcon = "Cannot create icon image saving as bmp";

// The calling window's picture control: the picture and the size it is shown at.
struct PictureControl {
    const cDib* picture = nullptr;
    int width = 0;
    int height = 0;
    bool stretch = false;
};

struct SaveContext {
    PictureControl control;
    int quality = 97;  // JPEG quality of the caller
    OverwriteState* state = &Overwrite();
    MessageBox* messages = nullptr;
    OverwriteAsker* asker = nullptr;
    // An e-mail job or a CD/DVD destination: outputs there replace existing files without
    // asking, as the batch naming does for those jobs.
    bool replaceSilently = false;
};

// "Failed to save the picture to the file: '" + path + "'"
std::string FailedToSaveText(const std::string& path);

class SaverBase {
public:
    explicit SaverBase(SaveContext context) : ctx_(std::move(context)) {}
    virtual ~SaverBase() = default;

    // Writes the picture to folder + "/" + name (its extension added when it differs from
    // the compared one). Returns the path written, or "" when nothing was written.
    std::string SaveFiletoSpecLoc(const std::string& folder, const std::string& fileName);
    // Writes the picture to the saver's temporary name in folder; returns its path or "".
    std::string SaveToTemporaryFile(const std::filesystem::path& folder);
    // Writes the picture as JPEG straight through the JPEG codec at the caller's quality.
    bool SaveDirect(const std::string& path);

    // The name the saver would write for a given folder and name.
    std::string TargetPath(const std::string& folder, const std::string& fileName) const;

    virtual const char* ComparedExtension() const = 0;   // lower case, no dot
    virtual const char* AppendedExtension() const = 0;   // with the dot
    virtual const char* TemporaryName() const = 0;
    virtual bool AsksSilently() const { return false; }  // GIF, PNG and TIFF note the job kind

protected:
    // Encodes and writes; false when the picture could not be written.
    virtual bool Write(cDib& picture, const std::string& path) = 0;
    bool WriteThroughRegistry(cDib& picture, const std::string& path, int format, int quality);
    bool WriteBmp(cDib& picture, const std::string& path);
    const SaveContext& Context() const { return ctx_; }

private:
    bool TakePicture(cDib& out) const;
    SaveContext ctx_;
};

class clsSaveJPG : public SaverBase {
public:
    using SaverBase::SaverBase;
    const char* ComparedExtension() const override { return "jpg"; }
    const char* AppendedExtension() const override { return ".jpg"; }
    const char* TemporaryName() const override { return "tmp.jpg"; }
protected:
    bool Write(cDib& p, const std::string& path) override { return WriteThroughRegistry(p, path, 1, Context().quality); }
};

class clsSaveBMP : public SaverBase {
public:
    using SaverBase::SaverBase;
    const char* ComparedExtension() const override { return "bmp"; }
    const char* AppendedExtension() const override { return ".bmp"; }
    const char* TemporaryName() const override { return "tmp.bmp"; }
protected:
    bool Write(cDib& p, const std::string& path) override { return WriteBmp(p, path); }
};

// GIF, PNG and TIFF compare with "jpg": a name ending in .jpg keeps it.
class clsSaveGIF : public SaverBase {
public:
    using SaverBase::SaverBase;
    const char* ComparedExtension() const override { return "jpg"; }
    const char* AppendedExtension() const override { return ".gif"; }
    const char* TemporaryName() const override { return "tmp.gif"; }
    bool AsksSilently() const override { return true; }
protected:
    bool Write(cDib& p, const std::string& path) override { return WriteThroughRegistry(p, path, 0, 90); }
};

class clsSavePNG : public SaverBase {
public:
    using SaverBase::SaverBase;
    const char* ComparedExtension() const override { return "jpg"; }
    const char* AppendedExtension() const override { return ".png"; }
    const char* TemporaryName() const override { return "tmp.png"; }
    bool AsksSilently() const override { return true; }
protected:
    bool Write(cDib& p, const std::string& path) override { return WriteThroughRegistry(p, path, 2, 90); }
};

class ClsSaveTIFF : public SaverBase {
public:
    using SaverBase::SaverBase;
    const char* ComparedExtension() const override { return "jpg"; }
    const char* AppendedExtension() const override { return ".tif"; }
    const char* TemporaryName() const override { return "tmp.tif"; }
    bool AsksSilently() const override { return true; }
protected:
    bool Write(cDib& p, const std::string& path) override { return WriteThroughRegistry(p, path, 3, 90); }
};

// Icons are written as bitmaps under the .ico name (the factory tells the user so).
class clsSaveICO : public SaverBase {
public:
    using SaverBase::SaverBase;
    const char* ComparedExtension() const override { return "ico"; }
    const char* AppendedExtension() const override { return ".ico"; }
    const char* TemporaryName() const override { return "tmp.bmp"; }
protected:
    bool Write(cDib& p, const std::string& path) override { return WriteBmp(p, path); }
};

class clsSaveFactory {
public:
    // fileType: the text of the type list, e.g. "JPEG .jpg".
    clsSaveFactory(SaveContext context, std::string fileType)
        : ctx_(std::move(context)), fileType_(std::move(fileType)) {}
    // Whatever the type, the JPEG saver does the work; the icon type only adds its message.
    std::string SaveFiletoSpecLoc(const std::string& folder, const std::string& fileName);

private:
    SaveContext ctx_;
    std::string fileType_;
};

}  // namespace quorbel
