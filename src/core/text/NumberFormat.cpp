#include "core/text/NumberFormat.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace quorbel {
namespace {

constexpr int kSignificant = 15;  // what a double shows in decimal without noise

// Adds one to a decimal digit string, growing it on a carry out of the first digit.
void Increment(std::string& digits) {
    for (size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
    digits.insert(digits.begin(), '1');
}

// The magnitude times 100, rounded half away from zero, as decimal digits.
std::string Hundredths(double magnitude) {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.*e", kSignificant - 1, magnitude);  // d.ddd…e±x
    std::string digits;
    digits += buf[0];
    digits.append(buf + 2, kSignificant - 1);
    const int exponent = std::atoi(buf + 2 + kSignificant - 1 + 1);

    // Digits before the decimal point of magnitude × 100.
    const int keep = exponent + 1 + 2;
    if (keep < 0) return "0";
    if (keep == 0) return digits[0] >= '5' ? "1" : "0";
    if (keep >= kSignificant) return digits + std::string(static_cast<size_t>(keep - kSignificant), '0');
    std::string kept = digits.substr(0, static_cast<size_t>(keep));
    if (digits[static_cast<size_t>(keep)] >= '5') Increment(kept);
    return kept;
}

}  // namespace

std::string FormatUpToTwoDecimals(double value) {
    if (!std::isfinite(value)) return {};
    std::string hundredths = Hundredths(std::fabs(value));
    if (hundredths.size() < 3) hundredths.insert(0, 3 - hundredths.size(), '0');

    std::string whole = hundredths.substr(0, hundredths.size() - 2);
    const size_t firstNonZero = whole.find_first_not_of('0');
    whole = firstNonZero == std::string::npos ? std::string() : whole.substr(firstNonZero);
    std::string fraction = hundredths.substr(hundredths.size() - 2);
    while (!fraction.empty() && fraction.back() == '0') fraction.pop_back();

    const bool isZero = whole.empty() && fraction.empty();
    return (value < 0 && !isZero ? "-" : "") + whole + "." + fraction;
}

}  // namespace quorbel
