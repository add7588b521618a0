#include "tests/harness/expectedFile.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;
using harness::differenceOf;

TEST(expectedFile, EqualTextsDoNotDiffer) {
  EXPECT_EQ(differenceOf({"# a", "b"}, {"# a", "b"}), "");
  EXPECT_EQ(differenceOf({}, {}), "");
}

TEST(expectedFile, OfALongLineOnlyTheSurroundingsOfTheDifferenceAreShown) {
  const std::string start(1000, 's'), end(1000, 'e');
  EXPECT_EQ(
      differenceOf({"# small", "a", "# large", start + "1" + end, "c"}, {"# small", "a", "# large", start + "2" + end, "c"}),
      "line 4, character 1001, below \"# large\"\n"
      "  expected  ..." +
          std::string(40, 's') + "1" + std::string(119, 'e') +
          "...\n"
          "  now       ..." +
          std::string(40, 's') + "2" + std::string(119, 'e') +
          "...\n"
          "1 of 5 lines differ");
}

TEST(expectedFile, ADifferenceAtTheStartOfALineIsShownWithTheWholeLine) {
  EXPECT_EQ(differenceOf({"left", "same", "up"}, {"right", "same", "down"}),
            "line 1, character 1\n  expected  left\n  now       right\n2 of 3 lines differ");
}

TEST(expectedFile, LinesThatAreMissingOrAddedAreCounted) {
  EXPECT_EQ(differenceOf({"a", "b"}, {"a"}),
            "line 2, character 1\n  expected  b\n  now       (nothing)\nThere are 1 lines in place of 2");
  EXPECT_EQ(differenceOf({"a"}, {"a", "b"}),
            "line 2, character 1\n  expected  (nothing)\n  now       b\nThere are 2 lines in place of 1");
}

TEST(expectedFile, ALineThatEndsEarlierIsShownToTheEndOfBoth) {
  EXPECT_EQ(differenceOf({"one two"}, {"one"}),
            "line 1, character 4\n  expected  one two\n  now       one\n1 of 1 lines differ");
}

}  // namespace
