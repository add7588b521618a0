// One glyph of the style kit on a ground, in a frame of the glyph's own proportion.
#pragma once

#include <vector>

#include "platform/views/NSView.h"
#include "uikit/stylekit/Routines.h"

namespace gallery {

enum class Ground { Light, Dark, Checkered };

class GlyphView : public platform::NSView {
 public:
  explicit GlyphView(const TessalunaUIKit::Routine& routine);

  // Each asks for a redraw.
  void setGround(Ground ground);
  void setFlag(std::size_t index, bool isOn);
  // The longer side of the glyph's frame, in points. The view's size follows.
  void setGlyphSize(double size);

  void drawRect(platform::CGRect rect) override;

 private:
  const TessalunaUIKit::Routine& routine_;
  std::vector<char> flags_;  // one for each flag of the routine; a vector of bool has no span
  Ground ground_ = Ground::Light;
};

}  // namespace gallery
