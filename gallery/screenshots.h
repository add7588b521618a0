// Pictures of the gallery's pages as PNG files.
#pragma once

#include <optional>
#include <string>

#include "gallery/Pages.h"

namespace gallery {

class GalleryWindow;

// Absent if all went well, or what did not, in one line. A file that could not be written whole is not there.
std::optional<std::string> writeScreenshot(GalleryWindow& window, const Page& page, const std::string& file);
// One file for each page, named after it ("small-controls.png"). The folder is made where there is none.
std::optional<std::string> writeScreenshots(GalleryWindow& window, const std::string& folder);

}  // namespace gallery
