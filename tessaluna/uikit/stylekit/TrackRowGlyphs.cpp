#include "tessaluna/uikit/stylekit/TrackRowGlyphs.h"

#include "tessaluna/uikit/stylekit/OverlayLook.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

void TrackRowGlyphs::drawTrackRowPlayPauseWithFrame(CGRect frame, bool isPressed, bool isOver, bool isPlaying) {
  // Only the disc snaps; the mark is proportional.
  constexpr SnappedEdges discEdges{.left = {0.03333, 0}, .right = {0.96667, 0}, .bottom = {0.03333, 0}, .top = {0.96667, 0}};
  CGContext& context = NSGraphicsContext::currentCgContext();
  const auto look = recipes::overlayLook(isPressed, isOver);
  const auto shadow = recipes::kitShadow();  // in every state, though only the bars show it
  recipes::paintGround(*NSBezierPath::bezierPathWithOvalInRect(snappedRect(frame, discEdges)), look, 1);
  recipes::paintPlayPauseMark(context, frame, isPlaying, *shadow, {.triangle = 1, .bars = 0.5});
}

void TrackRowGlyphs::drawTrackRowPlayingWithFrame(CGRect frame) {
  // The cone, its open body, and the waves from the innermost out.
  constexpr auto loudspeaker = listing<
      "M (0.25685, 0.38162), C (0.24701, 0.41022; 0.25118, 0.38675; 0.24701, 0.39935), L (0.24701, 0.6066), "
      "C (0.25685, 0.63542; 0.24701, 0.61747; 0.25118, 0.63028), L (0.46329, 0.851), "
      "C (0.524, 0.82709; 0.48986, 0.87926; 0.524, 0.86854), L (0.524, 0.19585), "
      "C (0.46233, 0.16708; 0.524, 0.15124; 0.49311, 0.13435), L (0.25685, 0.38162), Z, "
      "M (0.26331, 0.37189), L (0.14925, 0.37189), C (0.11667, 0.40602; 0.13128, 0.37189; 0.11667, 0.38721), "
      "L (0.11667, 0.61081), C (0.14925, 0.64494; 0.11667, 0.62962; 0.13128, 0.64494), L (0.26331, 0.64494), "
      "M (0.60038, 0.60369), C (0.67064, 0.50842; 0.64077, 0.59265; 0.67064, 0.55415), "
      "C (0.60038, 0.41312; 0.67064, 0.46268; 0.64077, 0.42418), "
      "M (0.66934, 0.71078), C (0.78469, 0.50842; 0.73803, 0.67196; 0.78469, 0.59591), "
      "C (0.66991, 0.30644; 0.78469, 0.42119; 0.73826, 0.34532), "
      "M (0.72763, 0.80161), C (0.9, 0.50842; 0.82989, 0.74756; 0.9, 0.63661), "
      "C (0.72763, 0.21522; 0.9, 0.38022; 0.82989, 0.26925)">;
  const auto path = pathInFrame(frame, loudspeaker);
  color(0, 0, 0, 1)->setStroke();
  path->setLineWidth(1);
  path->stroke();
}

void TrackRowGlyphs::drawTrackMoreWithFrame(CGRect frame, bool isPressed, bool isOver) {
  constexpr SnappedEdge bottom{0.36667, 0}, top{0.63333, 0};
  constexpr SnappedEdges dots[] = {
      {.left = {0.03333, 0}, .right = {0.3, 0}, .bottom = bottom, .top = top},
      {.left = {0.36667, 0}, .right = {0.63333, 0}, .bottom = bottom, .top = top},
      {.left = {0.7, 0}, .right = {0.96667, 0}, .bottom = bottom, .top = top},
  };
  const auto look = recipes::overlayLook(isPressed, isOver);
  for (const SnappedEdges& dot : dots)
    recipes::paintGround(*NSBezierPath::bezierPathWithOvalInRect(snappedRect(frame, dot)), look, 0.5);
}

}  // namespace TessalunaUIKit
