#include "tessaluna/uikit/stylekit/TransportGlyphs.h"

#include "tessaluna/uikit/stylekit/Recipes.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

namespace {

// The look that play, pause, stop, previous and next share. The context comes first: without one nothing is made.
template <class MakePath>
void drawTransportGlyph(MakePath makePath) {
  CGContext& context = NSGraphicsContext::currentCgContext();
  const auto outline = color(0.167, 0.167, 0.167, 1);
  const auto gradient = recipes::transportGradient();
  const auto shadow = recipes::kitShadow();
  const Ref<NSBezierPath> path = makePath();
  gradient->drawInBezierPath(*path, 90);
  recipes::drawInnerShadow(context, *path, *shadow);
  outline->setStroke();
  path->setLineWidth(0.5);
  path->stroke();
}

}  // namespace

void TransportGlyphs::drawPlayWithButtonFrame(CGRect frame) {
  constexpr auto triangle = listing<"M (0, 1), L (1, 0.5), L (0, 0), L (0, 1), Z">;
  drawTransportGlyph([&] { return pathInFrame(frame, triangle); });
}

void TransportGlyphs::drawPauseWithButtonFrame(CGRect frame) {
  drawTransportGlyph([&] {
    // Intentional: the outer corners keep the design's 32 points while the inner edges follow the frame.
    const double left = CGRectGetMinX(frame), top = CGRectGetMaxY(frame);
    const auto at = [&](double x, double y) { return pointInFrame(frame, {x, y}); };
    const auto path = NSBezierPath::bezierPath();
    path->moveToPoint({left, top - 32});
    path->lineToPoint(at(0.35938, 0));
    path->lineToPoint(at(0.35938, 1));
    path->lineToPoint(at(0, 1));
    path->lineToPoint({left, top - 32});
    path->closePath();
    path->moveToPoint(at(0.65625, 0));
    path->lineToPoint({left + 32, top - 32});
    path->lineToPoint({left + 32, top});
    path->lineToPoint(at(0.65625, 1));
    path->lineToPoint(at(0.65625, 0));
    path->closePath();
    return path;
  });
}

void TransportGlyphs::drawStopWithButtonFrame(CGRect frame) {
  drawTransportGlyph([&] { return NSBezierPath::bezierPathWithRect(CGRectStandardize(frame)); });
}

void TransportGlyphs::drawPreviousWithButtonFrame(CGRect frame) {
  constexpr auto barAndTriangle = listing<
      "M (0, 0), L (0.25, 0), L (0.25, 0.39062), L (1, 0), L (1, 1), L (0.25, 0.60938), L (0.25, 1), L (0, 1), "
      "L (0, 0), Z">;
  drawTransportGlyph([&] { return pathInFrame(frame, barAndTriangle); });
}

void TransportGlyphs::drawNextWithButtonFrame(CGRect frame) {
  constexpr auto triangleAndBar = listing<
      "M (1, 0), L (0.75, 0), L (0.75, 0.39062), L (0, 0), L (0, 1), L (0.75, 0.60938), L (0.75, 1), L (1, 1), "
      "L (1, 0), Z">;
  drawTransportGlyph([&] { return pathInFrame(frame, triangleAndBar); });
}

void TransportGlyphs::drawRepeatWithButtonFrame(CGRect) {}

void TransportGlyphs::drawShuffleWithButtonFrame(CGRect frame, bool isSelected, bool isPressed) {
  constexpr auto arrows = listing<
      "M (0, 0.22902), C (0.16, 0.22902; 0.00307, 0.22902; 0.02558, 0.22902), "
      "C (0.50862, 0.58441; 0.34135, 0.23292; 0.37223, 0.48696), "
      "C (0.63, 0.62187; 0.54167, 0.60802; 0.58091, 0.62244), "
      "C (0.77, 0.62187; 0.76455, 0.62221; 0.77, 0.62187), L (0.77, 0.51384), L (1, 0.65625), "
      "L (0.77, 0.82812), L (0.77, 0.71027), C (0.63, 0.71027; 0.77, 0.71027; 0.7246, 0.71082), "
      "C (0.20299, 0.31248; 0.40032, 0.71121; 0.31084, 0.35832), "
      "C (0.18, 0.30759; 0.19544, 0.30926; 0.18779, 0.30756), C (0, 0.30759; 0.03496, 0.30815; 0, 0.30759), "
      "L (0, 0.22902), Z, "
      "M (0.47, 0.42054), C (0.63, 0.34688; 0.51187, 0.38638; 0.51482, 0.35752), "
      "C (0.77, 0.34688; 0.76455, 0.34654; 0.77, 0.34688), L (0.77, 0.45491), L (1, 0.30268), "
      "L (0.77, 0.14062), L (0.77, 0.25848), C (0.63, 0.25848; 0.77, 0.25848; 0.7246, 0.25793), "
      "C (0.43, 0.36161; 0.51202, 0.26682; 0.4952, 0.29754), "
      "C (0.47, 0.42054; 0.47003, 0.42054; 0.42876, 0.36175), Z, "
      "M (0, 0.73973), C (0.15817, 0.73975; 0, 0.73973; 0.00887, 0.74108), "
      "C (0.35, 0.60223; 0.24133, 0.74079; 0.29613, 0.69696), "
      "C (0.3, 0.5433; 0.29984, 0.54617; 0.35201, 0.60529), "
      "C (0.18, 0.66116; 0.27111, 0.58199; 0.23724, 0.66082), C (0, 0.66116; 0.00493, 0.66221; 0, 0.66116), "
      "L (0, 0.73973), Z">;
  CGContext& context = NSGraphicsContext::currentCgContext();
  const auto selected = color(0, 0, 1, 1);
  const auto plain = color(0.333, 0.333, 0.333, 1);
  const auto& ink = isSelected ? selected : plain;
  const auto shadow = recipes::kitShadow();
  const auto clearShadow = make<NSShadow>(NSColor::blackColor()->colorWithAlphaComponent(0), CGSize{0, 0}, 0.0);
  const auto path = pathInFrame(frame, arrows);
  ink->setFill();
  path->fill();
  recipes::drawInnerShadow(context, *path, isPressed ? *shadow : *clearShadow);
  ink->setStroke();
  path->setLineWidth(0.5);
  path->stroke();
}

void TransportGlyphs::drawInvertPolarityWithButtonFrame(CGRect frame) {
  constexpr SnappedEdges groupEdges{
      .left = {0.0625, 0.5}, .right = {0.95377, -0.02}, .bottom = {0.21875, 0.5}, .top = {0.84375, 0.5}};
  constexpr auto plus = listing<
      "M (0, 0.65148), L (0, 0.74794), L (0.17588, 0.74794), L (0.17588, 1), L (0.24487, 1), L (0.24487, 0.74794), "
      "L (0.42075, 0.74794), L (0.42075, 0.65148), L (0.24487, 0.65148), L (0.24487, 0.4), L (0.17588, 0.4), "
      "L (0.17588, 0.65148), L (0, 0.65148), Z">;
  constexpr auto minus =
      listing<"M (0.66619, 0.125), L (0.98175, 0.125), L (0.98175, 0), L (0.66619, 0), L (0.66619, 0.125), Z">;
  constexpr auto arrow = listing<
      "M (0.46282, 0.475), L (0.35062, 0.43971), L (0.35062, 0.28088), L (0.3927, 0.35147), L (0.53295, 0.22794), "
      "L (0.5049, 0.175), L (0.63112, 0.19265), L (0.60307, 0.35147), L (0.561, 0.28088), L (0.42075, 0.40441), "
      "L (0.46282, 0.475), Z">;
  const auto gray = color(0.5, 0.5, 0.5, 1);
  const CGRect group = snappedRect(frame, groupEdges);
  const auto paintSign = [&](ListingView sign, const Ref<NSColor>& ink) {
    const auto path = pathInFrame(group, sign);
    ink->setFill();
    path->fill();
    ink->setStroke();
    path->setLineWidth(1.5);
    path->stroke();
  };
  paintSign(plus, NSColor::redColor());
  paintSign(minus, NSColor::blueColor());
  const auto path = pathInFrame(group, arrow);
  gray->setFill();
  path->fill();
}

}  // namespace TessalunaUIKit
