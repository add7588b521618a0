#include "tessaluna/platform/views/ViewLayout.h"

#include <utility>

#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

// More than layouts need that follow from each other; fewer than one notices of two that undo each other.
constexpr int maxRounds = 8;

}  // namespace

void ViewLayout::setNeedsLayout(bool needsLayout) {
  needsLayout_ = needsLayout;
  if (needsLayout) reportMarks();
}

// Everything above learns that there is something to do below, up to a view that knows already.
void ViewLayout::reportMarks() {
  for (ViewLayout* view = this; view->superview(); view = view->superview()) {
    if (view->isInList()) break;
    static_cast<ViewLayout&>(*view->superview()).marked_.append(*view);
  }
  if (window()) window()->layoutIsNeeded();
}

void ViewLayout::sizeDidChange() {
  if (!window()) sizeItCameWith_ = frame().size;
  setNeedsLayout(true);
}

void ViewLayout::cameIntoSuperview() {
  if (hasMarks()) reportMarks();
}

void ViewLayout::layoutSubtreeIfNeeded() {
  for (const ViewLayout* view = this; view; view = view->superview())
    if (view->isDrawing_) return;
  solveConstraints();
  runPass();
}

// Of the whole tree. Who asks for places meanwhile gets them as they are.
void ViewLayout::solveConstraints() {
  ViewLayout* root = this;
  while (root->superview()) root = root->superview();
  const Ref<NSObject> held = root->weak_from_this().lock();  // absent while the view is being made
  if (!held) return;
  const bool wasInPass = std::exchange(root->isInPass_, true);
  const AtEndOfScope end([=] { root->isInPass_ = wasInPass; });
  static_cast<ViewConstraints&>(root->asView()).solve();
}

void ViewLayout::layOutTree() const {
  // The short way for most questions.
  const ViewLayout* content = window() ? window()->contentView().get() : nullptr;
  if (content && !content->hasMarks()) return;
  const ViewLayout* root = this;
  while (true) {
    if (root->isDrawing_ || root->isInPass_) return;
    if (!root->superview()) break;
    root = root->superview();
  }
  if (!root->hasMarks()) return;
  // A question that is asked of a view may need other views to move, and changes nothing about its answer's meaning.
  if (window()) window()->layoutIfNeeded();
  else const_cast<ViewLayout*>(root)->runPass();
}

void ViewLayout::runPass() {
  const Ref<NSObject> held = weak_from_this().lock();  // absent while the view is being made
  if (!held || isInPass_) return;
  isInPass_ = true;
  const AtEndOfScope end([this] { isInPass_ = false; });
  for (int round = 0; round < maxRounds && hasMarks(); ++round) {
    solveConstraints();
    layOutMarked();
  }
}

void ViewLayout::layOutMarked() {
  if (needsLayout_) {
    // The mark ends before it is honored: one that layout() makes is a new one.
    needsLayout_ = false;
    isInLayout_ = true;
    const AtEndOfScope end([this] { isInLayout_ = false; });
    layout();
  }
  LinkedList now;
  now.appendAllOf(marked_);
  // Those that a layout which throws has not let come to their turn stay marked.
  const AtEndOfScope end([&] { marked_.appendAllOf(now); });
  while (ListLink* link = now.takeFirst()) {
    auto& view = static_cast<ViewLayout&>(*link);
    const Ref<NSObject> held = view.shared_from_this();
    // A pass that was begun within a layout() does not come back to it.
    const AtEndOfScope report([&] {
      if (view.hasMarks() && view.superview()) view.reportMarks();
    });
    if (!view.isInLayout_) view.layOutMarked();
  }
}

void ViewLayout::invalidateIntrinsicContentSize() {
  static_cast<ViewConstraints&>(asView()).contentSizeDidChange();
  for (NSView* view = superview(); view; view = view->superview()) {
    if (!view->isSizedByContent()) return;
    // One that is just giving out places has read the size, or is about to.
    ViewLayout& above = *view;
    if (!above.isInLayout_) above.setNeedsLayout(true);
  }
  if (window()) window()->intrinsicContentSizeDidChange(asView());
}

CGSize ViewLayout::fittingSize() const {
  const CGSize intrinsic = intrinsicContentSize();
  return static_cast<const ViewConstraints&>(asView()).constrainedSize(
      {intrinsic.width >= 0 ? intrinsic.width : sizeItCameWith_.width,
       intrinsic.height >= 0 ? intrinsic.height : sizeItCameWith_.height});
}

}  // namespace tessaluna::platform
