#include "uikit/stylekit/Routines.h"

#include <utility>

#include "platform/foundation/stopProgram.h"
#include "uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

using namespace platform;
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
