// What a simplex makes as small as it can: sums of symbols, one for each priority. One of higher priority counts before all
// below it, however much they have. The cost of a symbol is what a sum grows by as the symbol does.
#pragma once

#include <functional>
#include <map>
#include <queue>
#include <vector>

#include "tessaluna/platform/layout/Tableau.h"

namespace tessaluna::platform {

class Objectives {
 public:
  // Decides where the others leave a choice: below all of them, and more coarsely, as its costs are large.
  static constexpr double tiePriority = -1;

  void add(double priority, int symbol, double cost);
  // The symbol has become what the row says.
  void replace(int symbol, const Tableau::Row& row);
  void remove(int symbol);
  void clear();

  // A symbol that makes a sum less as it grows, and none of higher priority more: the least such symbol among those that
  // `canGrow`. -1 without one.
  template <class CanGrow>
  int takeImproving(CanGrow canGrow);
  // Leaves the candidates that cost least for each unit of their coefficients.
  void keepCheapest(std::vector<Tableau::Cell>& candidates) const;

 private:
  // Costs in no order, with the place of each symbol's: thousands of symbols have some, and each exchange changes a few.
  class Sum {
   public:
    double costOf(int symbol) const;
    void add(int symbol, double cost);
    void remove(int symbol);
    bool isEmpty() const { return cells_.empty(); }

   private:
    std::vector<Tableau::Cell> cells_;
    std::vector<int> places_;  // by symbol, -1 without a cost
  };

  void note(int symbol);
  bool isImproving(int symbol) const;

  std::map<double, Sum, std::greater<>> sums_;  // by priority
  // Symbols whose costs have changed: only such can have become ones that make a sum less.
  std::priority_queue<int, std::vector<int>, std::greater<>> changed_;
  std::vector<bool> isChanged_;  // by symbol
};

template <class CanGrow>
int Objectives::takeImproving(CanGrow canGrow) {
  while (!changed_.empty()) {
    const int symbol = changed_.top();
    changed_.pop();
    isChanged_[static_cast<std::size_t>(symbol)] = false;
    if (canGrow(symbol) && isImproving(symbol)) return symbol;
  }
  return -1;
}

}  // namespace tessaluna::platform
