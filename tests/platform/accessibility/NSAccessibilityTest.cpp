#include "tessaluna/platform/accessibility/NSAccessibility.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

struct NSAccessibilityTest : harness::StillWorld {
  Ref<NSWindow> window = showWindow({100, 100, 200, 150});
  Ref<NSTextField> field = make<NSTextField>(CGRect{10, 20, 80, 24});
  Ref<NSButton> button = make<NSButton>(CGRect{0, 0, 60, 24});
  Ref<NSView> box = make<NSView>(CGRect{0, 50, 200, 100});
  Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{0, 0, 100, 100});
  Ref<NSImageView> image = make<NSImageView>(CGRect{0, 0, 50, 500});

  NSAccessibilityTest() {
    window->contentView()->addSubview(box);
    box->addSubview(field);
    box->addSubview(scrollView);
    scrollView->setDocumentView(image);
    image->addSubview(button);
  }
  static AccessibilityElements childrenOf(const Ref<NSObject>& object) {
    const AccessibilityValue value = accessibilityOf(object)->accessibilityAttributeValue(NSAccessibilityChildrenAttribute);
    return value.as<AccessibilityElements>() ? *value.as<AccessibilityElements>() : AccessibilityElements();
  }
  static AccessibilityValue valueOf(const Ref<NSObject>& object, std::string_view attribute) {
    return accessibilityOf(object)->accessibilityAttributeValue(attribute);
  }
  // How many elements there are below the object, each of which must name the one above it.
  int countAgreeing(const Ref<NSObject>& object) {
    int count = 0;
    for (const Ref<NSObject>& child : childrenOf(object)) {
      EXPECT_FALSE(accessibilityOf(child)->accessibilityIsIgnored()) << child->className();
      EXPECT_EQ(accessibilityOf(child)->accessibilityParent(), object) << child->className();
      count += 1 + countAgreeing(child);
    }
    return count;
  }
};

TEST_F(NSAccessibilityTest, PlainViewsControlsAndScrollViewsAreLeftOutAndCellsRepresentControls) {
  EXPECT_EQ(childrenOf(NSApp), AccessibilityElements{window});
  EXPECT_EQ(childrenOf(window), (AccessibilityElements{field->cell(), image}));
  EXPECT_EQ(childrenOf(image), AccessibilityElements{button->cell()});
}

TEST_F(NSAccessibilityTest, ChildAndParentAlwaysAgree) { EXPECT_EQ(countAgreeing(NSApp), 4); }

TEST_F(NSAccessibilityTest, HiddenViewsAndWindowsAreLeftOut) {
  field->setHidden(true);
  EXPECT_EQ(childrenOf(window), AccessibilityElements{image});
  window->orderOut(nullptr);
  EXPECT_EQ(childrenOf(NSApp), AccessibilityElements{});
}

TEST_F(NSAccessibilityTest, FindsTheNearestElementAboveAndBelow) {
  EXPECT_EQ(NSAccessibilityUnignoredDescendant(field), field->cell());
  EXPECT_EQ(NSAccessibilityUnignoredDescendant(scrollView), image);
  EXPECT_EQ(NSAccessibilityUnignoredDescendant(window), window);
  EXPECT_EQ(NSAccessibilityUnignoredDescendant(make<NSView>(CGRect{})), nullptr);
  EXPECT_EQ(NSAccessibilityUnignoredDescendant(nullptr), nullptr);
  EXPECT_EQ(NSAccessibilityUnignoredAncestor(button), image);
  EXPECT_EQ(NSAccessibilityUnignoredAncestor(scrollView), window);
  EXPECT_EQ(NSAccessibilityUnignoredAncestor(make<NSView>(CGRect{})), nullptr);
}

TEST_F(NSAccessibilityTest, CompanionEndsWithItsElement) {
  struct Companion : NSAccessibility::Companion {
    explicit Companion(bool& hasEnded) : hasEnded(hasEnded) {}
    ~Companion() override { hasEnded = true; }
    bool& hasEnded;
  };
  bool hasEnded = false;
  auto view = make<NSView>(CGRect{});
  EXPECT_EQ(view->accessibilityCompanion(), nullptr);
  view->setAccessibilityCompanion(std::make_unique<Companion>(hasEnded));
  EXPECT_NE(view->accessibilityCompanion(), nullptr);
  EXPECT_FALSE(hasEnded);
  view = nullptr;
  EXPECT_TRUE(hasEnded);
}

TEST_F(NSAccessibilityTest, TitlesStatesAndEnabledControlsTellTheirChanges) {
  std::vector<std::string> heard;
  const auto token = accessibilityNotificationCenter().addObserverForName(
      "", nullptr, nullptr,
      [&](const Ref<NSNotification>& told) { heard.push_back(told->name() + " of " + told->object()->className()); });
  window->setTitle("Player");
  button->setEnabled(false);
  button->setState(NSControlStateValueOn);
  accessibilityNotificationCenter().removeObserver(token);
  const std::vector<std::string> expected{"AXTitleChanged of NSWindow", "AXEnabledChanged of NSButtonCell",
                                          "AXValueChanged of NSButtonCell"};
  EXPECT_EQ(heard, expected);
}

TEST_F(NSAccessibilityTest, ReportsRolesTitlesAndValues) {
  field->setStringValue("text");
  button->setTitle("Play");
  EXPECT_EQ(valueOf(field->cell(), NSAccessibilityRoleAttribute), NSAccessibilityTextFieldRole);
  EXPECT_EQ(valueOf(field->cell(), NSAccessibilityValueAttribute), "text");
  field->setEditable(false);
  EXPECT_EQ(valueOf(field->cell(), NSAccessibilityRoleAttribute), NSAccessibilityStaticTextRole);
  EXPECT_EQ(valueOf(button->cell(), NSAccessibilityRoleAttribute), NSAccessibilityButtonRole);
  EXPECT_EQ(valueOf(button->cell(), NSAccessibilityTitleAttribute), "Play");
  button->setButtonType(NSButtonType::Toggle);
  button->setState(NSControlStateValueOn);
  EXPECT_EQ(valueOf(button->cell(), NSAccessibilityRoleAttribute), NSAccessibilityCheckBoxRole);
  EXPECT_EQ(valueOf(button->cell(), NSAccessibilityValueAttribute), 1.0);
  EXPECT_EQ(valueOf(image, NSAccessibilityRoleAttribute), NSAccessibilityImageRole);
  EXPECT_EQ(valueOf(window, NSAccessibilityRoleAttribute), NSAccessibilityWindowRole);
  EXPECT_TRUE(valueOf(image, "AXNothing").isAbsent());
}

TEST_F(NSAccessibilityTest, ReportsWhereAnElementIsOnTheScreen) {
  EXPECT_EQ(valueOf(field->cell(), NSAccessibilityPositionAttribute), (CGPoint{110, 170}));
  EXPECT_EQ(valueOf(field->cell(), NSAccessibilitySizeAttribute), (CGSize{80, 24}));
}

TEST_F(NSAccessibilityTest, ACellThatIsInNoViewHasNoChildrenAndNoParent) {
  const auto cell = make<NSTextFieldCell>();
  EXPECT_EQ(cell->accessibilityChildren(), std::nullopt);
  EXPECT_TRUE(valueOf(cell, NSAccessibilityChildrenAttribute).isAbsent());
  EXPECT_EQ(cell->accessibilityParent(), nullptr);
  EXPECT_EQ(field->cell()->accessibilityChildren(), AccessibilityElements{});
}

TEST_F(NSAccessibilityTest, AHostsWordGoesFirst) {
  accessibilityOf(image)->accessibilitySetOverrideValue("The cover", NSAccessibilityDescriptionAttribute);
  EXPECT_EQ(valueOf(image, NSAccessibilityDescriptionAttribute), "The cover");
  image->accessibilitySetOverrideValue(AccessibilityElements{field}, NSAccessibilityChildrenAttribute);
  EXPECT_EQ(image->accessibilityChildren(), AccessibilityElements{field});
  image->accessibilitySetOverrideValue({}, NSAccessibilityChildrenAttribute);
  EXPECT_EQ(image->accessibilityChildren(), AccessibilityElements{button->cell()});
}

TEST_F(NSAccessibilityTest, TheTextOfAnEditableFieldCanBeSet) {
  NSCell& cell = *field->cell();
  EXPECT_TRUE(cell.accessibilityIsAttributeSettable(NSAccessibilityValueAttribute));
  cell.accessibilitySetValue("typed", NSAccessibilityValueAttribute);
  EXPECT_EQ(field->stringValue(), "typed");
  cell.accessibilitySetValue(3.0, NSAccessibilityValueAttribute);
  EXPECT_EQ(field->stringValue(), "typed");
  field->setEditable(false);
  EXPECT_FALSE(cell.accessibilityIsAttributeSettable(NSAccessibilityValueAttribute));
  cell.accessibilitySetValue("more", NSAccessibilityValueAttribute);
  EXPECT_EQ(field->stringValue(), "typed");
}

TEST_F(NSAccessibilityTest, TheFocusCanBeGivenToWhatTakesIt) {
  NSCell& cell = *button->cell();
  EXPECT_TRUE(cell.accessibilityIsAttributeSettable(NSAccessibilityFocusedAttribute));
  EXPECT_FALSE(image->accessibilityIsAttributeSettable(NSAccessibilityFocusedAttribute));
  EXPECT_EQ(cell.accessibilityAttributeValue(NSAccessibilityFocusedAttribute), false);
  cell.accessibilitySetValue(true, NSAccessibilityFocusedAttribute);
  EXPECT_EQ(window->firstResponder(), button.get());
  EXPECT_EQ(cell.accessibilityAttributeValue(NSAccessibilityFocusedAttribute), true);
  cell.accessibilitySetValue(false, NSAccessibilityFocusedAttribute);
  EXPECT_EQ(window->firstResponder(), window.get());
}

struct Receiver : NSObject {
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  static const Selector selectors[];
  int calls = 0;
  void go(NSObject*) { ++calls; }
};
const Selector Receiver::selectors[] = {action<&Receiver::go>("go:")};
const ClassInfo Receiver::staticClassInfo{.name = "Receiver", .base = &NSObject::staticClassInfo, .selectors = selectors};

TEST_F(NSAccessibilityTest, AButtonCanBePressed) {
  const auto receiver = make<Receiver>();
  button->setTarget(receiver);
  button->setAction("go:");
  EXPECT_EQ(button->cell()->accessibilityActionNames(), std::vector<std::string>{"AXPress"});
  button->cell()->accessibilityPerformAction(NSAccessibilityPressAction);
  desktop.advance(1);
  EXPECT_EQ(receiver->calls, 1);
  auto& cell = dynamic_cast<NSAccessibilityButton&>(*button->cell());
  EXPECT_TRUE(cell.accessibilityPerformPress());
  EXPECT_EQ(receiver->calls, 2);
  button->setEnabled(false);
  EXPECT_FALSE(cell.accessibilityPerformPress());
  EXPECT_EQ(receiver->calls, 2);
}

TEST_F(NSAccessibilityTest, ChangesAreReported) {
  std::vector<std::pair<std::string, Ref<NSObject>>> heard;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      "", nullptr, nullptr, [&](const Ref<NSNotification>& n) { heard.emplace_back(n->name(), n->object()); });
  field->setStringValue("new");
  window->makeFirstResponder(button.get());
  window->orderOut(nullptr);
  NSAccessibilityPostNotification(nullptr, NSAccessibilityCreatedNotification);
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_EQ(heard, (std::vector<std::pair<std::string, Ref<NSObject>>>{{"AXValueChanged", field->cell()},
                                                                       {"AXFocusedUIElementChanged", button->cell()},
                                                                       {"AXUIElementDestroyed", window}}));
}

}  // namespace
}  // namespace tessaluna::platform
