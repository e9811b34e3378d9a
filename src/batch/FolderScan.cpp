#include "batch/FolderScan.h"

#include <algorithm>
#include <set>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "output/PictureFormats.h"
#include "core/text/TextCase.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

std::string NormalExtension(std::string_view text) {
    text = TrimBlanks(text);
    if (text.starts_with("*")) text.remove_prefix(1);
    if (text.starts_with(".")) text.remove_prefix(1);
    return ToLowerAscii(text);
}

// The direct subfolders of folder that count (attribute exactly 16), sorted by name.
std::vector<std::string> DirectSubfolders(const std::string& folder) {
    std::vector<std::string> found;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (FolderAttributes(folder + name) == kAttrDirectory) found.push_back(folder + name + "/");
    }
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace

int FolderAttributes(const fs::path& path) {
    struct stat st {};
    if (::lstat(path.c_str(), &st) != 0) return 0;
    int attributes = 0;
    if (S_ISLNK(st.st_mode)) {
        struct stat target {};
        if (::stat(path.c_str(), &target) != 0 || !S_ISDIR(target.st_mode)) return 0;
        attributes = kAttrDirectory | kAttrLink;
        st = target;
    } else if (S_ISDIR(st.st_mode)) {
        attributes = kAttrDirectory;
    } else {
        return 0;
    }
    // The owner's write bit stands for the read-only flag (root may write anything, so
    // access() alone would never see it); access() adds folders this user may not write.
    if ((st.st_mode & S_IWUSR) == 0 || ::access(path.c_str(), W_OK) != 0) attributes |= kAttrReadOnly;
    if (path.filename().string().starts_with(".")) attributes |= kAttrHidden;
    return attributes;
}

const std::vector<std::string>& PictureFilter::DefaultExtensions() {
    static const std::vector<std::string> kDefault = [] {
        std::vector<std::string> list;
        for (std::string_view e : ListedExtensions()) list.emplace_back(e);
        return list;
    }();
    return kDefault;
}

PictureFilter::PictureFilter(std::vector<std::string> extensions) {
    for (const std::string& e : extensions) {
        std::string ext = NormalExtension(e);
        if (!ext.empty() && std::find(extensions_.begin(), extensions_.end(), ext) == extensions_.end())
            extensions_.push_back(std::move(ext));
    }
}

PictureFilter PictureFilter::FromText(std::string_view text) {
    std::vector<std::string> parts;
    size_t start = 0;
    while (start <= text.size()) {
        const size_t end = std::min(text.find_first_of(";, ", start), text.size());
        if (end > start) parts.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    PictureFilter filter(std::move(parts));
    return filter.extensions_.empty() ? PictureFilter() : filter;
}

std::string PictureFilter::Text() const {
    std::string text;
    for (const std::string& e : extensions_) text += (text.empty() ? "" : ";") + e;
    return text;
}

bool PictureFilter::Admits(const fs::path& file) const {
    const std::string ext = NormalExtension(file.extension().string());
    return !ext.empty() && std::find(extensions_.begin(), extensions_.end(), ext) != extensions_.end();
}

std::vector<fs::path> ListPictures(const fs::path& folder, const PictureFilter& filter) {
    std::vector<fs::path> files;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        std::error_code typeError;
        if (filter.Admits(it->path()) && it->is_regular_file(typeError)) files.push_back(it->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string WithTrailingSlash(std::string folder) {
    if (folder.empty() || folder.back() != '/') folder += '/';
    return folder;
}

std::vector<std::string> ScanSubfolders(const std::string& root) {
    std::vector<std::string> all;
    // A stack instead of recursion, so a very deep tree cannot exhaust the call stack; the
    // order is the recursive scan's. Folders already seen (a bind mount inside itself) are
    // not listed twice.
    std::vector<std::string> pending{WithTrailingSlash(root)};
    std::set<std::pair<dev_t, ino_t>> seen;
    while (!pending.empty()) {
        const std::string folder = std::move(pending.back());
        pending.pop_back();
        struct stat st {};
        if (::stat(folder.c_str(), &st) != 0 || !seen.insert({st.st_dev, st.st_ino}).second) continue;
        const std::vector<std::string> direct = DirectSubfolders(folder);
        all.insert(all.end(), direct.begin(), direct.end());
        pending.insert(pending.end(), direct.rbegin(), direct.rend());
    }
    return all;
}

std::string MirrorTarget(const std::string& subfolder, const std::string& sourceRoot, const std::string& targetRoot) {
    if (sourceRoot.empty()) return subfolder;
    std::string out;
    size_t from = 0;
    for (size_t at; (at = subfolder.find(sourceRoot, from)) != std::string::npos; from = at + sourceRoot.size())
        out.append(subfolder, from, at - from).append(targetRoot);
    return out.append(subfolder, from);
}

SubfolderWalk::SubfolderWalk(const std::string& sourceRoot, const std::string& targetRoot)
    : sourceRoot_(WithTrailingSlash(sourceRoot)),
      targetRoot_(WithTrailingSlash(targetRoot)),
      subfolders_(ScanSubfolders(sourceRoot_)) {}

std::optional<SubfolderWalk::Step> SubfolderWalk::Next() {
    if (index_ >= subfolders_.size()) return std::nullopt;
    const std::string& source = subfolders_[index_++];
    return Step{source, MirrorTarget(source, sourceRoot_, targetRoot_)};
}

}  // namespace quorbel
