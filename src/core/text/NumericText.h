#pragma once
// Whether a typed text is a number, and which: blanks around, an optional sign, decimal
// digits with at most one decimal point "." and an optional exponent. The decimal point does
// not depend on the locale.
#include <optional>
#include <string_view>

namespace quorbel {

// nullopt for anything else, the empty text and numbers beyond a double included.
std::optional<double> ParseNumericText(std::string_view text);

}  // namespace quorbel
