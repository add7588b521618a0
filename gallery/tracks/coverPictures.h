// Small covers of albums that nobody has pressed: a few files in memory, the same at every start.
#pragma once

#include <QByteArray>
#include <vector>

#include "tessaluna/platform/graphics/NSImage.h"

namespace gallery {

// The files, of 80 pixels each way.
std::vector<QByteArray> coverFilesOfTracks();
// The same as images. Empty without a Qt program.
std::vector<tessaluna::platform::Ref<tessaluna::platform::NSImage>> coverPictures();

}  // namespace gallery
