// Glyphs as images that stay vector: an image holds no pixels but runs its draw routine whenever it is rendered, in the
// frame (0, 0, imageSize), with the flags that it was made with. Each call makes a new image, with one allocation and
// without drawing. Sizes are in points; the default is the size that the glyph was designed in.
#pragma once

#include "platform/graphics/NSImage.h"
#include "uikit/stylekit/AlbumOverlayGlyphs.h"
#include "uikit/stylekit/ArrowAndCloseGlyphs.h"
#include "uikit/stylekit/InfoButtons.h"

namespace TessalunaUIKit {

// Makes images of one draw routine: called with the image's size and the routine's flags, in their order.
template <auto draw>
class ImageRoutine;

template <class... Flags, void (*draw)(platform::CGRect, Flags...)>
class ImageRoutine<draw> {
 public:
  platform::Ref<platform::NSImage> operator()(platform::CGSize imageSize, Flags... flags) const {
    // The destination is not looked at: the frame is the image's own.
    return platform::NSImage::imageWithSize(imageSize, false, [imageSize, flags...](platform::CGRect) {
      draw({{0, 0}, imageSize}, flags...);
      return true;
    });
  }
};

struct ImageFactory {
  using CGSize = platform::CGSize;
  using Image = platform::Ref<platform::NSImage>;

  // clang-format off
  static constexpr ImageRoutine<&ArrowAndCloseGlyphs::drawLeftArrowWithFrame> imageOfLeftArrowWithImageSize{};
  static constexpr ImageRoutine<&ArrowAndCloseGlyphs::drawRightArrowWithFrame> imageOfRightArrowWithImageSize{};
  static constexpr ImageRoutine<&ArrowAndCloseGlyphs::drawForwardArrowWithFrame> imageOfForwardArrowWithImageSize{};
  static constexpr ImageRoutine<&ArrowAndCloseGlyphs::drawBackwardArrowWithFrame> imageOfBackwardArrowWithImageSize{};
  static constexpr ImageRoutine<&ArrowAndCloseGlyphs::drawCloseCrossWithFrame> imageOfCloseCrossWithImageSize{};
  static constexpr ImageRoutine<&AlbumOverlayGlyphs::drawPlayPauseAlbumOverlayWithFrame> imageOfPlayPauseAlbumOverlayWithImageSize{};
  static constexpr ImageRoutine<&AlbumOverlayGlyphs::drawPlayingAlbumOverlayWithFrame> imageOfPlayingAlbumOverlayWithImageSize{};
  static constexpr ImageRoutine<&AlbumOverlayGlyphs::drawFavoriteAlbumOverlayWithFrame> imageOfFavoriteAlbumOverlayWithImageSize{};
  static constexpr ImageRoutine<&AlbumOverlayGlyphs::drawMoreAlbumOverlayWithFrame> imageOfMoreAlbumOverlayWithImageSize{};
  static constexpr ImageRoutine<&InfoButtons::drawBookButtonWithFrame> imageOfBookButtonWithImageSize{};
  static constexpr ImageRoutine<&InfoButtons::drawSimilarArtistsWithFrame> imageOfSimilarArtistsWithImageSize{};
  static constexpr ImageRoutine<&InfoButtons::drawCreditsButtonWithFrame> imageOfCreditsButtonWithImageSize{};

  static Image imageOfLeftArrow(CGSize imageSize = {12, 12}, bool enabled = true, bool isPressed = false) { return imageOfLeftArrowWithImageSize(imageSize, enabled, isPressed); }
  static Image imageOfRightArrow(CGSize imageSize = {12, 12}, bool enabled = true, bool isPressed = false) { return imageOfRightArrowWithImageSize(imageSize, enabled, isPressed); }
  static Image imageOfForwardArrow(CGSize imageSize = {50, 50}, bool enabled = true, bool isPressed = false, bool isWhite = false) { return imageOfForwardArrowWithImageSize(imageSize, enabled, isPressed, isWhite); }
  static Image imageOfBackwardArrow(CGSize imageSize = {50, 50}, bool enabled = true, bool isPressed = false, bool isWhite = false) { return imageOfBackwardArrowWithImageSize(imageSize, enabled, isPressed, isWhite); }
  static Image imageOfCloseCross(CGSize imageSize = {14, 14}) { return imageOfCloseCrossWithImageSize(imageSize); }
  static Image imageOfPlayPauseAlbumOverlay(CGSize imageSize = {76, 76}, bool isPressed = false, bool isOver = true, bool isPlaying = true) { return imageOfPlayPauseAlbumOverlayWithImageSize(imageSize, isPressed, isOver, isPlaying); }
  static Image imageOfPlayingAlbumOverlay(CGSize imageSize = {76, 76}, bool isPressed = false, bool isOver = true) { return imageOfPlayingAlbumOverlayWithImageSize(imageSize, isPressed, isOver); }
  static Image imageOfFavoriteAlbumOverlay(CGSize imageSize = {38, 38}, bool isSelected = true, bool isPressed = false, bool isOver = true) { return imageOfFavoriteAlbumOverlayWithImageSize(imageSize, isSelected, isPressed, isOver); }
  static Image imageOfMoreAlbumOverlay(CGSize imageSize = {44, 22}, bool isPressed = false, bool isOver = true) { return imageOfMoreAlbumOverlayWithImageSize(imageSize, isPressed, isOver); }
  static Image imageOfBookButton(CGSize imageSize = {16, 16}, bool isPressed = false) { return imageOfBookButtonWithImageSize(imageSize, isPressed); }
  static Image imageOfSimilarArtists(CGSize imageSize = {15, 15}, bool isPressed = false) { return imageOfSimilarArtistsWithImageSize(imageSize, isPressed); }
  static Image imageOfCreditsButton(CGSize imageSize = {20, 20}, bool isPressed = false) { return imageOfCreditsButtonWithImageSize(imageSize, isPressed); }
  // clang-format on
};

}  // namespace TessalunaUIKit
