#include "tools/artwork/nearestNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace artwork {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(NearestNames, DistanceCountsSingleCharacters) {
  EXPECT_EQ(editDistance("", ""), 0);
  EXPECT_EQ(editDistance("", "abc"), 3);
  EXPECT_EQ(editDistance("kitten", "sitting"), 3);
  EXPECT_EQ(editDistance("drawPlay", "DRAWPLAY"), 0);
}

TEST(NearestNames, NearestComesFirstAndFarOnesAreLeftOut) {
  const std::string_view names[] = {"pause", "paws", "play", "previous"};
  EXPECT_THAT(nearestNames("pausw", names), ElementsAre("pause", "paws"));
  EXPECT_THAT(nearestNames("something else", names), IsEmpty());
}

TEST(NearestNames, NeverMoreThanThree) {
  const std::string_view names[] = {"aaa1", "aaa2", "aaa3", "aaa4"};
  EXPECT_THAT(nearestNames("aaa5", names), ElementsAre("aaa1", "aaa2", "aaa3"));
  EXPECT_EQ(suggestion("aaa5", names), "; did you mean aaa1, aaa2 or aaa3?");
}

}  // namespace
}  // namespace artwork
