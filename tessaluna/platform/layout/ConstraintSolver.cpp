#include "tessaluna/platform/layout/ConstraintSolver.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

namespace tessaluna::platform {

namespace {

constexpr double coefficientEpsilon = 1e-10;  // below it a coefficient is what rounding left of 0
constexpr double pivotEpsilon = 1e-7;         // nothing is divided by less
constexpr double constantEpsilon = 1e-7;      // points
// The objective that decides where the others leave a choice has numbers up to the count of constraints.
constexpr double tiePriority = -1;
constexpr double costEpsilon(double priority) { return priority == tiePriority ? 1e-5 : 1e-8; }

}  // namespace

// Symbols, rows and columns.

int ConstraintSolver::newSymbol(Kind kind) {
  int symbol;
  if (freeSymbols_.empty()) {
    symbol = static_cast<int>(symbols_.size());
    symbols_.emplace_back();
    ownerOf_.push_back(-1);
  } else {
    symbol = freeSymbols_.back();
    freeSymbols_.pop_back();
  }
  symbols_[symbol].kind = kind;
  return symbol;
}

void ConstraintSolver::freeSymbol(int symbol) {
  symbols_[symbol].kind = Kind::Unused;
  ownerOf_[symbol] = -1;
  freeSymbols_.push_back(symbol);
}

int ConstraintSolver::newRow(int basic) {
  int row;
  if (freeRows_.empty()) {
    row = static_cast<int>(rows_.size());
    rows_.emplace_back();
  } else {
    row = freeRows_.back();
    freeRows_.pop_back();
  }
  rows_[row].basic = basic;
  if (basic >= 0) symbols_[basic].row = row;
  return row;
}

void ConstraintSolver::dropRow(int index) {
  Row& row = rows_[index];
  for (const Cell& cell : row.cells) {
    std::vector<int>& column = symbols_[cell.symbol].column;
    *std::find(column.begin(), column.end(), index) = column.back();
    column.pop_back();
  }
  if (row.basic >= 0) symbols_[row.basic].row = -1;
  row.cells.clear();
  row.basic = -1;
  row.constant = 0;
  freeRows_.push_back(index);
}

double ConstraintSolver::coefficientIn(const Row& row, int symbol) const {
  const auto found = std::lower_bound(row.cells.begin(), row.cells.end(), symbol,
                                      [](const Cell& cell, int sought) { return cell.symbol < sought; });
  return found != row.cells.end() && found->symbol == symbol ? found->coefficient : 0;
}

// Adds a multiple of other cells, which are in order too, and keeps the columns true.
void ConstraintSolver::addExpression(int rowIndex, double factor, std::span<const Cell> cells, double constant) {
  Row& row = rows_[rowIndex];
  if (!cells.empty()) addCells(row, rowIndex, factor, cells);
  if (constant != 0) {
    row.constant += factor * constant;
    constantDidChange(rowIndex);
  }
}

void ConstraintSolver::addCells(Row& row, int rowIndex, double factor, std::span<const Cell> cells) {
  // What comes before all that is added stays where it is, which is most of a long row that grows at its end.
  const auto start = std::lower_bound(row.cells.begin(), row.cells.end(), cells.front().symbol,
                                      [](const Cell& cell, int sought) { return cell.symbol < sought; });
  scratch_.clear();
  auto mine = start;
  const auto end = row.cells.end();
  for (const Cell& cell : cells) {
    while (mine != end && mine->symbol < cell.symbol) scratch_.push_back(*mine++);
    const double added = factor * cell.coefficient;
    std::vector<int>& column = symbols_[cell.symbol].column;
    if (mine != end && mine->symbol == cell.symbol) {
      const double sum = mine->coefficient + added;
      if (std::abs(sum) > coefficientEpsilon) {
        scratch_.push_back({cell.symbol, sum});
      } else {
        *std::find(column.begin(), column.end(), rowIndex) = column.back();
        column.pop_back();
      }
      ++mine;
    } else if (std::abs(added) > coefficientEpsilon) {
      scratch_.push_back({cell.symbol, added});
      column.push_back(rowIndex);
    }
  }
  scratch_.insert(scratch_.end(), mine, end);
  row.cells.erase(start, end);
  row.cells.insert(row.cells.end(), scratch_.begin(), scratch_.end());
}

// Adds a multiple of a symbol, or of what stands for it.
void ConstraintSolver::addMultiple(int rowIndex, double factor, int symbol) {
  if (symbols_[symbol].row >= 0) {
    const Row& row = rows_[symbols_[symbol].row];
    addExpression(rowIndex, factor, row.cells, row.constant);
  } else {
    const Cell cell{symbol, 1};
    addExpression(rowIndex, factor, {&cell, 1}, 0);
  }
}

// Puts what the row says of its symbol wherever that is a parameter.
void ConstraintSolver::replaceParameter(int symbol, int rowIndex) {
  const std::vector<int> column = std::exchange(symbols_[symbol].column, {});
  for (const int index : column) {
    Row& row = rows_[index];
    const auto cell = std::lower_bound(row.cells.begin(), row.cells.end(), symbol,
                                       [](const Cell& one, int sought) { return one.symbol < sought; });
    const double factor = cell->coefficient;
    row.cells.erase(cell);
    addExpression(index, factor, rows_[rowIndex].cells, rows_[rowIndex].constant);
  }
}

// The entering parameter gets the row, and what the row gave becomes a parameter.
void ConstraintSolver::pivot(int rowIndex, int entering) {
  ++pivotCount_;
  Row& row = rows_[rowIndex];
  const int leaving = row.basic;
  const auto cell = std::lower_bound(row.cells.begin(), row.cells.end(), entering,
                                     [](const Cell& one, int sought) { return one.symbol < sought; });
  const double factor = -1 / cell->coefficient;
  row.cells.erase(cell);
  std::vector<int>& column = symbols_[entering].column;
  *std::find(column.begin(), column.end(), rowIndex) = column.back();
  column.pop_back();
  row.constant *= factor;
  for (Cell& one : row.cells) one.coefficient *= factor;
  if (leaving >= 0) {
    const auto place = std::lower_bound(row.cells.begin(), row.cells.end(), leaving,
                                        [](const Cell& one, int sought) { return one.symbol < sought; });
    row.cells.insert(place, {leaving, -factor});
    symbols_[leaving].column.push_back(rowIndex);
    symbols_[leaving].row = -1;
    noteChange(leaving);
  }
  row.basic = entering;
  symbols_[entering].row = rowIndex;
  constantDidChange(rowIndex);
  replaceParameter(entering, rowIndex);
}

void ConstraintSolver::eraseColumn(int symbol) {
  for (const int index : std::exchange(symbols_[symbol].column, {})) {
    std::vector<Cell>& cells = rows_[index].cells;
    cells.erase(std::lower_bound(cells.begin(), cells.end(), symbol,
                                 [](const Cell& one, int sought) { return one.symbol < sought; }));
  }
}

void ConstraintSolver::noteChange(int symbol) {
  Symbol& changed = symbols_[symbol];
  if (changed.kind != Kind::Variable) return;
  if (!std::exchange(changed.isMoved, true)) moved_.push_back(symbol);
  if (changed.isChanged) return;
  changed.isChanged = true;
  changes_.push_back(symbol);
}

bool ConstraintSolver::isRestricted(int symbol) const {
  const Kind kind = symbols_[symbol].kind;
  return kind == Kind::Slack || kind == Kind::Error;
}

bool ConstraintSolver::isFeasible(const Row& row) const {
  switch (symbols_[row.basic].kind) {
    case Kind::Slack:
    case Kind::Error: return row.constant >= -constantEpsilon;
    case Kind::Dummy:
      return std::abs(row.constant) <= constantEpsilon &&
             std::none_of(row.cells.begin(), row.cells.end(),
                          [&](const Cell& cell) { return symbols_[cell.symbol].kind != Kind::Dummy; });
    case Kind::Variable:
    case Kind::Objective:
    case Kind::Unused: return true;
  }
  return true;
}

void ConstraintSolver::constantDidChange(int rowIndex) {
  const Row& row = rows_[rowIndex];
  if (row.basic < 0) return;
  noteChange(row.basic);
  const Kind kind = symbols_[row.basic].kind;
  if (kind == Kind::Dummy || (isRestricted(row.basic) && row.constant < -constantEpsilon)) infeasible_.push_back(rowIndex);
}

// What a program calls.

ConstraintSolver::Variable ConstraintSolver::addVariable() { return static_cast<Variable>(newSymbol(Kind::Variable)); }

void ConstraintSolver::removeVariable(Variable variable) {
  const int symbol = static_cast<int>(variable);
  // Others may still be given by it, or it by them, as far as nothing determines them.
  if (symbols_[symbol].row >= 0) dropRow(symbols_[symbol].row);
  else eraseColumn(symbol);
  freeSymbol(symbol);
}

ConstraintSolver::Constraint ConstraintSolver::add(Rule rule) {
  int index;
  if (freeEntries_.empty()) {
    index = static_cast<int>(entries_.size());
    entries_.emplace_back();
  } else {
    index = freeEntries_.back();
    freeEntries_.pop_back();
    entries_[index] = {};
  }
  Entry& entry = entries_[index];
  entry.rule = std::move(rule);
  entry.order = ++order_;
  entry.isInUse = true;
  enter(entry);
  isChanged_ = true;
  return static_cast<Constraint>(index);
}

void ConstraintSolver::remove(Constraint constraint) {
  const int index = static_cast<int>(constraint);
  Entry& entry = entries_[index];
  if (entry.isIn) leave(entry);
  std::erase(setAside_, index);
  entry = {};
  freeEntries_.push_back(index);
  isChanged_ = true;
}

void ConstraintSolver::setConstant(Constraint constraint, double constant) {
  Entry& entry = entries_[static_cast<int>(constraint)];
  const double difference = constant - entry.rule.constant;
  if (difference == 0) return;
  entry.rule.constant = constant;
  isChanged_ = true;
  if (entry.defined >= 0) dirtyDefinitions_.push_back(static_cast<int>(constraint));
  if (!entry.isIn || entry.defined >= 0) return;
  // terms - constant = sign * marker - sign * other: as if the marker grew by the difference, over its sign.
  const double shiftOfMarker = entry.markerSign * difference;
  const int marker = symbols_[entry.marker].row, other = entry.other < 0 ? -1 : symbols_[entry.other].row;
  if (marker >= 0) {
    rows_[marker].constant -= shiftOfMarker;
    constantDidChange(marker);
  } else if (other >= 0) {
    rows_[other].constant += shiftOfMarker;
    constantDidChange(other);
  } else {
    shift(entry.marker, shiftOfMarker);
  }
  // An error that has a row counts in its objective, which needs no mending: only coefficients are read there.
}

// Moves what a parameter contributes to.
void ConstraintSolver::shift(int symbol, double difference) {
  for (const int index : symbols_[symbol].column) {
    Row& row = rows_[index];
    row.constant += coefficientIn(row, symbol) * difference;
    constantDidChange(index);
  }
}

double ConstraintSolver::value(Variable variable) const {
  const Symbol& symbol = symbols_[static_cast<int>(variable)];
  if (symbol.definition >= 0) return symbol.definedValue;
  return symbol.row >= 0 ? rows_[symbol.row].constant : 0;
}

bool ConstraintSolver::isSetAside(Constraint constraint) const { return entries_[static_cast<int>(constraint)].isSetAside; }

std::vector<ConstraintSolver::Variable> ConstraintSolver::takeChanges() {
  std::vector<Variable> result;
  for (const int symbol : std::exchange(changes_, {})) {
    symbols_[symbol].isChanged = false;
    if (symbols_[symbol].kind == Kind::Variable) result.push_back(static_cast<Variable>(symbol));
  }
  return result;
}

std::vector<ConstraintSolver::Conflict> ConstraintSolver::takeConflicts() { return std::exchange(conflicts_, {}); }

// Constraints come and go.

void ConstraintSolver::enter(Entry& entry) {
  entry.isIn = true;
  const bool isDefinition = define(entry);
  for (const Term& term : entry.rule.terms) ++symbols_[static_cast<int>(term.variable)].mentions;
  if (isDefinition) return;
  takeIntoSimplex(entry.rule);
  enterSimplex(entry);
}

// Whether the entry only defines a variable.
bool ConstraintSolver::define(Entry& entry) {
  const Rule& rule = entry.rule;
  if (rule.relation != Relation::Equal || rule.priority < required) return false;
  for (const Term& term : rule.terms) {
    const int index = static_cast<int>(term.variable);
    Symbol& symbol = symbols_[index];
    const auto isIt = [&](const Term& one) { return one.variable == term.variable; };
    if (symbol.mentions > 0 || symbol.row >= 0 || !symbol.column.empty() || std::abs(term.coefficient) < pivotEpsilon ||
        std::count_if(rule.terms.begin(), rule.terms.end(), isIt) > 1)
      continue;
    const int self = static_cast<int>(&entry - entries_.data());
    entry.defined = index;
    entry.definitionOrder = ++definitionOrder_;
    symbol.definition = self;
    symbol.definedValue = 0;
    for (const Term& other : rule.terms)
      if (other.variable != term.variable) symbols_[static_cast<int>(other.variable)].users.push_back(self);
    dirtyDefinitions_.push_back(self);
    return true;
  }
  return false;
}

void ConstraintSolver::endDefinition(Entry& entry) {
  const int self = static_cast<int>(&entry - entries_.data());
  symbols_[entry.defined].definition = -1;
  noteChange(entry.defined);
  for (const Term& term : entry.rule.terms) std::erase(symbols_[static_cast<int>(term.variable)].users, self);
  entry.defined = -1;
}

// What the rule has by definition only, and what that is defined by, becomes the simplex's; those first that others build on.
void ConstraintSolver::takeIntoSimplex(const Rule& rule) {
  std::set<std::pair<long, int>> found;
  std::vector<const Rule*> open{&rule};
  while (!open.empty()) {
    const Rule& next = *open.back();
    open.pop_back();
    for (const Term& term : next.terms) {
      const int definition = symbols_[static_cast<int>(term.variable)].definition;
      if (definition >= 0 && found.emplace(entries_[definition].definitionOrder, definition).second)
        open.push_back(&entries_[definition].rule);
    }
  }
  for (const auto& [order, index] : found) {
    endDefinition(entries_[index]);
    enterSimplex(entries_[index]);
  }
}

// In the order in which they were made, as each is of earlier ones only.
void ConstraintSolver::evaluateDefinitions() {
  std::set<std::pair<long, int>> waiting;
  const auto wait = [&](int index) {
    if (entries_[index].defined >= 0) waiting.emplace(entries_[index].definitionOrder, index);
  };
  for (const int index : std::exchange(dirtyDefinitions_, {})) wait(index);
  for (const int symbol : std::exchange(moved_, {})) {
    symbols_[symbol].isMoved = false;
    for (const int user : symbols_[symbol].users) wait(user);
  }
  while (!waiting.empty()) {
    const Entry& entry = entries_[waiting.begin()->second];
    waiting.erase(waiting.begin());
    Symbol& symbol = symbols_[entry.defined];
    double sum = entry.rule.constant, own = 1;
    for (const Term& term : entry.rule.terms) {
      if (static_cast<int>(term.variable) == entry.defined) own = term.coefficient;
      else sum -= term.coefficient * value(term.variable);
    }
    const double found = sum / own;
    if (found == symbol.definedValue) continue;
    symbol.definedValue = found;
    if (!std::exchange(symbol.isChanged, true)) changes_.push_back(entry.defined);
    for (const int user : symbol.users) wait(user);
  }
}

void ConstraintSolver::enterSimplex(Entry& entry) {
  const Rule& rule = entry.rule;
  const bool isRequired = rule.priority >= required;
  const int index = static_cast<int>(&entry - entries_.data());
  entry.markerSign = rule.relation == Relation::AtMost ? -1 : 1;
  const bool isEquality = rule.relation == Relation::Equal;
  entry.marker = newSymbol(!isEquality ? Kind::Slack : isRequired ? Kind::Dummy : Kind::Error);
  ownerOf_[entry.marker] = index;
  entry.other = isRequired ? -1 : newSymbol(Kind::Error);
  if (entry.other >= 0) ownerOf_[entry.other] = index;

  // 0 = terms - constant - sign * marker + sign * other, as a row of nothing yet.
  const int rowIndex = newRow(-1);
  for (const Term& term : rule.terms) addMultiple(rowIndex, term.coefficient, static_cast<int>(term.variable));
  rows_[rowIndex].constant -= rule.constant;
  int subject = -1;
  std::size_t shortest = std::numeric_limits<std::size_t>::max();
  for (const Cell& cell : rows_[rowIndex].cells) {
    const Symbol& symbol = symbols_[cell.symbol];
    if (symbol.kind != Kind::Variable || std::abs(cell.coefficient) < pivotEpsilon) continue;
    // One that few rows have is replaced in few rows.
    if (symbol.column.size() < shortest) {
      shortest = symbol.column.size();
      subject = cell.symbol;
    }
  }
  const auto addOwn = [&](int symbol, double coefficient) {
    const Cell cell{symbol, coefficient};
    addExpression(rowIndex, 1, {&cell, 1}, 0);
  };
  addOwn(entry.marker, -entry.markerSign);
  if (entry.other >= 0) addOwn(entry.other, entry.markerSign);
  if (subject < 0) {
    // The marker or the other one is as much as is missing, whichever of them is not negative then.
    const double ofMarker = entry.markerSign * rows_[rowIndex].constant;
    subject = entry.other >= 0 && ofMarker < 0 ? entry.other : entry.marker;
  }
  pivot(rowIndex, subject);
  --pivotCount_;
  if (!isRequired && !areObjectivesClear_) addErrors(entry, 1);
  if (symbols_[entry.marker].row >= 0 || (entry.other >= 0 && symbols_[entry.other].row >= 0)) {
    if (!isRequired) isOptimal_ = false;
    if (symbols_[entry.marker].kind == Kind::Dummy) infeasible_.push_back(rowIndex);
  }
}

void ConstraintSolver::leave(Entry& entry) {
  entry.isIn = false;
  for (const Term& term : entry.rule.terms) --symbols_[static_cast<int>(term.variable)].mentions;
  if (entry.defined >= 0) return endDefinition(entry);
  const bool isRequired = entry.rule.priority >= required;
  if (!isRequired && !areObjectivesClear_) addErrors(entry, -1);
  const bool isMarkerBasic = symbols_[entry.marker].row >= 0;
  if (!isMarkerBasic && entry.other >= 0 && symbols_[entry.other].row >= 0) {
    dropRow(symbols_[entry.other].row);
  } else {
    if (!isMarkerBasic) exchangeOut(entry.marker);
    if (symbols_[entry.marker].row >= 0) dropRow(symbols_[entry.marker].row);
  }
  for (const int own : {entry.marker, entry.other}) {
    if (own < 0) continue;
    eraseColumn(own);
    freeSymbol(own);
  }
  entry.marker = entry.other = -1;
  // A slack of its own that was loose held nothing.
  if (!isRequired || !isMarkerBasic) isOptimal_ = false;
}

// Gives the parameter a row, so that what is feasible stays so: it may move either way from here, as it goes.
void ConstraintSolver::exchangeOut(int marker) {
  int best = -1, rank = std::numeric_limits<int>::max();
  double ratio = 0, size = 0;
  for (const int index : symbols_[marker].column) {
    const Row& row = rows_[index];
    const Kind kind = symbols_[row.basic].kind;
    if (kind == Kind::Objective) continue;
    const double coefficient = coefficientIn(row, marker);
    if (std::abs(coefficient) < pivotEpsilon) continue;
    const bool isFree = kind == Kind::Variable;
    const int itsRank = kind == Kind::Dummy ? 0 : isFree ? 3 : coefficient < 0 ? 1 : 2;
    const double itsRatio = isFree ? 0 : std::abs(row.constant / coefficient);
    if (itsRank > rank || (itsRank == rank && (itsRatio > ratio || (itsRatio == ratio && std::abs(coefficient) <= size))))
      continue;
    best = index;
    rank = itsRank;
    ratio = itsRatio;
    size = std::abs(coefficient);
  }
  if (best >= 0) pivot(best, marker);
}

// Objectives.

int ConstraintSolver::objectiveRow(double priority) {
  const auto [found, isNew] = objectives_.try_emplace(priority, -1);
  if (isNew) found->second = newRow(newSymbol(Kind::Objective));
  return found->second;
}

void ConstraintSolver::addErrors(const Entry& entry, double factor) {
  const int rows[] = {objectiveRow(entry.rule.priority), objectiveRow(tiePriority)};
  const double weights[] = {factor, -factor * static_cast<double>(entry.order)};
  for (int i = 0; i < 2; ++i) {
    if (entry.rule.relation == Relation::Equal) addMultiple(rows[i], weights[i], entry.marker);
    addMultiple(rows[i], weights[i], entry.other);
  }
}

void ConstraintSolver::clearObjectives() {
  if (areObjectivesClear_) return;
  areObjectivesClear_ = true;
  for (const auto& [priority, index] : objectives_) {
    const int basic = rows_[index].basic;
    dropRow(index);
    freeSymbol(basic);
  }
  objectives_.clear();
}

void ConstraintSolver::restoreObjectives() {
  areObjectivesClear_ = false;
  for (const Entry& entry : entries_)
    if (entry.isIn && entry.rule.priority < required) addErrors(entry, 1);
  isOptimal_ = false;
}

// Solving.

void ConstraintSolver::solve() {
  if (!std::exchange(isChanged_, false)) return;
  settle();
  // What was set aside may hold by now. It is tried in the order in which it was added: what gives way to it came later, and
  // has its turn after it.
  std::vector<int> tried;
  for (long after = 0;;) {
    const auto next = std::find_if(setAside_.begin(), setAside_.end(), [&](int one) { return entries_[one].order > after; });
    if (next == setAside_.end()) break;
    const int index = *next;
    after = entries_[index].order;
    tried.push_back(index);
    setAside_.erase(next);
    entries_[index].isSetAside = false;
    enter(entries_[index]);
    settle();
  }
  evaluateDefinitions();
  for (const int index : tried)
    if (!entries_[index].isSetAside) entries_[index].isReported = false;
  for (const int index : setAside_) {
    Entry& entry = entries_[index];
    if (std::exchange(entry.isReported, true)) continue;
    conflicts_.push_back({static_cast<Constraint>(index), {}});
    for (const int other : entry.inTheWay) conflicts_.back().others.push_back(static_cast<Constraint>(other));
  }
}

void ConstraintSolver::settle() {
  // Far more than a solution takes: who gets there walks in a circle, or has lost what the numbers meant.
  const long limit = 1000 + 20 * static_cast<long>(rows_.size() + symbols_.size());
  settleWithin(pivotCount_ + limit);
  if (infeasible_.empty() && isOptimal_) return;
  rebuild();
  settleWithin(pivotCount_ + limit);
  infeasible_.clear();
  isOptimal_ = true;
}

void ConstraintSolver::settleWithin(long limit) {
  // The dual simplex needs an optimum to start from. Without objectives everything is one.
  if (!infeasible_.empty() && !isOptimal_) clearObjectives();
  makeFeasible(limit);
  if (areObjectivesClear_) restoreObjectives();
  if (infeasible_.empty() && !isOptimal_) optimize(limit);
}

void ConstraintSolver::makeFeasible(long limit) {
  const long patience = pivotCount_ + static_cast<long>(rows_.size()) + 200;
  while (!infeasible_.empty() && pivotCount_ < limit) {
    isCareful_ = pivotCount_ > patience;
    if (isCareful_) {
      std::erase_if(infeasible_, [&](int row) { return rows_[row].basic < 0 || isFeasible(rows_[row]); });
      const auto first = std::min_element(infeasible_.begin(), infeasible_.end(),
                                          [&](int a, int b) { return rows_[a].basic < rows_[b].basic; });
      if (first == infeasible_.end()) break;
      std::iter_swap(first, infeasible_.end() - 1);
    }
    const int index = infeasible_.back();
    if (rows_[index].basic < 0 || isFeasible(rows_[index])) {
      infeasible_.pop_back();
    } else if (!mendRow(index)) {
      resolveConflict(index);
    }
  }
}

// False if no exchange helps: what the row says cannot be.
bool ConstraintSolver::mendRow(int rowIndex) {
  const Row& row = rows_[rowIndex];
  for (const Cell& cell : row.cells) {
    if (symbols_[cell.symbol].kind != Kind::Variable || std::abs(cell.coefficient) < pivotEpsilon) continue;
    pivot(rowIndex, cell.symbol);
    return true;
  }
  const bool isDummy = symbols_[row.basic].kind == Kind::Dummy;
  int entering = dualEntering(row, isDummy && row.constant > constantEpsilon ? -1 : 1);
  // One that is 0 as it must be leaves either way.
  if (entering < 0 && isDummy && std::abs(row.constant) <= constantEpsilon) {
    entering = dualEntering(row, -1);
    if (entering < 0) {
      // Only what rounding left, or others that are 0.
      const std::vector<Cell> cells = row.cells;
      for (const Cell& cell : cells)
        if (symbols_[cell.symbol].kind != Kind::Dummy)
          addExpression(rowIndex, -cell.coefficient, std::vector<Cell>{{cell.symbol, 1}}, 0);
      return true;
    }
  }
  if (entering < 0) return false;
  pivot(rowIndex, entering);
  return true;
}

// Of the parameters that move the row's value in the direction of `sign`, the one that costs least for it.
int ConstraintSolver::dualEntering(const Row& row, double sign) const {
  std::vector<Cell> candidates;
  for (const Cell& cell : row.cells)
    if (isRestricted(cell.symbol) && sign * cell.coefficient > pivotEpsilon) candidates.push_back(cell);
  if (candidates.empty()) return -1;
  std::vector<double> ratios(candidates.size());
  for (const auto& [priority, index] : objectives_) {
    if (candidates.size() == 1) break;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < candidates.size(); ++i) {
      ratios[i] = coefficientIn(rows_[index], candidates[i].symbol) / std::abs(candidates[i].coefficient);
      least = std::min(least, ratios[i]);
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < candidates.size(); ++i)
      if (ratios[i] <= least + costEpsilon(priority)) candidates[kept++] = candidates[i];
    candidates.resize(kept);
  }
  if (isCareful_) return candidates.front().symbol;
  const auto best = std::max_element(candidates.begin(), candidates.end(), [](const Cell& a, const Cell& b) {
    return std::abs(a.coefficient) < std::abs(b.coefficient) - coefficientEpsilon;
  });
  return best->symbol;
}

// The row is a sum of required constraints that cannot be. The last of them goes.
void ConstraintSolver::resolveConflict(int rowIndex) {
  const Row& row = rows_[rowIndex];
  std::vector<int> taking{ownerOf_[row.basic]};
  for (const Cell& cell : row.cells)
    if (ownerOf_[cell.symbol] >= 0 && std::abs(cell.coefficient) >= pivotEpsilon) taking.push_back(ownerOf_[cell.symbol]);
  std::erase_if(taking, [&](int index) { return index < 0 || entries_[index].rule.priority < required; });
  const auto last =
      std::max_element(taking.begin(), taking.end(), [&](int a, int b) { return entries_[a].order < entries_[b].order; });
  if (last == taking.end()) {  // only by a loss of numbers
    std::erase(infeasible_, rowIndex);
    return;
  }
  const int index = *last;
  Entry& entry = entries_[index];
  taking.erase(last);
  std::sort(taking.begin(), taking.end(), [&](int a, int b) { return entries_[a].order < entries_[b].order; });
  entry.inTheWay = taking;
  // Its own row goes without a trace. Otherwise an exchange has to take place that no objective allows for.
  const bool wasOptimal = isOptimal_;
  if (entry.marker == row.basic) {
    leave(entry);
    isOptimal_ = wasOptimal;
  } else {
    clearObjectives();
    pivot(rowIndex, entry.marker);
    leave(entry);
  }
  entry.isSetAside = true;
  setAside_.push_back(index);
  std::sort(setAside_.begin(), setAside_.end(), [&](int a, int b) { return entries_[a].order < entries_[b].order; });
}

void ConstraintSolver::optimize(long limit) {
  long exchangesAtZero = 0;
  while (pivotCount_ < limit) {
    const int entering = primalEntering();
    if (entering < 0) {
      isOptimal_ = true;
      return;
    }
    int best = -1;
    double least = std::numeric_limits<double>::infinity(), size = 0;
    for (const int index : symbols_[entering].column) {
      const Row& row = rows_[index];
      const Kind kind = symbols_[row.basic].kind;
      const double coefficient = coefficientIn(row, entering);
      if (kind == Kind::Dummy ? std::abs(coefficient) < pivotEpsilon
                              : !isRestricted(row.basic) || coefficient > -pivotEpsilon)
        continue;
      const double ratio = kind == Kind::Dummy ? 0 : std::max(row.constant, 0.0) / -coefficient;
      const bool isTie = best >= 0 && std::abs(ratio - least) <= coefficientEpsilon;
      // Of several that stop it alike, the largest coefficient is the safest; after a while at the same place the order of
      // symbols is what leads out of a circle.
      const bool isBetterTie =
          best >= 0 && exchangesAtZero > 50 ? row.basic < rows_[best].basic : std::abs(coefficient) > size;
      if (isTie ? !isBetterTie : ratio > least) continue;
      best = index;
      least = ratio;
      size = std::abs(coefficient);
    }
    // Nothing stops it, which only a loss of numbers can be.
    if (best < 0) {
      isOptimal_ = true;
      return;
    }
    exchangesAtZero = least > coefficientEpsilon ? 0 : exchangesAtZero + 1;
    pivot(best, entering);
  }
}

// A parameter that, as it grows, makes an objective less and none of higher priority more; -1 without one.
int ConstraintSolver::primalEntering() const {
  for (auto level = objectives_.begin(); level != objectives_.end(); ++level) {
    const double epsilon = costEpsilon(level->first);
    for (const Cell& cell : rows_[level->second].cells) {
      if (cell.coefficient >= -epsilon || !isRestricted(cell.symbol)) continue;
      bool isFreeAbove = true;
      for (auto above = objectives_.begin(); above != level && isFreeAbove; ++above)
        isFreeAbove = std::abs(coefficientIn(rows_[above->second], cell.symbol)) <= costEpsilon(above->first);
      if (isFreeAbove) return cell.symbol;
    }
  }
  return -1;
}

// From the constraints again, without what rounding and circles have left.
void ConstraintSolver::rebuild() {
  for (Symbol& symbol : symbols_) {
    symbol.column.clear();
    symbol.row = -1;
  }
  rows_.clear();
  freeRows_.clear();
  objectives_.clear();
  infeasible_.clear();
  areObjectivesClear_ = false;
  for (std::size_t i = 0; i < symbols_.size(); ++i) {
    const int symbol = static_cast<int>(i);
    noteChange(symbol);
    const Kind kind = symbols_[i].kind;
    if (kind != Kind::Variable && kind != Kind::Unused) freeSymbol(symbol);
  }
  std::vector<Entry*> entries;
  for (Entry& entry : entries_)
    if (entry.isIn && entry.defined < 0) entries.push_back(&entry);
  std::sort(entries.begin(), entries.end(), [](const Entry* a, const Entry* b) { return a->order < b->order; });
  for (Entry* entry : entries) enterSimplex(*entry);
}

}  // namespace tessaluna::platform
