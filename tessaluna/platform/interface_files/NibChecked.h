// For classes of interface files whose outlets may make no sense together. The loader asks once all are connected.
#pragma once

#include <optional>
#include <string>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class NibChecked {
 public:
  virtual ~NibChecked() = default;
  // What is wrong with the object, which makes the document a bad one; absent if all is well.
  virtual std::optional<std::string> nibProblem() const = 0;
};

}  // namespace tessaluna::platform
