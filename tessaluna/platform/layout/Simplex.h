// Linear equations between variables, each with markers that say by how much it may be missed. Of all values that keep every
// marker within its bounds it finds those with the least costs, and mends them when constants change.
//
// After Greg J. Badros, Alan Borning, Peter J. Stuckey: "The Cassowary linear arithmetic constraint solving algorithm", ACM
// Transactions on Computer-Human Interaction 8 (4), 2001: every symbol that is not a parameter has a row that gives it by
// parameters; a changed constant moves the rows in its column, and the dual simplex mends those that it moves too far. Different
// from there, priorities are compared strictly (each has an objective of its own), and an equation that cannot be is handed to
// the caller instead of refused.
#pragma once

#include <span>

#include "tessaluna/platform/layout/Objectives.h"
#include "tessaluna/platform/layout/Tableau.h"

namespace tessaluna::platform {

class Simplex {
 public:
  using Kind = Tableau::Kind;
  using Cell = Tableau::Cell;
  // The sum of the terms less the constant is sign * marker - sign * other.
  struct Markers {
    int marker = -1, other = -1;  // symbols; there may be no other
    double sign = 1;
  };

  int addSymbol(Kind kind) { return tableau_.addSymbol(kind); }
  void removeVariable(int variable) { tableau_.removeSymbol(variable); }  // that no equation has
  void add(std::span<const Cell> terms, double constant, const Markers& markers);
  void remove(const Markers& markers);
  void changeConstant(const Markers& markers, double difference);
  void clear();  // but for the variables

  // A cost of what an equation that is added is missed by. A cost that is taken back is added with the other sign, before its
  // equation is removed.
  void addCost(double priority, int symbol, double cost);
  // For as long as only feasibility matters, none counts; then all of them have to be added again.
  void clearCosts();
  void restoreCosts() { areCostsClear_ = false; }
  bool areCostsClear() const { return areCostsClear_; }
  bool isBest() const { return isBest_; }

  // Values within all bounds, or as many exchanges as allowed. Gives a row that cannot be within its own, which somebody has
  // to make possible; -1 without one.
  int makeFeasible(long maxPivots);
  bool isFeasible() const { return tableau_.suspects().empty(); }
  // From feasible values.
  void makeBest(long maxPivots);
  // The row gives the entering parameter from now on.
  void exchange(int row, int entering);
  void stopMending(int row);
  void giveUp();  // takes the current solution as feasible and optimal

  const Tableau::Row& row(int index) const { return tableau_.row(index); }
  double valueOf(int symbol) const { return tableau_.valueOf(symbol); }
  bool isVariable(int symbol) const { return tableau_.kindOf(symbol) == Kind::Variable; }
  bool isMentioned(int symbol) const { return tableau_.isMentioned(symbol); }
  std::vector<int> takeMoved() { return tableau_.takeMoved(); }
  long pivotCount() const { return pivotCount_; }
  // More exchanges than a solution takes: who makes as many walks in a circle, or has lost what the numbers meant.
  long patience() const { return 1000 + 20 * static_cast<long>(tableau_.rowCount() + tableau_.symbolCount()); }

 private:
  void give(int row, int entering);
  void exchangeOut(int marker);
  bool mend(int row);
  int dualEntering(const Tableau::Row& row, double sign) const;
  int primalLeaving(int entering, bool isStuck) const;

  Tableau tableau_;
  Objectives objectives_;
  long pivotCount_ = 0;
  bool isBest_ = true;  // no exchange makes the costs less
  bool areCostsClear_ = false;
  bool isCareful_ = false;  // goes by the order of symbols, which is slow and ends
};

}  // namespace tessaluna::platform
