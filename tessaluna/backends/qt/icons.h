// Pictures of the library as Qt icons, drawn again at the device pixels of each place where they show:
//
//   button.setIcon(backend::qt::icon(TessalunaStyleKit::imageOfRightArrow()));
//   button.setIcon(backend::qt::iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay));
//
// An icon fills the size that it is asked for as far as its proportions allow, keeps no pixels, and needs no QtBackend.
// Programs that make icons can decode pictures, with `NSImage::initWithData`, without one too.
// The looks for disabled, active and selected are those that the application's style makes of the normal one.
#pragma once

#include <QIcon>
#include <functional>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::backend::qt {

// Shares the image. A null icon for an absent image or one without extent.
QIcon icon(platform::Ref<platform::NSImage> image);

// The drawing is called with the frame (0, 0, size), in points with y up, and draws into the current context. An empty one
// stops the program.
QIcon iconOfDrawing(platform::CGSize size, std::function<void(platform::CGRect frame)> draw);

}  // namespace tessaluna::backend::qt
