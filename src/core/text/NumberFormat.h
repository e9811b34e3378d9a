#pragma once
// The "#####.##" display format of sizes in a measurement unit.
#include <string>

namespace quorbel {

// At most two decimals, no thousands separator, no leading zero and no trailing zeros, but
// the decimal point always: 1 -> "1.", 1.5 -> "1.5", 0.5 -> ".5", 0 -> ".", -2.25 -> "-2.25".
// Halves round away from zero on the decimal digits, so 0.125 -> ".13". Empty for a value
// that is not finite.
std::string FormatUpToTwoDecimals(double value);

}  // namespace quorbel
