// Finds values for variables under linear constraints, and again when some of these change: a change costs what it moves. It
// knows of numbers only; LayoutEngine makes views of them.
//
// What is optimal: the sum of the errors of the highest priority is the least possible, then that of the next one, and so
// on. Where this leaves a choice, a constraint that was added earlier holds before one that was added later.
//
// A Simplex does the work. But a required equation about a variable of which nothing was said yet only defines it: it is
// evaluated afterwards, and becomes the simplex's once anything but another definition has the variable.
#pragma once

#include <vector>

#include "tessaluna/platform/layout/Simplex.h"

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
  // Required constraints that contradict each other. Of them the one that was added last is set aside: it is as if it were
  // absent, until a change lets it hold again.
  struct Conflict {
    Constraint setAside;
    std::vector<Constraint> others;
  };

  Variable addVariable();                  // has any sign, and is 0 where no constraint determines it
  void removeVariable(Variable variable);  // once no constraint has it any more
  Constraint add(Rule rule);
  void remove(Constraint constraint);
  void setConstant(Constraint constraint, double constant);
  void setRule(Constraint constraint, Rule rule);  // it counts as added when the one before it was

  void solve();  // brings the values up to date; the rest reads what the last one found
  double value(Variable variable) const;
  bool isSetAside(Constraint constraint) const;
  // Variables whose values may have changed since the last call, each once.
  std::vector<Variable> takeChanges();
  std::vector<Conflict> takeConflicts();  // that have appeared since the last call; one that lasts is not repeated
  long pivotCount() const { return simplex_.pivotCount(); }  // for measurements

 private:
  struct Entry {
    Rule rule;
    long order = 0;
    bool isIn = false, isSetAside = false, isReported = false;
    Simplex::Markers markers;   // in the simplex: a slack of an inequality, a dummy of a required equality, or errors
    int defined = -1;           // the symbol that it defines
    long definitionOrder = 0;   // later ones are of what earlier ones define
    std::vector<int> inTheWay;  // of one that was set aside: the entries that it conflicts with
  };
  struct Symbol {
    int owner = -1;                     // of a marker, the entry that it came with
    int mentions = 0, definition = -1;  // of a variable: how often constraints have it, and the entry that defines it
    double definedValue = 0;
    std::vector<int> users;  // definitions that have it
    bool isChanged = false;  // in changes_
  };

  Symbol& symbol(Variable variable) { return symbols_[static_cast<std::size_t>(variable)]; }
  int addSymbol(Simplex::Kind kind, int owner);
  int indexOf(const Entry& entry) const { return static_cast<int>(&entry - entries_.data()); }
  void noteChange(int symbol);
  void enter(Entry& entry);
  void leave(Entry& entry);
  bool define(Entry& entry);
  void endDefinition(Entry& entry);
  void evaluateDefinitions();
  void takeIntoSimplex(const Rule& rule);
  void enterSimplex(Entry& entry);
  void takeOut(int index);
  void settle();
  void settleWithin(long maxPivots);
  void tryWhatWasSetAside();
  void setAside(int row);
  void addCosts(const Entry& entry, double factor);
  void rebuild();

  Simplex simplex_;
  std::vector<Symbol> symbols_;  // by the simplex's number
  std::vector<Entry> entries_;
  std::vector<int> freeEntries_, changes_, dirtyDefinitions_, setAside_;
  std::vector<Conflict> conflicts_;
  long order_ = 0, definitionOrder_ = 0;
  bool isChanged_ = false;  // since the last solve
};

}  // namespace tessaluna::platform
