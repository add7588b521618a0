#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/views/NSScroller.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSWindowOcclusion.h"
#include "tests/harness/ProbeView.h"
#include "tests/uikit/suggestions/PopUpWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Calls;

using SuggestionsWindowControllerConstruction = harness::PopUpWorld;

TEST_F(SuggestionsWindowControllerConstruction, MakesAWindowWithAScrollViewAndAnEmptyList) {
  EXPECT_EQ(popUp()->frame(), (CGRect{0, 0, 20, 20}));
  EXPECT_EQ(popUp()->styleMask(), NSWindowStyleMaskBorderless);
  EXPECT_FALSE(popUp()->isVisible());
  EXPECT_EQ(popUp()->windowController(), controller);
  ASSERT_TRUE(scrollView());
  EXPECT_TRUE(scrollView()->hasVerticalScroller());
  EXPECT_FALSE(scrollView()->hasHorizontalScroller());
  EXPECT_TRUE(scrollView()->autohidesScrollers());
  EXPECT_EQ(scrollView()->autoresizingMask(), 18u);
  ASSERT_TRUE(std::dynamic_pointer_cast<SuggestionsContentView>(content()));
  EXPECT_FALSE(content()->autoresizesSubviews());
  EXPECT_EQ(content()->autoresizingMask(), 2u);
  EXPECT_EQ(controller->suggestions(), std::nullopt);
  EXPECT_EQ(controller->selectedView(), nullptr);
}

TEST_F(SuggestionsWindowControllerConstruction, FromACoderBuildsNothing) {
  NSCoder coder;
  const auto empty = make<SuggestionsWindowController>(coder);
  EXPECT_EQ(empty->window(), nullptr);
  EXPECT_EQ(empty->suggestionPrototype(), std::nullopt);
  empty->setSuggestions(suggestionsNamed({"a"}));
  empty->setSelectedView(nullptr);
  empty->parentControlMoved();
  empty->cancelSuggestions();
  EXPECT_EQ(empty->selectedSuggestion(), std::nullopt);
}

TEST_F(SuggestionsWindowControllerConstruction, TheKeyOfTheRowInATrackingArea) {
  EXPECT_EQ(SuggestionsWindowController::trackerKey(), "whichImageView");
}

using SuggestionsWindowControllerBegin = harness::PopUpWorld;

TEST_F(SuggestionsWindowControllerBegin, PlacesThePopUpTwoPointsBelowTheFieldAndAsWideAsIt) {
  show({"a", "b", "c"});
  // The field's lower left corner is at (150, 400) on the screen.
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 338, 200, 60}));
  EXPECT_EQ(popUp()->parentWindow(), window.get());
  EXPECT_TRUE(popUp()->isVisible());
  EXPECT_TRUE(window->isKeyWindow());
  EXPECT_EQ(nativeOf(*popUp()).options().kind, tessaluna::backend::WindowKind::Popup);
  EXPECT_FALSE(nativeOf(*popUp()).options().isOpaque);
}

TEST_F(SuggestionsWindowControllerBegin, TakesTheFramesOriginAsItIsInAFlippedSuperview) {
  const auto flipped = make<harness::ProbeView>(CGRect{0, 0, 400, 300});
  flipped->flipped = true;
  window->contentView()->addSubview(flipped);
  flipped->addSubview(field);
  show({"a"});
  // The origin is the upper left corner there: y 100 from the top of 300.
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 300 + 200 - 2 - 20, 200, 20}));
}

TEST_F(SuggestionsWindowControllerBegin, StacksTheRowsFromTheTopWithoutMargins) {
  show({"a", "b", "c"});
  EXPECT_EQ(row(0)->frame(), (CGRect{0, 0, 200, 20}));
  EXPECT_EQ(row(1)->frame(), (CGRect{0, 20, 200, 20}));
  EXPECT_EQ(row(2)->frame(), (CGRect{0, 40, 200, 20}));
  EXPECT_EQ(content()->frame(), (CGRect{0, 0, 200, 60}));
  const std::vector<Ref<NSTrackingArea>> areas = content()->trackingAreas();
  ASSERT_EQ(areas.size(), 3u);
  EXPECT_EQ(areas[1]->rect(), (CGRect{0, 20, 200, 20}));
  EXPECT_EQ(areas[1]->options(), 0x441u);
  EXPECT_EQ(areas[1]->owner(), controller);
  EXPECT_EQ(areas[1]->userInfo().at("whichImageView"), row(1));
  EXPECT_EQ(items[1]->labelTextField()->stringValue(), "b");
}

TEST_F(SuggestionsWindowControllerBegin, EachRowHasTheHeightOfItsPrototype) {
  NSNib::registerFactory("row", [this](NSObject& owner) {
    rowHeight += 10;
    return makeRow(owner);
  });
  show({"a", "b", "c"});
  EXPECT_EQ(row(0)->frame().size.height, 30);
  EXPECT_EQ(row(1)->frame(), (CGRect{0, 30, 200, 40}));
  EXPECT_EQ(row(2)->frame(), (CGRect{0, 70, 200, 50}));
  EXPECT_EQ(popUp()->frame().size.height, 120);
}

TEST_F(SuggestionsWindowControllerBegin, SelectsTheFirstRowAndNotifiesNobody) {
  controller->setSuggestions(suggestionsNamed({"a", "b"}));
  controller->beginForTextField(field);
  EXPECT_EQ(selectedLabel(), "a");
  EXPECT_TRUE(row(0)->isHighlighted());
  EXPECT_TRUE(target->calls.empty());
}

TEST_F(SuggestionsWindowControllerBegin, APopUpThatIsNotOnTheScreenIsNotLaidOut) {
  controller->setSuggestions(suggestionsNamed({"a", "b"}));
  EXPECT_TRUE(items.empty());
  controller->beginForTextField(field);
  EXPECT_EQ(items.size(), 2u);
  controller->cancelSuggestions();
  controller->setSuggestions(suggestionsNamed({"c"}));
  EXPECT_EQ(items.size(), 2u);
}

TEST_F(SuggestionsWindowControllerBegin, AViewBesideTheRowsIsLeftOutWhenItsMakingAssignedOtherSuggestions) {
  class Sectioned : public SuggestionsWindowController {
   public:
    std::vector<Suggestion> others;
    bool assignsAbove = false, assignsBelow = false, makesView = true;

   protected:
    Ref<NSView> viewAboveRow(std::size_t) override { return viewAfterAssigning(assignsAbove); }
    Ref<NSView> viewBelowRows() override { return viewAfterAssigning(assignsBelow); }

   private:
    Ref<NSView> viewAfterAssigning(bool& assigns) {
      if (!std::exchange(assigns, false)) return nullptr;
      setSuggestions(others);
      return makesView ? make<NSView>(CGRect{0, 0, 50, 7}) : nullptr;
    }
  };
  for (int i = 0; i < 4; ++i) {
    bool Sectioned::*const assigns = i % 2 == 0 ? &Sectioned::assignsAbove : &Sectioned::assignsBelow;
    const auto sectioned = make<Sectioned>();
    controller = sectioned;
    sectioned->setSuggestionPrototype("row");
    sectioned->others = suggestionsNamed({"c"});
    sectioned->makesView = i < 2;
    show({});
    (*sectioned).*assigns = true;
    controller->setSuggestions(suggestionsNamed({"a", "b"}));
    EXPECT_EQ(content()->subviews().size(), 1u);
    EXPECT_EQ(popUp()->frame().size.height, 20);
    EXPECT_EQ(selectedLabel(), "c");
    controller->cancelSuggestions();
  }
}

TEST_F(SuggestionsWindowControllerBegin, WithoutSuggestionsTheHeightIs0AndNothingIsSelected) {
  show({});
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 398, 200, 0}));
  EXPECT_EQ(controller->selectedView(), nullptr);
  EXPECT_EQ(controller->selectedSuggestion(), std::nullopt);
  controller->setSuggestions(std::nullopt);
  EXPECT_EQ(popUp()->frame().size.height, 0);
}

TEST_F(SuggestionsWindowControllerBegin, TheTopEdgeStaysWhenTheListGrowsOrShrinks) {
  show({"a", "b"});
  for (const int count : {7, 1, 0, 3}) {
    controller->setSuggestions(suggestionsCounting(count));
    EXPECT_EQ(popUp()->frame(), (CGRect{150, 398.0 - 20 * count, 200, 20.0 * count}));
  }
}

TEST_F(SuggestionsWindowControllerBegin, TheWindowStopsAtTheScreensLowerEdgeAndScrolls) {
  window->setFrame({100, 2, 400, 300}, false);  // the pop-up's top is at 100
  rowHeight = 30;
  show({"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"});
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 0, 200, 100}));
  EXPECT_EQ(content()->frame().size.height, 300);
  EXPECT_FALSE(scrollView()->verticalScroller()->isHidden());
  controller->setSuggestions(suggestionsCounting(2));
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 40, 200, 60}));
  EXPECT_TRUE(scrollView()->verticalScroller()->isHidden());
}

TEST_F(SuggestionsWindowControllerBegin, TheWheelNeverMovesTheRowsSideways) {
  window->setFrame({100, 2, 400, 300}, false);  // the pop-up's top is at 100
  rowHeight = 30;
  show({"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"});
  // With a bar, with one that was there before, without one again, and with one again.
  for (const int count : {10, 9, 2, 10}) {
    controller->setSuggestions(suggestionsCounting(count));
    EXPECT_EQ(content()->frame().size.width, scrollView()->contentView()->bounds().size.width) << count;
    user.scroll(*popUp(), {10, 10}, {-7, 0});
    EXPECT_EQ(scrollView()->contentView()->bounds().origin, (CGPoint{0, 0})) << count;
  }
}

TEST_F(SuggestionsWindowControllerBegin, OnAScreenBelowThePrimaryOneNothingShowsWhereTheHeightIsNegative) {
  desktop.setScreens({{.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 900}},
                      {.frame = {0, -900, 1440, 900}, .visibleFrame = {0, -900, 1440, 900}}});
  nativeOf(*window).moveByUser({100, -600, 400, 300});
  show({"a", "b"});
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 0, 200, -502}));
  EXPECT_TRUE(popUp()->isVisible());
  EXPECT_FALSE(nativeOf(*popUp()).isVisible());
  nativeOf(*window).moveByUser({100, 300, 400, 300});
  controller->parentControlMoved();
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 358, 200, 40}));
  EXPECT_TRUE(nativeOf(*popUp()).isVisible());
  EXPECT_EQ(nativeOf(*popUp()).frame(), popUp()->frame());
}

TEST_F(SuggestionsWindowControllerBegin, WithoutRowsNothingShows) {
  show({});
  EXPECT_TRUE(popUp()->isVisible());
  EXPECT_FALSE(nativeOf(*popUp()).isVisible());
  controller->setSuggestions(suggestionsNamed({"a"}));
  EXPECT_TRUE(nativeOf(*popUp()).isVisible());
  controller->setSuggestions(std::nullopt);
  EXPECT_FALSE(nativeOf(*popUp()).isVisible());
}

TEST_F(SuggestionsWindowControllerBegin, EachLayoutMakesAllRowsAgain) {
  show({"a", "b"});
  const Ref<HighlightingView> first = row(0);
  controller->setSuggestions(suggestionsNamed({"a", "b"}));
  EXPECT_EQ(items.size(), 4u);
  EXPECT_EQ(first->superview(), nullptr);
  EXPECT_EQ(content()->subviews().size(), 2u);
  EXPECT_EQ(content()->trackingAreas().size(), 2u);
  EXPECT_EQ(controller->selectedView(), row(2));
}

TEST_F(SuggestionsWindowControllerBegin, LinksTheFieldsCellWithThePopUpUntilItIsCancelled) {
  const auto cell = std::dynamic_pointer_cast<SuggestibleTextFieldCell>(field->cell());
  const auto window = std::dynamic_pointer_cast<SuggestionsWindow>(popUp());
  show({"a"});
  EXPECT_EQ(cell->suggestionsWindow(), window);
  EXPECT_EQ(window->parentElement(), cell);
  controller->cancelSuggestions();
  EXPECT_EQ(cell->suggestionsWindow(), nullptr);
  EXPECT_EQ(window->parentElement(), nullptr);
}

TEST_F(SuggestionsWindowControllerBegin, AFieldWithAStockCellIsNotLinked) {
  field->setCell(make<NSTextFieldCell>());
  show({"a"});
  EXPECT_EQ(std::dynamic_pointer_cast<SuggestionsWindow>(popUp())->parentElement(), nullptr);
}

TEST_F(SuggestionsWindowControllerBegin, NotifiesAssistiveClientsOfTheListWhenItIsThere) {
  Calls heard;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityCreatedNotification, nullptr, nullptr, [&](const Ref<NSNotification>& n) {
        EXPECT_EQ(n->object(), content());
        EXPECT_TRUE(popUp()->isVisible());
        EXPECT_EQ(accessibilityOf(field->cell())->accessibilityChildren(), AccessibilityElements{content()});
        heard.push_back(n->name());
      });
  show({"a"});
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_EQ(heard, Calls{"AXCreated"});
}

TEST_F(SuggestionsWindowControllerBegin, ShowsAsManyRowsAsThereMayBeUnderTheFixedTopEdge) {
  EXPECT_EQ(controller->maximumRows(), std::nullopt);
  controller->setMaximumRows(3);
  NSNib::registerFactory("row", [this](NSObject& owner) {
    rowHeight += 10;
    return makeRow(owner);
  });
  show({"a", "b", "c", "d", "e"});  // 30, 40, 50, 60 and 70 points
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 398 - 120, 200, 120}));
  EXPECT_EQ(content()->frame().size.height, 250);
  EXPECT_FALSE(scrollView()->verticalScroller()->isHidden());
  controller->moveDown(nullptr);
  controller->moveDown(nullptr);
  controller->moveDown(nullptr);
  EXPECT_EQ(selectedLabel(), "d");
  EXPECT_EQ(scrollView()->contentView()->bounds().origin.y, 60);
}

TEST_F(SuggestionsWindowControllerBegin, AMaximumOfRowsTakesEffectOnAVisiblePopUp) {
  show({"a", "b", "c", "d"});
  controller->setMaximumRows(2);
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 358, 200, 40}));
  controller->setMaximumRows(9);
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 318, 200, 80}));
  for (const std::size_t fewest : {1, 0}) {
    controller->setMaximumRows(fewest);
    EXPECT_EQ(popUp()->frame(), (CGRect{150, 378, 200, 20})) << fewest;
  }
  controller->setMaximumRows(std::nullopt);
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 318, 200, 80}));
}

TEST_F(SuggestionsWindowControllerBegin, IsPaintedAsSoonAsItIsShown) {
  controller->setSuggestions(suggestionsNamed({"a"}));
  controller->beginForTextField(field);
  ASSERT_EQ(nativeOf(*popUp()).paints().size(), 1u);
  EXPECT_EQ(nativeOf(*popUp()).paints()[0].dirty, (std::vector<CGRect>{{0, 0, 200, 20}}));
}

using SuggestionsWindowControllerMoved = harness::PopUpWorld;

TEST_F(SuggestionsWindowControllerMoved, AHiddenPopUpStaysWhereItIsAlsoWithoutAField) {
  controller->parentControlMoved();
  EXPECT_EQ(popUp()->frame(), (CGRect{0, 0, 20, 20}));
}

// The field's window moves by itself, then the host says so. 200 points of rows, the pop-up's top 98 above the window's y.
TEST_F(SuggestionsWindowControllerMoved, FollowsTheFieldAndIsCutOffAtTheScreensLowerEdge) {
  const struct {
    CGFloat windowY;
    CGRect popUp;
  } steps[] = {
      {300, {150, 198, 200, 200}}, {102, {150, 0, 200, 200}}, {62, {150, 0, 200, 160}},  // y -40 and height 200
      {82, {150, 0, 200, 180}},    {12, {150, 0, 200, 110}},  {400, {150, 298, 200, 200}},
      {-98, {150, 0, 200, 0}},     {102, {150, 0, 200, 200}},
  };
  show({"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"});
  for (const auto& [y, expected] : steps) {
    nativeOf(*window).moveByUser({100, y, 400, 300});
    controller->parentControlMoved();
    EXPECT_EQ(popUp()->frame(), expected) << y;
  }
}

TEST_F(SuggestionsWindowControllerMoved, GrowsBackToAsManyRowsAsThereMayBe) {
  controller->setMaximumRows(4);
  show({"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"});
  for (const auto& [y, expected] : {std::pair<CGFloat, CGRect>{-58, {150, 0, 200, 40}}, {300, {150, 318, 200, 80}}}) {
    nativeOf(*window).moveByUser({100, y, 400, 300});
    controller->parentControlMoved();
    EXPECT_EQ(popUp()->frame(), expected) << y;
  }
}

TEST_F(SuggestionsWindowControllerMoved, FollowsAFieldThatMovedWithinItsWindow) {
  show({"a"});
  field->setFrameOrigin({70, 80});
  controller->parentControlMoved();
  EXPECT_EQ(popUp()->frame(), (CGRect{170, 358, 200, 20}));
}

using SuggestionsWindowControllerCancel = harness::PopUpWorld;

TEST_F(SuggestionsWindowControllerCancel, TakesThePopUpFromItsWindowThenHidesItThenCutsItsLinks) {
  const auto cell = std::dynamic_pointer_cast<SuggestibleTextFieldCell>(field->cell());
  show({"a"});
  Calls seen;
  const auto token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidChangeOcclusionStateNotification, popUp(), nullptr, [&](const Ref<NSNotification>&) {
        seen.push_back(std::string(popUp()->parentWindow() ? "child" : "alone") +
                       (cell->suggestionsWindow() ? ", linked" : ""));
      });
  controller->cancelSuggestions();
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_EQ(seen, (Calls{"alone, linked"}));
}

TEST_F(SuggestionsWindowControllerCancel, TheHostMayLetTheControllerGoAsThePopUpIsHidden) {
  show({"a"});
  const WeakRef<Controller> weak = controller;
  const auto token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidChangeOcclusionStateNotification, popUp(), nullptr, [&](const Ref<NSNotification>&) {
        controller = make<Controller>();
        EXPECT_FALSE(weak.expired()) << "its cancel is not over";
      });
  controller->cancelSuggestions();
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_TRUE(weak.expired());
}

TEST_F(SuggestionsWindowControllerCancel, ADerivedControllerMayCancelAsItIsDestroyed) {
  class Cancelling : public SuggestionsWindowController {
   public:
    ~Cancelling() override { cancelSuggestions(); }
  };
  controller = make<Cancelling>();
  controller->setSuggestionPrototype("row");
  show({"a"});
  const Ref<NSWindow> shown = popUp();
  controller = make<Controller>();
  EXPECT_FALSE(shown->isVisible());
}

TEST_F(SuggestionsWindowControllerCancel, HidesThePopUpAndLeavesItsContent) {
  show({"a", "b"});
  const Ref<HighlightingView> selected = controller->selectedView();
  controller->cancelSuggestions();
  EXPECT_FALSE(popUp()->isVisible());
  EXPECT_EQ(popUp()->parentWindow(), nullptr);
  EXPECT_EQ(controller->selectedView(), selected);
  EXPECT_EQ(content()->subviews().size(), 2u);
  EXPECT_EQ(heldLabels(), (Calls{"a", "b"}));
  controller->cancelSuggestions();
  controller->beginForTextField(field);
  EXPECT_TRUE(popUp()->isVisible());
}

TEST_F(SuggestionsWindowControllerCancel, WithoutABeginDoesNothing) {
  controller->setSuggestions(suggestionsNamed({"a"}));
  controller->cancelSuggestions();
  EXPECT_EQ(controller->target(), target);
  EXPECT_EQ(heldLabels(), Calls{"a"});
}

TEST_F(SuggestionsWindowControllerCancel, ComesWhenTheFieldsWindowLosesTheKeyStatus) {
  show({"a"});
  const Ref<NSWindow> other = showWindow({600, 100, 100, 100});
  EXPECT_FALSE(popUp()->isVisible());
}

TEST_F(SuggestionsWindowControllerCancel, DoesNotComeWhenAnotherWindowLosesTheKeyStatus) {
  show({"a"});
  NSNotificationCenter::defaultCenter().postNotificationName(NSWindowDidResignKeyNotification, popUp());
  EXPECT_TRUE(popUp()->isVisible());
}

// The window of the field goes while it is the key window, in each of the ways in which a window can.
struct SuggestionsWindowControllerFieldsWindow : harness::PopUpWorld {
  void expectAnEndForGood() {
    const auto cell = std::dynamic_pointer_cast<SuggestibleTextFieldCell>(field->cell());
    EXPECT_FALSE(popUp()->isVisible());
    EXPECT_EQ(popUp()->parentWindow(), nullptr);
    EXPECT_EQ(cell->suggestionsWindow(), nullptr);
    EXPECT_EQ(std::dynamic_pointer_cast<SuggestionsWindow>(popUp())->parentElement(), nullptr);
    window->makeKeyAndOrderFront(nullptr);
    EXPECT_FALSE(popUp()->isVisible());
    field->editor = make<NSTextView>(CGRect{});
    EXPECT_TRUE(isPassed({5, 5})) << "its monitor has gone";
  }
};

TEST_F(SuggestionsWindowControllerFieldsWindow, OrderedOutEndsThePopUp) {
  show({"a"});
  window->orderOut(nullptr);
  expectAnEndForGood();
}

TEST_F(SuggestionsWindowControllerFieldsWindow, ClosedEndsThePopUp) {
  show({"a"});
  window->close();
  expectAnEndForGood();
}

TEST_F(SuggestionsWindowControllerFieldsWindow, ClosedByTheUserEndsThePopUp) {
  show({"a"});
  nativeOf(*window).closeByUser();
  expectAnEndForGood();
}

TEST_F(SuggestionsWindowControllerFieldsWindow, ClosedByARowsActionEndsThePopUp) {
  show({"a"});
  field->onAction = [&] { window->close(); };
  user.moveTo(*popUp(), {10, 10});
  user.click(*popUp(), {10, 10});
  EXPECT_EQ(field->calls.back(), "sendAction search: to nobody");
  expectAnEndForGood();
}

TEST_F(SuggestionsWindowControllerFieldsWindow, ARowThatIsPressedWhileThePopUpIsCancelledIsNotChosen) {
  show({"a"});
  user.moveTo(*popUp(), {10, 10});
  user.press(*popUp(), {10, 10});
  field->calls.clear();
  controller->cancelSuggestions();
  user.release();
  EXPECT_EQ(field->calls, Calls{});
}

// A window that is hidden while another one has the key status.
struct SuggestionsWindowControllerHiddenWindow : SuggestionsWindowControllerFieldsWindow {
  SuggestionsWindowControllerHiddenWindow() { other->makeKeyAndOrderFront(nullptr); }
  Ref<NSWindow> other = showWindow({600, 100, 100, 100});
};

TEST_F(SuggestionsWindowControllerHiddenWindow, KeepsItsPopUpAtTheStart) {
  EXPECT_FALSE(controller->endsWithHiddenWindow());
  show({"a"});
  window->orderOut(nullptr);
  EXPECT_FALSE(popUp()->isVisible());
  EXPECT_EQ(popUp()->parentWindow(), window.get());
  window->orderFront(nullptr);
  EXPECT_TRUE(popUp()->isVisible());
}

TEST_F(SuggestionsWindowControllerHiddenWindow, EndsThePopUpWhereThatIsAskedFor) {
  controller->setEndsWithHiddenWindow(true);
  show({"a"});
  window->orderOut(nullptr);
  expectAnEndForGood();
}

TEST_F(SuggestionsWindowControllerHiddenWindow, AWindowThatIsOnlyCoveredKeepsItsPopUp) {
  controller->setEndsWithHiddenWindow(true);
  show({"a"});
  NSNotificationCenter::defaultCenter().postNotificationName(NSWindowDidChangeOcclusionStateNotification, window);
  EXPECT_TRUE(popUp()->isVisible());
}

TEST_F(SuggestionsWindowControllerCancel, AThousandTimesLeavesNoMonitorAndNoObserver) {
  controller->setSuggestions(suggestionsNamed({"a", "b"}));
  const auto cell = std::dynamic_pointer_cast<SuggestibleTextFieldCell>(field->cell());
  for (int i = 0; i < 1000; ++i) {
    controller->setEndsWithHiddenWindow(i % 2 == 1);
    controller->beginForTextField(field);
    controller->cancelSuggestions();
  }
  items.clear();
  const WeakRef<NSWindow> window = popUp();
  const WeakRef<SuggestionsWindowController> weak = controller;
  const Ref<SuggestionsWindowController> empty = make<SuggestionsWindowController>();
  controller = empty;
  // What a monitor or observer held would still be there, and using it would stop the program.
  EXPECT_TRUE(weak.expired());
  EXPECT_TRUE(window.expired());
  EXPECT_EQ(field.use_count(), 2);
  user.click(*this->window, {5, 5});
  const Ref<NSWindow> other = showWindow({600, 100, 100, 100});
  EXPECT_EQ(desktop.windows().size(), 2u);
  this->window->orderOut(nullptr);
}

using SuggestionsWindowControllerMouseMonitor = harness::PopUpWorld;

// Where a press goes that the pop-up sees first: on, or nowhere; and whether the pop-up ends.
TEST_F(SuggestionsWindowControllerMouseMonitor, PassesOnOrSwallowsAndCancels) {
  const auto other = showWindow({600, 100, 100, 100});
  window->makeKeyAndOrderFront(nullptr);
  const auto inParent = make<harness::ProbeView>(CGRect{0, 0, 400, 300});
  const auto inOther = make<harness::ProbeView>(CGRect{0, 0, 100, 100});
  window->contentView()->addSubview(inParent);
  other->contentView()->addSubview(inOther);
  window->contentView()->addSubview(field);
  enum class On { PopUp, Parent, Field, Other, Nothing };
  enum class Press { Passes, IsSwallowed };
  enum class PopUp { Stays, Ends };
  const struct {
    const char* what;
    On on;
    int button;
    bool isEdited;
    Press press;
    PopUp popUp;
  } cases[] = {
      {"right, in the pop-up", On::PopUp, 1, true, Press::Passes, PopUp::Stays},
      {"middle, in the pop-up", On::PopUp, 2, true, Press::Passes, PopUp::Stays},
      {"left, in another window", On::Other, 0, true, Press::Passes, PopUp::Ends},
      {"right, in another window", On::Other, 1, false, Press::Passes, PopUp::Ends},
      {"left, nowhere in the application", On::Nothing, 0, true, Press::Passes, PopUp::Ends},
      {"left, beside the edited field", On::Parent, 0, true, Press::IsSwallowed, PopUp::Ends},
      {"right, beside the edited field", On::Parent, 1, true, Press::IsSwallowed, PopUp::Ends},
      {"middle, beside the edited field", On::Parent, 2, true, Press::IsSwallowed, PopUp::Ends},
      {"left, on the edited field", On::Field, 0, true, Press::IsSwallowed, PopUp::Ends},
      {"left, beside a field that is not edited", On::Parent, 0, false, Press::Passes, PopUp::Stays},
      {"left, on a field that is not edited", On::Field, 0, false, Press::Passes, PopUp::Stays},
  };
  Ref<NSEvent> passed;
  for (const auto& c : cases) {
    field->editor = c.isEdited ? make<NSTextView>(CGRect{}) : nullptr;
    window->makeKeyAndOrderFront(nullptr);
    show({"a", "b"});
    // A monitor that was added later sees what the pop-up's leaves.
    passed = nullptr;
    const Ref<NSObject> token =
        NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&](const Ref<NSEvent>& event) {
          passed = event;
          return nullptr;
        });
    const NSEventType down[] = {NSEventType::LeftMouseDown, NSEventType::RightMouseDown, NSEventType::OtherMouseDown};
    const Ref<NSWindow> windows[] = {popUp(), window, window, other, nullptr};
    const CGPoint point = c.on == On::Field ? CGPoint{60, 110} : CGPoint{5, 5};
    const auto event = make<NSEvent>(NSEvent::Fields{
        .type = down[c.button], .location = point, .window = windows[static_cast<int>(c.on)], .buttonNumber = c.button});
    NSApp->sendEvent(event);
    NSEvent::removeMonitor(token);
    EXPECT_EQ(passed, c.press == Press::Passes ? event : nullptr) << c.what;
    EXPECT_EQ(popUp()->isVisible(), c.popUp == PopUp::Stays) << c.what;
    controller->cancelSuggestions();
  }
}

TEST_F(SuggestionsWindowControllerMouseMonitor, APressThatTheTestAmongTheRowsResolvesToTheEditorPasses) {
  show({"a", "b"});
  // Intentional: a place in the field's window is looked for in the pop-up's content.
  field->editor = make<NSTextView>(CGRect{100, 0, 100, 20});
  row(1)->addSubview(field->editor);
  EXPECT_TRUE(isPassed({150, 15}));  // in the pop-up's base space
  EXPECT_TRUE(popUp()->isVisible());
  EXPECT_FALSE(isPassed({150, 35}));
  EXPECT_FALSE(popUp()->isVisible());
}

TEST_F(SuggestionsWindowControllerMouseMonitor, ARightPressInThePopUpReachesItAndEndsNothing) {
  show({"a"});
  field->editor = make<NSTextView>(CGRect{});
  const auto view = make<harness::ProbeView>(CGRect{0, 0, 200, 20});
  row(0)->addSubview(view);
  user.press(*popUp(), {10, 10}, {.button = 1});
  EXPECT_EQ(view->calls.back(), "rightMouseDown");
  EXPECT_TRUE(popUp()->isVisible());
}

TEST_F(SuggestionsWindowControllerMouseMonitor, APressInAnotherWindowStillDoesItsWorkThere) {
  const auto other = showWindow({600, 100, 100, 100});
  const auto view = make<harness::ProbeView>(CGRect{0, 0, 100, 100});
  other->contentView()->addSubview(view);
  window->makeKeyAndOrderFront(nullptr);
  show({"a"});
  user.press(*other, {5, 5});
  EXPECT_EQ(view->calls.back(), "mouseDown");
  EXPECT_FALSE(popUp()->isVisible());
}

TEST_F(SuggestionsWindowControllerMouseMonitor, ASecondBeginLeavesTheFirstOnesBehind) {
  show({"a"});
  controller->beginForTextField(field);
  controller->cancelSuggestions();
  controller->setSuggestions(suggestionsNamed({"a"}));
  popUp()->orderFront(nullptr);
  // The first monitor is still there and cancels.
  NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::LeftMouseDown}));
  EXPECT_FALSE(popUp()->isVisible());
  NSApp = nullptr;  // with what it holds; the observer goes with the test's process
}

using SuggestionsWindowControllerDeathTest = harness::PopUpWorld;

TEST_F(SuggestionsWindowControllerDeathTest, InitWithWindowIsNotSupported) {
  EXPECT_DEATH(make<SuggestionsWindowController>(window), "TessalunaUIKit.SuggestionsWindowController.*init\\(window:\\)");
  EXPECT_DEATH(make<SuggestionsWindowController>(Ref<NSWindow>()), "init\\(window:\\)");
}

TEST_F(SuggestionsWindowControllerDeathTest, ARowOfANegativeIndex) {
  show({"a"});
  EXPECT_DEATH(controller->setSelectedSuggestionIndex(-1), "negative index");
  show({});
  EXPECT_DEATH(controller->setSelectedSuggestionIndex(-1), "negative index");
}

TEST_F(SuggestionsWindowControllerDeathTest, ASelectionInAControllerFromACoder) {
  NSCoder coder;
  const auto empty = make<SuggestionsWindowController>(coder);
  EXPECT_DEATH(empty->setSelectedView(make<HighlightingView>(CGRect{})), "used while absent: fullContentView");
}

TEST_F(SuggestionsWindowControllerDeathTest, AFieldInNoWindow) {
  field->removeFromSuperview();
  EXPECT_DEATH(controller->beginForTextField(field), "used while absent: the field's window");
}

TEST_F(SuggestionsWindowControllerDeathTest, AFieldInNoView) {
  field->removeFromSuperview();
  window->setContentView(field);
  EXPECT_DEATH(controller->beginForTextField(field), "used while absent: the field's superview");
}

TEST_F(SuggestionsWindowControllerDeathTest, APopUpWithoutAnAccessibilityElement) {
  popUp()->setContentView(make<NSView>(CGRect{}));
  EXPECT_DEATH(controller->beginForTextField(field), "used while absent: the pop-up's accessibility element");
}

TEST_F(SuggestionsWindowControllerDeathTest, AFieldThatHasGoneFromItsWindowWhenThePopUpIsToMove) {
  show({"a"});
  field->removeFromSuperview();
  EXPECT_DEATH(controller->parentControlMoved(), "used while absent: the field's window");
  window->setContentView(field);
  EXPECT_DEATH(controller->parentControlMoved(), "used while absent: the field's superview");
}

TEST_F(SuggestionsWindowControllerDeathTest, AVisiblePopUpWithoutAFieldThatIsToMove) {
  popUp()->orderFront(nullptr);
  EXPECT_DEATH(controller->parentControlMoved(), "used while absent: parentTextField");
}

TEST_F(SuggestionsWindowControllerDeathTest, ARowOfAnotherClass) {
  NSNib::registerFactory("row", [](NSObject&) { return make<NSView>(CGRect{}); });
  controller->setSuggestions(suggestionsNamed({"a"}));
  EXPECT_DEATH(controller->beginForTextField(field), "the root of a row is not a HighlightingView but a NSView");
}

TEST_F(SuggestionsWindowControllerDeathTest, WithoutAPrototypeTheRowsNameIsThatOfTheirControllersClass) {
  const auto bare = make<SuggestionsWindowController>();
  bare->setSuggestions(suggestionsNamed({"a"}));
  EXPECT_DEATH(bare->beginForTextField(field), "no interface file \"TessalunaUIKit.SuggestionItemViewController\"");
  NSNib::registerFactory("SuggestionItemViewController", [](NSObject&) {
    return make<HighlightingView>(CGRect{0, 0, 5, 7});
  });
  bare->beginForTextField(field);
  EXPECT_EQ(bare->window()->frame().size.height, 7);
  bare->cancelSuggestions();
}

TEST_F(SuggestionsWindowControllerDeathTest, AControllerThatWentWithoutACancel) {
  show({"a"});
  EXPECT_DEATH(
      {
        items.clear();
        controller = make<SuggestionsWindowController>();
        NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::LeftMouseDown}));
      },
      "an unowned reference was used after its object had gone");
}

}  // namespace
}  // namespace TessalunaUIKit
