#include "tessaluna/platform/layout/Objectives.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using tessaluna::platform::Objectives;
using tessaluna::platform::Tableau;

class ObjectivesTest : public testing::Test {
 protected:
  int improving() {
    return objectives.takeImproving([](int) { return true; });
  }
  std::vector<int> cheapest(std::vector<Tableau::Cell> candidates) {
    objectives.keepCheapest(candidates);
    std::vector<int> symbols;
    for (const Tableau::Cell& cell : candidates) symbols.push_back(cell.symbol);
    return symbols;
  }

  Objectives objectives;
};

TEST_F(ObjectivesTest, WhatCostsNothingImprovesNothing) {
  EXPECT_EQ(improving(), -1);
  objectives.add(500, 3, 1);
  EXPECT_EQ(improving(), -1);
}

TEST_F(ObjectivesTest, TheLeastSymbolOfNegativeCostComesFirstAndEachOnce) {
  objectives.add(500, 7, -1);
  objectives.add(500, 3, -1);
  EXPECT_EQ(improving(), 3);
  EXPECT_EQ(improving(), 7);
  EXPECT_EQ(improving(), -1);
}

TEST_F(ObjectivesTest, OneThatCannotGrowIsPassedOver) {
  objectives.add(500, 3, -1);
  EXPECT_EQ(objectives.takeImproving([](int) { return false; }), -1);
}

TEST_F(ObjectivesTest, AHigherPriorityDecidesHoweverLittleItCosts) {
  objectives.add(250, 3, -1000);
  objectives.add(750, 3, 0.001);
  EXPECT_EQ(improving(), -1);
  objectives.add(750, 3, -0.002);
  EXPECT_EQ(improving(), 3);
}

TEST_F(ObjectivesTest, CostsThatCancelLeaveTheDecisionToThoseBelow) {
  objectives.add(750, 3, 0.3);
  objectives.add(250, 3, -1);
  objectives.add(750, 3, -0.1);
  objectives.add(750, 3, -0.2);
  EXPECT_EQ(improving(), 3);
}

TEST_F(ObjectivesTest, TheCostOfASymbolGoesToWhatGivesIt) {
  objectives.add(500, 3, 2);
  objectives.replace(3, {.basic = 3, .constant = 10, .cells = {{4, -1}, {5, 1}}});
  EXPECT_EQ(improving(), 4);
  EXPECT_EQ(improving(), -1);
}

TEST_F(ObjectivesTest, CandidatesAreComparedByWhatEachUnitCosts) {
  objectives.add(500, 1, 4);
  objectives.add(500, 2, 6);
  objectives.add(500, 3, 2);
  EXPECT_THAT(cheapest({{1, 2}, {2, 6}, {3, -2}}), testing::ElementsAre(2, 3));
}

TEST_F(ObjectivesTest, ATieIsDecidedByTheNextPriority) {
  objectives.add(500, 1, 1);
  objectives.add(500, 2, 1);
  objectives.add(250, 1, 1);
  EXPECT_THAT(cheapest({{1, 1}, {2, 1}}), testing::ElementsAre(2));
  objectives.remove(1);
  objectives.remove(2);
  EXPECT_THAT(cheapest({{1, 1}, {2, 1}}), testing::ElementsAre(1, 2));
}

TEST_F(ObjectivesTest, ClearedCostsCountNoMore) {
  objectives.add(500, 3, -1);
  objectives.clear();
  EXPECT_EQ(improving(), -1);
  objectives.add(500, 3, -1);
  EXPECT_EQ(improving(), 3);
}

}  // namespace
