// Which row of a completion pop-up is selected, by the controller's operations, the mouse and the keys, and who is notified.
#include <gtest/gtest.h>

#include <limits>

#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"
#include "tests/uikit/suggestions/PopUpWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Calls;

using SuggestionSelectionTest = harness::PopUpWorld;

// What each operation does with three rows of which the given one is selected: the rows whose fields are told of their
// ground, in order, what the target hears, and what is selected then.
TEST_F(SuggestionSelectionTest, EveryWayOfChangingIt) {
  const auto same = [](int row) {
    const std::string name = "row " + std::to_string(row);
    return Calls{name + " style 0", name + " style 0", name + " style 1", name + " style 1"};
  };
  const auto from = [](int a, int b) {
    const std::string before = "row " + std::to_string(a), after = "row " + std::to_string(b);
    return Calls{before + " style 0", before + " style 0", after + " style 1", after + " style 1"};
  };
  const auto none = [](int a) {
    return Calls{"row " + std::to_string(a) + " style 0", "row " + std::to_string(a) + " style 0"};
  };
  const auto only = [](int a) {
    return Calls{"row " + std::to_string(a) + " style 1", "row " + std::to_string(a) + " style 1"};
  };
  constexpr int nothing = -1;
  const struct {
    const char* what;
    int selected;
    std::function<void()> change;
    Calls styles, told;
    std::string then;
  } cases[] = {
      {"setSelectedView of another", 0, [&] { controller->setSelectedView(row(2)); }, from(0, 2), {}, "c"},
      {"setSelectedView of the same", 1, [&] { controller->setSelectedView(row(1)); }, same(1), {}, "b"},
      {"setSelectedView of none", 1, [&] { controller->setSelectedView(nullptr); }, none(1), {}, "none"},
      {"userSetSelectedView of another", 0, [&] { controller->userSetSelectedView(row(1)); }, from(0, 1), {"b"}, "b"},
      {"userSetSelectedView of the same", 2, [&] { controller->userSetSelectedView(row(2)); }, same(2), {"c"}, "c"},
      {"userSetSelectedView of none", 0, [&] { controller->userSetSelectedView(nullptr); }, none(0), {"none"}, "none"},
      {"moveUp from the first", 0, [&] { controller->moveUp(nullptr); }, {}, {}, "a"},
      {"moveUp from the second", 1, [&] { controller->moveUp(nullptr); }, from(1, 0), {"a"}, "a"},
      {"moveUp from the third", 2, [&] { controller->moveUp(nullptr); }, from(2, 1), {"b"}, "b"},
      {"moveUp from nothing", nothing, [&] { controller->moveUp(nullptr); }, {}, {}, "none"},
      {"moveDown from the first", 0, [&] { controller->moveDown(nullptr); }, from(0, 1), {"b"}, "b"},
      {"moveDown from the third", 2, [&] { controller->moveDown(nullptr); }, {}, {}, "c"},
      {"moveDown from nothing", nothing, [&] { controller->moveDown(nullptr); }, {}, {}, "none"},
      {"index 0", 1, [&] { controller->setSelectedSuggestionIndex(0); }, from(1, 0), {}, "a"},
      {"index 0 from nothing", nothing, [&] { controller->setSelectedSuggestionIndex(0); }, only(0), {}, "a"},
      {"index 1", 1, [&] { controller->setSelectedSuggestionIndex(1); }, {}, {}, "b"},
      {"index 2 with three rows", 1, [&] { controller->setSelectedSuggestionIndex(2); }, {}, {}, "b"},
      {"index 3", 1, [&] { controller->setSelectedSuggestionIndex(3); }, {}, {}, "b"},
      {"mouseExited", 1, [&] { controller->mouseExited(nullptr); }, none(1), {"none"}, "none"},
      {"mouseExited from nothing", nothing, [&] { controller->mouseExited(nullptr); }, {}, {"none"}, "none"},
  };
  show({"a", "b", "c"});
  for (const auto& c : cases) {
    controller->setSelectedView(c.selected == nothing ? nullptr : row(static_cast<std::size_t>(c.selected)));
    styleCalls.clear();
    target->calls.clear();
    c.change();
    EXPECT_EQ(styleCalls, c.styles) << c.what;
    EXPECT_EQ(target->calls, c.told) << c.what;
    EXPECT_EQ(selectedLabel(), c.then) << c.what;
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(row(i)->isHighlighted(), row(i) == controller->selectedView()) << c.what;
  }
}

TEST_F(SuggestionSelectionTest, SettingTheSelectedRowAgainGivesEachTextField0Then1) {
  show({"a"});
  controller->setSelectedView(row(0));
  EXPECT_EQ(styleCalls, (Calls{"row 0 style 0", "row 0 style 0", "row 0 style 1", "row 0 style 1"}));
}

TEST_F(SuggestionSelectionTest, IndexOneOfFiveRowsChangesNothing) {
  show({"a", "b", "c", "d", "e"});
  controller->setSelectedView(row(3));
  controller->setSelectedSuggestionIndex(1);
  EXPECT_EQ(selectedLabel(), "d");
  controller->setSelectedSuggestionIndex(0);
  EXPECT_EQ(selectedLabel(), "a");
  EXPECT_TRUE(target->calls.empty());
}

TEST_F(SuggestionSelectionTest, AnIndexBeforeTheFirstLayout) {
  const auto stray = make<HighlightingView>(CGRect{0, 0, 10, 10});
  controller->setSelectedView(stray);
  controller->setSelectedSuggestionIndex(0);
  EXPECT_EQ(controller->selectedView(), stray);
  controller->setSelectedSuggestionIndex(-1);
  EXPECT_EQ(controller->selectedView(), nullptr);
}

TEST_F(SuggestionSelectionTest, Index0OfAnEmptyListChangesNothing) {
  show({});
  const auto stray = make<HighlightingView>(CGRect{0, 0, 10, 10});
  controller->setSelectedView(stray);
  controller->setSelectedSuggestionIndex(0);
  EXPECT_EQ(controller->selectedView(), stray);
}

TEST_F(SuggestionSelectionTest, SelectingNoneForTheUserCallsTheTargetOnceWithNone) {
  show({"a", "b"});
  controller->userSetSelectedView(nullptr);
  EXPECT_EQ(target->calls, Calls{"none"});
}

TEST_F(SuggestionSelectionTest, ATargetThatHasGoneIsSkipped) {
  show({"a", "b"});
  target = nullptr;
  controller->userSetSelectedView(row(1));
  EXPECT_TRUE(row(1)->isHighlighted());
  EXPECT_FALSE(row(0)->isHighlighted());
}

TEST_F(SuggestionSelectionTest, OfAViewThatIsNotARowMovesToTheFarEnd) {
  show({"a", "b", "c"});
  const auto stray = make<HighlightingView>(CGRect{0, 0, 10, 10});
  controller->setSelectedView(stray);
  EXPECT_EQ(selectedLabel(), "none");
  controller->moveUp(nullptr);
  EXPECT_EQ(selectedLabel(), "c");
  controller->setSelectedView(stray);
  controller->moveDown(nullptr);
  EXPECT_EQ(selectedLabel(), "a");
}

TEST_F(SuggestionSelectionTest, ARowWhoseViewIsOfAnotherClassIsPassedOver) {
  show({"a", "b", "c"});
  controller->setSelectedView(row(2));
  items[1]->setView(make<NSView>(CGRect{}));
  controller->moveUp(nullptr);  // the view before is no row: nothing to select
  EXPECT_EQ(selectedLabel(), "c");
  items[0]->setView(make<NSView>(CGRect{}));
  controller->setSelectedSuggestionIndex(0);
  EXPECT_EQ(controller->selectedView(), nullptr);
  EXPECT_TRUE(target->calls.empty());
}

TEST_F(SuggestionSelectionTest, WithNoneOfThemSelectedTheFirstRowWhoseViewIsAbsentIsNoneEither) {
  show({"a"});
  controller->setSelectedView(nullptr);
  EXPECT_EQ(controller->selectedSuggestion(), std::nullopt);
}

TEST_F(SuggestionSelectionTest, ScrollsToTheRow) {
  rowHeight = 100;
  show({"a", "b", "c", "d", "e", "f", "g", "h"});
  ASSERT_GT(content()->frame().size.height, popUp()->frame().size.height);
  const auto shown = [&](std::size_t i) {
    return NSContainsRect(scrollView()->contentView()->documentVisibleRect(), NSInsetRect(row(i)->frame(), 12, 0));
  };
  EXPECT_TRUE(shown(0));
  EXPECT_FALSE(shown(7));
  for (std::size_t i = 1; i < 8; ++i) {
    controller->moveDown(nullptr);
    EXPECT_TRUE(shown(i)) << i;
  }
  EXPECT_FALSE(shown(0));
  controller->setSelectedSuggestionIndex(0);
  EXPECT_TRUE(shown(0));
}

TEST_F(SuggestionSelectionTest, ALongListShrinksBackToItsTopWithNewSuggestions) {
  rowHeight = 100;
  show({"a", "b", "c", "d", "e", "f", "g", "h"});
  for (int i = 0; i < 7; ++i) controller->moveDown(nullptr);
  controller->setSuggestions(suggestionsNamed({"x", "y", "z"}));
  EXPECT_EQ(scrollView()->contentView()->bounds().origin, (CGPoint{0, 0}));
}

TEST_F(SuggestionSelectionTest, MovingByOneRowRepaintsTwoRowsAndNoMore) {
  show({"a", "b", "c", "d", "e"});
  harness::StillWorld::nativeOf(*popUp()).forgetPaints();
  controller->moveDown(nullptr);
  desktop.settle();
  const auto& paints = nativeOf(*popUp()).paints();
  ASSERT_EQ(paints.size(), 1u);
  CGFloat area = 0;
  for (const CGRect& rect : paints[0].dirty) area += rect.size.width * rect.size.height;
  EXPECT_EQ(area, 200 * 40);
}

using SuggestionSelectionMouse = harness::PopUpWorld;

TEST_F(SuggestionSelectionMouse, EnteringARowSelectsItAndLeavingClears) {
  show({"a", "b", "c"});
  user.moveTo(*popUp(), {10, 30});
  EXPECT_EQ(selectedLabel(), "b");
  user.moveTo(*popUp(), {10, 10});
  user.leave(*popUp());
  EXPECT_EQ(target->calls, (Calls{"b", "none", "c", "none"}));
  controller->moveDown(nullptr);  // keys do not bring the selection back
  EXPECT_EQ(target->calls.size(), 4u);
  EXPECT_EQ(controller->selectedView(), nullptr);
}

TEST_F(SuggestionSelectionMouse, ATrackingAreaWithoutTheRowClearsTheSelectionAndReportsThat) {
  show({"a", "b"});
  const auto entered = [](Ref<NSTrackingArea> area) {
    return make<NSEvent>(NSEvent::Fields{.type = NSEventType::MouseEntered, .trackingArea = std::move(area)});
  };
  const auto areaWith = [&](NSTrackingArea::UserInfo info) {
    return make<NSTrackingArea>(CGRect{}, 0u, refTo<NSResponder>(*controller), std::move(info));
  };
  controller->mouseEntered(entered(areaWith({{"whichImageView", row(1)}})));
  controller->mouseEntered(entered(areaWith({})));
  controller->mouseEntered(entered(areaWith({{"whichImageView", field}})));
  controller->mouseEntered(entered(nullptr));
  EXPECT_EQ(target->calls, (Calls{"b", "none", "none", "none"}));
}

TEST_F(SuggestionSelectionMouse, AChosenRowEndsTheEditingSendsTheFieldsActionAndClosesThePopUp) {
  const auto receiver = make<NSObject>();
  field->setTarget(receiver);
  show({"a", "b"});
  user.moveTo(*popUp(), {10, 10});
  target->calls.clear();
  bool wasVisible = false;
  field->onAction = [&] { wasVisible = popUp()->isVisible(); };
  user.click(*popUp(), {10, 10});
  EXPECT_EQ(field->calls, (Calls{"validateEditing", "abortEditing", "sendAction search: to a target"}));
  EXPECT_TRUE(wasVisible);
  EXPECT_FALSE(popUp()->isVisible());
  EXPECT_TRUE(target->calls.empty());
  EXPECT_EQ(selectedLabel(), "b");  // a cancel leaves it
}

TEST_F(SuggestionSelectionMouse, AReleaseWithoutAFieldSendsNothingAndStillCancels) {
  controller->setSuggestions(suggestionsNamed({"a"}));
  popUp()->orderFront(nullptr);
  controller->mouseUp(nullptr);
  EXPECT_FALSE(popUp()->isVisible());
  EXPECT_TRUE(field->calls.empty());
}

TEST_F(SuggestionSelectionMouse, RowsThrownAwayWithinTheirOwnEventsAreHarmless) {
  show({"a", "b", "c"});
  target->onCall = [&] {
    items.clear();
    controller->setSuggestions(suggestionsNamed({"x", "y"}));
  };
  user.moveTo(*popUp(), {10, 10});
  EXPECT_EQ(selectedLabel(), "x");
  target->onCall = nullptr;
  field->onAction = [&] {
    items.clear();
    controller->setSuggestions(suggestionsNamed({"1", "2", "3"}));
  };
  user.click(*popUp(), {10, 10});
  EXPECT_FALSE(popUp()->isVisible());
  EXPECT_EQ(selectedLabel(), "1");
}

TEST_F(SuggestionSelectionMouse, NewRowsInTheMiddleOfAPressChooseNothing) {
  show({"a", "b", "c"});
  user.moveTo(*popUp(), {10, 50});
  user.press(*popUp(), {10, 50});
  target->calls.clear();
  controller->setSuggestions(suggestionsNamed({"x", "y", "z"}));
  EXPECT_EQ(target->calls, Calls{});
  user.release();
  EXPECT_EQ(field->calls, Calls{});
  EXPECT_TRUE(popUp()->isVisible());
}

TEST_F(SuggestionSelectionMouse, ThePointerOverAPopUpThatIsCancelledClearsNothingWhenItBeginsAgain) {
  show({"a", "b", "c"});
  user.moveTo(*popUp(), {10, 50});
  controller->cancelSuggestions();
  desktop.setMouseLocation({1000, 800});
  show({"x", "y", "z"});
  EXPECT_EQ(selectedLabel(), "x");
  EXPECT_EQ(target->calls, Calls{});
}

TEST_F(SuggestionSelectionMouse, TheTargetMayGoWithinItsCall) {
  show({"a", "b"});
  target->onCall = [&] { target = nullptr; };
  controller->moveDown(nullptr);
  EXPECT_EQ(target, nullptr);
  EXPECT_EQ(selectedLabel(), "b");
}

using SuggestionSelectionKeys = harness::PopUpWorld;

TEST_F(SuggestionSelectionKeys, TheArrowCommandsAreFoundByName) {
  show({"a", "b"});
  EXPECT_TRUE(controller->performSelector("moveDown:", nullptr));
  EXPECT_EQ(selectedLabel(), "b");
  EXPECT_TRUE(controller->performSelector("moveUp:", nullptr));
  EXPECT_EQ(selectedLabel(), "a");
}

TEST_F(SuggestionSelectionKeys, AtEitherEndAnArrowLeavesTheSelectionAndMakesNoCall) {
  show({"a", "b", "c"});
  controller->moveUp(nullptr);
  EXPECT_EQ(selectedLabel(), "a");
  controller->setSelectedView(row(2));
  controller->moveDown(nullptr);
  EXPECT_EQ(selectedLabel(), "c");
  EXPECT_EQ(target->calls, Calls{});
}

TEST_F(SuggestionSelectionKeys, OnceThePointerHasLeftTheArrowsDoNothing) {
  show({"a", "b", "c"});
  controller->mouseExited(nullptr);
  target->calls.clear();
  controller->moveDown(nullptr);
  controller->moveUp(nullptr);
  EXPECT_EQ(controller->selectedView(), nullptr);
  EXPECT_EQ(target->calls, Calls{});
}

TEST_F(SuggestionSelectionKeys, SeveralRowsAtOnceAreOneMoveAndOneCall) {
  show({"a", "b", "c", "d", "e"});
  controller->moveSelectionBy(3);
  EXPECT_EQ(target->calls, Calls{"d"});
  controller->moveSelectionBy(-2);
  EXPECT_EQ(target->calls, (Calls{"d", "b"}));
}

TEST_F(SuggestionSelectionKeys, AMoveBeyondAnEndStopsThereAndIsNotReportedAgain) {
  show({"a", "b", "c"});
  controller->moveSelectionBy(std::numeric_limits<std::int64_t>::max());
  controller->moveSelectionBy(1);
  EXPECT_EQ(target->calls, Calls{"c"});
  controller->moveSelectionBy(std::numeric_limits<std::int64_t>::min());
  controller->moveSelectionBy(-1);
  controller->moveSelectionBy(0);
  EXPECT_EQ(target->calls, (Calls{"c", "a"}));
}

TEST_F(SuggestionSelectionKeys, WithoutASelectionAMoveBeginsOutsideOfTheRows) {
  show({"a", "b", "c"});
  controller->setSelectedView(nullptr);
  controller->moveSelectionBy(1);
  EXPECT_EQ(selectedLabel(), "a");
  controller->setSelectedView(nullptr);
  controller->moveSelectionBy(-1);
  EXPECT_EQ(selectedLabel(), "c");
}

TEST_F(SuggestionSelectionKeys, WithoutRowsNothingMoves) {
  controller->moveSelectionBy(1);
  show({});
  controller->moveSelectionBy(1);
  EXPECT_EQ(target->calls, Calls{});
  EXPECT_EQ(controller->rowsOfPage(), 1);
}

TEST_F(SuggestionSelectionKeys, ARowIsSelectedByItsPlaceWithoutACall) {
  show({"a", "b", "c"});
  EXPECT_EQ(controller->selectedRow(), 0u);
  controller->selectRow(2);
  EXPECT_EQ(selectedLabel(), "c");
  EXPECT_EQ(controller->selectedRow(), 2u);
  controller->selectRow(3);
  EXPECT_EQ(controller->selectedRow(), std::nullopt);
  controller->selectRow(1);
  controller->selectRow(std::nullopt);
  EXPECT_EQ(selectedLabel(), "none");
  EXPECT_EQ(target->calls, Calls{});
}

TEST_F(SuggestionSelectionKeys, APageIsAsManyRowsAsShowButForOne) {
  controller->setMaximumRows(4);
  controller->setSuggestions(suggestionsCounting(20));
  controller->beginForTextField(field);
  desktop.settle();
  EXPECT_EQ(controller->rowsOfPage(), 3);
}

}  // namespace
}  // namespace TessalunaUIKit
