#include "tessaluna/platform/graphics/NSGraphicsContext.h"

#include <gtest/gtest.h>

#include <thread>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGradient.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;

TEST(NSGraphicsContext, ThereIsNoneOutsideADrawingPass) {
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
  EXPECT_EQ(NSGraphicsContext::currentCGContextIfAny(), nullptr);
  recordingOf([] { EXPECT_NE(NSGraphicsContext::currentContext(), nullptr); });
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST(NSGraphicsContext, EachThreadHasItsOwn) {
  recordingOf([] {
    std::thread([] {
      EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
      const Lines lines = recordingOf([] { NSColor::redColor()->setFill(); });
      EXPECT_EQ(lines.size(), 1u);
    }).join();
    EXPECT_NE(NSGraphicsContext::currentContext(), nullptr);
  });
}

TEST(NSGraphicsContext, AnInnerScopeGivesTheOuterContextBack) {
  const Lines outer = recordingOf([] {
    EXPECT_EQ(recordingOf([] { NSRectClip({0, 0, 1, 1}); }).size(), 1u);
    NSRectClip({5, 5, 5, 5});
  });
  EXPECT_EQ(outer, (Lines{R"({"op":"clipRect","rect":[5,5,5,5]})"}));
}

TEST(NSGraphicsContextDeathTest, CurrentCgContextWithoutAContextStopsTheProgram) {
  EXPECT_DEATH(NSGraphicsContext::currentCgContext(), "currentCgContext .*without a current graphics context");
}

TEST(NSGraphicsContext, DrawingWithoutAContextDoesNothing) {
  const auto path = NSBezierPath::bezierPathWithRect({0, 0, 10, 10});
  path->fill();
  path->stroke();
  path->addClip();
  NSRectFill({0, 0, 10, 10});
  NSRectClip({0, 0, 10, 10});
  NSGraphicsContext::saveGraphicsState();
  NSGraphicsContext::restoreGraphicsState();
  const Ref<NSColor> colors[] = {NSColor::blackColor()};
  const double locations[] = {0};
  make<NSGradient>(colors, locations, nullptr)->drawInBezierPath(*path, 0);
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST(NSGraphicsContext, SaveAndRestoreReachTheCanvas) {
  EXPECT_EQ(recordingOf([] {
              NSGraphicsContext::saveGraphicsState();
              NSRectClip({1, 2, 3, 4});
              NSGraphicsContext::restoreGraphicsState();
            }),
            (Lines{R"({"op":"save"})", R"({"op":"clipRect","rect":[1,2,3,4]})", R"({"op":"restore"})"}));
}

class NSGraphicsContextBySystem : public harness::StillWorld {};

TEST_F(NSGraphicsContextBySystem, CurrentCgContextIsTheSameBeforeAndSince1010) {
  recordingOf([] {
    CGContext& now = NSGraphicsContext::currentCgContext();
    setOperatingSystemVersion({10, 9, 5});
    EXPECT_EQ(&NSGraphicsContext::currentCgContext(), &now);
    EXPECT_EQ(&now, &NSGraphicsContext::currentContext()->CGContext());
  });
}
