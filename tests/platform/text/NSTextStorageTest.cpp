#include "tessaluna/platform/text/NSTextStorage.h"

#include <gtest/gtest.h>

#include "tests/harness/printing.h"

using namespace tessaluna::platform;

namespace {

struct Edits : NSTextStorageDelegate {
  struct Edit {
    NSRange range;
    std::ptrdiff_t change;
    bool operator==(const Edit&) const = default;
  };
  std::vector<Edit> all;
  void textStorageDidProcessEditing(NSTextStorage&, NSRange range, std::ptrdiff_t change) override {
    all.push_back({range, change});
  }
};

struct NSTextStorageTest : testing::Test {
  NSTextStorageTest() { storage->setDelegate(edits); }
  Ref<NSTextStorage> storage = make<NSTextStorage>("abcdef");
  Ref<Edits> edits = std::make_shared<Edits>();
};

}  // namespace

TEST_F(NSTextStorageTest, ReportsEveryEditAlsoOneThroughItsBaseClass) {
  NSMutableAttributedString& string = *storage;
  string.replaceCharactersInRange({1, 2}, u"XYZ");
  string.addAttribute(NSUnderlineStyleAttributeName, std::int64_t{1}, {2, 2});
  string.removeAttribute(NSUnderlineStyleAttributeName, {2, 1});
  string.appendAttributedString(NSAttributedString("gh"));
  string.setAttributedString(NSAttributedString("x"));
  EXPECT_EQ(edits->all, (std::vector<Edits::Edit>{{{1, 3}, 1}, {{2, 2}, 0}, {{2, 1}, 0}, {{7, 2}, 2}, {{0, 1}, -8}}));
}

TEST_F(NSTextStorageTest, EditsBetweenBeginAndEndAreOne) {
  storage->beginEditing();
  storage->replaceCharactersInRange({4, 1}, u"");
  storage->beginEditing();
  storage->replaceCharactersInRange({0, 0}, u"123");
  storage->endEditing();
  EXPECT_TRUE(edits->all.empty());
  storage->endEditing();
  EXPECT_EQ(storage->string(), "123abcdf");
  EXPECT_EQ(edits->all, (std::vector<Edits::Edit>{{{0, 7}, 2}}));
}

TEST_F(NSTextStorageTest, NothingIsReportedWithoutAnEdit) {
  storage->beginEditing();
  storage->endEditing();
  storage->endEditing();
  storage->addAttribute(NSUnderlineStyleAttributeName, std::int64_t{1}, {2, 0});
  EXPECT_TRUE(edits->all.empty());
}
