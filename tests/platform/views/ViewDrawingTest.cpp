#include "tessaluna/platform/views/ViewDrawing.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::ProbeView;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Rects = std::vector<CGRect>;

class ViewDrawingTest : public harness::StillWorld {
 protected:
  // A view in a painted window, with what was drawn so far forgotten.
  void show(const Ref<ProbeView>& view) {
    window = showWindowWith(view);
    view->drawn.clear();
  }
  const Rects& lastDirty() { return nativeOf(*window).paints().back().dirty; }
  Ref<NSWindow> window;
};

Ref<ProbeView> view(CGRect frame) { return make<ProbeView>(frame); }

}  // namespace

TEST_F(ViewDrawingTest, NothingIsDrawnUntilTheDisplay) {
  const auto v = view({10, 20, 30, 40});
  show(v);
  v->setNeedsDisplay(true);
  EXPECT_THAT(v->drawn, IsEmpty());
  EXPECT_TRUE(v->needsDisplay());
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(CGRect{0, 0, 30, 40}));
  EXPECT_FALSE(v->needsDisplay());
}

TEST_F(ViewDrawingTest, ManyWishesAreOneDrawing) {
  const auto v = view({10, 20, 30, 40});
  show(v);
  v->setNeedsDisplay(true);
  v->setNeedsDisplayInRect({0, 0, 5, 5});
  v->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_EQ(v->drawn.size(), 1u);
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(ViewDrawingTest, OnlyWhatChangedIsPainted) {
  const auto v = view({10, 20, 30, 40});
  show(v);
  v->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(lastDirty(), ElementsAre(CGRect{10, 20, 30, 40}));
}

TEST_F(ViewDrawingTest, APartIsDrawnAsThatPart) {
  const auto v = view({10, 20, 30, 40});
  show(v);
  v->setNeedsDisplayInRect({5, 6, 7, 8});
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(CGRect{5, 6, 7, 8}));
  EXPECT_THAT(lastDirty(), ElementsAre(CGRect{15, 26, 7, 8}));
}

TEST_F(ViewDrawingTest, APartBeyondTheBoundsIsCutToThem) {
  const auto v = view({10, 20, 30, 40});
  show(v);
  v->setNeedsDisplayInRect({25, 35, 100, 100});
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(CGRect{25, 35, 5, 5}));
}

TEST_F(ViewDrawingTest, APartIsRoundedOutwardToWholeDevicePixels) {
  desktop.setScale(2);
  const auto v = view({10, 20, 30, 40});
  show(v);
  v->setNeedsDisplayInRect({5.1, 5.1, 1, 1});
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(CGRect{5, 5, 1.5, 1.5}));
}

TEST_F(ViewDrawingTest, AWholeViewIsDrawnAsExactlyItsBoundsAtAFractionalScaleAndFrame) {
  desktop.setScale(1.25);
  const auto v = view({10.3, 20.7, 30.1, 40.9});
  show(v);
  v->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(v->bounds()));
}

TEST_F(ViewDrawingTest, AWholeViewIsDrawnAsExactlyItsBoundsAtAnyFrameAndScale) {
  for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
    desktop.setScale(scale);
    for (int i = 0; i < 40; ++i) {
      const auto outer = view({0.1 * i, 0.7 * i / 3, 60.3, 70.7}), inner = view({0.7, 0.3 * i / 7, 20.1, 30.9});
      outer->flipped = i % 2;
      outer->addSubview(inner);
      show(outer);
      inner->setBoundsOrigin({0.1, 0.3 * i});
      desktop.settle();
      inner->drawn.clear();
      inner->setNeedsDisplay(true);
      desktop.settle();
      ASSERT_THAT(inner->drawn, ElementsAre(inner->bounds())) << "scale " << scale << ", case " << i;
      inner->drawn.clear();
      outer->setNeedsDisplay(true);
      desktop.settle();
      ASSERT_THAT(inner->drawn, ElementsAre(inner->bounds())) << "with its superview, scale " << scale << ", case " << i;
    }
  }
}

TEST_F(ViewDrawingTest, AWholeViewIsDrawnAsItsBoundsAlsoWhereASuperviewCutsIt) {
  const auto outer = view({0, 0, 50, 50}), inner = view({40, 40, 20, 20});
  outer->addSubview(inner);
  show(outer);
  inner->drawn.clear();
  inner->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(inner->drawn, ElementsAre(CGRect{0, 0, 20, 20}));
  EXPECT_THAT(lastDirty(), ElementsAre(CGRect{40, 40, 10, 10}));
}

TEST_F(ViewDrawingTest, AfterAWholeDrawingAPartIsAPartAgain) {
  const auto v = view({10, 20, 30, 40});
  show(v);
  v->setNeedsDisplay(true);
  desktop.settle();
  v->setNeedsDisplayInRect({0, 0, 5, 5});
  desktop.settle();
  EXPECT_EQ(v->drawn.back(), (CGRect{0, 0, 5, 5}));
}

TEST_F(ViewDrawingTest, BackToFrontASuperviewFirst) {
  const auto v = view({0, 0, 100, 100}), a = view({0, 0, 50, 50}), b = view({10, 10, 50, 50});
  v->addSubview(a);
  v->addSubview(b);
  show(v);
  std::vector<std::string> order;
  v->onDraw = [&](CGRect) { order.push_back("superview"); };
  a->onDraw = [&](CGRect) { order.push_back("back"); };
  b->onDraw = [&](CGRect) { order.push_back("front"); };
  v->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(order, ElementsAre("superview", "back", "front"));
}

TEST_F(ViewDrawingTest, WhatLiesUnderAChangeIsDrawnAgainInThatPart) {
  const auto v = view({0, 0, 100, 100}), child = view({20, 30, 10, 10});
  v->addSubview(child);
  show(v);
  child->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(CGRect{20, 30, 10, 10}));
}

TEST_F(ViewDrawingTest, BehindAnOpaqueViewThatCoversTheChangeNothingIsDrawn) {
  const auto v = view({0, 0, 100, 100}), back = view({0, 0, 100, 100}), front = view({10, 10, 50, 50});
  v->addSubview(back);
  v->addSubview(front);
  front->opaque = true;
  show(v);
  back->drawn.clear();
  front->drawn.clear();
  front->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(v->drawn, IsEmpty());
  EXPECT_THAT(back->drawn, IsEmpty());
  EXPECT_THAT(front->drawn, ElementsAre(CGRect{0, 0, 50, 50}));
}

TEST_F(ViewDrawingTest, AnOpaqueViewThatCoversOnlyAPartHidesNothing) {
  const auto v = view({0, 0, 100, 100}), front = view({10, 10, 50, 50});
  v->addSubview(front);
  front->opaque = true;
  show(v);
  v->setNeedsDisplayInRect({0, 0, 20, 20});
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(CGRect{0, 0, 20, 20}));
}

TEST_F(ViewDrawingTest, BehindTheEdgeOfAnOpaqueViewWithinAPixelTheChangeIsDrawn) {
  desktop.setScale(1.5);
  const auto v = view({0, 0, 100, 67}), low = view({0, 0, 50, 66}), high = view({50, 0, 50, 67});
  v->addSubview(low);
  v->addSubview(high);
  low->opaque = high->opaque = true;
  show(v);
  low->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(v->drawn, IsEmpty());
  high->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(CGRect{50, 0, 50, 67}));
}

TEST_F(ViewDrawingTest, BehindAnOpaqueViewThatIsCutWithinAPixelTheChangeIsDrawnInWholePixels) {
  desktop.setScale(1.5);
  const auto outer = view({0, 0, 67, 100}), back = view({0, 0, 90, 100}), front = view({0, 0, 90, 100});
  outer->addSubview(back);
  outer->addSubview(front);
  front->opaque = true;
  show(outer);
  back->drawn.clear();
  front->drawn.clear();
  front->setNeedsDisplayInRect({60, 0, 30, 10});
  desktop.settle();
  EXPECT_EQ(back->drawn, front->drawn);
  ASSERT_EQ(front->drawn.size(), 1u);
  EXPECT_NEAR(CGRectGetMaxX(front->drawn[0]), 101 / 1.5, 1e-9);
}

TEST_F(ViewDrawingTest, AHiddenOpaqueViewHidesNothing) {
  const auto v = view({0, 0, 100, 100}), front = view({0, 0, 100, 100});
  v->addSubview(front);
  front->opaque = true;
  front->setHidden(true);
  show(v);
  v->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_EQ(v->drawn.size(), 1u);
}

TEST_F(ViewDrawingTest, AHiddenViewAndAllBelowItDrawNothing) {
  const auto v = view({0, 0, 100, 100}), child = view({0, 0, 10, 10});
  v->addSubview(child);
  show(v);
  v->setHidden(true);
  desktop.settle();
  v->drawn.clear();
  child->drawn.clear();
  v->setNeedsDisplay(true);
  child->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(v->drawn, IsEmpty());
  EXPECT_THAT(child->drawn, IsEmpty());
  EXPECT_TRUE(child->isHiddenOrHasHiddenAncestor());
  EXPECT_FALSE(child->isHidden());
}

TEST_F(ViewDrawingTest, HidingIsReportedToAllThatWereShownBefore) {
  class Listener : public NSView {
   public:
    using NSView::NSView;
    void viewDidHide() override {
      ++hidings;
      if (leaves) removeFromSuperview();
    }
    int hidings = 0;
    bool leaves = false;
  };
  const auto outer = make<Listener>(CGRect{0, 0, 50, 50}), inner = make<Listener>(CGRect{0, 0, 20, 20});
  const auto second = make<Listener>(CGRect{20, 20, 20, 20});
  outer->addSubview(inner);
  outer->addSubview(second);
  const auto hidings = [&] { return std::vector<int>{outer->hidings, inner->hidings, second->hidings}; };
  outer->setHidden(true);
  EXPECT_EQ(hidings(), (std::vector<int>{1, 1, 1}));
  outer->setHidden(true);
  inner->setHidden(true);  // was hidden with its superview
  EXPECT_EQ(hidings(), (std::vector<int>{1, 1, 1}));
  outer->setHidden(false);
  inner->leaves = second->leaves = true;
  outer->setHidden(true);  // inner was not shown
  EXPECT_EQ(hidings(), (std::vector<int>{2, 1, 2}));
  EXPECT_EQ(second->superview(), nullptr);
}

TEST_F(ViewDrawingTest, HidingAndShowingRedrawTheArea) {
  const auto v = view({0, 0, 100, 100}), child = view({20, 30, 10, 10});
  v->addSubview(child);
  show(v);
  child->setHidden(true);
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(CGRect{20, 30, 10, 10}));
  child->setHidden(false);
  desktop.settle();
  EXPECT_EQ(v->drawn.size(), 2u);
  EXPECT_EQ(child->drawn.back(), (CGRect{0, 0, 10, 10}));
}

TEST_F(ViewDrawingTest, SettingHiddenToWhatItIsRedrawsNothing) {
  const auto v = view({0, 0, 100, 100});
  show(v);
  v->setHidden(false);
  desktop.settle();
  EXPECT_THAT(nativeOf(*window).paints(), IsEmpty());
}

TEST_F(ViewDrawingTest, MovingAViewRedrawsWhereItWasAndWhereItIs) {
  const auto v = view({0, 0, 100, 100}), child = view({0, 0, 10, 10});
  v->addSubview(child);
  show(v);
  child->setFrameOrigin({50, 60});
  desktop.settle();
  EXPECT_THAT(lastDirty(), testing::UnorderedElementsAre(CGRect{0, 0, 10, 10}, CGRect{50, 60, 10, 10}));
}

TEST_F(ViewDrawingTest, RemovingAViewRedrawsWhereItWas) {
  const auto v = view({0, 0, 100, 100}), child = view({5, 6, 10, 10});
  v->addSubview(child);
  show(v);
  child->removeFromSuperview();
  desktop.settle();
  EXPECT_THAT(lastDirty(), ElementsAre(CGRect{5, 6, 10, 10}));
}

TEST_F(ViewDrawingTest, SettingTheSameFrameRedrawsNothing) {
  const auto v = view({0, 0, 100, 100});
  show(v);
  v->setFrame({0, 0, 100, 100});
  v->setBoundsOrigin({0, 0});
  desktop.settle();
  EXPECT_THAT(nativeOf(*window).paints(), IsEmpty());
}

TEST_F(ViewDrawingTest, AViewOutsideItsSuperviewMarksNothing) {
  const auto v = view({0, 0, 50, 50}), child = view({60, 0, 10, 10});
  v->addSubview(child);
  show(v);
  child->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(nativeOf(*window).paints(), IsEmpty());
}

TEST_F(ViewDrawingTest, AViewDrawsInItsOwnSpaceCutToItsBounds) {
  const auto v = view({10, 20, 30, 40});
  v->onDraw = [](CGRect rect) { NSBezierPath::bezierPathWithRect(rect)->fill(); };
  show(v);
  v->setNeedsDisplay(true);
  desktop.settle();
  const auto& lines = nativeOf(*window).paints().back().lines;
  EXPECT_EQ(harness::only("concat", lines).back(), R"({"op":"concat","transform":[1,0,0,1,10,20]})");
  EXPECT_EQ(harness::only("clipRect", lines).back(), R"({"op":"clipRect","rect":[0,0,30,40]})");
  EXPECT_EQ(harness::only("save", lines).size(), harness::only("restore", lines).size());
}

TEST_F(ViewDrawingTest, AFlippedViewDrawsDownward) {
  const auto v = view({10, 20, 30, 40});
  v->flipped = true;
  bool wasFlipped = false;
  v->onDraw = [&](CGRect) { wasFlipped = NSGraphicsContext::currentContext()->isFlipped(); };
  show(v);
  v->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_TRUE(wasFlipped);
  EXPECT_EQ(harness::only("concat", nativeOf(*window).paints().back().lines).back(),
            R"({"op":"concat","transform":[1,0,0,-1,10,60]})");
}

TEST_F(ViewDrawingTest, AnUnflippedViewInAFlippedOneDrawsUpward) {
  const auto v = view({0, 0, 100, 100}), child = view({0, 0, 10, 10});
  v->flipped = true;
  v->addSubview(child);
  bool wasFlipped = true;
  child->onDraw = [&](CGRect) { wasFlipped = NSGraphicsContext::currentContext()->isFlipped(); };
  show(v);
  EXPECT_FALSE(wasFlipped);
}

TEST_F(ViewDrawingTest, WhatAViewSetsInItsContextEndsWithItsDrawing) {
  const auto v = view({0, 0, 100, 100}), child = view({0, 0, 10, 10});
  v->addSubview(child);
  show(v);
  v->onDraw = [](CGRect) { NSGraphicsContext::currentCgContext().setAlpha(0.5); };
  v->setNeedsDisplay(true);
  desktop.settle();
  const auto& lines = nativeOf(*window).paints().back().lines;
  const auto alpha = std::find(lines.begin(), lines.end(), R"({"op":"setAlpha","alpha":0.5})");
  ASSERT_NE(alpha, lines.end());
  EXPECT_EQ(*(alpha + 1), R"({"op":"restore"})");
}

TEST_F(ViewDrawingTest, AViewDrawsIntoTheContextThatItIsGiven) {
  const auto v = view({10, 20, 30, 40}), inside = view({1, 2, 3, 4});
  v->addSubview(inside);
  v->onDraw = [](CGRect rect) { NSBezierPath::bezierPathWithRect(rect)->fill(); };
  inside->onDraw = v->onDraw;
  tessaluna::backend::recording::RecordingCanvas canvas;
  CGContext context(canvas);
  const auto given = NSGraphicsContext::graphicsContextWithCGContext(context, false);
  const auto fills = [&] {
    return std::ranges::count_if(canvas.lines(), [](auto& line) { return line.find("fill") != std::string::npos; });
  };
  v->displayRectInContext(v->frame(), *given);
  EXPECT_EQ(fills(), 2);
  EXPECT_FALSE(NSGraphicsContext::currentContext());
  const harness::Lines elsewhere = harness::recordingOf([&] { v->displayRectInContext(v->frame(), *given); });
  EXPECT_EQ(fills(), 4);
  EXPECT_THAT(elsewhere, IsEmpty());
}

TEST_F(ViewDrawingTest, AViewMayRemoveItselfWhileItDraws) {
  const auto v = view({0, 0, 100, 100});
  auto child = view({0, 0, 10, 10});
  v->addSubview(child);
  show(v);
  child->onDraw = [weak = WeakRef<ProbeView>(child)](CGRect) { weak.lock()->removeFromSuperview(); };
  child->setNeedsDisplay(true);
  child.reset();
  desktop.settle();
  EXPECT_THAT(v->subviews(), IsEmpty());
}

TEST_F(ViewDrawingTest, AWishWhileDrawingIsGrantedWithTheNextDisplay) {
  const auto v = view({0, 0, 100, 100});
  show(v);
  v->onDraw = [&](CGRect) {
    if (v->drawn.size() == 1) v->setNeedsDisplayInRect({0, 0, 5, 5});
  };
  v->setNeedsDisplay(true);
  desktop.settle();
  desktop.settle();
  EXPECT_THAT(v->drawn, ElementsAre(CGRect{0, 0, 100, 100}, CGRect{0, 0, 5, 5}));
}

TEST_F(ViewDrawingTest, AViewWithoutAWindowMayWishForADisplay) {
  const auto v = view({0, 0, 10, 10});
  v->setNeedsDisplay(true);
  EXPECT_TRUE(v->needsDisplay());
  v->setNeedsDisplay(false);
  EXPECT_FALSE(v->needsDisplay());
}
