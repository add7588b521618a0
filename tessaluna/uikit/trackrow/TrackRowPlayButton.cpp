#include "tessaluna/uikit/trackrow/TrackRowPlayButton.h"

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo TrackRowPlayButton::staticClassInfo{.name = "TessalunaUIKit.TrackRowPlayButton",
                                                    .base = &NSView::staticClassInfo};

void TrackRowPlayButton::drawRect(CGRect) {
  if (hasMouseOnRow()) {
    // Wanted: alone of the three, it takes the pressed look back as soon as the pointer leaves it.
    TessalunaStyleKit::drawTrackRowPlayPause(bounds(), isPressed() && mouseInside(), mouseInside(), isPlaying_);
  } else if (isPlayingTrack_) {
    TessalunaStyleKit::drawTrackRowPlaying(bounds());
  }
}

}  // namespace TessalunaUIKit
