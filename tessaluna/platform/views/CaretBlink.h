// The blinking of a caret, on the backend's clock. Nothing runs while it is stopped.
#pragma once

#include <functional>
#include <utility>

#include "tessaluna/platform/backend/Timer.h"

namespace tessaluna::platform {

class CaretBlink {
 public:
  // Called whenever the caret appears or goes.
  explicit CaretBlink(std::function<void()> changed) : changed_(std::move(changed)) {}

  void start();  // from a shown caret, also when it blinks already
  void stop();   // the caret is not shown
  bool isShown() const { return isShown_; }

 private:
  void show(bool isShown);
  void turn();
  void waitForNext();

  std::function<void()> changed_;
  backend::Timer next_;
  bool isShown_ = false;
};

}  // namespace tessaluna::platform
