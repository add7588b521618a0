// Places the views of one tree, mostly that of a window, by the constraints that views of it hold: it writes them as rules
// of a ConstraintSolver, has that solve them, and gives the views whose values have changed their frames.
//
// Each view that a constraint mentions, and each above it, has four variables: where it starts in its superview, downward and to
// the right, and how long it is. Of places that all satisfy the constraints it takes one; what these do not mention is 0, so that
// a view of which too little is said shows itself by having no size.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/layout/ConstraintSolver.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/views/Forward.h"
#include "tessaluna/platform/views/NSUserInterfaceLayoutDirection.h"

namespace tessaluna::platform {

class LayoutEngine {
 public:
  explicit LayoutEngine(NSView& top);  // has no superview, and owns the engine
  ~LayoutEngine();

  // The constraint's items are in the tree.
  void add(NSLayoutConstraint& constraint);
  void remove(NSLayoutConstraint& constraint);
  std::vector<NSLayoutConstraint*> takeAll();  // in the order in which they were added
  std::vector<NSLayoutConstraint*> takeConstraintsBelow(NSView& view);

  // What has changed, to be solved by the next pass.
  void constantDidChange(NSLayoutConstraint& constraint);
  void ruleDidChange(NSLayoutConstraint& constraint);
  void frameDidChange(NSView& view);
  void contentDidChange(NSView& view);
  void layoutDirectionDidChange(NSView& view);
  void callUpdateConstraints(NSView& view);
  std::vector<Ref<NSView>> takeViewsToUpdate(const NSView* below);  // those that are the view or in it

  // Solves and places, if anything has changed.
  void run();

  // The least size of the view that its constraints and those of the views below it allow. Where none of these ties the view's
  // size to that of others, it is the unconstrained one.
  static CGSize fittingSizeOf(const NSView& view, CGSize unconstrained);

 private:
  using Rule = ConstraintSolver::Rule;
  using Term = ConstraintSolver::Term;
  using Variable = ConstraintSolver::Variable;
  struct Axis {
    Variable start, length;
    // Rules that come with the view: what its frame or its content says.
    std::vector<std::pair<Rule, ConstraintSolver::Constraint>> own;
    std::optional<ConstraintSolver::Constraint> notNegative;
  };
  struct Item {
    NSView* view = nullptr;
    Item* above = nullptr;  // of the superview; null of the topmost view
    int depth = 0;
    std::array<Axis, 2> axes;  // horizontal, vertical
    int uses = 0;
    bool needsOwnRules = false, isToBePlaced = false, didHeightChange = false;
    NSUserInterfaceLayoutDirection direction{};  // as the rules have it
    std::vector<NSLayoutConstraint*> constraints;
  };
  struct Installed {
    NSLayoutConstraint* constraint = nullptr;
    Item *first = nullptr, *second = nullptr;  // there may be no second one
    std::optional<ConstraintSolver::Constraint> inSolver;
    bool needsRule = true;
  };
  struct Origin {  // of a rule
    NSLayoutConstraint* constraint = nullptr;
    NSView* view = nullptr;
  };

  // A tree of its own for measuring: its top has any size, the least if nothing else is said.
  LayoutEngine(NSView& top, CGSize leastSize);

  Item& use(NSView& view);
  void stopUsing(Item& item);
  void needRun();
  void needOwnRules(Item& item);
  void needPlace(Item& item);
  void addRules();
  Rule ruleOf(const Installed& installed) const;
  void addMeasure(Rule& rule, double factor, const Item& item, NSLayoutAttribute attribute, const Item& within,
                  bool isMirrored) const;
  void updateOwnRules(Item& item);
  void rulesOfTop(std::array<std::vector<Rule>, 2>& rules, const Item& item) const;
  void rulesOfMask(std::array<std::vector<Rule>, 2>& rules, const Item& item) const;
  void rulesOfContent(std::array<std::vector<Rule>, 2>& rules, const Item& item) const;
  void report();
  std::string nameOf(ConstraintSolver::Constraint constraint) const;
  void noteChanges();
  void place();
  void placeView(const Item& item);
  Item* itemOf(const NSView& view);
  void setOrigin(ConstraintSolver::Constraint constraint, Origin origin);

  NSView& top_;
  const std::optional<CGSize> leastSize_;  // for measuring
  ConstraintSolver solver_;
  std::unordered_map<const NSView*, Item> items_;
  std::unordered_map<const NSLayoutConstraint*, Installed> installed_;
  std::vector<Origin> origins_;        // by the solver's constraint
  std::vector<Item*> itemOfVariable_;  // by the solver's variable
  std::vector<Item*> needingOwnRules_, toBePlaced_;
  std::vector<Installed*> needingRules_;
  std::vector<WeakRef<NSView>> toUpdate_;
  CGFloat scale_ = 0;  // of the window's device pixels; 0 without a window
  bool needsRun_ = false, isRunning_ = false, isPlacing_ = false;
};

}  // namespace tessaluna::platform
