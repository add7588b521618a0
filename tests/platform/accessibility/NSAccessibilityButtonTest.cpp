#include "tessaluna/platform/accessibility/NSAccessibilityButton.h"

#include "tessaluna/platform/views/NSButton.h"
#include "tests/harness/StillWorld.h"

namespace tessaluna::platform {
namespace {

class PressableView : public NSView, public NSAccessibilityButton {
 public:
  using NSView::NSView;
  std::string accessibilityLabel() const override { return label; }
  bool accessibilityPerformPress() override {
    ++presses;
    return true;
  }
  std::string label = "First, second";
  int presses = 0;
};

struct NSAccessibilityButtonTest : harness::StillWorld {
  Ref<PressableView> view = make<PressableView>(CGRect{0, 0, 50, 20});
  Ref<NSWindow> window = showWindowWith(view);
};

TEST_F(NSAccessibilityButtonTest, AViewThatAdoptsItIsAnElementWithTheRoleAndTheLabel) {
  EXPECT_TRUE(view->isAccessibilityElement());
  EXPECT_EQ(NSAccessibilityUnignoredChildren({window->contentView()}), AccessibilityElements{view});
  EXPECT_EQ(view->accessibilityAttributeValue(NSAccessibilityRoleAttribute), NSAccessibilityButtonRole);
  EXPECT_EQ(view->accessibilityAttributeValue(NSAccessibilityDescriptionAttribute), "First, second");
  view->label = "";
  EXPECT_TRUE(view->accessibilityAttributeValue(NSAccessibilityDescriptionAttribute).isAbsent());
}

TEST_F(NSAccessibilityButtonTest, ItsOneActionIsToPressIt) {
  EXPECT_EQ(view->accessibilityActionNames(), std::vector<std::string>{"AXPress"});
  view->accessibilityPerformAction(NSAccessibilityShowMenuAction);
  EXPECT_EQ(view->presses, 0);
  view->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(view->presses, 1);
}

TEST_F(NSAccessibilityButtonTest, APlainViewHasNoneOfIt) {
  const auto plain = make<NSView>(CGRect{});
  EXPECT_FALSE(plain->isAccessibilityElement());
  EXPECT_TRUE(plain->accessibilityActionNames().empty());
  EXPECT_TRUE(plain->accessibilityAttributeValue(NSAccessibilityDescriptionAttribute).isAbsent());
}

TEST_F(NSAccessibilityButtonTest, ACellInNoButtonCannotBePressed) {
  EXPECT_FALSE(make<NSButtonCell>()->accessibilityPerformPress());
  EXPECT_TRUE(make<NSButton>(CGRect{0, 0, 9, 9})->cell()->accessibilityActionNames() == std::vector<std::string>{"AXPress"});
}

TEST_F(NSAccessibilityButtonTest, TheToolTipIsTheHelpOfAViewAndOfAControlsCell) {
  const auto button = make<NSButton>(CGRect{0, 0, 9, 9});
  EXPECT_TRUE(view->accessibilityAttributeValue(NSAccessibilityHelpAttribute).isAbsent());
  view->setToolTip("What it is");
  button->setToolTip("What it does");
  EXPECT_EQ(view->accessibilityAttributeValue(NSAccessibilityHelpAttribute), "What it is");
  EXPECT_EQ(button->cell()->accessibilityAttributeValue(NSAccessibilityHelpAttribute), "What it does");
}

}  // namespace
}  // namespace tessaluna::platform
