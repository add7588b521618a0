// An addition: how a glyph control looks while a view above has its controls disabled (setEnablesControls): pale, as its glyph has
// no disabled state. Made first in the control's drawRect, it lasts until the closing brace. While controls are enabled it changes
// nothing.
#pragma once

#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/views/NSView.h"

namespace TessalunaUIKit {

class DisabledLook {
 public:
  explicit DisabledLook(const tessaluna::platform::NSView& control)
      : context_(control.areControlsEnabled() ? nullptr : tessaluna::platform::NSGraphicsContext::currentCGContextIfAny()) {
    if (!context_) return;
    context_->saveState();
    context_->setAlpha(alpha);
    // One layer, so that parts of the glyph which lie over each other do not show through.
    context_->beginTransparencyLayer();
  }
  ~DisabledLook() {
    if (!context_) return;
    context_->endTransparencyLayer();
    context_->restoreState();
  }
  DisabledLook(const DisabledLook&) = delete;
  DisabledLook& operator=(const DisabledLook&) = delete;

  static constexpr tessaluna::platform::CGFloat alpha = 0.4;

 private:
  tessaluna::platform::CGContext* context_;  // null while nothing is changed
};

}  // namespace TessalunaUIKit
