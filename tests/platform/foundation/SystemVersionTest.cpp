#include "tessaluna/platform/foundation/SystemVersion.h"

#include "tests/harness/StillWorld.h"

using namespace tessaluna::platform;

class SystemVersion : public harness::StillWorld {};

TEST_F(SystemVersion, IsTenFifteenAndTheKitIsAbove1187) {
  EXPECT_EQ(operatingSystemVersion(), (NSOperatingSystemVersion{10, 15, 0}));
  EXPECT_GT(NSAppKitVersionNumber, 1187);
}

TEST_F(SystemVersion, IsComparedByMajorThenMinorThenPatch) {
  setOperatingSystemVersion({10, 10, 0});
  EXPECT_TRUE(isOperatingSystemAtLeastVersion({10, 10, 0}));
  EXPECT_TRUE(isOperatingSystemAtLeastVersion({10, 9, 9}));
  EXPECT_TRUE(isOperatingSystemAtLeastVersion({9, 99, 99}));
  EXPECT_FALSE(isOperatingSystemAtLeastVersion({10, 10, 1}));
  EXPECT_FALSE(isOperatingSystemAtLeastVersion({11, 0, 0}));
}
