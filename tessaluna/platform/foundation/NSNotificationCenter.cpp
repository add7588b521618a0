#include "tessaluna/platform/foundation/NSNotificationCenter.h"

#include <algorithm>

namespace tessaluna::platform {

const ClassInfo NSNotification::staticClassInfo{.name = "NSNotification", .base = &NSObject::staticClassInfo};
const ClassInfo NSNotificationCenter::staticClassInfo{.name = "NSNotificationCenter", .base = &NSObject::staticClassInfo};

class NSNotificationCenter::Observer : public NSObject {
 public:
  Observer(std::string_view name, const Ref<NSObject>& object, Block block)
      : block(std::move(block)), name_(name), object_(object), observesAllObjects_(!object) {}

  bool hearsOf(std::string_view name, const NSObject* object) const {
    if (!name_.empty() && name_ != name) return false;
    return observesAllObjects_ || (object && object_.lock().get() == object);
  }

  const Block block;
  bool isRemoved = false;

 private:
  std::string name_;
  WeakRef<NSObject> object_;
  bool observesAllObjects_;  // one whose object was destroyed observes nothing
};

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
  static const Ref<NSNotificationCenter> center = make<NSNotificationCenter>();
  return *center;
}

Ref<NSObject> NSNotificationCenter::addObserverForName(std::string_view name, const Ref<NSObject>& object, NSOperationQueue*,
                                                       Block block) {
  observers_.push_back(make<Observer>(name, object, std::move(block)));
  return observers_.back();
}

void NSNotificationCenter::removeObserver(const Ref<NSObject>& token) {
  const auto found = std::find(observers_.begin(), observers_.end(), token);
  if (found == observers_.end()) return;
  (*found)->isRemoved = true;
  observers_.erase(found);
}

void NSNotificationCenter::postNotificationName(std::string_view name, const Ref<NSObject>& object) {
  const auto hears = [&](const Ref<Observer>& observer) { return observer->hearsOf(name, object.get()); };
  if (std::any_of(observers_.begin(), observers_.end(), hears))
    postNotification(make<NSNotification>(std::string(name), object));
}

void NSNotificationCenter::postNotification(const Ref<NSNotification>& notification) {
  std::vector<Ref<Observer>> hearing;
  for (const Ref<Observer>& observer : observers_)
    if (observer->hearsOf(notification->name(), notification->object().get())) hearing.push_back(observer);
  for (const Ref<Observer>& observer : hearing)
    if (!observer->isRemoved) observer->block(notification);
}

}  // namespace tessaluna::platform
