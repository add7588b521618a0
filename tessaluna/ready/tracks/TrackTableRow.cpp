#include "tessaluna/ready/tracks/TrackTableRow.h"

#include <algorithm>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/ready/parts/songLength.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace tessaluna::ready {

using namespace platform;
using namespace TessalunaUIKit;

const ClassInfo TrackTableRow::staticClassInfo{.name = "tessaluna.ready.TrackTableRow", .base = &NSView::staticClassInfo};

namespace {

constexpr CGFloat labelMargin = 2;       // beside the text of a label
constexpr CGFloat minArtistsWidth = 24;  // has room for a letter and "…"
constexpr CGFloat markSize = 11, markGap = 6;
constexpr CGFloat hoverStrength = 0.07, secondTone = 0.68;

Ref<NSTextField> label(NSTextAlignment alignment) {
  const auto field = NSTextField::labelWithString("");
  field->setAlignment(alignment);
  field->setLineBreakMode(NSLineBreakByTruncatingTail);
  return field;
}

// Drawn as vectors at whatever size it shows.
Ref<NSImage> placeholder() {
  return NSImage::imageWithSize({trackCoverSize, trackCoverSize}, false, [](CGRect rect) {
    TessalunaStyleKit::drawEmptyAlbumImage(rect);
    return true;
  });
}

// An image is upright in a flipped view as well.
Ref<NSImage> heart() {
  return NSImage::imageWithSize({markSize, markSize}, false, [](CGRect rect) {
    TessalunaStyleKit::drawFavoriteAlbumOverlay(rect, true, false, false);
    return true;
  });
}

void tint(NSView& view, const Ref<NSColor>& color, const Ref<NSColor>& ground) {
  if (!color && !view.tintColor()) return;  // it asks for a redraw
  view.setTintColor(color);
  view.setTintGroundColor(color ? ground : nullptr);
}

}  // namespace

std::string trackLengthText(std::optional<int> seconds) {
  if (!seconds || *seconds < 0 || *seconds > longestSong) return {};
  const auto twoDigits = [](int number) { return number < 10 ? '0' + std::to_string(number) : std::to_string(number); };
  const int hours = *seconds / 3600, minutes = *seconds / 60 % 60;
  const std::string start = hours > 0 ? std::to_string(hours) + ":" + twoDigits(minutes) : std::to_string(minutes);
  return start + ":" + twoDigits(*seconds % 60);
}

std::vector<std::size_t> namedArtists(const TrackRow& track) {
  std::vector<std::size_t> named;
  for (std::size_t i = 0; i < track.artists.size(); ++i)
    if (!track.artists[i].empty()) named.push_back(i);
  return named;
}

TrackTableRow::TrackTableRow(const Ref<TrackListRowActionTarget>& target, Ref<LinkTextFieldActionTarget> artistsTarget,
                             More more)
    : NSView(CGRect{}),
      cover_(make<NSImageView>(CGRect{})),
      title_(label(NSTextAlignmentLeft)),
      time_(label(NSTextAlignmentRight)),
      artists_(make<MultipleLinksTextField>(CGRect{})),
      play_(make<TrackRowPlayButton>(CGRect{})),
      favorite_(make<TrackRowFavoriteButton>(CGRect{})),
      more_(more == More::Shown ? make<TrackRowMoreButton>(CGRect{}) : nullptr) {
  play_->setTarget(target);
  favorite_->setTarget(target);
  if (more_) more_->setTarget(target);
  cover_->setPreparesImages(true);
  cover_->setImageScaling(NSImageScaleProportionallyUpOrDown);
  cover_->setPictureBefore(placeholder());
  artists_->setLinksEnabled(true);
  artists_->setShowsMenuAtEllipsis(true);
  artists_->setShowsToolTipWhileCut(true);
  artists_->setTarget(std::move(artistsTarget));
  updateColors();
  for (const Ref<NSView>& view :
       std::initializer_list<Ref<NSView>>{cover_, play_, title_, artists_, favorite_, more_, time_})
    if (view) addSubview(view);
}

void TrackTableRow::endPresses() {
  play_->setIsPressed(false);
  favorite_->setIsPressed(false);
  if (more_) more_->setIsPressed(false);
  artists_->setIsPressed(false);
}

void TrackTableRow::showTrack(const TrackRow& track) {
  const bool isOtherTitle = track_.title != track.title || track_.isFavorite != track.isFavorite ||
                            (track_.playback == Playback::None) != (track.playback == Playback::None);
  if (isOtherTitle) {
    title_->setFont(track.playback == Playback::None ? NSFont::systemFontOfSize(NSFont::systemFontSize())
                                                     : NSFont::boldSystemFontOfSize(NSFont::systemFontSize()));
    title_->setStringValue(track.title);
    setNeedsLayout(true);
  }
  if (track_.artists != track.artists || !artists_->stringValues()) artists_->setStringValues(track.artists);
  if (track_.seconds != track.seconds) time_->setStringValue(trackLengthText(track.seconds));
  if (!cover_->image() || track_.cover != track.cover) cover_->setImage(track.cover ? track.cover : placeholder());
  if (isOtherTitle || track_.playback != track.playback) setNeedsDisplay(true);
  track_ = track;
  updateControls();
}

void TrackTableRow::showState(State state) {
  if (state_ == state) return;
  const bool isGroundOther = state_.isHovered != state.isHovered || state_.isSelected != state.isSelected ||
                             showsControls() != (state.isHovered || state.hasKeyboard);
  state_ = state;
  if (isGroundOther) {
    updateColors();
    setNeedsDisplay(true);
  }
  updateControls();
}

Ref<NSColor> TrackTableRow::textColor() const {
  return state_.isSelected ? NSColor::alternateSelectedControlTextColor() : NSColor::controlTextColor();
}

void TrackTableRow::updateColors() {
  title_->setTextColor(textColor());
  time_->setTextColor(textColor());
  // On the ground of a selection a second tone would be too pale.
  artists_->setTextColor(state_.isSelected ? textColor() : textColor()->colorWithAlphaComponent(secondTone));
  // At rest the mark of what plays is on the row's ground.
  const bool isOnSelection = state_.isSelected && !showsControls();
  tint(*play_, isOnSelection ? textColor() : nullptr, NSColor::alternateSelectedControlColor());
  // With the grounds of controls light on a dark palette, half of black can be told from them better than half of its ground.
  if (!showsControls() || !neutralsFollowPalette() || !NeutralAxis::ofPalette().isDark()) {
    tint(*favorite_, nullptr, nullptr);
    if (more_) tint(*more_, nullptr, nullptr);
    return;
  }
  for (NSView* control : std::initializer_list<NSView*>{play_.get(), favorite_.get(), more_.get()})
    if (control) tint(*control, NSColor::controlTextColor(), NSColor::blackColor());
}

// The controls only store what is set. Whoever sets it requests the redraw, only of those that changed.
void TrackTableRow::updateControls() {
  const bool shows = showsControls(), isPlaying = track_.playback == Playback::Playing;
  if (play_->hasMouseOnRow() != shows || play_->isPlayingTrack() != isPlaying || play_->isPlaying() != isPlaying) {
    play_->setHasMouseOnRow(shows);
    play_->setIsPlayingTrack(isPlaying);
    play_->setIsPlaying(isPlaying);
    play_->setNeedsDisplay(true);
  }
  if (favorite_->hasMouseOnRow() != shows || favorite_->isFavorite() != track_.isFavorite) {
    favorite_->setHasMouseOnRow(shows);
    favorite_->setIsFavorite(track_.isFavorite);
    favorite_->setNeedsDisplay(true);
  }
  if (more_ && more_->hasMouseOnRow() != shows) {
    more_->setHasMouseOnRow(shows);
    more_->setNeedsDisplay(true);
  }
}

void TrackTableRow::layout() {
  NSView::layout();
  updateColors();  // the palette may be another
  const TrackRowPlaces places = trackRowPlaces(bounds().size.width);
  const auto place = [](NSView& view, CGRect frame) {
    view.setFrame(frame);
    view.setHidden(frame.size.width <= 0);
  };
  place(*play_, places.play);
  place(*cover_, places.cover);
  place(*favorite_, places.favorite);
  if (more_) place(*more_, places.more);
  place(*time_, places.time);
  // The mark of a favorite follows the title's last letter.
  CGRect title = places.title;
  const CGFloat room = track_.isFavorite ? title.size.width - markSize - markGap : title.size.width;
  title.size.width = std::max(0.0, std::min(room, title_->intrinsicContentSize().width));
  place(*title_, title);
  // Its text is in the middle of the height and at the very edge, that of a label at the top and beside its margin.
  CGRect artists = NSInsetRect(places.artists, labelMargin, 0);
  artists.size.height = title_->intrinsicContentSize().height;
  artists_->setFrame(artists);
  artists_->setHidden(artists.size.width < minArtistsWidth);
}

CGRect TrackTableRow::favoriteMark() const {
  if (!track_.isFavorite || title_->isHidden()) return {};
  const CGRect title = title_->frame();
  return {CGRectGetMaxX(title) + markGap, CGRectGetMidY(title) - markSize / 2 - 0.5, markSize, markSize};
}

// Two bars where a playing row has a loudspeaker.
void TrackTableRow::drawPausedMark() const {
  const CGRect place = play_->frame();
  textColor()->setFill();
  for (const CGFloat x : {3.0, 9.0})
    NSRectFillUsingOperation({place.origin.x + x, place.origin.y + 2, 4, place.size.height - 4},
                             NSCompositingOperationSourceOver);
}

// Red, and on a selection the color of the text.
void TrackTableRow::drawFavoriteMark(CGRect mark) const {
  if (!state_.isSelected) return heart()->drawInRect(mark);
  CGContext& context = NSGraphicsContext::currentCgContext();
  context.beginTransparencyLayer();
  heart()->drawInRect(mark);
  textColor()->setFill();
  NSRectFillUsingOperation(mark, NSCompositingOperationSourceAtop);
  context.endTransparencyLayer();
}

void TrackTableRow::drawRect(CGRect) {
  if (state_.isHovered) {
    NSColor::controlTextColor()->colorWithAlphaComponent(hoverStrength)->setFill();
    NSRectFillUsingOperation(bounds(), NSCompositingOperationSourceOver);
  }
  // The controls at rest are half-transparent white: they need a dark ground of their own.
  if (showsControls()) {
    NSColor::colorWithCalibratedWhite(0.2, 1)->setFill();
    for (const NSView* control : std::initializer_list<const NSView*>{play_.get(), favorite_.get(), more_.get()}) {
      if (!control || control->isHidden()) continue;
      const CGRect ground = groundOfTrackControl(control->frame());
      NSBezierPath::bezierPathWithRoundedRect(ground, ground.size.width / 2, ground.size.height / 2)->fill();
    }
  } else if (track_.playback == Playback::Paused) {
    drawPausedMark();
  }
  if (const CGRect mark = favoriteMark(); !NSIsEmptyRect(mark)) drawFavoriteMark(mark);
}

CGRect TrackTableRow::frameOfArtist(std::size_t named) const {
  const AccessibilityElements links = accessibleChildrenOf(artists_);
  if (named >= links.size() || !window() || artists_->isHidden()) return {};
  const CGRect inWindow = window()->convertRectFromScreen(accessibleFrameOf(links[named]));
  return NSIntersectionRect(convertRectFromView(inWindow, nullptr), artists_->frame());
}

}  // namespace tessaluna::ready
