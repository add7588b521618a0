#include "tessaluna/uikit/links/AccessibleLinks.h"

#include <utility>

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

class AccessibleLink : public NSObject, public NSAccessibility {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  AccessibleLink(const Ref<NSObject>& view, LinksForClients& links, std::size_t index)
      : view_(view), links_(links), index_(index) {}

  // A client may keep the element for longer than there is such a link.
  bool isAccessibilityElement() const override { return isThere(); }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityLinkRole); }
  std::string accessibilityTitle() const override { return isThere() ? links_.textOfLink(index_) : std::string(); }
  CGRect accessibilityFrame() const override { return isThere() ? links_.frameOfLink(index_) : CGRect{}; }
  bool isAccessibilityFocused() const override { return isThere() && links_.isLinkFocused(index_); }
  Ref<NSObject> accessibilityParent() const override { return isThere() ? links_.parentOfLinks() : nullptr; }
  std::vector<std::string> accessibilityActionNames() const override { return {std::string(NSAccessibilityPressAction)}; }
  void accessibilityPerformAction(std::string_view action) override {
    const Ref<NSObject> held = view_.lock();
    if (isThere() && action == NSAccessibilityPressAction) links_.pressLink(index_);
  }
  void end() { view_.reset(); }

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override { return AccessibilityElements(); }

 private:
  bool isThere() const { return !view_.expired() && index_ < links_.numberOfLinks(); }

  WeakRef<NSObject> view_;
  LinksForClients& links_;  // lives as long as the view
  std::size_t index_;
};

const ClassInfo AccessibleLink::staticClassInfo{.name = "TessalunaUIKit.AccessibleLink", .base = &NSObject::staticClassInfo};

}  // namespace

AccessibilityElements AccessibleLinks::elements(NSObject& view, LinksForClients& links) {
  if (elements_.empty()) {
    for (std::size_t i = 0; i < links.numberOfLinks(); ++i)
      if (!links.textOfLink(i).empty()) elements_.push_back(make<AccessibleLink>(refTo(view), links, i));
  }
  return elements_;
}

void AccessibleLinks::linksDidChange() {
  for (const Ref<NSObject>& element : std::exchange(elements_, {})) {
    NSAccessibilityPostNotification(element, NSAccessibilityUIElementDestroyedNotification);
    static_cast<AccessibleLink&>(*element).end();
  }
}

}  // namespace TessalunaUIKit
