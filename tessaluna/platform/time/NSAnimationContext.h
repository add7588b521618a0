// How the animators make a change: for how long, at which pace, and what happens afterwards.
//
//   NSAnimationContext::runAnimationGroup(
//       [&](NSAnimationContext& context) {
//         context.setDuration(0.4);
//         view->animator()->setFrame(open);
//       },
//       [weak] { ... });
//
// Used on the main thread. Where the user wants less motion, animators change things at once and completions still come later.
#pragma once

#include <functional>
#include <memory>

#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/time/durations.h"

namespace tessaluna::platform {

class AnimationGroup;
class CAMediaTimingFunction;

class NSAnimationContext : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Calls `changes` at once, with the context of a group of its own. The completion handler is called on the main queue, never
  // before this has returned, once all animations that were started meanwhile have ended, in groups within this one too.
  // One that another replaced has ended, and so has one whose object was destroyed.
  static void runAnimationGroup(const std::function<void(NSAnimationContext& context)>& changes,
                                std::function<void()> completionHandler = nullptr);

  // The same in steps. A group within another starts with that one's duration and timing function, and leaves them as they
  // are. An end without a beginning stops the program.
  static void beginGrouping();
  static void endGrouping();

  // That of the innermost group. Outside of all groups the changes of a context last for this turn of the main queue.
  static Ref<NSAnimationContext> currentContext();

  NSAnimationContext();

  double duration() const { return duration_; }  // seconds
  void setDuration(double seconds) { duration_ = seconds; }
  // Null is kCAMediaTimingFunctionDefault.
  const Ref<CAMediaTimingFunction>& timingFunction() const { return timingFunction_; }
  void setTimingFunction(Ref<CAMediaTimingFunction> function) { timingFunction_ = std::move(function); }
  // Called once, when the group is through. Outside of all groups it is never called.
  void setCompletionHandler(std::function<void()> handler);

  // Counts the animations of the group; for those who start one.
  const std::shared_ptr<AnimationGroup>& group() const { return group_; }

 private:
  double duration_ = defaultAnimationDuration;
  Ref<CAMediaTimingFunction> timingFunction_;
  std::shared_ptr<AnimationGroup> group_;
};

// What has begun and not ended in a group: its animations, groups within it, and the changes themselves.
class AnimationGroup {
 public:
  explicit AnimationGroup(std::shared_ptr<AnimationGroup> outer) : outer_(std::move(outer)) {}

  void begin() { ++unfinished_; }
  void end();  // the last one queues the completion
  void setCompletion(std::function<void()> completion) { completion_ = std::move(completion); }

 private:
  std::shared_ptr<AnimationGroup> outer_;
  std::function<void()> completion_;
  int unfinished_ = 0;
};

}  // namespace tessaluna::platform
