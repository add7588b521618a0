#include "tessaluna/uikit/containers/DisclosureHeaderView.h"

#include <algorithm>

#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/events/keyEquivalents.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/containers/DisclosureView.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Outlet outlets[] = {outlet<&DisclosureHeaderView::setDisclosureButton>("disclosureButton"),
                              outlet<&DisclosureHeaderView::setParentDisclosure>("parentDisclosure")};
constexpr Property properties[] = {property<&DisclosureHeaderView::setIsOperable, "isOperable">()};

}  // namespace

const ClassInfo DisclosureHeaderView::staticClassInfo{.name = "TessalunaUIKit.DisclosureHeaderView",
                                                      .base = &ViewWithBackground::staticClassInfo,
                                                      .outlets = outlets,
                                                      .properties = properties};

void DisclosureHeaderView::setDisclosureButton(Ref<NSButton> button) { disclosureButton_ = std::move(button); }

void DisclosureHeaderView::updateTrackingAreas() {
  ViewWithBackground::updateTrackingAreas();
  if (!trackingArea_)
    trackingArea_ =
        make<NSTrackingArea>(bounds(), NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited, refTo<NSResponder>(*this));
  const auto& areas = trackingAreas();
  const bool isThere = std::any_of(areas.begin(), areas.end(),
                                   [&](const Ref<NSTrackingArea>& area) { return trackingArea_->isEqual(area.get()); });
  if (!isThere) addTrackingArea(trackingArea_);
}

bool DisclosureHeaderView::takes(const NSEvent& event) const {
  return areEqual(event.trackingArea().get(), trackingArea_.get()) && parentDisclosure_ && !parentDisclosure_->isChanging();
}

void DisclosureHeaderView::mouseEntered(const Ref<NSEvent>& event) {
  if (!takes(*event)) return ViewWithBackground::mouseEntered(event);
  if (disclosureButton_) disclosureButton_->setHidden(false);
}

void DisclosureHeaderView::mouseExited(const Ref<NSEvent>& event) {
  if (!takes(*event)) return ViewWithBackground::mouseExited(event);
  if (disclosureButton_) disclosureButton_->setHidden(true);
}

void DisclosureHeaderView::setIsOperable(bool isOperable) { isOperable_ = isOperable; }

void DisclosureHeaderView::press() {
  const Ref<DisclosureView> section = parentDisclosure_;
  if (const Ref<NSButton> button = disclosureButton_) button->performClick(this);
  else if (section) section->toggleDisclosure(this);
}

void DisclosureHeaderView::keyDown(const Ref<NSEvent>& event) {
  const bool isPress = isKeyEquivalent(*event, " ", 0) || isKeyEquivalent(*event, "\r", 0);
  if (!isOperable_ || !isPress) return ViewWithBackground::keyDown(event);
  if (!event->isARepeat()) press();
}

std::string DisclosureHeaderView::accessibilityRole() const {
  return isOperable_ ? std::string(NSAccessibilityDisclosureTriangleRole) : ViewWithBackground::accessibilityRole();
}

std::string DisclosureHeaderView::accessibilityTitle() const {
  std::string title;
  for (const Ref<NSView>& view : subviews()) {
    const auto* field = dynamic_cast<const NSTextField*>(view.get());
    if (!isOperable_ || !field || field->isHidden()) continue;
    if (!title.empty()) title += ' ';
    title += field->stringValue();
  }
  return title;
}

AccessibilityValue DisclosureHeaderView::accessibilityAttributeValue(std::string_view attribute) const {
  if (isOperable_ && attribute == NSAccessibilityExpandedAttribute && parentDisclosure_)
    return parentDisclosure_->isDisclosed();
  return ViewWithBackground::accessibilityAttributeValue(attribute);
}

std::vector<std::string> DisclosureHeaderView::accessibilityActionNames() const {
  if (!isOperable_) return ViewWithBackground::accessibilityActionNames();
  return {std::string(NSAccessibilityPressAction)};
}

void DisclosureHeaderView::accessibilityPerformAction(std::string_view action) {
  if (isOperable_ && action == NSAccessibilityPressAction) press();
  else ViewWithBackground::accessibilityPerformAction(action);
}

std::optional<AccessibilityElements> DisclosureHeaderView::accessibilityOwnChildren() const {
  auto children = ViewWithBackground::accessibilityOwnChildren();
  // What it says itself needs no second element.
  if (isOperable_ && children)
    std::erase_if(*children, [&](const Ref<NSObject>& child) {
      return child == disclosureButton_ || dynamic_cast<const NSTextField*>(child.get());
    });
  return children;
}

}  // namespace TessalunaUIKit
