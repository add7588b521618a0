// The play control of a track list's row: a play or pause face while the mouse is on the row, a loudspeaker on the row of the
// current track, and nothing on any other row. A click is reported to the target.
//
//   play->setIsPlayingTrack(isCurrent); play->setIsPlaying(player.isRunning()); play->setNeedsDisplay(true);
#pragma once

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/uikit/trackrow/TrackRowControl.h"

namespace TessalunaUIKit {

class TrackRowPlayButton : public TrackRowControl {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TrackRowPlayButton(tessaluna::platform::CGRect frame) : TrackRowControl(frame) {}
  explicit TrackRowPlayButton(tessaluna::platform::NSCoder& coder) : TrackRowControl(coder) {
    coder.overlookKeys({"isPlayingTrack", "isPlaying"});
  }

  // This row's track is the current one. Shows only while the mouse is not on the row.
  bool isPlayingTrack() const { return isPlayingTrack_; }
  void setIsPlayingTrack(bool isPlayingTrack) { isPlayingTrack_ = isPlayingTrack; }

  // Playback runs: the face offers pause. Shows only while the mouse is on the row.
  bool isPlaying() const { return isPlaying_; }
  void setIsPlaying(bool isPlaying) { isPlaying_ = isPlaying; }

  void drawRect(tessaluna::platform::CGRect rect) override;

 private:
  void notifyTarget(TrackListRowActionTarget& target) override { target.trackRowPlayButtonClicked(*this); }

  bool isPlayingTrack_ = false;
  bool isPlaying_ = false;
};

}  // namespace TessalunaUIKit
