#include "tessaluna/platform/foundation/NSNumber.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tessaluna/platform/foundation/NSString.h"

using namespace tessaluna::platform;

TEST(NSNumber, ReadsAsEachKindOfNumber) {
  const auto number = make<NSNumber>(-2.75);
  EXPECT_EQ(number->doubleValue(), -2.75);
  EXPECT_EQ(number->floatValue(), -2.75f);
  EXPECT_EQ(number->integerValue(), -2);
  EXPECT_EQ(number->stringValue(), "-2.75");
  EXPECT_TRUE(number->boolValue());
  EXPECT_FALSE(make<NSNumber>(0.0)->boolValue());
  EXPECT_EQ(make<NSNumber>(true)->integerValue(), 1);
}

TEST(NSNumber, KeepsWholeNumbersThatNoDoubleHolds) {
  constexpr std::int64_t odd = (std::int64_t{1} << 60) + 1;
  const auto number = make<NSNumber>(odd);
  EXPECT_EQ(number->integerValue(), odd);
  EXPECT_EQ(number->stringValue(), "1152921504606846977");
  EXPECT_FALSE(number->isEqual(make<NSNumber>(odd - 1).get()));
}

TEST(NSNumber, IsMadeOfWholeNumbersOfAnyType) {
  EXPECT_EQ(make<NSNumber>(std::size_t{7})->stringValue(), "7");
  EXPECT_EQ(make<NSNumber>(7u)->stringValue(), "7");
  EXPECT_EQ(make<NSNumber>(-7LL)->stringValue(), "-7");
  EXPECT_EQ(make<NSNumber>(short{-7})->stringValue(), "-7");
  EXPECT_EQ(make<NSNumber>(~std::uint64_t{0})->doubleValue(), 18446744073709551616.0);
}

TEST(NSNumber, ASinglePrecisionNumberHasTheShortestTextThatReadsBackAsIt) {
  EXPECT_EQ(make<NSNumber>(0.1f)->stringValue(), "0.1");
  EXPECT_EQ(make<NSNumber>(-0.0f)->stringValue(), "0");
  EXPECT_EQ(make<NSNumber>(16777216.0f)->stringValue(), "16777216");
  EXPECT_EQ(make<NSNumber>(0.1f)->doubleValue(), static_cast<double>(0.1f));
  EXPECT_EQ(make<NSNumber>(-2.5f)->integerValue(), -2);
  EXPECT_TRUE(make<NSNumber>(0.5f)->isEqual(make<NSNumber>(0.5).get()));
  EXPECT_FALSE(make<NSNumber>(0.1f)->isEqual(make<NSNumber>(0.1).get()));
}

TEST(NSNumber, AnIntegerOfANumberOutOfRangeIsTheNearest) {
  using Limits = std::numeric_limits<std::int64_t>;
  EXPECT_EQ(make<NSNumber>(1e30)->integerValue(), Limits::max());
  EXPECT_EQ(make<NSNumber>(-1e30)->integerValue(), Limits::min());
  EXPECT_EQ(make<NSNumber>(HUGE_VAL)->integerValue(), Limits::max());
  EXPECT_EQ(make<NSNumber>(std::nan(""))->integerValue(), 0);
}

TEST(NSNumber, EqualNumbersAreEqualHoweverTheyWereMade) {
  EXPECT_TRUE(make<NSNumber>(2)->isEqual(make<NSNumber>(2.0).get()));
  EXPECT_FALSE(make<NSNumber>(2)->isEqual(make<NSNumber>(2.5).get()));
  EXPECT_FALSE(make<NSNumber>(2)->isEqual(make<NSString>("2").get()));
  EXPECT_FALSE(make<NSNumber>(2)->isEqual(nullptr));
}
