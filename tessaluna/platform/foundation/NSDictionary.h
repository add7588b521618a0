// Objects by keys that are texts. The first class does not change, the second one does; where a dictionary is asked for, either
// may be given.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSMutableDictionary;

class NSDictionary : public NSObject {
 public:
  using Entries = std::map<std::string, Ref<NSObject>, std::less<>>;
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSDictionary() = default;
  // No object is absent, or the program stops.
  explicit NSDictionary(Entries entries);

  std::size_t count() const { return entries_.size(); }
  Ref<NSObject> objectForKey(std::string_view key) const;  // null for an unknown key
  template <class T>
  Ref<T> objectForKey(std::string_view key) const {  // null also for an object of another class
    return std::dynamic_pointer_cast<T>(objectForKey(key));
  }
  std::vector<std::string> allKeys() const;            // in their order
  const Entries& entries() const { return entries_; }  // to go over all of them

  Ref<NSMutableDictionary> mutableCopy() const;  // with the same objects
  // The same keys with equal objects.
  bool isEqual(const NSObject* other) const override;

 protected:
  Entries entries_;
};

class NSMutableDictionary : public NSDictionary {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  using NSDictionary::NSDictionary;

  // A null object stops the program.
  void setObjectForKey(Ref<NSObject> object, std::string_view key);
  void removeObjectForKey(std::string_view key);  // an unknown key changes nothing
  void removeAllObjects() { entries_.clear(); }
};

}  // namespace tessaluna::platform
