#include "tessaluna/backends/recording/RecordingCanvas.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace tessaluna::backend;
using tessaluna::backend::recording::RecordingCanvas;
using Lines = std::vector<std::string>;

namespace {

Path wedge() {
  Path path;
  path.moveTo({1, 2});
  path.lineTo({3.5, -4});
  path.curveTo({5, 6}, {7, 8}, {9, 10});
  path.close();
  return path;
}

}  // namespace

TEST(RecordingCanvas, WritesNothingAtFirst) { EXPECT_TRUE(RecordingCanvas().lines().empty()); }

TEST(RecordingCanvas, WritesSaveRestoreAndLayers) {
  RecordingCanvas canvas;
  canvas.saveState();
  canvas.beginTransparencyLayer();
  canvas.endTransparencyLayer();
  canvas.restoreState();
  EXPECT_EQ(canvas.lines(), (Lines{R"({"op":"save"})", R"({"op":"beginTransparencyLayer"})",
                                   R"({"op":"endTransparencyLayer"})", R"({"op":"restore"})"}));
}

TEST(RecordingCanvas, WritesColorsAndTheNamesOfNamedOnes) {
  RecordingCanvas canvas;
  canvas.setFillColor({0, 0, 0, 1, "blackColor"});
  canvas.setStrokeColor({0.333, 0.5, 1, 0.25});
  EXPECT_EQ(canvas.lines(), (Lines{R"({"op":"setFillColor","color":[0,0,0,1],"named":"blackColor"})",
                                   R"({"op":"setStrokeColor","color":[0.333,0.5,1,0.25]})"}));
}

TEST(RecordingCanvas, WritesAFillWithACurvesEndPointFirst) {
  RecordingCanvas canvas;
  canvas.fillPath(wedge(), FillRule::NonZero);
  EXPECT_EQ(canvas.lines(), (Lines{R"({"op":"fill","path":[["M",1,2],["L",3.5,-4],["C",5,6,7,8,9,10],["Z"]]})"}));
}

TEST(RecordingCanvas, WritesTheEvenOddRuleOnlyWhereItHolds) {
  RecordingCanvas canvas;
  canvas.fillPath(wedge(), FillRule::EvenOdd);
  EXPECT_EQ(canvas.lines(),
            (Lines{R"({"op":"fill","path":[["M",1,2],["L",3.5,-4],["C",5,6,7,8,9,10],["Z"]],"rule":"evenOdd"})"}));
}

TEST(RecordingCanvas, WritesAStrokeWithAllItsAttributes) {
  RecordingCanvas canvas;
  const double dash[] = {10, 2};
  Path line;
  line.moveTo({0, 0});
  line.lineTo({1, 0});
  canvas.strokePath(
      line, {.width = 2, .cap = LineCap::Round, .join = LineJoin::Bevel, .miterLimit = 4, .dash = dash, .dashPhase = 0.5});
  canvas.strokePath(line, {.cap = LineCap::Square, .join = LineJoin::Round});
  canvas.strokePath(line, {});
  const std::string start = R"({"op":"stroke","path":[["M",0,0],["L",1,0]],)";
  EXPECT_EQ(canvas.lines(),
            (Lines{start + R"("lineWidth":2,"cap":"round","join":"bevel","miterLimit":4,"dash":[10,2],"phase":0.5})",
                   start + R"("lineWidth":1,"cap":"square","join":"round","miterLimit":10,"dash":[],"phase":0})",
                   start + R"("lineWidth":1,"cap":"butt","join":"miter","miterLimit":10,"dash":[],"phase":0})"}));
}

TEST(RecordingCanvas, WritesAGradientWithStopsAndAngle) {
  RecordingCanvas canvas;
  const GradientStop stops[] = {{0, {1, 0, 0, 1}}, {0.43, {0, 0, 1, 0.5}}};
  canvas.fillGradient(Path::rect({0, 0, 2, 1}), FillRule::NonZero,
                      {.stops = stops, .start = {1, 0}, .end = {1, 1}, .angle = 90});
  EXPECT_EQ(canvas.lines(), (Lines{R"({"op":"gradient","path":[["M",0,0],["L",2,0],["L",2,1],["L",0,1],["Z"]],)"
                                   R"("shape":["rect",0,0,2,1],"stops":[[0,[1,0,0,1]],[0.43,[0,0,1,0.5]]],"angle":90})"}));
}

TEST(RecordingCanvas, WritesTheCallThatMadeAFigure) {
  RecordingCanvas canvas;
  canvas.fillPath(Path::rect({1, 2, 3, 4}), FillRule::NonZero);
  canvas.fillPath(Path::oval({1, 2, 3, 4}), FillRule::NonZero);
  canvas.fillPath(Path::roundedRect({1, 2, 30, 40}, {5, 6}), FillRule::NonZero);
  EXPECT_TRUE(canvas.lines()[0].ends_with(R"(,"shape":["rect",1,2,3,4]})"));
  EXPECT_TRUE(canvas.lines()[1].ends_with(R"(,"shape":["oval",1,2,3,4]})"));
  EXPECT_TRUE(canvas.lines()[2].ends_with(R"(,"shape":["roundedRect",1,2,30,40,5,6]})"));
}

TEST(RecordingCanvas, WritesSpaceAndClip) {
  RecordingCanvas canvas;
  canvas.concat({1, 0, 0, -1, 10, 20});
  canvas.clipRect({1, 2, 3, 4});
  canvas.clipPath(wedge(), FillRule::EvenOdd);
  EXPECT_EQ(canvas.lines(),
            (Lines{R"({"op":"concat","transform":[1,0,0,-1,10,20]})", R"({"op":"clipRect","rect":[1,2,3,4]})",
                   R"({"op":"clipPath","path":[["M",1,2],["L",3.5,-4],["C",5,6,7,8,9,10],["Z"]],"rule":"evenOdd"})"}));
}

TEST(RecordingCanvas, WritesShadowAlphaAndBlendMode) {
  RecordingCanvas canvas;
  canvas.setShadow({.offset = {1, -1}, .blur = 1.5, .color = Color{0.167, 0.167, 0.167, 1}});
  canvas.setShadow({.offset = {}, .blur = 0, .color = {}});
  canvas.setAlpha(1);
  canvas.setBlendMode(BlendMode::SourceOut);
  EXPECT_EQ(canvas.lines(), (Lines{R"({"op":"setShadow","offset":[1,-1],"blur":1.5,"color":[0.167,0.167,0.167,1]})",
                                   R"({"op":"setShadow","offset":[0,0],"blur":0,"color":null})",
                                   R"({"op":"setAlpha","alpha":1})", R"({"op":"setBlendMode","mode":"sourceOut"})"}));
}

TEST(RecordingCanvas, WritesNumbersInTheirShortestForm) {
  RecordingCanvas canvas;
  canvas.clipRect({-0.0, 0.1 + 0.2, 1e21, 14.00008});
  EXPECT_EQ(canvas.lines(), (Lines{R"({"op":"clipRect","rect":[0,0.30000000000000004,1e+21,14.00008]})"}));
}

TEST(RecordingCanvas, NumbersThatAreNotFiniteAreNull) {
  RecordingCanvas canvas;
  canvas.clipRect({std::nan(""), -std::nan(""), INFINITY, -INFINITY});
  EXPECT_EQ(canvas.lines(), Lines{R"({"op":"clipRect","rect":[null,null,null,null]})"});
}

TEST(RecordingCanvas, ClearForgetsAllLines) {
  RecordingCanvas canvas;
  canvas.saveState();
  canvas.clear();
  EXPECT_TRUE(canvas.lines().empty());
}
