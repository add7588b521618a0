#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

namespace {

const Selector* findSelector(const ClassInfo* info, std::string_view name) {
  return findMember(info, &ClassInfo::selectors, &Selector::name, name);
}

}  // namespace

const ClassInfo NSObject::staticClassInfo{.name = "NSObject"};

bool NSObject::respondsToSelector(std::string_view selector) const {
  return findSelector(&classInfo(), selector) != nullptr;
}

bool NSObject::performSelector(std::string_view selector, NSObject* sender) {
  const Selector* found = findSelector(&classInfo(), selector);
  if (!found) return false;
  found->perform(*this, sender);
  return true;
}

}  // namespace tessaluna::platform
