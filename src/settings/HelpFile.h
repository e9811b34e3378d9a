#pragma once
// Where the help lives and the topics the program opens.
#include <cstdint>
#include <string>
#include <string_view>

namespace quorbel {

inline constexpr std::string_view kHelpTopicGettingStarted = "GettingStarted.html";
inline constexpr std::string_view kHelpTopicTutorialResizing = "Tutorial Resizing Pictures.htm";

// Kind 1: data folder + "Qorbix5.chm"; any other kind: empty.
std::string HelpFileName(int16_t kind);

}  // namespace quorbel
