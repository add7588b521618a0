#include "tessaluna/uikit/trackrow/PlaybackStatusIcon.h"

#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo PlaybackStatusIcon::staticClassInfo{.name = "TessalunaUIKit.PlaybackStatusIcon",
                                                    .base = &NSView::staticClassInfo};

void PlaybackStatusIcon::drawRect(CGRect rect) {
  NSView::drawRect(rect);
  TessalunaStyleKit::drawInvertPolarity(rect);
}

std::string PlaybackStatusIcon::accessibilityTitle() const {
  return NSBundle::mainBundle()->localizedStringForKey("Inverted polarity");
}

}  // namespace TessalunaUIKit
