#include "core/PixelMemory.h"

#include <sys/mman.h>

#include <cstdlib>

namespace quorbel {
namespace {

constexpr size_t kHugePage = size_t(2) << 20;
constexpr size_t kPage = 4096;
constexpr size_t kMapFrom = size_t(4) << 20;  // smaller blocks come from the heap

size_t RoundUp(size_t n, size_t to) { return (n + to - 1) / to * to; }

}  // namespace

uint8_t* AllocatePixels(size_t bytes) {
    if (bytes < kMapFrom) return static_cast<uint8_t*>(std::calloc(bytes ? bytes : 1, 1));
    const size_t length = RoundUp(bytes, kPage);
    const size_t reserve = length + kHugePage;
    void* raw = ::mmap(nullptr, reserve, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (raw == MAP_FAILED) return nullptr;
    // Keep a 2 MiB-aligned stretch and give back the rest, so huge pages can back it.
    const uintptr_t start = reinterpret_cast<uintptr_t>(raw);
    const uintptr_t aligned = RoundUp(start, kHugePage);
    if (aligned > start) ::munmap(raw, aligned - start);
    const uintptr_t end = start + reserve, used = aligned + length;
    if (end > used) ::munmap(reinterpret_cast<void*>(used), end - used);
    ::madvise(reinterpret_cast<void*>(aligned), length, MADV_HUGEPAGE);
    return reinterpret_cast<uint8_t*>(aligned);
}

void FreePixels(uint8_t* memory, size_t bytes) noexcept {
    if (!memory) return;
    if (bytes < kMapFrom) {
        std::free(memory);
        return;
    }
    ::munmap(memory, RoundUp(bytes, kPage));
}

}  // namespace quorbel
