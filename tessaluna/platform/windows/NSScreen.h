// A screen of the desktop, as it is when it is asked for. Frames are in screen space: points, the origin at the lower left of
// the primary screen.
#pragma once

#include <vector>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSScreen : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // All of them, the primary one first. Empty without a backend.
  static std::vector<Ref<NSScreen>> screens();
  // That of the key window, or else the primary one. Null where there is none at all.
  static Ref<NSScreen> mainScreen();

  explicit NSScreen(const backend::Screen& screen) : screen_(screen) {}

  CGRect frame() const { return screen_.frame; }
  CGRect visibleFrame() const { return screen_.visibleFrame; }  // without panels and docks
  CGFloat backingScaleFactor() const { return screen_.scale; }  // device pixels per point

  // Two screens are equal while they are in the same place at the same scale.
  bool isEqual(const NSObject* other) const override;

 private:
  backend::Screen screen_;
};

}  // namespace tessaluna::platform
