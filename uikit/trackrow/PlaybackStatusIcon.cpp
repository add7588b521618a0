#include "uikit/trackrow/PlaybackStatusIcon.h"

#include "uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

using namespace platform;

const ClassInfo PlaybackStatusIcon::staticClassInfo{.name = "TessalunaUIKit.PlaybackStatusIcon",
                                                    .base = &NSView::staticClassInfo};

void PlaybackStatusIcon::drawRect(CGRect rect) {
  NSView::drawRect(rect);
  TessalunaStyleKit::drawInvertPolarity(rect);
}

}  // namespace TessalunaUIKit
