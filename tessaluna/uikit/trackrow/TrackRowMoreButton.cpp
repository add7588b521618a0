#include "tessaluna/uikit/trackrow/TrackRowMoreButton.h"

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo TrackRowMoreButton::staticClassInfo{.name = "TessalunaUIKit.TrackRowMoreButton",
                                                    .base = &TrackRowControl::staticClassInfo};

void TrackRowMoreButton::drawRect(CGRect) {
  if (hasMouseOnRow()) TessalunaStyleKit::drawTrackMore(bounds(), isPressed(), mouseInside());
}

}  // namespace TessalunaUIKit
