// What a user did, as plain values: a backend fills them in and passes them to the window (WindowInput), which decides what
// becomes of them. Places count points from the upper left corner of the window's content, y down. Modifiers are the flags
// of events.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::backend {

enum class Taken { No, Yes };

struct PointerInput {
  enum class What { Moved, Pressed, Released, Entered, Left };
  What what = What::Moved;
  platform::CGPoint place = {};
  std::optional<platform::CGPoint> onScreen = {};  // the same in screen space; absent: by the window's frame
  int button = 0;                                  // of a press or release: 0 left, 1 right, 2 and more others
  std::uint32_t heldButtons = 0;                   // a bit for each that is down now, the lowest for the left one
  std::uint32_t modifiers = 0;
  std::optional<double> time = {};  // seconds on the desktop's own clock of inputs; absent: the backend's now
};

struct WheelInput {
  platform::CGPoint place = {};
  // How far the content is to move right and down: in points where the device says so, or else in lines of text.
  platform::CGSize points = {}, lines = {};
  std::uint32_t modifiers = 0;
};

// Keys that are known by a name rather than by what they type.
enum class KeyName {
  Character,
  Up,
  Down,
  Left,
  Right,
  Insert,
  Delete,
  Home,
  End,
  PageUp,
  PageDown,
  Menu,
  Return,
  Enter,  // of the number pad
  Tab,
  Backtab,
  Backspace,
  Escape,
  Function,
  Shift,
  Control,
  Option,
  Command,
  CapsLock,
};

struct KeyInput {
  // Announced: a copy of a press that is yet to come, by which a desktop asks whether the window wants the key.
  enum class What { Announced, Pressed, Released };
  What what = What::Pressed;
  KeyName name = KeyName::Character;
  int functionNumber = 0;   // of a function key, from 1
  std::string text = {};    // what it types with all modifiers, in UTF-8; empty for nothing
  std::string letter = {};  // what is written on the key, for one that types: a letter in either case. Empty if not known
  std::uint32_t modifiers = 0;
  bool isRepeat = false;
  std::int64_t code = 0;  // the desktop's own number of the key, by which a press is known after its announcement
};

struct KeyAnswer {
  Taken taken = Taken::No;
  // Nobody in the window has taken a press that it had claimed when it was announced: the desktop may use the key now.
  bool isGivenBack = false;
};

// A step of an input method, or of a dead key.
struct CompositionInput {
  std::string committed = {};  // what has been decided, in UTF-8; comes into the text first
  // What the committed text replaces, in UTF-16 units from the caret. Absent: what was being composed, or the selection.
  struct Range {
    std::ptrdiff_t start = 0;
    std::size_t length = 0;
  };
  std::optional<Range> replaced = {};
  std::string composed = {};              // what is being composed from now on
  std::optional<std::size_t> caret = {};  // in the composed text, in UTF-16 units; absent: at its end
};

// The text that has the keys, as input methods see it: without what is being composed, which has its place at the caret.
struct EditedText {
  std::u16string text;
  std::size_t anchor = 0, caret = 0;  // of the selection, in UTF-16 units
  platform::CGRect anchorPlace, caretPlace;
};

// How close two presses follow each other that are a double click.
struct ClickLimits {
  double seconds = 0.5;
  double points = 4;  // in each direction
};

}  // namespace tessaluna::backend
