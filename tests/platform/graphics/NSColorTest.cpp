#include "tessaluna/platform/graphics/NSColor.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;

namespace {

Ref<NSImage> chequer(CGSize size) {
  return NSImage::imageWithSize(size, false, [](CGRect) {
    NSColor::redColor()->setFill();
    NSBezierPath::bezierPathWithRect({0, 0, 1, 1})->fill();
    return true;
  });
}

}  // namespace

TEST(NSColor, AStandardColorIsOneObject) {
  EXPECT_EQ(NSColor::blackColor(), NSColor::blackColor());
  EXPECT_EQ(NSColor::darkGrayColor(), NSColor::darkGrayColor());
  EXPECT_EQ(NSColor::controlTextColor(), NSColor::controlTextColor());
}

TEST(NSColor, AMadeColorIsANewObjectEachTime) {
  const auto a = NSColor::colorWithCalibratedRed(1, 0, 0, 1), b = NSColor::colorWithCalibratedRed(1, 0, 0, 1);
  EXPECT_NE(a, b);
  EXPECT_TRUE(a->isEqual(b.get()));
}

TEST(NSColor, BlackIsNotEqualToZeroComponents) {
  EXPECT_FALSE(NSColor::blackColor()->isEqual(NSColor::colorWithCalibratedRed(0, 0, 0, 1).get()));
  EXPECT_FALSE(NSColor::blackColor()->isEqual(NSColor::colorWithCalibratedWhite(0, 1).get()));
  EXPECT_FALSE(NSColor::redColor()->isEqual(NSColor::colorWithCalibratedRed(1, 0, 0, 1).get()));
}

TEST(NSColor, EqualityLooksAtTheSpace) {
  const auto calibrated = NSColor::colorWithCalibratedRed(0.5, 0.5, 0.5, 1);
  EXPECT_FALSE(calibrated->isEqual(NSColor::colorWithDeviceRed(0.5, 0.5, 0.5, 1).get()));
  EXPECT_FALSE(calibrated->isEqual(NSColor::colorWithSRGBRed(0.5, 0.5, 0.5, 1).get()));
  EXPECT_FALSE(calibrated->isEqual(NSColor::colorWithCalibratedWhite(0.5, 1).get()));
  EXPECT_FALSE(NSColor::colorWithCalibratedWhite(0.5, 1)->isEqual(NSColor::colorWithDeviceWhite(0.5, 1).get()));
}

TEST(NSColor, EqualityLooksAtEveryComponent) {
  const auto color = NSColor::colorWithCalibratedRed(0.1, 0.2, 0.3, 0.4);
  EXPECT_FALSE(color->isEqual(NSColor::colorWithCalibratedRed(0.9, 0.2, 0.3, 0.4).get()));
  EXPECT_FALSE(color->isEqual(NSColor::colorWithCalibratedRed(0.1, 0.9, 0.3, 0.4).get()));
  EXPECT_FALSE(color->isEqual(NSColor::colorWithCalibratedRed(0.1, 0.2, 0.9, 0.4).get()));
  EXPECT_FALSE(color->isEqual(NSColor::colorWithCalibratedRed(0.1, 0.2, 0.3, 0.9).get()));
  EXPECT_FALSE(color->isEqual(make<NSObject>().get()));
  EXPECT_FALSE(color->isEqual(nullptr));
}

TEST(NSColor, TwoSystemColorsAreEqualOnlyByTheirNames) {
  EXPECT_FALSE(NSColor::controlColor()->isEqual(NSColor::controlBackgroundColor().get()));
  EXPECT_TRUE(NSColor::controlColor()->isEqual(NSColor::controlColor().get()));
}

TEST(NSColor, TheGraysAreThirdsAndAHalf) {
  EXPECT_EQ(NSColor::darkGrayColor()->redComponent(), 1.0 / 3);
  EXPECT_EQ(NSColor::grayColor()->greenComponent(), 0.5);
  EXPECT_EQ(NSColor::lightGrayColor()->blueComponent(), 2.0 / 3);
  for (const auto& gray : {NSColor::darkGrayColor(), NSColor::grayColor(), NSColor::lightGrayColor()})
    EXPECT_EQ(gray->colorSpaceKind(), NSColorSpace::Kind::CalibratedWhite);
}

TEST(NSColor, ClearIsBlackWithoutAnyStrength) {
  EXPECT_EQ(NSColor::clearColor()->alphaComponent(), 0);
  EXPECT_EQ(NSColor::clearColor()->redComponent(), 0);
}

TEST(NSColor, SetsFillAndStrokeWithTheirNames) {
  EXPECT_EQ(recordingOf([] { NSColor::blackColor()->setFill(); }),
            (Lines{R"({"op":"setFillColor","color":[0,0,0,1],"named":"blackColor"})"}));
  EXPECT_EQ(recordingOf([] { NSColor::blueColor()->setStroke(); }),
            (Lines{R"({"op":"setStrokeColor","color":[0,0,1,1],"named":"blueColor"})"}));
}

TEST(NSColor, AMadeColorIsSetWithoutAName) {
  EXPECT_EQ(recordingOf([] { NSColor::colorWithCalibratedRed(0.333, 0.333, 0.333, 1)->setFill(); }),
            (Lines{R"({"op":"setFillColor","color":[0.333,0.333,0.333,1]})"}));
}

TEST(NSColor, SetSetsBoth) {
  EXPECT_EQ(recordingOf([] { NSColor::whiteColor()->set(); }).size(), 2u);
}

TEST(NSColor, ChangingTheAlphaDropsTheName) {
  const auto color = NSColor::blackColor()->colorWithAlphaComponent(1);
  EXPECT_FALSE(color->isEqual(NSColor::blackColor().get()));
  EXPECT_EQ(recordingOf([&] { color->setFill(); }), (Lines{R"({"op":"setFillColor","color":[0,0,0,1]})"}));
  EXPECT_EQ(NSColor::redColor()->colorWithAlphaComponent(0.25)->alphaComponent(), 0.25);
}

TEST(NSColor, BlendingGoesTheFractionOfTheWayAndDropsTheName) {
  const auto color = NSColor::blackColor()->blendedColorWithFraction(0.25, NSColor::colorWithSRGBRed(1, 0.5, 0, 0.5));
  EXPECT_EQ(recordingOf([&] { color->setFill(); }), (Lines{R"({"op":"setFillColor","color":[0.25,0.125,0,0.875]})"}));
  const auto unmoved = NSColor::redColor()->blendedColorWithFraction(0, NSColor::blueColor());
  EXPECT_FALSE(unmoved->isEqual(NSColor::redColor().get()));
}

TEST(NSColor, APatternCannotBeBlended) {
  const auto pattern = NSColor::colorWithPatternImage(chequer({4, 4}));
  EXPECT_EQ(pattern->blendedColorWithFraction(0.5, NSColor::redColor()), nullptr);
  EXPECT_EQ(NSColor::redColor()->blendedColorWithFraction(0.5, pattern), nullptr);
  EXPECT_EQ(NSColor::redColor()->blendedColorWithFraction(0.5, nullptr), nullptr);
}

TEST(NSColor, APatternKeepsItsAlpha) {
  const auto pattern = NSColor::colorWithPatternImage(chequer({4, 4}));
  EXPECT_EQ(pattern->colorWithAlphaComponent(0.5), pattern);
  EXPECT_EQ(pattern->alphaComponent(), 1);
}

TEST(NSColor, APatternIsEqualToOneOfTheSameImage) {
  const auto image = chequer({4, 4});
  const auto pattern = NSColor::colorWithPatternImage(image);
  EXPECT_TRUE(pattern->isEqual(NSColor::colorWithPatternImage(image).get()));
  EXPECT_FALSE(pattern->isEqual(NSColor::colorWithPatternImage(chequer({4, 4})).get()));
}

TEST(NSColor, APatternTilesTheFilledAreaFromTheOrigin) {
  const auto pattern = NSColor::colorWithPatternImage(chequer({4, 4}));
  const Lines lines = recordingOf([&] {
    pattern->setFill();
    NSBezierPath::bezierPathWithRect({6, -1, 4, 3})->fill();
  });
  // Columns 4 and 8, rows -4 and 0.
  EXPECT_EQ(harness::only("clipPath", lines).size(), 1u);
  EXPECT_EQ(harness::only("clipRect", lines),
            (Lines{R"({"op":"clipRect","rect":[4,-4,4,4]})", R"({"op":"clipRect","rect":[8,-4,4,4]})",
                   R"({"op":"clipRect","rect":[4,0,4,4]})", R"({"op":"clipRect","rect":[8,0,4,4]})"}));
  EXPECT_EQ(harness::only("fill", lines).size(), 4u);
  EXPECT_EQ(harness::only("save", lines).size(), harness::only("restore", lines).size());
}

TEST(NSColor, AColorSetAfterAPatternReplacesIt) {
  const Lines lines = recordingOf([] {
    NSColor::colorWithPatternImage(chequer({4, 4}))->setFill();
    NSColor::blackColor()->setFill();
    NSBezierPath::bezierPathWithRect({0, 0, 8, 8})->fill();
  });
  EXPECT_EQ(lines.size(), 2u);
  EXPECT_EQ(harness::only("fill", lines).size(), 1u);
}

TEST(NSColor, APatternOfAnEmptyImagePaintsNothing) {
  EXPECT_TRUE(recordingOf([] {
                NSColor::colorWithPatternImage(chequer({0, 4}))->setFill();
                NSBezierPath::bezierPathWithRect({0, 0, 8, 8})->fill();
              }).empty());
}

TEST(NSColor, APatternOfEndlesslyManyTilesPaintsNothing) {
  EXPECT_TRUE(recordingOf([] {
                NSColor::colorWithPatternImage(chequer({4, 4}))->set();
                NSBezierPath::bezierPathWithRect({0, 0, 1e300, 8})->fill();
                NSBezierPath::bezierPathWithRect({0, 0, 1e9, 1e9})->stroke();
              }).empty());
}

TEST(NSColor, APatternTilesALineAndNothingBesideIt) {
  const auto image = NSImage::imageWithSize({4, 4}, false, [](CGRect) {
    NSColor::redColor()->setFill();
    NSRectFill({0, 0, 2, 4});
    NSColor::blueColor()->setFill();
    NSRectFill({2, 0, 2, 4});
    return true;
  });
  const tessaluna::backend::raster::Bitmap picture = harness::pixelsOf({.width = 16, .height = 16}, [&] {
    NSColor::greenColor()->setFill();
    NSRectFill({0, 0, 16, 16});
    NSColor::colorWithPatternImage(image)->setStroke();
    const auto line = NSBezierPath::bezierPath();
    line->moveToPoint({0, 8});
    line->lineToPoint({16, 8});
    line->setLineWidth(4);
    line->stroke();
    NSColor::blackColor()->setStroke();  // ends the pattern
    NSBezierPath::bezierPathWithRect({0.5, 0.5, 15, 1})->stroke();
  });
  for (int x = 0; x < 16; ++x) {
    const std::uint32_t expected = x % 4 < 2 ? 0xFFFF0000 : 0xFF0000FF;
    for (const int y : {6, 9}) EXPECT_EQ(picture.pixel(x, y), expected) << x << ", " << y;
    for (const int y : {5, 10}) EXPECT_EQ(picture.pixel(x, y), 0xFF00FF00) << x << ", " << y;
    EXPECT_EQ(picture.pixel(x, 15), 0xFF000000) << x;
  }
}

TEST(NSColor, SettingWithoutAContextDoesNothing) {
  NSColor::blackColor()->set();
  NSColor::colorWithPatternImage(chequer({4, 4}))->set();
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST(NSColor, WithoutADesktopASystemColorHasAPlainLook) {
  EXPECT_EQ(recordingOf([] { NSColor::controlBackgroundColor()->setFill(); }),
            (Lines{R"({"op":"setFillColor","color":[1,1,1,1],"named":"controlBackgroundColor"})"}));
}

class NSColorOnADesktop : public harness::StillWorld {};

TEST_F(NSColorOnADesktop, ASystemColorIsResolvedWhenItIsSet) {
  const auto color = NSColor::controlTextColor();
  desktop.setSystemColor(tessaluna::backend::SystemColor::ControlText, {0.25, 0.5, 0.75, 1});
  EXPECT_EQ(recordingOf([&] { color->setFill(); }),
            (Lines{R"({"op":"setFillColor","color":[0.25,0.5,0.75,1],"named":"controlTextColor"})"}));
  desktop.setSystemColor(tessaluna::backend::SystemColor::ControlText, {1, 0, 0, 1});
  EXPECT_EQ(recordingOf([&] { color->setFill(); }),
            (Lines{R"({"op":"setFillColor","color":[1,0,0,1],"named":"controlTextColor"})"}));
}

TEST_F(NSColorOnADesktop, EverySystemColorAsksTheDesktopForItself) {
  using enum tessaluna::backend::SystemColor;
  const std::pair<tessaluna::backend::SystemColor, Ref<NSColor>> all[] = {
      {ControlText, NSColor::controlTextColor()},
      {DisabledControlText, NSColor::disabledControlTextColor()},
      {PlaceholderText, NSColor::placeholderTextColor()},
      {AlternateSelectedControl, NSColor::alternateSelectedControlColor()},
      {AlternateSelectedControlText, NSColor::alternateSelectedControlTextColor()},
      {SelectedTextBackground, NSColor::selectedTextBackgroundColor()},
      {UnemphasizedSelectedTextBackground, NSColor::unemphasizedSelectedTextBackgroundColor()},
      {Control, NSColor::controlColor()},
      {ControlBackground, NSColor::controlBackgroundColor()},
      {WindowBackground, NSColor::windowBackgroundColor()},
      {KeyboardFocusIndicator, NSColor::keyboardFocusIndicatorColor()},
  };
  for (const auto& [which, color] : all) {
    desktop.setSystemColor(which, {0.125, 0.25, 0.375, 0.5});
    EXPECT_EQ(color->components(), (tessaluna::backend::Color{0.125, 0.25, 0.375, 0.5})) << color->components().name;
    desktop.setSystemColor(which, tessaluna::backend::defaultSystemColor(which));
  }
}

TEST_F(NSColorOnADesktop, AnAlphaFixesASystemColorAtThatMoment) {
  desktop.setSystemColor(tessaluna::backend::SystemColor::ControlText, {0.25, 0.5, 0.75, 1});
  const auto color = NSColor::controlTextColor()->colorWithAlphaComponent(0.5);
  desktop.setSystemColor(tessaluna::backend::SystemColor::ControlText, {1, 0, 0, 1});
  EXPECT_EQ(recordingOf([&] { color->setFill(); }), (Lines{R"({"op":"setFillColor","color":[0.25,0.5,0.75,0.5]})"}));
}
