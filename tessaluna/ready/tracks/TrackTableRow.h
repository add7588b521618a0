// One row of a TrackTable: it shows what it is given and decides nothing. Clicks go to the targets that it was made with.
#pragma once

#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/ready/tracks/TrackModel.h"
#include "tessaluna/ready/tracks/trackPlaces.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tessaluna/uikit/trackrow/TrackRowFavoriteButton.h"
#include "tessaluna/uikit/trackrow/TrackRowMoreButton.h"
#include "tessaluna/uikit/trackrow/TrackRowPlayButton.h"

namespace tessaluna::ready {

class TrackTableRow : public platform::NSView {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  enum class More { Shown, Absent };
  TrackTableRow(const platform::Ref<TessalunaUIKit::TrackListRowActionTarget>& target,
                platform::Ref<TessalunaUIKit::LinkTextFieldActionTarget> artistsTarget, More more);

  // The view comes from another row: a press there is not one on this row.
  void endPresses();
  // Only what differs from before is redrawn.
  void showTrack(const TrackRow& track);
  struct State {
    bool isHovered = false;
    bool hasKeyboard = false;
    bool isSelected = false;
    friend bool operator==(const State&, const State&) = default;
  };
  void showState(State state);

  const TrackRow& track() const { return track_; }
  bool isMoreShown() const { return more_ != nullptr; }
  TessalunaUIKit::TrackRowMoreButton* moreButton() const { return more_.get(); }
  // In the row, of one of the names of namedArtists; empty where it is cut off.
  platform::CGRect frameOfArtist(std::size_t named) const;

  void layout() override;
  bool isFlipped() const override { return true; }
  void drawRect(platform::CGRect rect) override;

 private:
  bool showsControls() const { return state_.isHovered || state_.hasKeyboard; }
  void updateControls();
  void updateColors();  // those of texts and marks on the row's ground
  platform::Ref<platform::NSColor> textColor() const;
  void drawPausedMark() const;
  void drawFavoriteMark(platform::CGRect mark) const;
  platform::CGRect favoriteMark() const;  // after the title; empty unless the track is a favorite

  TrackRow track_;
  State state_;
  platform::Ref<platform::NSImageView> cover_;
  platform::Ref<platform::NSTextField> title_, time_;
  platform::Ref<TessalunaUIKit::MultipleLinksTextField> artists_;
  platform::Ref<TessalunaUIKit::TrackRowPlayButton> play_;
  platform::Ref<TessalunaUIKit::TrackRowFavoriteButton> favorite_;
  platform::Ref<TessalunaUIKit::TrackRowMoreButton> more_;  // null where rows have no menu
};

// The indices of the artists whose names are not empty: the others cannot be pressed.
std::vector<std::size_t> namedArtists(const TrackRow& track);

// "3:07", "1:02:30"; empty for an absent or a negative length.
std::string trackLengthText(std::optional<int> seconds);

}  // namespace tessaluna::ready
