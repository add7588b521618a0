#include "tessaluna/platform/foundation/NSCoder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/harness/printing.h"

using namespace tessaluna::platform;

TEST(NSCoder, ReadsEachKindOfValueByItsKey) {
  NSCoder coder(R"({"b": true, "i": -7, "d": 2.5, "s": "hé", "p": [1, 2.5], "z": [3, 4], "r": [1, 2, 3, 4.5]})");
  EXPECT_FALSE(coder.failed());
  EXPECT_TRUE(coder.decodeBoolForKey("b"));
  EXPECT_EQ(coder.decodeIntegerForKey("i"), -7);
  EXPECT_EQ(coder.decodeDoubleForKey("d"), 2.5);
  EXPECT_EQ(coder.decodeStringForKey("s"), "hé");
  EXPECT_EQ(coder.decodePointForKey("p"), (CGPoint{1, 2.5}));
  EXPECT_EQ(coder.decodeSizeForKey("z"), (CGSize{3, 4}));
  EXPECT_EQ(coder.decodeRectForKey("r"), (CGRect{1, 2, 3, 4.5}));
}

TEST(NSCoder, AMissingKeyReadsAsZeroFalseOrAbsent) {
  const NSCoder coder("{}");
  EXPECT_FALSE(coder.containsValueForKey("x"));
  EXPECT_FALSE(coder.decodeBoolForKey("x"));
  EXPECT_EQ(coder.decodeIntegerForKey("x"), 0);
  EXPECT_EQ(coder.decodeDoubleForKey("x"), 0);
  EXPECT_EQ(coder.decodeStringForKey("x"), std::nullopt);
  EXPECT_EQ(coder.decodeRectForKey("x"), NSZeroRect);
  EXPECT_FALSE(coder.decodeCoderForKey("x").has_value());
  EXPECT_FALSE(coder.failed());
}

TEST(NSCoder, AValueOfAnotherKindReadsAsMissing) {
  const NSCoder coder(R"({"x": "1", "n": 1, "list": [1, 2, "3", 4], "short": [1, 2, 3], "object": {}, "null": null})");
  EXPECT_TRUE(coder.containsValueForKey("x"));
  EXPECT_FALSE(coder.decodeBoolForKey("n"));
  EXPECT_EQ(coder.decodeIntegerForKey("x"), 0);
  EXPECT_EQ(coder.decodeDoubleForKey("x"), 0);
  EXPECT_EQ(coder.decodeStringForKey("n"), std::nullopt);
  EXPECT_EQ(coder.decodeRectForKey("list"), NSZeroRect);
  EXPECT_EQ(coder.decodeRectForKey("short"), NSZeroRect);
  EXPECT_EQ(coder.decodeRectForKey("object"), NSZeroRect);
  EXPECT_EQ(coder.decodePointForKey("n"), CGPoint{});
  EXPECT_FALSE(coder.decodeCoderForKey("list").has_value());
  EXPECT_EQ(coder.decodeStringForKey("null"), std::nullopt);
  EXPECT_EQ(coder.decodeDoubleForKey("null"), 0);
}

TEST(NSCoder, AnArrayOfNothingButStringsReadsAsStrings) {
  const NSCoder coder(R"({"names": ["hé", "", "b"], "none": [], "mixed": ["a", 1], "text": "a", "null": null})");
  EXPECT_EQ(coder.decodeStringsForKey("names"), (std::vector<std::string>{"hé", "", "b"}));
  EXPECT_EQ(coder.decodeStringsForKey("none"), std::vector<std::string>());
  EXPECT_EQ(coder.firstMisfitKey(), std::nullopt);
  for (const char* key : {"mixed", "text", "null", "missing"})
    EXPECT_EQ(coder.decodeStringsForKey(key), std::nullopt) << key;
  EXPECT_EQ(coder.firstMisfitKey(), "mixed");
}

TEST(NSCoder, AnIntegerOutOfRangeReadsAsZero) {
  const NSCoder coder(R"({"unsigned": 18446744073709551615, "large": 1e300, "beyond": 9223372036854775808,
                          "longest": 123456789012345678901234567890})");
  EXPECT_EQ(coder.decodeIntegerForKey("unsigned"), 0);
  EXPECT_EQ(coder.decodeIntegerForKey("large"), 0);
  EXPECT_EQ(coder.decodeIntegerForKey("beyond"), 0);
  EXPECT_EQ(coder.decodeIntegerForKey("longest"), 0);
  EXPECT_EQ(coder.decodeDoubleForKey("large"), 1e300);
  EXPECT_EQ(coder.decodeDoubleForKey("unsigned"), 18446744073709551615.0);
}

TEST(NSCoder, ADoubleBeyondTheLargestIntegerReadsAsZero) {
  const NSCoder coder(R"({"beyond": 9223372036854775808.0, "within": 9223372036854774784.0})");
  EXPECT_EQ(coder.decodeIntegerForKey("beyond"), 0);
  EXPECT_EQ(coder.decodeIntegerForKey("within"), 9223372036854774784);
}

TEST(NSCoder, TheLargestAndSmallestIntegersAreRead) {
  const NSCoder coder(R"({"most": 9223372036854775807, "least": -9223372036854775808})");
  EXPECT_EQ(coder.decodeIntegerForKey("most"), INT64_MAX);
  EXPECT_EQ(coder.decodeIntegerForKey("least"), INT64_MIN);
}

TEST(NSCoder, AFractionIsNotAnIntegerButAWholeDoubleIs) {
  const NSCoder coder(R"({"half": 1.5, "whole": 3.0})");
  EXPECT_EQ(coder.decodeIntegerForKey("half"), 0);
  EXPECT_EQ(coder.decodeIntegerForKey("whole"), 3);
}

TEST(NSCoder, ANumberBeyondADoubleFailsTheArchive) { EXPECT_TRUE(NSCoder(R"({"x": 1e999})").failed()); }

TEST(NSCoder, ATextThatIsNotJsonFailsAndSaysSo) {
  const struct {
    const char* text;
    const char* place;
  } cases[] = {
      {"", "line 1, column 1"},
      {"{", "line 1, column 2"},
      {"{\"a\": }", "line 1, column 7"},
      {"{\n  \"a\": 1,\n  \"b\" 2\n}", "line 3, column 7"},
      {"{\"é\": nul}", "line 1, column 10"},
      {"{\"a\": \"\xff\"}", "line 1, column 8"},
      {"{} {}", "line 1, column 4"},
      {"{\"a\":\n1e999}", "line 2, column 5"},
  };
  for (const auto& [text, place] : cases) {
    const NSCoder coder(text);
    EXPECT_EQ(coder.failure(), std::string("the archive is not JSON: ") + place) << text;
    EXPECT_FALSE(coder.containsValueForKey("a"));
  }
}

TEST(NSCoder, AJsonTextThatIsNotAnObjectFailsAndSaysSo) {
  for (const char* text : {"[1, 2]", "3", "null", "\"text\""})
    EXPECT_EQ(NSCoder(text).failure(), "the archive is not a JSON object") << text;
}

TEST(NSCoder, AKeyThatAnObjectHasTwiceFailsTheArchive) {
  const std::string failure = "the archive has an object with the key \"a\" twice";
  EXPECT_EQ(NSCoder(R"({"a": 1, "a": 1})").failure(), failure);
  EXPECT_EQ(NSCoder(R"({"b": [{}, {"a": {"b": 1}, "c": 2, "\u0061": 3}]})").failure(), failure);
  EXPECT_FALSE(NSCoder(R"({"b": [{"a": 1}, {"a": {"a": 2}}], "a": 3})").failed());
}

TEST(NSCoder, ADeeplyNestedTextDoesNoHarm) {
  std::string text = "{\"a\": ";
  for (int i = 0; i < 100000; ++i) text += '[';
  for (int i = 0; i < 100000; ++i) text += ']';
  const NSCoder coder(text + "}");
  EXPECT_EQ(coder.decodeRectForKey("a"), NSZeroRect);
}

TEST(NSCoder, AnObjectBelowAKeyIsACoderOfItsOwn) {
  NSCoder coder(R"({"cell": {"title": "Play", "inner": {"tag": 3}}})");
  auto cell = coder.decodeCoderForKey("cell");
  ASSERT_TRUE(cell.has_value());
  EXPECT_EQ(cell->decodeStringForKey("title"), "Play");
  EXPECT_EQ(cell->decodeCoderForKey("inner")->decodeIntegerForKey("tag"), 3);
  EXPECT_FALSE(cell->containsValueForKey("cell"));
}

TEST(NSCoder, WhatIsBuiltInCodeReadsBack) {
  NSCoder inner, coder;
  inner.encode("Play", "title");
  coder.encode(true, "b").encode(3, "i").encode(2.5, "d").encode(CGPoint{1, 2}, "p").encode(CGSize{3, 4}, "z");
  coder.encode(CGRect{1, 2, 3, 4}, "r").encode(inner, "cell");
  EXPECT_TRUE(coder.decodeBoolForKey("b"));
  EXPECT_EQ(coder.decodeIntegerForKey("i"), 3);
  EXPECT_EQ(coder.decodeDoubleForKey("i"), 3);
  EXPECT_EQ(coder.decodeDoubleForKey("d"), 2.5);
  EXPECT_EQ(coder.decodePointForKey("p"), (CGPoint{1, 2}));
  EXPECT_EQ(coder.decodeSizeForKey("z"), (CGSize{3, 4}));
  EXPECT_EQ(coder.decodeRectForKey("r"), (CGRect{1, 2, 3, 4}));
  EXPECT_EQ(coder.decodeCoderForKey("cell")->decodeStringForKey("title"), "Play");
}

TEST(NSCoder, ALaterValueReplacesAnEarlierOne) {
  NSCoder coder;
  coder.encode(1, "x").encode("text", "x");
  EXPECT_EQ(coder.decodeIntegerForKey("x"), 0);
  EXPECT_EQ(coder.decodeStringForKey("x"), "text");
}

TEST(NSCoder, TheFirstFailureStays) {
  NSCoder coder;
  coder.fail("first");
  coder.fail("second");
  EXPECT_EQ(coder.failure(), "first");
}

TEST(NSCoder, DistinguishesAMissingValueFromFalseAndZero) {
  const NSCoder coder(R"({"no": false, "zero": 0, "text": "0"})");
  EXPECT_EQ(coder.boolForKey("no"), false);
  EXPECT_EQ(coder.boolForKey("zero"), std::nullopt);
  EXPECT_EQ(coder.boolForKey("missing"), std::nullopt);
  EXPECT_EQ(coder.numberForKey("zero"), 0.0);
  EXPECT_EQ(coder.numberForKey("no"), std::nullopt);
  EXPECT_EQ(coder.numberForKey("text"), std::nullopt);
  EXPECT_EQ(coder.allKeys(), (std::vector<std::string>{"no", "text", "zero"}));
}

TEST(NSCoder, AnArrayOfObjectsIsSeveralCoders) {
  const NSCoder coder(R"({"all": [{"n": 1}, {"n": 2}], "none": [], "mixed": [{}, 1], "object": {}})");
  const auto all = coder.decodeCodersForKey("all");
  ASSERT_TRUE(all && all->size() == 2);
  EXPECT_EQ((*all)[1].decodeIntegerForKey("n"), 2);
  EXPECT_TRUE(coder.decodeCodersForKey("none")->empty());
  for (const char* key : {"mixed", "object", "missing"}) EXPECT_FALSE(coder.decodeCodersForKey(key)) << key;
}

TEST(NSCoder, AWriteIsSeenByNoOther) {
  NSCoder outer(R"({"inner": {"n": 1}})");
  NSCoder inner = *outer.decodeCoderForKey("inner"), copy = outer.copy();
  inner.encode(2, "n");
  outer.encode(3, "m");
  EXPECT_EQ(outer.decodeCoderForKey("inner")->decodeIntegerForKey("n"), 1);
  EXPECT_FALSE(copy.containsValueForKey("m"));
  EXPECT_EQ(inner.decodeIntegerForKey("n"), 2);
  inner.encode(inner, "self");
  EXPECT_EQ(inner.decodeCoderForKey("self")->decodeIntegerForKey("n"), 2);
}

TEST(NSCoder, AnInnerCoderOutlivesTheOuterOne) {
  std::optional<NSCoder> inner;
  {
    NSCoder outer(R"({"inner": {"text": "kept"}})");
    inner = outer.decodeCoderForKey("inner");
  }
  EXPECT_EQ(inner->decodeStringForKey("text"), "kept");
}

namespace tessaluna::platform {

enum class Corner { Left = 3, Right = 5 };
template <>
struct EnumNames<Corner> {
  static constexpr NamedValue all[] = {{"left", 3}, {"right", 5}};
};

TEST(NSCoder, AnEnumIsReadByNameOrNumber) {
  const NSCoder coder(R"({"name": "right", "number": 3, "unknown": "top", "beyond": 4, "fraction": 3.5, "other": true})");
  EXPECT_EQ(coder.decodeEnumForKey<Corner>("name"), Corner::Right);
  EXPECT_EQ(coder.decodeEnumForKey<Corner>("number"), Corner::Left);
  for (const char* key : {"unknown", "beyond", "fraction", "other", "missing"})
    EXPECT_EQ(coder.decodeEnumForKey<Corner>(key), std::nullopt) << key;
}

TEST(NSCoder, AnArrayOfNumbersHoldsNothingElse) {
  const NSCoder coder(R"({"some": [1, 2.5], "none": [], "mixed": [1, "2"], "number": 1})");
  EXPECT_EQ(coder.decodeNumbersForKey("some"), (std::vector<double>{1, 2.5}));
  EXPECT_EQ(coder.decodeNumbersForKey("none"), std::vector<double>());
  EXPECT_EQ(coder.decodeNumbersForKey("mixed"), std::nullopt);
  EXPECT_EQ(coder.decodeNumbersForKey("number"), std::nullopt);
}

TEST(NSCoder, AKeyIsUnknownUntilItIsAskedForOrOverlooked) {
  NSCoder coder(R"({"a": 1, "b": true, "c": "text"})");
  EXPECT_EQ(coder.firstUnknownKey(), "a");
  coder.decodeIntegerForKey("a");
  EXPECT_EQ(coder.firstUnknownKey(), "b");
  coder.containsValueForKey("b");
  EXPECT_EQ(coder.firstUnknownKey(), "c");
  coder.overlookKeys({"c", "absent"});
  EXPECT_EQ(coder.firstUnknownKey(), std::nullopt);
  EXPECT_EQ(coder.copy().firstUnknownKey(), "a");
}

TEST(NSCoder, AValueIsAMisfitIfNoQuestionFitsIt) {
  NSCoder coder(R"({"a": "1", "b": [1, 2], "c": "center", "d": 1.5})");
  coder.containsValueForKey("a");
  EXPECT_EQ(coder.firstMisfitKey(), std::nullopt);
  coder.decodeDoubleForKey("a");
  EXPECT_EQ(coder.firstMisfitKey(), "a");
  coder.decodeStringForKey("a");
  EXPECT_EQ(coder.firstMisfitKey(), std::nullopt);
  coder.decodeRectForKey("b");
  EXPECT_EQ(coder.firstMisfitKey(), "b");
  coder.decodeSizeForKey("b");
  coder.decodeEnumForKey<Corner>("c");
  EXPECT_EQ(coder.firstMisfitKey(), "c");
  coder.overlookKeys({"d"});
  coder.decodeStringForKey("c");
  EXPECT_EQ(coder.firstMisfitKey(), std::nullopt);
  coder.decodeIntegerForKey("d");
  EXPECT_EQ(coder.firstMisfitKey(), "d");
}

TEST(NSCoder, QuestionsToAnInnerObjectAreItsOwn) {
  NSCoder coder(R"({"inner": {"a": 1}, "a": 2})");
  coder.decodeCoderForKey("inner")->decodeIntegerForKey("a");
  EXPECT_EQ(coder.decodeCoderForKey("inner")->firstUnknownKey(), std::nullopt);
  EXPECT_EQ(coder.firstUnknownKey(), "a");
}

}  // namespace tessaluna::platform
