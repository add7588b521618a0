#include "gallery/player/playerPlaces.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/graphics/NSRect.h"
#include "tests/harness/printing.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;

bool isIn(const CGRect& part, const CGRect& whole) { return NSIntersectionRect(part, whole) == part; }

// The rectangles that are not empty.
std::vector<CGRect> partsOf(const PlayerPlaces& places) {
  std::vector<CGRect> parts;
  for (const CGRect& part : {places.back, places.forward, places.search, places.tasks, places.cover, places.sideBar,
                             places.title, places.note, places.places, places.tabs, places.list, places.transport})
    if (!NSIsEmptyRect(part)) parts.push_back(part);
  return parts;
}

TEST(PlayerPlaces, NothingOverlapsOrLeavesTheWindowAtAnySize) {
  for (CGFloat width = 300; width <= 1600; width += 7) {
    for (CGFloat height = 260; height <= 900; height += 40) {
      for (const TaskLine tasks : {TaskLine::Absent, TaskLine::Shown}) {
        const std::vector<CGRect> parts = partsOf(playerPlaces({width, height}, tasks));
        for (std::size_t i = 0; i < parts.size(); ++i) {
          ASSERT_TRUE(isIn(parts[i], {0, 0, width, height})) << width << " by " << height << ": part " << i;
          for (std::size_t j = 0; j < i; ++j)
            ASSERT_TRUE(NSIsEmptyRect(NSIntersectionRect(parts[i], parts[j])))
                << width << " by " << height << ": parts " << j << " and " << i;
        }
      }
    }
  }
}

TEST(PlayerPlaces, ALowWindowLeavesOutOtherPartsForItsList) {
  for (CGFloat width = 300; width <= 1600; width += 100)
    for (CGFloat height = 260; height <= 600; height += 10)
      EXPECT_GE(playerPlaces({width, height}, TaskLine::Shown).list.size.height, 120) << width << " by " << height;
  const PlayerPlaces low = playerPlaces({900, 310}, TaskLine::Absent), lowest = playerPlaces({900, 260}, TaskLine::Absent);
  EXPECT_TRUE(NSIsEmptyRect(low.title));
  EXPECT_FALSE(NSIsEmptyRect(low.tabs));
  EXPECT_TRUE(NSIsEmptyRect(lowest.tabs));
}

TEST(PlayerPlaces, ANarrowWindowHasAPopUpInPlaceOfTheSideBar) {
  const PlayerPlaces wide = playerPlaces({900, 600}, TaskLine::Absent), narrow = playerPlaces({480, 600}, TaskLine::Absent);
  EXPECT_FALSE(NSIsEmptyRect(wide.sideBar));
  EXPECT_TRUE(NSIsEmptyRect(wide.places));
  EXPECT_TRUE(NSIsEmptyRect(narrow.side));
  EXPECT_TRUE(NSIsEmptyRect(narrow.sideBar));
  EXPECT_FALSE(NSIsEmptyRect(narrow.places));
  EXPECT_FALSE(NSIsEmptyRect(narrow.cover)) << "small, beside the title";
}

TEST(PlayerPlaces, TasksWithoutRoomAtTheTopGetALineOfTheirOwn) {
  EXPECT_TRUE(NSIsEmptyRect(playerPlaces({480, 600}, TaskLine::Absent).tasks));
  const PlayerPlaces places = playerPlaces({480, 600}, TaskLine::Shown);
  EXPECT_TRUE(isIn(places.tasks, places.foot));
  const PlayerPlaces wide = playerPlaces({900, 600}, TaskLine::Shown);
  EXPECT_TRUE(isIn(wide.tasks, wide.top));
  EXPECT_EQ(wide.list, playerPlaces({900, 600}, TaskLine::Absent).list);
}

TEST(PlayerPlaces, ALowWindowGivesTheRoomOfTheCoverToTheSideBar) {
  EXPECT_FALSE(NSIsEmptyRect(playerPlaces({900, 600}, TaskLine::Absent).cover));
  const PlayerPlaces low = playerPlaces({900, 400}, TaskLine::Absent);
  EXPECT_TRUE(NSIsEmptyRect(low.cover));
  EXPECT_GT(low.sideBar.size.height, 200);
}

}  // namespace
}  // namespace gallery
