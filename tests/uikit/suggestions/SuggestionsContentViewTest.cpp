#include "tessaluna/uikit/suggestions/SuggestionsContentView.h"

#include <gtest/gtest.h>

#include "tests/harness/recordingOf.h"
#include "tests/uikit/suggestions/PopUpWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;

struct SuggestionsContentViewTest : harness::PopUpWorld {
  AccessibilityValue valueOf(std::string_view attribute) { return content()->accessibilityAttributeValue(attribute); }
  AccessibilityValue selected() { return valueOf(NSAccessibilitySelectedChildrenAttribute); }
};

TEST_F(SuggestionsContentViewTest, IsFlippedAndPaintsTheWindowsBackground) {
  EXPECT_TRUE(content()->isFlipped());
  const harness::Lines lines = harness::recordingOf([&] { content()->drawRect({1, 2, 3, 4}); });
  ASSERT_EQ(harness::only("fill", lines).size(), 1u);
  std::string all;
  for (const std::string& line : lines) all += line;
  EXPECT_NE(all.find("windowBackgroundColor"), all.npos) << all;
  EXPECT_NE(all.find("[\"rect\",1,2,3,4]"), all.npos) << all;
}

TEST_F(SuggestionsContentViewTest, IsAVerticalListOfTheRowsUnderTheFieldsCell) {
  show({"a", "b"});
  EXPECT_TRUE(content()->isAccessibilityElement());
  EXPECT_FALSE(content()->accessibilityIsIgnored());
  EXPECT_EQ(valueOf(NSAccessibilityRoleAttribute), "AXList");
  EXPECT_EQ(valueOf(NSAccessibilityOrientationAttribute), "AXVerticalOrientation");
  EXPECT_EQ(valueOf(NSAccessibilityEnabledAttribute), true);
  EXPECT_EQ(valueOf(NSAccessibilityChildrenAttribute), (AccessibilityElements{row(0), row(1)}));
  EXPECT_EQ(valueOf(NSAccessibilityVisibleChildrenAttribute), (AccessibilityElements{row(0), row(1)}));
  EXPECT_EQ(NSAccessibilityUnignoredDescendant(popUp()), content());
  EXPECT_EQ(content()->accessibilityParent(), field->cell());
  EXPECT_EQ(row(1)->accessibilityParent(), content());
  EXPECT_EQ(accessibilityOf(items[1]->labelTextField()->cell())->accessibilityParent(), row(1));
  EXPECT_EQ(accessibilityOf(NSApp)->accessibilityChildren(), AccessibilityElements{window});
  EXPECT_EQ(accessibilityOf(field->cell())->accessibilityChildren(), AccessibilityElements{content()});
}

TEST_F(SuggestionsContentViewTest, SaysWhichRowIsSelected) {
  show({"a", "b"});
  EXPECT_EQ(selected(), AccessibilityElements{row(0)});
  controller->moveDown(nullptr);
  EXPECT_EQ(selected(), AccessibilityElements{row(1)});
}

TEST_F(SuggestionsContentViewTest, WithoutAHighlightedRowTheSelectionIsAnEmptyList) {
  show({"a"});
  controller->setSelectedView(nullptr);
  EXPECT_EQ(selected(), AccessibilityElements{});
  EXPECT_FALSE(selected().isAbsent());
}

TEST_F(SuggestionsContentViewTest, SaysThatItsAttributesCannotBeSetTheSelectionIncluded) {
  for (const auto attribute : {NSAccessibilityOrientationAttribute, NSAccessibilityEnabledAttribute,
                               NSAccessibilityVisibleChildrenAttribute, NSAccessibilitySelectedChildrenAttribute})
    EXPECT_FALSE(content()->accessibilityIsAttributeSettable(attribute)) << attribute;
}

TEST_F(SuggestionsContentViewTest, SelectsTheRowThatItIsGivenAndNotifiesNoTarget) {
  show({"a", "b"});
  content()->accessibilitySetValue(row(1), NSAccessibilitySelectedChildrenAttribute);
  EXPECT_EQ(selectedLabel(), "b");
  EXPECT_TRUE(target->calls.empty());
}

TEST_F(SuggestionsContentViewTest, AnythingElseThanARowClearsTheSelection) {
  show({"a", "b"});
  const std::vector<AccessibilityValue> others = {AccessibilityElements{row(1)}, field, true, {}};
  for (const AccessibilityValue& value : others) {
    controller->setSelectedView(row(0));
    content()->accessibilitySetValue(value, NSAccessibilitySelectedChildrenAttribute);
    EXPECT_EQ(controller->selectedView(), nullptr);
  }
}

TEST_F(SuggestionsContentViewTest, WithoutItsControllerNothingCanBeSet) {
  show({"a", "b"});
  popUp()->setWindowController(nullptr);
  content()->accessibilitySetValue(row(1), NSAccessibilitySelectedChildrenAttribute);
  EXPECT_EQ(selectedLabel(), "a");
  content()->accessibilitySetValue(true, NSAccessibilityFocusedAttribute);
  make<SuggestionsContentView>(CGRect{})->accessibilitySetValue(row(1), NSAccessibilitySelectedChildrenAttribute);
}

TEST_F(SuggestionsContentViewTest, PressingARowSelectsItAndNotifiesNoTarget) {
  show({"a", "b"});
  EXPECT_EQ(row(1)->accessibilityActionNames(), (std::vector<std::string>{"AXPress", "choose"}));
  row(1)->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(selectedLabel(), "b");
  EXPECT_TRUE(target->calls.empty());
  EXPECT_TRUE(field->calls.empty());
  EXPECT_TRUE(popUp()->isVisible());
}

TEST_F(SuggestionsContentViewTest, ChoosingTheSelectedRowDoesWhatAClickDoes) {
  show({"a", "b"});
  row(0)->accessibilityPerformAction("choose");
  EXPECT_EQ(target->calls, harness::Calls{"a"});
  EXPECT_EQ(field->calls, (harness::Calls{"validateEditing", "abortEditing", "sendAction search: to nobody"}));
  EXPECT_FALSE(popUp()->isVisible());
}

TEST_F(SuggestionsContentViewTest, ChoosingAnotherRowSelectsItFirstAsThePointerWould) {
  show({"a", "b"});
  row(1)->accessibilityPerformAction("choose");
  EXPECT_EQ(target->calls, harness::Calls{"b"});
  EXPECT_EQ(field->calls.size(), 3u);
  EXPECT_EQ(selectedLabel(), "b");
  EXPECT_FALSE(popUp()->isVisible());
}

TEST_F(SuggestionsContentViewTest, ChoosingARowThatAPressHasSelectedNotifiesTheTarget) {
  show({"a", "b"});
  row(1)->accessibilityPerformAction(NSAccessibilityPressAction);
  row(1)->accessibilityPerformAction("choose");
  EXPECT_EQ(target->calls, harness::Calls{"b"});
  EXPECT_FALSE(popUp()->isVisible());
}

TEST_F(SuggestionsContentViewTest, ARowThatWasThrownAwayDoesNothing) {
  show({"a", "b"});
  const auto gone = row(1);
  controller->setSuggestions(suggestionsNamed({"c"}));
  gone->accessibilityPerformAction(NSAccessibilityPressAction);
  gone->accessibilityPerformAction("choose");
  EXPECT_EQ(selectedLabel(), "c");
  EXPECT_TRUE(popUp()->isVisible());
}

TEST_F(SuggestionsContentViewTest, NotifiesAssistiveClientsOfEachChangeAndOfItsEnd) {
  show({"a", "b"});
  harness::Calls heard;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      "", content(), nullptr, [&](const Ref<NSNotification>& n) { heard.push_back(n->name()); });
  controller->moveDown(nullptr);
  controller->cancelSuggestions();
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_EQ(heard, (harness::Calls{"AXSelectedChildrenChanged", "AXUIElementDestroyed"}));
}

// Has other children than the views in it, and takes the keyboard.
class OtherContentView : public SuggestionsContentView {
 public:
  using SuggestionsContentView::SuggestionsContentView;
  AccessibilityElements children;
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == NSAccessibilityChildrenAttribute) return children;
    return SuggestionsContentView::accessibilityAttributeValue(attribute);
  }
  bool isAccessibilityEnabled() const override { return false; }
  bool acceptsFirstResponder() const override { return true; }
};

TEST_F(SuggestionsContentViewTest, AsksItselfForTheChildrenOfWhichItAnswers) {
  const auto view = make<OtherContentView>(CGRect{});
  const auto plain = make<HighlightingView>(CGRect{}), highlighted = make<HighlightingView>(CGRect{});
  highlighted->setIsHighlighted(true);
  view->children = {make<NSView>(CGRect{}), plain, highlighted};
  EXPECT_EQ(view->accessibilityAttributeValue(NSAccessibilityVisibleChildrenAttribute), view->children);
  EXPECT_EQ(view->accessibilityAttributeValue(NSAccessibilitySelectedChildrenAttribute), AccessibilityElements{highlighted});
}

TEST_F(SuggestionsContentViewTest, IsEnabledInAnyCaseAndPassesOtherAttributesToItsBase) {
  const auto view = make<OtherContentView>(CGRect{});
  EXPECT_EQ(view->accessibilityAttributeValue(NSAccessibilityEnabledAttribute), true);
  EXPECT_TRUE(view->accessibilityIsAttributeSettable(NSAccessibilityFocusedAttribute));
  window->contentView()->addSubview(view);
  view->accessibilitySetValue(true, NSAccessibilityFocusedAttribute);
  EXPECT_EQ(window->firstResponder(), view.get());
}

using SuggestionsContentViewDeathTest = SuggestionsContentViewTest;

TEST_F(SuggestionsContentViewDeathTest, ChildrenThatAreNotAListStopTheProgram) {
  show({"a"});
  content()->accessibilitySetOverrideValue(true, NSAccessibilityChildrenAttribute);
  EXPECT_DEATH(selected(), "the children are not a list");
}

}  // namespace
}  // namespace TessalunaUIKit
