// In which order a change of the selection does its parts, and what a whole gesture chooses.
#include <gtest/gtest.h>

#include <utility>

#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"
#include "tests/uikit/suggestions/PopUpWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Calls;

struct SuggestionSelectionOrder : harness::PopUpWorld {
  CGFloat scrolledBy() { return scrollView()->contentView()->bounds().origin.y; }
};

TEST_F(SuggestionSelectionOrder, TheNewRowIsStoredBeforeTheOldOneLosesItsHighlight) {
  show({"a", "b"});
  Ref<HighlightingView> selected;
  cells[0]->onStyle = [&] { selected = controller->selectedView(); };
  controller->setSelectedView(row(1));
  EXPECT_EQ(selected, row(1));
}

TEST_F(SuggestionSelectionOrder, ASelectionThatIsMadeAsTheOldRowLosesItsHighlightIsTheOnlyOne) {
  show({"a", "b", "c"});
  bool isFirst = true;
  cells[0]->onStyle = [&] {
    if (std::exchange(isFirst, false)) controller->setSelectedView(row(2));
  };
  controller->userSetSelectedView(row(1));
  EXPECT_EQ(target->calls, Calls{"c"});
  EXPECT_FALSE(row(1)->isHighlighted());
  EXPECT_TRUE(row(2)->isHighlighted());
}

TEST_F(SuggestionSelectionOrder, TheScrollComesAfterTheHighlightAndBeforeTheReport) {
  controller->setMaximumRows(2);
  show({"a", "b", "c", "d"});
  CGFloat atHighlight = -1, atReport = -1;
  cells[3]->onStyle = [&] { atHighlight = scrolledBy(); };
  target->onCall = [&] { atReport = scrolledBy(); };
  controller->userSetSelectedView(row(3));
  EXPECT_EQ(atHighlight, 0);
  EXPECT_EQ(atReport, 40);
}

TEST_F(SuggestionSelectionOrder, ANegativeIndexBeforeTheFirstLayoutIsNotReported) {
  controller->setSelectedView(make<HighlightingView>(CGRect{}));
  controller->setSelectedSuggestionIndex(-1);
  EXPECT_EQ(controller->selectedView(), nullptr);
  EXPECT_EQ(target->calls, Calls{});
}

// Equal to every view of its class.
class AnyRow : public HighlightingView {
 public:
  using HighlightingView::HighlightingView;
  bool isEqual(const NSObject* other) const override { return dynamic_cast<const AnyRow*>(other) != nullptr; }
};

TEST_F(SuggestionSelectionOrder, RowsAreComparedAsObjectsAndNotByIdentity) {
  show({"a", "b", "c"});
  for (const auto& item : items) item->setView(make<AnyRow>(CGRect{}));
  controller->setSelectedView(row(2));
  EXPECT_EQ(selectedLabel(), "a") << "the first that is equal";
  controller->moveUp(nullptr);
  controller->moveDown(nullptr);
  EXPECT_EQ(target->calls, Calls{}) << "it is the first from either end";
}

using SuggestionSelectionGesture = SuggestionSelectionOrder;

TEST_F(SuggestionSelectionGesture, AClickRightAfterTheWheelChoosesTheRowThatIsUnderThePointerThen) {
  controller->setMaximumRows(2);
  show({"a", "b", "c", "d"});
  user.moveTo(*popUp(), {10, 30});
  std::string chosen;
  field->onAction = [&] { chosen = selectedLabel(); };
  target->calls.clear();
  user.scroll(*popUp(), {10, 30}, {0, -40});
  user.click(*popUp(), {10, 30});
  EXPECT_EQ(target->calls, (Calls{"none", "c"}));
  EXPECT_EQ(chosen, "c");
  EXPECT_FALSE(popUp()->isVisible());
}

TEST_F(SuggestionSelectionGesture, AClickBesideTheWheelsPlaceChoosesTheRowOfTheClick) {
  controller->setMaximumRows(2);
  show({"a", "b", "c", "d"});
  user.moveTo(*popUp(), {10, 30});
  std::string chosen;
  field->onAction = [&] { chosen = selectedLabel(); };
  user.scroll(*popUp(), {10, 30}, {0, -40});
  user.click(*popUp(), {10, 10});
  EXPECT_EQ(chosen, "d");
}

TEST_F(SuggestionSelectionGesture, ADragChoosesTheRowWhereItEnds) {
  show({"a", "b", "c"});
  std::string chosen;
  field->onAction = [&] { chosen = selectedLabel(); };
  user.moveTo(*popUp(), {10, 50});
  user.press(*popUp(), {10, 50});
  user.dragTo({10, 30});
  user.dragTo({10, 10});
  EXPECT_EQ(target->calls, (Calls{"a", "none", "b", "none", "c"}));
  user.release();
  EXPECT_EQ(chosen, "c");
}

TEST_F(SuggestionSelectionGesture, ADragOutOfThePopUpStillSendsTheActionButWithoutASelection) {
  show({"a", "b"});
  std::string chosen;
  field->onAction = [&] { chosen = selectedLabel(); };
  user.moveTo(*popUp(), {10, 10});
  user.press(*popUp(), {10, 10});
  user.dragTo({-50, 10});
  user.release();
  EXPECT_EQ(chosen, "none");
  EXPECT_FALSE(popUp()->isVisible());
}

TEST_F(SuggestionSelectionGesture, APressOfTheScrollBarChoosesNothing) {
  controller->setMaximumRows(2);
  show({"a", "b", "c", "d"});
  user.moveTo(*popUp(), {195, 35});
  user.press(*popUp(), {195, 35});
  user.dragTo({195, 5});
  user.dragTo({50, 5});
  user.release();
  EXPECT_EQ(scrolledBy(), 40);
  EXPECT_EQ(field->calls, Calls{});
  EXPECT_TRUE(popUp()->isVisible());
}

TEST_F(SuggestionSelectionGesture, TheFieldOfAPopUpThatHasEndedStillGetsTheActionOfARelease) {
  show({"a"});
  controller->cancelSuggestions();
  controller->mouseUp(nullptr);
  EXPECT_EQ(field->calls, (Calls{"validateEditing", "abortEditing", "sendAction search: to nobody"}));
}

TEST_F(SuggestionSelectionGesture, TheActionMayLetTheControllerGo) {
  show({"a", "b"});
  const Ref<NSWindow> window = popUp();
  const WeakRef<Controller> weak = controller;
  field->onAction = [&] { controller = make<Controller>(); };
  user.moveTo(*window, {10, 10});
  user.click(*window, {10, 10});
  EXPECT_TRUE(weak.expired());
  EXPECT_FALSE(window->isVisible()) << "it was cancelled all the same";
}

TEST_F(SuggestionSelectionGesture, TheActionMayRemoveTheField) {
  show({"a", "b"});
  field->onAction = [&] { field->removeFromSuperview(); };
  user.moveTo(*popUp(), {10, 10});
  user.click(*popUp(), {10, 10});
  EXPECT_FALSE(popUp()->isVisible());
}

TEST_F(SuggestionSelectionGesture, APopUpThatEndsAndBeginsAgainDuringAPressChoosesNothing) {
  show({"a", "b"});
  user.moveTo(*popUp(), {10, 10});
  user.press(*popUp(), {10, 10});
  controller->cancelSuggestions();
  controller->beginForTextField(field);
  user.release();
  EXPECT_EQ(field->calls, Calls{});
  EXPECT_TRUE(popUp()->isVisible());
}

}  // namespace
}  // namespace TessalunaUIKit
