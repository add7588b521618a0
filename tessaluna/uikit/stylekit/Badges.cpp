#include "tessaluna/uikit/stylekit/Badges.h"

#include <cmath>

#include "tessaluna/uikit/stylekit/Recipes.h"
#include "tessaluna/uikit/stylekit/listings/BadgeListings.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

namespace {

void fill(const NSBezierPath& path, const NSColor& fillColor) {
  fillColor.setFill();
  path.fill();
}

// The frame of the whole mark within that of the routine.
CGRect highResFrame(CGRect frame) {
  constexpr SnappedEdges edges{
      .left = {0.00237, 0.03}, .right = {0.99963, -0.43}, .bottom = {0.29238, 0.02}, .top = {1.00113, 0.27}};
  CGRect mark = snappedRect(frame, edges);
  // Intentional: a hundredth of a point less than from edge to edge.
  const double width = CGRectGetWidth(frame);
  mark.size.width = std::floor(width * edges.right.fraction + edges.right.constant) -
                    std::floor(width * edges.left.fraction + edges.left.constant) + 0.45;
  return mark;
}

}  // namespace

void Badges::drawMqaLogoWithButtonFrame(CGRect buttonFrame, bool enabled) {
  constexpr SnappedEdges dotEdges{
      .left = {0.84615, 0.5}, .right = {0.96923, 0.5}, .bottom = {0.27778, 0.5}, .top = {0.66667, 0.5}};
  constexpr SnappedEdges restEdges{.left = {0, 0.5}, .right = {0.77416, 0.18}, .bottom = {0, 0.5}, .top = {0.98933, -0.31}};
  constexpr SnappedEdges tailOfQEdges{
      .left = {0.69455, -0.45}, .right = {0.8118, -0.35}, .bottom = {0.27796, -0.45}, .top = {0.3622, 0.05}};
  const auto blue = color(0, 0.498, 1, 1);
  const auto green = color(0.114, 1, 0, 1);
  const auto ink = color(0.041, 0.043, 0.038, 1);
  const auto& dot = enabled ? blue : green;
  fill(*NSBezierPath::bezierPathWithOvalInRect(snappedRect(buttonFrame, dotEdges)), *dot);
  const CGRect rest = snappedRect(buttonFrame, restEdges);
  fill(*pathInFrame(rest, listings::mqaEmblem), *ink);
  fill(*pathInFrame(rest, listings::mqaM), *ink);
  fill(*NSBezierPath::bezierPathWithRoundedRect(snappedRect(rest, tailOfQEdges), 0.75, 0.75), *ink);
  fill(*pathInFrame(rest, listings::mqaQ), *ink);
  fill(*pathInFrame(rest, listings::mqaA), *ink);
}

void Badges::drawHighResAudioLogoWithFrame(CGRect frame) {
  constexpr SnappedEdges groundEdges{.left = {0, 0.5}, .right = {1, 0.05}, .bottom = {0, 0.5}, .top = {1, -0.25}};
  constexpr SnappedEdges middleSquareEdges{
      .left = {0.35397, -0.1}, .right = {0.55728, 0.35}, .bottom = {0.35873, -0.35}, .top = {0.63774, 0.1}};
  constexpr SnappedEdges upperSquareEdges{
      .left = {0.35648, 0.4}, .right = {0.55478, -0.15}, .bottom = {0.69735, -0.35}, .top = {0.96931, 0.1}};
  const auto ground = color(0.137, 0.145, 0.16, 1);
  const auto paper = color(1, 0.998, 0.995, 1);
  const auto gray = color(0.418, 0.425, 0.438, 1);
  // Intentional: squares and letters have a color of the same value each.
  const auto letterPaper = color(1, 0.998, 0.995, 1);
  const CGRect mark = highResFrame(frame);
  fill(*NSBezierPath::bezierPathWithRect(snappedRect(mark, groundEdges)), *ground);
  fill(*NSBezierPath::bezierPathWithRect(snappedRect(mark, middleSquareEdges)), *paper);
  fill(*NSBezierPath::bezierPathWithRect(snappedRect(mark, upperSquareEdges)), *gray);
  const auto squares = pathInFrame(mark, listings::highResAudioLogoSquares);
  paper->setStroke();
  squares->setLineWidth(1);
  squares->setMiterLimit(4);
  squares->stroke();
  fill(*pathInFrame(mark, listings::highResAudioLogoTag), *letterPaper);
  fill(*pathInFrame(mark, listings::highResAudioLogoAudio), *letterPaper);
  fill(*pathInFrame(mark, listings::highResAudioLogoRes), *ground);
  fill(*pathInFrame(mark, listings::highResAudioLogoHigh), *letterPaper);
}

void Badges::drawTidalLogoWideWithFrame(CGRect frame) {
  const auto ink = color(0, 0, 0, 1);
  // Intentional: not in the order of reading.
  fill(*pathInFrame(frame, listings::tidalLogoWideLine), *ink);
  fill(*pathInFrame(frame, listings::tidalLogoWideWord), *ink);
  fill(*pathInFrame(frame, listings::tidalLogoWideMark), *ink);
}

void Badges::drawTidalLogoTallWithFrame(CGRect frame) {
  const auto ink = color(0, 0, 0, 1);
  fill(*pathInFrame(frame, listings::tidalLogoTallWord), *ink);
  fill(*pathInFrame(frame, listings::tidalLogoTallMark), *ink);
}

void Badges::drawTidalLogoSmallWithFrame(CGRect frame) {
  fill(*pathInFrame(frame, listings::tidalLogoSmall), *color(0, 0, 0, 1));
}

}  // namespace TessalunaUIKit
