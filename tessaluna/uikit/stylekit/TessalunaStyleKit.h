// The artwork of the player as code. Each picture is a static routine that takes a frame and state flags and
// paints vector shapes into the current graphics context:
//
//   TessalunaStyleKit::drawLeftArrow({10, 20, 24, 24}, /*enabled=*/true, /*isPressed=*/false);
//
// and most of them come as an image, too, that does so at any size:
//
//   auto image = TessalunaStyleKit::imageOfLeftArrow();
//
// Frames are in points and never checked or clamped; the y axis grows upward. A routine keeps nothing and
// looks at nothing but its arguments. The routines are in one header per family; Routines.h describes
// them all.
#pragma once

#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/uikit/stylekit/AlbumArtPlaceholders.h"
#include "tessaluna/uikit/stylekit/AlbumOverlayGlyphs.h"
#include "tessaluna/uikit/stylekit/ArrowAndCloseGlyphs.h"
#include "tessaluna/uikit/stylekit/Badges.h"
#include "tessaluna/uikit/stylekit/BrowseIcons.h"
#include "tessaluna/uikit/stylekit/InfoButtons.h"
#include "tessaluna/uikit/stylekit/MoodIcons.h"
#include "tessaluna/uikit/stylekit/TrackRowGlyphs.h"
#include "tessaluna/uikit/stylekit/TransportGlyphs.h"
#include "tessaluna/uikit/stylekit/image_factory.h"
#include "tessaluna/uikit/stylekit/palette.h"

namespace TessalunaUIKit {

class TessalunaStyleKit : public tessaluna::platform::NSObject,
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
  using CGRect = tessaluna::platform::CGRect;
  using CGSize = tessaluna::platform::CGSize;

  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }
};

}  // namespace TessalunaUIKit
