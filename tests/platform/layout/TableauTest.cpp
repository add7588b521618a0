#include "tessaluna/platform/layout/Tableau.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using tessaluna::platform::Tableau;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using enum Tableau::Kind;

class TableauTest : public testing::Test {
 protected:
  // The symbol as a constant and a sum of parameters.
  int give(int symbol, double constant, std::initializer_list<Tableau::Cell> cells) {
    const int row = tableau.addRow();
    tableau.addConstant(row, constant);
    for (const Tableau::Cell& cell : cells) tableau.addCell(row, cell);
    tableau.addCell(row, {symbol, -1});
    tableau.pivot(row, symbol);
    return row;
  }

  Tableau tableau;
  const int x = tableau.addSymbol(Variable), y = tableau.addSymbol(Variable), s = tableau.addSymbol(Slack),
            t = tableau.addSymbol(Slack);
};

TEST_F(TableauTest, AParameterIsZero) {
  EXPECT_EQ(tableau.rowOf(x), -1);
  EXPECT_EQ(tableau.valueOf(x), 0);
}

TEST_F(TableauTest, ARowGivesItsSymbolByItsConstant) {
  give(x, 10, {{y, 2}});
  EXPECT_DOUBLE_EQ(tableau.valueOf(x), 10);
  EXPECT_THAT(tableau.rowsWith(y), ElementsAre(tableau.rowOf(x)));
}

TEST_F(TableauTest, AnExchangeSaysTheSameTheOtherWayRound) {
  const int row = give(x, 10, {{y, 2}});
  tableau.pivot(row, y);  // x = 10 + 2y, so y = -5 + x / 2
  EXPECT_DOUBLE_EQ(tableau.valueOf(y), -5);
  EXPECT_DOUBLE_EQ(tableau.row(row).coefficientOf(x), 0.5);
  EXPECT_EQ(tableau.valueOf(x), 0);
}

TEST_F(TableauTest, WhatGivesASymbolTakesItsPlaceInEveryRow) {
  const int row = give(x, 1, {{y, 3}});
  give(y, 2, {{s, 1}});
  EXPECT_DOUBLE_EQ(tableau.valueOf(x), 7);
  EXPECT_DOUBLE_EQ(tableau.row(row).coefficientOf(s), 3);
  EXPECT_EQ(tableau.row(row).coefficientOf(y), 0);
  EXPECT_THAT(tableau.rowsWith(y), IsEmpty());
}

TEST_F(TableauTest, CoefficientsThatCancelLeaveTheRow) {
  const int row = give(x, 0, {{s, 0.1}, {t, 1}});
  tableau.addCell(row, {s, 0.2});
  tableau.addCell(row, {s, -0.3});
  EXPECT_THAT(tableau.rowsWith(s), IsEmpty());
  EXPECT_THAT(tableau.row(row).cells, testing::SizeIs(1));
}

TEST_F(TableauTest, AShiftMovesTheRowsThatHaveTheParameterAndNoOthers) {
  give(x, 1, {{s, 2}});
  give(y, 1, {{t, 1}});
  tableau.takeMoved();
  tableau.shift(s, 5);
  EXPECT_DOUBLE_EQ(tableau.valueOf(x), 11);
  EXPECT_THAT(tableau.takeMoved(), ElementsAre(x));
  EXPECT_THAT(tableau.takeMoved(), IsEmpty());
}

TEST_F(TableauTest, ASymbolThatGoesTakesItsRowOrItsCellsAlong) {
  const int row = give(x, 1, {{s, 2}, {t, 1}});
  tableau.removeSymbol(s);
  EXPECT_THAT(tableau.row(row).cells, testing::SizeIs(1));
  tableau.removeSymbol(x);
  EXPECT_THAT(tableau.rowsWith(t), IsEmpty());
  EXPECT_EQ(tableau.addRow(), row) << "and its number is free again";
}

TEST_F(TableauTest, ASlackMayNotBeNegativeAndADummyHasToBeZero) {
  struct {
    Tableau::Kind kind;
    double value;
    bool isFeasible;
  } const cases[] = {{Slack, 0, true},  {Slack, 3, true}, {Slack, -3, false},  {Error, -3, false},
                     {Dummy, 3, false}, {Dummy, 0, true}, {Variable, -3, true}};
  for (const auto& each : cases) {
    const int row = give(tableau.addSymbol(each.kind), each.value, {});
    EXPECT_EQ(tableau.isFeasible(row), each.isFeasible) << int(each.kind) << " " << each.value;
    const bool isSuspect = std::count(tableau.suspects().begin(), tableau.suspects().end(), row) > 0;
    EXPECT_TRUE(each.isFeasible || isSuspect);
  }
}

TEST_F(TableauTest, WithoutRowsOnlyVariablesAreLeft) {
  give(x, 1, {{s, 2}});
  tableau.takeMoved();
  tableau.removeRows();
  EXPECT_EQ(tableau.valueOf(x), 0);
  EXPECT_EQ(tableau.kindOf(x), Variable);
  EXPECT_EQ(tableau.kindOf(s), Unused);
  EXPECT_THAT(tableau.takeMoved(), UnorderedElementsAre(x, y));
}

}  // namespace
