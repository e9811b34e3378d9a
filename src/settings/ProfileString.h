#pragma once
// The two INI calls the program is written against, with the behaviour it relies on: reads
// go through a 2048-character buffer, an absent key deletes the whole section, an absent
// value deletes the key, and every write replaces the file atomically.
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quorbel {

inline constexpr size_t kProfileBufferSize = 2048;

// What the read buffer keeps of a text: at most kProfileBufferSize - 1 bytes (the last place
// holds the terminator), never cut inside a UTF-8 character.
std::string FitProfileBuffer(std::string_view text);

// The stored value of key, or defaultValue when the file, section or key is absent; either
// way truncated as the buffer would.
std::string GetPrivateProfileString(std::string_view section, std::string_view key,
                                    std::string_view defaultValue,
                                    const std::filesystem::path& path);

// key absent: deletes section; value absent: deletes key; otherwise stores value. True on
// success, including a delete of something already absent (the file is then not written).
bool WritePrivateProfileString(std::string_view section, std::optional<std::string_view> key,
                               std::optional<std::string_view> value,
                               const std::filesystem::path& path);

}  // namespace quorbel
