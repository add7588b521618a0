// Finds values for variables under linear constraints, and again when some of these change: what a change costs depends on
// what it moves, and not on how much there is. It knows of numbers only; LayoutEngine makes views of them.
//
// An incremental simplex after Greg J. Badros, Alan Borning, Peter J. Stuckey: "The Cassowary linear arithmetic constraint
// solving algorithm", ACM Transactions on Computer-Human Interaction 8 (4), 2001. Every variable that is not a parameter has a
// row that gives it by parameters; a changed constant moves the rows in its column, and the dual simplex mends those that
// it moves too far. Different from there, priorities are compared strictly (each has an objective of its own), and required
// constraints that conflict are set aside instead of refused. And a required equation about a variable of which nothing was said
// yet only defines it: it stays out of the simplex, is evaluated afterwards, and comes in once anything but another definition
// has the variable. Of a long chain of boxes the simplex so knows nothing.
//
// What is optimal: the sum of the errors of the highest priority is the least possible, then that of the next one, and so
// on. Where this leaves a choice, a constraint that was added earlier holds before one that was added later.
//
// Variables have any sign. One that no constraint determines is 0.
#pragma once

#include <map>
#include <span>
#include <vector>

namespace tessaluna::platform {

class ConstraintSolver {
 public:
  enum class Variable : int {};
  enum class Constraint : int {};
  enum class Relation { AtMost = -1, Equal = 0, AtLeast = 1 };
  static constexpr double required = 1000;

  struct Term {
    Variable variable;
    double coefficient;
  };
  // The sum of the terms, compared with the constant. At the priority `required` or above it must hold, below it should.
  struct Rule {
    std::vector<Term> terms;  // a variable may come more than once
    Relation relation = Relation::Equal;
    double constant = 0;
    double priority = required;
  };
  // Required constraints that cannot hold together. Of them the one that was added last is set aside: it is as if it were
  // absent, until a change lets it hold again.
  struct Conflict {
    Constraint setAside;
    std::vector<Constraint> others;
  };

  Variable addVariable();
  void removeVariable(Variable variable);  // once no constraint has it any more
  Constraint add(Rule rule);
  void remove(Constraint constraint);
  void setConstant(Constraint constraint, double constant);

  // Brings the values up to date. The rest reads what the last one found.
  void solve();
  double value(Variable variable) const;
  bool isSetAside(Constraint constraint) const;
  // Variables whose values may have changed since the last call, each once.
  std::vector<Variable> takeChanges();
  // Conflicts that have appeared since the last call. One that lasts is not repeated.
  std::vector<Conflict> takeConflicts();

  // How many exchanges of a parameter there have been, for measurements.
  long pivotCount() const { return pivotCount_; }

 private:
  // Everything that has a column is a symbol: an index into symbols_.
  enum class Kind { Unused, Variable, Slack, Error, Dummy, Objective };
  struct Symbol {
    Kind kind = Kind::Unused;
    bool isChanged = false;   // in changes_
    bool isMoved = false;     // in moved_
    int row = -1;             // the row that gives it; -1 for a parameter, whose value is 0
    std::vector<int> column;  // the rows that have it
    // Of a variable: how often constraints have it, the one that defines it, its value by that, and the definitions that have it.
    int mentions = 0, definition = -1;
    double definedValue = 0;
    std::vector<int> users;
  };
  struct Cell {
    int symbol;
    double coefficient;
  };
  struct Row {
    int basic = -1;
    double constant = 0;
    std::vector<Cell> cells;  // by symbol
  };
  struct Entry {
    Rule rule;
    long order = 0;
    bool isInUse = false, isIn = false, isSetAside = false, isReported = false;
    // What the row gets besides the rule's terms: a slack of an inequality, a dummy of a required equality, or errors.
    int marker = -1, other = -1;
    std::vector<int> inTheWay;  // of one that was set aside: the entries that it conflicts with
    int defined = -1;           // the symbol that it defines
    long definitionOrder = 0;   // later ones are of what earlier ones define
    double markerSign = 0;      // terms - constant = markerSign * marker - markerSign * other
  };

  int newSymbol(Kind kind);
  void freeSymbol(int symbol);
  int newRow(int basic);
  void dropRow(int row);
  void addExpression(int rowIndex, double factor, std::span<const Cell> cells, double constant);
  void addCells(Row& row, int rowIndex, double factor, std::span<const Cell> cells);
  void addMultiple(int rowIndex, double factor, int symbol);
  void replaceParameter(int symbol, int rowIndex);
  void pivot(int rowIndex, int entering);
  void eraseColumn(int symbol);
  void constantDidChange(int rowIndex);
  void noteChange(int symbol);

  void enter(Entry& entry);
  bool define(Entry& entry);
  void endDefinition(Entry& entry);
  void evaluateDefinitions();
  void takeIntoSimplex(const Rule& rule);
  void enterSimplex(Entry& entry);
  void leave(Entry& entry);
  void exchangeOut(int marker);
  void shift(int symbol, double difference);

  bool isRestricted(int symbol) const;
  double coefficientIn(const Row& row, int symbol) const;
  bool isFeasible(const Row& row) const;
  void settle();
  void settleWithin(long limit);
  void makeFeasible(long limit);
  bool mendRow(int rowIndex);
  int dualEntering(const Row& row, double sign) const;
  void resolveConflict(int rowIndex);
  void optimize(long limit);
  int primalEntering() const;
  int objectiveRow(double priority);
  void addErrors(const Entry& entry, double factor);
  void clearObjectives();
  void restoreObjectives();
  void rebuild();

  std::vector<Symbol> symbols_;
  std::vector<int> freeSymbols_;
  std::vector<Row> rows_;
  std::vector<int> freeRows_;
  std::vector<Entry> entries_;
  std::vector<int> freeEntries_;
  std::vector<int> ownerOf_;                          // by symbol, the entry that it came with
  std::map<double, int, std::greater<>> objectives_;  // by priority; the last one prefers what was added earlier
  std::vector<int> infeasible_;                       // rows that may be
  std::vector<int> changes_;
  std::vector<int> moved_;             // since definitions were evaluated
  std::vector<int> dirtyDefinitions_;  // entries
  std::vector<Conflict> conflicts_;
  std::vector<Cell> scratch_;
  std::vector<int> setAside_;  // entries
  long order_ = 0, definitionOrder_ = 0, pivotCount_ = 0;
  bool isOptimal_ = true;            // no exchange makes an objective less
  bool areObjectivesClear_ = false;  // for as long as only feasibility matters
  bool isChanged_ = false;           // since the last solve
  bool isCareful_ = false;           // goes by the order of symbols, which is slow and ends
};

}  // namespace tessaluna::platform
