// The first responder of a window, its keys, and the loop of its key views.
#include "tessaluna/platform/windows/NSWindow.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <utility>

#include "tessaluna/platform/menus/NSMenu.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using harness::ProbeView;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Ref<ProbeView> view(CGRect frame) { return make<ProbeView>(frame); }

Ref<ProbeView> keyView(CGRect frame = {0, 0, 10, 10}) {
  auto v = view(frame);
  v->acceptsFirst = true;
  return v;
}

// Accepts the first responder and leaves all keys to the chain.
Ref<NSView> passingKeyView() {
  class PassingKeyView : public NSView {
   public:
    using NSView::NSView;
    bool acceptsFirstResponder() const override { return true; }
  };
  return make<PassingKeyView>(CGRect{0, 0, 10, 10});
}

class NSWindowKeyboardTest : public harness::StillWorld {};

}  // namespace

// The first responder.

TEST_F(NSWindowKeyboardTest, APressMakesAViewThatAcceptsTheFirstResponder) {
  const auto window = showWindow();
  const auto accepts = keyView({0, 0, 10, 10}), refuses = view({50, 50, 10, 10});
  window->contentView()->addSubview(accepts);
  window->contentView()->addSubview(refuses);
  user.click(*window, {5, 5});
  EXPECT_EQ(window->firstResponder(), accepts.get());
  user.click(*window, {55, 55});
  EXPECT_EQ(window->firstResponder(), accepts.get());
}

TEST_F(NSWindowKeyboardTest, ARightPressChangesNoFirstResponder) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  user.click(*window, {5, 5}, {.button = 1});
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSWindowKeyboardTest, TheEarlierOneResignsBeforeTheNewOneBecomes) {
  const auto window = showWindow();
  const auto a = keyView(), b = keyView();
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  a->calls.clear();
  b->calls.clear();
  EXPECT_TRUE(window->makeFirstResponder(a.get()));
  EXPECT_TRUE(window->makeFirstResponder(b.get()));
  EXPECT_THAT(a->calls, ElementsAre("become", "resign"));
  EXPECT_THAT(b->calls, ElementsAre("become"));
}

TEST_F(NSWindowKeyboardTest, AFirstResponderThatRefusesToResignStays) {
  const auto window = showWindow();
  const auto a = keyView(), b = keyView();
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  window->makeFirstResponder(a.get());
  a->refusesToResign = true;
  EXPECT_FALSE(window->makeFirstResponder(b.get()));
  EXPECT_EQ(window->firstResponder(), a.get());
}

TEST_F(NSWindowKeyboardTest, AViewThatRefusesLeavesTheWindowAsFirstResponder) {
  const auto window = showWindow();
  const auto a = keyView(), refuses = keyView(), never = view({});
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(refuses);
  window->contentView()->addSubview(never);
  refuses->refusesToBecome = true;
  window->makeFirstResponder(a.get());
  EXPECT_FALSE(window->makeFirstResponder(refuses.get()));
  EXPECT_EQ(window->firstResponder(), window.get());
  EXPECT_FALSE(window->makeFirstResponder(never.get()));
}

TEST_F(NSWindowKeyboardTest, AViewThatIsNotInTheWindowIsNotMadeItsFirstResponder) {
  const auto a = keyView(), elsewhere = keyView(), nowhere = keyView();
  const auto window = showWindowWith(a), other = showWindowWith(elsewhere);
  window->makeFirstResponder(a.get());
  a->calls.clear();
  EXPECT_FALSE(window->makeFirstResponder(elsewhere.get()));
  EXPECT_FALSE(window->makeFirstResponder(nowhere.get()));
  EXPECT_EQ(window->firstResponder(), a.get());
  EXPECT_THAT(a->calls, IsEmpty()) << "nobody was asked";
}

TEST_F(NSWindowKeyboardTest, AViewThatIsTakenAwayWhileItBecomesTheFirstResponderIsNot) {
  struct Leaving : ProbeView {
    using ProbeView::ProbeView;
    bool becomeFirstResponder() override {
      removeFromSuperview();
      return ProbeView::becomeFirstResponder();
    }
  };
  const auto leaving = make<Leaving>(CGRect{0, 0, 10, 10});
  leaving->acceptsFirst = true;
  const auto window = showWindowWith(leaving);
  leaving->calls.clear();
  EXPECT_FALSE(window->makeFirstResponder(leaving.get()));
  EXPECT_EQ(window->firstResponder(), window.get());
  EXPECT_THAT(leaving->calls, testing::IsSupersetOf({"become", "resign"}));
}

TEST_F(NSWindowKeyboardTest, AViewThatTheEarlierFirstResponderHidesIsNotMadeTheFirst) {
  struct Hiding : ProbeView {
    using ProbeView::ProbeView;
    bool resignFirstResponder() override {
      other->setHidden(true);
      return true;
    }
    Ref<NSView> other;
  };
  const auto hiding = make<Hiding>(CGRect{0, 0, 10, 10});
  const auto hidden = keyView();
  hiding->acceptsFirst = true;
  hiding->other = hidden;
  const auto window = showWindowWith(hiding);
  window->contentView()->addSubview(hidden);
  window->makeFirstResponder(hiding.get());
  EXPECT_FALSE(window->makeFirstResponder(hidden.get()));
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSWindowKeyboardTest, AViewThatWasHiddenBeforeCanBeMadeTheFirstResponder) {
  const auto hidden = keyView();
  const auto window = showWindowWith(hidden);
  hidden->setHidden(true);
  EXPECT_TRUE(window->makeFirstResponder(hidden.get()));
}

TEST_F(NSWindowKeyboardTest, AViewThatTheEarlierFirstResponderTakesAwayIsNotMadeTheFirst) {
  struct Removing : ProbeView {
    using ProbeView::ProbeView;
    Ref<NSView> other;
    bool resignFirstResponder() override {
      other->removeFromSuperview();
      return true;
    }
  };
  const auto removing = make<Removing>(CGRect{0, 0, 10, 10});
  const auto taken = keyView();
  removing->acceptsFirst = true;
  removing->other = taken;
  const auto window = showWindowWith(removing);
  window->contentView()->addSubview(taken);
  window->makeFirstResponder(removing.get());
  taken->calls.clear();
  EXPECT_FALSE(window->makeFirstResponder(taken.get()));
  EXPECT_EQ(window->firstResponder(), window.get());
  EXPECT_THAT(taken->calls, testing::Not(testing::Contains("become")));
}

TEST_F(NSWindowKeyboardTest, AnAbsentResponderMakesTheWindowTheFirst) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  EXPECT_TRUE(window->makeFirstResponder(nullptr));
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSWindowKeyboardTest, MakingTheFirstResponderTheFirstResponderAgainAsksNobody) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  v->calls.clear();
  EXPECT_TRUE(window->makeFirstResponder(v.get()));
  EXPECT_THAT(v->calls, IsEmpty());
}

TEST_F(NSWindowKeyboardTest, AFirstResponderThatLeavesTheWindowIsItNoMore) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  v->removeFromSuperview();
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSWindowKeyboardTest, WhoIsNotifiedThatAFirstResponderLeavesMayGiveTheKeyboardToAnotherView) {
  struct Resigning : ProbeView {
    using ProbeView::ProbeView;
    bool resignFirstResponder() override {
      if (onResign) std::exchange(onResign, nullptr)();
      return true;
    }
    std::function<void()> onResign;
  };
  const auto leaving = make<Resigning>(CGRect{0, 0, 10, 10});
  leaving->acceptsFirst = true;
  const auto next = keyView({50, 50, 10, 10});
  const auto window = showWindowWith(leaving);
  window->contentView()->addSubview(next);
  window->makeFirstResponder(leaving.get());
  leaving->onResign = [&] { window->makeFirstResponder(next.get()); };
  leaving->removeFromSuperview();
  EXPECT_EQ(window->firstResponder(), next.get());
  EXPECT_EQ(std::count(next->calls.begin(), next->calls.end(), "become"), 1);
  EXPECT_EQ(std::count(next->calls.begin(), next->calls.end(), "resign"), 0);
}

TEST_F(NSWindowKeyboardTest, AFirstResponderLeavesWithTheViewThatHoldsIt) {
  const auto outer = view({0, 0, 50, 50}), inner = keyView();
  outer->addSubview(inner);
  const auto window = showWindowWith(outer);
  window->makeFirstResponder(inner.get());
  outer->removeFromSuperview();
  EXPECT_EQ(window->firstResponder(), window.get());
}

// Keys.

TEST_F(NSWindowKeyboardTest, KeysGoToTheFirstResponder) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  v->calls.clear();
  user.pressKey("a");
  EXPECT_THAT(v->calls, ElementsAre("keyEquivalent", "keyDown", "keyUp"));
}

TEST_F(NSWindowKeyboardTest, AKeyEquivalentGoesDownTheTreeBeforeTheKey) {
  const auto outer = view({0, 0, 50, 50}), inner = view({0, 0, 10, 10}), first = keyView();
  outer->addSubview(inner);
  const auto window = showWindowWith(outer);
  window->contentView()->addSubview(first);
  window->makeFirstResponder(first.get());
  inner->takesKeyEquivalents = true;
  outer->calls.clear();
  inner->calls.clear();
  first->calls.clear();
  user.keyDown("x");
  EXPECT_THAT(outer->calls, ElementsAre("keyEquivalent"));
  EXPECT_THAT(inner->calls, ElementsAre("keyEquivalent"));
  EXPECT_THAT(first->calls, IsEmpty());
}

TEST_F(NSWindowKeyboardTest, ReturnInATextOfSeveralLinesIsTypedAndPressesNoButton) {
  const auto text = make<NSTextView>(CGRect{0, 0, 100, 50});
  const auto button = make<NSButton>(CGRect{0, 60, 80, 24});
  int presses = 0;
  button->setKeyEquivalent("\r");
  button->setAction([&] { ++presses; });
  const auto window = showWindowWith(button);
  window->contentView()->addSubview(text);
  window->makeFirstResponder(text.get());
  user.pressKey("\r");
  EXPECT_EQ(text->string(), "\n");
  EXPECT_EQ(presses, 0);
  text->setEditable(false);
  user.pressKey("\r");
  EXPECT_EQ(text->string(), "\n");
  EXPECT_EQ(presses, 1);
}

TEST_F(NSWindowKeyboardTest, TheMainMenusKeysWorkInEveryWindowAfterThoseOfItsViews) {
  std::vector<std::string> calls;
  const auto menu = make<NSMenu>(), file = make<NSMenu>();
  menu->addItemWithTitle("File", "")->setSubmenu(file);
  file->addItemWithTitle("Close", [&] { calls.push_back("menu"); })->setKeyEquivalent("w");
  NSApp->setMainMenu(menu);
  const auto v = keyView();
  const auto first = showWindowWith(v), second = showWindow();
  first->makeFirstResponder(v.get());
  v->calls.clear();
  for (const auto& window : {first, second})
    for (const bool isRepeat : {false, true})
      NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                     .modifiers = NSEventModifierFlagCommand,
                                                     .window = window,
                                                     .characters = "w",
                                                     .charactersIgnoringModifiers = "w",
                                                     .isRepeat = isRepeat}));
  EXPECT_THAT(calls, ElementsAre("menu", "menu"));
  EXPECT_THAT(v->calls, ElementsAre("keyEquivalent", "keyEquivalent"));

  calls.clear();
  v->takesKeyEquivalents = true;
  first->makeKeyAndOrderFront(nullptr);
  user.pressKey("w", NSEventModifierFlagCommand);
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(NSWindowKeyboardTest, AHiddenViewTakesNoKeyEquivalent) {
  const auto v = view({0, 0, 50, 50});
  const auto window = showWindowWith(v);
  v->takesKeyEquivalents = true;
  v->setHidden(true);
  v->calls.clear();
  user.keyDown("x");
  EXPECT_THAT(v->calls, IsEmpty());
}

TEST_F(NSWindowKeyboardTest, TheKeyViewLoopGoesThroughTheTreeInItsOrder) {
  const auto a = keyView(), group = view({0, 0, 50, 50}), b = keyView(), skipped = view({}), c = keyView();
  group->addSubview(b);
  group->addSubview(skipped);
  const auto window = showWindow();
  for (const auto& v : {a, group, c}) window->contentView()->addSubview(v);
  std::vector<NSResponder*> stops;
  while (window->selectNextKeyView()) stops.push_back(window->firstResponder());
  EXPECT_THAT(stops, ElementsAre(a.get(), b.get(), c.get()));
  EXPECT_TRUE(window->selectPreviousKeyView());
  EXPECT_EQ(window->firstResponder(), b.get());
}

TEST_F(NSWindowKeyboardTest, TabGoesAlongTheKeyViewsAndRoundAtTheEnds) {
  const auto a = passingKeyView(), b = passingKeyView();
  const auto window = showWindow();
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  const auto afterKey = [&](std::string_view character, std::uint32_t modifiers = 0) {
    user.pressKey(std::string(character), modifiers);
    return window->firstResponder();
  };
  EXPECT_EQ(afterKey(NSTabCharacter), a.get());
  EXPECT_EQ(afterKey(NSTabCharacter), b.get());
  EXPECT_EQ(afterKey(NSTabCharacter), a.get());
  EXPECT_EQ(afterKey(NSBackTabCharacter, NSEventModifierFlagShift), b.get());
  EXPECT_EQ(afterKey(NSTabCharacter, NSEventModifierFlagShift), a.get());
  EXPECT_EQ(afterKey(NSTabCharacter, NSEventModifierFlagControl), a.get());
}

TEST_F(NSWindowKeyboardTest, AKeyOrAScrollThatNobodyTakesIsReportedToTheDesktop) {
  const auto window = showWindow();
  user.pressKey("a");
  user.scroll(*window, {10, 10}, {0, 1});
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), 2);
  user.pressKey(std::string(NSTabCharacter));
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), 2);
}

TEST_F(NSWindowKeyboardTest, AKeyOrAScrollThatAViewTakesIsNotReportedToTheDesktop) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  user.pressKey("a");
  user.scroll(*window, {5, 5}, {0, 1});
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), 0);
}

TEST_F(NSWindowKeyboardTest, BackwardsTheKeyViewLoopBeginsAtTheEnd) {
  const auto a = keyView(), b = keyView();
  const auto window = showWindow();
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  EXPECT_TRUE(window->selectPreviousKeyView());
  EXPECT_EQ(window->firstResponder(), b.get());
  EXPECT_TRUE(window->selectPreviousKeyView());
  EXPECT_FALSE(window->selectPreviousKeyView());
}

TEST_F(NSWindowKeyboardTest, TheKeyViewLoopPassesHiddenViewsAndThoseThatRefuse) {
  const auto hidden = keyView(), group = view({}), inGroup = keyView(), refuses = keyView(), last = keyView();
  const auto window = showWindow();
  group->addSubview(inGroup);
  group->setHidden(true);
  hidden->setHidden(true);
  refuses->refusesToBecome = true;
  for (const auto& v : {hidden, group, refuses, last}) window->contentView()->addSubview(v);
  EXPECT_TRUE(window->selectNextKeyView());
  EXPECT_EQ(window->firstResponder(), last.get());
}
