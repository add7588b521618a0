#include "tessaluna/uikit/stylekit/AlbumOverlayGlyphs.h"

#include "tessaluna/uikit/stylekit/OverlayLook.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

namespace {

void paintDisc(CGRect frame, const recipes::OverlayLook& look) {
  constexpr SnappedEdges edges{
      .left = {0.01316, 0.5}, .right = {0.98684, 0.5}, .bottom = {0.01316, 0.5}, .top = {0.98684, 0.5}};
  const auto disc = NSBezierPath::bezierPathWithOvalInRect(snappedRect(frame, edges));
  recipes::paintGround(*disc, look, 1);
}

}  // namespace

void AlbumOverlayGlyphs::drawPlayPauseAlbumOverlayWithFrame(CGRect frame, bool isPressed, bool isOver, bool isPlaying) {
  CGContext& context = NSGraphicsContext::currentCgContext();
  const auto look = recipes::overlayLook(isPressed, isOver);
  const auto shadow = recipes::kitShadow();  // in every state, though only the bars show it
  paintDisc(frame, look);
  recipes::paintPlayPauseMark(context, frame, isPlaying, *shadow, {.triangle = 2, .bars = 1});
}

void AlbumOverlayGlyphs::drawPlayingAlbumOverlayWithFrame(CGRect frame, bool isPressed, bool isOver) {
  constexpr SnappedEdges groupEdges{
      .left = {0.21053, 0.5}, .right = {0.77733, 0.42}, .bottom = {0.27629, -0.5}, .top = {0.73683, -0.5}};
  constexpr auto back = listing<
      "M (0.1872, 0.30956), L (0.0416, 0.30956), C (0, 0.35718; 0.01866, 0.30956; 0, 0.33094), "
      "L (0, 0.64289), C (0.0416, 0.69051; 0, 0.66913; 0.01866, 0.69051), L (0.1872, 0.69051)">;
  // Some controls of the cone lie beyond the group: the curve's own values.
  constexpr auto cone = listing<
      "M (0.17896, 0.32313), C (0.1664, 0.36304; 0.17172, 0.3303; 0.1664, 0.34787), L (0.1664, 0.63701), "
      "C (0.17896, 0.67722; 0.1664, 0.65217; 0.17172, 0.67005), L (0.4425, 0.97798), "
      "C (0.52, 0.94462; 0.47642, 1.01741; 0.52, 1.00245), L (0.52, 0.06397), "
      "C (0.44127, 0.02383; 0.52, 0.00173; 0.48056, -0.02184), L (0.17896, 0.32313), Z">;
  constexpr auto firstWave = listing<
      "M (0.61751, 0.63296), C (0.7072, 0.50003; 0.66907, 0.61756; 0.7072, 0.56384), "
      "C (0.61751, 0.36708; 0.7072, 0.43622; 0.66907, 0.38251)">;
  constexpr auto secondWave = listing<
      "M (0.70553, 0.78236), C (0.8528, 0.50003; 0.79323, 0.7282; 0.8528, 0.6221), "
      "C (0.70626, 0.21825; 0.8528, 0.37834; 0.79352, 0.27249)">;
  constexpr auto thirdWave = listing<
      "M (0.77996, 0.90907), C (1, 0.50003; 0.9105, 0.83367; 1, 0.67889), "
      "C (0.77996, 0.09099; 1, 0.32118; 0.9105, 0.16637)">;
  const auto ink = color(0, 0, 0, 1);
  paintDisc(frame, recipes::overlayLook(isPressed, isOver));
  const CGRect group = snappedRect(frame, groupEdges);
  const auto strokePart = [&](ListingView part, NSLineCapStyle cap) {
    const auto path = pathInFrame(group, part);
    ink->setStroke();
    path->setLineWidth(1.5);
    path->setLineCapStyle(cap);
    path->setLineJoinStyle(NSRoundLineJoinStyle);
    path->stroke();
  };
  strokePart(back, NSButtLineCapStyle);
  strokePart(cone, NSButtLineCapStyle);
  strokePart(firstWave, NSRoundLineCapStyle);
  strokePart(secondWave, NSRoundLineCapStyle);
  strokePart(thirdWave, NSRoundLineCapStyle);
}

void AlbumOverlayGlyphs::drawFavoriteAlbumOverlayWithFrame(CGRect frame, bool isSelected, bool isPressed, bool isOver) {
  constexpr auto heart = listing<
      "M (0.70335, 0.89474), C (0.5, 0.77567; 0.61843, 0.89474; 0.5437, 0.8474), "
      "C (0.29665, 0.89474; 0.4563, 0.8474; 0.38157, 0.89474), "
      "C (0.05263, 0.62881; 0.16189, 0.89474; 0.05263, 0.77567), "
      "C (0.5, 0.05263; 0.05263, 0.31856; 0.37799, 0.16343), "
      "C (0.94737, 0.62881; 0.62201, 0.16343; 0.94737, 0.31856), "
      "C (0.70335, 0.89474; 0.94737, 0.77567; 0.83811, 0.89474), Z">;
  auto look = recipes::overlayLook(isPressed, isOver);
  if (isSelected) look.fill = isPressed ? color(1, 0.421, 0.421, 1) : color(1, 0, 0, 1);
  const auto path = pathInFrame(frame, heart);
  path->setLineCapStyle(NSRoundLineCapStyle);
  recipes::paintGround(*path, look, 1);
}

void AlbumOverlayGlyphs::drawMoreAlbumOverlayWithFrame(CGRect frame, bool isPressed, bool isOver) {
  constexpr SnappedEdge bottom{0.27273, 0.5}, top{0.72727, 0.5};
  constexpr SnappedEdges dots[] = {
      {.left = {0.06818, 0.5}, .right = {0.29545, 0.5}, .bottom = bottom, .top = top},
      {.left = {0.38636, 0.5}, .right = {0.61364, 0.5}, .bottom = bottom, .top = top},
      {.left = {0.70455, 0.5}, .right = {0.93182, 0.5}, .bottom = bottom, .top = top},
  };
  const auto look = recipes::overlayLook(isPressed, isOver);
  for (const SnappedEdges& dot : dots)
    recipes::paintGround(*NSBezierPath::bezierPathWithOvalInRect(snappedRect(frame, dot)), look, 1);
}

}  // namespace TessalunaUIKit
