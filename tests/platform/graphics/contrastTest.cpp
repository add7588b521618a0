#include "tessaluna/platform/graphics/contrast.h"

#include <gtest/gtest.h>

namespace tessaluna::platform {
namespace {

constexpr backend::Color black{0, 0, 0}, white{1, 1, 1};

TEST(ContrastTest, OfBlackOnWhiteIsTwentyOneInBothOrders) {
  EXPECT_NEAR(contrastRatio(black, white), 21, 1e-9);
  EXPECT_NEAR(contrastRatio(white, black), 21, 1e-9);
}

TEST(ContrastTest, OfAColorOnItselfIsOne) {
  const backend::Color color{0.2, 0.7, 0.4};
  EXPECT_NEAR(contrastRatio(color, color), 1, 1e-9);
}

TEST(ContrastTest, OfAGrayGoesByItsLuminance) {
  // The lightest gray of eight bits that is legible on white by the usual measure, 4.5 : 1.
  const backend::Color gray{0x76 / 255.0, 0x76 / 255.0, 0x76 / 255.0};
  EXPECT_NEAR(contrastRatio(gray, white), 4.54, 0.01);
}

TEST(ContrastTest, OfATranslucentColorIsThatOfWhatIsSeen) {
  const backend::Color half{0, 0, 0, 0.5};
  EXPECT_NEAR(contrastRatio(half, white), contrastRatio({0.5, 0.5, 0.5}, white), 1e-9);
  EXPECT_NEAR(contrastRatio({0, 0, 0, 0}, white), 1, 1e-9);
}

}  // namespace
}  // namespace tessaluna::platform
