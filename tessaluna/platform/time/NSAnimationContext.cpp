#include "tessaluna/platform/time/NSAnimationContext.h"

#include <utility>
#include <vector>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/time/CAMediaTimingFunction.h"
#include "tessaluna/platform/time/DispatchQueue.h"

namespace tessaluna::platform {

namespace {

std::vector<Ref<NSAnimationContext>>& openGroups() {
  static std::vector<Ref<NSAnimationContext>> groups;
  return groups;
}

}  // namespace

const ClassInfo NSAnimationContext::staticClassInfo{.name = "NSAnimationContext", .base = &NSObject::staticClassInfo};

NSAnimationContext::NSAnimationContext() : group_(std::make_shared<AnimationGroup>(nullptr)) {}

void NSAnimationContext::setCompletionHandler(std::function<void()> handler) { group_->setCompletion(std::move(handler)); }

Ref<NSAnimationContext> NSAnimationContext::currentContext() {
  if (!openGroups().empty()) return openGroups().back();
  // Kept by the main queue alone, and so for one turn.
  static WeakRef<NSAnimationContext> ofThisTurn;
  Ref<NSAnimationContext> context = ofThisTurn.lock();
  if (context) return context;
  context = make<NSAnimationContext>();
  context->group_->begin();
  ofThisTurn = context;
  if (backend::Backend::current()) DispatchQueue::main().async([context] {});
  return context;
}

void NSAnimationContext::beginGrouping() {
  const auto context = make<NSAnimationContext>();
  const Ref<NSAnimationContext> outer = currentContext();
  context->duration_ = outer->duration_;
  context->timingFunction_ = outer->timingFunction_;
  outer->group_->begin();
  context->group_ = std::make_shared<AnimationGroup>(outer->group_);
  context->group_->begin();
  openGroups().push_back(context);
}

void NSAnimationContext::endGrouping() {
  if (openGroups().empty()) stopProgram("NSAnimationContext: a group was ended that had not begun");
  const Ref<NSAnimationContext> context = openGroups().back();
  openGroups().pop_back();
  context->group_->end();
}

void NSAnimationContext::runAnimationGroup(const std::function<void(NSAnimationContext&)>& changes,
                                           std::function<void()> completionHandler) {
  beginGrouping();
  const Ref<NSAnimationContext> context = currentContext();
  context->setCompletionHandler(std::move(completionHandler));
  const AtEndOfScope end(endGrouping);
  if (changes) changes(*context);
}

void AnimationGroup::end() {
  if (--unfinished_ > 0) return;
  if (const std::function<void()> completion = std::exchange(completion_, nullptr)) {
    // Without a backend nothing is ever later.
    if (backend::Backend::current()) DispatchQueue::main().async(completion);
    else completion();
  }
  if (outer_) outer_->end();
}

}  // namespace tessaluna::platform
