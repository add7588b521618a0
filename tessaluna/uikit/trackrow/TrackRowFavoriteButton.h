// The heart of a track list's row. It shows only while the mouse is on the row, for a favorite track too. A click is reported
// to the target and changes nothing: whether the track is a favorite is the host's to decide.
#pragma once

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/uikit/trackrow/TrackRowControl.h"

namespace TessalunaUIKit {

class TrackRowFavoriteButton : public TrackRowControl {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TrackRowFavoriteButton(tessaluna::platform::CGRect frame) : TrackRowControl(frame) {}
  explicit TrackRowFavoriteButton(tessaluna::platform::NSCoder& coder) : TrackRowControl(coder) {
    coder.overlookKeys({"isFavorite"});
  }

  // A check box to clients, if it is named.
  std::string accessibilityRole() const override;
  tessaluna::platform::AccessibilityValue accessibilityValue() const override;

  bool isFavorite() const { return isFavorite_; }
  void setIsFavorite(bool isFavorite) { isFavorite_ = isFavorite; }

  // During a press the pressed face stays also when the pointer is dragged out; only the outline goes.
  void drawRect(tessaluna::platform::CGRect rect) override;

 private:
  void notifyTarget(TrackListRowActionTarget& target) override { target.trackRowFavoriteButtonClicked(*this); }

  bool isFavorite_ = false;
};

}  // namespace TessalunaUIKit
