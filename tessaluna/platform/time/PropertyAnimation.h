// Moves a property of an object from one value to another, over time, by calling its setter. The steps come with the frames
// of a window, where one shows the object. What an animator of a class does for each of its properties:
//
//   void NSSplitterAnimator::setPosition(CGFloat position) const {
//     animateProperty<&NSSplitter::setPosition>(splitter_, splitter_.position(), position,
//                                               [](NSSplitter& splitter) { return splitter.window(); });
//   }
//
// The object is not kept alive, and may go at any time. A second animation of a property takes the place of the first,
// wherever that has got to, and so does a value that the program sets directly, if the setter calls propertyWillBeSet.
#pragma once

#include <functional>
#include <memory>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/time/NSAnimationContext.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

// The value at a share of the way, which lies outside 0 to 1 where a timing function goes beyond its ends.
CGFloat valueBetween(CGFloat from, CGFloat to, double share);
CGPoint valueBetween(CGPoint from, CGPoint to, double share);
CGSize valueBetween(CGSize from, CGSize to, double share);
CGRect valueBetween(CGRect from, CGRect to, double share);

class PropertyAnimation : public std::enable_shared_from_this<PropertyAnimation> {
 public:
  struct Subject {
    Ref<NSObject> object;
    const void* property;  // an address for each property of a class
    std::function<void(NSObject&, double share)> set;
    std::function<NSWindow*(NSObject&)> windowOf;  // whose frames count; null for none
  };
  static void start(const Subject& subject, const NSAnimationContext& context);
  static void stop(const NSObject& object, const void* property);
  static void finish(const NSObject& object, const void* property);
  static void willBeSet(const NSObject& object, const void* property);

  PropertyAnimation(const Subject& subject, const NSAnimationContext& context, double duration);

 private:
  static std::shared_ptr<PropertyAnimation> running(const NSObject& object, const void* property);
  void waitForFrame(NSObject& object);
  void step();
  void set(NSObject& object, double share);
  void end();
  void cancel();
  void leave();

  WeakRef<NSObject> object_;
  const NSObject* const address_;
  Subject subject_;  // without its object
  Ref<CAMediaTimingFunction> timing_;
  std::shared_ptr<AnimationGroup> group_;
  double start_, duration_;
  bool isFinished_ = false, isSetting_ = false;
};

template <auto Setter>
inline constexpr char animatedProperty = 0;  // only its address counts

// By the current context, or another one.
template <auto Setter, class Object, class Value, class WindowOf>
void animateProperty(Object& object, const Value& from, const Value& to, WindowOf windowOf,
                     const NSAnimationContext& context = *NSAnimationContext::currentContext()) {
  PropertyAnimation::start(
      {.object = refTo(object),
       .property = &animatedProperty<Setter>,
       .set = [from, to](
                  NSObject& self,
                  double share) { (static_cast<Object&>(self).*Setter)(share == 1 ? to : valueBetween(from, to, share)); },
       .windowOf = [windowOf](NSObject& self) -> NSWindow* { return windowOf(static_cast<Object&>(self)); }},
      context);
}

// Leaves the property as it is now. Nothing for one that does not move.
template <auto Setter>
void stopAnimationOfProperty(const NSObject& object) {
  PropertyAnimation::stop(object, &animatedProperty<Setter>);
}

// What a setter calls first. One that an animation calls is part of that; any other ends the animation.
template <auto Setter>
void propertyWillBeSet(const NSObject& object) {
  PropertyAnimation::willBeSet(object, &animatedProperty<Setter>);
}

// Moves the property to its last value immediately. Nothing for one that does not move.
template <auto Setter>
void finishAnimationOfProperty(const NSObject& object) {
  PropertyAnimation::finish(object, &animatedProperty<Setter>);
}

}  // namespace tessaluna::platform
