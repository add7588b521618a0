#include "gallery/tracks/TrackRowView.h"

#include <algorithm>
#include <cmath>

#include "platform/graphics/NSColor.h"

namespace gallery {

using namespace platform;
using namespace TessalunaUIKit;

namespace {

constexpr CGFloat margin = 8, numberWidth = 44, glyph = 15, lengthWidth = 48, textHeight = 17;

Ref<NSTextField> label(NSTextAlignment alignment) {
  const auto field = NSTextField::labelWithString("");
  field->setAlignment(alignment);
  field->setLineBreakMode(NSLineBreakByTruncatingTail);
  return field;
}

}  // namespace

TrackRowView::TrackRowView(Ref<TrackListRowActionTarget> target)
    : NSView(CGRect{}),
      number_(label(NSTextAlignmentRight)),
      title_(label(NSTextAlignmentLeft)),
      artists_(label(NSTextAlignmentLeft)),
      length_(label(NSTextAlignmentRight)),
      play_(make<TrackRowPlayButton>(CGRect{0, 0, glyph, glyph})),
      favorite_(make<TrackRowFavoriteButton>(CGRect{0, 0, glyph, glyph})),
      more_(make<TrackRowMoreButton>(CGRect{0, 0, glyph, glyph})) {
  play_->setTarget(target);
  favorite_->setTarget(target);
  more_->setTarget(target);
  for (const Ref<NSView>& view :
       std::initializer_list<Ref<NSView>>{number_, play_, favorite_, title_, artists_, more_, length_})
    addSubview(view);
}

void TrackRowView::show(std::size_t number, const Track& track) {
  number_->setStringValue(std::to_string(number));
  title_->setStringValue(track.title);
  artists_->setStringValue(track.artists);
  length_->setStringValue(lengthText(track.seconds));
  setFavorite(track.isFavorite);
}

void TrackRowView::setHasMouse(bool has) {
  const auto tell = [&](TrackRowControl& control) {
    if (control.hasMouseOnRow() == has) return;
    control.setHasMouseOnRow(has);
    control.setNeedsDisplay(true);
  };
  tell(*play_);
  tell(*favorite_);
  tell(*more_);
}

void TrackRowView::setPlaying(bool isPlayingTrack, bool isPlaying) {
  if (play_->isPlayingTrack() == isPlayingTrack && play_->isPlaying() == isPlaying) return;
  play_->setIsPlayingTrack(isPlayingTrack);
  play_->setIsPlaying(isPlaying);
  play_->setNeedsDisplay(true);
}

void TrackRowView::setFavorite(bool isFavorite) {
  if (favorite_->isFavorite() == isFavorite) return;
  favorite_->setIsFavorite(isFavorite);
  favorite_->setNeedsDisplay(true);
}

void TrackRowView::setFrame(CGRect frame) {
  NSView::setFrame(frame);
  const TrackRowPlaces places = placesInTrackRow(frame.size);
  number_->setFrame(places.number);
  play_->setFrame(places.play);
  favorite_->setFrame(places.favorite);
  title_->setFrame(places.title);
  artists_->setFrame(places.artists);
  more_->setFrame(places.more);
  length_->setFrame(places.length);
}

TrackRowPlaces placesInTrackRow(CGSize row) {
  // On whole points, so that glyphs and letters stay sharp.
  const CGFloat glyphY = std::floor((row.height - glyph) * 0.5);
  const CGFloat textY = std::floor((row.height - textHeight) * 0.5);
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
  places.title = {x, textY, titleWidth, textHeight};
  places.artists = {x + titleWidth, textY, std::max(0.0, textEnd - x - titleWidth), textHeight};
  places.more = {textEnd + margin, glyphY, glyph, glyph};
  places.length = {end - lengthWidth, textY, lengthWidth, textHeight};
  return places;
}

}  // namespace gallery
