#pragma once
// Replacing a file without ever losing it: the new content goes to a temporary file in the
// same folder and is renamed over the target only once it is completely on disk. A failure
// at any point leaves the old file exactly as it was.
#include <cstdint>
#include <filesystem>
#include <span>
#include <system_error>

namespace quorbel {

struct ReplaceOptions {
    // On overwrite the old file's access and modification times go onto the new file, as
    // users expect of a resize that replaces their photo. (Linux cannot set a creation time.)
    bool keepOldTimes = true;
    // Refuse when the target exists (no check-then-write race).
    bool mustNotExist = false;
    // fsync the file and its folder; off only for scratch files nobody must keep.
    bool durable = true;
};

// Writes bytes to target through a temporary file and a rename. Writes through a symbolic
// link to the file it names. The old file's permission bits (a read-only file stays read-only)
// and owner are kept. Returns an empty error code on success.
std::error_code ReplaceFileContents(const std::filesystem::path& target,
                                    std::span<const uint8_t> bytes,
                                    const ReplaceOptions& options = {});

// Deletes temporary files that a killed run of ours left in folder (names made by
// ReplaceFileContents, untouched for over a minute), and only those. Returns how many.
int RemoveStaleTemporaries(const std::filesystem::path& folder);

// True when name has the pattern of our temporary files.
bool IsOurTemporaryName(const std::string& name);

}  // namespace quorbel
