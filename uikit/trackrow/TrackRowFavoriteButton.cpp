#include "uikit/trackrow/TrackRowFavoriteButton.h"

#include "uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

using namespace platform;

const ClassInfo TrackRowFavoriteButton::staticClassInfo{.name = "TessalunaUIKit.TrackRowFavoriteButton",
                                                        .base = &NSView::staticClassInfo};

void TrackRowFavoriteButton::drawRect(CGRect) {
  if (hasMouseOnRow())
    TessalunaStyleKit::drawFavoriteAlbumOverlay(bounds(), isFavorite_, isPressed(), mouseInside());
}

}  // namespace TessalunaUIKit
