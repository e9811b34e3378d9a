#include "core/text/TextCase.h"

namespace quorbel {

char LowerAscii(char c) noexcept { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

std::string ToLowerAscii(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = LowerAscii(c);
    return out;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) noexcept {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
    return true;
}

std::string_view TrimBlanks(std::string_view text) noexcept {
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    const size_t last = text.find_last_not_of(kBlanks);
    return text.substr(first, last - first + 1);
}

}  // namespace quorbel
