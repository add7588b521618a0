#include "tessaluna/platform/layout/ConstraintSolver.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace tessaluna::platform {

// What a program calls.

int ConstraintSolver::addSymbol(Simplex::Kind kind, int owner) {
  const int added = simplex_.addSymbol(kind);
  if (symbols_.size() <= static_cast<std::size_t>(added)) symbols_.resize(static_cast<std::size_t>(added) + 1);
  symbols_[added].owner = owner;
  return added;
}

ConstraintSolver::Variable ConstraintSolver::addVariable() {
  return static_cast<Variable>(addSymbol(Simplex::Kind::Variable, -1));
}

void ConstraintSolver::removeVariable(Variable variable) { simplex_.removeVariable(static_cast<int>(variable)); }

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
  enter(entry);
  isChanged_ = true;
  return static_cast<Constraint>(index);
}

void ConstraintSolver::remove(Constraint constraint) {
  const int index = static_cast<int>(constraint);
  takeOut(index);
  freeEntries_.push_back(index);
}

void ConstraintSolver::takeOut(int index) {
  Entry& entry = entries_[index];
  if (entry.isIn) leave(entry);
  std::erase(setAside_, index);
  entry = {};
  isChanged_ = true;
}

void ConstraintSolver::setRule(Constraint constraint, Rule rule) {
  Entry& entry = entries_[static_cast<int>(constraint)];
  const long order = entry.order;
  takeOut(static_cast<int>(constraint));
  entry.rule = std::move(rule);
  entry.order = order;
  enter(entry);
}

void ConstraintSolver::setConstant(Constraint constraint, double constant) {
  Entry& entry = entries_[static_cast<int>(constraint)];
  const double difference = constant - entry.rule.constant;
  if (difference == 0) return;
  entry.rule.constant = constant;
  isChanged_ = true;
  if (entry.defined >= 0) dirtyDefinitions_.push_back(static_cast<int>(constraint));
  else if (entry.isIn) simplex_.changeConstant(entry.markers, difference);
}

double ConstraintSolver::value(Variable variable) const {
  const Symbol& symbol = symbols_[static_cast<int>(variable)];
  return symbol.definition >= 0 ? symbol.definedValue : simplex_.valueOf(static_cast<int>(variable));
}

bool ConstraintSolver::isSetAside(Constraint constraint) const { return entries_[static_cast<int>(constraint)].isSetAside; }

void ConstraintSolver::noteChange(int symbol) {
  if (!std::exchange(symbols_[symbol].isChanged, true)) changes_.push_back(symbol);
}

std::vector<ConstraintSolver::Variable> ConstraintSolver::takeChanges() {
  std::vector<Variable> result;
  for (const int symbol : std::exchange(changes_, {})) {
    symbols_[symbol].isChanged = false;
    if (simplex_.isVariable(symbol)) result.push_back(static_cast<Variable>(symbol));
  }
  return result;
}

std::vector<ConstraintSolver::Conflict> ConstraintSolver::takeConflicts() { return std::exchange(conflicts_, {}); }

// Constraints come and go.

void ConstraintSolver::enter(Entry& entry) {
  entry.isIn = true;
  const bool isDefinition = define(entry);
  for (const Term& term : entry.rule.terms) ++symbol(term.variable).mentions;
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
    Symbol& defined = symbols_[index];
    const auto isIt = [&](const Term& one) { return one.variable == term.variable; };
    if (defined.mentions > 0 || simplex_.isMentioned(index) || std::abs(term.coefficient) < Tableau::pivotEpsilon ||
        std::count_if(rule.terms.begin(), rule.terms.end(), isIt) > 1)
      continue;
    const int self = indexOf(entry);
    entry.defined = index;
    entry.definitionOrder = ++definitionOrder_;
    defined.definition = self;
    defined.definedValue = 0;
    for (const Term& other : rule.terms)
      if (other.variable != term.variable) symbol(other.variable).users.push_back(self);
    dirtyDefinitions_.push_back(self);
    return true;
  }
  return false;
}

void ConstraintSolver::endDefinition(Entry& entry) {
  Symbol& defined = symbols_[entry.defined];
  defined.definition = -1;
  noteChange(entry.defined);
  dirtyDefinitions_.insert(dirtyDefinitions_.end(), defined.users.begin(), defined.users.end());
  for (const Term& term : entry.rule.terms) std::erase(symbol(term.variable).users, indexOf(entry));
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
      const int definition = symbol(term.variable).definition;
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
  for (const int symbol : simplex_.takeMoved()) {
    noteChange(symbol);
    for (const int user : symbols_[symbol].users) wait(user);
  }
  while (!waiting.empty()) {
    const Entry& entry = entries_[waiting.begin()->second];
    waiting.erase(waiting.begin());
    Symbol& defined = symbols_[entry.defined];
    double sum = entry.rule.constant, own = 1;
    for (const Term& term : entry.rule.terms) {
      if (static_cast<int>(term.variable) == entry.defined) own = term.coefficient;
      else sum -= term.coefficient * value(term.variable);
    }
    const double found = sum / own;
    if (found == defined.definedValue) continue;
    defined.definedValue = found;
    noteChange(entry.defined);
    for (const int user : defined.users) wait(user);
  }
}

// In the simplex.

void ConstraintSolver::enterSimplex(Entry& entry) {
  const Rule& rule = entry.rule;
  const bool isRequired = rule.priority >= required, isEquality = rule.relation == Relation::Equal;
  const int index = indexOf(entry);
  using Kind = Simplex::Kind;
  entry.markers.sign = rule.relation == Relation::AtMost ? -1 : 1;
  entry.markers.marker = addSymbol(!isEquality ? Kind::Slack : isRequired ? Kind::Dummy : Kind::Error, index);
  entry.markers.other = isRequired ? -1 : addSymbol(Kind::Error, index);
  std::vector<Simplex::Cell> terms;
  for (const Term& term : rule.terms) terms.push_back({static_cast<int>(term.variable), term.coefficient});
  simplex_.add(terms, rule.constant, entry.markers);
  addCosts(entry, 1);
}

void ConstraintSolver::leave(Entry& entry) {
  entry.isIn = false;
  for (const Term& term : entry.rule.terms) --symbol(term.variable).mentions;
  if (entry.defined >= 0) return endDefinition(entry);
  addCosts(entry, -1);
  simplex_.remove(entry.markers);
}

void ConstraintSolver::addCosts(const Entry& entry, double factor) {
  if (simplex_.areCostsClear() || entry.rule.priority >= required) return;
  const double priorities[] = {entry.rule.priority, Objectives::tiePriority};
  const double costs[] = {factor, -factor * static_cast<double>(entry.order)};
  for (int i = 0; i < 2; ++i) {
    if (entry.rule.relation == Relation::Equal) simplex_.addCost(priorities[i], entry.markers.marker, costs[i]);
    simplex_.addCost(priorities[i], entry.markers.other, costs[i]);
  }
}

// Solving.

void ConstraintSolver::solve() {
  if (!std::exchange(isChanged_, false)) return;
  settle();
  tryWhatWasSetAside();
  evaluateDefinitions();
  for (const int index : setAside_) {
    Entry& entry = entries_[index];
    if (std::exchange(entry.isReported, true)) continue;
    conflicts_.push_back({static_cast<Constraint>(index), {}});
    for (const int other : entry.inTheWay) conflicts_.back().others.push_back(static_cast<Constraint>(other));
  }
}

// It may hold by now. It is tried in the order in which it was added: what gives way to it came later, and has its turn after it.
void ConstraintSolver::tryWhatWasSetAside() {
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
  for (const int index : tried)
    if (!entries_[index].isSetAside) entries_[index].isReported = false;
}

void ConstraintSolver::settle() {
  settleWithin(simplex_.pivotCount() + simplex_.patience());
  if (simplex_.isFeasible() && simplex_.isBest()) return;
  rebuild();
  settleWithin(simplex_.pivotCount() + simplex_.patience());
  simplex_.giveUp();
}

void ConstraintSolver::settleWithin(long maxPivots) {
  // Feasibility is found from the best values. Without costs all are.
  if (!simplex_.isFeasible() && !simplex_.isBest()) simplex_.clearCosts();
  for (int row = 0; row >= 0;)
    if (row = simplex_.makeFeasible(maxPivots); row >= 0) setAside(row);
  if (simplex_.areCostsClear()) {
    simplex_.restoreCosts();
    for (const Entry& entry : entries_)
      if (entry.isIn) addCosts(entry, 1);
  }
  if (simplex_.isFeasible() && !simplex_.isBest()) simplex_.makeBest(maxPivots);
}

// The row is a sum of required constraints that cannot be. The last of them goes.
void ConstraintSolver::setAside(int row) {
  const Tableau::Row& sum = simplex_.row(row);
  std::vector<int> taking{symbols_[sum.basic].owner};
  for (const Simplex::Cell& cell : sum.cells)
    if (std::abs(cell.coefficient) >= Tableau::pivotEpsilon) taking.push_back(symbols_[cell.symbol].owner);
  std::erase_if(taking, [&](int index) { return index < 0 || entries_[index].rule.priority < required; });
  const auto isEarlier = [&](int a, int b) { return entries_[a].order < entries_[b].order; };
  std::sort(taking.begin(), taking.end(), isEarlier);
  if (taking.empty()) return simplex_.stopMending(row);  // only by a loss of numbers
  const int index = taking.back();
  Entry& entry = entries_[index];
  taking.pop_back();
  entry.inTheWay = std::move(taking);
  // Its own row goes without a trace. Otherwise an exchange has to take place that no cost allows for.
  if (entry.markers.marker != sum.basic) {
    simplex_.clearCosts();
    simplex_.exchange(row, entry.markers.marker);
  }
  leave(entry);
  entry.isSetAside = true;
  setAside_.push_back(index);
  std::sort(setAside_.begin(), setAside_.end(), isEarlier);
}

// From the constraints again, without what rounding and circles have left.
void ConstraintSolver::rebuild() {
  simplex_.clear();
  std::vector<Entry*> entries;
  for (Entry& entry : entries_)
    if (entry.isIn && entry.defined < 0) entries.push_back(&entry);
  std::sort(entries.begin(), entries.end(), [](const Entry* a, const Entry* b) { return a->order < b->order; });
  for (Entry* entry : entries) enterSimplex(*entry);
}

}  // namespace tessaluna::platform
