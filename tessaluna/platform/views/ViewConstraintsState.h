// What a view remembers for its constraints; for ViewConstraints and LayoutEngine.
#pragma once

#include <array>

#include "tessaluna/platform/layout/LayoutEngine.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/views/ViewConstraints.h"

namespace tessaluna::platform {

struct ViewConstraints::State {
  std::vector<Ref<NSLayoutConstraint>> held;
  std::shared_ptr<LayoutEngine> engine;  // of the tree whose topmost view this is
  LayoutEngine* itemOf = nullptr;        // the engine that has variables for the view
  std::array<NSLayoutPriority, 2> hugging{NSLayoutPriorityDefaultLow, NSLayoutPriorityDefaultLow};
  std::array<NSLayoutPriority, 2> resistance{NSLayoutPriorityDefaultHigh, NSLayoutPriorityDefaultHigh};
  bool translatesMask = true;
  bool needsUpdate = false;
};

}  // namespace tessaluna::platform
