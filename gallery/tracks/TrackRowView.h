// One row of the track list: number, the three controls, title, artists and length. It shows what it is told
// and decides nothing: clicks go from the controls to the list's host.
#pragma once

#include "gallery/tracks/GeneratedTracks.h"
#include "platform/views/NSTextField.h"
#include "uikit/trackrow/TrackRowFavoriteButton.h"
#include "uikit/trackrow/TrackRowMoreButton.h"
#include "uikit/trackrow/TrackRowPlayButton.h"

namespace gallery {

// What the controls of a row need to know.
struct TrackRowState {
  bool hasMouse = false;   // the mouse is somewhere on the row
  bool isCurrent = false;  // the row's track is the one that plays or is paused
  bool isPlaying = false;  // it plays
  bool isFavorite = false;
};

// Where each part stands in a row of this size, y down.
struct TrackRowPlaces {
  platform::CGRect number, play, favorite, title, artists, more, length;
};
TrackRowPlaces placesInTrackRow(platform::CGSize row);

class TrackRowView : public platform::NSView {
 public:
  // The target hears of the clicks of all three controls, each with the control as its argument.
  explicit TrackRowView(platform::Ref<TessalunaUIKit::TrackListRowActionTarget> target);

  void showTrack(std::size_t number, const Track& track);
  void showState(const TrackRowState& state);

  void setFrame(platform::CGRect frame) override;
  bool isFlipped() const override { return true; }

 private:
  platform::Ref<platform::NSTextField> number_, title_, artists_, length_;
  platform::Ref<TessalunaUIKit::TrackRowPlayButton> play_;
  platform::Ref<TessalunaUIKit::TrackRowFavoriteButton> favorite_;
  platform::Ref<TessalunaUIKit::TrackRowMoreButton> more_;
};

}  // namespace gallery
