#include "tessaluna/uikit/cells/ImageAndTextCell.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/accessibility/AccessibleText.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// In a font of 10 points: a character is 5 points wide and a line 12 high.
class ImageAndTextCellTest : public harness::StillWorld {
 protected:
  ImageAndTextCellTest() {
    cell->setFont(NSFont::systemFontOfSize(10));
    cell->setStringValue("abcd");
    field->setCell(cell);
  }
  Lines drawn(CGRect frame = {100, 200, 80, 20}) {
    return harness::recordingOf([&] { cell->drawWithFrame(frame, *field); });
  }
  Ref<ImageAndTextCell> cell = make<ImageAndTextCell>();
  Ref<NSTextField> field = make<NSTextField>(CGRect{10, 20, 80, 24});
  // Wider than high, and a frame of its own in the recording.
  Ref<NSImage> image = NSImage::imageWithSize({40, 10}, false, [](CGRect rect) {
    NSColor::redColor()->setFill();
    NSRectFillUsingOperation(rect, NSCompositingOperationSourceOver);
    return true;
  });
};

TEST_F(ImageAndTextCellTest, MadeInCodeItHasTheSmallSystemFontAndFromAnArchiveItsOwn) {
  EXPECT_EQ(make<ImageAndTextCell>()->font()->pointSize(), 11);
  NSCoder coder(R"({"fontSize": 17})");
  EXPECT_EQ(make<ImageAndTextCell>(coder)->font()->pointSize(), 17);
  NSCoder none;
  EXPECT_EQ(make<ImageAndTextCell>(none)->font(), nullptr);
}

TEST_F(ImageAndTextCellTest, AGroupCellHasATitleAndNoImage) {
  EXPECT_TRUE(cell->isGroupCell());
  cell->setCellImage(image);
  EXPECT_FALSE(cell->isGroupCell());
  cell->setStringValue("");
  EXPECT_FALSE(cell->isGroupCell());
  cell->setCellImage(nullptr);
  EXPECT_FALSE(cell->isGroupCell());
}

TEST_F(ImageAndTextCellTest, TheImagesSlotIsAsWideAsTheTextIsHighWhateverTheImage) {
  EXPECT_EQ(cell->cellSize(), (CGSize{24 + 3, 12}));
  cell->setCellImage(image);
  EXPECT_EQ(cell->cellSize(), (CGSize{24 + 3 + 12, 12}));
}

TEST_F(ImageAndTextCellTest, TheTitleIsBesideASlotThatIsThereAlsoWithoutAnImageAndOverhangsAtTheRight) {
  const CGRect expected{100 + 15 + 2, 200 + 2, 80 - 15, 20 - 4};
  EXPECT_EQ(cell->titleRectForBounds({100, 200, 80, 20}), expected);
  cell->setCellImage(image);
  EXPECT_EQ(cell->titleRectForBounds({100, 200, 80, 20}), expected);
}

TEST_F(ImageAndTextCellTest, ATitleInACellNarrowerThanTheSlotHasNoWidth) {
  EXPECT_EQ(cell->titleRectForBounds({0, 0, 10, 20}), (CGRect{12, 2, 0, 16}));
}

TEST_F(ImageAndTextCellTest, AnImageFillsASquareAndTheTextIsBesideIt) {
  cell->setCellImage(image);
  EXPECT_EQ(drawn(),
            (Lines{R"({"op":"save"})", R"({"op":"clipRect","rect":[100,201,12,12]})",
                   R"({"op":"concat","transform":[0.3,0,0,1.2,100,201]})",
                   R"({"op":"setFillColor","color":[1,0,0,1],"named":"redColor"})", R"({"op":"save"})",
                   R"({"op":"setBlendMode","mode":"normal"})",
                   R"({"op":"fill","path":[["M",0,0],["L",40,0],["L",40,10],["L",0,10],["Z"]],"shape":["rect",0,0,40,10]})",
                   R"({"op":"restore"})", R"({"op":"restore"})", R"({"op":"save"})", R"({"op":"save"})",
                   R"({"op":"concat","transform":[1,0,0,1,114,211]})",
                   R"({"op":"setFillColor","color":[0,0,0,0.85],"named":"controlTextColor"})",
                   R"({"op":"glyphs","glyphs":[[97,0,0],[98,5,0],[99,10,0],[100,15,0]]})", R"({"op":"restore"})",
                   R"({"op":"restore"})"}));
}

TEST_F(ImageAndTextCellTest, AnImageWithoutATitleIsAsLargeAsOneBesideATitle) {
  cell->setCellImage(image);
  cell->setStringValue("");
  EXPECT_EQ(cell->cellSize(), (CGSize{4 + 3 + 12, 12}));
  EXPECT_EQ(only("clipRect", drawn()), Lines{R"({"op":"clipRect","rect":[100,201,12,12]})"});
}

TEST_F(ImageAndTextCellTest, InAFrameNarrowerThanTheImageTheImageKeepsItsSize) {
  cell->setCellImage(image);
  EXPECT_EQ(only("clipRect", drawn({100, 200, 5, 6})).front(), R"({"op":"clipRect","rect":[100,201,12,12]})");
}

TEST_F(ImageAndTextCellTest, WithABackgroundTheSlotIsFilledBeforeTheImageWhichSitsAPointFurtherAlong) {
  cell->setCellImage(image);
  cell->setDrawsBackground(true);
  cell->setBackgroundColor(NSColor::greenColor());
  EXPECT_EQ(
      drawn(),
      (Lines{
          R"({"op":"setFillColor","color":[0,1,0,1],"named":"greenColor"})",
          R"({"op":"setStrokeColor","color":[0,1,0,1],"named":"greenColor"})",
          R"({"op":"save"})",
          R"({"op":"setBlendMode","mode":"copy"})",
          R"({"op":"fill","path":[["M",100,200],["L",112,200],["L",112,220],["L",100,220],["Z"]],"shape":["rect",100,200,12,20]})",
          R"({"op":"restore"})",
          R"({"op":"save"})",
          R"({"op":"clipRect","rect":[100,201,12,12]})",
          R"({"op":"concat","transform":[0.3,0,0,1.2,100,201]})",
          R"({"op":"setFillColor","color":[1,0,0,1],"named":"redColor"})",
          R"({"op":"save"})",
          R"({"op":"setBlendMode","mode":"normal"})",
          R"({"op":"fill","path":[["M",0,0],["L",40,0],["L",40,10],["L",0,10],["Z"]],"shape":["rect",0,0,40,10]})",
          R"({"op":"restore"})",
          R"({"op":"restore"})",
          R"({"op":"setFillColor","color":[0,1,0,1],"named":"greenColor"})",
          R"({"op":"save"})",
          R"({"op":"setBlendMode","mode":"normal"})",
          R"({"op":"fill","path":[["M",112,200],["L",180,200],["L",180,220],["L",112,220],["Z"]],"shape":["rect",112,200,68,20]})",
          R"({"op":"restore"})",
          R"({"op":"save"})",
          R"({"op":"save"})",
          R"({"op":"concat","transform":[1,0,0,1,114,211]})",
          R"({"op":"setFillColor","color":[0,0,0,0.85],"named":"controlTextColor"})",
          R"({"op":"glyphs","glyphs":[[97,0,0],[98,5,0],[99,10,0],[100,15,0]]})",
          R"({"op":"restore"})",
          R"({"op":"restore"})"}));
}

TEST_F(ImageAndTextCellTest, WithoutABackgroundColorTheSlotHasTheTextsBackground) {
  cell->setCellImage(image);
  cell->setDrawsBackground(true);
  const Lines fills = only("setFillColor", drawn());
  EXPECT_THAT(fills.front(), HasSubstr("controlBackgroundColor"));
  EXPECT_THAT(fills.at(2), HasSubstr("controlBackgroundColor"));
}

TEST_F(ImageAndTextCellTest, AGroupCellDrawsItsTextInTheMiddleWithTheOffsetRoundedDown) {
  // (31 - 12) / 2 = 9.5
  const Lines group = drawn({100, 200, 80, 31});
  const auto stock = make<NSTextFieldCell>("abcd");
  stock->setFont(cell->font());
  EXPECT_EQ(group, harness::recordingOf([&] { stock->drawWithFrame({100, 209, 80, 13}, *field); }));
}

TEST_F(ImageAndTextCellTest, ABezelIsNoPartOfTheTextThatAGroupCellCenters) {
  cell->setBezeled(true);
  const auto stock = make<NSTextFieldCell>("abcd");
  stock->setFont(cell->font());
  stock->setBezeled(true);
  EXPECT_EQ(drawn({100, 200, 80, 31}), harness::recordingOf([&] { stock->drawWithFrame({100, 209, 80, 13}, *field); }));
}

TEST_F(ImageAndTextCellTest, AGroupCellLowerThanItsTextReachesBeyondItsFrame) {
  const auto stock = make<NSTextFieldCell>("abcd");
  stock->setFont(cell->font());
  EXPECT_EQ(drawn({100, 200, 80, 9}), harness::recordingOf([&] { stock->drawWithFrame({100, 198, 80, 13}, *field); }));
}

TEST_F(ImageAndTextCellTest, WithoutImageAndTitleItDrawsAsTheStockCell) {
  cell->setStringValue("");
  EXPECT_THAT(drawn(), IsEmpty());
  cell->setDrawsBackground(true);
  EXPECT_THAT(only("fill", drawn({100, 200, 80, 31})), ElementsAre(HasSubstr(R"("shape":["rect",100,200,80,31])")));
}

TEST_F(ImageAndTextCellTest, InAFlippedViewTheImageIsUpright) {
  cell->setCellImage(image);
  const auto window = showWindowWith(field);
  field->setNeedsDisplay(true);
  desktop.settle();
  // It is turned over within its place, from 1 to 13.
  EXPECT_THAT(only("concat", nativeOf(*window).paints().back().lines),
              testing::IsSupersetOf(
                  {R"({"op":"concat","transform":[1,0,0,-1,0,14]})", R"({"op":"concat","transform":[0.3,0,0,1.2,0,1]})"}));
}

TEST_F(ImageAndTextCellTest, EditingStartsAtTheTitleAlsoWithoutAnImage) {
  const auto window = showWindowWith(field);
  for (const auto& shown : {Ref<NSImage>(), image}) {
    cell->setCellImage(shown);
    cell->setEditable(true);
    field->selectText(nullptr);
    const Ref<NSText> editor = field->currentEditor();
    ASSERT_NE(editor, nullptr);
    // The stock cell edits in a part of the frame that it is given.
    const CGRect expected = cell->drawingRectForBounds(cell->titleRectForBounds(field->bounds()));
    EXPECT_EQ(editor->superview()->frame(), expected);
    EXPECT_EQ(expected.origin.x, 15 + 2 + 4);
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(field->currentEditor(), nullptr);
    user.click(*window, {50, 30});
    ASSERT_NE(field->currentEditor(), nullptr);
    EXPECT_EQ(field->currentEditor()->superview()->frame(), expected);
    window->makeFirstResponder(nullptr);
  }
}

TEST_F(ImageAndTextCellTest, WhoeverEditsItInAFrameEditsItAtTheTitleOfThatFrame) {
  const auto window = showWindowWith(field);
  const CGRect frame{1, 2, 70, 20};
  const CGRect expected = cell->drawingRectForBounds(cell->titleRectForBounds(frame));
  for (const bool isSelecting : {false, true}) {
    const Ref<NSText> editor = window->fieldEditor(true, nullptr);
    if (isSelecting) cell->selectWithFrame(frame, *field, editor, field, 1, 2);
    else cell->editWithFrame(frame, *field, editor, field, nullptr);
    EXPECT_EQ(editor->superview()->frame(), expected);
    if (isSelecting) {
      EXPECT_TRUE((editor->selectedRange() == NSRange{1, 2}));
    }
    cell->endEditing(editor);
  }
}

TEST_F(ImageAndTextCellTest, CharactersAreToAssistiveClientsWhereTheyAreDrawn) {
  const auto window = showWindowWith(field);
  // The window is at (100, 100), the field at (10, 20), a label's text two points from the side.
  field->setFrame({10, 20, 80, 31});
  CGRect first = frameOfAccessibleText(cell, {0, 1});
  EXPECT_EQ(first.origin, (CGPoint{100 + 10 + 2, 100 + 20 + 10}));  // nine points from above
  EXPECT_EQ(first.size, (CGSize{5, 12}));
  cell->setCellImage(image);
  first = frameOfAccessibleText(cell, {0, 1});
  EXPECT_EQ(first.origin, (CGPoint{100 + 10 + 12 + 2, 100 + 20 + 19}));
}

TEST_F(ImageAndTextCellTest, ACopyShowsTheSameImageAndKeepsItsOwnReference) {
  cell->setCellImage(image);
  const auto copy = std::dynamic_pointer_cast<ImageAndTextCell>(cell->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->cellImage(), image);
  cell->setCellImage(nullptr);
  EXPECT_EQ(copy->cellImage(), image);
}

TEST_F(ImageAndTextCellTest, SettingTheImageAsksForNoRedraw) {
  const auto window = showWindowWith(field);
  cell->setCellImage(image);
  desktop.settle();
  EXPECT_THAT(nativeOf(*window).paints(), IsEmpty());
}

}  // namespace
}  // namespace TessalunaUIKit
