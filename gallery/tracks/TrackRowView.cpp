#include "gallery/tracks/TrackRowView.h"

#include <algorithm>
#include <cmath>

#include "platform/graphics/NSColor.h"

namespace gallery {

using namespace platform;
using namespace TessalunaUIKit;

namespace {

constexpr CGFloat margin = 8, numberWidth = 44, glyph = 15, lengthWidth = 48;

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
  // On whole points, so that glyphs and letters stay sharp.
  const CGFloat middle = std::floor((frame.size.height - glyph) * 0.5);
  const CGFloat textHeight = 17, textY = std::floor((frame.size.height - textHeight) * 0.5);
  CGFloat x = margin;
  number_->setFrame({x, textY, numberWidth, textHeight});
  x += numberWidth + margin;
  play_->setFrame({x, middle, glyph, glyph});
  x += glyph + margin;
  favorite_->setFrame({x, middle, glyph, glyph});
  x += glyph + 2 * margin;
  const CGFloat end = frame.size.width - margin;
  const CGFloat textEnd = end - lengthWidth - glyph - 2 * margin;
  const CGFloat titleWidth = std::max(0.0, std::floor((textEnd - x) * 0.55));
  title_->setFrame({x, textY, titleWidth, textHeight});
  artists_->setFrame({x + titleWidth, textY, std::max(0.0, textEnd - x - titleWidth), textHeight});
  more_->setFrame({textEnd + margin, middle, glyph, glyph});
  length_->setFrame({end - lengthWidth, textY, lengthWidth, textHeight});
}

}  // namespace gallery
