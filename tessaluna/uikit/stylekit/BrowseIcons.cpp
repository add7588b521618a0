#include "tessaluna/uikit/stylekit/BrowseIcons.h"

#include <vector>

#include "tessaluna/uikit/stylekit/Recipes.h"
#include "tessaluna/uikit/stylekit/listings/BrowseListings.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

namespace {

// Of a listing whose pairs are points to the right of and below the frame's upper left corner, and not
// scaled.
Ref<NSBezierPath> pathFromUpperLeft(CGRect frame, ListingView outline) {
  const double left = CGRectGetMinX(frame), top = CGRectGetMaxY(frame);
  std::vector<CGPoint> points;
  points.reserve(outline.fractions.size());
  for (const CGPoint& offset : outline.fractions) points.push_back({left + offset.x, top - offset.y});
  return pathInFrame({0, 0, 1, 1}, {outline.verbs, points});
}

void fill(const NSBezierPath& path, const NSColor& fillColor) {
  fillColor.setFill();
  path.fill();
}

void drawLetterInHexagon(CGRect frame, ListingView hexagon, ListingView letter) {
  // Intentional: black of two kinds, one made of components and one named.
  const auto line = color(0, 0, 0, 1);
  const auto path = pathInFrame(frame, hexagon);
  line->setStroke();
  path->setLineWidth(3);
  path->stroke();
  fill(*pathInFrame(frame, letter), *NSColor::blackColor());
}

}  // namespace

void BrowseIcons::drawTidalIconNewWithFrame(CGRect frame) {
  constexpr auto house = listing<
      "M (0.5, 0.93146), L (0.88581, 0.61078), L (0.88581, 0.11263), L (0.66516, 0.11263), "
      "L (0.66516, 0.47859), L (0.33484, 0.47859), L (0.33484, 0.11263), L (0.11419, 0.11263), "
      "L (0.11419, 0.61078), L (0.5, 0.93146), Z, "
      "M (0.5, 1), L (0.06, 0.63526), L (0.06, 0.06), L (0.39032, 0.06), L (0.39032, 0.42596), "
      "L (0.60968, 0.42596), L (0.60968, 0.06), L (0.94, 0.06), L (0.94, 0.63526), L (0.5, 1), Z">;
  fill(*pathInFrame(frame, house), *color(0, 0, 0, 1));
}

void BrowseIcons::drawTidalIconGenresWithFrame(CGRect frame) {
  fill(*pathInFrame(frame, listings::tidalIconGenres), *color(0, 0, 0, 1));
}

void BrowseIcons::drawTidalIconMyMusicWithFrame(CGRect frame) {
  constexpr auto star = listing<
      "M (25.5, 1), L (19.73, 18.97), L (1, 18.97), L (16.14, 30.03), L (10.36, 48), L (25.5, 36.89), "
      "L (40.64, 48), L (34.86, 30.03), L (50, 18.97), L (31.27, 18.97), L (25.5, 1), Z">;
  fill(*pathFromUpperLeft(frame, star), *color(0, 0, 0, 1));
}

void BrowseIcons::drawTidalIconRisingWithFrame(CGRect frame) {
  // Intentional: a hundredth of the width to the right of the other hexagon.
  constexpr auto hexagon = listing<
      "M (0.51, 0.97), L (0.91703, 0.735), L (0.91703, 0.265), L (0.51, 0.03), L (0.10297, 0.265), "
      "L (0.10297, 0.735), Z">;
  constexpr auto letter = listing<
      "M (0.62647, 0.59915), C (0.59623, 0.65938; 0.62647, 0.62706; 0.61639, 0.64714), "
      "C (0.51179, 0.67774; 0.57606, 0.67162; 0.54792, 0.67774), L (0.40339, 0.67774), L (0.40339, 0.51469), "
      "L (0.51414, 0.51469), C (0.59858, 0.53709; 0.55185, 0.51469; 0.57999, 0.52216), "
      "C (0.62647, 0.59915; 0.61717, 0.55202; 0.62647, 0.57271), Z, "
      "M (0.63432, 0.24), L (0.5, 0.43904), L (0.40417, 0.43904), L (0.40417, 0.24), L (0.30049, 0.24), "
      "L (0.30049, 0.76), L (0.52907, 0.76), C (0.6787, 0.71814; 0.594, 0.76; 0.64388, 0.74605), "
      "C (0.73094, 0.60282; 0.71353, 0.69023; 0.73094, 0.65179), "
      "C (0.72033, 0.54627; 0.73094, 0.58177; 0.7274, 0.56292), "
      "C (0.69245, 0.50257; 0.71326, 0.52962; 0.70397, 0.51506), "
      "C (0.65317, 0.47172; 0.68093, 0.49008; 0.66784, 0.4798), "
      "C (0.60762, 0.45446; 0.63851, 0.46364; 0.62333, 0.45789), L (0.76, 0.24), L (0.63432, 0.24), Z">;
  drawLetterInHexagon(frame, hexagon, letter);
}

void BrowseIcons::drawTidalIconDiscoveryWithFrame(CGRect frame) {
  constexpr auto hexagon = listing<
      "M (0.5, 0.97), L (0.90703, 0.735), L (0.90703, 0.265), L (0.5, 0.03), L (0.09297, 0.265), "
      "L (0.09297, 0.735), Z">;
  constexpr auto letter = listing<
      "M (0.76, 0.50073), C (0.7356, 0.38432; 0.76, 0.45569; 0.75187, 0.41688), "
      "C (0.67137, 0.30316; 0.71933, 0.35176; 0.69793, 0.32471), "
      "C (0.58167, 0.25542; 0.64482, 0.28162; 0.61492, 0.26571), "
      "C (0.48156, 0.24; 0.54842, 0.24514; 0.51505, 0.24), L (0.3, 0.24), L (0.3, 0.76), L (0.47797, 0.76), "
      "C (0.58023, 0.74605; 0.51242, 0.76; 0.54651, 0.75535), "
      "C (0.67066, 0.70088; 0.61396, 0.73674; 0.6441, 0.72169), "
      "C (0.73524, 0.62045; 0.69721, 0.68007; 0.71874, 0.65326), "
      "C (0.76, 0.50073; 0.75175, 0.58765; 0.76, 0.54774), Z, "
      "M (0.39401, 0.67554), L (0.39401, 0.3252), L (0.46864, 0.3252), "
      "C (0.54543, 0.33658; 0.49639, 0.3252; 0.52199, 0.32899), "
      "C (0.60607, 0.37037; 0.56887, 0.34417; 0.58908, 0.35543), "
      "C (0.64554, 0.42545; 0.62305, 0.3853; 0.63621, 0.40366), "
      "C (0.65953, 0.50073; 0.65487, 0.44724; 0.65953, 0.47234), "
      "C (0.64554, 0.57602; 0.65953, 0.52913; 0.65487, 0.55423), "
      "C (0.60643, 0.63073; 0.63621, 0.59781; 0.62317, 0.61605), "
      "C (0.54651, 0.66415; 0.58968, 0.64542; 0.56971, 0.65656), "
      "C (0.4708, 0.67554; 0.5233, 0.67174; 0.49807, 0.67554), L (0.39401, 0.67554), Z">;
  drawLetterInHexagon(frame, hexagon, letter);
}

void BrowseIcons::drawTidalIconSearchWithFrame(CGRect frame) {
  fill(*pathFromUpperLeft(frame, listings::tidalIconSearch), *NSColor::blackColor());
}

void BrowseIcons::drawTidalIconPlaylistWithFrame(CGRect frame) {
  fill(*pathInFrame(frame, listings::tidalIconPlaylist), *NSColor::blackColor());
}

void BrowseIcons::drawTidalIconAlbumWithFrame(CGRect frame) {
  fill(*pathInFrame(frame, listings::tidalIconAlbum), *NSColor::whiteColor());
}

void BrowseIcons::drawTidalMusicIconWithFrame(CGRect frame) {
  fill(*pathInFrame(frame, listings::tidalMusicIcon), *NSColor::blackColor());
}

}  // namespace TessalunaUIKit
