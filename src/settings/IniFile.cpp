#include "settings/IniFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <span>
#include <unordered_set>

#include "core/SafeFile.h"
#include "core/text/TextCase.h"

namespace quorbel {
namespace {

constexpr size_t npos = std::string::npos;
// A settings file is a few kilobytes; anything this large is not ours to rewrite.
constexpr off_t kMaxIniBytes = 16 * 1024 * 1024;

std::mutex& EngineMutex() {
    static std::mutex m;
    return m;
}

std::string_view Unquote(std::string_view v) {
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front())
        return v.substr(1, v.size() - 2);
    return v;
}

bool HasLineBreak(std::string_view s) { return s.find_first_of("\r\n") != npos; }

// Missing only when the path or a folder on it does not exist; any other failure means a
// file we cannot see into, which must not be overwritten.
IniFileState ReadWholeFile(const std::filesystem::path& path, std::string& out) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return (errno == ENOENT || errno == ENOTDIR) ? IniFileState::Missing : IniFileState::Unreadable;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_size > kMaxIniBytes) {
        ::close(fd);
        return IniFileState::Unreadable;
    }
    out.assign(static_cast<size_t>(st.st_size), '\0');
    size_t done = 0;
    while (done < out.size()) {
        const ssize_t n = ::read(fd, out.data() + done, out.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            ::close(fd);
            out.clear();
            return IniFileState::Unreadable;
        }
        if (n == 0) break;  // shrank while we read: take what is there
        done += static_cast<size_t>(n);
    }
    out.resize(done);
    ::close(fd);
    return IniFileState::Read;
}

}  // namespace

IniFile IniFile::Load(const std::filesystem::path& path) {
    std::string text;
    const IniFileState state = ReadWholeFile(path, text);
    IniFile file = FromText(text, path);
    file.state_ = state;
    return file;
}

IniFile IniFile::FromText(std::string_view text, std::filesystem::path path) {
    IniFile file;
    file.path_ = std::move(path);
    file.Parse(text);
    return file;
}

void IniFile::Parse(std::string_view text) {
    lines_.clear();
    const size_t firstBreak = text.find('\n');
    if (firstBreak != npos && firstBreak > 0 && text[firstBreak - 1] == '\r') newline_ = "\r\n";

    bool inSection = false;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == npos) end = text.size();
        std::string_view raw = text.substr(start, end - start);
        start = end + 1;
        if (!raw.empty() && raw.back() == '\r') raw.remove_suffix(1);

        Line line;
        line.text = std::string(raw);
        const std::string_view t = TrimBlanks(raw);
        if (!t.empty() && t.front() == '[') {
            const size_t close = t.find(']');
            if (close != npos) {
                line.kind = Kind::Section;
                line.name = std::string(TrimBlanks(t.substr(1, close - 1)));
                inSection = true;
            }
        } else if (inSection && !t.empty() && t.front() != ';') {
            const size_t eq = t.find('=');
            if (eq != npos) {
                line.kind = Kind::Key;
                line.name = std::string(TrimBlanks(t.substr(0, eq)));
                line.value = std::string(Unquote(TrimBlanks(t.substr(eq + 1))));
            }
        }
        lines_.push_back(std::move(line));
    }
}

std::string IniFile::Text() const {
    std::string out;
    for (const Line& line : lines_) {
        out += line.text;
        out += newline_;
    }
    return out;
}

size_t IniFile::FindSection(std::string_view section) const {
    const std::string_view name = TrimBlanks(section);
    for (size_t i = 0; i < lines_.size(); ++i)
        if (lines_[i].kind == Kind::Section && EqualsIgnoreCase(lines_[i].name, name)) return i;
    return npos;
}

size_t IniFile::SectionEnd(size_t header) const {
    size_t i = header + 1;
    while (i < lines_.size() && lines_[i].kind != Kind::Section) ++i;
    return i;
}

size_t IniFile::FindKey(size_t header, std::string_view key) const {
    const std::string_view name = TrimBlanks(key);
    const size_t end = SectionEnd(header);
    for (size_t i = header + 1; i < end; ++i)
        if (lines_[i].kind == Kind::Key && EqualsIgnoreCase(lines_[i].name, name)) return i;
    return npos;
}

std::optional<std::string> IniFile::Get(std::string_view section, std::string_view key) const {
    const size_t header = FindSection(section);
    if (header == npos) return std::nullopt;
    const size_t at = FindKey(header, key);
    if (at == npos) return std::nullopt;
    return lines_[at].value;
}

bool IniFile::IsStorableSection(std::string_view section) {
    return !HasLineBreak(section) && section.find(']') == npos;
}

bool IniFile::IsStorableKey(std::string_view key) {
    const std::string_view t = TrimBlanks(key);
    return !HasLineBreak(key) && key.find('=') == npos &&
           (t.empty() || (t.front() != '[' && t.front() != ';'));
}

bool IniFile::IsStorableValue(std::string_view value) { return !HasLineBreak(value); }

bool IniFile::Set(std::string_view section, std::string_view key, std::string_view value) {
    const std::string_view sectionName = TrimBlanks(section);
    const std::string_view keyName = TrimBlanks(key);
    if (!IsStorableSection(sectionName) || !IsStorableKey(keyName) || !IsStorableValue(value))
        return false;

    Line keyLine;
    keyLine.kind = Kind::Key;
    keyLine.name = std::string(keyName);
    keyLine.value = std::string(Unquote(TrimBlanks(value)));

    const size_t header = FindSection(sectionName);
    if (header == npos) {
        if (!lines_.empty() && !TrimBlanks(lines_.back().text).empty()) lines_.push_back(Line{});
        Line headerLine;
        headerLine.kind = Kind::Section;
        headerLine.name = std::string(sectionName);
        headerLine.text = "[" + headerLine.name + "]";
        lines_.push_back(std::move(headerLine));
        keyLine.text = keyLine.name + "=" + std::string(value);
        lines_.push_back(std::move(keyLine));
        changed_ = true;
        return true;
    }

    const size_t at = FindKey(header, keyName);
    if (at != npos) {
        // The stored spelling of the name stays; only the value changes.
        Line& existing = lines_[at];
        std::string text = existing.name + "=" + std::string(value);
        if (text != existing.text) {
            existing.text = std::move(text);
            existing.value = std::move(keyLine.value);
            changed_ = true;
        }
        return true;
    }

    size_t insertAt = header + 1;
    const size_t end = SectionEnd(header);
    for (size_t i = header + 1; i < end; ++i)
        if (lines_[i].kind == Kind::Key) insertAt = i + 1;
    keyLine.text = keyLine.name + "=" + std::string(value);
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(insertAt), std::move(keyLine));
    changed_ = true;
    return true;
}

bool IniFile::DeleteKey(std::string_view section, std::string_view key) {
    const size_t header = FindSection(section);
    if (header == npos) return false;
    bool removed = false;
    // Every copy goes, so that the key really reads as absent afterwards.
    for (size_t at = FindKey(header, key); at != npos; at = FindKey(header, key)) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(at));
        removed = true;
    }
    changed_ = changed_ || removed;
    return removed;
}

bool IniFile::DeleteSection(std::string_view section) {
    bool removed = false;
    for (size_t header = FindSection(section); header != npos; header = FindSection(section)) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(header),
                     lines_.begin() + static_cast<std::ptrdiff_t>(SectionEnd(header)));
        removed = true;
    }
    changed_ = changed_ || removed;
    return removed;
}

bool IniFile::HasSection(std::string_view section) const { return FindSection(section) != npos; }

std::vector<std::string> IniFile::Keys(std::string_view section) const {
    std::vector<std::string> keys;
    for (auto& [key, value] : Pairs(section)) keys.push_back(std::move(key));
    return keys;
}

std::vector<std::pair<std::string, std::string>> IniFile::Pairs(std::string_view section) const {
    std::vector<std::pair<std::string, std::string>> pairs;
    const size_t header = FindSection(section);
    if (header == npos) return pairs;
    std::unordered_set<std::string> seen;
    const size_t end = SectionEnd(header);
    for (size_t i = header + 1; i < end; ++i) {
        // A repeated key is hidden behind its first copy, as Get sees it.
        if (lines_[i].kind == Kind::Key && seen.insert(ToLowerAscii(lines_[i].name)).second)
            pairs.emplace_back(lines_[i].name, lines_[i].value);
    }
    return pairs;
}

std::error_code IniFile::Save() const {
    if (state_ == IniFileState::Unreadable) return std::make_error_code(std::errc::io_error);
    if (path_.empty()) return std::make_error_code(std::errc::invalid_argument);
    const std::string text = Text();
    ReplaceOptions options;
    options.keepOldTimes = false;
    return ReplaceFileContents(
        path_, std::span(reinterpret_cast<const uint8_t*>(text.data()), text.size()), options);
}

IniFile ReadIniFile(const std::filesystem::path& path) {
    std::lock_guard lock(EngineMutex());
    return IniFile::Load(path);
}

bool ModifyIniFile(const std::filesystem::path& path, const std::function<bool(IniFile&)>& edit) {
    std::lock_guard lock(EngineMutex());
    IniFile file = IniFile::Load(path);
    if (file.State() == IniFileState::Unreadable) return false;
    if (!edit(file)) return false;
    if (!file.Changed()) return true;
    return !file.Save();
}

}  // namespace quorbel
