#include "core/ProgramData.h"

namespace quorbel {
namespace fs = std::filesystem;

fs::path ProgramFolder() {
    std::error_code ec;
    const fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    return ec ? fs::current_path(ec) : exe.parent_path();
}

std::string ProgramName() {
    std::error_code ec;
    const fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    if (ec || exe.empty()) return "Quorbel";
    return exe.stem().string();
}

fs::path FindProgramData(const fs::path& programFolder) {
    std::error_code ec;
    for (const fs::path& candidate : {programFolder / "../share/quorbel",
#ifdef QUORBEL_BUILT_DATA
                                      fs::path(QUORBEL_BUILT_DATA)
#endif
         }) {
        if (fs::is_regular_file(candidate / "slideshow" / "DHTML1.txt", ec)) return fs::weakly_canonical(candidate, ec);
    }
    return programFolder;
}

}  // namespace quorbel
