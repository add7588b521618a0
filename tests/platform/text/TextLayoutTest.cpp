#include "tessaluna/platform/text/TextLayout.h"

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using harness::recordingOf;

namespace {

// Ten points: five for each character, twelve for a line, nine of them above the baseline.
class TextLayoutTest : public harness::StillWorld {
 protected:
  static NSAttributes attributes(NSLineBreakMode mode = NSLineBreakByWordWrapping,
                                 NSTextAlignment alignment = NSTextAlignmentLeft, CGFloat size = 10) {
    return {{NSFontAttributeName, NSFont::systemFontOfSize(size)},
            {NSParagraphStyleAttributeName, make<NSParagraphStyle>(alignment, mode)}};
  }

  static TextLayout layOut(std::string_view text, CGFloat width, NSLineBreakMode mode = NSLineBreakByWordWrapping,
                           NSTextAlignment alignment = NSTextAlignmentLeft) {
    return TextLayout(NSAttributedString(text, attributes(mode, alignment)), {.width = width});
  }

  static std::vector<std::string> shown(const TextLayout& layout) {
    std::vector<std::string> texts;
    for (const TextLayout::Line& line : layout.lines()) texts.push_back(line.shown->string());
    return texts;
  }

  static Lines drawn(std::string_view text, CGRect rect, const NSAttributes& attributes) {
    return recordingOf([&] { drawInRect(text, rect, attributes); });
  }
  static Lines drawn(std::u16string_view text, CGRect rect, const NSAttributes& attributes) {
    return recordingOf([&] { drawInRect(text, rect, attributes); });
  }
};

using Texts = std::vector<std::string>;

}  // namespace

// Measuring.

TEST_F(TextLayoutTest, ACharacterIsHalfThePointSizeWideAndALineATwelfthTimesTenHigh) {
  EXPECT_EQ(sizeWithAttributes("abc", attributes()), (CGSize{15, 12}));
  EXPECT_EQ(sizeWithAttributes("abc", attributes(NSLineBreakByWordWrapping, NSTextAlignmentLeft, 20)), (CGSize{30, 24}));
}

TEST_F(TextLayoutTest, AnEmptyTextIsOneLineHigh) {
  const TextLayout layout = layOut("", 100);
  ASSERT_EQ(layout.lines().size(), 1u);
  EXPECT_EQ(layout.size().width, 0);
  EXPECT_DOUBLE_EQ(layout.size().height, 13 * 1.2);
}

TEST_F(TextLayoutTest, WithoutAFontTheSystemsIsMeant) { EXPECT_EQ(sizeWithAttributes("ab", {}).width, 13); }

TEST_F(TextLayoutTest, UserPerceivedCharactersAreMeasured) {
  EXPECT_EQ(sizeWithAttributes("e\xCC\x81", attributes()).width, 5);                                    // with an acute
  EXPECT_EQ(sizeWithAttributes("\xF0\x9F\x87\xA9\xF0\x9F\x87\xAA", attributes()).width, 5);             // a flag
  EXPECT_EQ(sizeWithAttributes(u"\U0001F468\u200D\U0001F469\u200D\U0001F467", attributes()).width, 5);  // a family
}

TEST_F(TextLayoutTest, ALoneSurrogateMeasuresAsOneCharacter) {
  EXPECT_EQ(sizeWithAttributes(std::u16string{u'a', 0xD83C, u'b'}, attributes()).width, 15);
}

TEST_F(TextLayoutTest, Utf8AndUtf16OfTheSameTextMeasureAndDrawAlike) {
  const std::pair<std::string_view, std::u16string> texts[] = {
      {"one two three", u"one two three"},
      {"\xF0\x9F\x8E\xB5 e\xCC\x81 two", u"\U0001F3B5 e\u0301 two"},
      {"", u""},
  };
  for (const auto& [utf8, utf16] : texts) {
    EXPECT_EQ(sizeWithAttributes(utf8, attributes()), sizeWithAttributes(utf16, attributes()));
    for (const std::uint32_t options : {0u, std::uint32_t(NSStringDrawingUsesLineFragmentOrigin)})
      EXPECT_EQ(boundingRectWithSize(utf8, {40, 1000}, options, attributes()),
                boundingRectWithSize(utf16, {40, 1000}, options, attributes()));
    EXPECT_EQ(drawn(utf8, {1, 2, 40, 50}, attributes()), drawn(utf16, {1, 2, 40, 50}, attributes()));
  }
}

TEST_F(TextLayoutTest, ALoneSurrogateIsOneUnitWhereverTextIsMeasuredOrDrawn) {
  for (const char16_t lone : {char16_t{0xD83C}, char16_t{0xDFB5}}) {
    const std::u16string text{u'a', lone, u' ', u'b', lone};
    EXPECT_EQ(sizeWithAttributes(text, attributes()), (CGSize{25, 12}));
    EXPECT_EQ(boundingRectWithSize(text, {15, 1000}, NSStringDrawingUsesLineFragmentOrigin, attributes()).size,
              (CGSize{10, 24}));
    EXPECT_EQ(only("glyphs", drawn(text, {0, 0, 15, 50}, attributes())),
              only("glyphs", drawn(u"a\uFFFD b\uFFFD", {0, 0, 15, 50}, attributes())));
    EXPECT_EQ(NSAttributedString(text).length(), 5u);
    EXPECT_EQ(NSAttributedString(text).text(), text);
  }
}

TEST_F(TextLayoutTest, EachInvalidByteMeasuresAsOneCharacter) {
  EXPECT_EQ(sizeWithAttributes("\xFF\xFF", attributes()).width, 10);
}

TEST_F(TextLayoutTest, SizeKnowsNoWidthAndBreaksAtParagraphsOnly) {
  EXPECT_EQ(sizeWithAttributes("one two\nthree", attributes()), (CGSize{35, 24}));
}

TEST_F(TextLayoutTest, TheBoundingRectWithLineOriginWrapsInTheWidth) {
  EXPECT_EQ(boundingRectWithSize("one two three", {40, 1000}, NSStringDrawingUsesLineFragmentOrigin, attributes()),
            (CGRect{0, 0, 35, 24}));
}

TEST_F(TextLayoutTest, TheBoundingRectWithoutOptionsIsOneLineAroundItsBaseline) {
  EXPECT_EQ(boundingRectWithSize("one two three", {40, 1000}, 0, attributes()), (CGRect{0, -3, 65, 12}));
}

TEST_F(TextLayoutTest, ALineIsAsHighAsTheLargestOfItsFonts) {
  NSMutableAttributedString text("ab", attributes());
  text.addAttribute(NSFontAttributeName, NSFont::systemFontOfSize(20), {1, 1});
  const TextLayout layout(text, {});
  EXPECT_EQ(layout.size(), (CGSize{15, 24}));
  EXPECT_EQ(layout.lines()[0].baseline, 18);
}

// The six line break modes.

TEST_F(TextLayoutTest, WordWrappingBreaksAfterBlanksWhichHangOver) {
  const TextLayout layout = layOut("one two three", 35);
  EXPECT_EQ(shown(layout), (Texts{"one two", "three"}));
  EXPECT_EQ(layout.lines()[1].start, 8u);
  EXPECT_EQ(layout.lines()[0].length, 8u);
}

TEST_F(TextLayoutTest, AWordThatIsLongerThanTheWidthIsBrokenWithin) {
  EXPECT_EQ(shown(layOut("a extraordinary b", 30)), (Texts{"a", "extrao", "rdinar", "y b"}));
}

TEST_F(TextLayoutTest, CharacterWrappingFillsEachLine) {
  EXPECT_EQ(shown(layOut("abcdefgh", 15, NSLineBreakByCharWrapping)), (Texts{"abc", "def", "gh"}));
}

TEST_F(TextLayoutTest, AWidthWithoutRoomForACharacterHoldsOneALine) {
  EXPECT_EQ(shown(layOut("abc", 2, NSLineBreakByCharWrapping)), (Texts{"a", "b", "c"}));
  EXPECT_EQ(shown(layOut("ab", 0)), (Texts{"a", "b"}));
  EXPECT_EQ(shown(layOut("ab", -7)), (Texts{"a", "b"}));
}

TEST_F(TextLayoutTest, NoLineBreaksWithinAUserPerceivedCharacter) {
  EXPECT_EQ(shown(layOut("ae\xCC\x81"
                         "e\xCC\x81",
                         10, NSLineBreakByCharWrapping)),
            (Texts{"ae\xCC\x81", "e\xCC\x81"}));
}

TEST_F(TextLayoutTest, ClippingKeepsOneLineThatTheEdgeCuts) {
  const TextLayout layout = layOut("abcdef", 12, NSLineBreakByClipping);
  EXPECT_EQ(shown(layout), Texts{"abcdef"});
  EXPECT_EQ(layout.size(), (CGSize{12, 12}));
  const Lines lines = drawn("abcdef", {100, 50, 12, 12}, attributes(NSLineBreakByClipping));
  EXPECT_EQ(only("clipRect", lines), Lines{R"({"op":"clipRect","rect":[0,-12,12,36]})"});
}

TEST_F(TextLayoutTest, ATextThatFitsIsNotClipped) {
  EXPECT_TRUE(only("clipRect", drawn("ab", {0, 0, 12, 12}, attributes(NSLineBreakByClipping))).empty());
}

TEST_F(TextLayoutTest, TruncationAtTheTailKeepsTheStart) {
  EXPECT_EQ(shown(layOut("abcdef", 20, NSLineBreakByTruncatingTail)), Texts{"abc\xE2\x80\xA6"});
}

TEST_F(TextLayoutTest, TruncationAtTheHeadKeepsTheEnd) {
  EXPECT_EQ(shown(layOut("abcdef", 20, NSLineBreakByTruncatingHead)), Texts{"\xE2\x80\xA6"
                                                                            "def"});
}

TEST_F(TextLayoutTest, TruncationInTheMiddleKeepsBothAndTheStartHasTheOddOne) {
  EXPECT_EQ(shown(layOut("abcdef", 20, NSLineBreakByTruncatingMiddle)), Texts{"ab\xE2\x80\xA6"
                                                                              "f"});
  EXPECT_EQ(shown(layOut("abcdef", 25, NSLineBreakByTruncatingMiddle)), Texts{"ab\xE2\x80\xA6"
                                                                              "ef"});
}

TEST_F(TextLayoutTest, ATextThatJustFitsIsNotTruncated) {
  for (const auto mode : {NSLineBreakByTruncatingHead, NSLineBreakByTruncatingTail, NSLineBreakByTruncatingMiddle})
    EXPECT_EQ(shown(layOut("abcdef", 30, mode)), Texts{"abcdef"});
}

TEST_F(TextLayoutTest, AWidthThatWasComputedHoldsTheTextItWasMeasuredFor) {
  const CGFloat size = 11.3,
                width =
                    sizeWithAttributes("abcdefg", attributes(NSLineBreakByTruncatingTail, NSTextAlignmentLeft, size)).width;
  const NSAttributedString text("abcdefg", attributes(NSLineBreakByTruncatingTail, NSTextAlignmentLeft, size));
  const CGFloat noisy = ((width + 0.1) + 0.2) - 0.3 - 1e-12;
  EXPECT_EQ(shown(TextLayout(text, {.width = noisy})), Texts{"abcdefg"});
}

TEST_F(TextLayoutTest, TheEllipsisStaysWhereNothingFits) {
  EXPECT_EQ(shown(layOut("abc", 1, NSLineBreakByTruncatingTail)), Texts{"\xE2\x80\xA6"});
}

TEST_F(TextLayoutTest, TruncationNeverCutsWithinAUserPerceivedCharacter) {
  const std::string flag = "\xF0\x9F\x87\xA9\xF0\x9F\x87\xAA";
  EXPECT_EQ(shown(layOut(flag + flag + flag, 10, NSLineBreakByTruncatingTail)), Texts{flag + "\xE2\x80\xA6"});
}

TEST_F(TextLayoutTest, EachParagraphIsTruncatedByItself) {
  EXPECT_EQ(shown(layOut("abcdef\nab\nghijkl", 20, NSLineBreakByTruncatingTail)),
            (Texts{"abc\xE2\x80\xA6", "ab", "ghi\xE2\x80\xA6"}));
}

// Paragraphs.

TEST_F(TextLayoutTest, EveryKindOfLineEndEndsAParagraph) {
  const TextLayout layout = layOut(
      "a\nb\r\nc\rd\xE2\x80\xA9"
      "e",
      100);
  EXPECT_EQ(shown(layout), (Texts{"a", "b", "c", "d", "e"}));
  EXPECT_EQ(layout.lines()[2].start, 5u);
}

TEST_F(TextLayoutTest, ALineEndAtTheEndBeginsAnEmptyLine) {
  const TextLayout layout = layOut("a\n", 100);
  ASSERT_EQ(layout.lines().size(), 2u);
  EXPECT_EQ(layout.lines()[1].start, 2u);
  EXPECT_EQ(layout.size().height, 24);
}

TEST_F(TextLayoutTest, AnEmptyLineIsAsHighAsItsFontSays) {
  const NSAttributedString text("a\n\nb\n", attributes(NSLineBreakByWordWrapping, NSTextAlignmentRight, 20));
  const TextLayout layout(text, {.width = 50});
  ASSERT_EQ(layout.lines().size(), 4u);
  for (const TextLayout::Line& line : layout.lines()) EXPECT_EQ(line.height(), 24);
  EXPECT_EQ(layout.lines()[1].x, 50);  // and stands where its alignment says
  EXPECT_EQ(layout.lines()[3].x, 50);
}

TEST_F(TextLayoutTest, LinesAreOneBelowTheOther) {
  const TextLayout layout = layOut("one two three", 20);
  ASSERT_EQ(layout.lines().size(), 4u);
  EXPECT_EQ(shown(layout), (Texts{"one", "two", "thre", "e"}));
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(layout.lines()[i].y, 12.0 * double(i));
    EXPECT_EQ(layout.lines()[i].baseline, 12.0 * double(i) + 9);
  }
}

TEST_F(TextLayoutTest, BlanksThatHangOverAtTheEndAreNotMeasured) {
  EXPECT_EQ(layOut("abcd   ", 20).size(), (CGSize{20, 12}));
  EXPECT_EQ(layOut("abc ", 20).size(), (CGSize{20, 12}));
}

TEST_F(TextLayoutTest, ALongTextIsLaidOutInTimeThatGrowsWithItsLength) {
  std::string text;
  for (int i = 0; i < 20000; ++i) text += "word ";
  const TextLayout layout = layOut(text, 25);
  EXPECT_EQ(layout.lines().size(), 20000u);
}

// Alignment.

TEST_F(TextLayoutTest, AlignmentSharesTheSpareWidth) {
  EXPECT_EQ(layOut("ab", 50, NSLineBreakByWordWrapping, NSTextAlignmentLeft).lines()[0].x, 0);
  EXPECT_EQ(layOut("ab", 50, NSLineBreakByWordWrapping, NSTextAlignmentCenter).lines()[0].x, 20);
  EXPECT_EQ(layOut("ab", 50, NSLineBreakByWordWrapping, NSTextAlignmentRight).lines()[0].x, 40);
  EXPECT_EQ(layOut("ab", 50, NSLineBreakByWordWrapping, NSTextAlignmentJustified).lines()[0].x, 0);
  EXPECT_EQ(layOut("ab", 50, NSLineBreakByWordWrapping, NSTextAlignmentNatural).lines()[0].x, 0);
}

TEST_F(TextLayoutTest, ATextThatIsTooLongStartsAtTheLeft) {
  EXPECT_EQ(layOut("abcdef", 20, NSLineBreakByClipping, NSTextAlignmentRight).lines()[0].x, 0);
}

TEST_F(TextLayoutTest, WithoutAWidthNothingIsAligned) {
  const NSAttributedString text("ab", attributes(NSLineBreakByWordWrapping, NSTextAlignmentCenter));
  EXPECT_EQ(TextLayout(text, {}).lines()[0].x, 0);
}

// Places of characters.

TEST_F(TextLayoutTest, TheCharacterUnderAPoint) {
  const TextLayout layout = layOut("one two", 20);
  EXPECT_EQ(layout.characterAt({0, 0}), 0u);
  EXPECT_EQ(layout.characterAt({4.9, 5}), 0u);
  EXPECT_EQ(layout.characterAt({5, 5}), 1u);
  EXPECT_EQ(layout.characterAt({7, 13}), 5u);
  EXPECT_EQ(layout.characterAt({-50, 13}), 4u);  // the nearest of its line
  EXPECT_EQ(layout.characterAt({900, 5}), 2u);
  EXPECT_EQ(layout.characterAt({2, 900}), 4u);  // below all lines, the last
  EXPECT_EQ(layout.characterAt({2, -900}), 0u);
}

TEST_F(TextLayoutTest, InAnEmptyTextTheCharacterIsItsLength) { EXPECT_EQ(layOut("", 20).characterAt({3, 3}), 0u); }

TEST_F(TextLayoutTest, TheCharacterUnderAPointOfAShortenedTextIsThatOfTheWholeText) {
  const TextLayout head = layOut("abcdef", 20, NSLineBreakByTruncatingHead);  // ...def
  EXPECT_EQ(head.characterAt({2, 5}), 0u);
  EXPECT_EQ(head.characterAt({7, 5}), 3u);
  EXPECT_EQ(head.characterAt({17, 5}), 5u);
  const TextLayout middle = layOut("abcdef", 20, NSLineBreakByTruncatingMiddle);  // ab...f
  EXPECT_EQ(middle.characterAt({7, 5}), 1u);
  EXPECT_EQ(middle.characterAt({12, 5}), 2u);
  EXPECT_EQ(middle.characterAt({17, 5}), 5u);
}

TEST_F(TextLayoutTest, TheCaretPlaceNearestToAPoint) {
  const TextLayout layout = layOut("abc", 100);
  EXPECT_EQ(layout.insertionIndexAt({2, 5}), 0u);
  EXPECT_EQ(layout.insertionIndexAt({3, 5}), 1u);
  EXPECT_EQ(layout.insertionIndexAt({900, 5}), 3u);
  EXPECT_EQ(layOut("a\n\nb", 100).insertionIndexAt({30, 15}), 2u);  // in an empty line
}

TEST_F(TextLayoutTest, TheCaretIsBeforeItsCharacterAndAfterTheLast) {
  const TextLayout layout = layOut("one two", 20);
  EXPECT_EQ(layout.caretRectAt(0), (CGRect{0, 0, 1, 12}));
  EXPECT_EQ(layout.caretRectAt(2), (CGRect{10, 0, 1, 12}));
  EXPECT_EQ(layout.caretRectAt(4), (CGRect{0, 12, 1, 12}));
  EXPECT_EQ(layout.caretRectAt(7), (CGRect{15, 12, 1, 12}));
}

TEST_F(TextLayoutTest, TheCaretOfAnEmptyLineIsAtItsStart) {
  EXPECT_EQ(layOut("a\n", 100).caretRectAt(2), (CGRect{0, 12, 1, 12}));
}

TEST_F(TextLayoutTest, TheCaretAfterACharacterOfSeveralUnitsSkipsThem) {
  const TextLayout layout = layOut(
      "e\xCC\x81"
      "b",
      100);
  EXPECT_EQ(layout.insertionIndexAt({6, 5}), 2u);
  EXPECT_EQ(layout.caretRectAt(2).origin.x, 5);
}

TEST_F(TextLayoutTest, ARangeOverTwoLinesHasARectangleInEach) {
  EXPECT_EQ(layOut("one two", 20).rectsOf({1, 5}), (std::vector<CGRect>{{5, 0, 10, 12}, {0, 12, 10, 12}}));
}

TEST_F(TextLayoutTest, AnEmptyRangeHasNoRectangle) { EXPECT_TRUE(layOut("abc", 50).rectsOf({1, 0}).empty()); }

TEST_F(TextLayoutTest, TheRectanglesOfARangeFollowTheAlignment) {
  EXPECT_EQ(layOut("abcd", 50, NSLineBreakByWordWrapping, NSTextAlignmentRight).rectsOf({1, 2}),
            (std::vector<CGRect>{{35, 0, 10, 12}}));
}

TEST_F(TextLayoutTest, ARangeThatIsLeftOutIsWhereItsEllipsisIs) {
  const TextLayout layout = layOut("abcdef", 20, NSLineBreakByTruncatingMiddle);  // ab...f
  EXPECT_EQ(layout.rectsOf({3, 1}), (std::vector<CGRect>{{10, 0, 5, 12}}));
  EXPECT_EQ(layout.rectsOf({5, 1}), (std::vector<CGRect>{{15, 0, 5, 12}}));
  EXPECT_EQ(layout.rectsOf({0, 6}), (std::vector<CGRect>{{0, 0, 20, 12}}));
}

// Drawing.

TEST_F(TextLayoutTest, DrawsFromTheUpperEdgeOnAndOneRunForEachFontAndColor) {
  NSMutableAttributedString text("abc", attributes());
  text.addAttribute(NSForegroundColorAttributeName, NSColor::colorWithSRGBRed(1, 0, 0, 1), {1, 1});
  const Lines lines = recordingOf([&] { text.drawInRect({100, 200, 50, 40}); });
  EXPECT_EQ(only("concat", lines), Lines{R"({"op":"concat","transform":[1,0,0,1,100,231]})"});
  EXPECT_EQ(only("glyphs", lines), (Lines{R"({"op":"glyphs","glyphs":[[97,0,0]]})", R"({"op":"glyphs","glyphs":[[98,5,0]]})",
                                          R"({"op":"glyphs","glyphs":[[99,10,0]]})"}));
  ASSERT_EQ(only("setFillColor", lines).size(), 3u);
  EXPECT_EQ(only("setFillColor", lines)[1], R"({"op":"setFillColor","color":[1,0,0,1]})");
}

TEST_F(TextLayoutTest, IsUprightInAFlippedSpace) {
  tessaluna::backend::recording::RecordingCanvas canvas;
  CGContext context(canvas);
  {
    const CurrentContextScope current(NSGraphicsContext::graphicsContextWithCGContext(context, true));
    drawInRect("ab", {100, 200, 50, 40}, attributes());
  }
  EXPECT_EQ(only("concat", canvas.lines()), Lines{R"({"op":"concat","transform":[1,0,0,-1,100,209]})"});
}

TEST_F(TextLayoutTest, ALineThatStartsBelowTheRectangleIsNotDrawn) {
  EXPECT_EQ(only("glyphs", drawn("one two", {0, 0, 20, 12}, attributes())).size(), 1u);
  EXPECT_EQ(only("glyphs", drawn("one two", {0, 0, 20, 13}, attributes())).size(), 2u);
  EXPECT_EQ(only("glyphs", drawn("one", {0, 0, 20, 0}, attributes())).size(), 1u);  // the first always is
}

TEST_F(TextLayoutTest, AnUnderlineIsOneRectangleBelowTheBaseline) {
  NSMutableAttributedString text("abcd", attributes());
  text.addAttribute(NSUnderlineStyleAttributeName, std::int64_t{NSUnderlineStyleSingle}, {1, 2});
  const Lines single = only("fill", recordingOf([&] { text.drawInRect({0, 0, 50, 12}); }));
  ASSERT_EQ(single.size(), 1u);
  EXPECT_NE(single[0].find(R"("shape":["rect",5,-2,10,1])"), std::string::npos) << single[0];
  text.addAttribute(NSUnderlineStyleAttributeName, std::int64_t{NSUnderlineStyleThick}, {1, 2});
  const Lines thick = only("fill", recordingOf([&] { text.drawInRect({0, 0, 50, 12}); }));
  EXPECT_NE(thick.at(0).find(R"("shape":["rect",5,-3,10,2])"), std::string::npos) << thick[0];
}

TEST_F(TextLayoutTest, NoUnderlineIsDrawnForTheStyleNone) {
  NSAttributes none = attributes();
  none[NSUnderlineStyleAttributeName] = std::int64_t{NSUnderlineStyleNone};
  EXPECT_TRUE(only("fill", drawn("ab", {0, 0, 50, 12}, none)).empty());
}

TEST_F(TextLayoutTest, DrawAtPointHasItsLowerLeftCornerThere) {
  const NSAttributedString text("ab", attributes());
  EXPECT_EQ(only("concat", recordingOf([&] {
                   text.drawAtPoint({10, 20});
                 })),
            Lines{R"({"op":"concat","transform":[1,0,0,1,10,23]})"});
}

TEST_F(TextLayoutTest, DrawingLeavesTheStateAsItWas) {
  const Lines lines = drawn("one two", {0, 0, 20, 40}, attributes());
  EXPECT_EQ(only("save", lines).size(), only("restore", lines).size());
  EXPECT_EQ(lines.front(), R"({"op":"save"})");
  EXPECT_EQ(lines.back(), R"({"op":"restore"})");
}

TEST_F(TextLayoutTest, WithoutACurrentContextDrawingDoesNothing) {
  drawInRect("ab", {0, 0, 10, 10}, attributes());
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

// Both directions. Three letters of Hebrew are three of five points, the first at the right.

TEST_F(TextLayoutTest, InTextFromRightToLeftTheCaretIsRightOfALetterAndAtTheEndLeftOfTheLast) {
  const TextLayout layout = layOut("\u05D0\u05D1\u05D2", 100);
  const auto x = [&](std::size_t index) { return layout.caretRectAt(index).origin.x; };
  EXPECT_EQ(x(0), 15);
  EXPECT_EQ(x(1), 10);
  EXPECT_EQ(x(2), 5);
  EXPECT_EQ(x(3), 0);
}

TEST_F(TextLayoutTest, AfterTheLastLetterTheCaretFollowsThatLettersDirection) {
  const TextLayout mixed = layOut("ab \u05D0\u05D1", 100);
  EXPECT_EQ(mixed.caretRectAt(2).origin.x, 10);
  EXPECT_EQ(mixed.caretRectAt(3).origin.x, 25);
  EXPECT_EQ(mixed.caretRectAt(5).origin.x, 15);
  const TextLayout back = layOut("\u05D0\u05D1 c", 100);
  EXPECT_EQ(back.caretRectAt(4).origin.x, 20);
}

TEST_F(TextLayoutTest, ARangeOfBothDirectionsIsSeveralRectangles) {
  const TextLayout mixed = layOut("ab\u05D0\u05D1\u05D2", 100);
  EXPECT_EQ(mixed.rectsOf({1, 2}), (std::vector<CGRect>{{5, 0, 5, 12}, {20, 0, 5, 12}}));
  EXPECT_EQ(mixed.insertionIndexAt({24, 5}), 2u);
  EXPECT_EQ(mixed.insertionIndexAt({12, 5}), 2u);  // the place between both directions is that of the first
  EXPECT_EQ(mixed.characterAt({12, 5}), 4u);
}

TEST_F(TextLayoutTest, AnUnderlineOfTextFromRightToLeftHasNoSeams) {
  NSAttributes underlined = attributes();
  underlined[NSUnderlineStyleAttributeName] = std::int64_t{NSUnderlineStyleSingle};
  const Lines fills = only("fill", drawn("\u05D0\u05D1\u05D2", {0, 0, 100, 12}, underlined));
  ASSERT_EQ(fills.size(), 1u);
  EXPECT_NE(fills[0].find("[\"rect\",0,-2,15,1]"), std::string::npos) << fills[0];
}

TEST_F(TextLayoutTest, ARangeOfTextFromRightToLeftIsOneRectangle) {
  EXPECT_EQ(layOut("\u05D0\u05D1\u05D2", 100).rectsOf({0, 2}), (std::vector<CGRect>{{5, 0, 10, 12}}));
}

TEST_F(TextLayoutTest, ARangeOfBothDirectionsWithoutAGapIsOneRectangle) {
  EXPECT_EQ(layOut("ab\u05D0\u05D1\u05D2 c", 100).rectsOf({0, 7}), (std::vector<CGRect>{{0, 0, 35, 12}}));
}

TEST_F(TextLayoutTest, TheCaretPlaceAtTheRightOfTextFromRightToLeftIsItsStart) {
  const TextLayout layout = layOut("\u05D0\u05D1\u05D2", 100);
  EXPECT_EQ(layout.insertionIndexAt({15, 5}), 0u);
  EXPECT_EQ(layout.insertionIndexAt({0, 5}), 3u);
  EXPECT_EQ(layout.insertionIndexAt({9, 5}), 1u);
}

// Paragraphs and runs.

TEST_F(TextLayoutTest, EachParagraphHasItsOwnAlignment) {
  NSMutableAttributedString text("ab\n", attributes());
  text.appendAttributedString(NSAttributedString("cd", attributes(NSLineBreakByWordWrapping, NSTextAlignmentRight)));
  const TextLayout layout(text, {.width = 50});
  ASSERT_EQ(layout.lines().size(), 2u);
  EXPECT_EQ(layout.lines()[0].x, 0);
  EXPECT_EQ(layout.lines()[1].x, 40);
}

TEST_F(TextLayoutTest, ALineOfBlanksAloneIsAsHighAsItsFont) {
  const TextLayout layout = layOut("    ", 5);
  ASSERT_EQ(layout.lines().size(), 1u);
  EXPECT_EQ(layout.size().height, 12);
}

TEST_F(TextLayoutTest, AnEllipsisLooksLikeTheTextBeforeIt) {
  NSMutableAttributedString text("ab", attributes(NSLineBreakByTruncatingTail));
  NSAttributes red = attributes(NSLineBreakByTruncatingTail);
  red[NSForegroundColorAttributeName] = NSColor::redColor();
  text.appendAttributedString(NSAttributedString("cdefgh", red));
  const TextLayout layout(text, {.width = 20});
  ASSERT_EQ(shown(layout), Texts{"abc…"});
  EXPECT_TRUE(layout.lines()[0].shown->attributeAtIndex(NSForegroundColorAttributeName, 3));
}

TEST_F(TextLayoutTest, WrappedByCharactersALineBreaksInsideAWordThoughABlankIsNear) {
  EXPECT_EQ(shown(layOut("aa bbb", 20, NSLineBreakByCharWrapping)), (Texts{"aa b", "bb"}));
  EXPECT_EQ(shown(layOut("aa bbb", 20, NSLineBreakByWordWrapping)), (Texts{"aa", "bbb"}));
}

TEST_F(TextLayoutTest, TheLinesBetweenTwoHeightsAreThoseThatMayReachThere) {
  const TextLayout layout = layOut("a\nb\nc\nd\ne", 100);   // of twelve points each
  EXPECT_EQ(layout.rangeBetween(26, 30), (NSRange{2, 6}));  // the third, and one on each side
  EXPECT_EQ(layout.rangeBetween(0, 60), (NSRange{0, 9}));
  EXPECT_EQ(layout.rangeBetween(-50, -20), (NSRange{0, 0}));
  EXPECT_EQ(layout.rangeBetween(100, 120), (NSRange{0, 0}));
}

TEST_F(TextLayoutTest, ATallLineIsAmongThoseThatReachFarBelowIt) {
  NSMutableAttributedString text(std::string_view("a\nb\nc\nd"), attributes());
  text.addAttribute(NSFontAttributeName, NSFont::systemFontOfSize(50), {0, 1});
  const TextLayout layout(text, {.width = 100});
  EXPECT_EQ(layout.rangeBetween(80, 81).location, 0u);
}

TEST_F(TextLayoutTest, LinesOfARangeAreDrawnWhereTheyAreInTheWhole) {
  const TextLayout layout = layOut("aa\nbb\ncc", 100);
  const CGRect rect{0, 0, 100, 100};
  const Lines all = only("glyphs", recordingOf([&] { layout.drawInRect(rect); }));
  ASSERT_EQ(all.size(), 3u);
  EXPECT_EQ(only("glyphs", recordingOf([&] { layout.drawRangeInRect({4, 1}, rect); })), Lines{all[1]});
  EXPECT_EQ(only("glyphs", recordingOf([&] { layout.drawRangeInRect({2, 5}, rect); })), all);
  EXPECT_TRUE(only("glyphs", recordingOf([&] { layout.drawRangeInRect({0, 0}, rect); })).empty());
}

// Glyphs with colors of their own.

namespace {

// In this desktop's font each "*" has a red bar of three points below the baseline.
class StarsEngine : public tessaluna::backend::headless::HeadlessTextEngine {
 public:
  std::shared_ptr<const tessaluna::backend::ShapedLine> shape(
      std::u16string_view text, std::span<const tessaluna::backend::FontSpan> fonts) const override {
    const auto line = std::make_shared<tessaluna::backend::ShapedLine>(*HeadlessTextEngine::shape(text, fonts));
    const auto red = std::make_shared<tessaluna::backend::ImagePixels>();
    *red = {.width = 1, .height = 1, .argb = {0xffff0000}};
    for (const tessaluna::backend::TextCluster& cluster : line->clusters) {
      if (text[cluster.start] != '*') continue;
      std::size_t font = 0;
      for (std::size_t end = fonts[0].length; end <= cluster.start;) end += fonts[++font].length;
      line->pictures.push_back({.pixels = red, .place = {cluster.left, -3, 5, 3}, .font = font});
    }
    return line;
  }
};

class DesktopOfStars : public tessaluna::backend::headless::HeadlessBackend {
 public:
  const tessaluna::backend::headless::HeadlessTextEngine& textEngine() const override { return engine_; }

 private:
  StarsEngine engine_;
};

struct TextLayoutPicturesTest : testing::Test {
  DesktopOfStars desktop;

  // In a bitmap of 20 by 12 points, where the baseline is three points above the lower edge.
  static tessaluna::backend::raster::Bitmap pictureOf(const NSAttributedString& text) {
    return harness::pixelsOf({20, 12}, [&] { text.drawInRect({0, 0, 20, 12}); });
  }
  static NSMutableAttributedString blue(std::string_view text, CGFloat alpha = 1) {
    return NSMutableAttributedString(text, {{NSFontAttributeName, NSFont::systemFontOfSize(10)},
                                            {NSForegroundColorAttributeName, NSColor::colorWithSRGBRed(0, 0, 1, alpha)}});
  }
};

}  // namespace

TEST_F(TextLayoutPicturesTest, AreDrawnInTheirOwnColors) {
  const auto picture = pictureOf(blue("a*b"));
  EXPECT_EQ(picture.pixel(7, 9), 0xffff0000);
  EXPECT_EQ(picture.pixel(7, 6), 0xff0000ff);
  EXPECT_EQ(picture.pixel(4, 10), 0u);
  EXPECT_EQ(picture.pixel(10, 10), 0u);
  EXPECT_EQ(picture.pixel(12, 6), 0xff0000ff) << "the letter after it";
}

TEST_F(TextLayoutPicturesTest, AreAsTranslucentAsTheTextsColor) {
  EXPECT_NEAR(harness::alphaOf(pictureOf(blue("a*b", 0.5)).pixel(7, 10)), 128, 1);
}

TEST_F(TextLayoutPicturesTest, FollowTheColorOfTheirOwnStretchAndTheAlphaOfTheContext) {
  NSMutableAttributedString text = blue("**");
  text.addAttribute(NSForegroundColorAttributeName, NSColor::colorWithSRGBRed(0, 0, 1, 0.5), {1, 1});
  const auto picture = harness::pixelsOf({20, 12}, [&] {
    CGContextSetAlpha(NSGraphicsContext::currentCgContext(), 0.5);
    text.drawInRect({0, 0, 20, 12});
    NSColor::blackColor()->setFill();
    NSRectFillUsingOperation({15, 0, 5, 12}, NSCompositingOperationSourceOver);
  });
  EXPECT_NEAR(harness::alphaOf(picture.pixel(2, 10)), 128, 1);
  EXPECT_NEAR(harness::alphaOf(picture.pixel(7, 10)), 64, 1);
  EXPECT_NEAR(harness::alphaOf(picture.pixel(17, 10)), 128, 1) << "what is drawn next";
}
