#pragma once
// Folders of a batch job: which files a listing admits (the advanced file filter), the
// pictures of one folder, the subfolder scan and the target folders that mirror it.
// Paths are kept as the host's bytes, so names that are not valid UTF-8 survive.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorbel {

// Folder attribute values as the scan reads them: 16 for a folder, plus 1 when it cannot
// be written, 2 when its name starts with ".", 1024 when it is a symbolic link.
inline constexpr int kAttrReadOnly = 1;
inline constexpr int kAttrHidden = 2;
inline constexpr int kAttrDirectory = 16;
inline constexpr int kAttrLink = 1024;

// The attribute value of path; 0 when it does not exist.
int FolderAttributes(const std::filesystem::path& path);

// The extensions (lower case, without the dot) a folder listing admits.
class PictureFilter {
public:
    static const std::vector<std::string>& DefaultExtensions();  // the format table's: bmp gif jpg jpeg png tif tiff ico webp avif heic heif
    PictureFilter() : extensions_(DefaultExtensions()) {}
    explicit PictureFilter(std::vector<std::string> extensions);
    // "jpg;png" (also "*.jpg, .png"); an empty text gives the default list.
    static PictureFilter FromText(std::string_view text);
    std::string Text() const;  // "bmp;gif;..."

    bool Admits(const std::filesystem::path& file) const;
    const std::vector<std::string>& Extensions() const { return extensions_; }
    bool operator==(const PictureFilter&) const = default;

private:
    std::vector<std::string> extensions_;
};

// The regular files of folder (not its subfolders) the filter admits, sorted by name.
// FIFOs, devices and unreadable folders give nothing.
std::vector<std::filesystem::path> ListPictures(const std::filesystem::path& folder, const PictureFilter& filter);

// The source folder with a trailing "/" (the text compared and mirrored).
std::string WithTrailingSlash(std::string folder);

// Every subfolder under root, each ending in "/": a folder's direct subfolders (by name)
// before any of their descendants, as a recursive scan that lists a folder before visiting
// its subfolders gives them. Only folders whose attribute value is exactly 16 count, so
// read-only, hidden and linked folders are neither listed nor entered (and a link loop is
// never followed). Unreadable folders are skipped.
std::vector<std::string> ScanSubfolders(const std::string& root);

// The target for a source subfolder: every occurrence of sourceRoot in subfolder, from the
// first on, replaced by targetRoot (case-sensitive), so the target tree mirrors the source.
std::string MirrorTarget(const std::string& subfolder, const std::string& sourceRoot, const std::string& targetRoot);

// The subfolder list of one run and the place in it: Next() gives the next source folder
// and its mirrored target, or nothing when the list is done.
class SubfolderWalk {
public:
    struct Step {
        std::string source;
        std::string target;
    };
    SubfolderWalk() = default;
    SubfolderWalk(const std::string& sourceRoot, const std::string& targetRoot);
    std::optional<Step> Next();
    const std::vector<std::string>& Subfolders() const { return subfolders_; }
    size_t Index() const { return index_; }

private:
    std::string sourceRoot_, targetRoot_;
    std::vector<std::string> subfolders_;
    size_t index_ = 0;
};

}  // namespace quorbel
