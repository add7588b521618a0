#include "tessaluna/platform/accessibility/accessibleTree.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/accessibleCells.h"

namespace tessaluna::platform {
namespace {

using Lines = std::vector<std::string>;

// An element that has others in it.
class Group : public NSView {
 public:
  using NSView::NSView;
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityGroupRole); }
};

class AccessibleTree : public harness::StillWorld {
 protected:
  AccessibleTree() {
    window->setTitle("Player");
    button->setTitle("Play");
    window->contentView()->addSubview(group);
    group->addSubview(button);
    window->contentView()->addSubview(field);
  }

  Ref<NSWindow> window = showWindow({100, 100, 200, 150});
  Ref<Group> group = make<Group>(CGRect{0, 50, 200, 100});
  Ref<NSButton> button = make<NSButton>(CGRect{10, 10, 60, 24});
  Ref<NSTextField> field = make<NSTextField>(CGRect{10, 20, 80, 24});
};

TEST_F(AccessibleTree, ReadsAsALineForEachElement) {
  field->setPlaceholderString("Title");
  field->setStringValue("abba");
  window->makeFirstResponder(field.get());
  button->setEnabled(false);
  EXPECT_EQ(accessibleTreeLines(window),
            (Lines{
                "window \"Player\" [active]",
                "  group \"\" []",
                "    button \"Play\" [disabled]",
                "  text field \"\" = \"abba\" help \"Title\" [focusable, focused, editable] focus",
            }));
  EXPECT_EQ(accessibleTreeLines(nullptr), Lines{});
}

TEST_F(AccessibleTree, AQuantityReadsWithItsBoundsAndALabelWithoutItsValue) {
  const auto slider = make<NSControl>(CGRect{0, 0, 100, 20});
  slider->setCell(make<harness::QuantityCell>());
  EXPECT_EQ(accessibleLine(slider->cell()), "slider \"\" = 4 in 0 to 10 [invisible, off screen]");
  EXPECT_EQ(accessibleLine(NSTextField::labelWithString("Artist")->cell()),
            "static text \"Artist\" [read-only, invisible, off screen]");
  button->setButtonType(NSButtonType::Toggle);
  button->setState(NSControlStateValueOn);
  EXPECT_EQ(accessibleLine(button->cell()), "check box \"Play\" [focusable, checkable, checked] press, focus");
}

TEST_F(AccessibleTree, TheFocusedElementIsTheInnermostOne) {
  window->makeFirstResponder(button.get());
  EXPECT_EQ(focusedElementWithin({group, field->cell()}), button->cell());
  EXPECT_EQ(focusedElement(), button->cell());
  window->makeFirstResponder(nullptr);
  EXPECT_EQ(focusedElementWithin({group, field->cell()}), nullptr);
  EXPECT_EQ(focusedElement(), window);
  window->orderOut(nullptr);
  EXPECT_EQ(focusedElement(), nullptr);
}

TEST_F(AccessibleTree, TheLastElementAtThePointIsFound) {
  EXPECT_EQ(elementAtPoint({group, field->cell()}, {110, 230}), group);
  EXPECT_EQ(elementAtPoint({button->cell()}, {120, 170}), button->cell());
  // Both cover it.
  field->setFrame({0, 50, 80, 24});
  EXPECT_EQ(elementAtPoint({group, field->cell()}, {110, 155}), field->cell());
  EXPECT_EQ(elementAtPoint({field->cell(), group}, {110, 155}), group);
  EXPECT_EQ(elementAtPoint({group, field->cell()}, {10, 10}), nullptr);
  EXPECT_EQ(elementAtPoint({}, {110, 155}), nullptr);
}

TEST_F(AccessibleTree, WhatIsScrolledAwayIsAtNoPoint) {
  const auto document = make<Group>(CGRect{0, 0, 100, 500});
  const auto scrollView = make<NSScrollView>(CGRect{100, 0, 100, 40});
  scrollView->setDocumentView(document);
  window->contentView()->addSubview(scrollView);
  EXPECT_EQ(elementAtPoint({field->cell(), document}, {210, 110}), document);
  EXPECT_EQ(elementAtPoint({field->cell(), document}, {210, 145}), nullptr);
}

// As a completion pop-up under its field does.
TEST_F(AccessibleTree, AnElementInAWindowOfItsOwnIsFoundThroughTheOneItHangsUnder) {
  const auto popUp = make<NSWindow>(CGRect{100, 150, 100, 60}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, true);
  const auto row = make<Group>(CGRect{0, 0, 100, 60});
  popUp->contentView()->addSubview(row);
  popUp->orderFront(nullptr);
  field->cell()->accessibilitySetOverrideValue(AccessibilityElements{row}, NSAccessibilityChildrenAttribute);
  // The group is the later one, and covers the point in the window behind.
  EXPECT_EQ(elementAtPoint({field->cell(), group}, {110, 170}), field->cell());
  EXPECT_EQ(elementAtPoint({row}, {110, 170}), row);
  EXPECT_EQ(elementAtPoint({field->cell(), group}, {250, 170}), group);
}

TEST_F(AccessibleTree, AWindowBelowTheApplicationIsSeen) {
  EXPECT_TRUE(isAccessibleWindow(*window));
  window->accessibilitySetOverrideValue("x", NSAccessibilityHelpAttribute);
  EXPECT_TRUE(isAccessibleWindow(*window));
}

}  // namespace
}  // namespace tessaluna::platform
