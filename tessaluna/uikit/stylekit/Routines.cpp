#include "tessaluna/uikit/stylekit/Routines.h"

#include <utility>

#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using Kit = TessalunaStyleKit;

namespace {

// Calls a routine of any number of flags with a list of values.
template <auto routine, std::size_t... index>
void drawWith(CGRect frame, [[maybe_unused]] std::span<const bool> flags, std::index_sequence<index...>) {
  routine(frame, flags[index]...);
}
template <auto routine, class... Flags>
constexpr auto drawerOf(void (*)(CGRect, Flags...)) {
  return [](CGRect frame, std::span<const bool> flags) {
    drawWith<routine>(frame, flags, std::index_sequence_for<Flags...>());
  };
}
template <auto routine>
constexpr void (*drawing)(CGRect, std::span<const bool>) = drawerOf<routine>(routine);

template <auto draw, std::size_t... index>
Ref<NSImage> imageWith(CGSize size, [[maybe_unused]] std::span<const bool> flags, std::index_sequence<index...>) {
  return ImageRoutine<draw>()(size, flags[index]...);
}
template <auto draw, class... Flags>
constexpr auto imagerOf(void (*)(CGRect, Flags...)) {
  return [](CGSize size, std::span<const bool> flags) {
    return imageWith<draw>(size, flags, std::index_sequence_for<Flags...>());
  };
}
template <auto draw>
constexpr Ref<NSImage> (*imaging)(CGSize, std::span<const bool>) = imagerOf<draw>(draw);

constexpr RoutineFlag enabledPressed[] = {{"enabled", true}, {"isPressed", false}};
constexpr RoutineFlag enabledPressedWhite[] = {{"enabled", true}, {"isPressed", false}, {"isWhite", false}};
constexpr RoutineFlag pressed[] = {{"isPressed", false}};
constexpr RoutineFlag selectedPressed[] = {{"isSelected", true}, {"isPressed", false}};
constexpr RoutineFlag pressedOver[] = {{"isPressed", false}, {"isOver", true}};
constexpr RoutineFlag pressedOverPlaying[] = {{"isPressed", false}, {"isOver", true}, {"isPlaying", true}};
constexpr RoutineFlag selectedPressedOver[] = {{"isSelected", true}, {"isPressed", false}, {"isOver", true}};
constexpr RoutineFlag enabledOnly[] = {{"enabled", true}};
constexpr RoutineFlag white[] = {{"isWhite", false}};
constexpr std::span<const RoutineFlag> noFlags;

using enum RoutineFamily;

// clang-format off
constexpr Routine table[] = {
    {"LeftArrow", ArrowsAndCrosses, "frame", {1, 1, 12, 12}, enabledPressed,
     drawing<&Kit::drawLeftArrowWithFrame>, imaging<&Kit::drawLeftArrowWithFrame>,
     [] { Kit::drawLeftArrow(); }, [] { return Kit::imageOfLeftArrow(); }},
    {"RightArrow", ArrowsAndCrosses, "frame", {1, 1, 12, 12}, enabledPressed,
     drawing<&Kit::drawRightArrowWithFrame>, imaging<&Kit::drawRightArrowWithFrame>,
     [] { Kit::drawRightArrow(); }, [] { return Kit::imageOfRightArrow(); }},
    {"ForwardArrow", ArrowsAndCrosses, "frame", {0, 0, 50, 50}, enabledPressedWhite,
     drawing<&Kit::drawForwardArrowWithFrame>, imaging<&Kit::drawForwardArrowWithFrame>,
     [] { Kit::drawForwardArrow(); }, [] { return Kit::imageOfForwardArrow(); }},
    {"BackwardArrow", ArrowsAndCrosses, "frame", {0, 0, 50, 50}, enabledPressedWhite,
     drawing<&Kit::drawBackwardArrowWithFrame>, imaging<&Kit::drawBackwardArrowWithFrame>,
     [] { Kit::drawBackwardArrow(); }, [] { return Kit::imageOfBackwardArrow(); }},
    {"CloseCross", ArrowsAndCrosses, "frame", {0, 0, 14, 14}, noFlags,
     drawing<&Kit::drawCloseCrossWithFrame>, imaging<&Kit::drawCloseCrossWithFrame>,
     [] { Kit::drawCloseCross(); }, [] { return Kit::imageOfCloseCross(); }},
    {"CloseButton", ArrowsAndCrosses, "frame", {0, 0, 16, 16}, pressed,
     drawing<&Kit::drawCloseButtonWithFrame>, nullptr, [] { Kit::drawCloseButton(); }, nullptr},

    {"Play", Transport, "buttonFrame", {0, 0, 32, 32}, noFlags,
     drawing<&Kit::drawPlayWithButtonFrame>, nullptr, [] { Kit::drawPlay(); }, nullptr},
    {"Pause", Transport, "buttonFrame", {0, 0, 32, 32}, noFlags,
     drawing<&Kit::drawPauseWithButtonFrame>, nullptr, [] { Kit::drawPause(); }, nullptr},
    {"Stop", Transport, "buttonFrame", {0, 0, 32, 32}, noFlags,
     drawing<&Kit::drawStopWithButtonFrame>, nullptr, [] { Kit::drawStop(); }, nullptr},
    {"Previous", Transport, "buttonFrame", {0, 0, 32, 32}, noFlags,
     drawing<&Kit::drawPreviousWithButtonFrame>, nullptr, [] { Kit::drawPrevious(); }, nullptr},
    {"Next", Transport, "buttonFrame", {0, 0, 32, 32}, noFlags,
     drawing<&Kit::drawNextWithButtonFrame>, nullptr, [] { Kit::drawNext(); }, nullptr},
    {"Repeat", Transport, "buttonFrame", {0, 0, 32, 32}, noFlags,
     drawing<&Kit::drawRepeatWithButtonFrame>, nullptr, [] { Kit::drawRepeat(); }, nullptr},
    {"Shuffle", Transport, "buttonFrame", {0, 0, 32, 32}, selectedPressed,
     drawing<&Kit::drawShuffleWithButtonFrame>, nullptr, [] { Kit::drawShuffle(); }, nullptr},
    {"InvertPolarity", Transport, "buttonFrame", {0, 0, 32, 32}, noFlags,
     drawing<&Kit::drawInvertPolarityWithButtonFrame>, nullptr, [] { Kit::drawInvertPolarity(); }, nullptr},

    {"PlayPauseAlbumOverlay", AlbumOverlays, "frame", {0, 0, 76, 76}, pressedOverPlaying,
     drawing<&Kit::drawPlayPauseAlbumOverlayWithFrame>, imaging<&Kit::drawPlayPauseAlbumOverlayWithFrame>,
     [] { Kit::drawPlayPauseAlbumOverlay(); }, [] { return Kit::imageOfPlayPauseAlbumOverlay(); }},
    {"PlayingAlbumOverlay", AlbumOverlays, "frame", {0, 0, 76, 76}, pressedOver,
     drawing<&Kit::drawPlayingAlbumOverlayWithFrame>, imaging<&Kit::drawPlayingAlbumOverlayWithFrame>,
     [] { Kit::drawPlayingAlbumOverlay(); }, [] { return Kit::imageOfPlayingAlbumOverlay(); }},
    {"FavoriteAlbumOverlay", AlbumOverlays, "frame", {0, 0, 38, 38}, selectedPressedOver,
     drawing<&Kit::drawFavoriteAlbumOverlayWithFrame>, imaging<&Kit::drawFavoriteAlbumOverlayWithFrame>,
     [] { Kit::drawFavoriteAlbumOverlay(); }, [] { return Kit::imageOfFavoriteAlbumOverlay(); }},
    {"MoreAlbumOverlay", AlbumOverlays, "frame", {0, 0, 44, 22}, pressedOver,
     drawing<&Kit::drawMoreAlbumOverlayWithFrame>, imaging<&Kit::drawMoreAlbumOverlayWithFrame>,
     [] { Kit::drawMoreAlbumOverlay(); }, [] { return Kit::imageOfMoreAlbumOverlay(); }},

    {"TrackRowPlayPause", TrackRow, "frame", {0, 0, 15, 15}, pressedOverPlaying,
     drawing<&Kit::drawTrackRowPlayPauseWithFrame>, nullptr, [] { Kit::drawTrackRowPlayPause(); }, nullptr},
    {"TrackRowPlaying", TrackRow, "frame", {0, 0, 15, 15}, noFlags,
     drawing<&Kit::drawTrackRowPlayingWithFrame>, nullptr, [] { Kit::drawTrackRowPlaying(); }, nullptr},
    {"TrackMore", TrackRow, "frame", {0, 0, 15, 15}, pressedOver,
     drawing<&Kit::drawTrackMoreWithFrame>, nullptr, [] { Kit::drawTrackMore(); }, nullptr},

    {"BookButton", InfoButtonGlyphs, "frame", {0, 0, 16, 16}, pressed,
     drawing<&Kit::drawBookButtonWithFrame>, imaging<&Kit::drawBookButtonWithFrame>,
     [] { Kit::drawBookButton(); }, [] { return Kit::imageOfBookButton(); }},
    {"SimilarArtists", InfoButtonGlyphs, "frame", {0, 0, 15, 15}, pressed,
     drawing<&Kit::drawSimilarArtistsWithFrame>, imaging<&Kit::drawSimilarArtistsWithFrame>,
     [] { Kit::drawSimilarArtists(); }, [] { return Kit::imageOfSimilarArtists(); }},
    {"CreditsButton", InfoButtonGlyphs, "frame", {0, 0, 20, 20}, pressed,
     drawing<&Kit::drawCreditsButtonWithFrame>, imaging<&Kit::drawCreditsButtonWithFrame>,
     [] { Kit::drawCreditsButton(); }, [] { return Kit::imageOfCreditsButton(); }},

    {"EmptyAlbumImage", Placeholders, "frame", {5, 3, 200, 200}, noFlags,
     drawing<&Kit::drawEmptyAlbumImageWithFrame>, nullptr, [] { Kit::drawEmptyAlbumImage(); }, nullptr},
    {"MissingAlbumArt", Placeholders, "frame", {0, 0, 200, 200}, noFlags,
     drawing<&Kit::drawMissingAlbumArtWithFrame>, imaging<&Kit::drawMissingAlbumArtWithFrame>,
     [] { Kit::drawMissingAlbumArt(); }, [] { return Kit::imageOfMissingAlbumArt(); }},
    {"LoadingAlbumArt", Placeholders, "frame", {0, 0, 200, 200}, noFlags,
     drawing<&Kit::drawLoadingAlbumArtWithFrame>, imaging<&Kit::drawLoadingAlbumArtWithFrame>,
     [] { Kit::drawLoadingAlbumArt(); }, [] { return Kit::imageOfLoadingAlbumArt(); }},
    {"IconAlbum", Placeholders, "frame", {0, 0, 50, 50}, noFlags,
     drawing<&Kit::drawIconAlbumWithFrame>, imaging<&Kit::drawIconAlbumWithFrame>,
     [] { Kit::drawIconAlbum(); }, [] { return Kit::imageOfIconAlbum(); }},

    {"MqaLogo", FormatAndServiceBadges, "buttonFrame", {0, 0, 65, 18}, enabledOnly,
     drawing<&Kit::drawMqaLogoWithButtonFrame>, imaging<&Kit::drawMqaLogoWithButtonFrame>,
     [] { Kit::drawMqaLogo(); }, [] { return Kit::imageOfMqaLogo(); }},
    {"HighResAudioLogo", FormatAndServiceBadges, "frame", {0, 0, 200, 200}, noFlags,
     drawing<&Kit::drawHighResAudioLogoWithFrame>, imaging<&Kit::drawHighResAudioLogoWithFrame>,
     [] { Kit::drawHighResAudioLogo(); }, [] { return Kit::imageOfHighResAudioLogo(); }},
    {"TidalLogoWide", FormatAndServiceBadges, "frame", {0, 0, 835, 332}, noFlags,
     drawing<&Kit::drawTidalLogoWideWithFrame>, imaging<&Kit::drawTidalLogoWideWithFrame>,
     [] { Kit::drawTidalLogoWide(); }, [] { return Kit::imageOfTidalLogoWide(); }},
    {"TidalLogoTall", FormatAndServiceBadges, "frame", {0, 0, 586, 354}, noFlags,
     drawing<&Kit::drawTidalLogoTallWithFrame>, imaging<&Kit::drawTidalLogoTallWithFrame>,
     [] { Kit::drawTidalLogoTall(); }, [] { return Kit::imageOfTidalLogoTall(); }},
    {"TidalLogoSmall", FormatAndServiceBadges, "frame", {0, 0, 150, 150}, noFlags,
     drawing<&Kit::drawTidalLogoSmallWithFrame>, imaging<&Kit::drawTidalLogoSmallWithFrame>,
     [] { Kit::drawTidalLogoSmall(); }, [] { return Kit::imageOfTidalLogoSmall(); }},

    {"TidalIconNew", Browse, "frame", {0, 0, 50, 50}, noFlags,
     drawing<&Kit::drawTidalIconNewWithFrame>, imaging<&Kit::drawTidalIconNewWithFrame>,
     [] { Kit::drawTidalIconNew(); }, [] { return Kit::imageOfTidalIconNew(); }},
    {"TidalIconGenres", Browse, "frame", {0, 0, 50, 50}, noFlags,
     drawing<&Kit::drawTidalIconGenresWithFrame>, imaging<&Kit::drawTidalIconGenresWithFrame>,
     [] { Kit::drawTidalIconGenres(); }, [] { return Kit::imageOfTidalIconGenres(); }},
    {"TidalIconMyMusic", Browse, "frame", {0, 0, 50, 50}, noFlags,
     drawing<&Kit::drawTidalIconMyMusicWithFrame>, imaging<&Kit::drawTidalIconMyMusicWithFrame>,
     [] { Kit::drawTidalIconMyMusic(); }, [] { return Kit::imageOfTidalIconMyMusic(); }},
    {"TidalIconRising", Browse, "frame", {0, 0, 50, 50}, noFlags,
     drawing<&Kit::drawTidalIconRisingWithFrame>, imaging<&Kit::drawTidalIconRisingWithFrame>,
     [] { Kit::drawTidalIconRising(); }, [] { return Kit::imageOfTidalIconRising(); }},
    {"TidalIconDiscovery", Browse, "frame", {0, 0, 50, 50}, noFlags,
     drawing<&Kit::drawTidalIconDiscoveryWithFrame>, imaging<&Kit::drawTidalIconDiscoveryWithFrame>,
     [] { Kit::drawTidalIconDiscovery(); }, [] { return Kit::imageOfTidalIconDiscovery(); }},
    {"TidalIconSearch", Browse, "frame", {0, 0, 50, 50}, noFlags,
     drawing<&Kit::drawTidalIconSearchWithFrame>, imaging<&Kit::drawTidalIconSearchWithFrame>,
     [] { Kit::drawTidalIconSearch(); }, [] { return Kit::imageOfTidalIconSearch(); }},
    {"TidalIconPlaylist", Browse, "frame", {0, 0, 50, 50}, noFlags,
     drawing<&Kit::drawTidalIconPlaylistWithFrame>, imaging<&Kit::drawTidalIconPlaylistWithFrame>,
     [] { Kit::drawTidalIconPlaylist(); }, [] { return Kit::imageOfTidalIconPlaylist(); }},
    {"TidalIconAlbum", Browse, "frame", {0, 0, 50, 50}, noFlags,
     drawing<&Kit::drawTidalIconAlbumWithFrame>, imaging<&Kit::drawTidalIconAlbumWithFrame>,
     [] { Kit::drawTidalIconAlbum(); }, [] { return Kit::imageOfTidalIconAlbum(); }},
    {"TidalMusicIcon", Browse, "frame", {0, 0, 100, 100}, noFlags,
     drawing<&Kit::drawTidalMusicIconWithFrame>, imaging<&Kit::drawTidalMusicIconWithFrame>,
     [] { Kit::drawTidalMusicIcon(); }, [] { return Kit::imageOfTidalMusicIcon(); }},

    {"MoodRelax", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodRelaxWithFrame>, imaging<&Kit::drawMoodRelaxWithFrame>,
     [] { Kit::drawMoodRelax(); }, [] { return Kit::imageOfMoodRelax(); }},
    {"MoodParty", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodPartyWithFrame>, imaging<&Kit::drawMoodPartyWithFrame>,
     [] { Kit::drawMoodParty(); }, [] { return Kit::imageOfMoodParty(); }},
    {"MoodWorkout", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodWorkoutWithFrame>, imaging<&Kit::drawMoodWorkoutWithFrame>,
     [] { Kit::drawMoodWorkout(); }, [] { return Kit::imageOfMoodWorkout(); }},
    {"MoodLove", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodLoveWithFrame>, imaging<&Kit::drawMoodLoveWithFrame>,
     [] { Kit::drawMoodLove(); }, [] { return Kit::imageOfMoodLove(); }},
    {"MoodFocus", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodFocusWithFrame>, imaging<&Kit::drawMoodFocusWithFrame>,
     [] { Kit::drawMoodFocus(); }, [] { return Kit::imageOfMoodFocus(); }},
    {"MoodDinner", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodDinnerWithFrame>, imaging<&Kit::drawMoodDinnerWithFrame>,
     [] { Kit::drawMoodDinner(); }, [] { return Kit::imageOfMoodDinner(); }},
    {"MoodCelebrities", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodCelebritiesWithFrame>, imaging<&Kit::drawMoodCelebritiesWithFrame>,
     [] { Kit::drawMoodCelebrities(); }, [] { return Kit::imageOfMoodCelebrities(); }},
    {"MoodMedia", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodMediaWithFrame>, imaging<&Kit::drawMoodMediaWithFrame>,
     [] { Kit::drawMoodMedia(); }, [] { return Kit::imageOfMoodMedia(); }},
    {"MoodSeasonal", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodSeasonalWithFrame>, imaging<&Kit::drawMoodSeasonalWithFrame>,
     [] { Kit::drawMoodSeasonal(); }, [] { return Kit::imageOfMoodSeasonal(); }},
    {"MoodHistory", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodHistoryWithFrame>, imaging<&Kit::drawMoodHistoryWithFrame>,
     [] { Kit::drawMoodHistory(); }, [] { return Kit::imageOfMoodHistory(); }},
    {"MoodCharts", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodChartsWithFrame>, imaging<&Kit::drawMoodChartsWithFrame>,
     [] { Kit::drawMoodCharts(); }, [] { return Kit::imageOfMoodCharts(); }},
    {"MoodEvents", Mood, "frame", {0, 0, 200, 200}, white,
     drawing<&Kit::drawMoodEventsWithFrame>, imaging<&Kit::drawMoodEventsWithFrame>,
     [] { Kit::drawMoodEvents(); }, [] { return Kit::imageOfMoodEvents(); }},
};
// clang-format on

std::string selectorText(std::string start, std::string_view frameKeyword, std::span<const RoutineFlag> flags) {
  start += frameKeyword;
  start += ':';
  for (const RoutineFlag& flag : flags) start += std::string(flag.name) + ":";
  return start;
}

}  // namespace

std::string_view familyName(RoutineFamily family) {
  switch (family) {
    case ArrowsAndCrosses: return "Arrows and crosses";
    case Transport: return "Transport";
    case AlbumOverlays: return "Album overlays";
    case TrackRow: return "Track row";
    case InfoButtonGlyphs: return "Info buttons";
    case Placeholders: return "Cover placeholders";
    case FormatAndServiceBadges: return "Badges";
    case Browse: return "Browse icons";
    case Mood: return "Mood icons";
  }
  unreachable();
}

std::string Routine::member() const { return "draw" + std::string(name); }

std::string Routine::selector() const {
  return selectorText(member(), frameArgument == "buttonFrame" ? "WithButtonFrame" : "WithFrame", flags);
}

std::optional<std::string> Routine::imageMember() const {
  if (!image) return std::nullopt;
  return "imageOf" + std::string(name);
}

std::optional<std::string> Routine::imageSelector() const {
  if (!image) return std::nullopt;
  return selectorText(*imageMember(), "WithImageSize", flags);
}

std::span<const Routine> routines() { return table; }

const Routine* findRoutine(std::string_view name) {
  for (const Routine& routine : table)
    if (name == routine.name || name == routine.member() || name == routine.selector()) return &routine;
  return nullptr;
}

}  // namespace TessalunaUIKit
