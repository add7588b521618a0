// The hands of a user: a mouse and a keyboard whose every movement is handed to the window as a real backend does, and becomes
// an event that goes through NSApp. Points are in a window's base space. Needs NSApp, or the program stops.
#pragma once

#include <cstdint>
#include <string>

#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/platform/events/NSEvent.h"

namespace tessaluna::backend::headless {

struct PressOptions {
  int button = 0;  // 0 left, 1 right, 2 another
  std::uint32_t modifiers = 0;
};

class VirtualUser {
 public:
  explicit VirtualUser(HeadlessBackend& desktop) : desktop_(desktop) {}

  // One button at a time. A press brings its window to the front and, where it can, makes it the key window.
  void press(platform::NSWindow& window, CGPoint point, PressOptions options = {});
  // Of the button that is down, in the window where it went down, wherever the point lies. Without one, or when the
  // window has gone: nothing.
  void dragTo(CGPoint point);
  void release();
  // The button comes up without an event: a desktop may keep the release for itself.
  void loseRelease() { isDown_ = false; }
  void click(platform::NSWindow& window, CGPoint point, PressOptions options = {});
  // On another application's window; the point is in screen space.
  void pressElsewhere(CGPoint screenPoint);

  // With no button down. Into a window, within it, and out of it to nowhere.
  void moveTo(platform::NSWindow& window, CGPoint point);
  void leave(platform::NSWindow& window);
  void scroll(platform::NSWindow& window, CGPoint point, CGSize delta);

  // To the key window; without one only the monitors see it.
  void keyDown(const std::string& characters, std::uint32_t modifiers = 0);
  void keyUp(const std::string& characters, std::uint32_t modifiers = 0);
  void pressKey(const std::string& characters, std::uint32_t modifiers = 0);
  void pressKey(char32_t functionKey, std::uint32_t modifiers = 0);
  // A key for each scalar of the text.
  void type(std::string_view text);
  // As an input method does: the text is composed in place of what is being composed, and stays when it is committed. Where
  // no text has the keys, nothing happens.
  void compose(std::string_view text);
  void commit(std::string_view text);

 private:
  struct Press {
    platform::WeakRef<platform::NSWindow> window;
    CGPoint point;
    PressOptions options;
  };

  void sendPointer(platform::NSWindow& window, CGPoint point, PointerInput input);
  void sendKey(KeyInput::What what, const std::string& characters, std::uint32_t modifiers);
  void sendComposition(const CompositionInput& step);

  HeadlessBackend& desktop_;
  Press last_;
  bool isDown_ = false;
};

}  // namespace tessaluna::backend::headless
