// How rows are to be sorted: by what, and in which direction. Immutable.
#pragma once

#include <string>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSSortDescriptor : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSSortDescriptor(std::string key, bool ascending) : key_(std::move(key)), ascending_(ascending) {}
  explicit NSSortDescriptor(NSCoder& coder);  // Keys: "key", "ascending" (true if missing).

  const std::string& key() const { return key_; }
  bool ascending() const { return ascending_; }
  Ref<NSSortDescriptor> reversedSortDescriptor() const { return make<NSSortDescriptor>(key_, !ascending_); }
  bool isEqual(const NSObject* other) const override;

 private:
  std::string key_;
  bool ascending_;
};

}  // namespace tessaluna::platform
