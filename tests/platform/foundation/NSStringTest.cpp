#include "tessaluna/platform/foundation/NSString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace tessaluna::platform;

TEST(NSString, ADoubleIsTheNumberThatTheTextBeginsWith) {
  const auto read = [](std::string_view text) { return make<NSString>(text)->doubleValue(); };
  EXPECT_EQ(read("2.5"), 2.5);
  EXPECT_EQ(read(" \t-2.5e1 points"), -25);
  EXPECT_EQ(read("+.5"), 0.5);
  EXPECT_EQ(read("7,5"), 7);
  EXPECT_EQ(make<NSString>("0.1")->floatValue(), 0.1f);
}

TEST(NSString, ATextThatBeginsWithNoNumberReadsAsZero) {
  for (const char* text : {"", " ", "abc", "-", ".", "+-1", "--1", "inf", "nan", "e5"}) {
    EXPECT_EQ(make<NSString>(text)->doubleValue(), 0) << text;
    EXPECT_EQ(make<NSString>(text)->integerValue(), 0) << text;
  }
}

TEST(NSString, ADoubleOutOfRangeIsInfiniteOrZero) {
  const auto read = [](std::string_view text) { return make<NSString>(text)->doubleValue(); };
  EXPECT_EQ(read("1e999"), HUGE_VAL);
  EXPECT_EQ(read("-1E+999"), -HUGE_VAL);
  EXPECT_EQ(read("1e-999"), 0);
  EXPECT_EQ(read(std::string(400, '9')), HUGE_VAL);
  EXPECT_EQ(read(std::string(400, '9') + ".5"), HUGE_VAL);
  EXPECT_EQ(read("0." + std::string(400, '0') + "1"), 0);
}

TEST(NSString, AnIntegerStopsAtTheFirstCharacterThatIsNotADigit) {
  const auto read = [](std::string_view text) { return make<NSString>(text)->integerValue(); };
  EXPECT_EQ(read("42"), 42);
  EXPECT_EQ(read(" -42.9"), -42);
  EXPECT_EQ(read("1152921504606846977"), 1152921504606846977);
  EXPECT_EQ(read("99999999999999999999"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(read("-99999999999999999999"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(read("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(NSString, EqualTextsAreEqual) {
  EXPECT_TRUE(make<NSString>("a")->isEqual(make<NSString>("a").get()));
  EXPECT_FALSE(make<NSString>("a")->isEqual(make<NSString>("b").get()));
  EXPECT_FALSE(make<NSString>("a")->isEqual(nullptr));
}
