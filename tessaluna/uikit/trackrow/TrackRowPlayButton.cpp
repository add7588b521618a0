#include "tessaluna/uikit/trackrow/TrackRowPlayButton.h"

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tessaluna/uikit/trackrow/DisabledLook.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&TrackRowPlayButton::setIsPlayingTrack, "isPlayingTrack">(),
                                   property<&TrackRowPlayButton::setIsPlaying, "isPlaying">()};

}  // namespace

const ClassInfo TrackRowPlayButton::staticClassInfo{
    .name = "TessalunaUIKit.TrackRowPlayButton", .base = &TrackRowControl::staticClassInfo, .properties = properties};

void TrackRowPlayButton::drawRect(CGRect) {
  const DisabledLook look(*this);
  if (hasMouseOnRow()) {
    // Intentional: alone of the three, it takes the pressed look back as soon as the pointer leaves it.
    TessalunaStyleKit::drawTrackRowPlayPause(bounds(), isPressed() && mouseInside(), mouseInside(), isPlaying_);
  } else if (isPlayingTrack_) {
    TessalunaStyleKit::drawTrackRowPlaying(bounds());
  }
}

}  // namespace TessalunaUIKit
