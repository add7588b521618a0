#include "tessaluna/uikit/stylekit/ArrowAndCloseGlyphs.h"

#include "tessaluna/uikit/stylekit/Recipes.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

namespace {

void strokeSmallArrow(CGRect frame, ListingView chevron, bool enabled, bool isPressed) {
  const auto stroke = enabled ? color(0, 0, 0, 1) : color(0.333, 0.333, 0.333, 1);
  const auto path = pathInFrame(frame, chevron);
  stroke->setStroke();
  path->setLineWidth(isPressed ? 4 : 2);
  path->stroke();
}

struct LargeArrowLook {
  bool enabled, isPressed, isWhite;
};

void strokeLargeArrow(CGRect frame, ListingView chevron, LargeArrowLook look) {
  const auto disabled = color(0.333, 0.333, 0.333, 1);
  const auto stroke = !look.enabled ? disabled : look.isWhite ? color(1, 1, 1, 1) : color(0, 0, 0, 1);
  const auto path = pathInFrame(frame, chevron);
  stroke->setStroke();
  path->setLineWidth(look.isPressed ? 4 : 2);
  path->setLineCapStyle(NSRoundLineCapStyle);
  path->stroke();
}

}  // namespace

void ArrowAndCloseGlyphs::drawLeftArrowWithFrame(CGRect frame, bool enabled, bool isPressed) {
  constexpr auto chevron = listing<"M (1, 1), L (0.16667, 0.5), L (1, 0)">;
  strokeSmallArrow(frame, chevron, enabled, isPressed);
}

void ArrowAndCloseGlyphs::drawRightArrowWithFrame(CGRect frame, bool enabled, bool isPressed) {
  constexpr auto chevron = listing<"M (0, 1), L (0.83333, 0.5), L (0, 0)">;
  strokeSmallArrow(frame, chevron, enabled, isPressed);
}

void ArrowAndCloseGlyphs::drawForwardArrowWithFrame(CGRect frame, bool enabled, bool isPressed, bool isWhite) {
  constexpr auto chevron = listing<"M (0.29, 0.93), L (0.73, 0.49), L (0.31, 0.05)">;
  strokeLargeArrow(frame, chevron, {enabled, isPressed, isWhite});
}

void ArrowAndCloseGlyphs::drawBackwardArrowWithFrame(CGRect frame, bool enabled, bool isPressed, bool isWhite) {
  // Intentional: 0.02 to the right of the forward arrow's mirror.
  constexpr auto chevron = listing<"M (0.73, 0.93), L (0.29, 0.49), L (0.71, 0.05)">;
  strokeLargeArrow(frame, chevron, {enabled, isPressed, isWhite});
}

void ArrowAndCloseGlyphs::drawCloseCrossWithFrame(CGRect frame) {
  const double left = CGRectGetMinX(frame), top = CGRectGetMaxY(frame);
  const auto strokeLine = [&](CGPoint from, CGPoint to) {
    const auto path = NSBezierPath::bezierPath();
    path->moveToPoint({left + from.x, top - from.y});
    path->lineToPoint({left + to.x, top - to.y});
    NSColor::blackColor()->setStroke();
    path->setLineWidth(2);
    path->stroke();
  };
  strokeLine({1, 1}, {13, 13});
  strokeLine({13, 1}, {1, 13});
}

void ArrowAndCloseGlyphs::drawCloseButtonWithFrame(CGRect frame, bool isPressed) {
  constexpr auto cross = listing<"M (0.0625, 0.9375), L (0.9375, 0.0625), M (0.9375, 0.9375), L (0.0625, 0.0625)">;
  const auto path = pathInFrame(frame, cross);
  NSColor::blackColor()->setStroke();
  path->setLineWidth(isPressed ? 4 : 2);
  path->stroke();
}

}  // namespace TessalunaUIKit
