#pragma once
// The pictures of a folder, for stepping to the previous or next one. Names are taken as the
// file system holds them, so names that are not valid UTF-8 are stepped through too.
#include <filesystem>
#include <string>
#include <vector>

namespace quorbel {

// Regular files with an extension the open dialog offers (.bmp .gif .jpg .jpeg .png .tif,
// any case), sorted by name bytes.
std::vector<std::filesystem::path> ListFolderPictures(const std::filesystem::path& folder);

// The picture after (direction +1) or before (-1) current, wrapping at the ends; current
// itself need not be in the list. Empty when the list is.
std::filesystem::path NeighbourPicture(const std::vector<std::filesystem::path>& pictures,
                                       const std::filesystem::path& current, int direction);

}  // namespace quorbel
