#pragma once
// Where the program is and where its own data files are: the help pages (help/), the slide
// show templates and script (slideshow/) and the disc's support files (cd/). Every part
// that needs them asks here.
#include <filesystem>
#include <string>

namespace quorbel {

// The folder of the running program.
std::filesystem::path ProgramFolder();

// The executable's name without folder, as error sources show it.
std::string ProgramName();

// programFolder/../share/quorbel as installed (and as laid out in the build tree), else the
// build tree's copy; programFolder itself when neither has the templates.
std::filesystem::path FindProgramData(const std::filesystem::path& programFolder);

}  // namespace quorbel
