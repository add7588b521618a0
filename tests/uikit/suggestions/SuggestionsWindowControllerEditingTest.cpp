// A completion pop-up over a field that its user is really typing in: the window's field editor has the keys.
#include <gtest/gtest.h>

#include "tests/harness/FieldWorld.h"
#include "tests/uikit/suggestions/PopUpWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Calls;

struct SuggestionsWindowControllerEditing : harness::FieldWorld {
  Ref<SuggestionsWindowController> controller = make<SuggestionsWindowController>();
  Ref<harness::ProbeTarget> selections = std::make_shared<harness::ProbeTarget>();

  SuggestionsWindowControllerEditing() {
    NSNib::registerFactory("row", [](NSObject&) { return make<HighlightingView>(CGRect{0, 0, 50, 20}); });
    field->setCell(make<SuggestibleTextFieldCell>(""));
    field->setEditable(true);
    controller->setSuggestionPrototype("row");
    controller->setTarget(selections);
    controller->setSuggestions(std::vector<Suggestion>{{"abba", std::nullopt}, {"abbey", std::nullopt}});
    begin();
    user.type("ab");
    controller->beginForTextField(field);
    desktop.settle();
  }
  ~SuggestionsWindowControllerEditing() override { controller->cancelSuggestions(); }
  NSWindow& popUp() { return *controller->window(); }
};

TEST_F(SuggestionsWindowControllerEditing, TheKeysStayWithTheEditor) {
  ASSERT_TRUE(editor());
  EXPECT_EQ(window->firstResponder(), editor().get());
  user.type("b");
  EXPECT_EQ(field->stringValue(), "abb");
  EXPECT_TRUE(popUp().isVisible());
}

TEST_F(SuggestionsWindowControllerEditing, AnArrowKeyThatTheDelegateForwardsMovesTheSelectionAndNotTheCaret) {
  delegate->onCommand = [&](std::string_view selector) { return controller->performSelector(selector, field.get()); };
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(selections->calls, Calls{"abbey"});
  EXPECT_EQ(editor()->selectedRange(), (NSRange{2, 0}));
}

TEST_F(SuggestionsWindowControllerEditing, AChosenRowSendsTheActionWithWhatWasTypedAndEndsTheEditing) {
  user.moveTo(popUp(), {10, 10});
  user.click(popUp(), {10, 10});
  EXPECT_EQ(target->values, Calls{"ab"});
  EXPECT_EQ(field->currentEditor(), nullptr);
  EXPECT_FALSE(popUp().isVisible());
}

TEST_F(SuggestionsWindowControllerEditing, AChosenRowTakesOverTheTextThatTheTargetPutIntoTheEditor) {
  selections->onCall = [&] { editor()->setString("abbey road"); };
  user.moveTo(popUp(), {10, 10});
  selections->onCall = nullptr;
  user.click(popUp(), {10, 10});
  EXPECT_EQ(target->values, Calls{"abbey road"});
  EXPECT_EQ(field->stringValue(), "abbey road");
}

TEST_F(SuggestionsWindowControllerEditing, APressBesideTheFieldOnlyEndsThePopUp) {
  user.click(*window, {5, 5});
  EXPECT_FALSE(popUp().isVisible());
  EXPECT_TRUE(editor()) << "the press was swallowed";
  EXPECT_EQ(window->firstResponder(), editor().get());
}

TEST_F(SuggestionsWindowControllerEditing, APressOnTheOtherFieldEndsThePopUpAndTheNextOneTheEditing) {
  user.click(*window, {25, 65});
  EXPECT_FALSE(popUp().isVisible());
  EXPECT_TRUE(field->currentEditor());
  user.click(*window, {25, 65});
  EXPECT_FALSE(field->currentEditor());
  EXPECT_TRUE(other->currentEditor());
}

TEST_F(SuggestionsWindowControllerEditing, ThePopUpOutlivesNoEditedFieldsWindow) {
  window->close();
  EXPECT_FALSE(popUp().isVisible());
  EXPECT_EQ(popUp().parentWindow(), nullptr);
}

}  // namespace
}  // namespace TessalunaUIKit
