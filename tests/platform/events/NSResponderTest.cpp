#include "tessaluna/platform/events/NSResponder.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/events/NSEvent.h"

using namespace tessaluna::platform;

namespace {

class Link : public NSResponder {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  std::vector<NSEventType> got;
  bool takesMouse = false;
  int jumps = 0;
  NSObject* jumpSender = nullptr;

  void mouseDown(const Ref<NSEvent>& event) override {
    got.push_back(event->type());
    if (!takesMouse) NSResponder::mouseDown(event);
  }
};

class Jumper : public Link {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  void jump(NSObject* sender) {
    ++jumps;
    jumpSender = sender;
  }
};

const ClassInfo Link::staticClassInfo{.name = "Tests.Link", .base = &NSResponder::staticClassInfo};
constexpr Selector jumperSelectors[] = {action<&Jumper::jump>("jump:")};
const ClassInfo Jumper::staticClassInfo{
    .name = "Tests.Jumper", .base = &Link::staticClassInfo, .selectors = jumperSelectors};

Ref<NSEvent> event(NSEventType type) { return make<NSEvent>(NSEvent::Fields{.type = type}); }

// Takes every event and notes the operation that brought it.
class Catcher : public NSResponder {
 public:
  std::vector<std::string> got;
  void mouseDown(const Ref<NSEvent>&) override { got.push_back("mouseDown"); }
  void mouseUp(const Ref<NSEvent>&) override { got.push_back("mouseUp"); }
  void mouseDragged(const Ref<NSEvent>&) override { got.push_back("mouseDragged"); }
  void rightMouseDown(const Ref<NSEvent>&) override { got.push_back("rightMouseDown"); }
  void rightMouseUp(const Ref<NSEvent>&) override { got.push_back("rightMouseUp"); }
  void rightMouseDragged(const Ref<NSEvent>&) override { got.push_back("rightMouseDragged"); }
  void otherMouseDown(const Ref<NSEvent>&) override { got.push_back("otherMouseDown"); }
  void otherMouseUp(const Ref<NSEvent>&) override { got.push_back("otherMouseUp"); }
  void otherMouseDragged(const Ref<NSEvent>&) override { got.push_back("otherMouseDragged"); }
  void mouseMoved(const Ref<NSEvent>&) override { got.push_back("mouseMoved"); }
  void mouseEntered(const Ref<NSEvent>&) override { got.push_back("mouseEntered"); }
  void mouseExited(const Ref<NSEvent>&) override { got.push_back("mouseExited"); }
  void cursorUpdate(const Ref<NSEvent>&) override { got.push_back("cursorUpdate"); }
  void scrollWheel(const Ref<NSEvent>&) override { got.push_back("scrollWheel"); }
  void keyDown(const Ref<NSEvent>&) override { got.push_back("keyDown"); }
  void keyUp(const Ref<NSEvent>&) override { got.push_back("keyUp"); }
  void flagsChanged(const Ref<NSEvent>&) override { got.push_back("flagsChanged"); }
};

}  // namespace

TEST(NSResponder, EveryEventThatItDoesNotHandleGoesToTheNextOne) {
  const auto first = make<NSResponder>();
  const auto second = make<Catcher>();
  first->setNextResponder(second.get());
  const auto e = event(NSEventType::MouseMoved);
  first->mouseDown(e);
  first->mouseUp(e);
  first->mouseDragged(e);
  first->rightMouseDown(e);
  first->rightMouseUp(e);
  first->rightMouseDragged(e);
  first->otherMouseDown(e);
  first->otherMouseUp(e);
  first->otherMouseDragged(e);
  first->mouseMoved(e);
  first->mouseEntered(e);
  first->mouseExited(e);
  first->cursorUpdate(e);
  first->scrollWheel(e);
  first->keyDown(e);
  first->keyUp(e);
  first->flagsChanged(e);
  EXPECT_EQ(second->got, (std::vector<std::string>{"mouseDown", "mouseUp", "mouseDragged", "rightMouseDown", "rightMouseUp",
                                                   "rightMouseDragged", "otherMouseDown", "otherMouseUp",
                                                   "otherMouseDragged", "mouseMoved", "mouseEntered", "mouseExited",
                                                   "cursorUpdate", "scrollWheel", "keyDown", "keyUp", "flagsChanged"}));
}

TEST(NSResponder, WhoTakesAnEventEndsItsWay) {
  const auto first = make<Link>(), second = make<Link>(), third = make<Link>();
  first->setNextResponder(second.get());
  second->setNextResponder(third.get());
  second->takesMouse = true;
  first->mouseDown(event(NSEventType::LeftMouseDown));
  EXPECT_EQ(first->got.size(), 1u);
  EXPECT_EQ(second->got.size(), 1u);
  EXPECT_TRUE(third->got.empty());
}

TEST(NSResponder, AtTheEndOfTheChainAnEventIsDropped) {
  const auto alone = make<Link>();
  alone->mouseDown(event(NSEventType::LeftMouseDown));
  EXPECT_EQ(alone->got.size(), 1u);
}

TEST(NSResponder, ASelectorIsPerformedByTheFirstInTheChainThatHasIt) {
  const auto first = make<Link>();
  const auto second = make<Jumper>(), third = make<Jumper>();
  first->setNextResponder(second.get());
  second->setNextResponder(third.get());
  EXPECT_TRUE(first->tryToPerform("jump:", first.get()));
  EXPECT_EQ(second->jumps, 1);
  EXPECT_EQ(second->jumpSender, first.get());
  EXPECT_EQ(third->jumps, 0);
}

TEST(NSResponder, ASelectorThatNobodyHasIsNotPerformed) {
  const auto first = make<Link>();
  const auto second = make<Jumper>();
  first->setNextResponder(second.get());
  EXPECT_FALSE(first->tryToPerform("swim:", nullptr));
}

TEST(NSResponder, ByItselfItIsNotAFirstResponderAndTakesNoShortcut) {
  const auto responder = make<NSResponder>();
  EXPECT_FALSE(responder->acceptsFirstResponder());
  EXPECT_FALSE(responder->performKeyEquivalent(event(NSEventType::KeyDown)));
}
