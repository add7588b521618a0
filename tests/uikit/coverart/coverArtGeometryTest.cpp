#include "tessaluna/uikit/coverart/coverArtGeometry.h"

#include <gtest/gtest.h>

#include <limits>

#include "tessaluna/platform/graphics/NSImageRep.h"
#include "tests/harness/printing.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;

Ref<NSImageRep> rep(int wide, int high) { return make<NSImageRep>(CGSize{1, 1}, wide, high); }

TEST(naturalSizeOf, IsThatOfTheWidestRepresentationTheFirstOfSeveral) {
  const struct {
    const char* name;
    std::vector<Ref<NSImageRep>> representations;
    CGSize expected;
  } cases[] = {
      {"none", {}, {0, 0}},
      {"one", {rep(300, 200)}, {300, 200}},
      {"the widest last", {rep(64, 64), rep(600, 400), rep(900, 100)}, {900, 100}},
      {"the widest first", {rep(900, 100), rep(600, 700)}, {900, 100}},
      {"the first of equal width", {rep(600, 400), rep(600, 800)}, {600, 400}},
      {"without pixels", {rep(0, 0), rep(0, 50)}, {0, 0}},
      {"one with pixels among others", {rep(0, 0), rep(1, 2), rep(0, 9)}, {1, 2}},
  };
  for (const auto& each : cases) EXPECT_EQ(naturalSizeOf(each.representations), each.expected) << each.name;
}

TEST(naturalSizeOf, LeavesEachRepresentationWithAPointPerPixel) {
  const std::vector<Ref<NSImageRep>> representations{rep(300, 200), rep(0, 0), rep(30, 20)};
  naturalSizeOf(representations);
  for (const Ref<NSImageRep>& each : representations)
    EXPECT_EQ(each->size(), (CGSize{double(each->pixelsWide()), double(each->pixelsHigh())}));
}

// Says of itself what no pixels can be.
class BoastfulRep : public NSImageRep {
 public:
  explicit BoastfulRep(CGFloat width) : NSImageRep({1, 1}, 10, 10), width_(width) {}
  CGSize size() const override { return {width_, 10}; }

 private:
  CGFloat width_;
};

TEST(naturalSizeOfDeathTest, AWidthThatIsNotAWholeNumberOf64BitsStopsTheProgram) {
  constexpr double infinity = std::numeric_limits<double>::infinity(),
                   beyond = 9223372036854775808.0;  // 2 to the power of 63
  for (const double width : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN(), beyond, -9.3e18})
    EXPECT_DEATH(naturalSizeOf({make<BoastfulRep>(width), rep(20, 20)}), "width of an image is not a whole number") << width;
  EXPECT_DEATH(naturalSizeOf({make<BoastfulRep>(infinity)}), "width of an image is not a whole number") << "the only one";
  EXPECT_EQ(naturalSizeOf({make<BoastfulRep>(19.9), rep(20, 20)}), (CGSize{20, 20})) << "cut to a whole number";
  EXPECT_EQ(naturalSizeOf({make<BoastfulRep>(20.9), rep(20, 20)}), (CGSize{20.9, 10}));
  EXPECT_EQ(naturalSizeOf({make<BoastfulRep>(-beyond), rep(20, 20)}), (CGSize{20, 20})) << "the least of 64 bits";
}

TEST(frameOfEnlargedCover, FitsTheRoomToTheRightAndBelow) {
  const CGRect screen{0, 0, 1440, 900};
  const struct {
    const char* name;
    CGSize size;
    CGRect thumbnail, screen, expected;
  } cases[] = {
      {"plenty of room", {300, 300}, {100, 500, 64, 64}, screen, {100, 264, 300, 300}},
      {"to the width, then to the height", {3000, 1500}, {440, 336, 64, 64}, screen, {440, 0, 800, 400}},
      {"to the width alone", {3000, 1500}, {440, 836, 64, 64}, screen, {440, 400, 1000, 500}},
      {"to the height alone", {100, 1000}, {440, 336, 64, 64}, screen, {440, 0, 40, 400}},
      {"exactly the room", {1000, 400}, {440, 336, 64, 64}, screen, {440, 0, 1000, 400}},
      {"smaller than the thumbnail", {10, 20}, {100, 500, 64, 64}, screen, {100, 544, 10, 20}},
      {"nothing", {0, 0}, {100, 500, 64, 64}, screen, {100, 564, 0, 0}},
      {"nothing is rounded", {300.5, 100.25}, {0.25, 0.5, 1, 500}, screen, {0.25, 400.25, 300.5, 100.25}},
      {"a visible frame within the screen", {5000, 5000}, {100, 500, 64, 64}, {60, 40, 1380, 800}, {100, 40, 524, 524}},
      {"the height above the thumbnail counts for nothing", {100, 800}, {0, 36, 64, 64}, screen, {0, 0, 12.5, 100}},
      {"beyond the right edge", {200, 100}, {1500, 500, 64, 64}, screen, {1500, 594, -60, -30}},
      {"a screen left of the primary one",
       {4000, 100},
       {-900, 0, 64, 64},
       {-1000, -200, 1000, 900},
       {-900, 41.5, 900, 22.5}},
  };
  for (const auto& each : cases)
    EXPECT_EQ(frameOfEnlargedCover(each.size, each.thumbnail, each.screen), each.expected) << each.name;
}

}  // namespace
}  // namespace TessalunaUIKit
