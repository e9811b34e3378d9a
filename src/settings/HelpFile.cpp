#include "settings/HelpFile.h"

#include "settings/DataFolder.h"

namespace quorbel {

std::string HelpFileName(int16_t kind) {
    if (kind != 1) return {};
    return DataFolder() + "Qorbix5.chm";
}

}  // namespace quorbel
