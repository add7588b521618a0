// A view that shows one routine of the style kit. Its frame argument is the view's bounds without a margin, so that strokes
// on the frame's edge are not cut off.
#pragma once

#include <vector>

#include "gallery/BackgroundPanel.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/uikit/stylekit/Routines.h"

namespace gallery {

class GlyphView : public tessaluna::platform::NSView {
 public:
  explicit GlyphView(const TessalunaUIKit::Routine& routine);

  bool flag(std::size_t index) const { return flags_[index]; }
  void setFlag(std::size_t index, bool isOn);
  // The background for whose colors the glyph is drawn.
  void setBackground(BackgroundKind background);
  // The longer side of the frame argument; the shorter one follows from the default frame.
  void setGlyphSize(double size);

  tessaluna::platform::CGSize intrinsicContentSize() const override;
  void drawRect(tessaluna::platform::CGRect rect) override;

  // An image whose name says what it shows, such as "left arrow".
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(tessaluna::platform::NSAccessibilityImageRole); }
  std::string accessibilityTitle() const override;

 private:
  const TessalunaUIKit::Routine& routine_;
  std::vector<char> flags_;  // one bool each; a span of them is passed on
  BackgroundKind background_ = BackgroundKind::Palette;
  double size_;
};

}  // namespace gallery
