#include "tessaluna/platform/layout/NSLayoutConstraint.h"

#include <cmath>
#include <utility>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/WarningHandler.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/layout/LayoutEngine.h"
#include "tessaluna/platform/time/PropertyAnimation.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

namespace {

constexpr Outlet constraintOutlets[] = {outlet<&NSLayoutConstraint::setFirstItem>("firstItem"),
                                        outlet<&NSLayoutConstraint::setSecondItem>("secondItem")};
constexpr Property constraintProperties[] = {property<&NSLayoutConstraint::setConstant, "constant">(),
                                             property<&NSLayoutConstraint::setIdentifier, "identifier">()};

enum class Measure { None, Size, Horizontal, HorizontalOfText, HorizontalCenter, Vertical };

Measure measureOf(NSLayoutAttribute attribute) {
  switch (attribute) {
    case NSLayoutAttributeNotAnAttribute: return Measure::None;
    case NSLayoutAttributeWidth:
    case NSLayoutAttributeHeight: return Measure::Size;
    case NSLayoutAttributeLeft:
    case NSLayoutAttributeRight: return Measure::Horizontal;
    case NSLayoutAttributeLeading:
    case NSLayoutAttributeTrailing: return Measure::HorizontalOfText;
    case NSLayoutAttributeCenterX: return Measure::HorizontalCenter;
    case NSLayoutAttributeTop:
    case NSLayoutAttributeBottom:
    case NSLayoutAttributeCenterY:
    case NSLayoutAttributeLastBaseline:
    case NSLayoutAttributeFirstBaseline: return Measure::Vertical;
  }
  return Measure::None;
}

// An edge by the direction of texts and one by name are at different sides for different people. A center is neither.
bool goTogether(Measure a, Measure b) {
  if (a == b) return true;
  const auto isHorizontal = [](Measure measure) {
    return measure == Measure::Horizontal || measure == Measure::HorizontalOfText || measure == Measure::HorizontalCenter;
  };
  return isHorizontal(a) && isHorizontal(b) && (a == Measure::HorizontalCenter || b == Measure::HorizontalCenter);
}

std::string_view nameOf(NSLayoutAttribute attribute) {
  for (const NamedValue& named : EnumNames<NSLayoutAttribute>::all)
    if (named.value == attribute) return named.name;
  return "unknown";
}

std::string nameOf(const NSView* view) {
  if (!view) return "a destroyed view";
  return view->className() + (view->identifier().empty() ? "" : " \"" + view->identifier() + "\"");
}

WarningHandler& conflictHandler() {
  static WarningHandler handler;
  return handler;
}

bool isPriority(NSLayoutPriority priority) { return priority > 0 && priority <= NSLayoutPriorityRequired; }

}  // namespace

const ClassInfo NSLayoutConstraint::staticClassInfo{.name = "NSLayoutConstraint",
                                                    .base = &NSObject::staticClassInfo,
                                                    .outlets = constraintOutlets,
                                                    .properties = constraintProperties};

Ref<NSLayoutConstraint> NSLayoutConstraint::constraintWithItem(const Ref<NSView>& item, NSLayoutAttribute attribute,
                                                               NSLayoutRelation relatedBy, const Ref<NSView>& toItem,
                                                               NSLayoutAttribute toAttribute, CGFloat multiplier,
                                                               CGFloat constant) {
  const auto result = make<NSLayoutConstraint>();
  result->firstItem_ = item;
  result->firstAttribute_ = attribute;
  result->relation_ = relatedBy;
  result->secondItem_ = toItem;
  result->secondAttribute_ = toAttribute;
  result->multiplier_ = toItem ? multiplier : 1;
  result->constant_ = constant;
  if (!item) stopProgram("NSLayoutConstraint: a constraint needs an item");
  if (const auto problem = result->problem()) stopProgram("NSLayoutConstraint: " + *problem);
  if (!result->isComplete()) stopProgram("NSLayoutConstraint: the second attribute has no item");
  return result;
}

NSLayoutConstraint::NSLayoutConstraint(NSCoder& coder)
    : firstAttribute_(coder.decodeEnumForKey<NSLayoutAttribute>("firstAttribute").value_or(NSLayoutAttributeNotAnAttribute)),
      secondAttribute_(
          coder.decodeEnumForKey<NSLayoutAttribute>("secondAttribute").value_or(NSLayoutAttributeNotAnAttribute)),
      relation_(coder.decodeEnumForKey<NSLayoutRelation>("relation").value_or(NSLayoutRelationEqual)),
      multiplier_(coder.numberForKey("multiplier").value_or(1)),
      constant_(coder.decodeDoubleForKey("constant")),
      priority_(coder.numberForKey("priority").value_or(NSLayoutPriorityRequired)),
      identifier_(coder.decodeStringForKey("identifier").value_or("")) {
  if (!isPriority(priority_)) coder.fail("the priority must be above 0 and at most 1000");
}

NSLayoutConstraint::~NSLayoutConstraint() = default;

// What no items would make better.
std::optional<std::string> NSLayoutConstraint::problem() const {
  const Measure first = measureOf(firstAttribute_), second = measureOf(secondAttribute_);
  if (first == Measure::None) return "a constraint needs an attribute of its first item";
  if (second == Measure::None && first != Measure::Size)
    return "the attribute " + std::string(nameOf(firstAttribute_)) + " needs an attribute of a second item";
  if (second != Measure::None && !goTogether(first, second))
    return "the attributes " + std::string(nameOf(firstAttribute_)) + " and " + std::string(nameOf(secondAttribute_)) +
           " cannot be combined";
  if (!std::isfinite(multiplier_) || multiplier_ == 0) return "the multiplier must be finite and not 0";
  if (!std::isfinite(constant_)) return "the constant must be finite";
  return std::nullopt;
}

bool NSLayoutConstraint::isComplete() const {
  return firstItem() && (secondItem() != nullptr) == (secondAttribute_ != NSLayoutAttributeNotAnAttribute);
}

std::optional<std::string> NSLayoutConstraint::nibProblem() const {
  if (const auto wrong = problem()) return wrong;
  if (!isComplete()) return "a constraint needs an item for each of its attributes";
  if (holder_ && !(firstItem()->isDescendantOf(holder_) && (!secondItem() || secondItem()->isDescendantOf(holder_))))
    return "a constraint belongs to a view that contains both items";
  return std::nullopt;
}

void NSLayoutConstraint::setFirstItem(const Ref<NSView>& item) {
  firstItem_ = item;
  itemDidCome();
}

void NSLayoutConstraint::setSecondItem(const Ref<NSView>& item) {
  secondItem_ = item;
  itemDidCome();
}

void NSLayoutConstraint::itemDidCome() {
  if (engine_) engine_->remove(*this);
  if (holder_ && !nibProblem()) ViewConstraints::install(*this);
}

void NSLayoutConstraint::setConstant(CGFloat constant) {
  if (!std::isfinite(constant)) stopProgram("NSLayoutConstraint: the constant must be finite");
  propertyWillBeSet<&NSLayoutConstraint::setConstant>(*this);
  if (std::exchange(constant_, constant) != constant && engine_) engine_->constantDidChange(*this);
}

void NSLayoutConstraint::setPriority(NSLayoutPriority priority) {
  if (!isPriority(priority)) stopProgram("NSLayoutConstraint: the priority must be above 0 and at most 1000");
  if (std::exchange(priority_, priority) != priority && engine_) engine_->ruleDidChange(*this);
}

NSLayoutConstraintAnimator NSLayoutConstraint::animator() { return NSLayoutConstraintAnimator(*this); }

void NSLayoutConstraintAnimator::setConstant(CGFloat constant) const {
  animateProperty<&NSLayoutConstraint::setConstant>(constraint_, constraint_.constant(), constant,
                                                    [](NSLayoutConstraint& constraint) {
                                                      const Ref<NSView> item = constraint.firstItem();
                                                      return item ? item->window() : nullptr;
                                                    });
}

NSView* NSLayoutConstraint::nearestHolder() const {
  const Ref<NSView> first = firstItem(), second = secondItem();
  for (NSView* view = first.get(); view; view = view->superview())
    if (!second || second->isDescendantOf(view)) return view;
  return nullptr;
}

void NSLayoutConstraint::setActive(bool isActive) {
  if (isActive == this->isActive()) return;
  const Ref<NSLayoutConstraint> self = refTo(*this);
  if (!isActive) return holder_->removeConstraint(self);
  NSView* holder = nearestHolder();
  if (!holder) stopProgram("NSLayoutConstraint: " + description() + " was activated, but no view contains its items");
  holder->addConstraint(self);
}

void NSLayoutConstraint::activateConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints) {
  for (const Ref<NSLayoutConstraint>& constraint : constraints) constraint->setActive(true);
}

void NSLayoutConstraint::deactivateConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints) {
  for (const Ref<NSLayoutConstraint>& constraint : constraints) constraint->setActive(false);
}

std::string NSLayoutConstraint::description() const {
  if (!identifier_.empty()) return "\"" + identifier_ + "\"";
  const auto measure = [](const Ref<NSView>& item, NSLayoutAttribute attribute) {
    return nameOf(item.get()) + "." + std::string(nameOf(attribute));
  };
  std::string text = measure(firstItem(), firstAttribute_);
  text += relation_ == NSLayoutRelationEqual ? " = " : relation_ == NSLayoutRelationLessThanOrEqual ? " <= " : " >= ";
  if (secondAttribute_ == NSLayoutAttributeNotAnAttribute) return text + numberText(constant_);
  if (multiplier_ != 1) text += numberText(multiplier_) + " * ";
  text += measure(secondItem(), secondAttribute_);
  if (constant_ != 0) text += (constant_ < 0 ? " - " : " + ") + numberText(std::abs(constant_));
  return text;
}

void NSLayoutConstraint::setConflictHandler(std::function<void(const std::string& line)> handler) {
  conflictHandler().set(std::move(handler));
}

void NSLayoutConstraint::reportConflict(const std::string& line) { conflictHandler().warn(line); }

}  // namespace tessaluna::platform
