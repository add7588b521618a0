// One row of the track list: number, the three controls, title, artists and length. It shows what it is given
// and decides nothing: clicks go from the controls and the artists' names to the list's host.
#pragma once

#include "gallery/tracks/GeneratedTracks.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tessaluna/uikit/trackrow/TrackRowFavoriteButton.h"
#include "tessaluna/uikit/trackrow/TrackRowMoreButton.h"
#include "tessaluna/uikit/trackrow/TrackRowPlayButton.h"

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
  tessaluna::platform::CGRect number, play, favorite, title, artists, more, length;
};
TrackRowPlaces placesInTrackRow(tessaluna::platform::CGSize row);

class TrackRowView : public tessaluna::platform::NSView {
 public:
  // The first is notified of the clicks of all three controls, each with the control as its argument, the second of those on
  // an artist.
  TrackRowView(tessaluna::platform::Ref<TessalunaUIKit::TrackListRowActionTarget> target,
               tessaluna::platform::Ref<TessalunaUIKit::LinkTextFieldActionTarget> artistsTarget);

  void showTrack(std::size_t number, const Track& track);
  void showState(const TrackRowState& state);

  void layout() override;
  bool isFlipped() const override { return true; }

  // A row of the list, in which assistive clients find the texts. The controls are its actions: "play", "favorite" and the
  // menu.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override;
  std::vector<std::string> accessibilityActionNames() const override;
  void accessibilityPerformAction(std::string_view action) override;

 private:
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> number_, title_, length_;
  tessaluna::platform::Ref<TessalunaUIKit::MultipleLinksTextField> artists_;
  tessaluna::platform::Ref<TessalunaUIKit::TrackRowPlayButton> play_;
  tessaluna::platform::Ref<TessalunaUIKit::TrackRowFavoriteButton> favorite_;
  tessaluna::platform::Ref<TessalunaUIKit::TrackRowMoreButton> more_;
};

}  // namespace gallery
