#pragma once
// An INI file held in memory: sections and keys keep their file order, names are compared
// without regard to ASCII case, and every line the engine does not understand (comments,
// garbage, a truncated last line) is written back exactly as it was read.
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace quorbel {

enum class IniFileState {
    Missing,     // no file yet: reads as empty, a save creates it
    Read,        // read completely
    Unreadable,  // exists but could not be read (a folder, no permission, absurdly large):
                 // reads as empty and refuses to save, so the file is never made worse
};

class IniFile {
public:
    IniFile() = default;

    static IniFile Load(const std::filesystem::path& path);
    static IniFile FromText(std::string_view text, std::filesystem::path path = {});

    const std::filesystem::path& Path() const noexcept { return path_; }
    IniFileState State() const noexcept { return state_; }

    // Section and key names given by the caller are trimmed, as the lines are on reading.
    // Lookups use the first section of a name and the first key of a name in it.
    std::optional<std::string> Get(std::string_view section, std::string_view key) const;
    // Keeps the key's place when it exists; otherwise appends it to its section, or appends
    // the section to the end of the file. False when the text cannot be one INI line.
    bool Set(std::string_view section, std::string_view key, std::string_view value);
    // Both return whether anything was removed. A section goes with every line under it.
    bool DeleteKey(std::string_view section, std::string_view key);
    bool DeleteSection(std::string_view section);

    bool HasSection(std::string_view section) const;
    std::vector<std::string> Keys(std::string_view section) const;
    std::vector<std::pair<std::string, std::string>> Pairs(std::string_view section) const;

    std::string Text() const;
    // True after an edit that changed a line.
    bool Changed() const noexcept { return changed_; }
    // Atomic replacement of the file at Path(); refused for an Unreadable file.
    std::error_code Save() const;

    // A name or value that would not read back as written (line breaks, "=" or a leading
    // "[" or ";" in a key, "]" in a section name) cannot be stored.
    static bool IsStorableSection(std::string_view section);
    static bool IsStorableKey(std::string_view key);
    static bool IsStorableValue(std::string_view value);

private:
    enum class Kind { Other, Section, Key };
    struct Line {
        Kind kind = Kind::Other;
        std::string text;  // what is written back
        std::string name;  // trimmed section or key name
        std::string value;  // trimmed, unquoted key value
    };

    void Parse(std::string_view text);
    // Index of the first header of section, or npos; the section ends at the next header.
    size_t FindSection(std::string_view section) const;
    size_t SectionEnd(size_t header) const;
    size_t FindKey(size_t header, std::string_view key) const;

    std::filesystem::path path_;
    IniFileState state_ = IniFileState::Missing;
    std::vector<Line> lines_;
    std::string newline_ = "\n";
    bool changed_ = false;
};

// One lock guards every INI access of the process, so threads may read and write settings.
// Loads path under the lock.
IniFile ReadIniFile(const std::filesystem::path& path);

// Read-modify-write of path under the lock. edit returns false to abandon the change. The
// file is written, atomically, only when its text changed. False when the file could not be
// read safely, edit abandoned, or the write failed; the file is then untouched.
bool ModifyIniFile(const std::filesystem::path& path, const std::function<bool(IniFile&)>& edit);

}  // namespace quorbel
