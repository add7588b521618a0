// Small covers of invented albums: a few files in memory, the same at every start.
#pragma once

#include <QByteArray>
#include <vector>

#include "tessaluna/platform/graphics/NSImage.h"

namespace gallery {

// The files, 80 pixels each way.
std::vector<QByteArray> coverFilesOfTracks();
// The same as images. Empty without a Qt program.
std::vector<tessaluna::platform::Ref<tessaluna::platform::NSImage>> coverPictures();
// One of them with as many pixels as an enlarged cover has. Null without a Qt program.
inline constexpr int largeCoverPixels = 640;
tessaluna::platform::Ref<tessaluna::platform::NSImage> largeCoverPicture(std::size_t number);

}  // namespace gallery
