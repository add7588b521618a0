#include "tessaluna/uikit/suggestions/SuggestionsWindow.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;

using SuggestionsWindowTest = harness::StillWorld;

TEST_F(SuggestionsWindowTest, IsBorderlessWhateverStyleMaskItIsGiven) {
  const auto window =
      make<SuggestionsWindow>(CGRect{0, 0, 20, 20}, std::uint32_t{NSWindowStyleMaskTitled | NSWindowStyleMaskClosable},
                              NSBackingStoreBuffered, true);
  EXPECT_EQ(window->styleMask(), 0u);
  EXPECT_FALSE(window->canBecomeKeyWindow());
}

TEST_F(SuggestionsWindowTest, HasAShadowAndAClearBackground) {
  const auto window = make<SuggestionsWindow>(CGRect{0, 0, 20, 20}, false);
  EXPECT_TRUE(window->hasShadow());
  EXPECT_FALSE(window->isOpaque());
  EXPECT_TRUE(areEqual(window->backgroundColor().get(), NSColor::clearColor().get()));
  // Made at once, and yet it knows what it is to look like.
  EXPECT_FALSE(nativeOf(*window).options().isOpaque);
}

TEST_F(SuggestionsWindowTest, HangsUnderTheCellForAssistiveClientsAsLongAsThatLives) {
  const auto window = make<SuggestionsWindow>(CGRect{0, 0, 20, 20}, true);
  EXPECT_FALSE(window->isAccessibilityElement());
  EXPECT_EQ(window->accessibilityParent(), NSApp);
  auto cell = make<SuggestibleTextFieldCell>("");
  window->setParentElement(cell);
  EXPECT_EQ(window->accessibilityParent(), cell);
  cell = nullptr;
  EXPECT_EQ(window->parentElement(), nullptr);
  EXPECT_EQ(window->accessibilityParent(), NSApp);
}

TEST_F(SuggestionsWindowTest, HangsUnderWhatAnIgnoredCellIsIn) {
  struct IgnoredCell : SuggestibleTextFieldCell {
    using SuggestibleTextFieldCell::SuggestibleTextFieldCell;
    bool isAccessibilityElement() const override { return false; }
  };
  const auto window = make<SuggestionsWindow>(CGRect{0, 0, 20, 20}, true);
  const auto cell = make<IgnoredCell>("");
  const auto field = make<NSTextField>(CGRect{0, 0, 50, 20});
  field->setCell(cell);
  const auto shown = showWindowWith(field);
  window->setParentElement(cell);
  EXPECT_EQ(window->accessibilityParent(), shown);
}

}  // namespace
}  // namespace TessalunaUIKit
