// Glyphs as images that stay vector: an image holds no pixels but runs its draw routine whenever it is rendered, in the
// frame (0, 0, imageSize), with the flags that it was made with. Each call makes a new image, with one allocation and
// without drawing. Sizes are in points; the default is the size that the glyph was designed in.
#pragma once

#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/uikit/stylekit/AlbumArtPlaceholders.h"
#include "tessaluna/uikit/stylekit/AlbumOverlayGlyphs.h"
#include "tessaluna/uikit/stylekit/ArrowAndCloseGlyphs.h"
#include "tessaluna/uikit/stylekit/Badges.h"
#include "tessaluna/uikit/stylekit/BrowseIcons.h"
#include "tessaluna/uikit/stylekit/InfoButtons.h"
#include "tessaluna/uikit/stylekit/MoodIcons.h"

namespace TessalunaUIKit {

// Makes images of one draw routine: called with the image's size and the routine's flags, in their order.
template <auto draw>
class ImageRoutine;

template <class... Flags, void (*draw)(tessaluna::platform::CGRect, Flags...)>
class ImageRoutine<draw> {
 public:
  tessaluna::platform::Ref<tessaluna::platform::NSImage> operator()(tessaluna::platform::CGSize imageSize,
                                                                    Flags... flags) const {
    // The destination is not looked at: the frame is the image's own.
    return tessaluna::platform::NSImage::imageWithSize(imageSize, false, [imageSize, flags...](tessaluna::platform::CGRect) {
      draw({{0, 0}, imageSize}, flags...);
      return true;
    });
  }
};

struct ImageFactory {
  using CGSize = tessaluna::platform::CGSize;
  using Image = tessaluna::platform::Ref<tessaluna::platform::NSImage>;

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
  static constexpr ImageRoutine<&AlbumArtPlaceholders::drawMissingAlbumArtWithFrame> imageOfMissingAlbumArtWithImageSize{};
  static constexpr ImageRoutine<&AlbumArtPlaceholders::drawLoadingAlbumArtWithFrame> imageOfLoadingAlbumArtWithImageSize{};
  static constexpr ImageRoutine<&AlbumArtPlaceholders::drawIconAlbumWithFrame> imageOfIconAlbumWithImageSize{};
  static constexpr ImageRoutine<&Badges::drawMqaLogoWithButtonFrame> imageOfMqaLogoWithImageSize{};
  static constexpr ImageRoutine<&Badges::drawHighResAudioLogoWithFrame> imageOfHighResAudioLogoWithImageSize{};
  static constexpr ImageRoutine<&Badges::drawTidalLogoWideWithFrame> imageOfTidalLogoWideWithImageSize{};
  static constexpr ImageRoutine<&Badges::drawTidalLogoTallWithFrame> imageOfTidalLogoTallWithImageSize{};
  static constexpr ImageRoutine<&Badges::drawTidalLogoSmallWithFrame> imageOfTidalLogoSmallWithImageSize{};
  static constexpr ImageRoutine<&BrowseIcons::drawTidalIconNewWithFrame> imageOfTidalIconNewWithImageSize{};
  static constexpr ImageRoutine<&BrowseIcons::drawTidalIconGenresWithFrame> imageOfTidalIconGenresWithImageSize{};
  static constexpr ImageRoutine<&BrowseIcons::drawTidalIconMyMusicWithFrame> imageOfTidalIconMyMusicWithImageSize{};
  static constexpr ImageRoutine<&BrowseIcons::drawTidalIconRisingWithFrame> imageOfTidalIconRisingWithImageSize{};
  static constexpr ImageRoutine<&BrowseIcons::drawTidalIconDiscoveryWithFrame> imageOfTidalIconDiscoveryWithImageSize{};
  static constexpr ImageRoutine<&BrowseIcons::drawTidalIconSearchWithFrame> imageOfTidalIconSearchWithImageSize{};
  static constexpr ImageRoutine<&BrowseIcons::drawTidalIconPlaylistWithFrame> imageOfTidalIconPlaylistWithImageSize{};
  static constexpr ImageRoutine<&BrowseIcons::drawTidalIconAlbumWithFrame> imageOfTidalIconAlbumWithImageSize{};
  static constexpr ImageRoutine<&BrowseIcons::drawTidalMusicIconWithFrame> imageOfTidalMusicIconWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodRelaxWithFrame> imageOfMoodRelaxWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodPartyWithFrame> imageOfMoodPartyWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodWorkoutWithFrame> imageOfMoodWorkoutWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodLoveWithFrame> imageOfMoodLoveWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodFocusWithFrame> imageOfMoodFocusWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodDinnerWithFrame> imageOfMoodDinnerWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodCelebritiesWithFrame> imageOfMoodCelebritiesWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodMediaWithFrame> imageOfMoodMediaWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodSeasonalWithFrame> imageOfMoodSeasonalWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodHistoryWithFrame> imageOfMoodHistoryWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodChartsWithFrame> imageOfMoodChartsWithImageSize{};
  static constexpr ImageRoutine<&MoodIcons::drawMoodEventsWithFrame> imageOfMoodEventsWithImageSize{};

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
  static Image imageOfMissingAlbumArt(CGSize imageSize = {200, 200}) { return imageOfMissingAlbumArtWithImageSize(imageSize); }
  static Image imageOfLoadingAlbumArt(CGSize imageSize = {200, 200}) { return imageOfLoadingAlbumArtWithImageSize(imageSize); }
  static Image imageOfIconAlbum(CGSize imageSize = {50, 50}) { return imageOfIconAlbumWithImageSize(imageSize); }
  static Image imageOfMqaLogo(CGSize imageSize = {65, 18}, bool enabled = true) { return imageOfMqaLogoWithImageSize(imageSize, enabled); }
  static Image imageOfHighResAudioLogo(CGSize imageSize = {200, 200}) { return imageOfHighResAudioLogoWithImageSize(imageSize); }
  static Image imageOfTidalLogoWide(CGSize imageSize = {835, 332}) { return imageOfTidalLogoWideWithImageSize(imageSize); }
  static Image imageOfTidalLogoTall(CGSize imageSize = {586, 354}) { return imageOfTidalLogoTallWithImageSize(imageSize); }
  static Image imageOfTidalLogoSmall(CGSize imageSize = {150, 150}) { return imageOfTidalLogoSmallWithImageSize(imageSize); }
  static Image imageOfTidalIconNew(CGSize imageSize = {50, 50}) { return imageOfTidalIconNewWithImageSize(imageSize); }
  static Image imageOfTidalIconGenres(CGSize imageSize = {50, 50}) { return imageOfTidalIconGenresWithImageSize(imageSize); }
  static Image imageOfTidalIconMyMusic(CGSize imageSize = {50, 50}) { return imageOfTidalIconMyMusicWithImageSize(imageSize); }
  static Image imageOfTidalIconRising(CGSize imageSize = {50, 50}) { return imageOfTidalIconRisingWithImageSize(imageSize); }
  static Image imageOfTidalIconDiscovery(CGSize imageSize = {50, 50}) { return imageOfTidalIconDiscoveryWithImageSize(imageSize); }
  static Image imageOfTidalIconSearch(CGSize imageSize = {50, 50}) { return imageOfTidalIconSearchWithImageSize(imageSize); }
  static Image imageOfTidalIconPlaylist(CGSize imageSize = {50, 50}) { return imageOfTidalIconPlaylistWithImageSize(imageSize); }
  static Image imageOfTidalIconAlbum(CGSize imageSize = {50, 50}) { return imageOfTidalIconAlbumWithImageSize(imageSize); }
  static Image imageOfTidalMusicIcon(CGSize imageSize = {100, 100}) { return imageOfTidalMusicIconWithImageSize(imageSize); }
  static Image imageOfMoodRelax(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodRelaxWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodParty(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodPartyWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodWorkout(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodWorkoutWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodLove(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodLoveWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodFocus(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodFocusWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodDinner(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodDinnerWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodCelebrities(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodCelebritiesWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodMedia(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodMediaWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodSeasonal(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodSeasonalWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodHistory(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodHistoryWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodCharts(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodChartsWithImageSize(imageSize, isWhite); }
  static Image imageOfMoodEvents(CGSize imageSize = {200, 200}, bool isWhite = false) { return imageOfMoodEventsWithImageSize(imageSize, isWhite); }
  // clang-format on
};

}  // namespace TessalunaUIKit
