#include "tessaluna/platform/views/ViewGeometry.h"

#include "tessaluna/platform/foundation/NSCoder.h"

#include <gmock/gmock.h>

#include <functional>
#include <utility>

#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using harness::ProbeView;
using testing::ElementsAre;

namespace {

Ref<ProbeView> view(CGRect frame, bool isFlipped = false) {
  auto view = make<ProbeView>(frame);
  view->flipped = isFlipped;
  return view;
}

// Does something when it has come into a window.
class ComingView : public NSView {
 public:
  using NSView::NSView;
  void viewDidMoveToWindow() override {
    if (window() && onCome) std::exchange(onCome, nullptr)();
  }
  std::function<void()> onCome;
};

struct ViewsThatCome {
  Ref<ProbeView> superview = view({0, 0, 100, 100});
  Ref<ComingView> first = make<ComingView>(CGRect{0, 0, 10, 10});
  Ref<ProbeView> second = view({20, 0, 10, 10});
};

ViewsThatCome viewsThatCome() {
  ViewsThatCome views;
  views.superview->addSubview(views.first);
  views.superview->addSubview(views.second);
  return views;
}

}  // namespace

class ViewGeometryTest : public harness::StillWorld {};

TEST_F(ViewGeometryTest, AFreshViewHasItsFrameAndBoundsFromZero) {
  const auto v = view({10, 20, 30, 40});
  EXPECT_EQ(v->frame(), (CGRect{10, 20, 30, 40}));
  EXPECT_EQ(v->bounds(), (CGRect{0, 0, 30, 40}));
  EXPECT_EQ(v->superview(), nullptr);
  EXPECT_EQ(v->window(), nullptr);
  EXPECT_TRUE(v->autoresizesSubviews());
}

TEST_F(ViewGeometryTest, AViewIsDecodedFromAnArchive) {
  NSCoder coder(R"({"frame": [1, 2, 30, 40], "hidden": true, "autoresizingMask": 18, "autoresizesSubviews": false,
                    "wantsLayer": true})");
  const auto v = make<NSView>(coder);
  EXPECT_EQ(v->frame(), (CGRect{1, 2, 30, 40}));
  EXPECT_EQ(v->bounds(), (CGRect{0, 0, 30, 40}));
  EXPECT_TRUE(v->isHidden());
  EXPECT_TRUE(v->wantsLayer());
  EXPECT_EQ(v->autoresizingMask(), std::uint32_t{NSViewWidthSizable | NSViewHeightSizable});
  EXPECT_FALSE(v->autoresizesSubviews());
}

TEST_F(ViewGeometryTest, AnEmptyArchiveGivesAPlainView) {
  NSCoder coder("{}");
  const auto v = make<NSView>(coder);
  EXPECT_EQ(v->frame(), NSZeroRect);
  EXPECT_FALSE(v->isHidden());
  EXPECT_TRUE(v->autoresizesSubviews());
}

TEST_F(ViewGeometryTest, SubviewsAreFromBackToFront) {
  const auto parent = view({0, 0, 100, 100}), a = view({}), b = view({});
  parent->addSubview(a);
  parent->addSubview(b);
  EXPECT_THAT(parent->subviews(), ElementsAre(a, b));
  EXPECT_EQ(a->superview(), parent.get());
  parent->addSubview(a);
  EXPECT_THAT(parent->subviews(), ElementsAre(b, a));
}

TEST_F(ViewGeometryTest, AViewAddedElsewhereLeavesItsEarlierSuperview) {
  const auto first = view({0, 0, 100, 100}), second = view({0, 0, 100, 100}), child = view({});
  first->addSubview(child);
  second->addSubview(child);
  EXPECT_TRUE(first->subviews().empty());
  EXPECT_EQ(child->superview(), second.get());
}

TEST_F(ViewGeometryTest, AViewIsNeverAddedBelowItself) {
  const auto parent = view({}), child = view({});
  parent->addSubview(child);
  child->addSubview(parent);
  parent->addSubview(parent);
  EXPECT_EQ(parent->superview(), nullptr);
  EXPECT_TRUE(child->subviews().empty());
  EXPECT_THAT(parent->subviews(), ElementsAre(child));
}

namespace {

struct MovingView : NSView {
  using NSView::NSView;
  std::function<void()> onMove;
  void viewDidMoveToWindow() override {
    if (onMove) onMove();
  }
};

}  // namespace

TEST_F(ViewGeometryTest, AViewMayLeaveAgainWhileItComes) {
  const auto window = showWindow();
  const auto v = make<MovingView>(CGRect{0, 0, 5, 5});
  v->onMove = [&] { v->removeFromSuperview(); };
  window->contentView()->addSubview(v);
  EXPECT_EQ(v->superview(), nullptr);
  EXPECT_EQ(v->window(), nullptr);
  EXPECT_TRUE(window->contentView()->subviews().empty());
}

TEST_F(ViewGeometryTest, AViewMayGoElsewhereWhileItComes) {
  const auto window = showWindow(), other = showWindow();
  const auto v = make<MovingView>(CGRect{0, 0, 5, 5});
  v->onMove = [&] {
    if (v->window() == window.get()) other->contentView()->addSubview(v);
  };
  window->contentView()->addSubview(v);
  EXPECT_EQ(v->superview(), other->contentView().get());
  EXPECT_EQ(v->window(), other.get());
  EXPECT_TRUE(window->contentView()->subviews().empty());
  EXPECT_EQ(other->contentView()->subviews().size(), 1u);
}

TEST_F(ViewGeometryTest, AnAbsentViewIsNotAdded) {
  const auto parent = view({});
  parent->addSubview(nullptr);
  EXPECT_TRUE(parent->subviews().empty());
}

TEST_F(ViewGeometryTest, ASuperviewKeepsItsSubviewsAliveAndNotTheOtherWay) {
  auto parent = view({}), child = view({});
  parent->addSubview(child);
  const WeakRef<ProbeView> weak = child;
  child.reset();
  EXPECT_FALSE(weak.expired());
  const Ref<ProbeView> held = weak.lock();
  parent.reset();
  EXPECT_EQ(held->superview(), nullptr);
}

TEST_F(ViewGeometryTest, ARemovedViewHasNoSuperviewAndNoWindow) {
  const auto child = view({0, 0, 10, 10});
  const auto window = showWindowWith(child);
  EXPECT_EQ(child->window(), window.get());
  child->removeFromSuperview();
  EXPECT_EQ(child->window(), nullptr);
  EXPECT_EQ(child->superview(), nullptr);
  EXPECT_TRUE(window->contentView()->subviews().empty());
}

TEST_F(ViewGeometryTest, AWholeTreeComesIntoTheWindowAndLeavesIt) {
  const auto child = view({0, 0, 10, 10}), grandchild = view({0, 0, 5, 5});
  child->addSubview(grandchild);
  const auto window = showWindowWith(child);
  EXPECT_EQ(grandchild->window(), window.get());
  child->removeFromSuperview();
  EXPECT_EQ(grandchild->window(), nullptr);
  EXPECT_EQ(grandchild->superview(), child.get());
}

TEST_F(ViewGeometryTest, AViewThatOutlivesItsWindowHasNone) {
  const auto child = view({0, 0, 10, 10});
  auto window = showWindowWith(child);
  window.reset();
  EXPECT_EQ(child->window(), nullptr);
}

TEST_F(ViewGeometryTest, AViewIsItsOwnDescendantAndThatOfItsSuperviews) {
  const auto parent = view({}), child = view({}), other = view({});
  parent->addSubview(child);
  EXPECT_TRUE(child->isDescendantOf(child.get()));
  EXPECT_TRUE(child->isDescendantOf(parent.get()));
  EXPECT_FALSE(parent->isDescendantOf(child.get()));
  EXPECT_FALSE(child->isDescendantOf(other.get()));
}

TEST_F(ViewGeometryTest, TheResponderChainGoesUpTheTreeToTheWindow) {
  const auto child = view({0, 0, 10, 10});
  const auto window = showWindowWith(child);
  EXPECT_EQ(child->nextResponder(), window->contentView().get());
  EXPECT_EQ(window->contentView()->nextResponder(), window.get());
}

TEST_F(ViewGeometryTest, ANextResponderThatWasSetComesFirst) {
  const auto child = view({}), parent = view({}), other = view({});
  parent->addSubview(child);
  child->setNextResponder(other.get());
  EXPECT_EQ(child->nextResponder(), other.get());
}

TEST_F(ViewGeometryTest, ConversionMovesByTheFrame) {
  const auto parent = view({100, 100, 80, 80}), child = view({10, 20, 30, 40});
  parent->addSubview(child);
  EXPECT_EQ(child->convertPointToView({1, 2}, parent.get()), (CGPoint{11, 22}));
  EXPECT_EQ(child->convertPointFromView({11, 22}, parent.get()), (CGPoint{1, 2}));
  EXPECT_EQ(parent->convertRectFromView({1, 2, 3, 4}, child.get()), (CGRect{11, 22, 3, 4}));
}

TEST_F(ViewGeometryTest, ConversionTurnsAFlippedViewOver) {
  const auto parent = view({0, 0, 100, 100}), child = view({10, 20, 30, 40}, true);
  parent->addSubview(child);
  EXPECT_EQ(child->convertPointToView({0, 0}, parent.get()), (CGPoint{10, 60}));
  EXPECT_EQ(child->convertPointToView({5, 40}, parent.get()), (CGPoint{15, 20}));
  EXPECT_EQ(child->convertRectToView({0, 0, 30, 10}, parent.get()), (CGRect{10, 50, 30, 10}));
  EXPECT_EQ(child->convertPointFromView({10, 60}, parent.get()), (CGPoint{0, 0}));
}

TEST_F(ViewGeometryTest, AFlippedViewInAFlippedViewIsOnlyMoved) {
  const auto parent = view({0, 0, 100, 100}, true), child = view({10, 20, 30, 40}, true);
  parent->addSubview(child);
  EXPECT_EQ(child->convertPointToView({1, 2}, parent.get()), (CGPoint{11, 22}));
  EXPECT_EQ(child->convertPointToView({1, 2}, nullptr), (CGPoint{11, 78}));
}

TEST_F(ViewGeometryTest, AnUnflippedViewInAFlippedViewIsTurnedBack) {
  const auto parent = view({0, 0, 100, 100}, true), child = view({10, 20, 30, 40});
  parent->addSubview(child);
  EXPECT_EQ(child->convertPointToView({1, 2}, nullptr), (CGPoint{11, 42}));
}

TEST_F(ViewGeometryTest, ConversionFollowsTheScrolling) {
  const auto parent = view({0, 0, 100, 100}), child = view({10, 20, 30, 40});
  parent->addSubview(child);
  child->setBoundsOrigin({5, 7});
  EXPECT_EQ(child->bounds(), (CGRect{5, 7, 30, 40}));
  EXPECT_EQ(child->convertPointToView({5, 7}, parent.get()), (CGPoint{10, 20}));
  EXPECT_EQ(child->convertPointFromView({11, 22}, parent.get()), (CGPoint{6, 9}));
}

TEST_F(ViewGeometryTest, AScrolledFlippedViewShowsItsOriginAtTheTop) {
  const auto parent = view({0, 0, 100, 100}), child = view({10, 20, 30, 40}, true);
  parent->addSubview(child);
  child->setBoundsOrigin({0, 100});
  EXPECT_EQ(child->convertPointToView({0, 100}, parent.get()), (CGPoint{10, 60}));
  EXPECT_EQ(child->convertPointToView({0, 140}, parent.get()), (CGPoint{10, 20}));
}

TEST_F(ViewGeometryTest, ConversionGoesAcrossTheTree) {
  const auto parent = view({0, 0, 100, 100}), a = view({10, 10, 30, 30}, true), b = view({50, 50, 30, 30});
  parent->addSubview(a);
  parent->addSubview(b);
  EXPECT_EQ(a->convertPointToView({0, 0}, b.get()), (CGPoint{-40, -10}));
  EXPECT_EQ(b->convertPointFromView({0, 0}, a.get()), (CGPoint{-40, -10}));
}

TEST_F(ViewGeometryTest, AContentViewOfAWindowMayBePassedToItsNewSuperviewByTheWindowsOwnReference) {
  const auto window = showWindow();
  const auto box = view({0, 0, 10, 10});
  const Ref<NSView> content = window->contentView();
  box->addSubview(window->contentView());
  EXPECT_EQ(content->superview(), box.get());
  EXPECT_EQ(window->contentView(), nullptr);
}

TEST_F(ViewGeometryTest, VisibleIsWhatNoSuperviewCutsOff) {
  const auto parent = view({0, 0, 100, 100}), child = view({80, -10, 50, 50});
  parent->addSubview(child);
  EXPECT_EQ(child->visibleRect(), (CGRect{0, 10, 20, 40}));
  const auto outside = view({200, 0, 10, 10});
  parent->addSubview(outside);
  EXPECT_EQ(outside->visibleRect(), NSZeroRect);
}

TEST_F(ViewGeometryTest, AnUnsizableViewKeepsItsFrame) {
  const auto parent = view({0, 0, 100, 100}), child = view({10, 20, 30, 40});
  parent->addSubview(child);
  parent->setFrameSize({200, 300});
  EXPECT_EQ(child->frame(), (CGRect{10, 20, 30, 40}));
}

TEST_F(ViewGeometryTest, ASizableViewTakesTheWholeChange) {
  const auto parent = view({0, 0, 100, 100}), child = view({10, 20, 30, 40});
  child->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
  parent->addSubview(child);
  parent->setFrameSize({150, 90});
  EXPECT_EQ(child->frame(), (CGRect{10, 20, 80, 30}));
}

TEST_F(ViewGeometryTest, AFlexibleMarginTakesTheChange) {
  const auto parent = view({0, 0, 100, 100}), child = view({10, 20, 30, 40});
  child->setAutoresizingMask(NSViewMinXMargin | NSViewMaxYMargin);
  parent->addSubview(child);
  parent->setFrameSize({150, 90});
  EXPECT_EQ(child->frame(), (CGRect{60, 20, 30, 40}));
}

TEST_F(ViewGeometryTest, FlexiblePartsShareTheChangeByTheirLengths) {
  const auto parent = view({0, 0, 100, 100}), child = view({10, 0, 30, 100});
  child->setAutoresizingMask(NSViewMinXMargin | NSViewWidthSizable | NSViewMaxXMargin);
  parent->addSubview(child);
  parent->setFrameSize({200, 100});
  EXPECT_EQ(child->frame(), (CGRect{20, 0, 60, 100}));
}

TEST_F(ViewGeometryTest, FlexibleMarginsOfNoLengthShareInEqualParts) {
  const auto parent = view({0, 0, 30, 30}), child = view({0, 0, 30, 30});
  child->setAutoresizingMask(NSViewMinXMargin | NSViewMaxXMargin);
  parent->addSubview(child);
  parent->setFrameSize({50, 30});
  EXPECT_EQ(child->frame(), (CGRect{10, 0, 30, 30}));
}

TEST_F(ViewGeometryTest, ASuperviewMayLeaveItsSubviewsAlone) {
  const auto parent = view({0, 0, 100, 100}), child = view({10, 20, 30, 40});
  child->setAutoresizingMask(NSViewWidthSizable);
  parent->setAutoresizesSubviews(false);
  parent->addSubview(child);
  parent->setFrameSize({150, 90});
  EXPECT_EQ(child->frame(), (CGRect{10, 20, 30, 40}));
}

TEST_F(ViewGeometryTest, MovingASuperviewMovesNoFrameBelow) {
  const auto parent = view({0, 0, 100, 100}), child = view({10, 20, 30, 40});
  child->setAutoresizingMask(NSViewWidthSizable | NSViewMinXMargin);
  parent->addSubview(child);
  parent->setFrameOrigin({50, 60});
  EXPECT_EQ(child->frame(), (CGRect{10, 20, 30, 40}));
}

TEST_F(ViewGeometryTest, ASubviewThatIsRemovedWhileItsSuperviewComesIntoAWindowIsInNoWindow) {
  const auto [superview, first, second] = viewsThatCome();
  first->onCome = [&second = second] { second->removeFromSuperview(); };
  const auto window = showWindowWith(superview);
  EXPECT_EQ(first->window(), window.get());
  EXPECT_EQ(second->window(), nullptr);
}

TEST_F(ViewGeometryTest, AViewThatIsMovedOnWhileItComesIntoAWindowIsAsAWholeInTheOtherOne) {
  const auto [superview, first, second] = viewsThatCome();
  const auto other = showWindow();
  first->onCome = [&other, &superview = superview] { other->contentView()->addSubview(superview); };
  const auto window = showWindowWith(superview);
  for (const Ref<NSView>& each : {Ref<NSView>(superview), Ref<NSView>(first), Ref<NSView>(second)})
    EXPECT_EQ(each->window(), other.get());
}
