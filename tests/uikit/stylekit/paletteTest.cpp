#include "tessaluna/uikit/stylekit/palette.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/uikit/stylekit/Routines.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/harness/allocations.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using TessalunaUIKit::TessalunaStyleKit;

namespace {

void expectCalibrated(const Ref<NSColor>& color, double red, double green, double blue) {
  EXPECT_TRUE(color->isEqual(NSColor::colorWithCalibratedRed(red, green, blue, 1).get()));
}

}  // namespace

TEST(palette, HoldsThreeCalibratedColors) {
  expectCalibrated(TessalunaStyleKit::qobuzColor(), 0.196, 0.595, 0.713);
  expectCalibrated(TessalunaStyleKit::tessalunaBlue(), 0.136, 0.507, 0.968);
  expectCalibrated(TessalunaStyleKit::highResAudioColor(), 0.304, 0.304, 0.304);
}

TEST(palette, TwoReadsOfTessalunaBlueYieldTheIdenticalObject) {
  EXPECT_EQ(TessalunaStyleKit::tessalunaBlue(), TessalunaStyleKit::tessalunaBlue());
  EXPECT_EQ(TessalunaStyleKit::qobuzColor(), TessalunaStyleKit::qobuzColor());
  EXPECT_EQ(TessalunaStyleKit::highResAudioColor(), TessalunaStyleKit::highResAudioColor());
}

TEST(palette, EveryThreadReadsTheSameObject) {
  Ref<NSColor> there;
  std::thread([&] { there = TessalunaStyleKit::tessalunaBlue(); }).join();
  EXPECT_EQ(there, TessalunaStyleKit::tessalunaBlue());
}

TEST(palette, HighResAudioColorIsAGray) {
  const auto color = TessalunaStyleKit::highResAudioColor();
  EXPECT_EQ(color->redComponent(), color->greenComponent());
  EXPECT_EQ(color->greenComponent(), color->blueComponent());
}

// In processes of their own, in which nothing has been read.
TEST(paletteDeathTest, EachColorIsMadeAtItsOwnFirstReadAndByNoRoutine) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  using Read = Ref<NSColor> (*)();
  const auto readAll = [](std::initializer_list<Read> reads) {
    const auto costOf = [](Read read) {
      const int before = harness::allocations;
      read();
      return harness::allocations - before;
    };
    for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines())
      harness::recordingOf([&] { routine.drawByDefault(); });
    const int costOfAColor = costOf([] { return NSColor::colorWithCalibratedRed(0, 0, 0, 1); });
    for (const Read read : reads)
      if (costOf(read) != costOfAColor || costOf(read) != 0) std::exit(1);
    std::exit(costOfAColor > 0 ? 0 : 2);
  };
  using Kit = TessalunaStyleKit;
  // Each of them first, so that none makes another one.
  EXPECT_EXIT(readAll({Kit::qobuzColor, Kit::tessalunaBlue, Kit::highResAudioColor}), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(readAll({Kit::tessalunaBlue, Kit::highResAudioColor, Kit::qobuzColor}), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(readAll({Kit::highResAudioColor, Kit::qobuzColor, Kit::tessalunaBlue}), testing::ExitedWithCode(0), "");
}
