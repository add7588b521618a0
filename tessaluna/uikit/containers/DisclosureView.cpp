#include "tessaluna/uikit/containers/DisclosureView.h"

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/time/CAMediaTimingFunction.h"
#include "tessaluna/platform/time/NSAnimationContext.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/uikit/containers/DisclosureHeaderView.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Selector selectors[] = {action<&DisclosureView::toggleDisclosure>("toggleDisclosure:")};
constexpr Outlet outlets[] = {outlet<&DisclosureView::setHeaderView>("headerView"),
                              outlet<&DisclosureView::setContentView>("contentView")};
constexpr Property properties[] = {property<&DisclosureView::setIsDisclosed, "isDisclosed">(),
                                   property<&DisclosureView::setDisclosedHeight, "disclosedHeight">(),
                                   property<&DisclosureView::setIsChanging, "isChanging">(),
                                   property<&DisclosureView::setLeavesOutFoldedViews, "leavesOutFoldedViews">()};

// As much as no limit: the content decides.
constexpr CGFloat openHeightLimit = 32760;

// The title says what the button will do next.
constexpr std::string_view titleKeyOfOpen = "Hide", titleKeyOfClosed = "Show";

}  // namespace

const ClassInfo DisclosureView::staticClassInfo{.name = "TessalunaUIKit.DisclosureView",
                                                .base = &NSView::staticClassInfo,
                                                .selectors = selectors,
                                                .outlets = outlets,
                                                .properties = properties};

DisclosureView::DisclosureView(NSCoder& coder) : NSView(coder) {
  coder.overlookKeys({"isDisclosed", "disclosedHeight", "isChanging"});
}

void DisclosureView::awakeFromNib() {
  NSView::awakeFromNib();
  measure();
  isDisclosed_ = true;
  isChanging_ = false;
  collapseConstraint_ =
      NSLayoutConstraint::constraintWithItem(refTo<NSView>(*this), NSLayoutAttributeHeight, NSLayoutRelationLessThanOrEqual,
                                             nullptr, NSLayoutAttributeNotAnAttribute, 1, openHeightLimit);
  addConstraint(collapseConstraint_.optional());
  if (headerView_ && headerView_->disclosureButton()) headerView_->disclosureButton()->setHidden(true);
}

void DisclosureView::toggleDisclosure(NSObject*) { setDisclosureTo(!isDisclosed_, true); }

void DisclosureView::setDisclosureTo(bool to, bool animate) {
  if (to == isDisclosed_ || isChanging_) return;
  const Ref<DisclosureView> held = refTo(*this);  // the host may release it as the button changes
  const CGFloat limit = collapseConstraint_->constant();
  bool isDone = false;
  // A layout that throws leaves the section as it was.
  const AtEndOfScope end([&] {
    if (isDone) return;
    collapseConstraint_->setConstant(limit);
    isChanging_ = false;
  });
  if (to) open(animate);
  else close(animate);
  isDone = true;
}

void DisclosureView::open(bool animate) {
  if (!animate) {
    collapseConstraint_->setConstant(openHeightLimit);
    layoutSubtreeIfNeeded();
    measure();
    updateButton(titleKeyOfOpen);
    isDisclosed_ = true;
    reportChange();
    return;
  }
  isChanging_ = true;
  const CGFloat remembered = collapseConstraint_->constant();
  collapseConstraint_->setConstant(openHeightLimit);
  layoutSubtreeIfNeeded();
  measure();
  // Nothing of the measuring shows: the animation starts from where the section is.
  collapseConstraint_->setConstant(remembered);
  layoutSubtreeIfNeeded();
  animateTo(disclosedHeight_, &DisclosureView::didOpen);
}

void DisclosureView::close(bool animate) {
  if (!animate) {
    collapseConstraint_->setConstant(foldedHeight());
    updateButton(titleKeyOfClosed);
    isDisclosed_ = false;
    reportChange();
    return;
  }
  isChanging_ = true;
  // From the present height, and not from the limit that it has while it is open.
  collapseConstraint_->setConstant(fittingSize().height);
  animateTo(foldedHeight(), &DisclosureView::didClose);
}

void DisclosureView::animateTo(CGFloat height, void (DisclosureView::*completion)()) {
  NSAnimationContext::runAnimationGroup(
      [&](NSAnimationContext& context) {
        context.setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut));
        collapseConstraint_->animator()->setConstant(height);
      },
      [weak = WeakRef<DisclosureView>(refTo(*this)), completion] {
        if (const Ref<DisclosureView> view = weak.lock()) (view.get()->*completion)();
      });
}

void DisclosureView::didOpen() {
  const AtEndOfScope end([this] { isChanging_ = false; });
  // Content that grows from here on moves the section.
  collapseConstraint_->setConstant(openHeightLimit);
  updateButton(titleKeyOfOpen);
  isDisclosed_ = true;
  reportChange();
}

void DisclosureView::didClose() {
  const AtEndOfScope end([this] { isChanging_ = false; });
  updateButton(titleKeyOfClosed);
  isDisclosed_ = false;
  reportChange();
}

// To assistive clients, of which some show the header as expanded.
void DisclosureView::reportChange() {
  if (headerView_ && headerView_->isOperable())
    NSAccessibilityPostNotification(headerView_, NSAccessibilityValueChangedNotification);
}

void DisclosureView::measure() { disclosedHeight_ = fittingSize().height; }

CGFloat DisclosureView::foldedHeight() const { return headerView_ ? headerView_->frame().size.height : 0; }

void DisclosureView::updateButton(std::string_view titleKey) {
  if (!headerView_) return;
  const Ref<DisclosureHeaderView> header = headerView_;
  const Ref<NSButton> button = header->disclosureButton();
  if (button) button->setTitle(NSBundle::mainBundle()->localizedStringForKey(titleKey));
  // Intentional: the point is in screen coordinates and is taken for one of the window's, so that this is right for a window
  // at the screen's origin only. The pointer's next entry or exit corrects it.
  const CGPoint point = header->convertPointFromView(NSEvent::mouseLocation(), nullptr);
  if (button) button->setHidden(!NSPointInRect(point, header->bounds()));
}

}  // namespace TessalunaUIKit
