#include "uikit/stylekit/TessalunaLogo.h"

#include "platform/graphics/NSColor.h"
#include "uikit/stylekit/Listing.h"
#include "uikit/stylekit/listings/LogoListings.h"

namespace TessalunaUIKit {

using namespace platform;

const ClassInfo TessalunaLogo::staticClassInfo{.name = "TessalunaUIKit.TessalunaLogo",
                                               .base = &NSView::staticClassInfo};

void TessalunaLogo::drawRect(CGRect) {
  const auto path = pathInFrame(bounds(), listings::tessalunaLogo);
  NSColor::blackColor()->setFill();
  path->fill();
}

}  // namespace TessalunaUIKit
