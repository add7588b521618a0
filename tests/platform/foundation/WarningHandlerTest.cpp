#include "tessaluna/platform/foundation/WarningHandler.h"

#include <gmock/gmock.h>

using namespace tessaluna::platform;
using testing::ElementsAre;

TEST(WarningHandlerTest, AFunctionGetsEachLine) {
  std::vector<std::string> lines;
  WarningHandler handler;
  handler.set([&](const std::string& line) { lines.push_back(line); });
  handler.warn("one");
  handler.warn("two");
  EXPECT_THAT(lines, ElementsAre("one", "two"));
}

TEST(WarningHandlerTest, WithoutAFunctionDebugBuildsWriteToStandardError) {
  testing::internal::CaptureStderr();
  WarningHandler().warn("a line");
#ifdef NDEBUG
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
#else
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "a line\n");
#endif
}

TEST(WarningHandlerTest, AFunctionMaySetAnotherOne) {
  std::vector<std::string> lines;
  WarningHandler handler;
  handler.set([&, name = std::string("first: ")](const std::string& line) {
    handler.set([&](const std::string& later) { lines.push_back("second: " + later); });
    lines.push_back(name + line);
  });
  handler.warn("a");
  handler.warn("b");
  EXPECT_THAT(lines, ElementsAre("first: a", "second: b"));
}
