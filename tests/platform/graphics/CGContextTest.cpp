#include "tessaluna/platform/graphics/CGContext.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using tessaluna::backend::FillRule;
using tessaluna::backend::Path;
using tessaluna::backend::recording::RecordingCanvas;

namespace {

Ref<NSImage> tile() {
  return NSImage::imageWithSize({4, 4}, false, [](CGRect) { return true; });
}

bool fillIsAPattern(CGContext& context, RecordingCanvas& canvas) {
  canvas.clear();
  context.fillPath(Path::rect({0, 0, 4, 4}), FillRule::NonZero);
  return !harness::only("clipPath", canvas.lines()).empty();
}

}  // namespace

TEST(CGContext, ARestoreWithoutASaveDoesNothing) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  context.restoreState();
  EXPECT_TRUE(canvas.lines().empty());
}

TEST(CGContext, SaveAndRestorePairUp) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  context.saveState();
  context.saveState();
  context.restoreState();
  context.restoreState();
  context.restoreState();
  EXPECT_EQ(canvas.lines().size(), 4u);
}

TEST(CGContext, AScopeSavesAtOnceAndRestoresAtItsEnd) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  {
    const GraphicsStateScope scope(context);
    EXPECT_EQ(canvas.lines(), Lines{R"({"op":"save"})"});
  }
  EXPECT_EQ(canvas.lines().back(), R"({"op":"restore"})");
}

TEST(CGContext, RestoreBringsThePatternBack) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  context.setFillPattern(tile());
  context.saveState();
  context.setFillColor({0, 0, 0, 1});
  EXPECT_FALSE(fillIsAPattern(context, canvas));
  context.restoreState();
  EXPECT_TRUE(fillIsAPattern(context, canvas));
}

TEST(CGContext, RestoreTakesALaterPatternAway) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  context.saveState();
  context.setFillPattern(tile());
  context.restoreState();
  EXPECT_FALSE(fillIsAPattern(context, canvas));
}

TEST(CGContext, TheEndOfALayerTakesAPatternOfTheLayerAway) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  context.beginTransparencyLayer();
  context.setFillPattern(tile());
  context.endTransparencyLayer();
  EXPECT_FALSE(fillIsAPattern(context, canvas));
}

TEST(CGContext, TheEndOfALayerBringsThePatternBack) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  context.setFillPattern(tile());
  context.beginTransparencyLayer();
  context.setFillColor({0, 0, 0, 1});
  context.endTransparencyLayer();
  EXPECT_TRUE(fillIsAPattern(context, canvas));
}

TEST(CGContext, AnEndOfALayerWithoutABeginDoesNothing) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  context.setFillPattern(tile());
  context.endTransparencyLayer();
  EXPECT_TRUE(canvas.lines().empty());
  EXPECT_TRUE(fillIsAPattern(context, canvas));
}

TEST(CGContext, ARestoreWithinALayerDoesNotReachBeyondItsBegin) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  context.saveState();
  context.beginTransparencyLayer();
  context.restoreState();
  EXPECT_EQ(harness::only("restore", canvas.lines()).size(), 0u);
  context.endTransparencyLayer();
  context.restoreState();
  EXPECT_EQ(harness::only("restore", canvas.lines()).size(), 1u);
}

TEST(CGContext, ThePublishedCallsReachTheCanvas) {
  RecordingCanvas canvas;
  CGContext context(canvas);
  CGContextSetShadowWithColor(context, {1, -2}, 3, NSColor::blueColor().get());
  CGContextSetShadowWithColor(context, {0, 0}, 0, nullptr);
  CGContextSetAlpha(context, 0.5);
  CGContextSetBlendMode(context, kCGBlendModeSourceOut);
  CGContextBeginTransparencyLayer(context);
  CGContextEndTransparencyLayer(context);
  EXPECT_EQ(canvas.lines(), (Lines{R"({"op":"setShadow","offset":[1,-2],"blur":3,"color":[0,0,1,1]})",
                                   R"({"op":"setShadow","offset":[0,0],"blur":0,"color":null})",
                                   R"({"op":"setAlpha","alpha":0.5})", R"({"op":"setBlendMode","mode":"sourceOut"})",
                                   R"({"op":"beginTransparencyLayer"})", R"({"op":"endTransparencyLayer"})"}));
}

TEST(CGContext, BlendModesHaveTheirPublishedValues) {
  EXPECT_EQ(static_cast<int>(kCGBlendModeNormal), 0);
  EXPECT_EQ(static_cast<int>(kCGBlendModeCopy), 17);
  EXPECT_EQ(static_cast<int>(kCGBlendModeSourceOut), 19);
}
