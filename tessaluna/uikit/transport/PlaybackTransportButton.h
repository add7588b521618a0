// A push button that is one of the seven glyphs of a transport bar, as large as its bounds. Everything but its picture is a
// stock button's: target and action, press, key equivalent, and whether a click toggles its state.
//
//   style  glyph
//   1      play
//   2      pause
//   3      stop
//   4      previous
//   5      next
//   6      shuffle   blue while the state is on, otherwise dark gray
//   7      repeat    the same
//
// Any other style draws nothing. The glyphs are made for 32 by 32 points: at another size the bars of pause shear,
// because three of their corners keep 32 points from the left edge or from that of the maximum y. They have a shadow along their
// inner edge while the button is highlighted.
#pragma once

#include <cstdint>

#include "tessaluna/platform/views/NSButton.h"

namespace TessalunaUIKit {

class PlaybackTransportButton : public tessaluna::platform::NSButton {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  // Shows play.
  explicit PlaybackTransportButton(tessaluna::platform::CGRect frame) : NSButton(frame), transportButtonStyle_(1) {}
  // Shows nothing until its style is set, which an interface file does with the property "transportButtonStyle".
  explicit PlaybackTransportButton(tessaluna::platform::NSCoder& coder) : NSButton(coder) {}

  std::uint64_t transportButtonStyle() const { return transportButtonStyle_; }
  void setTransportButtonStyle(std::uint64_t style);  // requests a redraw

  // Draws the whole glyph, whatever part is to be redrawn.
  void drawRect(tessaluna::platform::CGRect rect) override;

 private:
  std::uint64_t transportButtonStyle_ = 0;
};

}  // namespace TessalunaUIKit
