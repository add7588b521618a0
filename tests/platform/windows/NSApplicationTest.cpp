#include "tessaluna/platform/windows/NSApplication.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "tests/harness/PlayingView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using harness::PlayingView;
using harness::ProbeView;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class NSApplicationTest : public harness::StillWorld {};

// Somebody who can be asked to play.
class Player : public NSResponder {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  void play(NSObject* sender) {
    ++plays;
    lastSender = sender;
  }
  int plays = 0;
  NSObject* lastSender = nullptr;
};
constexpr Selector playerSelectors[] = {action<&Player::play>("play:")};
const ClassInfo Player::staticClassInfo{
    .name = "Tests.Player", .base = &NSResponder::staticClassInfo, .selectors = playerSelectors};

Ref<NSEvent> eventFor(const Ref<NSWindow>& window, NSEventType type = NSEventType::LeftMouseDown) {
  return make<NSEvent>(NSEvent::Fields{.type = type, .location = {5, 5}, .window = window});
}

}  // namespace

TEST(NSApplication, IsAbsentUntilItIsMadeAndThenOne) {
  EXPECT_EQ(NSApp, nullptr);
  const auto application = NSApplication::sharedApplication();
  EXPECT_EQ(NSApp, application);
  EXPECT_EQ(NSApplication::sharedApplication(), application);
  NSApp.reset();
}

TEST(NSApplicationDeathTest, AMonitorWithoutAnApplicationStopsTheProgram) {
  EXPECT_DEATH(
      NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [](const Ref<NSEvent>& event) { return event; }),
      "a local monitor needs NSApp");
}

TEST_F(NSApplicationTest, TheCurrentEventIsTheOneThatAWindowHasNow) {
  class Asking : public NSView {
   public:
    using NSView::NSView;
    void mouseDown(const Ref<NSEvent>& event) override {
      if (inner) NSApp->sendEvent(std::exchange(inner, nullptr));
      seen.push_back(NSApp->currentEvent() == event);
    }
    Ref<NSEvent> inner;
    std::vector<bool> seen;
  };
  const auto view = make<Asking>(CGRect{0, 0, 10, 10});
  const auto window = showWindowWith(view);
  view->inner = eventFor(window);
  NSApp->sendEvent(eventFor(window));
  EXPECT_THAT(view->seen, ElementsAre(true, true));
  EXPECT_EQ(NSApp->currentEvent(), nullptr);
}

TEST_F(NSApplicationTest, AnEventReachesItsWindow) {
  const auto v = make<ProbeView>(CGRect{0, 0, 10, 10});
  const auto window = showWindowWith(v);
  v->calls.clear();
  NSApp->sendEvent(eventFor(window));
  EXPECT_THAT(v->calls, ElementsAre("mouseDown"));
}

TEST_F(NSApplicationTest, MonitorsSeeAnEventBeforeItsWindowInTheOrderOfTheirAdding) {
  const auto v = make<ProbeView>(CGRect{0, 0, 10, 10});
  const auto window = showWindowWith(v);
  std::vector<std::string> order;
  v->onCall = [&](const std::string& call) { order.push_back(call); };
  for (const char* name : {"first", "second"})
    NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&order, name](const Ref<NSEvent>& event) {
      order.push_back(name);
      return event;
    });
  NSApp->sendEvent(eventFor(window));
  EXPECT_THAT(order, ElementsAre("first", "second", "mouseDown"));
  v->onCall = nullptr;  // the press ends when the window goes
}

TEST_F(NSApplicationTest, AMonitorSeesOnlyTheEventsOfItsMask) {
  std::vector<NSEventType> seen;
  NSEvent::addLocalMonitorForEventsMatchingMask(maskOf(NSEventType::LeftMouseDown) | maskOf(NSEventType::RightMouseDown),
                                                [&](const Ref<NSEvent>& event) {
                                                  seen.push_back(event->type());
                                                  return event;
                                                });
  for (const auto type : {NSEventType::LeftMouseDown, NSEventType::LeftMouseUp, NSEventType::RightMouseDown,
                          NSEventType::OtherMouseDown, NSEventType::KeyDown})
    NSApp->sendEvent(eventFor(nullptr, type));
  EXPECT_THAT(seen, ElementsAre(NSEventType::LeftMouseDown, NSEventType::RightMouseDown));
}

TEST_F(NSApplicationTest, AMonitorMaySwallowAnEvent) {
  const auto v = make<ProbeView>(CGRect{0, 0, 10, 10});
  const auto window = showWindowWith(v);
  v->calls.clear();
  bool didLaterSee = false;
  NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [](const Ref<NSEvent>&) { return nullptr; });
  NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&](const Ref<NSEvent>& event) {
    didLaterSee = true;
    return event;
  });
  NSApp->sendEvent(eventFor(window));
  EXPECT_THAT(v->calls, IsEmpty());
  EXPECT_FALSE(didLaterSee);
}

TEST_F(NSApplicationTest, AMonitorMayPutAnotherEventInThePlaceOfOne) {
  const auto v = make<ProbeView>(CGRect{0, 0, 10, 10});
  const auto window = showWindowWith(v);
  v->calls.clear();
  NSEvent::addLocalMonitorForEventsMatchingMask(maskOf(NSEventType::LeftMouseDown), [&](const Ref<NSEvent>&) {
    return eventFor(window, NSEventType::RightMouseDown);
  });
  NSApp->sendEvent(eventFor(window));
  EXPECT_THAT(v->calls, ElementsAre("rightMouseDown"));
}

TEST_F(NSApplicationTest, AnEventWithoutAWindowIsSeenByTheMonitorsAlone) {
  int seen = 0;
  NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&](const Ref<NSEvent>& event) {
    ++seen;
    return event;
  });
  NSApp->sendEvent(eventFor(nullptr));
  EXPECT_EQ(seen, 1);
}

TEST_F(NSApplicationTest, ARemovedMonitorSeesNothingMore) {
  int seen = 0;
  const auto token = NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&](const Ref<NSEvent>& event) {
    ++seen;
    return event;
  });
  NSEvent::removeMonitor(token);
  NSEvent::removeMonitor(token);
  NSEvent::removeMonitor(nullptr);
  NSApp->sendEvent(eventFor(nullptr));
  EXPECT_EQ(seen, 0);
}

TEST_F(NSApplicationTest, RemovingAMonitorFreesItsHandlerWhileTheTokenIsKept) {
  const auto captured = std::make_shared<int>(1);
  const auto token =
      NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [captured](const Ref<NSEvent>& event) { return event; });
  NSEvent::removeMonitor(token);
  EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(NSApplicationTest, AMonitorMayRemoveItselfInsideItsHandler) {
  Ref<NSObject> token;
  int seen = 0;
  // The captures must live until the handler has returned, though the monitor is gone by then.
  auto witness = std::make_shared<int>(0);
  token = NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&, witness](const Ref<NSEvent>& event) {
    NSEvent::removeMonitor(token);
    token.reset();
    ++*witness;
    ++seen;
    return event;
  });
  NSApp->sendEvent(eventFor(nullptr));
  NSApp->sendEvent(eventFor(nullptr));
  EXPECT_EQ(seen, 1);
  EXPECT_EQ(*witness, 1);
  EXPECT_EQ(witness.use_count(), 1);
}

TEST_F(NSApplicationTest, AMonitorMayRemoveALaterOneInsideItsHandler) {
  Ref<NSObject> later;
  int seen = 0;
  NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&](const Ref<NSEvent>& event) {
    NSEvent::removeMonitor(later);
    return event;
  });
  later = NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&](const Ref<NSEvent>& event) {
    ++seen;
    return event;
  });
  NSApp->sendEvent(eventFor(nullptr));
  EXPECT_EQ(seen, 0);
}

TEST_F(NSApplicationTest, AMonitorAddedInsideAHandlerSeesTheNextEventFirst) {
  int seen = 0;
  bool isAdded = false;
  NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&](const Ref<NSEvent>& event) {
    if (!std::exchange(isAdded, true))
      NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&](const Ref<NSEvent>& e) {
        ++seen;
        return e;
      });
    return event;
  });
  NSApp->sendEvent(eventFor(nullptr));
  EXPECT_EQ(seen, 0);
  NSApp->sendEvent(eventFor(nullptr));
  EXPECT_EQ(seen, 1);
}

TEST_F(NSApplicationTest, AnActionGoesToItsTarget) {
  const auto target = make<Player>();
  const auto sender = make<NSObject>();
  EXPECT_TRUE(NSApp->sendAction("play:", target.get(), sender.get()));
  EXPECT_EQ(target->plays, 1);
  EXPECT_EQ(target->lastSender, sender.get());
}

TEST_F(NSApplicationTest, AnActionThatItsTargetDoesNotHaveGoesToNobodyElse) {
  const auto v = make<PlayingView>(CGRect{0, 0, 10, 10});
  v->acceptsFirst = true;
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  const auto target = make<NSObject>();
  EXPECT_FALSE(NSApp->sendAction("play:", target.get(), nullptr));
  EXPECT_EQ(v->plays, 0);
}

TEST_F(NSApplicationTest, AnActionWithoutATargetGoesUpTheChainOfTheKeyWindow) {
  const auto outer = make<PlayingView>(CGRect{0, 0, 50, 50});
  const auto inner = make<ProbeView>(CGRect{0, 0, 10, 10});
  inner->acceptsFirst = true;
  outer->addSubview(inner);
  const auto window = showWindowWith(outer);
  window->makeFirstResponder(inner.get());
  EXPECT_TRUE(NSApp->sendAction("play:", nullptr, nullptr));
  EXPECT_EQ(outer->plays, 1);
}

TEST_F(NSApplicationTest, AnActionThatNobodyHasIsNotSent) {
  showWindow();
  EXPECT_FALSE(NSApp->sendAction("play:", nullptr, nullptr));
  EXPECT_FALSE(NSApp->sendAction("", make<Player>().get(), nullptr));
}

TEST_F(NSApplicationTest, KeyStatusIsThatOfTheLastWindowThatGotIt) {
  const auto first = showWindow(), second = showWindow();
  EXPECT_EQ(NSApp->keyWindow(), second);
  first->makeKeyAndOrderFront(nullptr);
  EXPECT_EQ(NSApp->keyWindow(), first);
  EXPECT_FALSE(second->isKeyWindow());
}
