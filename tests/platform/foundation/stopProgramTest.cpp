#include "tessaluna/platform/foundation/stopProgram.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace tessaluna::platform;

TEST(stopProgramDeathTest, WritesItsReportAsALineAndAborts) {
  EXPECT_EXIT(stopProgram("the report"), testing::KilledBySignal(SIGABRT), "^the report\n$");
}

TEST(stopProgramDeathTest, AnUnimplementedInitializerNamesClassAndInitializer) {
  EXPECT_DEATH(stopUnimplementedInitializer("TessalunaUIKit.BorderedView", "init(frame:)"),
               "TessalunaUIKit.BorderedView.*init\\(frame:\\)");
}

TEST(stopProgramDeathTest, AnUnreachablePlaceStopsInReleaseBuildsToo) { EXPECT_DEATH(unreachable(), "impossible state"); }
