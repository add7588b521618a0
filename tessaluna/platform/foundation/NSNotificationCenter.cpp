#include "tessaluna/platform/foundation/NSNotificationCenter.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace tessaluna::platform {

const ClassInfo NSNotification::staticClassInfo{.name = "NSNotification", .base = &NSObject::staticClassInfo};
const ClassInfo NSNotificationCenter::staticClassInfo{.name = "NSNotificationCenter", .base = &NSObject::staticClassInfo};

class NSNotificationCenter::Observer : public NSObject {
 public:
  Observer(std::string_view name, const Ref<NSObject>& object, Block block)
      : block(std::make_shared<Block>(std::move(block))), name_(name), object_(object), observesAllObjects_(!object) {}

  bool observes(std::string_view name, const NSObject* object) const {
    if (!name_.empty() && name_ != name) return false;
    return observesAllObjects_ || (object && object_.lock().get() == object);
  }

  std::shared_ptr<const Block> block;  // null once it is removed, though somebody may keep the token

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
  // Freed last: what it has captured may change the list as it goes.
  const std::shared_ptr<const Block> block = std::exchange((*found)->block, nullptr);
  observers_.erase(found);
}

void NSNotificationCenter::postNotificationName(std::string_view name, const Ref<NSObject>& object) {
  const auto observes = [&](const Ref<Observer>& observer) { return observer->observes(name, object.get()); };
  if (std::any_of(observers_.begin(), observers_.end(), observes))
    postNotification(make<NSNotification>(std::string(name), object));
}

void NSNotificationCenter::postNotification(const Ref<NSNotification>& notification) {
  std::vector<Ref<Observer>> notified;
  for (const Ref<Observer>& observer : observers_)
    if (observer->observes(notification->name(), notification->object().get())) notified.push_back(observer);
  // A block may remove its own observer, or one that comes after it.
  for (const Ref<Observer>& observer : notified)
    if (const std::shared_ptr<const Block> block = observer->block) (*block)(notification);
}

}  // namespace tessaluna::platform
