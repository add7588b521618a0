#include "tessaluna/platform/text/NSAttributedString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"

using namespace tessaluna::platform;

namespace {

constexpr auto underline = NSUnderlineStyleAttributeName;
constexpr auto linkKey = NSLinkAttributeName;

std::optional<std::int64_t> numberAt(const NSAttributedString& text, std::size_t index) {
  const auto value = text.attributeAtIndex(underline, index);
  return value ? std::optional(std::get<std::int64_t>(*value)) : std::nullopt;
}

}  // namespace

TEST(NSAttributedString, InvalidBytesEnterAsTheReplacementCharacter) {
  const NSAttributedString text("a\xFF", {});
  EXPECT_EQ(text.length(), 2u);
  EXPECT_EQ(text.string(), "a\xEF\xBF\xBD");
}

TEST(NSAttributedString, CountsUtf16Units) { EXPECT_EQ(NSAttributedString("\xF0\x9F\x8E\xB5", {}).length(), 2u); }

TEST(NSAttributedString, AnAttributeHoldsForItsRangeOnly) {
  NSMutableAttributedString text("abcdef");
  text.addAttribute(underline, std::int64_t{1}, {2, 3});
  EXPECT_EQ(numberAt(text, 1), std::nullopt);
  EXPECT_EQ(numberAt(text, 2), 1);
  EXPECT_EQ(numberAt(text, 4), 1);
  EXPECT_EQ(numberAt(text, 5), std::nullopt);
}

TEST(NSAttributedString, TheEffectiveRangeReachesOverRunsThatDifferInOtherAttributes) {
  NSMutableAttributedString text("abcdef");
  text.addAttribute(underline, std::int64_t{1}, {1, 4});
  text.addAttribute(linkKey, std::string("x"), {3, 3});
  NSRange range;
  text.attributeAtIndex(underline, 2, &range);
  EXPECT_EQ(range, (NSRange{1, 4}));
  text.attributeAtIndex(underline, 0, &range);
  EXPECT_EQ(range, (NSRange{0, 1}));
  text.attributeAtIndex(linkKey, 0, &range);
  EXPECT_EQ(range, (NSRange{0, 3}));
}

TEST(NSAttributedString, TheEffectiveRangeBeginsInAnEarlierRunOfTheSameValue) {
  NSMutableAttributedString text("abcdef");
  text.addAttribute(underline, std::int64_t{1}, {1, 4});
  text.addAttribute(linkKey, std::string("x"), {3, 3});
  NSRange range;
  text.attributeAtIndex(underline, 4, &range);
  EXPECT_EQ(range, (NSRange{1, 4}));
  text.attributeAtIndex(linkKey, 2, &range);
  EXPECT_EQ(range, (NSRange{0, 3})) << "the text's first run is among them";
}

TEST(NSAttributedString, EnumerationVisitsStretchesWithoutTheAttributeToo) {
  NSMutableAttributedString text("abcdef");
  text.addAttribute(linkKey, std::string("x"), {1, 2});
  text.addAttribute(linkKey, std::string("y"), {3, 1});
  std::vector<std::pair<std::string, NSRange>> seen;
  text.enumerateAttribute(linkKey, {0, 5}, [&](const std::optional<NSAttributeValue>& value, NSRange range) {
    seen.emplace_back(value ? std::get<std::string>(*value) : "-", range);
  });
  EXPECT_EQ(seen,
            (std::vector<std::pair<std::string, NSRange>>{{"-", {0, 1}}, {"x", {1, 2}}, {"y", {3, 1}}, {"-", {4, 1}}}));
}

TEST(NSAttributedString, ASubstringKeepsItsAttributes) {
  NSMutableAttributedString text("abcdef");
  text.addAttribute(underline, std::int64_t{2}, {2, 2});
  const auto part = text.attributedSubstring({1, 2});
  EXPECT_EQ(part->string(), "bc");
  EXPECT_EQ(numberAt(*part, 0), std::nullopt);
  EXPECT_EQ(numberAt(*part, 1), 2);
}

TEST(NSAttributedString, RemovingAnAttributeLeavesTheOthers) {
  NSMutableAttributedString text("abc", {{underline, std::int64_t{1}}, {linkKey, std::string("x")}});
  text.removeAttribute(underline, {0, 2});
  EXPECT_EQ(numberAt(text, 1), std::nullopt);
  EXPECT_EQ(numberAt(text, 2), 1);
  EXPECT_TRUE(text.attributeAtIndex(linkKey, 0));
}

TEST(NSAttributedString, AppendedTextBringsItsAttributes) {
  NSMutableAttributedString text("ab");
  text.appendAttributedString(NSAttributedString("cd", {{underline, std::int64_t{1}}}));
  EXPECT_EQ(text.string(), "abcd");
  EXPECT_EQ(numberAt(text, 1), std::nullopt);
  EXPECT_EQ(numberAt(text, 2), 1);
}

TEST(NSAttributedString, MayBeAppendedToItself) {
  NSMutableAttributedString text("ab", {{underline, std::int64_t{1}}});
  text.appendAttributedString(NSAttributedString("c"));
  text.appendAttributedString(text);
  EXPECT_EQ(text.string(), "abcabc");
  EXPECT_EQ(numberAt(text, 4), 1);
  EXPECT_EQ(numberAt(text, 5), std::nullopt);
}

TEST(NSAttributedString, NewTextTakesTheAttributesOfWhatItReplaces) {
  NSMutableAttributedString text("abcd");
  text.addAttribute(underline, std::int64_t{1}, {1, 2});
  text.replaceCharactersInRange({1, 1}, u"xyz");
  EXPECT_EQ(text.string(), "axyzcd");
  EXPECT_EQ(numberAt(text, 0), std::nullopt);
  EXPECT_EQ(numberAt(text, 3), 1);
  EXPECT_EQ(numberAt(text, 4), 1);
  EXPECT_EQ(numberAt(text, 5), std::nullopt);
}

TEST(NSAttributedString, InsertedTextTakesTheAttributesOfTheCharacterBefore) {
  NSMutableAttributedString text("ab");
  text.addAttribute(underline, std::int64_t{1}, {0, 1});
  text.replaceCharactersInRange({1, 0}, u"x");
  EXPECT_EQ(numberAt(text, 1), 1);
  EXPECT_EQ(numberAt(text, 2), std::nullopt);
}

TEST(NSAttributedString, TextsAreEqualHoweverTheirRunsAreCut) {
  NSMutableAttributedString cut;
  for (const char* part : {"a", "bc", "d"})
    cut.appendAttributedString(NSAttributedString(part, {{underline, std::int64_t{1}}}));
  EXPECT_EQ(cut.runs().size(), 3u);
  EXPECT_TRUE(cut.isEqual(make<NSAttributedString>("abcd", NSAttributes{{underline, std::int64_t{1}}}).get()));
  EXPECT_FALSE(cut.isEqual(make<NSAttributedString>("abcd").get()));
  EXPECT_FALSE(cut.isEqual(make<NSAttributedString>("abce", NSAttributes{{underline, std::int64_t{1}}}).get()));
}

TEST(NSAttributedString, AttributeObjectsAreComparedByWhatTheyAre) {
  const NSAttributes a{{NSFontAttributeName, NSFont::systemFontOfSize(12)}};
  const NSAttributes b{{NSFontAttributeName, NSFont::systemFontOfSize(12)}};
  const NSAttributes c{{NSFontAttributeName, NSFont::systemFontOfSize(14)}};
  EXPECT_TRUE(areEqual(a, b));
  EXPECT_FALSE(areEqual(a, c));
}

TEST(NSAttributedString, AnAttributeOfAnotherKindIsAbsent) {
  const NSAttributes attributes{{NSFontAttributeName, NSColor::blackColor()}};
  EXPECT_EQ(attributeObject<NSFont>(attributes, NSFontAttributeName), nullptr);
  EXPECT_NE(attributeObject<NSColor>(attributes, NSFontAttributeName), nullptr);
}

TEST(NSAttributedStringDeathTest, AnIndexAtTheEndStopsTheProgram) {
  EXPECT_DEATH(NSAttributedString("ab").attributeAtIndex(underline, 2), "past the end");
}

TEST(NSAttributedStringDeathTest, ARangePastTheEndStopsTheProgram) {
  NSMutableAttributedString text("ab");
  EXPECT_DEATH(text.addAttribute(underline, std::int64_t{1}, {1, 2}), "past the end");
  EXPECT_DEATH(text.replaceCharactersInRange({3, 0}, u"x"), "past the end");
}

TEST(NSParagraphStyle, StartsNaturalAndWrappedAtWords) {
  const auto style = NSParagraphStyle::defaultParagraphStyle();
  EXPECT_EQ(style->alignment(), NSTextAlignmentNatural);
  EXPECT_EQ(style->lineBreakMode(), NSLineBreakByWordWrapping);
}

TEST(NSParagraphStyle, ACopyIsChangedAlone) {
  const auto copy = NSParagraphStyle::defaultParagraphStyle()->mutableCopy();
  EXPECT_TRUE(copy->isEqual(NSParagraphStyle::defaultParagraphStyle().get()));
  copy->setAlignment(NSTextAlignmentRight);
  copy->setLineBreakMode(NSLineBreakByClipping);
  EXPECT_FALSE(copy->isEqual(NSParagraphStyle::defaultParagraphStyle().get()));
  EXPECT_EQ(NSParagraphStyle::defaultParagraphStyle()->alignment(), NSTextAlignmentNatural);
}

TEST(NSAttributedString, WhatIsTypedBetweenItsLikeIsOneRunWithIt) {
  const auto text = make<NSMutableAttributedString>("ad", NSAttributes{{NSUnderlineStyleAttributeName, std::int64_t{1}}});
  text->replaceCharactersInRange({1, 0}, u"b");
  text->replaceCharactersInRange({2, 0}, u"c");
  EXPECT_EQ(text->string(), "abcd");
  EXPECT_EQ(text->runs().size(), 1u);
  text->removeAttribute(NSUnderlineStyleAttributeName, {1, 2});
  EXPECT_EQ(text->runs().size(), 3u);
  text->addAttribute(NSUnderlineStyleAttributeName, std::int64_t{1}, {1, 2});
  EXPECT_EQ(text->runs().size(), 1u);
}

TEST(NSAttributedStringDeathTest, ARangeWhoseEndIsBeyondAllNumbersStopsTheProgram) {
  constexpr NSRange endless{1, static_cast<std::size_t>(-1)};
  NSMutableAttributedString text("ab");
  EXPECT_DEATH(text.addAttribute(underline, std::int64_t{1}, endless), "past the end");
  EXPECT_DEATH(text.removeAttribute(underline, endless), "past the end");
  EXPECT_DEATH(text.replaceCharactersInRange(endless, u"x"), "past the end");
}

TEST(NSAttributedString, ASubstringEndsWithTheText) {
  EXPECT_EQ(NSAttributedString("abc").attributedSubstring({1, 5})->string(), "bc");
  EXPECT_EQ(NSAttributedString("abc").attributedSubstring({1, static_cast<std::size_t>(-1)})->string(), "bc");
  EXPECT_EQ(NSAttributedString("abc").attributedSubstring({4, 1})->string(), "");
}

namespace {

// An attribute that counts how often it is compared.
class Counted : public NSObject {
 public:
  static inline int comparisons = 0;
  bool isEqual(const NSObject* other) const override {
    ++comparisons;
    return this == other;
  }
};

}  // namespace

TEST(NSAttributedString, AnAttributeIsComparedWithThoseBesideItAndNoOthers) {
  constexpr std::size_t count = 1000;
  constexpr auto color = NSForegroundColorAttributeName;
  const auto text = make<NSMutableAttributedString>(std::u16string(count, u'x'));
  Counted::comparisons = 0;
  for (std::size_t i = 0; i < count; ++i) text->addAttribute(color, Ref<NSObject>(make<Counted>()), {i, 1});
  for (std::size_t i = 0; i < count; ++i) {
    text->appendAttributedString(NSAttributedString("x", {{color, Ref<NSObject>(make<Counted>())}}));
    text->addAttribute(underline, std::int64_t{1}, {text->length() - 1, 1});
  }
  EXPECT_EQ(text->runs().size(), 2 * count);
  EXPECT_LE(Counted::comparisons, 8 * static_cast<int>(count));
}

// Against a list of the attribute of each unit.
TEST(NSAttributedString, ManyChangesKeepEachUnitsAttributes) {
  std::mt19937 random(5);
  const auto text = make<NSMutableAttributedString>();
  std::vector<std::optional<std::int64_t>> plain;
  for (int step = 0; step < 5000; ++step) {
    const std::size_t start = random() % (plain.size() + 1), length = random() % (plain.size() - start + 1);
    const auto first = plain.begin() + static_cast<std::ptrdiff_t>(start), end = first + static_cast<std::ptrdiff_t>(length);
    const std::size_t count = plain.size() > 40 ? 0 : random() % 5;
    const auto number = static_cast<std::int64_t>(random() % 2);
    const bool isAppended = random() % 4 == 0;
    if (isAppended) {
      text->appendAttributedString(NSAttributedString(std::u16string(count, u'a'), {{underline, number}}));
      plain.insert(plain.end(), count, number);
    } else if (random() % 3 == 0) {
      text->addAttribute(underline, number, {start, length});
      std::fill(first, end, number);
    } else if (random() % 2 == 0) {
      text->removeAttribute(underline, {start, length});
      std::fill(first, end, std::nullopt);
    } else {
      text->replaceCharactersInRange({start, length}, std::u16string(count, u'b'));
      std::optional<std::int64_t> taken;
      if (!plain.empty()) taken = length == 0 && start > 0 ? *(first - 1) : *first;
      plain.insert(plain.erase(first, end), count, taken);
    }
    ASSERT_EQ(text->length(), plain.size()) << step;
    for (std::size_t i = 0; i < plain.size(); ++i) ASSERT_EQ(numberAt(*text, i), plain[i]) << step;
    const auto part = text->attributedSubstring({plain.size() / 3, plain.size() / 2});
    for (std::size_t i = 0; i < part->length(); ++i) ASSERT_EQ(numberAt(*part, i), plain[plain.size() / 3 + i]) << step;
    ASSERT_TRUE(text->isEqual(text->mutableCopy().get()));
    const auto areAlike = [](const auto& a, const auto& b) { return areEqual(a.attributes, b.attributes); };
    const bool joins = !isAppended && length > 0;
    ASSERT_TRUE(!joins || std::ranges::adjacent_find(text->runs(), areAlike) == text->runs().end()) << step;
  }
}
