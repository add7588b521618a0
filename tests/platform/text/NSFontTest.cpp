#include "tessaluna/platform/text/NSFont.h"

#include "tests/harness/StillWorld.h"

using namespace tessaluna::platform;

using NSFontTest = harness::StillWorld;

TEST_F(NSFontTest, SystemSizesAreThirteenElevenAndTen) {
  EXPECT_EQ(NSFont::systemFontSize(), 13);
  EXPECT_EQ(NSFont::smallSystemFontSize(), 11);
  EXPECT_EQ(NSFont::labelFontSize(), 10);
}

TEST_F(NSFontTest, ASizeThatIsNotPositiveMeansTheUsualOne) {
  EXPECT_EQ(NSFont::systemFontOfSize(0)->pointSize(), 13);
  EXPECT_EQ(NSFont::boldSystemFontOfSize(-1)->pointSize(), 13);
  EXPECT_EQ(NSFont::labelFontOfSize(0)->pointSize(), 10);
  EXPECT_TRUE(NSFont::labelFontOfSize(20)->isEqual(NSFont::systemFontOfSize(20).get())) << "not bold";
  EXPECT_EQ(NSFont::systemFontOfSize(20)->pointSize(), 20);
}

TEST_F(NSFontTest, AFamilyThatIsNotExactlyInstalledIsAbsent) {
  EXPECT_EQ(NSFont::fontWithName("Headles", 12), nullptr);
  EXPECT_EQ(NSFont::fontWithName("headless", 12), nullptr);
  EXPECT_EQ(NSFont::fontWithName("", 12), nullptr);
  ASSERT_NE(NSFont::fontWithName("Headless", 12), nullptr);
  EXPECT_EQ(NSFont::fontWithName("Headless", 12)->familyName(), "Headless");
}

TEST_F(NSFontTest, AFamilyCanBeInstalled) {
  EXPECT_EQ(NSFont::fontWithName("Tall", 12), nullptr);
  desktop.textEngine().addFamily("Tall");
  EXPECT_NE(NSFont::fontWithName("Tall", 12), nullptr);
  EXPECT_EQ(NSFont::fontWithName("Tall", 0)->pointSize(), 12) << "the usual size of a family";
}

TEST_F(NSFontTest, TheDescenderIsBelowTheBaseline) {
  const auto font = NSFont::systemFontOfSize(20);
  EXPECT_DOUBLE_EQ(font->ascender(), 18);
  EXPECT_DOUBLE_EQ(font->descender(), -6);
}

TEST_F(NSFontTest, FontsAreEqualByFamilySizeAndWeight) {
  const auto font = NSFont::systemFontOfSize(12);
  EXPECT_TRUE(font->isEqual(NSFont::systemFontOfSize(12).get()));
  EXPECT_FALSE(font->isEqual(NSFont::systemFontOfSize(13).get()));
  EXPECT_FALSE(font->isEqual(NSFont::boldSystemFontOfSize(12).get()));
  EXPECT_FALSE(font->isEqual(NSFont::fontWithName("Headless", 12).get()));
}

TEST(NSFontDeathTest, MeasuringWithoutABackendStopsTheProgram) {
  EXPECT_DEATH(NSFont::systemFontOfSize(12)->ascender(), "without a backend");
}
