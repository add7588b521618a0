// A linear relation between two measures of views, or of one measure and a number:
//   item.attribute  =, <= or >=  multiplier * toItem.toAttribute + constant
// It works once a view that holds both items has it (NSView::addConstraint), or once it is active. Edges and centers are
// measured in the nearest view that has both items in it, or is one of them, downward and to the right; leading and trailing
// go the other way where the first item's texts do. The items are not kept alive.
//
// Required constraints that cannot hold together: the one that was added last gives way, until it can hold, and one line
// that names them goes to the conflict handler.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/interface_files/NibChecked.h"
#include "tessaluna/platform/layout/NSLayoutAttribute.h"
#include "tessaluna/platform/layout/NSLayoutPriority.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class NSLayoutConstraint : public NSObject, public NibChecked {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Without a second item its attribute is NSLayoutAttributeNotAnAttribute, the first one a width or height, and the multiplier
  // does not count. Attributes that do not go together, a multiplier of 0, and numbers that are not finite stop the program.
  static Ref<NSLayoutConstraint> constraintWithItem(const Ref<NSView>& item, NSLayoutAttribute attribute,
                                                    NSLayoutRelation relatedBy, const Ref<NSView>& toItem,
                                                    NSLayoutAttribute toAttribute, CGFloat multiplier, CGFloat constant);
  NSLayoutConstraint() = default;  // for constraintWithItem
  // Keys: "firstAttribute", "relation" ("equal" if missing), "secondAttribute", "multiplier" (1), "constant", "priority"
  // (1000), "identifier". The items are outlets: "firstItem", "secondItem". The view that holds it has it in "constraints".
  explicit NSLayoutConstraint(NSCoder& coder);
  ~NSLayoutConstraint() override;

  Ref<NSView> firstItem() const { return firstItem_.lock(); }
  NSLayoutAttribute firstAttribute() const { return firstAttribute_; }
  NSLayoutRelation relation() const { return relation_; }
  Ref<NSView> secondItem() const { return secondItem_.lock(); }  // null without one
  NSLayoutAttribute secondAttribute() const { return secondAttribute_; }
  CGFloat multiplier() const { return multiplier_; }

  CGFloat constant() const { return constant_; }
  void setConstant(CGFloat constant);     // points
  NSLayoutConstraintAnimator animator();  // the constraint whose constant takes its time
  NSLayoutPriority priority() const { return priority_; }
  void setPriority(NSLayoutPriority priority);                   // above 0, at most 1000; others stop the program
  const std::string& identifier() const { return identifier_; }  // how conflicts call it
  void setIdentifier(std::string identifier) { identifier_ = std::move(identifier); }

  // Activating adds it to the nearest view that has both items in it; without one the program stops.
  bool isActive() const { return holder_ != nullptr; }
  void setActive(bool isActive);
  static void activateConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints);
  static void deactivateConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints);

  // Its identifier, or what it says: NSButton "play".width <= 24.
  std::string description() const;

  // Gets one line for each new conflict. Without one, debug builds write it to standard error. Null takes it back.
  static void setConflictHandler(std::function<void(const std::string& line)> handler);
  static void reportConflict(const std::string& line);

  // For interface files: the items come after the constraint.
  void setFirstItem(const Ref<NSView>& item);
  void setSecondItem(const Ref<NSView>& item);
  std::optional<std::string> nibProblem() const override;

 private:
  friend class ViewConstraints;
  friend class LayoutEngine;
  std::optional<std::string> problem() const;
  bool isComplete() const;
  NSView* nearestHolder() const;
  void itemDidCome();

  WeakRef<NSView> firstItem_, secondItem_;
  NSLayoutAttribute firstAttribute_ = NSLayoutAttributeNotAnAttribute, secondAttribute_ = NSLayoutAttributeNotAnAttribute;
  NSLayoutRelation relation_ = NSLayoutRelationEqual;
  CGFloat multiplier_ = 1, constant_ = 0;
  NSLayoutPriority priority_ = NSLayoutPriorityRequired;
  std::string identifier_;
  NSView* holder_ = nullptr;        // the view whose list it is in
  LayoutEngine* engine_ = nullptr;  // that solves it
  long order_ = 0;                  // in which constraints were added
};

// What NSLayoutConstraint::animator gives. Used where it is made: constraint->animator()->setConstant(0);
class NSLayoutConstraintAnimator {
 public:
  explicit NSLayoutConstraintAnimator(NSLayoutConstraint& constraint) : constraint_(constraint) {}
  const NSLayoutConstraintAnimator* operator->() const { return this; }

  void setConstant(CGFloat constant) const;

 private:
  NSLayoutConstraint& constraint_;
};

}  // namespace tessaluna::platform
