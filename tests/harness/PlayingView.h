// A view that has the action "play:" and counts how often it is performed.
#pragma once

#include "tests/harness/ProbeView.h"

namespace harness {

class PlayingView : public ProbeView {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }
  using ProbeView::ProbeView;
  void play(tessaluna::platform::NSObject*) { ++plays; }
  int plays = 0;
};

inline constexpr tessaluna::platform::Selector playingViewSelectors[] = {
    tessaluna::platform::action<&PlayingView::play>("play:")};
inline const tessaluna::platform::ClassInfo PlayingView::staticClassInfo{
    .name = "Tests.PlayingView", .base = &tessaluna::platform::NSView::staticClassInfo, .selectors = playingViewSelectors};

}  // namespace harness
