#include "tessaluna/ready/tasks/TaskBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tests/harness/LookBook.h"
#include "tests/harness/StillWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using testing::HasSubstr;
using testing::Not;

class TaskBarTest : public harness::StillWorld {
 protected:
  TaskBarTest() {
    window->contentView()->addSubview(bar);
    desktop.settle();
  }
  std::string elements() {
    std::string lines;
    for (const std::string& line : accessibleTreeLines(bar)) lines += line + "\n";
    return lines;
  }
  std::string title() { return dynamic_cast<NSTextField&>(*bar->subviews()[1]).stringValue(); }
  Ref<NSButton> cross() { return std::dynamic_pointer_cast<NSButton>(bar->subviews()[2]); }
  void clickCross() { user.click(*window, cross()->convertPointToView({10, 10}, nullptr)); }

  int aborts = 0;
  Ref<TaskBar> bar = make<TaskBar>(CGRect{10, 10, 320, 20});
  Ref<NSWindow> window = showWindow({100, 100, 340, 60});
};

TEST_F(TaskBarTest, IsHiddenWhileThereAreNoTasks) {
  EXPECT_TRUE(bar->isHidden());
  ShownTask scan = bar->begin({.title = "Scan"});
  EXPECT_FALSE(bar->isHidden());
  scan.end();
  EXPECT_TRUE(bar->isHidden());
  scan.end();
  EXPECT_TRUE(bar->isHidden());
}

TEST_F(TaskBarTest, ABarThatGetsItsPlaceLaterShowsHowFarTasksAre) {
  const auto later = make<TaskBar>(CGRect{});
  later->setFrame({0, 0, 320, 20});
  EXPECT_EQ(later->subviews().front()->frame(), bar->subviews().front()->frame());
  EXPECT_EQ(later->subviews().front()->subviews().front()->frame(), bar->subviews().front()->subviews().front()->frame());
}

TEST_F(TaskBarTest, SaysHowFarAllTasksAre) {
  ShownTask scan = bar->begin({.title = "Scan", .length = 100}), copy = bar->begin({.title = "Copy", .length = 300});
  scan.setPosition(100);
  copy.setPosition(60);
  EXPECT_THAT(elements(), HasSubstr("2 tasks, 40 percent"));
  scan.end();
  EXPECT_THAT(elements(), HasSubstr("20 percent"));
}

TEST_F(TaskBarTest, NamesTheOldestTask) {
  std::optional<ShownTask> scan = bar->begin({.title = "Scan"});
  const ShownTask copy = bar->begin({.title = "Copy"});
  EXPECT_EQ(title(), "Scan");
  scan.reset();
  EXPECT_EQ(title(), "Copy");
}

TEST_F(TaskBarTest, TheCrossStopsTheOldestTaskOnce) {
  ShownTask scan = bar->begin({.title = "Scan", .abort = [this] { ++aborts; }});
  EXPECT_EQ(cross()->toolTip(), "Stop Scan");
  clickCross();
  EXPECT_FALSE(cross()->isEnabled());
  clickCross();
  EXPECT_EQ(aborts, 1);
  EXPECT_FALSE(bar->isHidden()) << "until the task has ended";
}

TEST_F(TaskBarTest, ATaskThatEndsWhenItIsStoppedMakesRoomForTheNext) {
  ShownTask scan;
  scan = bar->begin({.title = "Scan", .abort = [&] { scan.end(); }});
  const ShownTask copy = bar->begin({.title = "Copy", .abort = [this] { ++aborts; }});
  clickCross();
  EXPECT_EQ(title(), "Copy");
  EXPECT_TRUE(cross()->isEnabled());
  clickCross();
  EXPECT_EQ(aborts, 1);
}

TEST_F(TaskBarTest, WithoutAnAbortThereIsNoCross) {
  const ShownTask scan = bar->begin({.title = "Scan"});
  EXPECT_TRUE(cross()->isHidden());
}

TEST_F(TaskBarTest, TheCrossSaysWhatItDoesInTheUsersLanguage) {
  const ShownTask scan = bar->begin({.title = "Scan", .abort = [] {}});
  EXPECT_THAT(elements(), HasSubstr("\"Stop Scan\""));
  bar->setAbortText("Beenden:");
  EXPECT_EQ(cross()->toolTip(), "Beenden: Scan");
  EXPECT_THAT(elements(), HasSubstr("\"Beenden: Scan\""));
}

TEST_F(TaskBarTest, EveryStateDrawsAsTheExpectedFileSays) {
  harness::LookBook look(desktop);
  ShownTask scan = bar->begin({.title = "Scan of a folder", .length = 100, .abort = [] {}});
  scan.setPosition(25);
  look.add("a task that can be stopped", *window);
  clickCross();
  look.add("stopped", *window);
  const ShownTask copy = bar->begin({.title = "Copy", .length = 300});
  bar->setFrameSize({200, 30});
  look.add("two tasks in a narrow and high bar", *window);
  scan.end();
  look.add("a task that cannot be stopped", *window);
  look.expectSameAsFile("ready/tasks/expected/TaskBar.txt");
}

TEST_F(TaskBarTest, NothingOverlapsAtAnyWidth) {
  for (CGFloat width = 0; width < 400; width += 20) {
    bar->setFrame({0, 0, width, 20});
    const CGRect monitor = bar->subviews()[0]->frame(), text = bar->subviews()[1]->frame(), end = cross()->frame();
    EXPECT_LE(CGRectGetMaxX(monitor), text.origin.x) << width;
    EXPECT_GE(text.size.width, 0) << width;
    EXPECT_LE(CGRectGetMaxX(text), std::max(end.origin.x, text.origin.x)) << width;
    EXPECT_GE(end.origin.x, CGRectGetMaxX(monitor)) << width;
  }
}

TEST_F(TaskBarTest, TwoTasksMayHaveTheSameTitle) {
  ShownTask first = bar->begin({.title = "Scan", .length = 10}), second = bar->begin({.title = "Scan", .length = 10});
  EXPECT_EQ(bar->taskCount(), 2u);
  EXPECT_THAT(elements(), HasSubstr("\"Scan 2\""));
  first.setPosition(10);
  EXPECT_THAT(elements(), HasSubstr("2 tasks, 50 percent"));
}

TEST_F(TaskBarTest, PositionsOutsideOfTheTaskAreItsEnds) {
  ShownTask scan = bar->begin({.title = "Scan", .length = 10});
  for (const double position : {1e300, std::numeric_limits<double>::infinity()}) {
    scan.setPosition(position);
    EXPECT_THAT(elements(), HasSubstr("100 percent")) << position;
  }
  for (const double position : {-5.0, std::nan("")}) {
    scan.setPosition(position);
    EXPECT_THAT(elements(), HasSubstr(" 0 percent")) << position;
  }
}

TEST_F(TaskBarTest, ATaskMayOutliveItsBar) {
  ShownTask scan = bar->begin({.title = "Scan"});
  bar->removeFromSuperview();
  bar.reset();
  EXPECT_FALSE(scan.isShown());
  scan.setPosition(1);
  scan.end();
}

TEST_F(TaskBarTest, AMovedTaskIsStillOneTask) {
  ShownTask scan = bar->begin({.title = "Scan"});
  ShownTask other = std::move(scan);
  EXPECT_FALSE(scan.isShown());
  EXPECT_EQ(bar->taskCount(), 1u);
  ShownTask& same = other;
  other = std::move(same);
  EXPECT_TRUE(other.isShown());
  other = bar->begin({.title = "Copy"});
  EXPECT_EQ(bar->taskCount(), 1u);
  EXPECT_EQ(title(), "Copy");
}

TEST_F(TaskBarTest, ALengthThatIsNotFiniteOrNegativeCountsAsUnknown) {
  for (const double length : {std::nan(""), -5.0, std::numeric_limits<double>::infinity(), 0.0}) {
    ShownTask odd = bar->begin({.title = "Odd", .length = length}), scan = bar->begin({.title = "Scan", .length = 10});
    odd.setPosition(3);
    scan.setPosition(5);
    EXPECT_THAT(elements(), HasSubstr("2 tasks, 50 percent")) << length;
  }
  EXPECT_TRUE(bar->isHidden());
}

TEST_F(TaskBarTest, AnEndThatLeavesATaskOfUnknownLengthKeepsTheMonitor) {
  ShownTask odd = bar->begin({.title = "Odd", .length = std::numeric_limits<double>::infinity()});
  ShownTask scan = bar->begin({.title = "Scan", .length = 10});
  scan.end();
  EXPECT_FALSE(bar->subviews().front()->isHidden());
  EXPECT_THAT(elements(), HasSubstr("1 task, 0 percent"));
}

TEST_F(TaskBarTest, TheBarMayGoWhenATaskIsStopped) {
  ShownTask copy;
  ShownTask scan = bar->begin({.title = "Scan", .abort = [&] {
                                 copy = bar->begin({.title = "Copy"});
                                 std::exchange(bar, nullptr)->removeFromSuperview();
                                 ++aborts;
                                 scan.end();
                               }});
  clickCross();
  desktop.settle();
  EXPECT_EQ(aborts, 1);
}

TEST_F(TaskBarTest, ATaskMayOwnAnother) {
  auto inner = std::make_shared<ShownTask>(bar->begin({.title = "Inner"}));
  ShownTask outer = bar->begin({.title = "Outer", .abort = [inner] { inner->end(); }});
  inner.reset();
  EXPECT_EQ(bar->taskCount(), 2u);
  outer.end();
  EXPECT_EQ(bar->taskCount(), 0u);
  EXPECT_TRUE(bar->isHidden());
}

TEST_F(TaskBarTest, ABarThatGoesUnderAPressEndsItWithoutAnAction) {
  ShownTask scan = bar->begin({.title = "Scan", .abort = [this] { ++aborts; }});
  user.press(*window, cross()->convertPointToView({10, 10}, nullptr));
  const WeakRef<TaskBar> weak = bar;
  std::exchange(bar, nullptr)->removeFromSuperview();
  user.release();
  desktop.settle();
  EXPECT_EQ(aborts, 0);
  EXPECT_TRUE(weak.expired());
}

}  // namespace
}  // namespace tessaluna::ready
