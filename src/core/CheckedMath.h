#pragma once
// Whole-number pixel arithmetic that fails instead of wrapping: an overflow anywhere stops
// the whole operation with the overflow error.
#include <cstdint>

#include "core/RuntimeError.h"

namespace quorbel {

inline int32_t CheckedMul(int32_t a, int32_t b, const char* source = "Quorbel") {
    int32_t r;
    if (__builtin_mul_overflow(a, b, &r)) RaiseOverflow(source);
    return r;
}

inline int32_t CheckedAdd(int32_t a, int32_t b, const char* source = "Quorbel") {
    int32_t r;
    if (__builtin_add_overflow(a, b, &r)) RaiseOverflow(source);
    return r;
}

inline int32_t CheckedSub(int32_t a, int32_t b, const char* source = "Quorbel") {
    int32_t r;
    if (__builtin_sub_overflow(a, b, &r)) RaiseOverflow(source);
    return r;
}

}  // namespace quorbel
