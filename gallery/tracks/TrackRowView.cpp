#include "gallery/tracks/TrackRowView.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/graphics/NSColor.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

constexpr CGFloat margin = 8, numberWidth = 48, glyph = 15, lengthWidth = 48, textHeight = 17;
constexpr std::string_view playAction = "play", favoriteAction = "favorite";
constexpr CGFloat labelMargin = 2;    // beside the text of a label
constexpr CGFloat leastArtists = 24;  // has room for a letter and "…"

Ref<NSTextField> label(NSTextAlignment alignment) {
  const auto field = NSTextField::labelWithString("");
  field->setAlignment(alignment);
  field->setLineBreakMode(NSLineBreakByTruncatingTail);
  return field;
}

}  // namespace

TrackRowView::TrackRowView(Ref<TrackListRowActionTarget> target, Ref<LinkTextFieldActionTarget> artistsTarget)
    : NSView(CGRect{}),
      number_(label(NSTextAlignmentRight)),
      title_(label(NSTextAlignmentLeft)),
      length_(label(NSTextAlignmentRight)),
      artists_(make<MultipleLinksTextField>(CGRect{})),
      play_(make<TrackRowPlayButton>(CGRect{0, 0, glyph, glyph})),
      favorite_(make<TrackRowFavoriteButton>(CGRect{0, 0, glyph, glyph})),
      more_(make<TrackRowMoreButton>(CGRect{0, 0, glyph, glyph})) {
  play_->setTarget(target);
  favorite_->setTarget(target);
  more_->setTarget(target);
  artists_->setLinksEnabled(true);
  artists_->setShowsMenuAtEllipsis(true);
  artists_->setTakesKeyboard(true);
  artists_->setShowsToolTipWhileCut(true);
  artists_->setTarget(std::move(artistsTarget));
  for (const Ref<NSView>& view :
       std::initializer_list<Ref<NSView>>{number_, play_, favorite_, title_, artists_, more_, length_})
    addSubview(view);
}

void TrackRowView::showTrack(std::size_t number, const Track& track) {
  // The view may come from another row. A press there is none on this one.
  play_->setIsPressed(false);
  favorite_->setIsPressed(false);
  more_->setIsPressed(false);
  artists_->setIsPressed(false);
  number_->setStringValue(std::to_string(number));
  title_->setStringValue(track.title);
  artists_->setStringValues(track.artists);
  length_->setStringValue(lengthText(track.seconds));
  NSAccessibilityPostNotification(shared_from_this(), NSAccessibilityTitleChangedNotification);
}

// The controls only store what they are told. Whoever tells them asks for the redraw: of those alone that changed.
void TrackRowView::showState(const TrackRowState& state) {
  if (play_->hasMouseOnRow() != state.hasMouse || play_->isPlayingTrack() != state.isCurrent ||
      play_->isPlaying() != state.isPlaying) {
    play_->setHasMouseOnRow(state.hasMouse);
    play_->setIsPlayingTrack(state.isCurrent);
    play_->setIsPlaying(state.isPlaying);
    play_->setNeedsDisplay(true);
  }
  if (favorite_->hasMouseOnRow() != state.hasMouse || favorite_->isFavorite() != state.isFavorite) {
    favorite_->setHasMouseOnRow(state.hasMouse);
    favorite_->setIsFavorite(state.isFavorite);
    favorite_->setNeedsDisplay(true);
  }
  if (more_->hasMouseOnRow() != state.hasMouse) {
    more_->setHasMouseOnRow(state.hasMouse);
    more_->setNeedsDisplay(true);
  }
}

void TrackRowView::layout() {
  NSView::layout();
  const TrackRowPlaces places = placesInTrackRow(bounds().size);
  number_->setFrame(places.number);
  play_->setFrame(places.play);
  favorite_->setFrame(places.favorite);
  title_->setFrame(places.title);
  // Its text stands in the middle of the height and at the very edge, that of a label at the top and beside its margin.
  CGRect artists = NSInsetRect(places.artists, labelMargin, 0);
  artists.size.height = number_->intrinsicContentSize().height;
  artists_->setFrame(artists);
  artists_->setHidden(artists.size.width < leastArtists);
  more_->setFrame(places.more);
  length_->setFrame(places.length);
}

std::string TrackRowView::accessibilityRole() const { return std::string(NSAccessibilityRowRole); }

std::vector<std::string> TrackRowView::accessibilityActionNames() const {
  return {std::string(playAction), std::string(favoriteAction), std::string(NSAccessibilityShowMenuAction)};
}

void TrackRowView::accessibilityPerformAction(std::string_view action) {
  if (!play_->target()) return;
  TrackListRowActionTarget& target = *play_->target();
  if (action == playAction) target.trackRowPlayButtonClicked(*play_);
  if (action == favoriteAction) target.trackRowFavoriteButtonClicked(*favorite_);
  if (action == NSAccessibilityShowMenuAction) target.trackRowMoreButtonClicked(*more_);
}

TrackRowPlaces placesInTrackRow(CGSize row) {
  // On whole points, so that glyphs and letters stay sharp. The middle of a line of text lies below that of its capitals,
  // which is what the eye takes for its middle.
  const CGFloat glyphY = std::floor((row.height - glyph) * 0.5);
  const CGFloat textY = std::ceil((row.height - textHeight) * 0.5);
  TrackRowPlaces places;
  CGFloat x = margin;
  places.number = {x, textY, numberWidth, textHeight};
  x += numberWidth + margin;
  places.play = {x, glyphY, glyph, glyph};
  x += glyph + margin;
  places.favorite = {x, glyphY, glyph, glyph};
  x += glyph + 2 * margin;
  const CGFloat end = row.width - margin;
  const CGFloat textEnd = end - lengthWidth - glyph - 2 * margin;
  const CGFloat titleWidth = std::max(0.0, std::floor((textEnd - x) * 0.55));
  places.title = {x, textY, std::max(0.0, titleWidth - margin), textHeight};
  places.artists = {x + titleWidth, textY, std::max(0.0, textEnd - x - titleWidth), textHeight};
  places.more = {textEnd + margin, glyphY, glyph, glyph};
  places.length = {end - lengthWidth, textY, lengthWidth, textHeight};
  return places;
}

}  // namespace gallery
