// Shows the mark of an inverted polarity. It has no state.
#pragma once

#include "platform/views/NSView.h"

namespace TessalunaUIKit {

class PlaybackStatusIcon : public platform::NSView {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit PlaybackStatusIcon(platform::CGRect frame) : NSView(frame) {}
  explicit PlaybackStatusIcon(platform::NSCoder& coder) : NSView(coder) {}

  // The mark fills the rectangle that is to be redrawn, not the bounds.
  void drawRect(platform::CGRect rect) override;
};

}  // namespace TessalunaUIKit
