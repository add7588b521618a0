// The event types of a mouse's buttons.
#pragma once

#include <algorithm>
#include <optional>

#include "tessaluna/platform/events/NSEvent.h"

namespace tessaluna::platform {

enum class PressPhase { Down, Dragged, Up };

struct ButtonEvent {
  int button;  // 0 the left one, 1 the right one, 2 any other
  PressPhase phase;
};

namespace detail {

inline constexpr NSEventType buttonEventTypes[3][3] = {
    {NSEventType::LeftMouseDown, NSEventType::LeftMouseDragged, NSEventType::LeftMouseUp},
    {NSEventType::RightMouseDown, NSEventType::RightMouseDragged, NSEventType::RightMouseUp},
    {NSEventType::OtherMouseDown, NSEventType::OtherMouseDragged, NSEventType::OtherMouseUp}};

}  // namespace detail

// Buttons count from 0; all from 2 on share their types.
constexpr NSEventType buttonEventType(int button, PressPhase phase) {
  return detail::buttonEventTypes[std::min(button, 2)][int(phase)];
}

// Absent for what no button does.
constexpr std::optional<ButtonEvent> buttonEventOf(NSEventType type) {
  for (int button = 0; button < 3; ++button)
    for (const PressPhase phase : {PressPhase::Down, PressPhase::Dragged, PressPhase::Up})
      if (buttonEventType(button, phase) == type) return ButtonEvent{button, phase};
  return std::nullopt;
}

}  // namespace tessaluna::platform
