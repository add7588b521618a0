#include "tessaluna/uikit/trackrow/TrackRowMoreButton.h"

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tessaluna/uikit/trackrow/DisabledLook.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo TrackRowMoreButton::staticClassInfo{.name = "TessalunaUIKit.TrackRowMoreButton",
                                                    .base = &TrackRowControl::staticClassInfo};

void TrackRowMoreButton::drawRect(CGRect) {
  const DisabledLook look(*this);
  if (hasMouseOnRow()) TessalunaStyleKit::drawTrackMore(bounds(), isPressed(), mouseInside());
}

}  // namespace TessalunaUIKit
