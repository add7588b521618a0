#include "tessaluna/platform/layout/Simplex.h"

#include <gtest/gtest.h>

namespace {

using tessaluna::platform::Simplex;
using Kind = Simplex::Kind;

constexpr long plenty = 1000;

class SimplexTest : public testing::Test {
 protected:
  Simplex::Markers add(std::vector<Simplex::Cell> terms, double constant, Kind marker, double sign = 1) {
    const Simplex::Markers markers{.marker = simplex.addSymbol(marker), .sign = sign};
    simplex.add(terms, constant, markers);
    return markers;
  }
  // A wish: errors to both sides, each of which costs.
  Simplex::Markers wish(std::vector<Simplex::Cell> terms, double constant, double priority) {
    const Simplex::Markers markers{.marker = simplex.addSymbol(Kind::Error), .other = simplex.addSymbol(Kind::Error)};
    simplex.add(terms, constant, markers);
    for (const int symbol : {markers.marker, markers.other}) simplex.addCost(priority, symbol, 1);
    return markers;
  }
  int solve() {
    const int impossible = simplex.makeFeasible(simplex.pivotCount() + plenty);
    if (impossible < 0) simplex.makeBest(simplex.pivotCount() + plenty);
    return impossible;
  }

  Simplex simplex;
  const int x = simplex.addSymbol(Kind::Variable), y = simplex.addSymbol(Kind::Variable);
};

TEST_F(SimplexTest, EquationsGiveTheirVariables) {
  add({{x, 1}, {y, 1}}, 10, Kind::Dummy);
  add({{x, 1}, {y, -1}}, 2, Kind::Dummy);
  EXPECT_EQ(solve(), -1);
  EXPECT_DOUBLE_EQ(simplex.valueOf(x), 6);
  EXPECT_DOUBLE_EQ(simplex.valueOf(y), 4);
}

TEST_F(SimplexTest, ABoundIsKeptAndAWishComesAsNearAsItLets) {
  const auto bound = add({{x, 1}}, 24, Kind::Slack, -1);
  wish({{x, 1}}, 100, 500);
  EXPECT_EQ(solve(), -1);
  EXPECT_DOUBLE_EQ(simplex.valueOf(x), 24);
  simplex.changeConstant(bound, 16);
  EXPECT_FALSE(simplex.isFeasible() && simplex.valueOf(x) == 24);
  EXPECT_EQ(solve(), -1);
  EXPECT_DOUBLE_EQ(simplex.valueOf(x), 40);
}

TEST_F(SimplexTest, TheHigherPriorityWinsAndTheLowerOneHoldsOnceItIsAlone) {
  const auto high = wish({{x, 1}}, 10, 750);
  wish({{x, 1}}, 20, 250);
  EXPECT_EQ(solve(), -1);
  EXPECT_DOUBLE_EQ(simplex.valueOf(x), 10);
  for (const int symbol : {high.marker, high.other}) simplex.addCost(750, symbol, -1);
  simplex.remove(high);
  EXPECT_FALSE(simplex.isBest());
  EXPECT_EQ(solve(), -1);
  EXPECT_DOUBLE_EQ(simplex.valueOf(x), 20);
}

TEST_F(SimplexTest, ARowThatCannotBeIsHandedOut) {
  add({{x, 1}}, 10, Kind::Dummy);
  const auto other = add({{x, 1}}, 12, Kind::Dummy);
  const int row = simplex.makeFeasible(plenty);
  ASSERT_GE(row, 0);
  EXPECT_EQ(simplex.row(row).basic, other.marker);
  simplex.remove(other);
  EXPECT_EQ(solve(), -1);
  EXPECT_DOUBLE_EQ(simplex.valueOf(x), 10);
}

TEST_F(SimplexTest, ExchangesEndWhereTheyAreNotAllowed) {
  add({{x, 1}}, 24, Kind::Slack, -1);
  wish({{x, 1}}, 100, 500);
  EXPECT_EQ(simplex.makeFeasible(0), -1);
  EXPECT_EQ(simplex.pivotCount(), 0);
  EXPECT_FALSE(simplex.isFeasible() && simplex.isBest());
  simplex.giveUp();
  EXPECT_TRUE(simplex.isFeasible() && simplex.isBest());
}

TEST_F(SimplexTest, ClearedItKnowsItsVariablesOnly) {
  add({{x, 1}}, 10, Kind::Dummy);
  simplex.clear();
  EXPECT_EQ(simplex.valueOf(x), 0);
  EXPECT_TRUE(simplex.isVariable(x));
  EXPECT_FALSE(simplex.isMentioned(x));
}

}  // namespace
