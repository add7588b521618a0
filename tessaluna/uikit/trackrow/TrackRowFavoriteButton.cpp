#include "tessaluna/uikit/trackrow/TrackRowFavoriteButton.h"

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo TrackRowFavoriteButton::staticClassInfo{.name = "TessalunaUIKit.TrackRowFavoriteButton",
                                                        .base = &NSView::staticClassInfo};

void TrackRowFavoriteButton::drawRect(CGRect) {
  if (hasMouseOnRow()) TessalunaStyleKit::drawFavoriteAlbumOverlay(bounds(), isFavorite_, isPressed(), mouseInside());
}

}  // namespace TessalunaUIKit
