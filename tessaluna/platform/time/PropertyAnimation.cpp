#include "tessaluna/platform/time/PropertyAnimation.h"

#include <map>
#include <utility>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/time/CAMediaTimingFunction.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

// By object and property. Each is kept alive by the backend, which calls it at its end, and so for no longer than that lives.
std::map<std::pair<const NSObject*, const void*>, std::weak_ptr<PropertyAnimation>>& runningAnimations() {
  static std::map<std::pair<const NSObject*, const void*>, std::weak_ptr<PropertyAnimation>> animations;
  return animations;
}

}  // namespace

CGFloat valueBetween(CGFloat from, CGFloat to, double share) { return from + (to - from) * share; }
CGPoint valueBetween(CGPoint from, CGPoint to, double share) {
  return {valueBetween(from.x, to.x, share), valueBetween(from.y, to.y, share)};
}
CGSize valueBetween(CGSize from, CGSize to, double share) {
  return {valueBetween(from.width, to.width, share), valueBetween(from.height, to.height, share)};
}
CGRect valueBetween(CGRect from, CGRect to, double share) {
  return {valueBetween(from.origin, to.origin, share), valueBetween(from.size, to.size, share)};
}

void PropertyAnimation::start(const Subject& subject, const NSAnimationContext& context) {
  stop(*subject.object, subject.property);
  const double duration = animationDuration(context.duration());
  if (duration == 0) return subject.set(*subject.object, 1);
  const auto animation = std::make_shared<PropertyAnimation>(subject, context, duration);
  runningAnimations()[{subject.object.get(), subject.property}] = animation;
  // The end does not wait for a frame: a window that nobody can see may have none.
  backend::Backend::current()->callAfter(duration, [animation] { animation->end(); });
  animation->waitForFrame(*subject.object);
}

// Null for a property that does not move.
std::shared_ptr<PropertyAnimation> PropertyAnimation::running(const NSObject& object, const void* property) {
  const auto found = runningAnimations().find({&object, property});
  std::shared_ptr<PropertyAnimation> animation = found == runningAnimations().end() ? nullptr : found->second.lock();
  // Another object may be where the animated one was.
  return animation && animation->object_.lock().get() == &object ? animation : nullptr;
}

void PropertyAnimation::stop(const NSObject& object, const void* property) {
  if (const auto animation = running(object, property)) animation->cancel();
}

void PropertyAnimation::finish(const NSObject& object, const void* property) {
  if (const auto animation = running(object, property)) animation->end();
}

void PropertyAnimation::willBeSet(const NSObject& object, const void* property) {
  if (runningAnimations().empty()) return;  // as nearly always
  if (const auto animation = running(object, property); animation && !animation->isSetting_) animation->cancel();
}

PropertyAnimation::PropertyAnimation(const Subject& subject, const NSAnimationContext& context, double duration)
    : object_(subject.object),
      address_(subject.object.get()),
      subject_(subject),
      timing_(context.timingFunction() ? context.timingFunction()
                                       : CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionDefault)),
      group_(context.group()),
      start_(backend::Backend::current()->now()),
      duration_(duration) {
  subject_.object = nullptr;
  group_->begin();
}

void PropertyAnimation::waitForFrame(NSObject& object) {
  auto next = [weak = weak_from_this()] {
    if (const std::shared_ptr<PropertyAnimation> animation = weak.lock()) animation->step();
  };
  NSWindow* window = subject_.windowOf(object);
  if (window && window->isVisible() && window->nativeWindow()) window->nativeWindow()->callAtNextFrame(std::move(next));
  else if (auto* backend = backend::Backend::current()) backend->callAfter(framePeriodWithoutWindow, std::move(next));
}

void PropertyAnimation::step() {
  const Ref<NSObject> object = object_.lock();
  const backend::Backend* backend = backend::Backend::current();
  if (isFinished_ || !backend) return;
  const double passed = backend->now() - start_;
  if (!object || passed >= duration_) return end();
  set(*object, timing_->valueAt(passed / duration_));
  if (!isFinished_) waitForFrame(*object);
}

void PropertyAnimation::set(NSObject& object, double share) {
  isSetting_ = true;
  const AtEndOfScope reset([this] { isSetting_ = false; });
  subject_.set(object, share);
}

void PropertyAnimation::end() {
  const auto held = shared_from_this();
  const Ref<NSObject> object = object_.lock();
  if (isFinished_) return;
  leave();
  if (object) set(*object, 1);
  group_->end();
}

void PropertyAnimation::cancel() {
  leave();
  group_->end();
}

void PropertyAnimation::leave() {
  isFinished_ = true;
  const auto found = runningAnimations().find({address_, subject_.property});
  if (found != runningAnimations().end() && found->second.lock().get() == this) runningAnimations().erase(found);
}

}  // namespace tessaluna::platform
