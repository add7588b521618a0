#include "tessaluna/uikit/transport/PlaybackTransportButton.h"

#include <cmath>
#include <iterator>

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSAffineTransform.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGradient.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSShadow.h"
#include "tessaluna/uikit/stylekit/Listing.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&PlaybackTransportButton::setTransportButtonStyle, "transportButtonStyle">()};

enum class Fill { Gradient, StateColor };
enum class InnerShadow { UnderOutline, OverOutline };

struct Glyph {
  Ref<NSBezierPath> (*makePath)(CGRect bounds);
  Fill fill;
  InnerShadow innerShadow;
};

template <ListingText text>
Ref<NSBezierPath> pathOf(CGRect bounds) {
  return pathInFrame(bounds, listing<text>);
}

Ref<NSBezierPath> pausePath(CGRect bounds) {
  // Intentional: the outer corners keep the design's 32 points while the inner edges follow the bounds.
  const double left = CGRectGetMinX(bounds), top = CGRectGetMaxY(bounds);
  const auto at = [&](double x, double y) { return pointInFrame(bounds, {x, y}); };
  const auto path = NSBezierPath::bezierPath();
  const auto addBar = [&](CGPoint lowerLeft, CGPoint lowerRight, CGPoint upperRight, CGPoint upperLeft) {
    path->moveToPoint(lowerLeft);
    path->lineToPoint(lowerRight);
    path->lineToPoint(upperRight);
    path->lineToPoint(upperLeft);
    path->lineToPoint(lowerLeft);
    path->closePath();
  };
  addBar({left, top - 32}, at(0.35938, 0), at(0.35938, 1), at(0, 1));
  addBar(at(0.65625, 0), {left + 32, top - 32}, {left + 32, top}, at(0.65625, 1));
  return path;
}

constexpr Glyph glyphs[] = {
    {pathOf<"M (0, 1), L (1, 0.5), L (0, 0), L (0, 1), Z">, Fill::Gradient, InnerShadow::UnderOutline},
    {pausePath, Fill::Gradient, InnerShadow::UnderOutline},
    {NSBezierPath::bezierPathWithRect, Fill::Gradient, InnerShadow::OverOutline},
    {pathOf<"M (0, 0), L (0.25, 0), L (0.25, 0.39062), L (1, 0), L (1, 1), L (0.25, 0.60938), L (0.25, 1), L (0, 1), "
            "L (0, 0), Z">,
     Fill::Gradient, InnerShadow::OverOutline},
    {pathOf<"M (1, 0), L (0.75, 0), L (0.75, 0.39062), L (0, 0), L (0, 1), L (0.75, 0.60938), L (0.75, 1), L (1, 1), "
            "L (1, 0), Z">,
     Fill::Gradient, InnerShadow::OverOutline},
    // Not the style kit's shuffle: some of its points differ in the last digit.
    {pathOf<"M (0, 0.22902), C (0.16, 0.22902; 0.00307, 0.22902; 0.02558, 0.22902), "
            "C (0.50862, 0.58441; 0.34135, 0.23292; 0.37223, 0.48696), "
            "C (0.63, 0.62187; 0.54167, 0.60802; 0.58091, 0.62244), "
            "C (0.77, 0.62187; 0.76455, 0.62221; 0.77, 0.62187), L (0.77, 0.51384), L (1, 0.65625), L (0.77, 0.82812), "
            "L (0.77, 0.71027), C (0.63, 0.71027; 0.77, 0.71027; 0.7246, 0.71082), "
            "C (0.20299, 0.31248; 0.40032, 0.71121; 0.31084, 0.35832), "
            "C (0.18, 0.30759; 0.19544, 0.30926; 0.18779, 0.30756), C (0, 0.30759; 0.03496, 0.30815; 0, 0.30759), "
            "L (0, 0.22902), Z, "
            "M (0.47, 0.42054), C (0.63, 0.34687; 0.51188, 0.38638; 0.51482, 0.35752), "
            "C (0.77, 0.34687; 0.76455, 0.34654; 0.77, 0.34687), L (0.77, 0.45491), L (1, 0.30268), L (0.77, 0.14062), "
            "L (0.77, 0.25848), C (0.63, 0.25848; 0.77, 0.25848; 0.7246, 0.25793), "
            "C (0.43, 0.36161; 0.51202, 0.26682; 0.4952, 0.29754), "
            "C (0.47, 0.42054; 0.47003, 0.42054; 0.42876, 0.36175), Z, "
            "M (0, 0.73973), C (0.15817, 0.73975; 0, 0.73973; 0.00887, 0.74108), "
            "C (0.35, 0.60223; 0.24133, 0.74079; 0.29613, 0.69696), "
            "C (0.3, 0.5433; 0.29984, 0.54617; 0.35201, 0.60529), C (0.18, 0.66116; 0.27111, 0.58199; 0.23724, 0.66082), "
            "C (0, 0.66116; 0.00493, 0.66221; 0, 0.66116), L (0, 0.73973), Z">,
     Fill::StateColor, InnerShadow::UnderOutline},
    // Intentional: one control point of each arrow lies outside the bounds.
    {pathOf<"M (0.88143, 0.6108), C (0.66107, 0.31676; 0.97157, 0.51523; 0.85995, 0.31501), "
            "C (0.34998, 0.31676; 0.4622, 0.31851; 0.34998, 0.31676), L (0.34998, 0.39347), L (0.15555, 0.25284), "
            "L (0.34998, 0.125), L (0.34998, 0.21449), C (0.66107, 0.21449; 0.34998, 0.21449; 0.35183, 0.21448), "
            "C (0.92031, 0.70028; 0.97032, 0.2145; 1.09526, 0.56309), "
            "C (0.88143, 0.6108; 0.88143, 0.61083; 0.92031, 0.70028), Z, "
            "M (0.11857, 0.40199), C (0.33893, 0.69602; 0.02843, 0.49755; 0.14005, 0.69777), "
            "C (0.65002, 0.69602; 0.62489, 0.69548; 0.65002, 0.69602), L (0.65002, 0.61932), L (0.84445, 0.75994), "
            "L (0.65002, 0.88778), L (0.65002, 0.7983), C (0.33893, 0.7983; 0.65002, 0.7983; 0.64817, 0.79831), "
            "C (0.07969, 0.3125; 0.02968, 0.79828; -0.09526, 0.4497), "
            "C (0.11857, 0.40199; 0.11857, 0.40196; 0.07969, 0.3125), Z">,
     Fill::StateColor, InnerShadow::UnderOutline},
};

Ref<NSColor> outlineGray() { return NSColor::colorWithCalibratedRed(0.167, 0.167, 0.167, 1); }

Ref<NSGradient> transportGradient() {
  const NSGradient::Stop stops[] = {{NSColor::darkGrayColor(), 0},
                                    {NSColor::colorWithCalibratedRed(0.417, 0.417, 0.417, 1), 0.43},
                                    {NSColor::colorWithCalibratedRed(0.667, 0.667, 0.667, 1), 1}};
  return NSGradient::initWithColorsAndLocations(stops);
}

// The shape around the path, with the path as a hole, is filled off to the left, where it does not show; its shadow falls
// back to where the path is.
void drawInnerShadow(const NSBezierPath& path) {
  constexpr CGSize shadowOffset{1.1, -1.1};
  constexpr CGFloat blurRadius = 1.5;
  const CGRect box = path.bounds();
  CGRect around = NSOffsetRect(NSInsetRect(box, -blurRadius, -blurRadius), -shadowOffset.width, -shadowOffset.height);
  around = NSInsetRect(NSUnionRect(around, box), -1, -1);
  const auto outer = NSBezierPath::bezierPathWithRect(around);
  outer->appendBezierPath(path);
  outer->setWindingRule(NSEvenOddWindingRule);
  const CGFloat distance = std::round(around.size.width);
  const auto awayFromZero = [](CGFloat offset) { return offset + std::copysign(0.1, offset); };

  NSGraphicsContext::saveGraphicsState();
  make<NSShadow>(outlineGray(), CGSize{awayFromZero(distance + shadowOffset.width), awayFromZero(shadowOffset.height)},
                 blurRadius)
      ->set();
  NSColor::grayColor()->setFill();
  path.addClip();
  const auto aside = NSAffineTransform::transform();
  aside->translateXBy(-distance, 0);
  aside->transformBezierPath(*outer)->fill();
  NSGraphicsContext::restoreGraphicsState();
}

}  // namespace

const ClassInfo PlaybackTransportButton::staticClassInfo{
    .name = "TessalunaUIKit.PlaybackTransportButton", .base = &NSButton::staticClassInfo, .properties = properties};

void PlaybackTransportButton::setTransportButtonStyle(std::uint64_t style) {
  transportButtonStyle_ = style;
  setNeedsDisplay(true);
}

// The base class draws bezel, image and title: it is not called.
void PlaybackTransportButton::drawRect(CGRect) {
  if (transportButtonStyle_ < 1 || transportButtonStyle_ > std::size(glyphs)) return;
  const Glyph& glyph = glyphs[transportButtonStyle_ - 1];
  const Ref<NSBezierPath> path = glyph.makePath(bounds());
  const bool isOn = glyph.fill == Fill::StateColor && state() == NSControlStateValueOn;
  const Ref<NSColor> stateColor = isOn ? NSColor::blueColor() : NSColor::darkGrayColor();

  const auto shadeInside = [&] {
    if (isHighlighted()) drawInnerShadow(*path);
  };
  if (glyph.fill == Fill::Gradient) {
    transportGradient()->drawInBezierPath(*path, 90);
  } else {
    stateColor->setFill();
    path->fill();
  }
  if (glyph.innerShadow == InnerShadow::UnderOutline) shadeInside();
  (glyph.fill == Fill::Gradient ? outlineGray() : stateColor)->setStroke();
  path->setLineWidth(isOn ? 0.8 : 0.5);
  path->stroke();
  if (glyph.innerShadow == InnerShadow::OverOutline) shadeInside();
}

}  // namespace TessalunaUIKit
