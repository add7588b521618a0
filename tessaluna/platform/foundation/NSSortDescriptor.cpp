#include "tessaluna/platform/foundation/NSSortDescriptor.h"

namespace tessaluna::platform {

const ClassInfo NSSortDescriptor::staticClassInfo{.name = "NSSortDescriptor", .base = &NSObject::staticClassInfo};

bool NSSortDescriptor::isEqual(const NSObject* other) const {
  const auto* descriptor = dynamic_cast<const NSSortDescriptor*>(other);
  return descriptor && descriptor->key_ == key_ && descriptor->ascending_ == ascending_;
}

}  // namespace tessaluna::platform
