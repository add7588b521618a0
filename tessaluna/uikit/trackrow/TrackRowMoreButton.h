// The three dots of a track list's row. They show only while the mouse is on the row. A click is reported to the target.
#pragma once

#include "tessaluna/uikit/trackrow/TrackRowControl.h"

namespace TessalunaUIKit {

class TrackRowMoreButton : public TrackRowControl {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  using TrackRowControl::TrackRowControl;

  // During a press the pressed face stays also when the pointer is dragged out; only the outline goes.
  void drawRect(tessaluna::platform::CGRect rect) override;

 private:
  void notifyTarget(TrackListRowActionTarget& target) override { target.trackRowMoreButtonClicked(*this); }
};

}  // namespace TessalunaUIKit
