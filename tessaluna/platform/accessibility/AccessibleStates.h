// What is true of an element at the moment, as assistive clients know it.
#pragma once

#include <cstdint>
#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

enum class AccessibleState : std::uint8_t {
  Disabled,
  Focusable,  // it takes the keyboard
  Focused,    // it has the keyboard, and no element in it has
  Selectable,
  Selected,
  Checkable,
  Checked,
  Mixed,  // neither checked nor unchecked
  Expandable,
  Expanded,
  Pressed,
  HasPopUp,  // it opens a menu
  Editable,  // a text that can be written in
  ReadOnly,  // a text that cannot
  MultiLine,
  Invisible,  // in no window, or in a hidden one
  Offscreen,  // nothing of it can be scrolled into what shows now
  Active,     // the window that has the keyboard
};

inline constexpr AccessibleState allAccessibleStates[] = {
    AccessibleState::Disabled,   AccessibleState::Focusable, AccessibleState::Focused,   AccessibleState::Selectable,
    AccessibleState::Selected,   AccessibleState::Checkable, AccessibleState::Checked,   AccessibleState::Mixed,
    AccessibleState::Expandable, AccessibleState::Expanded,  AccessibleState::Pressed,   AccessibleState::HasPopUp,
    AccessibleState::Editable,   AccessibleState::ReadOnly,  AccessibleState::MultiLine, AccessibleState::Invisible,
    AccessibleState::Offscreen,  AccessibleState::Active};

constexpr std::string_view wordFor(AccessibleState state) {
  constexpr std::string_view words[] = {"disabled", "focusable", "focused",    "selectable", "selected",   "checkable",
                                        "checked",  "mixed",     "expandable", "expanded",   "pressed",    "has pop-up",
                                        "editable", "read-only", "multi-line", "invisible",  "off screen", "active"};
  return words[static_cast<std::size_t>(state)];
}

class AccessibleStates {
 public:
  constexpr bool contains(AccessibleState state) const { return (bits_ & bit(state)) != 0; }
  constexpr void set(AccessibleState state, bool isOn = true) { bits_ = isOn ? bits_ | bit(state) : bits_ & ~bit(state); }
  friend constexpr bool operator==(AccessibleStates, AccessibleStates) = default;

 private:
  static constexpr std::uint32_t bit(AccessibleState state) { return std::uint32_t{1} << static_cast<unsigned>(state); }
  std::uint32_t bits_ = 0;
};

}  // namespace tessaluna::platform
