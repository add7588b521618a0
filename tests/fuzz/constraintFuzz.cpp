// Adds, changes and removes constraints in any sequence. Constraints that were not set aside must hold, nothing may hang,
// and a system that was solved step by step must have the same solution when it is solved at once.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tessaluna/platform/layout/ConstraintSolver.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using tessaluna::platform::ConstraintSolver;
using Rule = ConstraintSolver::Rule;

constexpr int variables = 8;
constexpr std::size_t maxRules = 40;
constexpr long maxPivots = 200000;

struct Known {
  Rule rule;
  ConstraintSolver::Constraint constraint;
};

void require(bool isTrue, const char* what) {
  if (isTrue) return;
  std::fprintf(stderr, "constraint solver: %s\n", what);
  std::abort();
}

Rule ruleFrom(fuzz::FuzzInput& input) {
  constexpr double coefficients[] = {1, -1, 1, -1, 2, -0.5, 1.0 / 3, 4};
  constexpr double priorities[] = {1000, 1000, 999.5, 750, 500, 250, 50, 1};
  constexpr ConstraintSolver::Relation relations[] = {ConstraintSolver::Relation::AtMost, ConstraintSolver::Relation::Equal,
                                                      ConstraintSolver::Relation::AtLeast};
  Rule rule;
  for (unsigned terms = input.below(5); terms > 0; --terms)
    rule.terms.push_back({static_cast<ConstraintSolver::Variable>(input.below(variables)), coefficients[input.below(8)]});
  rule.relation = relations[input.below(3)];
  rule.constant = static_cast<int>(input.byte()) - 128;
  rule.priority = priorities[input.below(8)];
  return rule;
}

void checkRequired(const ConstraintSolver& solver, const std::vector<Known>& rules) {
  for (const Known& known : rules) {
    if (known.rule.priority < ConstraintSolver::required || solver.isSetAside(known.constraint)) continue;
    double sum = -known.rule.constant, size = 1;
    for (const auto& term : known.rule.terms) {
      sum += term.coefficient * solver.value(term.variable);
      size += std::abs(term.coefficient * solver.value(term.variable));
    }
    const double tolerance = 1e-4 * size;
    switch (known.rule.relation) {
      case ConstraintSolver::Relation::AtMost: require(sum <= tolerance, "a required upper bound does not hold"); break;
      case ConstraintSolver::Relation::Equal:
        require(std::abs(sum) <= tolerance, "a required equation does not hold");
        break;
      case ConstraintSolver::Relation::AtLeast: require(sum >= -tolerance, "a required lower bound does not hold"); break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input({data, size});
  ConstraintSolver solver;
  for (int i = 0; i < variables; ++i) solver.addVariable();
  std::vector<Known> rules;
  while (!input.isAtEnd()) {
    const unsigned kind = input.below(8);
    if (rules.empty() || (kind < 4 && rules.size() < maxRules)) {
      rules.push_back({ruleFrom(input), {}});
      rules.back().constraint = solver.add(rules.back().rule);
    } else if (kind < 6) {
      Known& known = rules[input.byte() % rules.size()];
      known.rule.constant = (static_cast<int>(input.byte()) - 128) / 4.0;
      solver.setConstant(known.constraint, known.rule.constant);
    } else if (kind == 6) {
      const auto which = static_cast<std::ptrdiff_t>(input.byte() % rules.size());
      solver.remove(rules[static_cast<std::size_t>(which)].constraint);
      rules.erase(rules.begin() + which);
    } else {
      solver.solve();
      checkRequired(solver, rules);
      solver.takeChanges();
    }
    require(solver.pivotCount() < maxPivots, "it walks in a circle");
  }
  solver.solve();
  checkRequired(solver, rules);
  ConstraintSolver atOnce;
  for (int i = 0; i < variables; ++i) atOnce.addVariable();
  std::vector<Known> again = rules;
  for (Known& known : again) known.constraint = atOnce.add(known.rule);
  atOnce.solve();
  checkRequired(atOnce, again);
  for (std::size_t i = 0; i < rules.size(); ++i)
    require(solver.isSetAside(rules[i].constraint) == atOnce.isSetAside(again[i].constraint),
            "what is set aside depends on the way there");
  return 0;
}
