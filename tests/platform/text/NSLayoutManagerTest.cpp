#include "tessaluna/platform/text/NSLayoutManager.h"

#include <random>

#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;

namespace {

// Five points for each character, from x = 5 on, and twelve for each line; six characters fit into one.
class NSLayoutManagerTest : public harness::StillWorld {
 protected:
  void setText(std::string_view text) {
    storage->setAttributedString(NSAttributedString(text, {{NSFontAttributeName, NSFont::systemFontOfSize(10)}}));
  }
  // The character under a point of the first line and how far into it the point lies.
  std::pair<std::size_t, CGFloat> characterAt(CGFloat x) const {
    CGFloat fraction = -1;
    const std::size_t index = manager->characterIndexForPoint({x, 6}, *container, &fraction);
    return {index, fraction};
  }

  const Ref<NSTextStorage> storage = make<NSTextStorage>();
  const Ref<NSTextContainer> container = make<NSTextContainer>(CGSize{40, 100});
  const Ref<NSLayoutManager> manager = make<NSLayoutManager>(storage, container);
};

using Place = std::pair<std::size_t, CGFloat>;

}  // namespace

TEST_F(NSLayoutManagerTest, TheFractionIsThatOfTheCharactersWidthFromItsStartOn) {
  setText("abc");
  EXPECT_EQ(characterAt(5), Place(0, 0));
  EXPECT_EQ(characterAt(11.25), Place(1, 0.25));
  EXPECT_EQ(characterAt(0), Place(0, 0)) << "before the text";
  EXPECT_EQ(characterAt(39), Place(2, 1)) << "after it";
}

TEST_F(NSLayoutManagerTest, InTextFromRightToLeftTheFractionGrowsToTheLeft) {
  setText("אבג");
  EXPECT_EQ(characterAt(18.75), Place(0, 0.25));
  EXPECT_EQ(characterAt(6.25), Place(2, 0.75));
}

TEST_F(NSLayoutManagerTest, AnEmptyTextHasNoCharacterAndNoFraction) { EXPECT_EQ(characterAt(9), Place(0, 0)); }

TEST_F(NSLayoutManagerTest, TheEnclosingRectanglesEndWhereTheBlockSaysSo) {
  setText("ab cde fgh ij");  // "ab cde", "fgh ij"
  std::vector<CGRect> rects;
  manager->enumerateEnclosingRectsForGlyphRange({3, 7}, {3, 7}, *container, [&](CGRect rect, bool& stop) {
    rects.push_back(rect);
    stop = true;
  });
  EXPECT_EQ(rects, (std::vector<CGRect>{{20, 0, 15, 12}}));
}

TEST_F(NSLayoutManagerTest, ARangeOverTwoLinesHasARectangleInEachAndOneBoxAroundThem) {
  setText("ab cde fgh ij");
  EXPECT_EQ(manager->rectArrayForGlyphRange({3, 7}, {3, 7}, *container),
            (std::vector<CGRect>{{20, 0, 15, 12}, {5, 12, 15, 12}}));
  EXPECT_EQ(manager->boundingRectForGlyphRange({3, 7}, *container), (CGRect{5, 0, 30, 24}));
}

TEST_F(NSLayoutManagerTest, AGlyphIsShownForEachUnitOfTheText) {
  setText("abc");
  NSRange actual;
  const NSRange glyphs = manager->glyphRangeForCharacterRange({1, 2}, &actual);
  EXPECT_EQ(glyphs.location, 1u);
  EXPECT_EQ(glyphs.length, 2u);
  EXPECT_EQ(actual.location, 1u);
  EXPECT_EQ(actual.length, 2u);
}

TEST_F(NSLayoutManagerTest, TheUsedRectangleHasThePaddingOnBothSides) {
  setText("ab cde fgh ij");
  EXPECT_EQ(manager->usedRectForTextContainer(*container), (CGRect{0, 0, 40, 24}));
}

TEST_F(NSLayoutManagerTest, TheLinesFollowTheTextAndTheContainer) {
  setText("abc");
  EXPECT_EQ(manager->layout().lines().size(), 1u);
  setText("abcdefgh");
  EXPECT_EQ(manager->layout().lines().size(), 2u);
  container->setSize({60, 100});
  EXPECT_EQ(manager->layout().lines().size(), 1u);
  container->setSize({20, 100});
  EXPECT_EQ(manager->layout().lines().size(), 4u);
  container->setMaximumNumberOfLines(1);
  EXPECT_EQ(manager->layout().lines().size(), 1u);
}

namespace {

std::vector<std::string> linesOf(const TextLayout& layout) {
  std::vector<std::string> lines;
  for (const TextLayout::Line& line : layout.lines())
    lines.push_back(std::to_string(line.start) + "+" + std::to_string(line.length) + " at " + numberText(line.x) + " " +
                    numberText(line.y) + ": " + line.shown->string());
  return lines;
}

}  // namespace

TEST_F(NSLayoutManagerTest, LinesAfterManyEditsAreThoseOfANewLayout) {
  constexpr std::u16string_view letters = u"ab \n\r\u2028";
  const auto styleOf = [](NSTextAlignment alignment) {
    return make<NSParagraphStyle>(alignment, NSLineBreakByWordWrapping);
  };
  const Ref<NSParagraphStyle> styles[] = {styleOf(NSTextAlignmentLeft), styleOf(NSTextAlignmentRight)};
  const Ref<NSFont> fonts[] = {NSFont::systemFontOfSize(10), NSFont::systemFontOfSize(14)};
  std::mt19937 random(9);
  setText("ab\ncd\n");
  for (int step = 0; step < 5000; ++step) {
    for (std::size_t edits = random() % 3 + 1; edits > 0; --edits) {
      const std::size_t start = random() % (storage->length() + 1);
      const NSRange range{start, random() % (std::min<std::size_t>(storage->length() - start, 6) + 1)};
      std::u16string text;
      for (std::size_t i = storage->length() > 60 ? 0 : random() % 6; i > 0; --i) text += letters[random() % letters.size()];
      switch (random() % 4) {
        case 0: storage->addAttribute(NSFontAttributeName, Ref<NSObject>(fonts[random() % 2]), range); break;
        case 1: storage->addAttribute(NSParagraphStyleAttributeName, Ref<NSObject>(styles[random() % 2]), range); break;
        default: storage->replaceCharactersInRange(range, text);
      }
    }
    const TextLayout fresh(*storage, {.width = 30});
    ASSERT_EQ(linesOf(manager->layout()), linesOf(fresh)) << step;
    ASSERT_EQ(manager->layout().size(), fresh.size()) << step;
  }
}

TEST_F(NSLayoutManagerTest, AnEditSetsItsParagraphAndNoOther) {
  std::string text;
  for (int line = 0; line < 1000; ++line) text += "line\n";
  setText(text);
  std::vector<const void*> before;
  for (const TextLayout::Line& line : manager->layout().lines()) before.push_back(line.shaped.get());
  storage->replaceCharactersInRange({storage->length() / 2 + 1, 0}, u"x");
  ASSERT_EQ(manager->layout().lines().size(), before.size());
  std::size_t changed = 0;
  for (std::size_t i = 0; i < before.size(); ++i) changed += manager->layout().lines()[i].shaped.get() != before[i];
  EXPECT_EQ(changed, 1u);
}

TEST_F(NSLayoutManagerTest, TwoManagersOfATextBothFollowIt) {
  const auto other = make<NSLayoutManager>(storage, make<NSTextContainer>(CGSize{60, 100}));
  setText("ab\ncd\nef");
  for (int step = 0; step < 3; ++step) {
    storage->replaceCharactersInRange({4, 0}, u"\n");
    EXPECT_EQ(manager->layout().lines().size(), 4u + static_cast<std::size_t>(step));
    storage->replaceCharactersInRange({0, 1}, u"x");
    EXPECT_EQ(other->layout().lines().size(), 4u + static_cast<std::size_t>(step));
  }
}
