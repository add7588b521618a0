#include "gallery/Journal.h"

#include <gtest/gtest.h>

#include "tests/gallery/QtApplicationOfSuite.h"

namespace gallery {
namespace {

class JournalTest : public testing::Test, protected QtApplicationOfSuite {
 public:
  using QtApplicationOfSuite::SetUpTestSuite, QtApplicationOfSuite::TearDownTestSuite;
};

}  // namespace

TEST_F(JournalTest, TakesTheKeyboardOnceThereIsSomethingToScroll) {
  Journal journal;
  EXPECT_EQ(journal.focusPolicy(), Qt::NoFocus);
  journal.add("one");
  EXPECT_EQ(journal.focusPolicy(), Qt::TabFocus);
}

TEST_F(JournalTest, HasTheLastReportsTheNewestFirst) {
  Journal journal;
  for (int i = 1; i <= 201; ++i) journal.add("report");
  EXPECT_EQ(journal.count(), 200);
  EXPECT_EQ(journal.item(0)->text(), "201   report");
}

}  // namespace gallery
