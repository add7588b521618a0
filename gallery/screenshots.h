// Pictures of the gallery's pages as PNG files.
#pragma once

#include <optional>
#include <string>

#include "gallery/Pages.h"

namespace gallery {

class GalleryWindow;

// Absent on success, otherwise the error in one line. A file that could not be written completely does not exist.
std::optional<std::string> writeScreenshot(GalleryWindow& window, const Page& page, const std::string& file);
// One file for each page, named after it ("small-controls.png"). The folder is made if it does not exist.
std::optional<std::string> writeScreenshots(GalleryWindow& window, const std::string& folder);

}  // namespace gallery
