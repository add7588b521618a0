#include "tessaluna/platform/accessibility/AccessibleDescription.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/accessibleCells.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

class Clicks : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  void clicked(NSObject*) { ++count; }
  int count = 0;
};
constexpr Selector clicksSelectors[] = {action<&Clicks::clicked>("clicked:")};
const ClassInfo Clicks::staticClassInfo{.name = "Clicks", .base = &NSObject::staticClassInfo, .selectors = clicksSelectors};

// An element that says of itself what a test sets.
class Said : public NSView {
 public:
  using NSView::NSView;
  bool isAccessibilityElement() const override { return true; }
  void say(std::string_view attribute, AccessibilityValue value) { accessibilitySetOverrideValue(value, attribute); }
};

class AccessibleDescriptionTest : public harness::StillWorld {
 protected:
  AccessibleDescriptionTest() {
    button->setTitle("Play");
    button->setAction("clicked:");
    button->setTarget(clicks);
    for (const Ref<NSView>& view : std::initializer_list<Ref<NSView>>{field, button, said})
      window->contentView()->addSubview(view);
  }
  static bool has(const Ref<NSObject>& element, AccessibleState state) {
    return accessibleStatesOf(element).contains(state);
  }

  Ref<NSWindow> window = showWindow({100, 100, 200, 150});
  Ref<NSTextField> field = make<NSTextField>(CGRect{10, 20, 80, 24});
  Ref<NSButton> button = make<NSButton>(CGRect{0, 60, 60, 24});
  Ref<Said> said = make<Said>(CGRect{100, 100, 20, 20});
  Ref<Clicks> clicks = make<Clicks>();
};

TEST_F(AccessibleDescriptionTest, AButtonIsDescribed) {
  const AccessibleDescription shown = describe(button->cell());
  EXPECT_EQ(shown.role, NSAccessibilityButtonRole);
  EXPECT_EQ(shown.name, "Play");
  EXPECT_EQ(shown.text, "");
  EXPECT_EQ(shown.quantity, std::nullopt);
  EXPECT_EQ(shown.frame, (CGRect{100, 160, 60, 24}));
  EXPECT_EQ(shown.actions, (std::vector<std::string>{"AXPress", "AXFocus"}));
  AccessibleStates states;
  states.set(AccessibleState::Focusable);
  EXPECT_EQ(shown.states, states);
}

TEST_F(AccessibleDescriptionTest, TheLabelGoesBeforeTheTitle) {
  button->cell()->accessibilitySetOverrideValue("Play album", NSAccessibilityDescriptionAttribute);
  EXPECT_EQ(accessibleNameOf(button->cell()), "Play album");
}

TEST_F(AccessibleDescriptionTest, ALabelALinkAndAPopUpButtonAreCalledByWhatTheySay) {
  EXPECT_EQ(accessibleNameOf(NSTextField::labelWithString("Title")->cell()), "Title");
  said->say(NSAccessibilityValueAttribute, "High");
  for (const std::string_view role : {NSAccessibilityLinkRole, NSAccessibilityPopUpButtonRole}) {
    said->say(NSAccessibilityRoleAttribute, role);
    EXPECT_EQ(accessibleNameOf(said), "High") << role;
  }
  said->say(NSAccessibilityDescriptionAttribute, "Quality");
  EXPECT_EQ(accessibleNameOf(said), "Quality");
  field->setStringValue("query");
  EXPECT_EQ(accessibleNameOf(field->cell()), "") << "what is written in it is its value";
}

TEST_F(AccessibleDescriptionTest, ThePlaceholderIsTheHelpOfAFieldWithoutOne) {
  field->setPlaceholderString("Title or artist");
  EXPECT_EQ(accessibleHelpOf(field->cell()), "Title or artist");
  field->setToolTip("Searches all albums");
  EXPECT_EQ(accessibleHelpOf(field->cell()), "Searches all albums");
  button->setToolTip("Play");
  EXPECT_EQ(accessibleHelpOf(button->cell()), "") << "its name says it";
}

TEST_F(AccessibleDescriptionTest, OnlyWhatCanBePressedIsPressed) {
  button->setHighlighted(true);
  EXPECT_TRUE(has(button->cell(), AccessibleState::Pressed));
  field->setHighlighted(true);
  EXPECT_FALSE(has(field->cell(), AccessibleState::Pressed));
}

TEST_F(AccessibleDescriptionTest, AGroupAmongItemsThatCanBeSelectedIsARowCalledByItsContent) {
  const auto list = make<Said>(CGRect{0, 0, 100, 100});
  const auto group = make<Said>(CGRect{0, 0, 100, 20});
  window->contentView()->addSubview(list);
  list->addSubview(group);
  group->addSubview(NSTextField::labelWithString("Abba"));
  group->addSubview(NSTextField::labelWithString("Waterloo"));
  group->say(NSAccessibilityRoleAttribute, NSAccessibilityGroupRole);
  EXPECT_EQ(accessibleRoleOf(group), NSAccessibilityGroupRole);
  EXPECT_EQ(accessibleNameOf(group), "");
  list->say(NSAccessibilitySelectedChildrenAttribute, AccessibilityElements{group});
  EXPECT_EQ(accessibleRoleOf(group), NSAccessibilityRowRole);
  EXPECT_EQ(accessibleNameOf(group), "Abba, Waterloo");
  EXPECT_TRUE(has(group, AccessibleState::Selectable));
  EXPECT_TRUE(has(group, AccessibleState::Selected));
  list->say(NSAccessibilitySelectedChildrenAttribute, AccessibilityElements{});
  EXPECT_TRUE(has(group, AccessibleState::Selectable));
  EXPECT_FALSE(has(group, AccessibleState::Selected));
}

TEST_F(AccessibleDescriptionTest, StatesFollowFromRoleAndValue) {
  const struct {
    std::string_view role;
    AccessibilityValue value;
    AccessibleState able;
    AccessibleState on;
    bool isOn;
  } cases[] = {
      {NSAccessibilityCheckBoxRole, 0.0, AccessibleState::Checkable, AccessibleState::Checked, false},
      {NSAccessibilityCheckBoxRole, 1.0, AccessibleState::Checkable, AccessibleState::Checked, true},
      {NSAccessibilityCheckBoxRole, true, AccessibleState::Checkable, AccessibleState::Checked, true},
      {NSAccessibilityCheckBoxRole, -1.0, AccessibleState::Checkable, AccessibleState::Mixed, true},
      {NSAccessibilityCheckBoxRole, -1.0, AccessibleState::Checkable, AccessibleState::Checked, false},
      {NSAccessibilityRadioButtonRole, 1.0, AccessibleState::Checkable, AccessibleState::Checked, true},
      {NSAccessibilityDisclosureTriangleRole, 0.0, AccessibleState::Expandable, AccessibleState::Expanded, false},
      {NSAccessibilityDisclosureTriangleRole, 1.0, AccessibleState::Expandable, AccessibleState::Expanded, true},
      {NSAccessibilityTabButtonRole, 0.0, AccessibleState::Selectable, AccessibleState::Selected, false},
      {NSAccessibilityTabButtonRole, 1.0, AccessibleState::Selectable, AccessibleState::Selected, true},
  };
  for (const auto& c : cases) {
    said->say(NSAccessibilityRoleAttribute, c.role);
    said->say(NSAccessibilityValueAttribute, c.value);
    EXPECT_TRUE(has(said, c.able)) << c.role;
    EXPECT_EQ(has(said, c.on), c.isOn) << c.role;
    EXPECT_EQ(accessibleQuantityOf(said), std::nullopt) << c.role;
  }
}

TEST_F(AccessibleDescriptionTest, WhatTheElementSaysOfItselfGoesBeforeItsValue) {
  said->say(NSAccessibilityExpandedAttribute, false);
  EXPECT_TRUE(has(said, AccessibleState::Expandable));
  said->say(NSAccessibilityRoleAttribute, NSAccessibilityTabButtonRole);
  said->say(NSAccessibilitySelectedAttribute, true);
  EXPECT_TRUE(has(said, AccessibleState::Selected));
}

TEST_F(AccessibleDescriptionTest, ButtonsWithAMenuSaySo) {
  for (const std::string_view role : {NSAccessibilityPopUpButtonRole, NSAccessibilityMenuButtonRole}) {
    said->say(NSAccessibilityRoleAttribute, role);
    EXPECT_TRUE(has(said, AccessibleState::HasPopUp)) << role;
  }
  EXPECT_FALSE(has(button->cell(), AccessibleState::HasPopUp));
}

TEST_F(AccessibleDescriptionTest, AQuantityHasABoundOnEachSide) {
  const auto slider = make<NSControl>(CGRect{0, 0, 100, 20});
  slider->setCell(make<harness::QuantityCell>());
  const AccessibleQuantity expected{.value = 4, .minimum = 0, .maximum = 10};
  EXPECT_EQ(accessibleQuantityOf(slider->cell()), expected);
  EXPECT_EQ(accessibleQuantityOf(field->cell()), std::nullopt);
}

TEST_F(AccessibleDescriptionTest, AFieldIsEditableUnlessItIsDisabled) {
  EXPECT_TRUE(has(field->cell(), AccessibleState::Editable));
  EXPECT_FALSE(has(field->cell(), AccessibleState::ReadOnly));
  field->setEnabled(false);
  EXPECT_FALSE(has(field->cell(), AccessibleState::Editable));
  EXPECT_TRUE(has(field->cell(), AccessibleState::ReadOnly));
  EXPECT_TRUE(has(NSTextField::labelWithString("a")->cell(), AccessibleState::ReadOnly));
  EXPECT_FALSE(has(button->cell(), AccessibleState::ReadOnly));
}

TEST_F(AccessibleDescriptionTest, OnlyTheInnermostElementOfTheKeyWindowIsFocused) {
  window->makeFirstResponder(field.get());
  EXPECT_TRUE(has(field->cell(), AccessibleState::Focused));
  EXPECT_FALSE(has(window, AccessibleState::Focused));
  EXPECT_TRUE(has(window, AccessibleState::Active));
  EXPECT_FALSE(has(field->cell(), AccessibleState::Active));
  const auto other = showWindow({400, 100, 50, 50});
  EXPECT_FALSE(has(field->cell(), AccessibleState::Focused));
  EXPECT_FALSE(has(window, AccessibleState::Active));
}

TEST_F(AccessibleDescriptionTest, WhatIsScrolledAwayIsOffScreenAndWhatIsInNoWindowIsInvisible) {
  const auto image = make<NSImageView>(CGRect{0, 0, 50, 500});
  EXPECT_TRUE(has(image, AccessibleState::Invisible));
  EXPECT_TRUE(has(image, AccessibleState::Offscreen));
  const auto low = make<Said>(CGRect{0, 0, 50, 20}), high = make<Said>(CGRect{0, 480, 50, 20});
  image->addSubview(low);
  image->addSubview(high);
  const auto scrollView = make<NSScrollView>(CGRect{0, 0, 100, 100});
  scrollView->setDocumentView(image);
  window->contentView()->addSubview(scrollView);
  EXPECT_NE(has(low, AccessibleState::Offscreen), has(high, AccessibleState::Offscreen));
  EXPECT_FALSE(has(high, AccessibleState::Invisible));
  EXPECT_EQ(visibleFrameOfAccessible(image).size, (CGSize{50, 100}));
  window->orderOut(nullptr);
  EXPECT_TRUE(has(low, AccessibleState::Invisible));
}

TEST_F(AccessibleDescriptionTest, AButtonIsPressedAndGetsTheFocusByItsActions) {
  EXPECT_TRUE(performAccessibleAction(button->cell(), NSAccessibilityPressAction));
  EXPECT_EQ(clicks->count, 1);
  EXPECT_TRUE(has(button->cell(), AccessibleState::Pressed));
  EXPECT_TRUE(performAccessibleAction(button->cell(), accessibleFocusAction));
  EXPECT_EQ(window->firstResponder(), button.get());
  EXPECT_FALSE(performAccessibleAction(button->cell(), NSAccessibilityShowMenuAction)) << "it does not offer it";
  EXPECT_FALSE(performAccessibleAction(nullptr, NSAccessibilityPressAction));
}

TEST_F(AccessibleDescriptionTest, ADisabledButtonOffersNoActionAndRefusesItsPress) {
  button->setEnabled(false);
  EXPECT_EQ(accessibleActionsOf(button->cell()), std::vector<std::string>{});
  EXPECT_FALSE(performAccessibleAction(button->cell(), NSAccessibilityPressAction));
  EXPECT_EQ(clicks->count, 0);
  EXPECT_TRUE(has(button->cell(), AccessibleState::Disabled));
  EXPECT_FALSE(has(button->cell(), AccessibleState::Focusable));
}

TEST_F(AccessibleDescriptionTest, WhatIsNotAnElementIsUnknownAndEmpty) {
  const AccessibleDescription shown = describe(make<NSObject>());
  EXPECT_EQ(shown.role, NSAccessibilityUnknownRole);
  EXPECT_EQ(shown.name + shown.help + shown.text, "");
  EXPECT_EQ(shown.actions, std::vector<std::string>{});
  EXPECT_EQ(shown.states, AccessibleStates());
}

}  // namespace
}  // namespace tessaluna::platform
