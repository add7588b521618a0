// A slow solver, dense and without memory, for what the incremental one must find: it adds required constraints one after the
// other, each only if it can hold with those before it, and then makes the errors of one priority after the other the least.
#pragma once

#include <map>
#include <vector>

#include "tessaluna/platform/layout/ConstraintSolver.h"

namespace reference {

using Rule = tessaluna::platform::ConstraintSolver::Rule;

struct Solution {
  std::vector<bool> isSetAside;                     // by rule
  std::map<double, double, std::greater<>> errors;  // by priority, their sum
};

// Variables are numbered from 0.
Solution solve(int variables, const std::vector<Rule>& rules);

// How far the values are from what the rule says.
double errorOf(const Rule& rule, const std::vector<double>& values);

}  // namespace reference
