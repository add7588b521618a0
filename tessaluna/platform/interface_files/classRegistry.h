// The classes that an interface file may name. The platform's own are known from the beginning; a library or a host adds its
// own, once, before its first interface file is used.
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

using ClassFactory = Ref<NSObject> (*)(NSCoder& coder);
void registerClass(std::string_view name, ClassFactory factory);

// Under the name that the class itself has. It needs a constructor from a coder.
template <class T>
void registerClass() {
  registerClass(T::staticClassInfo.name, [](NSCoder& coder) -> Ref<NSObject> { return make<T>(coder); });
}

// Null, and the coder has failed, for a name that nobody registered and for values that the class refuses.
Ref<NSObject> makeObjectOfClass(std::string_view name, NSCoder& coder);

}  // namespace tessaluna::platform
