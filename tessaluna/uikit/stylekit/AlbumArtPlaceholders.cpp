#include "tessaluna/uikit/stylekit/AlbumArtPlaceholders.h"

#include <cmath>

#include "tessaluna/uikit/stylekit/Recipes.h"
#include "tessaluna/uikit/stylekit/listings/PlaceholdersListings.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

void AlbumArtPlaceholders::drawEmptyAlbumImageWithFrame(CGRect frame) {
  // Intentional: less room at the right and at the top than at the left and at the bottom.
  constexpr SnappedEdges edges{.left = {0.0625, 0}, .right = {0.9425, 0}, .bottom = {0.0625, 0}, .top = {0.9425, 0}};
  constexpr CGFloat dash[] = {10, 2};
  const auto pale = color(0.927, 0.927, 0.927, 1);
  const auto path = NSBezierPath::bezierPathWithRoundedRect(snappedRect(frame, edges), 10, 10);
  pale->setFill();
  path->fill();
  NSColor::lightGrayColor()->setStroke();
  path->setLineWidth(3);
  path->setLineDash(dash, 0);
  path->stroke();
}

void AlbumArtPlaceholders::drawMissingAlbumArtWithFrame(CGRect frame) {
  constexpr SnappedEdges discEdges{.left = {0.1, 0.5}, .right = {0.9, 0.5}, .bottom = {0.1, 0.5}, .top = {0.9, 0.5}};
  constexpr SnappedEdges middleEdges{
      .left = {0.45625, 0.5}, .right = {0.54375, 0.5}, .bottom = {0.45625, 0.5}, .top = {0.54375, 0.5}};
  constexpr auto rimAndLabel = listing<
      "M (0.5, 1), C (0, 0.5; 0.22385, 1; 0, 0.77615), C (0.5, 0; 0, 0.22385; 0.22385, 0), "
      "C (1, 0.5; 0.77615, 0; 1, 0.22385), C (0.5, 1; 1, 0.77615; 0.77615, 1), Z, "
      "M (0.5, 0.30435), C (0.30435, 0.5; 0.39193, 0.30435; 0.30435, 0.39193), "
      "C (0.5, 0.69565; 0.30435, 0.60807; 0.39193, 0.69565), "
      "C (0.69565, 0.5; 0.60807, 0.69565; 0.69565, 0.60807), "
      "C (0.5, 0.30435; 0.69565, 0.39193; 0.60807, 0.30435), Z">;
  constexpr auto upperRightGlint = listing<
      "M (0.69824, 0.6762), C (0.67691, 0.69759; 0.69252, 0.68459; 0.68528, 0.69185), L (0.78515, 0.82228), "
      "C (0.82296, 0.78441; 0.79998, 0.81213; 0.81283, 0.79928), L (0.69824, 0.6762), Z">;
  constexpr auto lowerLeftGlint = listing<
      "M (0.30176, 0.3238), C (0.32309, 0.30241; 0.30748, 0.31541; 0.31472, 0.30815), L (0.21485, 0.17772), "
      "C (0.17704, 0.21559; 0.20002, 0.18787; 0.18717, 0.20072), L (0.30176, 0.3238), Z">;
  const auto ink = color(0, 0, 0, 1);
  const auto line = color(0, 0, 0, 1);
  const auto ground = NSColor::lightGrayColor();
  const auto fill = [](const NSBezierPath& path, const NSColor& fillColor) {
    fillColor.setFill();
    path.fill();
  };

  const CGRect square{{CGRectGetMinX(frame), CGRectGetMinY(frame)},
                      {std::floor(CGRectGetWidth(frame) + 0.5), std::floor(CGRectGetHeight(frame) + 0.5)}};
  fill(*NSBezierPath::bezierPathWithRoundedRect(square, 20, 20), *ground);
  const CGRect disc = snappedRect(frame, discEdges);
  fill(*NSBezierPath::bezierPathWithOvalInRect(snappedRect(disc, middleEdges)), *ink);
  const auto circles = pathInFrame(disc, rimAndLabel);
  line->setStroke();
  circles->setLineWidth(1.99);
  circles->setLineCapStyle(NSRoundLineCapStyle);
  circles->stroke();
  fill(*pathInFrame(disc, upperRightGlint), *ink);
  fill(*pathInFrame(disc, lowerLeftGlint), *ink);
}

void AlbumArtPlaceholders::drawLoadingAlbumArtWithFrame(CGRect frame) {
  const auto gray = color(0.333, 0.333, 0.333, 1);
  const auto path = pathInFrame(frame, listings::loadingAlbumArt);
  gray->setFill();
  path->fill();
}

void AlbumArtPlaceholders::drawIconAlbumWithFrame(CGRect frame) {
  const auto white = color(1, 1, 1, 1);
  const auto path = pathInFrame(frame, listings::iconAlbum);
  white->setFill();
  path->fill();
}

}  // namespace TessalunaUIKit
