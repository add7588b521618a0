#include "tessaluna/uikit/suggestions/FlatTextFieldCell.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Lines;

// Writes down what it is to draw inside, and where the drawing stood then.
class ProbeFlatCell : public FlatTextFieldCell {
 public:
  using FlatTextFieldCell::FlatTextFieldCell;
  std::vector<CGRect> interiors;
  void drawInteriorWithFrame(CGRect frame, NSView&) override { interiors.push_back(frame); }
};

struct FlatTextFieldCellTest : harness::StillWorld {
  Ref<NSTextField> field = make<NSTextField>(CGRect{0, 0, 100, 24});
  NSCoder coder{R"({"drawsBackground": true})"};
  Ref<ProbeFlatCell> cell = make<ProbeFlatCell>(coder);

  Lines drawn(CGRect frame) {
    return harness::recordingOf([&] { cell->drawWithFrame(frame, *field); });
  }
  // The shapes of the rounded rectangles that were filled.
  static Lines shapes(const Lines& lines) {
    Lines result;
    for (const std::string& line : harness::only("fill", lines)) {
      const std::size_t start = line.find("\"shape\":");
      if (start == line.npos) continue;
      result.push_back(line.substr(start + 8, line.size() - start - 9));
    }
    return result;
  }
};

TEST_F(FlatTextFieldCellTest, StartsBlackAndWithoutABackgroundOfItsOwn) {
  EXPECT_TRUE(areEqual(cell->borderColor().get(), NSColor::blackColor().get()));
  EXPECT_FALSE(cell->drawsBackground());
}

TEST_F(FlatTextFieldCellTest, ACopyHasItsBorderColor) {
  cell->setBorderColor(NSColor::redColor());
  const auto copy = std::dynamic_pointer_cast<FlatTextFieldCell>(cell->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->borderColor(), NSColor::redColor());
  EXPECT_EQ(copy->className(), "TessalunaUIKit.FlatTextFieldCell");
}

TEST_F(FlatTextFieldCellTest, PaintsAFrameAroundAWhiteShapeAndThenTheTextOnTheWholeFrame) {
  const Lines lines = drawn({0, 0, 100, 24});
  EXPECT_EQ(shapes(lines), (Lines{R"(["roundedRect",0,1,100,23,3.6,3.6])", R"(["roundedRect",1,2,98,21,2.6,2.6])"}));
  EXPECT_EQ(cell->interiors, (std::vector<CGRect>{{0, 0, 100, 24}}));
}

TEST_F(FlatTextFieldCellTest, PaintsTheFrameInItsBorderColor) {
  cell->setBorderColor(NSColor::colorWithCalibratedRed(0.5, 0.25, 0, 1));
  EXPECT_EQ(harness::only("setFillColor", drawn({0, 0, 100, 24})).at(0), R"({"op":"setFillColor","color":[0.5,0.25,0,1]})");
}

TEST_F(FlatTextFieldCellTest, LeavesWhiteBehindForFillsAndStrokes) {
  const Lines white = harness::recordingOf([] { NSColor::whiteColor()->set(); });
  EXPECT_EQ(harness::only("setStrokeColor", drawn({0, 0, 100, 24})), harness::only("setStrokeColor", white));
}

TEST_F(FlatTextFieldCellTest, StaysAtTheCornerWhateverTheFramesOrigin) {
  const Lines moved = shapes(drawn({30, 40, 100, 24}));
  EXPECT_EQ(cell->interiors, (std::vector<CGRect>{{30, 40, 100, 24}}));
  EXPECT_EQ(moved, shapes(drawn({0, 0, 100, 24})));
}

TEST_F(FlatTextFieldCellTest, PassesTheSizesOfAnEmptyFrameOnAsComputed) {
  const Lines shapesOfEmpty = shapes(drawn({0, 0, 100, 1}));
  EXPECT_EQ(shapesOfEmpty, (Lines{R"(["roundedRect",0,1,100,0,3.6,3.6])", R"(["roundedRect",1,2,98,-2,2.6,2.6])"}));
}

TEST_F(FlatTextFieldCellTest, FadesItsFrameTowardLightGrayWhileTheApplicationIsInTheBackground) {
  cell->setBorderColor(NSColor::colorWithCalibratedRed(1, 0, 0, 1));
  const Lines active = harness::only("setFillColor", drawn({0, 0, 10, 10}));
  NSApp->setActive(false);
  const Lines inactive = harness::only("setFillColor", drawn({0, 0, 10, 10}));
  const auto faded = NSColor::colorWithCalibratedRed(1, 0, 0, 1)->blendedColorWithFraction(0.7, NSColor::lightGrayColor());
  const Lines expected = harness::only("setFillColor", harness::recordingOf([&] {
                                         faded->setFill();
                                         NSColor::whiteColor()->set();
                                       }));
  EXPECT_NE(active, inactive);
  EXPECT_EQ(inactive, expected);
}

TEST_F(FlatTextFieldCellTest, LeavesTheFillColorAsItWasWhenThereIsNoBlend) {
  NSApp->setActive(false);
  cell->setBorderColor(NSColor::colorWithPatternImage(make<NSImage>(CGSize{2, 2})));
  EXPECT_EQ(harness::only("setFillColor", drawn({0, 0, 10, 10})).size(), 1u);  // the white one
}

TEST_F(FlatTextFieldCellTest, SettingTheColorAsksForNoRedraw) {
  const auto window = showWindowWith(field);
  field->setCell(cell);
  desktop.settle();
  nativeOf(*window).forgetPaints();
  cell->setBorderColor(NSColor::redColor());
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
}

TEST_F(FlatTextFieldCellTest, ADeactivationAsksForNoRedrawAndShowsWithTheNextOne) {
  const auto window = showWindowWith(field);
  field->setCell(cell);
  desktop.settle();
  const Lines active = harness::only("setFillColor", nativeOf(*window).paints().back().lines);
  nativeOf(*window).forgetPaints();
  NSApp->setActive(false);
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
  field->setNeedsDisplay(true);
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_NE(harness::only("setFillColor", nativeOf(*window).paints().back().lines), active);
}

// The shape is white on every desktop.
class FlatTextFieldCellOnADarkDesktop : public harness::StillWorld {
 protected:
  FlatTextFieldCellOnADarkDesktop() {
    using enum tessaluna::backend::SystemColor;
    field->setCell(cell);
    cell->setEditable(true);
    desktop.setSystemColor(ControlBackground, {0.1, 0.1, 0.1, 1});
    for (const auto text : {ControlText, DisabledControlText, PlaceholderText}) desktop.setSystemColor(text, {1, 1, 1, 1});
    for (const auto ground : {SelectedTextBackground, UnemphasizedSelectedTextBackground})
      desktop.setSystemColor(ground, {0.2, 0.2, 0.3, 1});
  }

  // The color that the last text was drawn in.
  std::string textColor() {
    const Lines lines = harness::recordingOf([&] { cell->drawWithFrame({0, 0, 100, 24}, *field); });
    EXPECT_EQ(harness::only("glyphs", lines).size(), 1u);
    return harness::only("setFillColor", lines).back();
  }

  Ref<NSTextField> field = make<NSTextField>(CGRect{0, 0, 100, 24});
  NSCoder coder;
  Ref<FlatTextFieldCell> cell = make<FlatTextFieldCell>(coder);
};

TEST_F(FlatTextFieldCellOnADarkDesktop, ItsTextsAreDark) {
  cell->setStringValue("x");
  EXPECT_EQ(textColor(), R"({"op":"setFillColor","color":[0,0,0,0.85]})");
  cell->setEnabled(false);
  EXPECT_EQ(textColor(), R"({"op":"setFillColor","color":[0,0,0,0.35]})");
  cell->setEnabled(true);
  cell->setStringValue("");
  cell->setPlaceholderString("y");
  EXPECT_EQ(textColor(), R"({"op":"setFillColor","color":[0,0,0,0.35]})");
}

TEST_F(FlatTextFieldCellOnADarkDesktop, ATextColorOfTheHostsStays) {
  cell->setStringValue("x");
  cell->setTextColor(NSColor::colorWithCalibratedRed(0.5, 0.25, 0, 1));
  EXPECT_EQ(textColor(), R"({"op":"setFillColor","color":[0.5,0.25,0,1]})");
}

TEST_F(FlatTextFieldCellOnADarkDesktop, ItsEditorIsReadableTooAndAStockFieldsIsTheDesktops) {
  const auto stock = make<NSTextField>(CGRect{0, 30, 100, 24});
  const auto window = showWindowWith(field);
  window->contentView()->addSubview(stock);
  const auto colors = [&](const Ref<NSTextField>& edited) {
    edited->setStringValue("x");
    edited->selectText(nullptr);
    const Ref<NSText> editor = edited->currentEditor();
    const auto drawn = [&] {
      return harness::only("setFillColor", harness::recordingOf([&] { editor->drawRect(editor->bounds()); }));
    };
    Lines lines = drawn();
    editor->setSelectedRange({1, 0});
    const Lines withCaret = drawn();
    lines.insert(lines.end(), withCaret.begin(), withCaret.end());
    return lines;
  };
  const std::string dark = R"({"op":"setFillColor","color":[0,0,0,0.85]})";
  EXPECT_EQ(colors(field), (Lines{R"({"op":"setFillColor","color":[0.7,0.84,1,1]})", dark, dark, dark}));
  const std::string light = R"({"op":"setFillColor","color":[1,1,1,1],"named":"controlTextColor"})";
  EXPECT_EQ(colors(stock), (Lines{R"({"op":"setFillColor","color":[0.2,0.2,0.3,1],"named":"selectedTextBackgroundColor"})",
                                  light, light, light}));
}

TEST_F(FlatTextFieldCellOnADarkDesktop, AnotherColorMeanwhileShowsInTheEditorAsItWouldInTheCell) {
  const auto window = showWindowWith(field);
  field->setStringValue("x");
  field->selectText(nullptr);
  const auto shown = [&] {
    const auto* text = dynamic_cast<const NSTextView*>(field->currentEditor().get());
    return attributeObject<NSColor>(text->textStorage()->attributesAtIndex(0), NSForegroundColorAttributeName);
  };
  const Ref<NSColor> dark = shown();
  field->setTextColor(NSColor::redColor());
  EXPECT_TRUE(areEqual(shown().get(), NSColor::redColor().get()));
  field->setTextColor(nullptr);
  EXPECT_TRUE(areEqual(shown().get(), dark.get()));
}

TEST_F(FlatTextFieldCellTest, OnALightDesktopItsTextsAreTheDesktops) {
  const auto flat = make<FlatTextFieldCell>(coder);
  flat->setStringValue("x");
  desktop.setSystemColor(tessaluna::backend::SystemColor::ControlText, {0.2, 0.1, 0, 1});
  EXPECT_EQ(harness::only("setFillColor", harness::recordingOf([&] {
                            flat->drawWithFrame({0, 0, 100, 24}, *field);
                          }))
                .back(),
            R"({"op":"setFillColor","color":[0.2,0.1,0,1],"named":"controlTextColor"})");
}

TEST_F(FlatTextFieldCellTest, OnALightDesktopPlaceholderAndEditorAreTheDesktops) {
  const auto colorsOf = [](const auto& draw) { return harness::only("setFillColor", harness::recordingOf(draw)); };
  const auto flat = make<FlatTextFieldCell>(coder);
  flat->setPlaceholderString("x");
  const Lines placeholder = colorsOf([&] { flat->drawWithFrame({0, 0, 100, 24}, *field); });
  EXPECT_NE(placeholder.back().find("placeholderTextColor"), std::string::npos) << placeholder.back();
  flat->setEditable(true);
  field->setCell(flat);
  const auto window = showWindowWith(field);
  field->setStringValue("x");
  field->selectText(nullptr);
  const Ref<NSText> editor = field->currentEditor();
  const Lines selection = colorsOf([&] { editor->drawRect(editor->bounds()); });
  EXPECT_NE(selection.at(0).find("selectedTextBackgroundColor"), std::string::npos) << selection.at(0);
}

using FlatTextFieldCellDeathTest = FlatTextFieldCellTest;

TEST_F(FlatTextFieldCellDeathTest, InitTextCellIsNotSupported) {
  EXPECT_DEATH(make<FlatTextFieldCell>(std::string("text")), "TessalunaUIKit.FlatTextFieldCell.*init\\(textCell:\\)");
}

TEST_F(FlatTextFieldCellDeathTest, DrawingWithoutTheApplicationStopsTheProgram) {
  NSApp = nullptr;
  EXPECT_DEATH(drawn({0, 0, 10, 10}), "drawn without NSApp");
}

TEST_F(FlatTextFieldCellDeathTest, DrawingWithoutAColorStopsTheProgramWithItsName) {
  cell->setBorderColor(nullptr);
  EXPECT_DEATH(drawn({0, 0, 10, 10}), "used while absent: borderColor");
  NSApp->setActive(false);
  EXPECT_DEATH(drawn({0, 0, 10, 10}), "used while absent: borderColor");
}

}  // namespace
}  // namespace TessalunaUIKit
