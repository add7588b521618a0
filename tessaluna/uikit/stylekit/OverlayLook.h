// What the glyphs of album covers and of track list rows share: the look of their ground, and the mark of play and pause.
#pragma once

#include "tessaluna/uikit/stylekit/Recipes.h"

namespace TessalunaUIKit::recipes {

struct OverlayLook {
  tessaluna::platform::Ref<tessaluna::platform::NSColor> fill;     // white, at half strength unless pressed
  tessaluna::platform::Ref<tessaluna::platform::NSColor> outline;  // black while the mouse is over it, otherwise clear
};
OverlayLook overlayLook(bool isPressed, bool isOver);

// Fills and strokes; the outline is stroked also when it is clear.
void paintGround(tessaluna::platform::NSBezierPath& ground, const OverlayLook& look, double lineWidth);

struct MarkWidths {
  double triangle, bars;  // line widths in points
};

// A black triangle, or two bars with a soft inner edge, in fractions of the frame.
void paintPlayPauseMark(tessaluna::platform::CGContext& context, tessaluna::platform::CGRect frame, bool isPlaying,
                        const tessaluna::platform::NSShadow& shadow, MarkWidths widths);

}  // namespace TessalunaUIKit::recipes
