#pragma once
// ASCII case folding and trimming for names the program compares without regard to case
// (INI sections and keys, unit names, recent-file paths, special preset names).
#include <string>
#include <string_view>

namespace quorbel {

char LowerAscii(char c) noexcept;
std::string ToLowerAscii(std::string_view text);
bool EqualsIgnoreCase(std::string_view a, std::string_view b) noexcept;

// Strips spaces, tabs and the other ASCII blanks from both ends.
std::string_view TrimBlanks(std::string_view text) noexcept;

}  // namespace quorbel
