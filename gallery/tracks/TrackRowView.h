// One row of the track list: number, the three controls, title, artists and length. It shows what it is told
// and decides nothing.
#pragma once

#include "gallery/tracks/GeneratedTracks.h"
#include "platform/views/NSTextField.h"
#include "uikit/trackrow/TrackRowFavoriteButton.h"
#include "uikit/trackrow/TrackRowMoreButton.h"
#include "uikit/trackrow/TrackRowPlayButton.h"

namespace gallery {

// Where each part stands in a row of this size, y down.
struct TrackRowPlaces {
  platform::CGRect number, play, favorite, title, artists, more, length;
};
TrackRowPlaces placesInTrackRow(platform::CGSize row);

class TrackRowView : public platform::NSView {
 public:
  explicit TrackRowView(platform::Ref<TessalunaUIKit::TrackListRowActionTarget> target);

  void show(std::size_t number, const Track& track);
  // What the host knows of the row. Each asks the controls for a redraw if anything changed.
  void setHasMouse(bool has);
  void setPlaying(bool isPlayingTrack, bool isPlaying);
  void setFavorite(bool isFavorite);

  void setFrame(platform::CGRect frame) override;
  bool isFlipped() const override { return true; }

 private:
  platform::Ref<platform::NSTextField> number_, title_, artists_, length_;
  platform::Ref<TessalunaUIKit::TrackRowPlayButton> play_;
  platform::Ref<TessalunaUIKit::TrackRowFavoriteButton> favorite_;
  platform::Ref<TessalunaUIKit::TrackRowMoreButton> more_;
};

}  // namespace gallery
