// Where neutral colors come to lie, from black to white, once they follow a palette: between the color of its text and that of
// its ground. The kit's artwork is black and gray for a white ground; on a dark palette it becomes light and gray.
#pragma once

#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::platform {

class NeutralAxis {
 public:
  // The text may be translucent, the ground is not.
  NeutralAxis(backend::Color text, backend::Color ground);
  // From the system color controlTextColor to windowBackgroundColor, as they are now.
  static NeutralAxis ofPalette();

  // A neutral color, one whose components are nearly the same, by its brightness and with its own alpha. What has a contrast of
  // 4.5 to white, or of 3, has no less to the ground. Others stay what they are; but one that would be lost on a dark ground
  // becomes lighter, as far as a contrast of 3. System colors stay, and so do mapped colors, which count as such.
  backend::Color mapped(backend::Color color) const { return mapped(color, contrastOfShapes); }
  // The same for letters: what would have a contrast of 3 has one of 4.5.
  backend::Color mappedText(backend::Color color) const { return mapped(color, contrastOfText); }
  // A neutral shadow stays one: on a dark ground it does not become a glow.
  backend::Color mappedShadow(backend::Color color) const { return isDark() ? color : mapped(color); }

  const backend::Color& text() const { return text_; }
  const backend::Color& ground() const { return ground_; }
  bool isDark() const { return isDark_; }  // the ground is darker than the text

 private:
  static constexpr double contrastOfText = 4.5, contrastOfShapes = 3;
  static double contrastThatStays(double white, double least);
  backend::Color mapped(backend::Color color, double leastContrast) const;

  backend::Color text_, ground_;
  bool isDark_;
};

// The switch, off initially: all neutral colors that the kit draws in windows and icons follow the palette; images do not. Set
// before windows show; later, effectiveAppearanceDidChange() draws them again.
bool neutralsFollowPalette();
void setNeutralsFollowPalette(bool follow);

}  // namespace tessaluna::platform
