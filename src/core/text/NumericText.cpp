#include "core/text/NumericText.h"

#include <charconv>
#include <cmath>

#include "core/text/TextCase.h"

namespace quorbel {

std::optional<double> ParseNumericText(std::string_view text) {
    std::string_view t = TrimBlanks(text);
    bool negative = false;
    if (!t.empty() && (t.front() == '+' || t.front() == '-')) {
        negative = t.front() == '-';
        t.remove_prefix(1);
    }
    // from_chars would also take "inf", "nan" and a second sign.
    if (t.empty() || !((t.front() >= '0' && t.front() <= '9') || t.front() == '.')) return std::nullopt;
    double value = 0;
    const auto [end, ec] = std::from_chars(t.data(), t.data() + t.size(), value);
    if (ec != std::errc() || end != t.data() + t.size() || !std::isfinite(value)) return std::nullopt;
    return negative ? -value : value;
}

}  // namespace quorbel
