#include <gtest/gtest.h>

#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"

namespace tessaluna::platform {
namespace {

struct HiddenWindowTrackingTest : harness::StillWorld {
  Ref<harness::ProbeView> view = make<harness::ProbeView>(CGRect{0, 0, 100, 100});
  Ref<NSWindow> window = showWindowWith(view);
  HiddenWindowTrackingTest() { track(); }
  void track() {
    view->addTrackingArea(make<NSTrackingArea>(view->bounds(), NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways,
                                               refTo<NSResponder>(*view)));
    view->calls.clear();
  }
};

TEST_F(HiddenWindowTrackingTest, GetsNoEntryWithTheReleaseThatHidIt) {
  user.press(*window, {10, 10});
  view->onCall = [&](const std::string& call) {
    if (call == "mouseUp") window->orderOut(nullptr);
  };
  user.release();
  EXPECT_EQ(view->calls, (std::vector<std::string>{"mouseDown", "mouseUp"}));
}

TEST_F(HiddenWindowTrackingTest, IsEnteredAnewWhenItIsBack) {
  user.moveTo(*window, {10, 10});
  window->orderOut(nullptr);
  window->orderFront(nullptr);
  user.moveTo(*window, {12, 10});
  EXPECT_EQ(view->calls, (std::vector<std::string>{"mouseEntered", "mouseEntered"}));
}

}  // namespace
}  // namespace tessaluna::platform
