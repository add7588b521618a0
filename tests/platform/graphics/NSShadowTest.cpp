#include "tessaluna/platform/graphics/NSShadow.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;

TEST(NSShadow, AFreshOneIsBlackAtAThirdWithoutOffsetAndBlur) {
  const auto shadow = make<NSShadow>();
  EXPECT_EQ(shadow->shadowColor()->components(), (tessaluna::backend::Color{0, 0, 0, 1.0 / 3}));
  EXPECT_EQ(shadow->shadowOffset(), (CGSize{0, 0}));
  EXPECT_EQ(shadow->shadowBlurRadius(), 0);
}

TEST(NSShadow, TheInitializerSetsColorOffsetAndBlur) {
  const auto shadow = make<NSShadow>(NSColor::redColor(), CGSize{1, -1}, 1.5);
  EXPECT_EQ(shadow->shadowColor(), NSColor::redColor());
  EXPECT_EQ(shadow->shadowOffset(), (CGSize{1, -1}));
  EXPECT_EQ(shadow->shadowBlurRadius(), 1.5);
}

TEST(NSShadow, TheInitializersColorMayBeAbsent) {
  const auto shadow = make<NSShadow>(nullptr, CGSize{1, -1}, 1.5);
  EXPECT_EQ(shadow->shadowColor(), nullptr);
  EXPECT_EQ(shadow->shadowOffset(), (CGSize{1, -1}));
}

TEST(NSShadow, SetMakesItTheContextsShadow) {
  EXPECT_EQ(recordingOf([] {
              make<NSShadow>(NSColor::redColor(), CGSize{1, -1}, 1.5)->set();
            }),
            (Lines{R"({"op":"setShadow","offset":[1,-1],"blur":1.5,"color":[1,0,0,1]})"}));
}

TEST(NSShadow, SetWithoutAColorTakesTheShadowAway) {
  EXPECT_EQ(recordingOf([] {
              make<NSShadow>(nullptr, CGSize{1, -1}, 1.5)->set();
            }),
            (Lines{R"({"op":"setShadow","offset":[1,-1],"blur":1.5,"color":null})"}));
}

TEST(NSShadow, SetWithoutAContextDoesNothing) {
  make<NSShadow>()->set();
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}
