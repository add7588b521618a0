#include "tests/platform/layout/ReferenceSolver.h"

#include <cmath>
#include <optional>

namespace reference {

namespace {

using tessaluna::platform::ConstraintSolver;

constexpr long double tolerance = 1e-11L;

// minimize cost * z, where matrix * z = right and z >= 0; by Bland's rule, which ends.
class DenseProgram {
 public:
  explicit DenseProgram(std::size_t columns) : columns_(columns) {}

  std::size_t addColumn() {
    for (auto& row : matrix_) row.push_back(0);
    return columns_++;
  }
  void addRow(std::vector<long double> row, long double right) {
    row.resize(columns_, 0);
    matrix_.push_back(std::move(row));
    right_.push_back(right);
  }

  // The least cost; absent if nothing is feasible.
  std::optional<long double> minimum(const std::vector<long double>& cost) const {
    const std::size_t rows = matrix_.size(), all = columns_ + rows;
    std::vector<std::vector<long double>> tableau(rows, std::vector<long double>(all + 1, 0));
    std::vector<std::size_t> basis(rows);
    for (std::size_t i = 0; i < rows; ++i) {
      const long double sign = right_[i] < 0 ? -1 : 1;
      for (std::size_t j = 0; j < columns_; ++j) tableau[i][j] = sign * matrix_[i][j];
      tableau[i][columns_ + i] = 1;
      tableau[i][all] = sign * right_[i];
      basis[i] = columns_ + i;
    }
    std::vector<long double> artificial(all, 0);
    for (std::size_t j = columns_; j < all; ++j) artificial[j] = 1;
    if (run(tableau, basis, artificial, all) > 1e-8L) return std::nullopt;
    // What is artificial and still there is 0; it goes where anything else can take its place.
    for (std::size_t i = 0; i < rows; ++i)
      for (std::size_t j = 0; basis[i] >= columns_ && j < columns_; ++j)
        if (std::abs(tableau[i][j]) > 1e-8L) exchange(tableau, basis, i, j);
    std::vector<long double> full(cost);
    full.resize(all, 0);
    return run(tableau, basis, full, columns_);
  }

 private:
  using Tableau = std::vector<std::vector<long double>>;

  static void exchange(Tableau& tableau, std::vector<std::size_t>& basis, std::size_t row, std::size_t column) {
    const long double divisor = tableau[row][column];
    for (long double& value : tableau[row]) value /= divisor;
    for (std::size_t i = 0; i < tableau.size(); ++i) {
      const long double factor = tableau[i][column];
      if (i == row || factor == 0) continue;
      for (std::size_t j = 0; j < tableau[i].size(); ++j) tableau[i][j] -= factor * tableau[row][j];
    }
    basis[row] = column;
  }

  static long double run(Tableau& tableau, std::vector<std::size_t>& basis, const std::vector<long double>& cost,
                         std::size_t usable) {
    while (true) {
      std::size_t entering = usable;
      for (std::size_t j = 0; j < usable && entering == usable; ++j) {
        long double reduced = cost[j];
        for (std::size_t i = 0; i < tableau.size(); ++i) reduced -= cost[basis[i]] * tableau[i][j];
        if (reduced < -tolerance) entering = j;
      }
      if (entering == usable) break;
      std::size_t leaving = tableau.size();
      for (std::size_t i = 0; i < tableau.size(); ++i) {
        if (tableau[i][entering] <= tolerance) continue;
        if (leaving == tableau.size()) {
          leaving = i;
          continue;
        }
        const long double ratio = tableau[i].back() / tableau[i][entering],
                          best = tableau[leaving].back() / tableau[leaving][entering];
        if (ratio < best - tolerance || (std::abs(ratio - best) <= tolerance && basis[i] < basis[leaving])) leaving = i;
      }
      if (leaving == tableau.size()) break;  // no bound, which errors always have
      exchange(tableau, basis, leaving, entering);
    }
    long double total = 0;
    for (std::size_t i = 0; i < tableau.size(); ++i) total += cost[basis[i]] * tableau[i].back();
    return total;
  }

  std::size_t columns_;
  std::vector<std::vector<long double>> matrix_;
  std::vector<long double> right_;
};

// A rule's row: two columns for each variable, one for either sign, a slack, and two errors.
void addRule(DenseProgram& program, int variables, const Rule& rule, std::vector<long double>* errorCosts) {
  const auto add = [&](std::vector<std::pair<std::size_t, long double>> own) {
    std::vector<long double> row(static_cast<std::size_t>(2 * variables), 0);
    for (const auto& term : rule.terms) {
      const auto column = static_cast<std::size_t>(2 * static_cast<int>(term.variable));
      row[column] += term.coefficient;
      row[column + 1] -= term.coefficient;
    }
    for (const auto& [column, coefficient] : own) {
      if (row.size() <= column) row.resize(column + 1, 0);
      row[column] = coefficient;
    }
    program.addRow(row, rule.constant);
  };
  std::vector<std::pair<std::size_t, long double>> own;
  if (rule.relation != ConstraintSolver::Relation::Equal)
    own.emplace_back(program.addColumn(), rule.relation == ConstraintSolver::Relation::AtMost ? 1 : -1);
  if (errorCosts) {
    for (const int sign : {1, -1}) {
      const std::size_t error = program.addColumn();
      own.emplace_back(error, sign);
      errorCosts->resize(error + 1, 0);
      errorCosts->back() = 1;
    }
  }
  add(own);
}

}  // namespace

Solution solve(int variables, const std::vector<Rule>& rules) {
  Solution solution;
  solution.isSetAside.resize(rules.size(), false);
  DenseProgram program(static_cast<std::size_t>(2 * variables));
  for (std::size_t i = 0; i < rules.size(); ++i) {
    if (rules[i].priority < ConstraintSolver::required) continue;
    DenseProgram longer = program;
    addRule(longer, variables, rules[i], nullptr);
    if (longer.minimum({})) program = longer;
    else solution.isSetAside[i] = true;
  }
  std::map<double, std::vector<Rule>, std::greater<>> levels;
  for (const Rule& rule : rules)
    if (rule.priority < ConstraintSolver::required) levels[rule.priority].push_back(rule);
  for (const auto& [priority, level] : levels) {
    std::vector<long double> cost;
    for (const Rule& rule : level) addRule(program, variables, rule, &cost);
    const long double least = program.minimum(cost).value_or(-1);
    solution.errors[priority] = static_cast<double>(least);
    // From here on it stays at that.
    std::vector<long double> row = cost;
    const std::size_t slack = program.addColumn();
    row.resize(slack + 1, 0);
    row[slack] = 1;
    program.addRow(row, least + 1e-9L);
  }
  return solution;
}

double errorOf(const Rule& rule, const std::vector<double>& values) {
  double sum = -rule.constant;
  for (const auto& term : rule.terms) sum += term.coefficient * values[static_cast<std::size_t>(term.variable)];
  switch (rule.relation) {
    case ConstraintSolver::Relation::AtMost: return std::max(sum, 0.0);
    case ConstraintSolver::Relation::AtLeast: return std::max(-sum, 0.0);
    case ConstraintSolver::Relation::Equal: return std::abs(sum);
  }
  return 0;
}

}  // namespace reference
