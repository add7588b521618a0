// The artwork of the player as code. Each picture is a static routine that takes a frame and state flags and
// paints vector shapes into the current graphics context:
//
//   TessalunaStyleKit::drawLeftArrow({10, 20, 24, 24}, /*enabled=*/true, /*isPressed=*/false);
//
// or comes as an image that does so at any size:
//
//   auto image = TessalunaStyleKit::imageOfLeftArrow();
//
// Frames are in points and never checked or clamped; the y axis grows upward. A routine keeps nothing and
// looks at nothing but its arguments. The routines stand in one header for each family; Routines.h describes
// them all.
#pragma once

#include "platform/foundation/NSObject.h"
#include "uikit/stylekit/AlbumArtPlaceholders.h"
#include "uikit/stylekit/AlbumOverlayGlyphs.h"
#include "uikit/stylekit/ArrowAndCloseGlyphs.h"
#include "uikit/stylekit/Badges.h"
#include "uikit/stylekit/BrowseIcons.h"
#include "uikit/stylekit/InfoButtons.h"
#include "uikit/stylekit/MoodIcons.h"
#include "uikit/stylekit/TrackRowGlyphs.h"
#include "uikit/stylekit/TransportGlyphs.h"
#include "uikit/stylekit/image_factory.h"
#include "uikit/stylekit/palette.h"

namespace TessalunaUIKit {

class TessalunaStyleKit : public platform::NSObject,
                          public Palette,
                          public ImageFactory,
                          public ArrowAndCloseGlyphs,
                          public TransportGlyphs,
                          public AlbumOverlayGlyphs,
                          public TrackRowGlyphs,
                          public InfoButtons,
                          public AlbumArtPlaceholders,
                          public Badges,
                          public BrowseIcons,
                          public MoodIcons {
 public:
  using CGRect = platform::CGRect;
  using CGSize = platform::CGSize;

  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }
};

}  // namespace TessalunaUIKit
