#include "tessaluna/platform/views/ViewConstraints.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/views/ViewConstraintsState.h"

namespace tessaluna::platform {

namespace {

const NSView& topOf(const NSView& view) {
  const NSView* top = &view;
  while (top->superview()) top = top->superview();
  return *top;
}

std::size_t indexOf(NSLayoutConstraintOrientation orientation) {
  return orientation == NSLayoutConstraintOrientationHorizontal ? 0 : 1;
}

}  // namespace

ViewConstraints::ViewConstraints(CGRect frame) : ViewLayout(frame) {}
ViewConstraints::ViewConstraints(NSCoder& coder) : ViewLayout(coder) {}

ViewConstraints::~ViewConstraints() {
  if (!state_) return;
  // Views below that somebody else holds keep their constraints among each other. The others go with this one, and so let go of
  // survivors of their own.
  const auto takeOutSurvivors = [this](const DequeList<Ref<NSView>>& views, const auto& again) -> void {
    for (const Ref<NSView>& view : views) {
      if (view.use_count() > 1) takeOut(view);
      else again(view->subviews(), again);
    }
  };
  if (state_->engine) takeOutSurvivors(subviews(), takeOutSurvivors);
  for (const Ref<NSLayoutConstraint>& constraint : state_->held) {
    if (constraint->engine_) constraint->engine_->remove(*constraint);
    constraint->holder_ = nullptr;
  }
}

ViewConstraints::State& ViewConstraints::state() {
  if (!state_) state_ = std::make_unique<State>();
  return *state_;
}

const std::vector<Ref<NSLayoutConstraint>>& ViewConstraints::constraints() const {
  static const std::vector<Ref<NSLayoutConstraint>> none;
  return state_ ? state_->held : none;
}

void ViewConstraints::addConstraint(const Ref<NSLayoutConstraint>& constraint) {
  if (!constraint || constraint->holder_ == &asView()) return;
  const Ref<NSLayoutConstraint> held = constraint;
  if (constraint->holder_) constraint->holder_->removeConstraint(held);
  static long added = 0;
  constraint->order_ = ++added;
  constraint->holder_ = &asView();
  state().held.push_back(held);
  // One of an interface file still waits for its items.
  if (!constraint->isComplete()) return;
  if (const auto problem = constraint->nibProblem()) stopProgram("NSView: " + *problem + ": " + constraint->description());
  install(*constraint);
}

void ViewConstraints::addConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints) {
  for (const Ref<NSLayoutConstraint>& constraint : constraints) addConstraint(constraint);
}

void ViewConstraints::removeConstraint(const Ref<NSLayoutConstraint>& constraint) {
  if (!constraint || constraint->holder_ != &asView()) return;
  const Ref<NSLayoutConstraint> held = constraint;
  if (constraint->engine_) constraint->engine_->remove(*constraint);
  constraint->holder_ = nullptr;
  std::erase(state().held, held);
}

void ViewConstraints::removeConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints) {
  const std::vector<Ref<NSLayoutConstraint>> copy = constraints;  // may be the list that is changed
  for (const Ref<NSLayoutConstraint>& constraint : copy) removeConstraint(constraint);
}

void ViewConstraints::install(NSLayoutConstraint& constraint) {
  static_cast<ViewConstraints&>(*constraint.holder_).makeEngineOfTree().add(constraint);
}

LayoutEngine& ViewConstraints::makeEngineOfTree() {
  auto& top = const_cast<NSView&>(topOf(asView()));
  std::shared_ptr<LayoutEngine>& engine = static_cast<ViewConstraints&>(top).state().engine;
  if (!engine) engine = std::make_shared<LayoutEngine>(top);
  return *engine;
}

bool ViewConstraints::translatesAutoresizingMaskIntoConstraints() const { return !state_ || state_->translatesMask; }

void ViewConstraints::setTranslatesAutoresizingMaskIntoConstraints(bool does) {
  if (std::exchange(state().translatesMask, does) != does) contentSizeDidChange();
}

NSLayoutPriority ViewConstraints::contentHuggingPriorityForOrientation(NSLayoutConstraintOrientation orientation) const {
  return state_ ? state_->hugging[indexOf(orientation)] : NSLayoutPriorityDefaultLow;
}

void ViewConstraints::setContentHuggingPriority(NSLayoutPriority priority, NSLayoutConstraintOrientation orientation) {
  if (std::exchange(state().hugging[indexOf(orientation)], priority) != priority) contentSizeDidChange();
}

NSLayoutPriority ViewConstraints::contentCompressionResistancePriorityForOrientation(
    NSLayoutConstraintOrientation orientation) const {
  return state_ ? state_->resistance[indexOf(orientation)] : NSLayoutPriorityDefaultHigh;
}

void ViewConstraints::setContentCompressionResistancePriority(NSLayoutPriority priority,
                                                              NSLayoutConstraintOrientation orientation) {
  if (std::exchange(state().resistance[indexOf(orientation)], priority) != priority) contentSizeDidChange();
}

void ViewConstraints::setContentHuggingPriorities(CGSize priorities) {
  setContentHuggingPriority(priorities.width, NSLayoutConstraintOrientationHorizontal);
  setContentHuggingPriority(priorities.height, NSLayoutConstraintOrientationVertical);
}

void ViewConstraints::setContentCompressionResistancePriorities(CGSize priorities) {
  setContentCompressionResistancePriority(priorities.width, NSLayoutConstraintOrientationHorizontal);
  setContentCompressionResistancePriority(priorities.height, NSLayoutConstraintOrientationVertical);
}

bool ViewConstraints::needsUpdateConstraints() const { return state_ && state_->needsUpdate; }

void ViewConstraints::setNeedsUpdateConstraints(bool needs) {
  state().needsUpdate = needs;
  if (needs) makeEngineOfTree().callUpdateConstraints(asView());
}

// What the other parts of a view report.

bool ViewConstraints::isPlacedByConstraints() const { return state_ && state_->itemOf && !state_->translatesMask; }

void ViewConstraints::frameDidChange() {
  if (state_ && state_->itemOf) state_->itemOf->frameDidChange(asView());
}

void ViewConstraints::maskDidChange() {
  if (translatesAutoresizingMaskIntoConstraints()) contentSizeDidChange();
}

void ViewConstraints::contentSizeDidChange() {
  if (state_ && state_->itemOf) state_->itemOf->contentDidChange(asView());
}

void ViewConstraints::layoutDirectionDidChange() {
  if (state_ && state_->itemOf) state_->itemOf->layoutDirectionDidChange(asView());
}

// A tree with an engine of its own has become a part of a larger one.
void ViewConstraints::cameIntoSuperview() {
  if (!state_ || !state_->engine) return;
  const std::shared_ptr<LayoutEngine> earlier = std::exchange(state_->engine, nullptr);
  LayoutEngine& engine = makeEngineOfTree();
  for (NSLayoutConstraint* constraint : earlier->takeAll()) engine.add(*constraint);
  for (const Ref<NSView>& view : earlier->takeViewsToUpdate(&asView())) engine.callUpdateConstraints(*view);
}

void ViewConstraints::willLeaveSuperview() { static_cast<ViewConstraints&>(*superview()).takeOut(refTo(asView())); }

// Constraints across the cut end; those within the part that leaves get an engine of their own.
void ViewConstraints::takeOut(const Ref<NSView>& subview) {
  const ViewConstraints& top = topOf(asView());
  if (!top.state_ || !top.state_->engine) return;
  const std::shared_ptr<LayoutEngine> earlier = top.state_->engine;
  const std::vector<Ref<NSView>> waiting = earlier->takeViewsToUpdate(subview.get());
  std::vector<NSLayoutConstraint*> within;
  for (NSLayoutConstraint* constraint : earlier->takeConstraintsBelow(*subview)) {
    if (constraint->holder_->isDescendantOf(subview.get())) within.push_back(constraint);
    else constraint->holder_->removeConstraint(refTo(*constraint));
  }
  if (within.empty() && waiting.empty()) return;
  LayoutEngine& engine =
      *(static_cast<ViewConstraints&>(*subview).state().engine = std::make_shared<LayoutEngine>(*subview));
  for (NSLayoutConstraint* constraint : within) engine.add(*constraint);
  for (const Ref<NSView>& view : waiting) engine.callUpdateConstraints(*view);
}

void ViewConstraints::solve() {
  const ViewConstraints& top = topOf(asView());
  if (!top.state_) return;
  // A frame that is set may make the tree a part of another, which ends the engine.
  const std::shared_ptr<LayoutEngine> engine = top.state_->engine;
  if (engine) engine->run();
}

CGSize ViewConstraints::constrainedSize(CGSize unconstrained) const {
  return LayoutEngine::fittingSizeOf(asView(), unconstrained);
}

}  // namespace tessaluna::platform
