// A view that shows one routine of the style kit. Its frame argument is the view's bounds without a margin, so that strokes
// on the frame's edge show whole.
#pragma once

#include <vector>

#include "platform/views/NSView.h"
#include "uikit/stylekit/Routines.h"

namespace gallery {

class GlyphView : public platform::NSView {
 public:
  explicit GlyphView(const TessalunaUIKit::Routine& routine);

  bool flag(std::size_t index) const { return flags_[index]; }
  void setFlag(std::size_t index, bool isOn);
  // The longer side of the frame argument; the other follows the default frame.
  void setGlyphSize(double size);

  platform::CGSize intrinsicContentSize() const override;
  void drawRect(platform::CGRect rect) override;

 private:
  const TessalunaUIKit::Routine& routine_;
  std::vector<char> flags_;  // one bool each; a span of them is passed on
  double size_;
};

}  // namespace gallery
