#include "tessaluna/uikit/containers/TableCellViewWithBackground.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Lines;

struct TableCellViewWithBackgroundTest : harness::StillWorld {
  Ref<TableCellViewWithBackground> view = make<TableCellViewWithBackground>(CGRect{0, 0, 100, 24});
};

TEST_F(TableCellViewWithBackgroundTest, StartsLightGray) {
  EXPECT_EQ(view->backgroundColor(), NSColor::lightGrayColor());
  NSCoder coder(R"({"backgroundColor": "redColor", "frame": [1, 2, 3, 4]})");
  const auto archived = make<TableCellViewWithBackground>(coder);
  EXPECT_EQ(archived->backgroundColor(), NSColor::lightGrayColor());
  EXPECT_EQ(archived->frame(), (CGRect{1, 2, 3, 4}));
}

TEST_F(TableCellViewWithBackgroundTest, IsOpaqueWhateverItsColor) {
  view->setBackgroundColor(NSColor::clearColor());
  EXPECT_TRUE(view->isOpaque());
}

TEST_F(TableCellViewWithBackgroundTest, FillsTheDirtyRectangle) {
  view->setBackgroundColor(NSColor::colorWithSRGBRed(0, 1, 0, 0.5));
  const Lines lines = harness::recordingOf([&] { view->drawRect({1, 2, 3, 4}); });
  EXPECT_EQ(harness::only("setFillColor", lines), Lines{R"({"op":"setFillColor","color":[0,1,0,0.5]})"});
  EXPECT_EQ(harness::only("setBlendMode", lines), Lines{R"({"op":"setBlendMode","mode":"copy"})"});
  ASSERT_EQ(harness::only("fill", lines).size(), 1u);
  EXPECT_NE(harness::only("fill", lines)[0].find(R"("shape":["rect",1,2,3,4])"), std::string::npos);
}

TEST_F(TableCellViewWithBackgroundTest, ItsContentIsOnTheFill) {
  view->addSubview(NSTextField::labelWithString("title"));
  view->setBackgroundColor(NSColor::redColor());
  const auto window = showWindowWith(view);
  view->setNeedsDisplay(true);
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  const Lines& lines = nativeOf(*window).paints()[0].lines;
  const auto placeOf = [&](const std::string& text) {
    return std::find_if(lines.begin(), lines.end(), [&](const std::string& line) { return line.find(text) != line.npos; });
  };
  ASSERT_NE(placeOf("\"glyphs\""), lines.end());
  EXPECT_LT(placeOf("\"fill\""), placeOf("\"glyphs\""));
}

TEST_F(TableCellViewWithBackgroundTest, AnotherColorShowsAtTheNextRedrawOnly) {
  const auto window = showWindowWith(view);
  view->setBackgroundColor(NSColor::redColor());
  EXPECT_FALSE(view->needsDisplay());
}

TEST_F(TableCellViewWithBackgroundTest, AnInterfaceFileConnectsItsContentsAndSetsItsColor) {
  registerInterfaceFileClasses();
  const auto contents = make<NSNib>(R"({"objects": [{"class": "TessalunaUIKit.TableCellViewWithBackground", "id": "row",
      "outlets": {"textField": "title", "imageView": "cover"}, "properties": {"backgroundColor": "controlColor"},
      "subviews": [{"class": "NSTextField", "id": "title"}, {"class": "NSImageView", "id": "cover"}]}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  const auto loaded = std::dynamic_pointer_cast<TableCellViewWithBackground>(contents.topLevelObjects.at(0));
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->textField(), loaded->subviews()[0]);
  EXPECT_EQ(loaded->imageView(), loaded->subviews()[1]);
  EXPECT_EQ(loaded->backgroundColor(), NSColor::controlColor());
}

TEST_F(TableCellViewWithBackgroundTest, LeavesCommandWithArrowsAlone) {
  const auto field = make<NSTextField>(CGRect{0, 40, 100, 24});
  const auto window = showWindowWith(field);
  window->contentView()->addSubview(view);
  field->setStringValue("one");
  field->selectText(nullptr);
  const std::string left = "\uF702";
  EXPECT_FALSE(view->performKeyEquivalent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                                        .modifiers = NSEventModifierFlagCommand,
                                                                        .characters = left,
                                                                        .charactersIgnoringModifiers = left})));
}

}  // namespace
}  // namespace TessalunaUIKit
