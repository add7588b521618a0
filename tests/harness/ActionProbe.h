// A target that counts how often it received the action "act:".
#pragma once

#include <functional>

#include "tessaluna/platform/foundation/NSObject.h"

namespace harness {

class ActionProbe : public tessaluna::platform::NSObject {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  void act(tessaluna::platform::NSObject* sender) {
    ++acts;
    lastSender = sender;
    if (onAct) onAct();
  }

  int acts = 0;
  tessaluna::platform::NSObject* lastSender = nullptr;  // only to compare
  std::function<void()> onAct;
};

inline constexpr tessaluna::platform::Selector actionProbeSelectors[] = {
    tessaluna::platform::action<&ActionProbe::act>("act:")};
inline const tessaluna::platform::ClassInfo ActionProbe::staticClassInfo{
    .name = "ActionProbe", .base = &tessaluna::platform::NSObject::staticClassInfo, .selectors = actionProbeSelectors};

}  // namespace harness
