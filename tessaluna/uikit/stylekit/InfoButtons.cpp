#include "tessaluna/uikit/stylekit/InfoButtons.h"

#include "tessaluna/uikit/stylekit/Recipes.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

void InfoButtons::drawBookButtonWithFrame(CGRect frame, bool isPressed) {
  constexpr SnappedEdges groupEdges{
      .left = {0.0625, 0.5}, .right = {0.9375, 0.5}, .bottom = {0.0625, 0.5}, .top = {0.9375, 0.5}};
  // The right page, the left page, and the cover, which stays open at the top. Both pages hold the spine.
  constexpr auto book = listing<
      "M (0.5, 0.87222), L (0.5, 0.14815), C (0.91071, 0.23333; 0.5, 0.14815; 0.58826, 0.23333), "
      "L (0.91071, 1), C (0.5, 0.87222; 0.58647, 1; 0.5, 0.87222), Z, "
      "M (0.5, 0.87222), L (0.5, 0.14815), C (0.08929, 0.23333; 0.5, 0.14815; 0.41174, 0.23333), "
      "L (0.08929, 1), C (0.5, 0.87222; 0.41353, 1; 0.5, 0.87222), Z, "
      "M (0.10417, 0.86957), L (0.03846, 0.86957), C (0, 0.82935; 0.01723, 0.86957; 0, 0.85157), "
      "L (0, 0.10543), C (0.03846, 0.06522; 0, 0.08322; 0.01723, 0.06522), "
      "C (0.39583, 0.06522; 0.03846, 0.06522; 0.35554, 0.06522), C (0.5, 0; 0.39583, 0.06522; 0.43056, 0), "
      "C (0.60417, 0.06522; 0.56944, 0; 0.60417, 0.06522), "
      "C (0.96154, 0.06522; 0.64496, 0.06522; 0.96154, 0.06522), "
      "C (1, 0.10543; 0.98277, 0.06522; 1, 0.08322), L (1, 0.82935), "
      "C (0.96154, 0.86957; 1, 0.85157; 0.98277, 0.86957), L (0.89583, 0.86957)">;
  const auto ink = color(0, 0, 0, 1);
  const auto path = pathInFrame(snappedRect(frame, groupEdges), book);
  ink->setStroke();
  path->setLineWidth(isPressed ? 2 : 1);
  path->stroke();
}

void InfoButtons::drawSimilarArtistsWithFrame(CGRect frame, bool isPressed) {
  constexpr SnappedEdges groupEdges{
      .left = {0.06667, 0.5}, .right = {0.93333, 0.5}, .bottom = {0.06667, 0.5}, .top = {0.93333, 0.5}};
  constexpr SnappedEdges topLeftHead{
      .left = {0.23077, 0.5}, .right = {0.46154, 0.5}, .bottom = {0.76923, 0.5}, .top = {1, 0.5}};
  constexpr SnappedEdges middleHead{
      .left = {0.38462, 0.5}, .right = {0.61538, 0.5}, .bottom = {0.30769, 0.5}, .top = {0.61538, 0.5}};
  constexpr SnappedEdges rightHead{
      .left = {0.69231, 0.5}, .right = {0.92308, 0.5}, .bottom = {0.46154, 0.5}, .top = {0.69231, 0.5}};
  constexpr SnappedEdges leftHead{
      .left = {0.07692, 0.5}, .right = {0.30769, 0.5}, .bottom = {0.46154, 0.5}, .top = {0.69231, 0.5}};
  // Intentional: alone of the heads it sits off the point grid.
  constexpr SnappedEdges topRightHead{
      .left = {0.52308, -0.3}, .right = {0.75385, -0.3}, .bottom = {0.76923, 0.5}, .top = {1, 0.5}};
  constexpr auto middleBody = listing<
      "M (0.66667, 0.13636), C (0.5, 0.31818; 0.66667, 0.23636; 0.59167, 0.31818), "
      "C (0.33333, 0.13636; 0.40833, 0.31818; 0.33333, 0.23636), "
      "C (0.33333, 0.03409; 0.33333, 0.11591; 0.33333, 0.03409), C (0.5, 0; 0.33333, 0.03409; 0.375, 0), "
      "C (0.66667, 0.03409; 0.625, 0; 0.66667, 0.03409), "
      "C (0.66667, 0.13636; 0.66667, 0.03409; 0.66667, 0.11591), Z">;
  constexpr auto rightBody = listing<
      "M (1, 0.27273), C (0.83333, 0.45455; 1, 0.37273; 0.925, 0.45455), "
      "C (0.66667, 0.27273; 0.74167, 0.45455; 0.66667, 0.37273), "
      "C (0.66667, 0.17045; 0.66667, 0.25227; 0.66667, 0.17045), "
      "C (0.83333, 0.13636; 0.66667, 0.17045; 0.70833, 0.13636), "
      "C (1, 0.17045; 0.95833, 0.13636; 1, 0.17045), C (1, 0.27273; 1, 0.17045; 1, 0.25227), Z">;
  constexpr auto leftBody = listing<
      "M (0.33333, 0.27273), C (0.16667, 0.45455; 0.33333, 0.37273; 0.25833, 0.45455), "
      "C (0, 0.27273; 0.075, 0.45455; 0, 0.37273), C (0, 0.17045; 0, 0.25227; 0, 0.17045), "
      "C (0.16667, 0.13636; 0, 0.17045; 0.04167, 0.13636), "
      "C (0.33333, 0.17045; 0.29167, 0.13636; 0.33333, 0.17045), "
      "C (0.33333, 0.27273; 0.33333, 0.17045; 0.33333, 0.25227), Z">;
  constexpr auto topLeftShoulders = listing<
      "M (0.47917, 0.59545), C (0.47917, 0.61364; 0.47917, 0.59545; 0.47917, 0.60682), "
      "C (0.33333, 0.77273; 0.47917, 0.70227; 0.41458, 0.77273), "
      "C (0.22083, 0.71364; 0.2875, 0.77273; 0.24792, 0.75)">;
  constexpr auto topRightShoulders = listing<
      "M (0.51667, 0.59545), C (0.51667, 0.61364; 0.51667, 0.59545; 0.51667, 0.60682), "
      "C (0.6625, 0.77273; 0.51667, 0.70227; 0.58125, 0.77273), "
      "C (0.775, 0.71364; 0.70833, 0.77273; 0.74792, 0.75)">;
  const auto ink = color(0, 0, 0, 1);
  const CGRect group = snappedRect(frame, groupEdges);
  const double width = isPressed ? 1 : 0.5;
  const auto strokeHead = [&](const SnappedEdges& edges) {
    const auto head = NSBezierPath::bezierPathWithOvalInRect(snappedRect(group, edges));
    ink->setStroke();
    head->setLineWidth(width);
    head->stroke();
  };
  const auto strokeBody = [&](ListingView outline) {
    const auto body = pathInFrame(group, outline);
    ink->setStroke();
    body->setLineWidth(width);
    body->setLineCapStyle(NSRoundLineCapStyle);
    body->setLineJoinStyle(NSRoundLineJoinStyle);
    body->stroke();
  };
  strokeHead(topLeftHead);
  strokeHead(middleHead);
  strokeBody(middleBody);
  strokeHead(rightHead);
  strokeBody(rightBody);
  strokeHead(leftHead);
  strokeBody(leftBody);
  strokeBody(topLeftShoulders);
  strokeHead(topRightHead);
  strokeBody(topRightShoulders);
}

void InfoButtons::drawCreditsButtonWithFrame(CGRect frame, bool isPressed) {
  // Intentional: the dot is a little wider than the stem and not quite in line with it.
  constexpr auto letter = listing<
      "M (0.47795, 0.65815), C (0.47151, 0.66463; 0.47405, 0.65815; 0.47151, 0.66075), L (0.47151, 0.7119), "
      "C (0.47795, 0.71838; 0.47151, 0.71578; 0.47407, 0.71838), L (0.52199, 0.71838), "
      "C (0.52847, 0.7119; 0.52587, 0.71838; 0.52847, 0.71578), L (0.52847, 0.66463), "
      "C (0.52199, 0.65815; 0.52847, 0.66075; 0.52586, 0.65815), L (0.47795, 0.65815), Z, "
      "M (0.47927, 0.27804), C (0.47281, 0.28451; 0.47539, 0.27804; 0.47281, 0.28063), L (0.47281, 0.58174), "
      "C (0.47927, 0.58822; 0.47281, 0.58562; 0.47541, 0.58822), L (0.52071, 0.58822), "
      "C (0.52719, 0.58174; 0.52461, 0.58822; 0.52719, 0.58562), L (0.52719, 0.28451), "
      "C (0.52071, 0.27804; 0.52719, 0.28061; 0.52459, 0.27804), L (0.47927, 0.27804), Z">;
  const auto letterColor = color(0, 0, 0, 1), circleColor = color(0, 0, 0, 1);
  const auto path = pathInFrame(frame, letter);
  letterColor->setFill();
  path->fill();
  // The inset is a point at any frame.
  const auto circle = NSBezierPath::bezierPathWithOvalInRect(NSInsetRect(CGRectStandardize(frame), 1, 1));
  circleColor->setStroke();
  circle->setLineWidth(isPressed ? 2 : 1);
  circle->stroke();
}

}  // namespace TessalunaUIKit
