#pragma once
// The JPEG quality that goes with a quality name or a typed number.
#include <cstdint>
#include <string_view>

namespace quorbel {

inline constexpr int32_t kDefaultJpegQuality = 97;

// "Highest Quality" 95, "Higher Quality" 85, "Medium Quality" 75, "Lower Quality" 65,
// "Lowest Quality" 50 (exact case); a number gives itself rounded half to even, raising the
// overflow error beyond 32 bits; anything else, the empty text included, gives 97.
int32_t JpegQualityFromName(std::string_view name);

}  // namespace quorbel
