// In which order a completion pop-up makes its rows, and what remains of an earlier one.
#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"
#include "tests/uikit/suggestions/PopUpWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Calls;

using SuggestionsWindowControllerLayout = harness::PopUpWorld;

TEST_F(SuggestionsWindowControllerLayout, TheFirstRowIsSelectedWithTheFrameOfItsPrototypeAndInNoView) {
  CGRect frame;
  bool isInAView = true;
  onMake = [&](Row& row, harness::ProbeCell& cell) {
    if (items.empty())
      cell.onStyle = [&] {
        frame = row.frame();
        isInAView = row.superview() != nullptr;
      };
  };
  show({"a", "b"});
  EXPECT_EQ(frame, (CGRect{0, 0, 50, 20}));
  EXPECT_FALSE(isInAView);
}

TEST_F(SuggestionsWindowControllerLayout, ARowIsFilledInItsPlaceAndBeforeItIsOneOfTheRows) {
  std::vector<CGRect> frames;
  std::vector<std::size_t> areas;
  Calls selected;
  onMake = [&](Row& row, harness::ProbeCell& cell) {
    cell.onValue = [&] {
      EXPECT_EQ(row.superview(), content().get());
      frames.push_back(row.frame());
      areas.push_back(content()->trackingAreas().size());
      selected.push_back(selectedLabel());
    };
  };
  show({"a", "b"});
  EXPECT_EQ(frames, (std::vector<CGRect>{{0, 0, 200, 20}, {0, 20, 200, 20}}));
  EXPECT_EQ(areas, (std::vector<std::size_t>{1, 2}));
  EXPECT_EQ(selected, (Calls{"none", "a"}));
}

TEST_F(SuggestionsWindowControllerLayout, SuggestionsThatAreAssignedWhileARowIsLoadedReplaceThoseOfTheRow) {
  show({"a", "b"});
  bool isFirst = true;
  onMake = [&](Row&, harness::ProbeCell&) {
    if (!std::exchange(isFirst, false)) return;
    controller->setSuggestions(suggestionsNamed({"x", "y", "z"}));
  };
  controller->setSuggestions(suggestionsNamed({"c", "d"}));
  EXPECT_EQ(heldLabels(), (Calls{"x", "y", "z"}));
  EXPECT_EQ(content()->subviews().size(), 3u);
  EXPECT_EQ(content()->trackingAreas().size(), 3u);
  EXPECT_EQ(content()->frame().size.height, 60);
  EXPECT_EQ(selectedLabel(), "x");
}

TEST_F(SuggestionsWindowControllerLayout, SuggestionsThatAreAssignedWhileARowIsFilledReplaceThoseOfTheRow) {
  show({"a", "b"});
  bool isFirst = true;
  onMake = [&](Row&, harness::ProbeCell& cell) {
    if (!std::exchange(isFirst, false)) return;
    cell.onValue = [&] { controller->setSuggestions(suggestionsNamed({"x", "y", "z"})); };
  };
  controller->setSuggestions(suggestionsNamed({"c", "d"}));
  EXPECT_EQ(content()->subviews().size(), 3u);
  EXPECT_EQ(content()->trackingAreas().size(), 3u);
  EXPECT_EQ(selectedLabel(), "x");
}

TEST_F(SuggestionsWindowControllerLayout, SuggestionsThatAreAssignedWhileTheFirstRowsAreLoadedReplaceThem) {
  bool isFirst = true;
  onMake = [&](Row&, harness::ProbeCell&) {
    if (std::exchange(isFirst, false)) controller->setSuggestions(suggestionsNamed({"x", "y", "z"}));
  };
  show({"a", "b"});
  EXPECT_EQ(content()->subviews().size(), 3u);
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 338, 200, 60}));
  EXPECT_EQ(selectedLabel(), "x");
}

TEST_F(SuggestionsWindowControllerLayout, AnEmptyListThatIsAssignedWhileTheFirstRowIsLoadedLeavesNothingAndNoSelection) {
  show({"a", "b"});
  bool isFirst = true;
  onMake = [&](Row&, harness::ProbeCell&) {
    if (std::exchange(isFirst, false)) controller->setSuggestions(std::nullopt);
  };
  controller->setSuggestions(suggestionsNamed({"c", "d"}));
  EXPECT_EQ(content()->subviews().size(), 0u);
  EXPECT_EQ(popUp()->frame().size.height, 0);
  EXPECT_EQ(controller->selectedView(), nullptr);
}

TEST_F(SuggestionsWindowControllerLayout, SuggestionsThatAreAssignedWhileTheFirstRowIsSelectedReplaceThoseOfTheRow) {
  show({"a", "b"});
  bool isFirst = true;
  onMake = [&](Row&, harness::ProbeCell& cell) {
    cell.onStyle = [&] {
      if (std::exchange(isFirst, false)) controller->setSuggestions(suggestionsNamed({"x", "y", "z"}));
    };
  };
  controller->setSuggestions(suggestionsNamed({"c", "d"}));
  EXPECT_EQ(content()->subviews().size(), 3u);
  EXPECT_EQ(content()->trackingAreas().size(), 3u);
  EXPECT_EQ(selectedLabel(), "x");
}

TEST_F(SuggestionsWindowControllerLayout, SuggestionsThatAreAssignedWhileAnEarlierRowLosesTheSelectionReplaceThoseOfTheRow) {
  show({"a", "b"});
  bool isFirst = true;
  cells[0]->onStyle = [&] {
    if (std::exchange(isFirst, false)) controller->setSuggestions(suggestionsNamed({"x", "y", "z"}));
  };
  controller->setSuggestions(suggestionsNamed({"c", "d"}));
  EXPECT_EQ(content()->subviews().size(), 3u);
  EXPECT_EQ(content()->trackingAreas().size(), 3u);
  EXPECT_EQ(selectedLabel(), "x");
}

TEST_F(SuggestionsWindowControllerLayout, SuggestionsThatAreAssignedAsAViewComesOrGoesReplaceThoseThatAreLaidOut) {
  class Moving : public HighlightingView {
   public:
    explicit Moving(std::function<void()> moved) : HighlightingView({0, 0, 50, 20}), moved_(std::move(moved)) {}
    void viewDidMoveToWindow() override { moved_(); }

   private:
    std::function<void()> moved_;
  };
  class Sectioned : public SuggestionsWindowController {
   public:
    std::function<Ref<NSView>()> makeView;

   protected:
    Ref<NSView> viewAboveRow(std::size_t row) override { return row == 1 ? makeView() : nullptr; }
    Ref<NSView> viewBelowRows() override { return makeView(); }
  };
  const auto sectioned = make<Sectioned>();
  controller = sectioned;
  controller->setSuggestionPrototype("row");
  // The last ones go with the test.
  const auto movesLeft = std::make_shared<int>(0);
  const auto makeMoving = [this, movesLeft] {
    return make<Moving>([this, movesLeft] {
      if (*movesLeft > 0 && --*movesLeft == 0) controller->setSuggestions(suggestionsNamed({"x"}));
    });
  };
  sectioned->makeView = makeMoving;
  NSNib::registerFactory("row", [makeMoving](NSObject&) { return makeMoving(); });
  // Two rows and two other views go, then as many come.
  for (int move = 1; move <= 8; ++move) {
    show({"a", "b"});
    *movesLeft = move;
    controller->setSuggestions(suggestionsNamed({"c", "d"}));
    EXPECT_EQ(*movesLeft, 0);
    EXPECT_EQ(content()->subviews().size(), 2u) << move;
    EXPECT_EQ(content()->trackingAreas().size(), 1u) << move;
    EXPECT_EQ(popUp()->frame().size.height, 40) << move;
    EXPECT_EQ(selectedLabel(), "x") << move;
    controller->cancelSuggestions();
  }
}

TEST_F(SuggestionsWindowControllerLayout, AfterARowThatThrowsAPopUpThatDoesNotShowIsNotLaidOut) {
  bool isFirst = true;
  onMake = [&](Row&, harness::ProbeCell&) {
    if (std::exchange(isFirst, false)) throw std::runtime_error("refused");
  };
  EXPECT_THROW(show({"a"}), std::runtime_error);
  controller->setSuggestions(suggestionsNamed({"b"}));
  EXPECT_EQ(content()->subviews().size(), 0u);
}

TEST_F(SuggestionsWindowControllerLayout, TheSelectionGoesWithTheRows) {
  show({"a", "b"});
  const Ref<HighlightingView> earlier = row(0);
  controller->setSuggestions(std::nullopt);
  EXPECT_EQ(controller->selectedView(), nullptr);
  EXPECT_FALSE(earlier->isHighlighted());
  EXPECT_EQ(target->calls, Calls{});
}

TEST_F(SuggestionsWindowControllerLayout, AsManyRowsAsThereMayBeAllShow) {
  controller->setMaximumRows(3);
  show({"a", "b", "c"});
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 338, 200, 60}));
}

TEST_F(SuggestionsWindowControllerLayout, APopUpThatIsHigherThanItsContentKeepsItsHeightWhenItMoves) {
  show({"a"});
  popUp()->setFrame({0, 0, 90, 150}, false);
  controller->parentControlMoved();
  EXPECT_EQ(popUp()->frame(), (CGRect{150, 248, 90, 150}));
}

TEST_F(SuggestionsWindowControllerLayout, ABeginForAFieldWithAStockCellTakesTheEarlierElementFromTheWindow) {
  const auto cell = std::dynamic_pointer_cast<SuggestibleTextFieldCell>(field->cell());
  const auto popUpWindow = std::dynamic_pointer_cast<SuggestionsWindow>(popUp());
  show({"a"});
  controller->cancelSuggestions();
  popUpWindow->setParentElement(cell);
  field->setCell(make<NSTextFieldCell>());
  controller->beginForTextField(field);
  EXPECT_EQ(popUpWindow->parentElement(), nullptr);
}

TEST_F(SuggestionsWindowControllerLayout, ACancelOfAPopUpThatAProgramHasHiddenEndsTheMonitorAndLeavesTheLinks) {
  const auto cell = std::dynamic_pointer_cast<SuggestibleTextFieldCell>(field->cell());
  show({"a"});
  field->editor = make<NSTextView>(CGRect{});
  popUp()->orderOut(nullptr);
  controller->cancelSuggestions();
  EXPECT_TRUE(isPassed({5, 5}));
  EXPECT_EQ(cell->suggestionsWindow(), popUp());
  EXPECT_EQ(popUp()->parentWindow(), window.get());
  popUp()->orderFront(nullptr);
  NSNotificationCenter::defaultCenter().postNotificationName(NSWindowDidResignKeyNotification, window);
  EXPECT_TRUE(popUp()->isVisible()) << "its observer has gone";
  controller->cancelSuggestions();
  EXPECT_EQ(cell->suggestionsWindow(), nullptr);
}

TEST_F(SuggestionsWindowControllerLayout, APressThatTheTestAmongTheRowsResolvesToTheFieldPasses) {
  // A stock field that is edited leaves presses to its editor.
  class FoundItself : public harness::ProbeField {
   public:
    using ProbeField::ProbeField;
    NSView* hitTest(CGPoint point) override { return NSView::hitTest(point); }
  };
  field = make<FoundItself>(CGRect{50, 100, 200, 24});
  window->contentView()->addSubview(field);
  show({"a", "b"});
  field->editor = make<NSTextView>(CGRect{});
  field->setFrame({100, 20, 100, 20});
  content()->addSubview(field);
  EXPECT_TRUE(isPassed({150, 10}));  // in the pop-up's base space
  EXPECT_TRUE(popUp()->isVisible());
  EXPECT_FALSE(isPassed({150, 30}));
  EXPECT_FALSE(popUp()->isVisible());
}

}  // namespace
}  // namespace TessalunaUIKit
