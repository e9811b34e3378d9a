#pragma once
// Whole files in and out. Decoders never stream from a file that may be replaced while
// they read: the file is read into memory first.
#include <cstdint>
#include <filesystem>
#include <span>
#include <system_error>
#include <vector>

namespace quorbel {

// The largest picture file read: far beyond any real photo, short of exhausting memory.
inline constexpr int64_t kMaxPictureFileBytes = int64_t(1) << 30;

// Reads a regular file completely (opened without blocking, so a FIFO or device never
// hangs the caller). Fails on anything else, on read errors and on files over the cap.
std::error_code ReadWholeFile(const std::filesystem::path& file, std::vector<uint8_t>& bytes);

}  // namespace quorbel
