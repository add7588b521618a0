#include "gallery/player/SimulatedTasks.h"

#include <gmock/gmock.h>

#include "tests/harness/StillWorld.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using testing::ElementsAre;

class SimulatedTasksTest : public harness::StillWorld {
 protected:
  SimulatedTasksTest() {
    tasks.setOnEnd([this](const std::string& title, SimulatedTasks::End end) {
      ends.push_back(title + (end == SimulatedTasks::End::Stopped ? " stopped" : " finished"));
    });
  }
  const Ref<tessaluna::ready::TaskBar> bar = make<tessaluna::ready::TaskBar>(CGRect{0, 0, 300, 20});
  SimulatedTasks tasks{bar};
  std::vector<std::string> ends;
};

TEST_F(SimulatedTasksTest, ATaskEndsWhenItsTimeIsOver) {
  tasks.begin("Short", 2);
  tasks.begin("Long", 5);
  EXPECT_EQ(bar->taskCount(), 2u);
  tasks.advance(2.5);
  EXPECT_EQ(bar->taskCount(), 1u);
  tasks.advance(2.5);
  EXPECT_EQ(bar->taskCount(), 0u);
  EXPECT_THAT(ends, ElementsAre("Short finished", "Long finished"));
}

TEST_F(SimulatedTasksTest, ATaskThatTheUserStopsEndsSoon) {
  tasks.begin("Long", 500);
  dynamic_cast<NSButton&>(*bar->subviews().back()).performClick(nullptr);
  tasks.advance(0.1);
  EXPECT_EQ(bar->taskCount(), 0u);
  EXPECT_THAT(ends, ElementsAre("Long stopped"));
}

}  // namespace
}  // namespace gallery
