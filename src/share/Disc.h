#pragma once
// The "CD" job's extras: the support files that make the disc open its slide show, and the
// hand-over of the finished files to the user's disc-writing program.
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageBox.h"
#include "platform/Desktop.h"

namespace quorbel {

inline constexpr std::string_view kDiscSupportFiles[] = {"autorun.inf", "movie32.ico", "browsercall.exe"};
inline constexpr std::string_view kNoDiscWriter =
    "No disc-writing program was found (Brasero, K3b or Xfburn). The folder with the files to write is "
    "now open: write them to a CD or DVD with the program you use.";

// Copies each support file from `from` into target (replacing older ones), appending each
// copied file to outputs. Returns how many were copied.
int CopyDiscSupportFiles(const std::filesystem::path& from, const std::filesystem::path& target,
                         std::vector<std::filesystem::path>& outputs);

// Hands the files to the first installed of brasero, k3b and xfburn as a new data disc and
// returns its name; with none installed, opens the folder, says so and returns "".
std::string WriteToDisc(const std::vector<std::filesystem::path>& files, const std::filesystem::path& folder,
                        Desktop& desktop, MessageBox& messages);

}  // namespace quorbel
