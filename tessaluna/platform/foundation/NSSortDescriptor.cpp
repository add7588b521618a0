#include "tessaluna/platform/foundation/NSSortDescriptor.h"

#include "tessaluna/platform/foundation/NSCoder.h"

namespace tessaluna::platform {

const ClassInfo NSSortDescriptor::staticClassInfo{.name = "NSSortDescriptor", .base = &NSObject::staticClassInfo};

NSSortDescriptor::NSSortDescriptor(NSCoder& coder)
    : key_(coder.decodeStringForKey("key").value_or("")), ascending_(coder.boolForKey("ascending").value_or(true)) {
  if (key_.empty()) coder.fail("NSSortDescriptor: a descriptor needs a key");
}

bool NSSortDescriptor::isEqual(const NSObject* other) const {
  const auto* descriptor = dynamic_cast<const NSSortDescriptor*>(other);
  return descriptor && descriptor->key_ == key_ && descriptor->ascending_ == ascending_;
}

}  // namespace tessaluna::platform
