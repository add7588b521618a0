#include "tessaluna/platform/layout/Tableau.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaluna::platform {

namespace {

// In the order of symbols: the cell of that one, or where it would be.
auto placeOf(auto& cells, int symbol) {
  return std::lower_bound(cells.begin(), cells.end(), symbol,
                          [](const Tableau::Cell& cell, int sought) { return cell.symbol < sought; });
}

int taken(std::vector<int>& free) {
  const int index = free.back();
  free.pop_back();
  return index;
}

}  // namespace

double Tableau::Row::coefficientOf(int symbol) const {
  const auto found = placeOf(cells, symbol);
  return found != cells.end() && found->symbol == symbol ? found->coefficient : 0;
}

// Symbols.

int Tableau::addSymbol(Kind kind) {
  int symbol = static_cast<int>(symbols_.size());
  if (freeSymbols_.empty()) symbols_.emplace_back();
  else symbol = taken(freeSymbols_);
  symbols_[symbol].kind = kind;
  return symbol;
}

void Tableau::removeSymbol(int symbol) {
  if (rowOf(symbol) >= 0) removeRow(rowOf(symbol));
  for (const int index : std::exchange(symbols_[symbol].column, {})) {
    std::vector<Cell>& cells = rows_[index].cells;
    cells.erase(placeOf(cells, symbol));
  }
  symbols_[symbol].kind = Kind::Unused;
  freeSymbols_.push_back(symbol);
}

void Tableau::leaveColumn(int symbol, int row) {
  std::vector<int>& column = symbols_[symbol].column;
  *std::find(column.begin(), column.end(), row) = column.back();
  column.pop_back();
}

void Tableau::noteMove(int symbol) {
  Symbol& moved = symbols_[symbol];
  if (moved.kind == Kind::Variable && !std::exchange(moved.isMoved, true)) moved_.push_back(symbol);
}

std::vector<int> Tableau::takeMoved() {
  std::vector<int> result = std::exchange(moved_, {});
  for (const int symbol : result) symbols_[symbol].isMoved = false;
  std::erase_if(result, [&](int symbol) { return kindOf(symbol) != Kind::Variable; });
  return result;
}

// Rows.

int Tableau::addRow() {
  if (!freeRows_.empty()) return taken(freeRows_);
  rows_.emplace_back();
  return static_cast<int>(rows_.size()) - 1;
}

void Tableau::removeRow(int index) {
  Row& row = rows_[index];
  for (const Cell& cell : row.cells) leaveColumn(cell.symbol, index);
  if (row.basic >= 0) symbols_[row.basic].row = -1;
  row.cells.clear();
  row.basic = -1;
  row.constant = 0;
  freeRows_.push_back(index);
}

void Tableau::removeRows() {
  rows_.clear();
  freeRows_.clear();
  suspects_.clear();
  for (std::size_t i = 0; i < symbols_.size(); ++i) {
    const int symbol = static_cast<int>(i);
    symbols_[i].column.clear();
    symbols_[i].row = -1;
    noteMove(symbol);
    if (kindOf(symbol) != Kind::Variable && kindOf(symbol) != Kind::Unused) removeSymbol(symbol);
  }
}

void Tableau::addConstant(int index, double constant) {
  if (constant == 0) return;
  rows_[index].constant += constant;
  constantDidChange(index);
}

void Tableau::addMultiple(int index, double factor, int symbol) {
  if (rowOf(symbol) < 0) return addCell(index, {symbol, factor});
  const Row& added = rows_[rowOf(symbol)];
  addCells(index, factor, added.cells);
  addConstant(index, factor * added.constant);
}

void Tableau::addCell(int index, Cell cell) { addCells(index, 1, {&cell, 1}); }

// The cells are in order, too.
void Tableau::addCells(int index, double factor, std::span<const Cell> cells) {
  if (cells.empty()) return;
  Row& row = rows_[index];
  // What comes before all that is added stays where it is, which is most of a long row that grows at its end.
  const auto start = placeOf(row.cells, cells.front().symbol);
  scratch_.clear();
  auto mine = start;
  const auto end = row.cells.end();
  for (const Cell& cell : cells) {
    while (mine != end && mine->symbol < cell.symbol) scratch_.push_back(*mine++);
    const double added = factor * cell.coefficient;
    if (mine != end && mine->symbol == cell.symbol) {
      const double sum = mine->coefficient + added;
      if (std::abs(sum) > coefficientEpsilon) scratch_.push_back({cell.symbol, sum});
      else leaveColumn(cell.symbol, index);
      ++mine;
    } else if (std::abs(added) > coefficientEpsilon) {
      scratch_.push_back({cell.symbol, added});
      symbols_[cell.symbol].column.push_back(index);
    }
  }
  scratch_.insert(scratch_.end(), mine, end);
  row.cells.erase(start, end);
  row.cells.insert(row.cells.end(), scratch_.begin(), scratch_.end());
}

void Tableau::pivot(int index, int entering) {
  Row& row = rows_[index];
  const int leaving = row.basic;
  const auto cell = placeOf(row.cells, entering);
  const double factor = -1 / cell->coefficient;
  row.cells.erase(cell);
  row.constant *= factor;
  for (Cell& one : row.cells) one.coefficient *= factor;
  if (leaving >= 0) {
    row.cells.insert(placeOf(row.cells, leaving), {leaving, -factor});
    symbols_[leaving].column.push_back(index);
    symbols_[leaving].row = -1;
    noteMove(leaving);
  }
  row.basic = entering;
  symbols_[entering].row = index;
  constantDidChange(index);
  for (const int other : std::exchange(symbols_[entering].column, {})) {
    if (other == index) continue;
    const auto replaced = placeOf(rows_[other].cells, entering);
    const double multiple = replaced->coefficient;
    rows_[other].cells.erase(replaced);
    addCells(other, multiple, row.cells);
    addConstant(other, multiple * row.constant);
  }
}

void Tableau::shift(int parameter, double difference) {
  for (const int index : symbols_[parameter].column) addConstant(index, rows_[index].coefficientOf(parameter) * difference);
}

void Tableau::constantDidChange(int index) {
  const Row& row = rows_[index];
  if (row.basic < 0) return;
  noteMove(row.basic);
  if (kindOf(row.basic) == Kind::Dummy || (isRestricted(row.basic) && row.constant < -constantEpsilon))
    suspects_.push_back(index);
}

bool Tableau::isFeasible(int index) const {
  const Row& row = rows_[index];
  if (row.basic < 0) return true;
  switch (kindOf(row.basic)) {
    case Kind::Slack:
    case Kind::Error: return row.constant >= -constantEpsilon;
    case Kind::Dummy:
      return std::abs(row.constant) <= constantEpsilon &&
             std::none_of(row.cells.begin(), row.cells.end(),
                          [&](const Cell& cell) { return kindOf(cell.symbol) != Kind::Dummy; });
    case Kind::Variable:
    case Kind::Unused: return true;
  }
  return true;
}

}  // namespace tessaluna::platform
