// The main bundle has these texts until the closing brace.
#pragma once

#include <utility>

#include "tessaluna/platform/foundation/NSBundle.h"

namespace harness {

class TextsScope {
 public:
  explicit TextsScope(tessaluna::platform::NSBundle::StringTable texts) {
    tessaluna::platform::NSBundle::mainBundle()->setStringTable(std::move(texts));
  }
  ~TextsScope() { tessaluna::platform::NSBundle::mainBundle()->setStringTable({}); }
  TextsScope(const TextsScope&) = delete;
  TextsScope& operator=(const TextsScope&) = delete;
};

}  // namespace harness
