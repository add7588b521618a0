#include "tessaluna/platform/layout/ConstraintSolver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/platform/layout/ReferenceSolver.h"

namespace {

using tessaluna::platform::ConstraintSolver;
using testing::ElementsAre;
using testing::IsEmpty;
using enum ConstraintSolver::Relation;
using Variable = ConstraintSolver::Variable;
using Rule = ConstraintSolver::Rule;

class ConstraintSolverTest : public testing::Test {
 protected:
  ConstraintSolver::Constraint add(std::vector<ConstraintSolver::Term> terms, ConstraintSolver::Relation relation,
                                   double constant, double priority = ConstraintSolver::required) {
    return solver.add({std::move(terms), relation, constant, priority});
  }
  double solved(Variable variable) {
    solver.solve();
    return solver.value(variable);
  }

  ConstraintSolver solver;
  const Variable x = solver.addVariable(), y = solver.addVariable(), z = solver.addVariable();
};

TEST_F(ConstraintSolverTest, AVariableThatNothingDeterminesIsZero) { EXPECT_EQ(solved(x), 0); }

TEST_F(ConstraintSolverTest, EquationsAreSolved) {
  add({{x, 1}, {y, 1}}, Equal, 10);
  add({{x, 1}, {y, -1}}, Equal, 2);
  EXPECT_DOUBLE_EQ(solved(x), 6);
  EXPECT_DOUBLE_EQ(solved(y), 4);
}

TEST_F(ConstraintSolverTest, ATermThatComesTwiceCountsTwice) {
  add({{x, 1}, {x, 1}}, Equal, 10);
  EXPECT_DOUBLE_EQ(solved(x), 5);
}

TEST_F(ConstraintSolverTest, AWishEndsAtARequiredBound) {
  add({{x, 1}}, AtMost, 24);
  add({{x, 1}}, Equal, 100, 500);
  EXPECT_DOUBLE_EQ(solved(x), 24);
}

TEST_F(ConstraintSolverTest, HigherPrioritiesComeFirstHoweverManyThereAreBelow) {
  for (int i = 0; i < 50; ++i) add({{x, 1}}, Equal, 10, 250);
  add({{x, 1}}, Equal, 20, 250.5);
  EXPECT_DOUBLE_EQ(solved(x), 20);
}

TEST_F(ConstraintSolverTest, OfEqualWishesTheOneAddedLastGivesWay) {
  add({{x, 1}}, Equal, 10, 500);
  add({{x, 1}}, Equal, 20, 500);
  EXPECT_DOUBLE_EQ(solved(x), 10);
}

TEST_F(ConstraintSolverTest, AChangedConstantMovesWhatDependsOnItAndNothingElse) {
  const auto first = add({{x, 1}}, Equal, 10);
  add({{y, 1}, {x, -1}}, Equal, 5);
  add({{z, 1}}, Equal, 7);
  solver.solve();
  solver.takeChanges();
  solver.setConstant(first, 30);
  solver.solve();
  EXPECT_DOUBLE_EQ(solver.value(y), 35);
  EXPECT_THAT(solver.takeChanges(), testing::UnorderedElementsAre(x, y));
}

TEST_F(ConstraintSolverTest, AnInequalityThatBecomesTightPushes) {
  const auto limit = add({{x, 1}}, AtMost, 100);
  add({{x, 1}}, Equal, 80, 500);
  EXPECT_DOUBLE_EQ(solved(x), 80);
  solver.setConstant(limit, 24);
  EXPECT_DOUBLE_EQ(solved(x), 24);
  solver.setConstant(limit, 100);
  EXPECT_DOUBLE_EQ(solved(x), 80);
}

TEST_F(ConstraintSolverTest, ARemovedConstraintHoldsNothingAnyMore) {
  const auto held = add({{x, 1}}, Equal, 10);
  add({{x, 1}}, Equal, 50, 100);
  EXPECT_DOUBLE_EQ(solved(x), 10);
  solver.remove(held);
  EXPECT_DOUBLE_EQ(solved(x), 50);
}

TEST_F(ConstraintSolverTest, OfRequiredConstraintsThatConflictTheOneAddedLastIsSetAside) {
  const auto first = add({{x, 1}}, Equal, 10);
  const auto second = add({{y, 1}, {x, -1}}, AtLeast, 5);
  const auto third = add({{y, 1}}, AtMost, 12);
  solver.solve();
  EXPECT_TRUE(solver.isSetAside(third));
  const auto conflicts = solver.takeConflicts();
  ASSERT_EQ(conflicts.size(), 1u);
  EXPECT_EQ(conflicts[0].setAside, third);
  EXPECT_THAT(conflicts[0].others, ElementsAre(first, second));
  EXPECT_DOUBLE_EQ(solver.value(x), 10);
  EXPECT_GE(solver.value(y), 15);
}

TEST_F(ConstraintSolverTest, WhatWasSetAsideHoldsOnceItCan) {
  const auto first = add({{x, 1}}, Equal, 10);
  const auto second = add({{x, 1}}, AtMost, 5);
  solver.solve();
  EXPECT_TRUE(solver.isSetAside(second));
  solver.setConstant(first, 3);
  EXPECT_DOUBLE_EQ(solved(x), 3);
  EXPECT_FALSE(solver.isSetAside(second));
  solver.setConstant(first, 10);
  EXPECT_DOUBLE_EQ(solved(x), 10);
  EXPECT_TRUE(solver.isSetAside(second));
}

TEST_F(ConstraintSolverTest, AConflictThatLastsIsReportedOnce) {
  const auto first = add({{x, 1}}, Equal, 10);
  add({{x, 1}}, AtMost, 5);
  solver.solve();
  EXPECT_EQ(solver.takeConflicts().size(), 1u);
  solver.setConstant(first, 11);
  solver.solve();
  EXPECT_THAT(solver.takeConflicts(), IsEmpty());
}

TEST_F(ConstraintSolverTest, TheSameTwiceIsNotAConflict) {
  add({{x, 1}, {y, 1}}, Equal, 10);
  add({{x, 2}, {y, 2}}, Equal, 20);
  add({{x, 1}}, Equal, 4);
  EXPECT_DOUBLE_EQ(solved(y), 6);
  EXPECT_THAT(solver.takeConflicts(), IsEmpty());
}

TEST_F(ConstraintSolverTest, OfTwoThatSayTheSameTheSecondIsInTheWayOnceTheFirstChanges) {
  const auto first = add({{x, 1}}, Equal, 10);
  const auto second = add({{x, 1}}, Equal, 10);
  solver.solve();
  solver.setConstant(first, 12);
  EXPECT_DOUBLE_EQ(solved(x), 12);
  EXPECT_TRUE(solver.isSetAside(second));
  solver.remove(first);
  EXPECT_DOUBLE_EQ(solved(x), 10);
}

TEST_F(ConstraintSolverTest, AConstraintWhoseRuleChangesStillCountsAsAddedWhenItWas) {
  const auto first = add({{x, 1}}, Equal, 10);
  const auto second = add({{x, 1}, {y, 1}}, Equal, 30);
  const auto third = add({{y, 1}}, Equal, 25);
  solver.solve();
  EXPECT_TRUE(solver.isSetAside(third));
  solver.setRule(first, {{{x, 2}}, Equal, 24});
  EXPECT_DOUBLE_EQ(solved(y), 18);
  EXPECT_FALSE(solver.isSetAside(first));
  EXPECT_FALSE(solver.isSetAside(second));
  solver.setRule(third, {{{y, 1}}, AtLeast, 5});
  solver.solve();
  EXPECT_FALSE(solver.isSetAside(third));
}

TEST_F(ConstraintSolverTest, AConstraintWithoutVariablesIsTrueOrSetAside) {
  const auto yes = add({}, AtMost, 1), no = add({}, Equal, 1);
  solver.solve();
  EXPECT_FALSE(solver.isSetAside(yes));
  EXPECT_TRUE(solver.isSetAside(no));
}

TEST_F(ConstraintSolverTest, AVariableMayGoOnceNothingHasIt) {
  const auto one = add({{x, 1}, {y, -1}}, Equal, 5);
  add({{y, 1}}, Equal, 1);
  solver.solve();
  solver.remove(one);
  solver.removeVariable(x);
  const Variable another = solver.addVariable();
  add({{another, 1}, {y, 1}}, Equal, 3);
  EXPECT_DOUBLE_EQ(solved(another), 2);
}

// A chain of boxes of which the last one has moved as often as an animation does.
TEST_F(ConstraintSolverTest, ManyChangesLoseNothing) {
  std::vector<Variable> ends{solver.addVariable()};
  const auto first = add({{ends[0], 1}}, Equal, 0.1);
  for (int i = 1; i < 40; ++i) {
    ends.push_back(solver.addVariable());
    add({{ends.back(), 1}, {ends[ends.size() - 2], -1}}, Equal, 0.1);
  }
  for (int i = 0; i < 10000; ++i) {
    solver.setConstant(first, 0.1 * (i % 97));
    solver.solve();
  }
  solver.setConstant(first, 0.1);
  EXPECT_NEAR(solved(ends.back()), 4, 1e-9);
}

// Random systems.

Rule randomRule(std::mt19937& random, int variables) {
  const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  Rule rule;
  const int terms = 1 + below(3);
  for (int i = 0; i < terms; ++i) {
    const double coefficients[] = {1, -1, 1, -1, 2, 0.5};
    rule.terms.push_back({static_cast<Variable>(below(variables)), coefficients[below(6)]});
  }
  const ConstraintSolver::Relation relations[] = {AtMost, Equal, AtLeast};
  rule.relation = relations[below(3)];
  rule.constant = below(41) - 20;
  const double priorities[] = {1000, 1000, 750, 500, 250};
  rule.priority = priorities[below(5)];
  return rule;
}

// Everything required holds that the reference lets hold, and the errors are as small as they can be.
void expectAsReference(ConstraintSolver& solver, int variables, const std::vector<Rule>& rules,
                       const std::vector<ConstraintSolver::Constraint>& constraints) {
  const reference::Solution expected = reference::solve(variables, rules);
  std::vector<double> values;
  for (int i = 0; i < variables; ++i) values.push_back(solver.value(static_cast<Variable>(i)));
  std::map<double, double, std::greater<>> errors;
  for (std::size_t i = 0; i < rules.size(); ++i) {
    if (rules[i].priority >= ConstraintSolver::required) {
      ASSERT_EQ(solver.isSetAside(constraints[i]), expected.isSetAside[i]) << "rule " << i;
      if (expected.isSetAside[i]) continue;
      ASSERT_NEAR(reference::errorOf(rules[i], values), 0, 1e-6) << "rule " << i;
    } else {
      errors[rules[i].priority] += reference::errorOf(rules[i], values);
    }
  }
  for (const auto& [priority, least] : expected.errors) ASSERT_NEAR(errors[priority], least, 1e-5) << "at " << priority;
}

class RandomSystemTest : public testing::TestWithParam<unsigned> {};

TEST_P(RandomSystemTest, SolutionsAreThoseOfTheReferenceAfterEveryChange) {
  for (unsigned run = 0; run < 60; ++run) {
    std::mt19937 random(GetParam() * 1000 + run);
    const int variables = 2 + static_cast<int>(random() % 4);
    ConstraintSolver solver;
    for (int i = 0; i < variables; ++i) solver.addVariable();
    std::vector<Rule> rules;
    std::vector<ConstraintSolver::Constraint> constraints;
    for (int step = 0; step < 12; ++step) {
      const unsigned kind = random() % 10;
      if (rules.size() < 4 || kind < 4) {
        const int count = 1 + static_cast<int>(random() % 3);
        for (int i = 0; i < count; ++i) {
          rules.push_back(randomRule(random, variables));
          constraints.push_back(solver.add(rules.back()));
        }
      } else if (kind < 8) {
        const std::size_t which = random() % rules.size();
        rules[which].constant = static_cast<double>(random() % 41) - 20;
        solver.setConstant(constraints[which], rules[which].constant);
      } else if (kind == 8) {
        const std::size_t which = random() % rules.size();
        rules[which] = randomRule(random, variables);
        solver.setRule(constraints[which], rules[which]);
      } else {
        const auto which = static_cast<std::ptrdiff_t>(random() % rules.size());
        solver.remove(constraints[static_cast<std::size_t>(which)]);
        rules.erase(rules.begin() + which);
        constraints.erase(constraints.begin() + which);
      }
      solver.solve();
      SCOPED_TRACE("run " + std::to_string(run) + ", step " + std::to_string(step));
      ASSERT_NO_FATAL_FAILURE(expectAsReference(solver, variables, rules, constraints));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSystemTest, testing::Range(1u, 11u));

}  // namespace
