// A window whose content view holds views that constraints place, and the lines about conflicts.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {

class ConstrainedView : public harness::ProbeView {
 public:
  using ProbeView::ProbeView;
  CGSize intrinsic{noIntrinsicMetric, noIntrinsicMetric};
  std::function<void()> onUpdate;
  CGSize intrinsicContentSize() const override { return intrinsic; }
  void updateConstraints() override {
    if (onUpdate) onUpdate();
    NSView::updateConstraints();
  }
};

// A window of 200 by 150 points whose content view, flipped or not, holds views that constraints place.
class ConstraintsWorld : public harness::StillWorld {
 protected:
  static constexpr auto left = NSLayoutAttributeLeft, right = NSLayoutAttributeRight, top = NSLayoutAttributeTop,
                        bottom = NSLayoutAttributeBottom, leading = NSLayoutAttributeLeading,
                        trailing = NSLayoutAttributeTrailing, width = NSLayoutAttributeWidth,
                        height = NSLayoutAttributeHeight, centerX = NSLayoutAttributeCenterX,
                        centerY = NSLayoutAttributeCenterY;

  ConstraintsWorld() {
    NSLayoutConstraint::setConflictHandler([this](const std::string& line) { conflicts.push_back(line); });
  }
  ~ConstraintsWorld() override { NSLayoutConstraint::setConflictHandler(nullptr); }

  Ref<ConstrainedView> addView(const Ref<NSView>& superview, std::string identifier = "") {
    const auto view = make<ConstrainedView>(CGRect{});
    view->setIdentifier(std::move(identifier));
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    superview->addSubview(view);
    return view;
  }
  Ref<NSLayoutConstraint> constrain(const Ref<NSView>& item, NSLayoutAttribute attribute, NSLayoutRelation relation,
                                    const Ref<NSView>& toItem, NSLayoutAttribute toAttribute, CGFloat constant,
                                    NSLayoutPriority priority = 1000, CGFloat multiplier = 1) {
    const auto result =
        NSLayoutConstraint::constraintWithItem(item, attribute, relation, toItem, toAttribute, multiplier, constant);
    result->setPriority(priority);
    result->setActive(true);
    return result;
  }
  Ref<NSLayoutConstraint> equal(const Ref<NSView>& item, NSLayoutAttribute attribute, const Ref<NSView>& toItem,
                                CGFloat constant, NSLayoutPriority priority = 1000) {
    return constrain(item, attribute, NSLayoutRelationEqual, toItem, attribute, constant, priority);
  }
  Ref<NSLayoutConstraint> size(const Ref<NSView>& item, NSLayoutAttribute attribute, CGFloat constant,
                               NSLayoutPriority priority = 1000) {
    return constrain(item, attribute, NSLayoutRelationEqual, nullptr, NSLayoutAttributeNotAnAttribute, constant, priority);
  }
  void placeAt(const Ref<NSView>& view, CGFloat left, CGFloat top) {
    equal(view, NSLayoutAttributeLeft, refTo(*view->superview()), left);
    equal(view, NSLayoutAttributeTop, refTo(*view->superview()), top);
  }
  CGRect laidOut(const Ref<NSView>& view) {
    window->layoutIfNeeded();
    return view->frame();
  }

  Ref<NSWindow> window = showWindow();
  Ref<NSView> content = window->contentView();
  Ref<ConstrainedView> view = addView(content, "one"), other = addView(content, "two");
  std::vector<std::string> conflicts;
};

}  // namespace tessaluna::platform
