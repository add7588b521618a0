#include "tessaluna/uikit/stylekit/TessalunaLogo.h"

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/uikit/stylekit/Listing.h"
#include "tessaluna/uikit/stylekit/listings/LogoListings.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo TessalunaLogo::staticClassInfo{.name = "TessalunaUIKit.TessalunaLogo", .base = &NSView::staticClassInfo};

void TessalunaLogo::drawRect(CGRect) {
  const auto path = pathInFrame(bounds(), listings::tessalunaLogo);
  NSColor::blackColor()->setFill();
  path->fill();
}

}  // namespace TessalunaUIKit
