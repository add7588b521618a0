// Where lines go that warn of a mistake of the program which does not stop it: to a function that the host sets, on standard
// error in debug builds without one, and nowhere in release builds. There is one for each kind of mistake.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class WarningHandler {
 public:
  using Function = std::function<void(const std::string& line)>;

  void set(Function function) { function_ = std::move(function); }  // an empty one takes it back
  void warn(const std::string& line) const;

 private:
  Function function_;
};

}  // namespace tessaluna::platform
