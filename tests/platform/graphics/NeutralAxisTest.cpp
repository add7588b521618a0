#include "tessaluna/platform/graphics/NeutralAxis.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string_view>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/contrast.h"

using namespace tessaluna::platform;
using tessaluna::backend::Color;

namespace {

constexpr Color gray(double white, double alpha = 1) { return {white, white, white, alpha}; }
constexpr Color white = gray(1);

constexpr Color rgb(unsigned hex) {
  return {(hex >> 16 & 0xFF) / 255.0, (hex >> 8 & 0xFF) / 255.0, (hex & 0xFF) / 255.0, 1};
}

// What desktops set their text and windows in.
struct Palette {
  std::string_view name;
  Color text, ground;
};
const Palette palettes[] = {
    {"black on white", gray(0), gray(1)},
    {"translucent black on light gray", gray(0, 0.85), gray(0.93)},
    {"dark gray on paper", rgb(0x2a2a30), rgb(0xf6f6f8)},
    {"white on black", gray(1), gray(0)},
    {"white on dark gray", rgb(0xffffff), rgb(0x353535)},
    {"pale on slate", rgb(0xeff0f1), rgb(0x2a2e32)},
    {"pale on blue", rgb(0xe6edf3), rgb(0x0d1117)},
    {"cream on brown", rgb(0xf2e5bc), rgb(0x282828)},
};

class NeutralAxisTest : public testing::TestWithParam<Palette> {
 protected:
  const NeutralAxis axis{GetParam().text, GetParam().ground};
};
INSTANTIATE_TEST_SUITE_P(Palettes, NeutralAxisTest, testing::ValuesIn(palettes), [](const auto& tested) {
  std::string name(tested.param.name);
  std::erase(name, ' ');
  return name;
});

double contrastOnGround(const NeutralAxis& axis, const Color& color) {
  return contrastRatio(axis.mapped(color), axis.ground());
}

}  // namespace

TEST_P(NeutralAxisTest, BlackIsTheTextAndWhiteTheGround) {
  const Color black = axis.mapped(gray(0)), ground = axis.mapped(white);
  const Color text = painted(GetParam().text, GetParam().ground);
  EXPECT_NEAR(black.red, text.red, 1e-12);
  EXPECT_NEAR(black.green, text.green, 1e-12);
  EXPECT_NEAR(black.blue, text.blue, 1e-12);
  EXPECT_EQ(ground, GetParam().ground);
}

// Each gray that the artwork is made of, and those between.
TEST_P(NeutralAxisTest, WhatIsReadableOnWhiteIsReadableOnTheGround) {
  for (int i = 0; i <= 100; ++i) {
    const Color color = gray(i / 100.0);
    for (const double contrast : {4.5, 3.0}) {
      if (contrastRatio(color, white) >= contrast) {
        EXPECT_GE(contrastOnGround(axis, color), contrast) << i;
      }
    }
  }
}

TEST_P(NeutralAxisTest, ADarkerGrayIsNeverNearerToTheGround) {
  for (int i = 1; i <= 100; ++i)
    EXPECT_LE(contrastOnGround(axis, gray(i / 100.0)), contrastOnGround(axis, gray((i - 1) / 100.0)) + 0.01) << i;
}

TEST_P(NeutralAxisTest, ColorsOfTheKitCanBeToldFromADarkGround) {
  if (!axis.isDark()) return;
  for (const Color& color : {Color{0, 0, 1}, Color{1, 0, 0}, Color{1, 0.421, 0.421}, Color{0.136, 0.507, 0.968}})
    EXPECT_GE(contrastOnGround(axis, color), 3);
}

TEST_P(NeutralAxisTest, AColorKeepsItsAlpha) {
  EXPECT_EQ(axis.mapped(gray(0, 0.5)).alpha, 0.5);
  EXPECT_EQ(axis.mapped({0, 0, 1, 0.25}).alpha, 0.25);
}

TEST(NeutralAxisDarkTest, BlueAndRedStayWhatTheyAreWhereTheyCanBeSeen) {
  const NeutralAxis axis(gray(1), rgb(0x202020));
  for (const Color& color : {Color{1, 0, 0}, Color{0.136, 0.507, 0.968}}) EXPECT_EQ(axis.mapped(color), color);
}

TEST(NeutralAxisDarkTest, ABlueThatCannotBeSeenIsLighterByNoMoreThanItMust) {
  const NeutralAxis axis(gray(1), rgb(0x202020));
  const Color blue = axis.mapped({0, 0, 1});
  EXPECT_NEAR(contrastRatio(blue, axis.ground()), 3, 0.15);
  EXPECT_EQ(blue.blue, 1);
  EXPECT_EQ(blue.red, blue.green);
}

TEST_P(NeutralAxisTest, LettersCanBeReadWhereShapesCanBeSeen) {
  for (int i = 0; i <= 100; ++i)
    if (contrastRatio(gray(i / 100.0), white) >= 3) {
      EXPECT_GE(contrastRatio(axis.mappedText(gray(i / 100.0)), axis.ground()), 4.5) << i;
    }
  if (axis.isDark()) {
    EXPECT_GE(contrastRatio(axis.mappedText({0.15, 0.28, 0.69}), axis.ground()), 4.5);
  }
}

TEST(NeutralAxisLightTest, BlueAndRedStayWhatTheyAre) {
  const NeutralAxis axis(gray(0), gray(0.93));
  for (const Color& color : {Color{0, 0, 1}, Color{1, 0, 0}, Color{1, 0.421, 0.421}, Color{0.114, 1, 0}})
    EXPECT_EQ(axis.mapped(color), color);
}

TEST(NeutralAxisDarkTest, AGrayWithATingeIsNeutral) {
  const NeutralAxis axis(gray(1), gray(0));
  EXPECT_GT(axis.mapped({0.137, 0.145, 0.16}).red, 0.8);
  EXPECT_LT(axis.mapped({1, 0.998, 0.995}).red, 0.01);
}

TEST(NeutralAxisDarkTest, SystemColorsAndMappedColorsStay) {
  const NeutralAxis axis(gray(1), gray(0));
  const Color once = axis.mapped(gray(0.25));
  EXPECT_EQ(axis.mapped(once), once);
  for (const Ref<NSColor>& color : {NSColor::controlTextColor(), NSColor::controlTextColor()->colorWithAlphaComponent(0.5),
                                    NSColor::controlColor()->blendedColorWithFraction(0.5, NSColor::blackColor()),
                                    NSColor::blackColor()->blendedColorWithFraction(0.5, NSColor::controlColor())})
    EXPECT_EQ(axis.mapped(color->components()), color->components());
  EXPECT_NE(axis.mapped(NSColor::blackColor()->components()), NSColor::blackColor()->components());
}

TEST(NeutralAxisDarkTest, AShadowDoesNotBecomeAGlow) {
  EXPECT_EQ(NeutralAxis(gray(1), gray(0.1)).mappedShadow(gray(0, 0.5)), gray(0, 0.5));
}
