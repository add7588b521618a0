#include "tessaluna/platform/layout/LayoutEngine.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/views/PlacementScope.h"
#include "tessaluna/platform/views/ViewConstraintsState.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

// The size of the topmost view is given. It yields to what must be, which then reaches beyond the window's edges.
constexpr double topSizePriority = 999.5;
constexpr double negativeEpsilon = 1e-6;
// More than constraints need that are changed because of places that they give.
constexpr int maxRounds = 8;

bool isVertical(NSLayoutAttribute attribute) {
  switch (attribute) {
    case NSLayoutAttributeTop:
    case NSLayoutAttributeBottom:
    case NSLayoutAttributeHeight:
    case NSLayoutAttributeCenterY:
    case NSLayoutAttributeLastBaseline:
    case NSLayoutAttributeFirstBaseline: return true;
    case NSLayoutAttributeNotAnAttribute:
    case NSLayoutAttributeLeft:
    case NSLayoutAttributeRight:
    case NSLayoutAttributeLeading:
    case NSLayoutAttributeTrailing:
    case NSLayoutAttributeWidth:
    case NSLayoutAttributeCenterX: return false;
  }
  return false;
}

bool isByText(NSLayoutAttribute attribute) {
  return attribute == NSLayoutAttributeLeading || attribute == NSLayoutAttributeTrailing;
}

bool isBaseline(NSLayoutAttribute attribute) {
  return attribute == NSLayoutAttributeLastBaseline || attribute == NSLayoutAttributeFirstBaseline;
}

int depthOf(const NSView& view) {
  int depth = 0;
  for (const NSView* above = view.superview(); above; above = above->superview()) ++depth;
  return depth;
}

// Of the nearest view that is both, or above both.
template <class Item>
const Item& nearestAbove(const Item& first, const Item& second) {
  const Item *a = &first, *b = &second;
  while (a != b) {
    if (a->depth >= b->depth) a = a->above;
    else b = b->above;
  }
  return *a;
}

// A length that follows that of the superview: factor * it + constant.
struct Following {
  CGFloat factor, constant;
};

struct FollowingExtent {
  Following origin, length;
};

// As autoresizing changes origin and length, which is linear.
FollowingExtent followed(CGFloat origin, CGFloat length, CGFloat outer, bool before, bool inside, bool after) {
  const CGFloat rest = outer - origin - length;
  const CGFloat total = (before ? origin : 0) + (inside ? length : 0) + (after ? rest : 0);
  const int count = before + inside + after;
  const auto share = [&](bool isFlexible, CGFloat part) {
    if (!isFlexible) return 0.0;
    return total != 0 ? part / total : 1.0 / count;
  };
  const CGFloat ofOrigin = share(before, origin), ofLength = share(inside, length);
  return {{ofOrigin, origin - ofOrigin * outer}, {ofLength, length - ofLength * outer}};
}

// Up to a whole pixel, so that edges on whole pixels cut nothing off.
CGFloat wholePixels(const NSView& view, CGFloat length) {
  const CGFloat pixels = view.window() ? view.window()->backingScaleFactor() : 1;
  return std::ceil(length * pixels - negativeEpsilon) / pixels;
}

bool areSame(const ConstraintSolver::Rule& a, const ConstraintSolver::Rule& b) {
  return a.relation == b.relation && a.priority == b.priority &&
         std::equal(a.terms.begin(), a.terms.end(), b.terms.begin(), b.terms.end(), [](const auto& one, const auto& other) {
           return one.variable == other.variable && one.coefficient == other.coefficient;
         });
}

}  // namespace

LayoutEngine::LayoutEngine(NSView& top) : top_(top) {}
LayoutEngine::LayoutEngine(NSView& top, CGSize leastSize) : top_(top), leastSize_(leastSize) {}

LayoutEngine::~LayoutEngine() {
  if (leastSize_) return;
  for (const auto& [constraint, installed] : installed_) installed.constraint->engine_ = nullptr;
  for (const auto& [view, item] : items_) static_cast<const ViewConstraints&>(*view).state_->itemOf = nullptr;
}

// Items.

LayoutEngine::Item* LayoutEngine::itemOf(const NSView& view) {
  const auto found = items_.find(&view);
  return found == items_.end() ? nullptr : &found->second;
}

LayoutEngine::Item& LayoutEngine::use(NSView& view) {
  const auto [found, isNew] = items_.try_emplace(&view);
  Item& item = found->second;
  ++item.uses;
  if (!isNew) return item;
  item.view = &view;
  item.direction = view.userInterfaceLayoutDirection();
  for (Axis& axis : item.axes) {
    for (Variable* variable : {&axis.start, &axis.length}) {
      *variable = solver_.addVariable();
      const auto index = static_cast<std::size_t>(*variable);
      if (itemOfVariable_.size() <= index) itemOfVariable_.resize(index + 1);
      itemOfVariable_[index] = &item;
    }
  }
  if (!leastSize_) static_cast<ViewConstraints&>(view).state().itemOf = this;
  if (&view != &top_) {
    item.above = &use(*view.superview());
    item.depth = item.above->depth + 1;
  }
  needOwnRules(item);
  needPlace(item);
  return item;
}

void LayoutEngine::stopUsing(Item& item) {
  if (--item.uses > 0) return;
  for (Axis& axis : item.axes) {
    for (const auto& [rule, constraint] : axis.own) solver_.remove(constraint);
    if (axis.notNegative) solver_.remove(*axis.notNegative);
  }
  for (const Axis& axis : item.axes)
    for (const Variable variable : {axis.start, axis.length}) {
      solver_.removeVariable(variable);
      itemOfVariable_[static_cast<std::size_t>(variable)] = nullptr;
    }
  if (item.needsOwnRules) std::erase(needingOwnRules_, &item);
  if (item.isToBePlaced) std::erase(toBePlaced_, &item);
  if (!leastSize_) static_cast<ViewConstraints&>(*item.view).state_->itemOf = nullptr;
  Item* above = item.above;
  items_.erase(item.view);
  if (above) stopUsing(*above);
}

void LayoutEngine::needRun() {
  needsRun_ = true;
  if (!leastSize_) top_.setNeedsLayout(true);
}

void LayoutEngine::needOwnRules(Item& item) {
  if (!std::exchange(item.needsOwnRules, true)) needingOwnRules_.push_back(&item);
  needRun();
}

void LayoutEngine::needPlace(Item& item) {
  if (!std::exchange(item.isToBePlaced, true)) toBePlaced_.push_back(&item);
}

// Constraints.

void LayoutEngine::add(NSLayoutConstraint& constraint) {
  Installed& installed = installed_[&constraint];
  if (!leastSize_) constraint.engine_ = this;
  installed.constraint = &constraint;
  const auto itemFor = [&](const Ref<NSView>& view) -> Item* {
    if (!view) return nullptr;
    Item& item = use(*view);
    item.constraints.push_back(&constraint);
    return &item;
  };
  installed.first = itemFor(constraint.firstItem());
  installed.second = itemFor(constraint.secondItem());
  needingRules_.push_back(&installed);
  needRun();
}

void LayoutEngine::remove(NSLayoutConstraint& constraint) {
  const auto found = installed_.find(&constraint);
  if (found == installed_.end()) return;
  const Installed installed = found->second;
  if (installed.needsRule) std::erase(needingRules_, &found->second);
  installed_.erase(found);
  if (installed.inSolver) solver_.remove(*installed.inSolver);
  for (Item* item : {installed.first, installed.second}) {
    if (!item) continue;
    item->constraints.erase(std::find(item->constraints.begin(), item->constraints.end(), &constraint));
    stopUsing(*item);
  }
  constraint.engine_ = nullptr;
  needRun();
}

std::vector<NSLayoutConstraint*> LayoutEngine::takeAll() {
  std::vector<NSLayoutConstraint*> result;
  for (const auto& [constraint, installed] : installed_) result.push_back(installed.constraint);
  std::sort(result.begin(), result.end(), [](auto* a, auto* b) { return a->order_ < b->order_; });
  for (NSLayoutConstraint* constraint : result) remove(*constraint);
  return result;
}

std::vector<NSLayoutConstraint*> LayoutEngine::takeConstraintsBelow(NSView& view) {
  std::vector<NSLayoutConstraint*> result;
  const auto collect = [&](const auto& self, const NSView& below) -> void {
    const Item* item = itemOf(below);
    if (!item) return;
    result.insert(result.end(), item->constraints.begin(), item->constraints.end());
    for (const Ref<NSView>& subview : below.subviews()) self(self, *subview);
  };
  collect(collect, view);
  std::sort(result.begin(), result.end(), [](auto* a, auto* b) { return a->order_ < b->order_; });
  result.erase(std::unique(result.begin(), result.end()), result.end());
  for (NSLayoutConstraint* constraint : result) remove(*constraint);
  return result;
}

// Changes.

void LayoutEngine::constantDidChange(NSLayoutConstraint& constraint) {
  const Installed& installed = installed_.at(&constraint);
  if (installed.inSolver && !installed.needsRule) solver_.setConstant(*installed.inSolver, ruleOf(installed).constant);
  needRun();
}

void LayoutEngine::ruleDidChange(NSLayoutConstraint& constraint) {
  Installed& installed = installed_.at(&constraint);
  if (!std::exchange(installed.needsRule, true)) needingRules_.push_back(&installed);
  needRun();
}

void LayoutEngine::frameDidChange(NSView& view) {
  Item* item = isPlacing_ ? nullptr : itemOf(view);
  if (!item) return;
  if (&view == &top_ || view.translatesAutoresizingMaskIntoConstraints()) return needOwnRules(*item);
  // Somebody else has placed it, which lasts until the next pass.
  needPlace(*item);
  needRun();
}

void LayoutEngine::contentDidChange(NSView& view) {
  Item& item = *itemOf(view);
  needOwnRules(item);
  needPlace(item);
  for (NSLayoutConstraint* constraint : item.constraints)
    if (isBaseline(constraint->firstAttribute_) || isBaseline(constraint->secondAttribute_)) constantDidChange(*constraint);
  // The application's direction may have changed with its language.
  if (item.direction != view.userInterfaceLayoutDirection()) layoutDirectionDidChange(view);
}

void LayoutEngine::layoutDirectionDidChange(NSView& view) {
  Item& item = *itemOf(view);
  item.direction = view.userInterfaceLayoutDirection();
  for (NSLayoutConstraint* constraint : item.constraints)
    if (isByText(constraint->firstAttribute_) || isByText(constraint->secondAttribute_)) ruleDidChange(*constraint);
}

void LayoutEngine::callUpdateConstraints(NSView& view) {
  toUpdate_.push_back(std::static_pointer_cast<NSView>(view.weak_from_this().lock()));
  needRun();
}

std::vector<Ref<NSView>> LayoutEngine::takeViewsToUpdate(const NSView* below) {
  std::vector<Ref<NSView>> result;
  for (const WeakRef<NSView>& weak : std::exchange(toUpdate_, {})) {
    const Ref<NSView> view = weak.lock();
    if (!view || !view->needsUpdateConstraints()) continue;
    if (view->isDescendantOf(below)) result.push_back(view);
    else toUpdate_.push_back(weak);
  }
  return result;
}

// Rules.

// Adds factor times the measure, from the upper left corner of a view above, or mirrored from the upper right one.
void LayoutEngine::addMeasure(Rule& rule, double factor, const Item& item, NSLayoutAttribute attribute, const Item& within,
                              bool isMirrored) const {
  NSView& view = *item.view;
  const std::size_t index = attribute == NSLayoutAttributeWidth                             ? 0
                            : attribute == NSLayoutAttributeHeight || isVertical(attribute) ? 1
                                                                                            : 0;
  const auto lengthOf = [&](const Item& one) { return one.axes[index].length; };
  double ofLength = 0, offset = 0;
  bool hasPlace = true;
  switch (attribute) {
    case NSLayoutAttributeLeft:
    case NSLayoutAttributeTop: break;
    case NSLayoutAttributeRight:
    case NSLayoutAttributeBottom: ofLength = 1; break;
    case NSLayoutAttributeLeading: ofLength = isMirrored ? 1 : 0; break;
    case NSLayoutAttributeTrailing: ofLength = isMirrored ? 0 : 1; break;
    case NSLayoutAttributeCenterX:
    case NSLayoutAttributeCenterY: ofLength = 0.5; break;
    case NSLayoutAttributeFirstBaseline: offset = view.firstBaselineOffsetFromTop(); break;
    case NSLayoutAttributeLastBaseline:
      ofLength = 1;
      offset = -view.lastBaselineOffsetFromBottom();
      // Of what the height has more than the content wants, as texts are at the top.
      if (const CGFloat height = view.intrinsicContentSize().height; height >= 0)
        offset -= wholePixels(view, height) - height;
      break;
    case NSLayoutAttributeWidth:
    case NSLayoutAttributeHeight:
      ofLength = 1;
      hasPlace = false;
      break;
    case NSLayoutAttributeNotAnAttribute: return;
  }
  const double sign = isMirrored && hasPlace ? -factor : factor;
  if (isMirrored && hasPlace) rule.terms.push_back({lengthOf(within), factor});
  if (ofLength != 0) rule.terms.push_back({lengthOf(item), sign * ofLength});
  for (const Item* above = &item; hasPlace && above != &within; above = above->above)
    rule.terms.push_back({above->axes[index].start, sign});
  rule.constant -= sign * offset;
}

LayoutEngine::Rule LayoutEngine::ruleOf(const Installed& installed) const {
  const NSLayoutConstraint& constraint = *installed.constraint;
  const Item &first = *installed.first, *second = installed.second;
  const bool isMirrored = (isByText(constraint.firstAttribute_) || isByText(constraint.secondAttribute_)) &&
                          first.view->userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirectionRightToLeft;
  const Item& within = second ? nearestAbove(first, *second) : first;
  Rule rule{.terms = {},
            .relation = static_cast<ConstraintSolver::Relation>(constraint.relation_),
            .constant = constraint.constant_,
            .priority = constraint.priority_};
  addMeasure(rule, 1, first, constraint.firstAttribute_, within, isMirrored);
  if (second) addMeasure(rule, -constraint.multiplier_, *second, constraint.secondAttribute_, within, isMirrored);
  return rule;
}

void LayoutEngine::setOrigin(ConstraintSolver::Constraint constraint, Origin origin) {
  const auto index = static_cast<std::size_t>(constraint);
  if (origins_.size() <= index) origins_.resize(index + 1);
  origins_[index] = origin;
}

void LayoutEngine::addRules() {
  for (Item* item : std::exchange(needingOwnRules_, {})) {
    item->needsOwnRules = false;
    updateOwnRules(*item);
  }
  std::vector<Installed*> added = std::exchange(needingRules_, {});
  std::sort(added.begin(), added.end(), [](auto* a, auto* b) { return a->constraint->order_ < b->constraint->order_; });
  for (Installed* installed : added) {
    installed->needsRule = false;
    if (installed->inSolver) {
      solver_.setRule(*installed->inSolver, ruleOf(*installed));
      continue;
    }
    installed->inSolver = solver_.add(ruleOf(*installed));
    setOrigin(*installed->inSolver, {installed->constraint, nullptr});
  }
}

void LayoutEngine::updateOwnRules(Item& item) {
  NSView& view = *item.view;
  std::array<std::vector<Rule>, 2> rules;
  if (&view == &top_) rulesOfTop(rules, item);
  else if (view.translatesAutoresizingMaskIntoConstraints()) rulesOfMask(rules, item);
  else rulesOfContent(rules, item);
  for (std::size_t i = 0; i < rules.size(); ++i) {
    auto& own = item.axes[i].own;
    for (; own.size() > rules[i].size(); own.pop_back()) solver_.remove(own.back().second);
    for (std::size_t j = 0; j < rules[i].size(); ++j) {
      const Rule& wanted = rules[i][j];
      if (j == own.size()) {
        own.emplace_back(wanted, solver_.add(wanted));
        setOrigin(own.back().second, {nullptr, &view});
      } else if (areSame(own[j].first, wanted)) {
        solver_.setConstant(own[j].second, wanted.constant);
      } else {
        solver_.setRule(own[j].second, wanted);
        own[j].first = wanted;
      }
    }
  }
}

void LayoutEngine::rulesOfTop(std::array<std::vector<Rule>, 2>& rules, const Item& item) const {
  if (leastSize_) rulesOfContent(rules, item);
  const CGSize size = leastSize_.value_or(item.view->bounds().size);
  const double priority = leastSize_ ? NSLayoutPriorityFittingSizeCompression : topSizePriority;
  rules[0].push_back({{{item.axes[0].length, 1}}, ConstraintSolver::Relation::Equal, size.width, priority});
  rules[1].push_back({{{item.axes[1].length, 1}}, ConstraintSolver::Relation::Equal, size.height, priority});
}

void LayoutEngine::rulesOfMask(std::array<std::vector<Rule>, 2>& rules, const Item& item) const {
  const NSView &view = *item.view, &above = *item.above->view;
  const std::array<Axis, 2>& outer = item.above->axes;
  const CGRect frame = view.frame();
  const CGSize size = above.bounds().size;
  // What the superview does not pass on, the view does not follow.
  const std::uint32_t mask = above.autoresizesSubviews() ? view.autoresizingMask() : NSViewNotSizable;
  const auto has = [&](std::uint32_t bit) { return (mask & bit) != 0; };
  const FollowingExtent x = followed(frame.origin.x, frame.size.width, size.width, has(NSViewMinXMargin),
                                     has(NSViewWidthSizable), has(NSViewMaxXMargin));
  FollowingExtent y = followed(frame.origin.y, frame.size.height, size.height, has(NSViewMinYMargin),
                               has(NSViewHeightSizable), has(NSViewMaxYMargin));
  if (!above.isFlipped()) y.origin = {1 - y.origin.factor - y.length.factor, -y.origin.constant - y.length.constant};
  const auto add = [&](std::size_t axis, Variable variable, Following following) {
    Rule rule{.terms = {{variable, 1}}, .constant = following.constant};
    if (following.factor != 0) rule.terms.push_back({outer[axis].length, -following.factor});
    rules[axis].push_back(std::move(rule));
  };
  add(0, item.axes[0].start, x.origin);
  add(0, item.axes[0].length, x.length);
  add(1, item.axes[1].start, y.origin);
  add(1, item.axes[1].length, y.length);
}

void LayoutEngine::rulesOfContent(std::array<std::vector<Rule>, 2>& rules, const Item& item) const {
  const NSView& view = *item.view;
  const CGSize wanted = view.intrinsicContentSize();
  const CGFloat lengths[] = {wanted.width, wanted.height};
  const NSLayoutConstraintOrientation orientations[] = {NSLayoutConstraintOrientationHorizontal,
                                                        NSLayoutConstraintOrientationVertical};
  for (std::size_t i = 0; i < 2; ++i) {
    if (!(lengths[i] >= 0) || !std::isfinite(lengths[i])) continue;
    const CGFloat length = wholePixels(view, lengths[i]);
    const double hugging = view.contentHuggingPriorityForOrientation(orientations[i]);
    const double resistance = view.contentCompressionResistancePriorityForOrientation(orientations[i]);
    const std::vector<Term> terms{{item.axes[i].length, 1}};
    if (hugging > 0) rules[i].push_back({terms, ConstraintSolver::Relation::AtMost, length, hugging});
    if (resistance > 0) rules[i].push_back({terms, ConstraintSolver::Relation::AtLeast, length, resistance});
  }
}

// Passes.

void LayoutEngine::run() {
  if (isRunning_) return;
  const CGFloat scale = top_.window() ? top_.window()->backingScaleFactor() : 0;
  if (std::exchange(scale_, scale) != scale) {
    for (auto& [view, item] : items_) {
      needOwnRules(item);
      needPlace(item);
    }
    needsRun_ = true;
  }
  isRunning_ = true;
  const AtEndOfScope end([this] { isRunning_ = false; });
  for (int round = 0; round < maxRounds && std::exchange(needsRun_, false); ++round) {
    std::vector<Ref<NSView>> updating = takeViewsToUpdate(&top_);
    std::stable_sort(updating.begin(), updating.end(),
                     [](const Ref<NSView>& a, const Ref<NSView>& b) { return depthOf(*a) > depthOf(*b); });
    for (const Ref<NSView>& view : updating) {
      // One that was marked twice is in the list twice.
      if (!view->needsUpdateConstraints()) continue;
      view->setNeedsUpdateConstraints(false);
      view->updateConstraints();
    }
    addRules();
    noteChanges();
    report();
    place();
  }
}

// Solves, and forbids lengths that would become negative only once they would: hardly any do.
void LayoutEngine::noteChanges() {
  for (bool isAgain = true; isAgain;) {
    isAgain = false;
    solver_.solve();
    for (const Variable variable : solver_.takeChanges()) {
      Item* changed = itemOfVariable_[static_cast<std::size_t>(variable)];
      if (!changed) continue;
      Item& item = *changed;
      needPlace(item);
      if (item.axes[1].length == variable) item.didHeightChange = true;
      for (Axis& axis : item.axes) {
        if (axis.length != variable || axis.notNegative || solver_.value(variable) >= -negativeEpsilon) continue;
        axis.notNegative = solver_.add({{{variable, 1}}, ConstraintSolver::Relation::AtLeast, 0});
        setOrigin(*axis.notNegative, {});
        isAgain = true;
      }
    }
  }
}

std::string LayoutEngine::nameOf(ConstraintSolver::Constraint constraint) const {
  const Origin& origin = origins_[static_cast<std::size_t>(constraint)];
  if (origin.constraint) return origin.constraint->description();
  if (!origin.view) return "a length that is not negative";
  const bool isByFrame = origin.view->translatesAutoresizingMaskIntoConstraints();
  const std::string& identifier = origin.view->identifier();
  return std::string(isByFrame ? "the frame" : "the content") + " of " + origin.view->className() +
         (identifier.empty() ? "" : " \"" + identifier + "\"");
}

void LayoutEngine::report() {
  std::vector<std::string> lines;
  for (const ConstraintSolver::Conflict& conflict : solver_.takeConflicts()) {
    const Origin& origin = origins_[static_cast<std::size_t>(conflict.setAside)];
    if (!origin.constraint && !origin.view) continue;
    std::string line = "Constraints conflict: " + nameOf(conflict.setAside) + " gives way to ";
    for (std::size_t i = 0; i < conflict.others.size(); ++i) line += (i == 0 ? "" : ", ") + nameOf(conflict.others[i]);
    lines.push_back(std::move(line));
  }
  for (const std::string& line : lines) NSLayoutConstraint::reportConflict(line);
}

// Superviews first: where a view's y begins depends on the superview's height, unless that is flipped.
void LayoutEngine::place() {
  std::vector<std::vector<Ref<NSView>>> waiting;  // by depth
  const auto wait = [&](const Item& item) {
    if (waiting.size() <= static_cast<std::size_t>(item.depth)) waiting.resize(static_cast<std::size_t>(item.depth) + 1);
    if (auto held = std::static_pointer_cast<NSView>(item.view->weak_from_this().lock()))
      waiting[static_cast<std::size_t>(item.depth)].push_back(std::move(held));
  };
  for (const Item* item : std::exchange(toBePlaced_, {})) wait(*item);
  isPlacing_ = true;
  const AtEndOfScope end([&] {
    isPlacing_ = false;
    // After a setter that throws, the others wait for the next pass.
    for (const std::vector<Ref<NSView>>& views : waiting)
      for (const Ref<NSView>& view : views)
        if (Item* item = view ? itemOf(*view) : nullptr) {
          item->isToBePlaced = false;
          needPlace(*item);
          needRun();
        }
  });
  for (std::size_t depth = 0; depth < waiting.size(); ++depth) {
    for (std::size_t i = 0; i < waiting[depth].size(); ++i) {
      const Ref<NSView> view = std::move(waiting[depth][i]);
      Item* item = itemOf(*view);
      if (!item) continue;  // a frame that was set has taken it away
      item->isToBePlaced = false;
      if (std::exchange(item->didHeightChange, false) && !view->isFlipped()) {
        for (const Ref<NSView>& subview : view->subviews()) {
          Item* below = itemOf(*subview);
          if (below && !std::exchange(below->isToBePlaced, true)) wait(*below);
        }
      }
      if (item->above && !view->translatesAutoresizingMaskIntoConstraints()) placeView(*item);
    }
  }
}

void LayoutEngine::placeView(const Item& item) {
  NSView& view = *item.view;
  struct Extent {
    CGFloat start, length;
  };
  const auto extentOf = [&](const Axis& axis) -> Extent {
    const CGFloat start = solver_.value(axis.start), length = std::max(solver_.value(axis.length), 0.0);
    if (scale_ <= 0) return {start, length};
    // Each edge by itself, so that views that touch do so on the screen too.
    const CGFloat first = std::round(start * scale_) / scale_, last = std::round((start + length) * scale_) / scale_;
    return {first, last - first};
  };
  const Extent x = extentOf(item.axes[0]), y = extentOf(item.axes[1]);
  const NSView& above = *view.superview();
  const CGFloat originY = above.isFlipped() ? y.start : above.bounds().size.height - y.start - y.length;
  const PlacementScope placement(view);
  view.setFrame({x.start, originY, x.length, y.length});
}

CGSize LayoutEngine::fittingSizeOf(const NSView& view, CGSize unconstrained) {
  std::vector<NSLayoutConstraint*> constraints;
  const auto collect = [&](const auto& self, const NSView& below) -> void {
    for (const Ref<NSLayoutConstraint>& constraint : below.constraints())
      if (constraint->isComplete()) constraints.push_back(constraint.get());
    for (const Ref<NSView>& subview : below.subviews()) self(self, *subview);
  };
  collect(collect, view);
  if (constraints.empty()) return unconstrained;
  CGSize least = unconstrained;
  for (const NSLayoutConstraint* constraint : constraints) {
    const Ref<NSView> first = constraint->firstItem(), second = constraint->secondItem();
    if (!second || (first.get() == &view) == (second.get() == &view)) continue;
    const NSLayoutAttribute attribute = first.get() == &view ? constraint->firstAttribute_ : constraint->secondAttribute_;
    (isVertical(attribute) ? least.height : least.width) = 0;
  }
  std::sort(constraints.begin(), constraints.end(), [](auto* a, auto* b) { return a->order_ < b->order_; });
  LayoutEngine engine(const_cast<NSView&>(view), least);
  for (NSLayoutConstraint* constraint : constraints) engine.add(*constraint);
  engine.addRules();
  engine.noteChanges();
  const std::array<Axis, 2>& axes = engine.items_.at(&view).axes;
  return {std::max(engine.solver_.value(axes[0].length), 0.0), std::max(engine.solver_.value(axes[1].length), 0.0)};
}

}  // namespace tessaluna::platform
