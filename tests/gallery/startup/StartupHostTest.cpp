#include "gallery/startup/StartupHost.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tests/harness/StillWorld.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using testing::ElementsAre;

class StartupHostTest : public harness::StillWorld {
 protected:
  StartupHostTest() {
    host->setReport([this](const std::string& what) { reports.push_back(what); });
    host->start();
  }
  void pressCross() {
    for (const Ref<NSView>& view : host->taskBar()->subviews())
      if (const auto button = std::dynamic_pointer_cast<NSButton>(view)) button->performClick(nullptr);
  }
  std::vector<std::string> reports;
  Ref<StartupHost> host = make<StartupHost>();
};

}  // namespace

TEST_F(StartupHostTest, TheSplashGoesThroughItsStepsAndCloses) {
  host->showSplash();
  const Ref<NSWindow> window = host->splash()->window();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->frame().size, (CGSize{420, 140}));
  EXPECT_TRUE(host->splash()->progressIndicator()->isAnimating());
  desktop.advance(5);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(host->splash(), nullptr);
  ASSERT_EQ(reports.size(), 6u);
  EXPECT_EQ(reports[1], "splash Opening the library");
  EXPECT_EQ(reports[5], "splash closed");
}

TEST_F(StartupHostTest, TheSplashAndAllThatIsInItHaveNames) {
  host->showSplash();
  const Ref<NSWindow> window = host->splash()->window();
  EXPECT_EQ(accessibleNameOf(window), "Tessaluna");
  std::vector<std::string> names;
  for (const Ref<NSObject>& element : accessibleChildrenOf(window)) names.push_back(accessibleNameOf(element));
  EXPECT_EQ(names.size(), 5u);
  EXPECT_THAT(names, testing::Each(testing::Ne("")));
}

TEST_F(StartupHostTest, TasksBeginRunAndAreRemoved) {
  host->beginTask(100);
  host->beginTask(100);
  EXPECT_FALSE(host->taskBar()->isHidden());
  desktop.advance(2);
  EXPECT_THAT(host->taskLines(), ElementsAre("Task 1   30 of 100", "Task 2   40 of 100"));
  desktop.advance(20);
  EXPECT_TRUE(host->taskBar()->isHidden());
  EXPECT_THAT(reports, ElementsAre("Task 1 begins", "Task 2 begins", "Task 2 ends", "Task 1 ends"));
}

TEST_F(StartupHostTest, TheCrossStopsTheOldestTask) {
  host->beginTask(1000);
  host->beginTask(1000);
  pressCross();
  desktop.advance(0.5);
  EXPECT_THAT(reports, ElementsAre("Task 1 begins", "Task 2 begins", "Task 1 aborted"));
  EXPECT_EQ(host->taskBar()->taskCount(), 1u);
  pressCross();
  desktop.advance(0.5);
  EXPECT_TRUE(host->taskBar()->isHidden());
}

}  // namespace gallery
