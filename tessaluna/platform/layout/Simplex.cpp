#include "tessaluna/platform/layout/Simplex.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessaluna::platform {

// Equations.

void Simplex::add(std::span<const Cell> terms, double constant, const Markers& markers) {
  // 0 = terms - constant - sign * marker + sign * other, as a row of nothing yet.
  const int index = tableau_.addRow();
  for (const Cell& term : terms) tableau_.addMultiple(index, term.coefficient, term.symbol);
  tableau_.addConstant(index, -constant);
  const Tableau::Row& row = tableau_.row(index);
  int subject = -1;
  for (const Cell& cell : row.cells) {
    if (tableau_.kindOf(cell.symbol) != Kind::Variable || std::abs(cell.coefficient) < Tableau::pivotEpsilon) continue;
    // One that few rows have is replaced in few rows.
    if (subject < 0 || tableau_.rowsWith(cell.symbol).size() < tableau_.rowsWith(subject).size()) subject = cell.symbol;
  }
  tableau_.addCell(index, {markers.marker, -markers.sign});
  if (markers.other >= 0) tableau_.addCell(index, {markers.other, markers.sign});
  if (subject >= 0) return give(index, subject);
  // The marker or the other one is as much as is missing, whichever of them is not negative then.
  const bool isOther = markers.other >= 0 && markers.sign * row.constant < 0;
  give(index, isOther ? markers.other : markers.marker);
  if (tableau_.kindOf(markers.marker) == Kind::Dummy) tableau_.suspects().push_back(index);
}

void Simplex::remove(const Markers& markers) {
  const bool isMarkerGiven = tableau_.rowOf(markers.marker) >= 0;
  if (!isMarkerGiven && (markers.other < 0 || tableau_.rowOf(markers.other) < 0)) exchangeOut(markers.marker);
  for (const int own : {markers.marker, markers.other}) {
    if (own < 0) continue;
    objectives_.remove(own);
    tableau_.removeSymbol(own);
  }
  // A slack of its own that was loose held nothing.
  if (markers.other >= 0 || !isMarkerGiven) isBest_ = false;
}

// Gives the parameter a row, so that what is feasible stays so: it may move either way from here, as it goes.
void Simplex::exchangeOut(int marker) {
  int best = -1, rank = std::numeric_limits<int>::max();
  double ratio = 0, size = 0;
  for (const int index : tableau_.rowsWith(marker)) {
    const Tableau::Row& row = tableau_.row(index);
    const Kind kind = tableau_.kindOf(row.basic);
    const double coefficient = row.coefficientOf(marker);
    if (std::abs(coefficient) < Tableau::pivotEpsilon) continue;
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
  if (best >= 0) exchange(best, marker);
}

void Simplex::changeConstant(const Markers& markers, double difference) {
  // As if the marker grew by the difference, over its sign.
  const double ofMarker = markers.sign * difference;
  if (const int row = tableau_.rowOf(markers.marker); row >= 0) tableau_.addConstant(row, -ofMarker);
  else if (const int other = markers.other < 0 ? -1 : tableau_.rowOf(markers.other); other >= 0)
    tableau_.addConstant(other, ofMarker);
  else tableau_.shift(markers.marker, ofMarker);
}

void Simplex::clear() {
  tableau_.removeRows();
  objectives_.clear();
  isBest_ = true;
  areCostsClear_ = false;
}

// Costs.

void Simplex::addCost(double priority, int symbol, double cost) {
  if (tableau_.rowOf(symbol) < 0) return objectives_.add(priority, symbol, cost);
  isBest_ = false;
  for (const Cell& cell : tableau_.row(tableau_.rowOf(symbol)).cells)
    objectives_.add(priority, cell.symbol, cost * cell.coefficient);
}

void Simplex::clearCosts() {
  objectives_.clear();
  areCostsClear_ = true;
  isBest_ = false;
}

void Simplex::give(int row, int entering) {
  tableau_.pivot(row, entering);
  objectives_.replace(entering, tableau_.row(row));
}

void Simplex::exchange(int row, int entering) {
  ++pivotCount_;
  give(row, entering);
}

// Feasible values: the dual simplex.

int Simplex::makeFeasible(long maxPivots) {
  const long patience = pivotCount_ + static_cast<long>(tableau_.rowCount()) + 200;
  std::vector<int>& suspects = tableau_.suspects();
  while (!suspects.empty() && pivotCount_ < maxPivots) {
    isCareful_ = pivotCount_ > patience;
    if (isCareful_) {
      std::erase_if(suspects, [&](int row) { return tableau_.isFeasible(row); });
      const auto first = std::min_element(suspects.begin(), suspects.end(),
                                          [&](int a, int b) { return tableau_.row(a).basic < tableau_.row(b).basic; });
      if (first == suspects.end()) break;
      std::iter_swap(first, suspects.end() - 1);
    }
    const int index = suspects.back();
    if (tableau_.isFeasible(index)) suspects.pop_back();
    else if (!mend(index)) return index;
  }
  return -1;
}

void Simplex::stopMending(int row) { std::erase(tableau_.suspects(), row); }

void Simplex::giveUp() {
  tableau_.suspects().clear();
  isBest_ = true;
}

// False if no exchange helps: what the row says cannot be.
bool Simplex::mend(int index) {
  const Tableau::Row& row = tableau_.row(index);
  const auto free = std::find_if(row.cells.begin(), row.cells.end(), [&](const Cell& cell) {
    return tableau_.kindOf(cell.symbol) == Kind::Variable && std::abs(cell.coefficient) >= Tableau::pivotEpsilon;
  });
  int entering = free == row.cells.end() ? -1 : free->symbol;
  const bool isDummy = tableau_.kindOf(row.basic) == Kind::Dummy;
  if (entering < 0) entering = dualEntering(row, isDummy && row.constant > Tableau::constantEpsilon ? -1 : 1);
  // One that is 0 as it must be leaves either way.
  if (entering < 0 && isDummy && std::abs(row.constant) <= Tableau::constantEpsilon) {
    entering = dualEntering(row, -1);
    if (entering < 0) {
      // Only what rounding left, or others that are 0.
      const std::vector<Cell> cells = row.cells;
      for (const Cell& cell : cells)
        if (tableau_.kindOf(cell.symbol) != Kind::Dummy) tableau_.addCell(index, {cell.symbol, -cell.coefficient});
      return true;
    }
  }
  if (entering < 0) return false;
  exchange(index, entering);
  return true;
}

// Of the parameters that move the row's value in the direction of `sign`, the one that costs least for it.
int Simplex::dualEntering(const Tableau::Row& row, double sign) const {
  std::vector<Cell> candidates;
  for (const Cell& cell : row.cells)
    if (tableau_.isRestricted(cell.symbol) && sign * cell.coefficient > Tableau::pivotEpsilon) candidates.push_back(cell);
  if (candidates.empty()) return -1;
  objectives_.keepCheapest(candidates);
  if (isCareful_) return candidates.front().symbol;
  const auto best = std::max_element(candidates.begin(), candidates.end(), [](const Cell& a, const Cell& b) {
    return std::abs(a.coefficient) < std::abs(b.coefficient) - Tableau::coefficientEpsilon;
  });
  return best->symbol;
}

// The least costs: the primal simplex.

void Simplex::makeBest(long maxPivots) {
  constexpr long patience = 50;
  long exchangesAtZero = 0;
  const auto canGrow = [&](int symbol) { return tableau_.isRestricted(symbol) && tableau_.rowOf(symbol) < 0; };
  while (pivotCount_ < maxPivots) {
    const int entering = objectives_.takeImproving(canGrow);
    if (entering < 0) {
      isBest_ = true;
      return;
    }
    const int leaving = primalLeaving(entering, exchangesAtZero > patience);
    if (leaving < 0) continue;  // nothing stops it, which only a loss of numbers can be
    exchangesAtZero = tableau_.row(leaving).constant > Tableau::coefficientEpsilon ? 0 : exchangesAtZero + 1;
    exchange(leaving, entering);
  }
}

// The row that stops the parameter first as it grows.
int Simplex::primalLeaving(int entering, bool isStuck) const {
  int best = -1;
  double least = std::numeric_limits<double>::infinity(), size = 0;
  for (const int index : tableau_.rowsWith(entering)) {
    const Tableau::Row& row = tableau_.row(index);
    const bool isDummy = tableau_.kindOf(row.basic) == Kind::Dummy;
    const double coefficient = row.coefficientOf(entering);
    if (isDummy ? std::abs(coefficient) < Tableau::pivotEpsilon
                : !tableau_.isRestricted(row.basic) || coefficient > -Tableau::pivotEpsilon)
      continue;
    const double ratio = isDummy ? 0 : std::max(row.constant, 0.0) / -coefficient;
    const bool isTie = best >= 0 && std::abs(ratio - least) <= Tableau::coefficientEpsilon;
    // Of several that stop it alike, the largest coefficient is the safest; after a while at the same place the order of
    // symbols is what leads out of a circle.
    const bool isBetterTie = best >= 0 && isStuck ? row.basic < tableau_.row(best).basic : std::abs(coefficient) > size;
    if (isTie ? !isBetterTie : ratio > least) continue;
    best = index;
    least = ratio;
    size = std::abs(coefficient);
  }
  return best;
}

}  // namespace tessaluna::platform
