// Does something when the scope is left, also by an exception.
//   const AtEndOfScope reset([&] { isReleasing_ = false; });
#pragma once

#include <utility>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

template <class Function>
class AtEndOfScope {
 public:
  explicit AtEndOfScope(Function function) : function_(std::move(function)) {}
  ~AtEndOfScope() { function_(); }
  AtEndOfScope(const AtEndOfScope&) = delete;
  AtEndOfScope& operator=(const AtEndOfScope&) = delete;

 private:
  Function function_;
};

}  // namespace tessaluna::platform
