#include "tessaluna/platform/windows/FocusRing.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/FocusRingSurroundings.h"
#include "tessaluna/platform/views/NSClipView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace tessaluna::platform {
namespace {

using backend::SystemColor;
using backend::headless::Paint;
using backend::headless::Pictures;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// Takes keys, and says where in it the keyboard is.
class KeyView : public harness::ProbeView {
 public:
  explicit KeyView(CGRect frame) : ProbeView(frame) { acceptsFirst = true; }
  CGRect focusRingMaskBounds() const override { return mask.value_or(bounds()); }
  std::optional<CGRect> mask;
};

class FocusRingTest : public harness::StillWorld {
 protected:
  FocusRingTest() {
    desktop.setSystemColor(SystemColor::WindowBackground, {1, 1, 1});
    desktop.setSystemColor(SystemColor::KeyboardFocusIndicator, {0, 0, 1});
    desktop.setSystemColor(SystemColor::ControlText, {0.1, 0.1, 0.1});
  }
  void show() {
    window = showWindow();
    window->contentView()->addSubview(first);
    window->contentView()->addSubview(second);
    desktop.settle();
    forget();
  }
  void forget() {
    nativeOf(*window).forgetPaints();
    first->drawn.clear();
  }
  void press(std::string_view key) {
    user.pressKey(std::string(key));
    desktop.settle();
  }
  const std::vector<Paint>& paints() { return nativeOf(*window).paints(); }
  // The ring's fills in a redraw of everything: those in its color.
  harness::Lines ringLines(std::string_view color = "keyboardFocusIndicatorColor") {
    forget();
    window->invalidateRect({{0, 0}, window->frame().size});
    desktop.settle();
    harness::Lines lines;
    bool isInColor = false;
    for (const std::string& line : paints().back().lines) {
      if (line.find("\"setFillColor\"") != std::string::npos) isInColor = line.find(color) != std::string::npos;
      if (isInColor && line.starts_with("{\"op\":\"fill\"")) lines.push_back(line);
    }
    return lines;
  }
  bool hasRing() { return !ringLines().empty(); }

  const Ref<KeyView> first = make<KeyView>(CGRect{20, 20, 60, 30}), second = make<KeyView>(CGRect{20, 80, 60, 30});
  Ref<NSWindow> window;
};

TEST_F(FocusRingTest, ShowsWhereTheTabKeyBringsTheKeyboard) {
  show();
  EXPECT_FALSE(hasRing());
  press(NSTabCharacter);
  ASSERT_EQ(window->firstResponder(), first.get());
  EXPECT_TRUE(hasRing());
}

TEST_F(FocusRingTest, IsNotShownAfterAPress) {
  show();
  user.click(*window, {30, 30});
  ASSERT_EQ(window->firstResponder(), first.get());
  EXPECT_FALSE(hasRing());
}

TEST_F(FocusRingTest, IsNotShownWhereTheProgramBringsTheKeyboard) {
  show();
  window->makeFirstResponder(first.get());
  EXPECT_FALSE(hasRing());
}

TEST_F(FocusRingTest, ShowsWhereAKeyHasAViewHandTheKeyboardOn) {
  show();
  window->makeFirstResponder(first.get());
  first->onCall = [this](const std::string& what) {
    if (what == "keyDown") window->makeFirstResponder(second.get());
  };
  user.pressKey(NSDownArrowFunctionKey);
  ASSERT_EQ(window->firstResponder(), second.get());
  EXPECT_TRUE(hasRing());
}

TEST_F(FocusRingTest, GoesWithAPressElsewhere) {
  show();
  press(NSTabCharacter);
  user.click(*window, {30, 90});
  ASSERT_EQ(window->firstResponder(), second.get());
  EXPECT_FALSE(hasRing());
}

TEST_F(FocusRingTest, StaysAtAPressOnTheViewThatHasIt) {
  show();
  press(NSTabCharacter);
  user.click(*window, {30, 30});
  EXPECT_TRUE(hasRing());
}

TEST_F(FocusRingTest, LeavesWithTheKeyStatusAndComesBackWithIt) {
  show();
  press(NSTabCharacter);
  const auto other = showWindow({500, 100, 100, 100});
  EXPECT_FALSE(hasRing());
  window->makeKeyAndOrderFront(nullptr);
  desktop.settle();
  EXPECT_TRUE(hasRing());
}

TEST_F(FocusRingTest, IsDrawnAfterTheViewsAndNotByThem) {
  show();
  press(NSTabCharacter);
  const Ref<NSColor> mark = NSColor::redColor();
  first->onDraw = [&](CGRect rect) {
    mark->setFill();
    NSRectFill(rect);
  };
  first->setNeedsDisplay(true);
  ringLines();
  const harness::Lines colors = harness::only("setFillColor", paints().back().lines);
  ASSERT_GE(colors.size(), 2u);
  EXPECT_THAT(colors[colors.size() - 2], HasSubstr("redColor"));
  EXPECT_THAT(colors.back(), HasSubstr("keyboardFocusIndicatorColor"));
}

TEST_F(FocusRingTest, OnlyItsSidesAreRedrawnWhereItComesAndGoes) {
  show();
  press(NSTabCharacter);
  // Outside of the view, two points wide.
  const auto sides =
      UnorderedElementsAre(CGRect{18, 18, 64, 2}, CGRect{18, 50, 64, 2}, CGRect{18, 20, 2, 30}, CGRect{80, 20, 2, 30});
  ASSERT_EQ(paints().size(), 1u);
  EXPECT_THAT(paints().back().dirty, sides);
  EXPECT_THAT(first->drawn, IsEmpty());
  forget();
  window->makeFirstResponder(nullptr);
  desktop.settle();
  ASSERT_EQ(paints().size(), 1u);
  EXPECT_THAT(paints().back().dirty, sides);
}

TEST_F(FocusRingTest, LeavesThePixelsAsTheyWere) {
  desktop.setPictures(Pictures::Painted);
  desktop.setScale(1.5);
  show();
  const auto pixels = [this] {
    const auto* picture = nativeOf(*window).picture();
    std::vector<std::uint32_t> all;
    for (int y = 0; y < picture->height(); ++y) all.insert(all.end(), picture->row(y), picture->row(y) + picture->width());
    return all;
  };
  const auto before = pixels();
  press(NSTabCharacter);
  const auto with = pixels();
  EXPECT_NE(with, before);
  // All of it drawn again is the same.
  EXPECT_TRUE(hasRing());
  EXPECT_EQ(pixels(), with);
  window->makeFirstResponder(nullptr);
  desktop.settle();
  EXPECT_EQ(pixels(), before);
}

TEST_F(FocusRingTest, LiesInsideOfWhatCutsItOff) {
  show();
  const auto clip = make<NSClipView>(CGRect{100, 20, 50, 60});
  const auto document = make<KeyView>(CGRect{0, 0, 50, 500});
  clip->setDocumentView(document);
  window->contentView()->addSubview(clip);
  first->acceptsFirst = second->acceptsFirst = false;
  desktop.settle();
  forget();
  press(NSTabCharacter);
  ASSERT_EQ(window->firstResponder(), document.get());
  EXPECT_THAT(paints().back().dirty, UnorderedElementsAre(CGRect{100, 20, 50, 2}, CGRect{100, 78, 50, 2},
                                                          CGRect{100, 22, 2, 56}, CGRect{148, 22, 2, 56}));
}

TEST_F(FocusRingTest, IsNotShownForAViewThatIsOutOfSight) {
  show();
  const auto clip = make<NSClipView>(CGRect{100, 20, 50, 60});
  const auto document = make<NSView>(CGRect{0, 0, 50, 500});
  const auto inner = make<KeyView>(CGRect{5, 5, 40, 20});
  document->addSubview(inner);
  clip->setDocumentView(document);
  window->contentView()->addSubview(clip);
  clip->scrollToPoint({0, 0});
  first->acceptsFirst = second->acceptsFirst = false;
  press(NSTabCharacter);
  ASSERT_EQ(window->firstResponder(), inner.get());
  EXPECT_TRUE(hasRing());
  clip->scrollToPoint({0, 100});
  EXPECT_FALSE(hasRing());
}

TEST_F(FocusRingTest, FollowsItsView) {
  show();
  press(NSTabCharacter);
  forget();
  first->setFrameOrigin({100, 20});
  desktop.settle();
  harness::Lines lines = ringLines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_THAT(lines[0], HasSubstr("98"));
  EXPECT_THAT(lines[0], HasSubstr("162"));
}

TEST_F(FocusRingTest, FollowsThePlaceWithinAView) {
  first->mask = CGRect{0, 0, 20, 30};
  show();
  press(NSTabCharacter);
  forget();
  first->onCall = [this](const std::string& what) {
    if (what != "keyDown") return;
    first->mask = CGRect{40, 0, 20, 30};
    first->noteFocusRingMaskChanged();
  };
  user.pressKey(NSRightArrowFunctionKey);
  desktop.settle();
  EXPECT_FALSE(paints().empty());
  EXPECT_THAT(ringLines(), ElementsAre(HasSubstr("82")));
}

TEST_F(FocusRingTest, FollowsAPlaceThatADrawingMoves) {
  first->mask = CGRect{0, 0, 20, 30};
  show();
  press(NSTabCharacter);
  first->onDraw = [this](CGRect) { first->mask = CGRect{40, 0, 20, 30}; };
  first->setNeedsDisplay(true);
  desktop.settle();
  forget();
  desktop.settle();
  EXPECT_FALSE(paints().empty());
  EXPECT_THAT(ringLines(), ElementsAre(HasSubstr("82")));
}

TEST_F(FocusRingTest, ComesWithAKeyThatMovesThePlaceWithinAViewAndGoesWithAPressThatDoes) {
  show();
  user.click(*window, {30, 30});
  first->onCall = [this](const std::string& what) {
    if (what == "keyDown" || what == "mouseDown") first->noteFocusRingMaskChanged();
  };
  user.pressKey(NSRightArrowFunctionKey);
  EXPECT_TRUE(hasRing());
  first->noteFocusRingMaskChanged();  // by the program: as it is
  EXPECT_TRUE(hasRing());
  user.click(*window, {30, 30});
  EXPECT_FALSE(hasRing());
}

TEST_F(FocusRingTest, IsNotShownForHiddenViewsEmptyMasksAndThoseThatWantNone) {
  show();
  press(NSTabCharacter);
  first->setFocusRingType(NSFocusRingTypeNone);
  EXPECT_FALSE(hasRing());
  first->setFocusRingType(NSFocusRingTypeExterior);
  EXPECT_TRUE(hasRing());
  first->mask = CGRect{};
  first->noteFocusRingMaskChanged();
  EXPECT_FALSE(hasRing());
  first->mask.reset();
  first->refusesToResign = true;
  first->setHidden(true);
  ASSERT_EQ(window->firstResponder(), first.get());
  EXPECT_FALSE(hasRing());
}

TEST_F(FocusRingTest, TextColorReplacesAHighlightThatIsHardToSee) {
  show();
  press(NSTabCharacter);
  desktop.setSystemColor(SystemColor::KeyboardFocusIndicator, {0.6, 0.8, 1});
  EXPECT_TRUE(ringLines("keyboardFocusIndicatorColor").empty());
  EXPECT_FALSE(ringLines("controlTextColor").empty());
  // Against the ground that the window has.
  window->setBackgroundColor(NSColor::blackColor());
  EXPECT_FALSE(ringLines("keyboardFocusIndicatorColor").empty());
}

TEST_F(FocusRingTest, AHighlightIsSeenWellEnoughFromAContrastOfThreeOn) {
  show();
  press(NSTabCharacter);
  desktop.setSystemColor(SystemColor::KeyboardFocusIndicator, {0.58, 0.58, 0.58});  // 3.04 to 1 on white
  EXPECT_FALSE(ringLines("keyboardFocusIndicatorColor").empty());
  desktop.setSystemColor(SystemColor::KeyboardFocusIndicator, {0.59, 0.59, 0.59});  // 2.94 to 1
  EXPECT_TRUE(ringLines("keyboardFocusIndicatorColor").empty());
}

TEST_F(FocusRingTest, OfAViewOverAnotherShowsAroundThatOneAndOnItsGround) {
  // Lies over a view, and has the keyboard for it.
  struct Overlay : KeyView, FocusRingSurroundings {
    using KeyView::KeyView;
    const NSView& viewWithFocusRing() const override { return *superview(); }
    Ref<NSColor> focusRingGround() const override { return ground; }
    Ref<NSColor> ground;
  };
  show();
  const auto overlay = make<Overlay>(second->bounds());
  second->addSubview(overlay);
  first->acceptsFirst = second->acceptsFirst = false;
  desktop.settle();
  forget();
  press(NSTabCharacter);
  ASSERT_EQ(window->firstResponder(), overlay.get());
  EXPECT_THAT(paints().back().dirty, UnorderedElementsAre(CGRect{18, 78, 64, 2}, CGRect{18, 110, 64, 2},
                                                          CGRect{18, 80, 2, 30}, CGRect{80, 80, 2, 30}));
  EXPECT_TRUE(hasRing());
  desktop.setSystemColor(SystemColor::AlternateSelectedControlText, {1, 1, 1});
  overlay->ground = NSColor::colorWithSRGBRed(0, 0, 0.8, 1);
  EXPECT_FALSE(ringLines("alternateSelectedControlTextColor").empty());
  overlay->ground = NSColor::colorWithSRGBRed(0.45, 0.55, 1, 1);
  EXPECT_FALSE(ringLines("controlTextColor").empty());
}

TEST_F(FocusRingTest, FieldShowsItsOwnAndNoSecondOne) {
  show();
  const auto field = make<NSTextField>(CGRect{100, 20, 80, 24});
  window->contentView()->addSubview(field);
  first->acceptsFirst = second->acceptsFirst = false;
  press(NSTabCharacter);
  ASSERT_TRUE(field->currentEditor());
  EXPECT_TRUE(ringLines().empty());
  const auto strokes = [this] {
    int count = 0;
    for (const std::string& line : harness::only("setStrokeColor", paints().back().lines))
      if (line.find("keyboardFocusIndicatorColor") != std::string::npos) ++count;
    return count;
  };
  EXPECT_EQ(strokes(), 1);
  field->setFocusRingType(NSFocusRingTypeNone);
  ringLines();
  EXPECT_EQ(strokes(), 0);
}

}  // namespace
}  // namespace tessaluna::platform
