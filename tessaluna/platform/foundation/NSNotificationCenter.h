// Passes news of something that happened to its observers, without the two sides knowing each other. Blocks run at
// once, on the thread that posts, in the order in which they were added.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSOperationQueue;  // there is none yet: the queue of an observer is always absent

class NSNotification : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSNotification(std::string name, Ref<NSObject> object) : name_(std::move(name)), object_(std::move(object)) {}

  const std::string& name() const { return name_; }
  const Ref<NSObject>& object() const { return object_; }  // what it happened to; may be null

 private:
  std::string name_;
  Ref<NSObject> object_;
};

class NSNotificationCenter : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  static NSNotificationCenter& defaultCenter();

  using Block = std::function<void(const Ref<NSNotification>&)>;
  // An empty name observes all names, a null object all objects; the object is not kept alive. The center keeps the
  // block until removeObserver is called with the token.
  Ref<NSObject> addObserverForName(std::string_view name, const Ref<NSObject>& object, NSOperationQueue* queue, Block block);
  // A token that is null or no longer known does nothing.
  void removeObserver(const Ref<NSObject>& token);

  // Notifies those who observe it now. An observer that an earlier block has removed is no longer called.
  void postNotificationName(std::string_view name, const Ref<NSObject>& object);
  void postNotification(const Ref<NSNotification>& notification);

 private:
  class Observer;
  std::vector<Ref<Observer>> observers_;
};

}  // namespace tessaluna::platform
