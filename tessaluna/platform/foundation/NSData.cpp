#include "tessaluna/platform/foundation/NSData.h"

#include <algorithm>

namespace tessaluna::platform {

const ClassInfo NSData::staticClassInfo{.name = "NSData", .base = &NSObject::staticClassInfo};

void NSData::getBytes(void* buffer, std::size_t length) const {
  std::copy_n(bytes_.begin(), std::min(length, bytes_.size()), static_cast<std::byte*>(buffer));
}

bool NSData::isEqual(const NSObject* other) const {
  const auto* data = dynamic_cast<const NSData*>(other);
  return data && data->bytes_ == bytes_;
}

}  // namespace tessaluna::platform
