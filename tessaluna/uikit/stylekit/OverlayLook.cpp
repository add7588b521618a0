#include "tessaluna/uikit/stylekit/OverlayLook.h"

namespace TessalunaUIKit::recipes {

using namespace tessaluna::platform;

OverlayLook overlayLook(bool isPressed, bool isOver) {
  return {.fill = isPressed ? color(1, 1, 1, 1) : color(1, 1, 1, 0.5),
          .outline = isOver ? color(0, 0, 0, 1) : color(0, 0, 0, 0)};
}

void paintGround(NSBezierPath& ground, const OverlayLook& look, double lineWidth) {
  look.fill->setFill();
  ground.fill();
  look.outline->setStroke();
  ground.setLineWidth(lineWidth);
  ground.stroke();
}

void paintPlayPauseMark(CGContext& context, CGRect frame, bool isPlaying, const NSShadow& shadow, MarkWidths widths) {
  constexpr auto triangle =
      listing<"M (0.32895, 0.72368), L (0.76316, 0.50658), L (0.32895, 0.28947), L (0.32895, 0.72368), Z">;
  // Intentional: the left bar is a little wider than the right one.
  constexpr auto bars = listing<
      "M (0.29276, 0.29276), L (0.44408, 0.29276), L (0.44408, 0.71382), L (0.29276, 0.71382), "
      "L (0.29276, 0.29276), Z, "
      "M (0.56908, 0.29276), L (0.71382, 0.29276), L (0.71382, 0.71382), L (0.56908, 0.71382), "
      "L (0.56908, 0.29276), Z">;
  const auto mark = isPlaying ? pathInFrame(frame, bars) : pathInFrame(frame, triangle);
  NSColor::blackColor()->setFill();
  mark->fill();
  if (isPlaying) drawInnerShadow(context, *mark, shadow);
  NSColor::blackColor()->setStroke();
  mark->setLineWidth(isPlaying ? widths.bars : widths.triangle);
  mark->setLineCapStyle(NSRoundLineCapStyle);
  mark->setLineJoinStyle(NSBevelLineJoinStyle);
  mark->stroke();
}

}  // namespace TessalunaUIKit::recipes
