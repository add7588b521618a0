#include "tessaluna/uikit/suggestions/SuggestibleTextFieldCell.h"

#include "tessaluna/platform/foundation/NSCoder.h"

#include <gtest/gtest.h>

#include "tests/uikit/suggestions/PopUpWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;

struct SuggestibleTextFieldCellTest : harness::PopUpWorld {
  Ref<SuggestibleTextFieldCell> cell = make<SuggestibleTextFieldCell>("text");
  Ref<NSImageView> one = make<NSImageView>(CGRect{}), two = make<NSImageView>(CGRect{});

  std::optional<AccessibilityElements> attribute() {
    const AccessibilityValue value = cell->accessibilityAttributeValue(NSAccessibilityChildrenAttribute);
    const auto* elements = value.as<AccessibilityElements>();
    return elements ? std::optional(*elements) : std::nullopt;
  }
  void setBase(AccessibilityValue value) {
    cell->accessibilitySetOverrideValue(std::move(value), NSAccessibilityChildrenAttribute);
  }
};

TEST_F(SuggestibleTextFieldCellTest, StartsWithItsTextAndWithoutAPopUp) {
  EXPECT_EQ(cell->stringValue(), "text");
  EXPECT_EQ(cell->suggestionsWindow(), nullptr);
  NSCoder coder(R"({"stringValue": "coded"})");
  const auto coded = make<SuggestibleTextFieldCell>(coder);
  EXPECT_EQ(coded->stringValue(), "coded");
  EXPECT_EQ(coded->suggestionsWindow(), nullptr);
}

TEST_F(SuggestibleTextFieldCellTest, WithoutAPopUpHasTheChildrenOfTheStockCellAlsoAbsentOnes) {
  EXPECT_EQ(cell->accessibilityChildren(), std::nullopt);
  EXPECT_EQ(attribute(), std::nullopt);
  setBase(AccessibilityElements{one, two});
  EXPECT_EQ(cell->accessibilityChildren(), (AccessibilityElements{one, two}));
  EXPECT_EQ(attribute(), (AccessibilityElements{one, two}));
}

TEST_F(SuggestibleTextFieldCellTest, ACopyHasItsTextAndNoPopUp) {
  cell->setSuggestionsWindow(popUp());
  const auto copy = std::dynamic_pointer_cast<SuggestibleTextFieldCell>(cell->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->stringValue(), "text");
  EXPECT_EQ(copy->suggestionsWindow(), nullptr);
  EXPECT_NE(cell->suggestionsWindow(), nullptr);
}

TEST_F(SuggestibleTextFieldCellTest, WithAPopUpItsListIsTheLastChild) {
  setBase(AccessibilityElements{one, two});
  cell->setSuggestionsWindow(popUp());
  EXPECT_EQ(cell->accessibilityChildren(), (AccessibilityElements{one, two, content()}));
  EXPECT_EQ(attribute(), (AccessibilityElements{one, two, content()}));
  EXPECT_EQ(cell->accessibilityAttributeValue(NSAccessibilityValueAttribute), "text");
}

TEST_F(SuggestibleTextFieldCellTest, WithAPopUpAndNoOtherChildrenTheListIsTheOnlyOne) {
  cell->setSuggestionsWindow(popUp());
  EXPECT_EQ(cell->accessibilityChildren(), AccessibilityElements{content()});
}

TEST_F(SuggestibleTextFieldCellTest, HasTheSameChildrenOnAllSystems) {
  for (const NSOperatingSystemVersion version :
       {NSOperatingSystemVersion{10, 9, 5}, NSOperatingSystemVersion{10, 10, 0}, NSOperatingSystemVersion{11, 0, 0}}) {
    setOperatingSystemVersion(version);
    cell->setSuggestionsWindow(nullptr);
    setBase(AccessibilityElements{one});
    EXPECT_EQ(cell->accessibilityChildren(), AccessibilityElements{one});
    setBase(true);  // of another kind: counts as absent
    EXPECT_EQ(cell->accessibilityChildren(), std::nullopt);
    cell->setSuggestionsWindow(popUp());
    EXPECT_EQ(cell->accessibilityChildren(), AccessibilityElements{content()});
  }
}

// The two ways differ for a cell whose attribute is overridden by a value that is no list.
TEST_F(SuggestibleTextFieldCellTest, Before1010AsksTheStockCellForItsAttributeAndSinceThenForItsChildren) {
  class CellWithAChild : public SuggestibleTextFieldCell {
   public:
    using SuggestibleTextFieldCell::SuggestibleTextFieldCell;
    Ref<NSObject> child;

   protected:
    std::optional<AccessibilityElements> accessibilityOwnChildren() const override { return AccessibilityElements{child}; }
  };
  const auto cell = make<CellWithAChild>("text");
  cell->child = one;
  cell->accessibilitySetOverrideValue(true, NSAccessibilityChildrenAttribute);
  const struct {
    NSOperatingSystemVersion version;
    std::optional<AccessibilityElements> children;
    AccessibilityElements withPopUp;
  } cases[] = {{{10, 9, 5}, std::nullopt, {content()}},
               {{10, 10, 0}, AccessibilityElements{one}, {one, content()}},
               {{11, 0, 0}, AccessibilityElements{one}, {one, content()}}};
  for (const auto& c : cases) {
    setOperatingSystemVersion(c.version);
    cell->setSuggestionsWindow(nullptr);
    EXPECT_EQ(cell->accessibilityChildren(), c.children) << c.version.minorVersion;
    cell->setSuggestionsWindow(popUp());
    EXPECT_EQ(cell->accessibilityChildren(), c.withPopUp) << c.version.minorVersion;
  }
}

TEST_F(SuggestibleTextFieldCellTest, DoesNotKeepThePopUpAlive) {
  cell->setSuggestionsWindow(make<NSWindow>(CGRect{}, 0u, NSBackingStoreBuffered, true));
  EXPECT_EQ(cell->suggestionsWindow(), nullptr);
}

using SuggestibleTextFieldCellDeathTest = SuggestibleTextFieldCellTest;

TEST_F(SuggestibleTextFieldCellDeathTest, APopUpWithoutAnyElementStopsTheProgram) {
  setBase(AccessibilityElements{});
  popUp()->setContentView(make<NSView>(CGRect{}));
  cell->setSuggestionsWindow(popUp());
  EXPECT_DEATH(cell->accessibilityChildren(), "no accessibility element");
  EXPECT_DEATH(attribute(), "no accessibility element");
}

TEST_F(SuggestibleTextFieldCellDeathTest, ChildrenThatAreNotAListStopTheProgramWhileThereIsAPopUp) {
  cell->setSuggestionsWindow(popUp());
  EXPECT_DEATH(attribute(), "children are not a list");
  setBase("text");
  EXPECT_DEATH(attribute(), "children are not a list");
}

}  // namespace
}  // namespace TessalunaUIKit
