#include "tessaluna/uikit/suggestions/HighlightingView.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/recordingOf.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Lines;

struct HighlightingViewTest : harness::StillWorld {
  Ref<HighlightingView> row = make<HighlightingView>(CGRect{0, 0, 100, 20});
};

TEST_F(HighlightingViewTest, IsNotHighlightedAtTheStart) {
  EXPECT_FALSE(row->isHighlighted());
  NSCoder coder(R"({"frame": [1, 2, 3, 4]})");
  EXPECT_FALSE(make<HighlightingView>(coder)->isHighlighted());
}

TEST_F(HighlightingViewTest, NotifiesTheTextFieldsInItOfTheirGround) {
  const auto field = make<NSTextField>(CGRect{0, 0, 10, 10}), inner = make<NSTextField>(CGRect{0, 0, 10, 10});
  const auto bare = make<NSTextField>(CGRect{0, 0, 10, 10});
  const auto box = make<NSView>(CGRect{0, 0, 10, 10});
  bare->setCell(nullptr);
  for (const Ref<NSView>& view : std::vector<Ref<NSView>>{field, bare, box}) row->addSubview(view);
  box->addSubview(inner);
  row->setIsHighlighted(true);
  EXPECT_EQ(field->cell()->backgroundStyle(), NSBackgroundStyleDark);
  EXPECT_EQ(inner->cell()->backgroundStyle(), NSBackgroundStyleLight);
  row->setIsHighlighted(false);
  EXPECT_EQ(field->cell()->backgroundStyle(), NSBackgroundStyleLight);
}

TEST_F(HighlightingViewTest, NotifiesEachOfSeveralTextFieldsInARow) {
  std::vector<Ref<NSTextField>> fields;
  for (int i = 0; i < 3; ++i) {
    fields.push_back(make<NSTextField>(CGRect{0, 0, 10, 10}));
    row->addSubview(make<NSView>(CGRect{0, 0, 10, 10}));
    row->addSubview(fields.back());
  }
  for (const bool isHighlighted : {true, false}) {
    row->setIsHighlighted(isHighlighted);
    for (const Ref<NSTextField>& field : fields)
      EXPECT_EQ(field->cell()->backgroundStyle(), isHighlighted ? NSBackgroundStyleDark : NSBackgroundStyleLight);
  }
}

TEST_F(HighlightingViewTest, AsksForARedrawAtEachAssignment) {
  const auto window = showWindowWith(row);
  row->setIsHighlighted(false);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(HighlightingViewTest, PaintsTheSelectionsColorOrAClearOneOverWhatIsThere) {
  const Lines off = harness::recordingOf([&] { row->drawRect({0, 0, 50, 20}); });
  row->setIsHighlighted(true);
  const Lines on = harness::recordingOf([&] { row->drawRect({0, 0, 50, 20}); });
  EXPECT_NE(off, on);
  const auto has = [](const Lines& lines, std::string_view text) {
    return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) { return line.find(text) != line.npos; });
  };
  EXPECT_TRUE(has(on, "alternateSelectedControlColor")) << testing::PrintToString(on);
  EXPECT_TRUE(has(off, "clearColor")) << testing::PrintToString(off);
  for (const Lines& lines : {on, off}) {
    EXPECT_EQ(harness::only("fill", lines).size(), 1u);
    EXPECT_TRUE(has(lines, "0,0,50,20"));
    EXPECT_FALSE(has(lines, "copy")) << testing::PrintToString(lines);
  }
}

TEST_F(HighlightingViewTest, IsAGroupToAssistiveClients) {
  EXPECT_TRUE(row->isAccessibilityElement());
  EXPECT_EQ(row->accessibilityRole(), "AXGroup");
  EXPECT_EQ(row->accessibilityAttributeValue(NSAccessibilityRoleAttribute), NSAccessibilityGroupRole);
}

}  // namespace
}  // namespace TessalunaUIKit
