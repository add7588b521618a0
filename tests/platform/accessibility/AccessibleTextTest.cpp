#include "tessaluna/platform/accessibility/AccessibleText.h"

#include <gtest/gtest.h>

#include "tests/harness/FieldWorld.h"
#include "tests/harness/accessibleCells.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

TEST(AccessibleTextChange, IsTheShortestOne) {
  const struct {
    std::u16string_view before, after;
    AccessibleTextChange change;
  } cases[] = {
      {u"query", u"quxery", {.offset = 2, .removed = u"", .inserted = u"x"}},
      {u"quxery", u"quoery", {.offset = 2, .removed = u"x", .inserted = u"o"}},
      {u"query", u"uery", {.offset = 0, .removed = u"q", .inserted = u""}},
      {u"query", u"quer", {.offset = 4, .removed = u"y", .inserted = u""}},
      {u"query", u"", {.offset = 0, .removed = u"query", .inserted = u""}},
      {u"", u"aa", {.offset = 0, .removed = u"", .inserted = u"aa"}},
      {u"aa", u"aaa", {.offset = 2, .removed = u"", .inserted = u"a"}},
      {u"aaa", u"aa", {.offset = 2, .removed = u"a", .inserted = u""}},
      {u"abc", u"xyz", {.offset = 0, .removed = u"abc", .inserted = u"xyz"}},
  };
  for (const auto& c : cases) EXPECT_EQ(changeOfText(c.before, c.after), c.change) << c.change.offset;
  EXPECT_EQ(changeOfText(u"query", u"query"), std::nullopt);
}

TEST(AccessibleTextChange, DoesNotTearACharacterOfTwoUnits) {
  // The first units of the two are the same, in the second pair the last ones.
  const AccessibleTextChange first{.offset = 1, .removed = u"\U0001F600", .inserted = u"\U0001F601"};
  EXPECT_EQ(changeOfText(u"a\U0001F600b", u"a\U0001F601b"), first);
  const AccessibleTextChange last{.offset = 1, .removed = u"\U0001F600", .inserted = u"\U0001FA00"};
  EXPECT_EQ(changeOfText(u"a\U0001F600b", u"a\U0001FA00b"), last);
}

class AccessibleTextTest : public testing::Test {
 protected:
  Ref<harness::SelectingCell> cell = make<harness::SelectingCell>();  // "some words", of which the second is selected
};

TEST_F(AccessibleTextTest, TheCaretIsAtTheEndOfTheSelectionUnlessTheElementSaysWhere) {
  EXPECT_EQ(accessibleTextOf(cell), (AccessibleTextState{.text = u"some words", .selection = {{5, 5}}, .caret = 10}));
  cell->accessibilitySetOverrideValue(5.0, accessibilityInsertionPointAttribute);
  EXPECT_EQ(accessibleTextOf(cell).caret, 5u);
}

TEST_F(AccessibleTextTest, AnElementThatIsNotEditedHasNoCaret) {
  const auto plain = make<NSTextFieldCell>("query");
  EXPECT_EQ(accessibleTextOf(plain), (AccessibleTextState{.text = u"query"}));
}

TEST_F(AccessibleTextTest, ARangeIsSelectedFromEitherEndAndCutToTheText) {
  selectAccessibleText(cell, 4, 1);
  EXPECT_EQ(cell->range, (NSRange{1, 3}));
  selectAccessibleText(cell, 100, 100);
  EXPECT_EQ(cell->range, (NSRange{10, 0}));
}

TEST_F(AccessibleTextTest, AStretchIsReplaced) {
  replaceAccessibleText(cell, 0, 4, u"üben");
  EXPECT_EQ(cell->stringValue(), "üben words");
  replaceAccessibleText(cell, 100, 100, u"!");
  EXPECT_EQ(cell->stringValue(), "üben words!");
}

TEST_F(AccessibleTextTest, AnElementThatDoesNotSayWhereItsCharactersAreHasNoFrames) {
  const auto object = make<NSObject>();
  EXPECT_EQ(frameOfAccessibleText(object, {0, 1}), CGRect());
  EXPECT_EQ(accessibleTextOffsetAt(object, {0, 0}), std::nullopt);
}

using AccessibleTextOfFieldTest = harness::FieldWorld;

TEST_F(AccessibleTextOfFieldTest, WhatAClientReplacesDividesNoCharacterOfTwoUnits) {
  begin("a\U0001F600b");
  replaceAccessibleText(field->cell(), 2, 2, u"y");
  EXPECT_EQ(field->stringValue(), "ay\U0001F600b");
  EXPECT_EQ(accessibleTextOf(field->cell()).caret, 2u);
  replaceAccessibleText(field->cell(), 3, 4, u"z");
  EXPECT_EQ(field->stringValue(), "ayzb");
}

TEST_F(AccessibleTextOfFieldTest, TheCaretFollowsWhatWasInsertedAlsoWhereTheFieldChangesIt) {
  begin("some words");
  replaceAccessibleText(field->cell(), 4, 5, u"\nmore\r\n");
  EXPECT_EQ(editor()->string(), "some more words");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{10, 0}));
}

TEST_F(AccessibleTextTest, TheSelectionOfATextThatMayNotBeChangedStays) {
  cell->setEditable(false);
  replaceAccessibleText(cell, 0, 4, u"more");
  EXPECT_EQ(cell->stringValue(), "some words");
  EXPECT_EQ(cell->range, (NSRange{5, 5}));
}

}  // namespace
}  // namespace tessaluna::platform
