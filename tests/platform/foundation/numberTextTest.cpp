#include "tessaluna/platform/foundation/numberText.h"

#include <gtest/gtest.h>

using tessaluna::platform::numberText;

TEST(numberText, IsTheShortestTextThatReadsBackTheSame) {
  EXPECT_EQ(numberText(0.1), "0.1");
  EXPECT_EQ(numberText(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(numberText(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(numberText(-28.52), "-28.52");
}

TEST(numberText, AWholeNumberHasNoPoint) {
  EXPECT_EQ(numberText(32), "32");
  EXPECT_EQ(numberText(-1), "-1");
}

TEST(numberText, MinusZeroIsZero) { EXPECT_EQ(numberText(-0.0), "0"); }

TEST(numberText, VeryLargeAndVerySmallNumbersAreStillJson) {
  EXPECT_EQ(numberText(1e300), "1e+300");
  EXPECT_EQ(numberText(1e-7), "1e-07");
}
