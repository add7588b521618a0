// The rows of a simplex. Each gives a symbol by a constant and a sum of other symbols, the parameters, whose value is 0. A
// parameter knows the rows that have it, so that a change costs what it moves.
#pragma once

#include <span>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class Tableau {
 public:
  // A variable has any value; slacks and errors are not negative, and a dummy is 0.
  enum class Kind { Unused, Variable, Slack, Error, Dummy };
  struct Cell {
    int symbol;
    double coefficient;
  };
  struct Row {
    int basic = -1;  // the symbol that it gives, -1 of a row that has none yet
    double constant = 0;
    std::vector<Cell> cells;  // by symbol

    double coefficientOf(int symbol) const;
  };
  static constexpr double coefficientEpsilon = 1e-10;  // below it a coefficient is what rounding left of 0
  static constexpr double pivotEpsilon = 1e-7;         // nothing is divided by less
  static constexpr double constantEpsilon = 1e-7;      // points

  int addSymbol(Kind kind);
  void removeSymbol(int symbol);  // with its row, or from all rows
  Kind kindOf(int symbol) const { return at(symbol).kind; }
  bool isRestricted(int symbol) const { return kindOf(symbol) == Kind::Slack || kindOf(symbol) == Kind::Error; }
  int rowOf(int symbol) const { return at(symbol).row; }  // -1 of a parameter
  const std::vector<int>& rowsWith(int parameter) const { return at(parameter).column; }
  double valueOf(int symbol) const { return rowOf(symbol) >= 0 ? row(rowOf(symbol)).constant : 0; }
  bool isMentioned(int symbol) const { return rowOf(symbol) >= 0 || !rowsWith(symbol).empty(); }

  int addRow();  // gives nothing, and is 0
  const Row& row(int index) const { return rows_[static_cast<std::size_t>(index)]; }
  std::size_t rowCount() const { return rows_.size(); }
  std::size_t symbolCount() const { return symbols_.size(); }
  void addConstant(int row, double constant);
  void addMultiple(int row, double factor, int symbol);  // or of what gives it
  void addCell(int row, Cell cell);                      // of a parameter
  // The row gives the entering parameter, and what it gave becomes one.
  void pivot(int row, int entering);
  void shift(int parameter, double difference);  // as if its value grew by that
  void removeRows();                             // and all symbols but the variables

  // Rows that may give a symbol a value that it must not have: whoever has handled one removes it.
  std::vector<int>& suspects() { return suspects_; }
  const std::vector<int>& suspects() const { return suspects_; }
  bool isFeasible(int row) const;
  // Variables whose values may have changed since the last call, each once.
  std::vector<int> takeMoved();

 private:
  struct Symbol {
    Kind kind = Kind::Unused;
    bool isMoved = false;     // in moved_
    int row = -1;             // that gives it
    std::vector<int> column;  // the rows that have it
  };

  const Symbol& at(int symbol) const { return symbols_[static_cast<std::size_t>(symbol)]; }
  void removeRow(int index);
  void leaveColumn(int symbol, int row);
  void addCells(int row, double factor, std::span<const Cell> cells);
  void constantDidChange(int row);
  void noteMove(int symbol);

  std::vector<Symbol> symbols_;
  std::vector<Row> rows_;
  std::vector<int> freeSymbols_, freeRows_, suspects_, moved_;
  std::vector<Cell> scratch_;
};

}  // namespace tessaluna::platform
