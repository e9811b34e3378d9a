#pragma once
// Where the program's own data files are: the slide show templates and script
// (slideshow/) and the disc's support files (cd/).
#include <filesystem>

namespace quorbel {

// The folder of the running program.
std::filesystem::path ProgramFolder();

// programFolder/../share/quorbel as installed (and as laid out in the build tree), else the
// build tree's copy; programFolder itself when neither has the templates.
std::filesystem::path FindProgramData(const std::filesystem::path& programFolder);

}  // namespace quorbel
