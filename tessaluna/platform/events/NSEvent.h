// One thing that the user did. Immutable: a backend makes it, NSApp sends it on its one way through monitors and windows.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

enum class NSEventType : std::uint8_t {
  LeftMouseDown = 1,
  LeftMouseUp = 2,
  RightMouseDown = 3,
  RightMouseUp = 4,
  MouseMoved = 5,
  LeftMouseDragged = 6,
  RightMouseDragged = 7,
  MouseEntered = 8,
  MouseExited = 9,
  KeyDown = 10,
  KeyUp = 11,
  FlagsChanged = 12,
  CursorUpdate = 17,
  ScrollWheel = 22,
  OtherMouseDown = 25,
  OtherMouseUp = 26,
  OtherMouseDragged = 27,
};

using NSEventMask = std::uint64_t;
constexpr NSEventMask maskOf(NSEventType type) { return NSEventMask{1} << static_cast<int>(type); }
inline constexpr NSEventMask NSEventMaskLeftMouseDown = maskOf(NSEventType::LeftMouseDown);
inline constexpr NSEventMask NSEventMaskLeftMouseUp = maskOf(NSEventType::LeftMouseUp);
inline constexpr NSEventMask NSEventMaskLeftMouseDragged = maskOf(NSEventType::LeftMouseDragged);
inline constexpr NSEventMask NSEventMaskAny = ~NSEventMask{0};

enum NSEventModifierFlags : std::uint32_t {
  NSEventModifierFlagCapsLock = 0x10000,
  NSEventModifierFlagShift = 0x20000,
  NSEventModifierFlagControl = 0x40000,
  NSEventModifierFlagOption = 0x80000,
  NSEventModifierFlagCommand = 0x100000,
  NSEventModifierFlagNumericPad = 0x200000,
  NSEventModifierFlagFunction = 0x800000,
};

// What the Tab key types, and with Shift.
inline constexpr std::string_view NSTabCharacter = "\t";
inline constexpr std::string_view NSBackTabCharacter = "\x19";

// Characters of keys that type none.
inline constexpr char32_t NSUpArrowFunctionKey = 0xF700;
inline constexpr char32_t NSDownArrowFunctionKey = 0xF701;
inline constexpr char32_t NSLeftArrowFunctionKey = 0xF702;
inline constexpr char32_t NSRightArrowFunctionKey = 0xF703;
inline constexpr char32_t NSF1FunctionKey = 0xF704;
inline constexpr char32_t NSInsertFunctionKey = 0xF727;
inline constexpr char32_t NSDeleteFunctionKey = 0xF728;
inline constexpr char32_t NSHomeFunctionKey = 0xF729;
inline constexpr char32_t NSEndFunctionKey = 0xF72B;
inline constexpr char32_t NSPageUpFunctionKey = 0xF72C;
inline constexpr char32_t NSPageDownFunctionKey = 0xF72D;

class NSEvent : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  struct Fields {
    NSEventType type = NSEventType::MouseMoved;
    CGPoint location{};  // in the window's base space; without a window in screen space
    std::uint32_t modifiers = 0;
    double timestamp = 0;  // seconds on the backend's clock
    Ref<NSWindow> window = nullptr;
    int clickCount = 0;                            // of a mouse down or up: 2 in a double click
    int buttonNumber = 0;                          // 0 left, 1 right, 2 and more others
    std::string characters = {};                   // of a key, in UTF-8; what the key types with its modifiers
    std::string charactersIgnoringModifiers = {};  // ... without them, Shift apart
    bool isRepeat = false;
    CGSize scrollingDelta{};                     // points; positive moves the content right and down
    Ref<NSTrackingArea> trackingArea = nullptr;  // of an entry or exit
  };
  explicit NSEvent(Fields fields) : fields_(std::move(fields)) {}

  NSEventType type() const { return fields_.type; }
  CGPoint locationInWindow() const { return fields_.location; }
  std::uint32_t modifierFlags() const { return fields_.modifiers; }
  double timestamp() const { return fields_.timestamp; }
  const Ref<NSWindow>& window() const { return fields_.window; }
  int clickCount() const { return fields_.clickCount; }
  int buttonNumber() const { return fields_.buttonNumber; }
  const std::string& characters() const { return fields_.characters; }
  const std::string& charactersIgnoringModifiers() const { return fields_.charactersIgnoringModifiers; }
  bool isARepeat() const { return fields_.isRepeat; }
  CGFloat scrollingDeltaX() const { return fields_.scrollingDelta.width; }
  CGFloat scrollingDeltaY() const { return fields_.scrollingDelta.height; }
  const Ref<NSTrackingArea>& trackingArea() const { return fields_.trackingArea; }
  const Fields& fields() const { return fields_; }

  // A handler that sees the application's events of the mask before any window does. It returns the event to continue with, or
  // null to swallow it. The token is what removeMonitor takes. Without NSApp the program stops.
  using MonitorHandler = std::function<Ref<NSEvent>(const Ref<NSEvent>&)>;
  static Ref<NSObject> addLocalMonitorForEventsMatchingMask(NSEventMask mask, MonitorHandler handler);
  static void removeMonitor(const Ref<NSObject>& token);

  // Where the pointer is now, in screen space. Zero without a backend.
  static CGPoint mouseLocation();

 private:
  Fields fields_;
};

}  // namespace tessaluna::platform
