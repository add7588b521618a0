// What a desktop brings: windows, screens, a clock, colors. A backend only translates; every rule is above this seam.
// Everything is called on the main thread, except decodeImage, which a backend answers on any.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tessaluna/platform/backend/Canvas.h"
#include "tessaluna/platform/backend/Input.h"
#include "tessaluna/platform/backend/Menu.h"
#include "tessaluna/platform/backend/SystemColor.h"
#include "tessaluna/platform/backend/Timer.h"

namespace tessaluna::platform {

class NSView;
class NSWindow;
class WindowInput;

}  // namespace tessaluna::platform

namespace tessaluna::backend {

// Screen space: points, the origin at the lower left of the primary screen, y up.
struct Screen {
  CGRect frame;
  CGRect visibleFrame;  // without panels and docks
  double scale = 1;
};

// The one that shows most of the rectangle; absent where none shows any of it.
std::optional<Screen> screenShowing(CGRect rect, const std::vector<Screen>& screens);

enum class CursorShape { Arrow, PointingHand, IBeam, ResizeLeftRight, ResizeUpDown };

// What a native window reports to the window that it belongs to.
class WindowClient {
 public:
  virtual ~WindowClient() = default;
  virtual void nativeDisplay() = 0;                     // asked for by scheduleDisplay: paint what is dirty now
  virtual void nativeFrameChanged(CGRect content) = 0;  // by the user or the desktop; the content's place on screen
  virtual void nativeScaleChanged() = 0;
  virtual void nativeKeyStatusChanged(bool isKey) = 0;
  virtual void nativeCloseRequested() = 0;
  // Takes what the user does.
  virtual platform::WindowInput& input() = 0;
  // The window that the events of the native one name; null while it is being destroyed.
  virtual std::shared_ptr<platform::NSWindow> eventWindow() = 0;
};

enum class LayoutDirection { LeftToRight, RightToLeft };

enum class FocusStep { Next, Previous };

// A window of the desktop. It keeps its picture: an expose copies it and asks for nothing.
class NativeWindow {
 public:
  virtual ~NativeWindow() = default;
  virtual void setFrame(CGRect content) = 0;  // screen space, without title bar
  virtual void show() = 0;
  virtual void hide() = 0;
  virtual void raise() = 0;
  virtual void requestKey() = 0;
  virtual void setParent(NativeWindow* parent) = 0;  // stays above it; null frees it
  virtual void setTitle(const std::string& title) = 0;
  virtual void setCursor(CursorShape shape) = 0;
  virtual void setOpaque(bool isOpaque) = 0;  // followed by a redraw of everything
  virtual void setHasShadow(bool hasShadow) = 0;
  // What is to show once the pointer rests; empty: nothing. Said at each move of the pointer over the window, and at a press.
  virtual void setToolTip(const std::string& text) = 0;
  virtual double scale() const = 0;                  // device pixels for a point
  virtual std::optional<Screen> screen() const = 0;  // that shows most of it

  // Whether a press on its background may move it. It has the desktop do so, as long as the button is down; false: the
  // desktop does not, and the window is to follow the pointer by setFrame.
  virtual bool isMovable() const { return true; }
  virtual bool moveWithPointer() { return false; }

  // nativeDisplay is called once, soon, however often this is asked.
  virtual void scheduleDisplay() = 0;
  // Opens the kept picture for painting; base space is the content, in points. The rectangles, in whole device pixels,
  // are all that the painter changes; they are on screen afterwards.
  virtual void paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) = 0;
  // The block is called once, when the screen is ready for the window's next picture and before that is painted. A window
  // that cannot be seen may keep it waiting; one that goes forgets it.
  virtual void callAtNextFrame(std::function<void()> block) = 0;

  // What a program wants to know that has the window's views among widgets of its own. Others leave these as they are.
  virtual void firstResponderDidChange() {}
  virtual void intrinsicContentSizeDidChange(platform::NSView&) {}
  // What an input method knows of the text that takes the keys no longer holds: another text, another selection or place.
  virtual void textInputDidChange() {}
  // The text has let go of what was being composed in it.
  virtual void discardMarkedText() {}
  // Takes the keyboard focus on from the first responder, in the order of the program's widgets. False: the window goes
  // along its key views.
  virtual bool moveFocus(FocusStep) { return false; }
};

enum class WindowKind { Titled, Borderless, Popup };

struct WindowOptions {
  WindowKind kind = WindowKind::Titled;
  CGRect content;
  bool isOpaque = true;
  bool hasShadow = true;
  bool canBecomeKey = true;
  bool isPanel = false;  // is beside the program's main windows, in no list of windows
  // What the user can do with a titled one.
  bool isClosable = true, isMiniaturizable = true, isResizable = true;
};

class Backend {
 public:
  Backend();
  virtual ~Backend();
  Backend(const Backend&) = delete;
  Backend& operator=(const Backend&) = delete;

  // The current one; null if there is none. Making a second one while the first exists stops the program.
  static Backend* current();

  virtual std::unique_ptr<NativeWindow> makeWindow(WindowClient& client, const WindowOptions& options) = 0;
  virtual std::vector<Screen> screens() const = 0;  // the primary one first
  virtual CGPoint mouseLocation() const = 0;        // screen space
  virtual Color systemColor(SystemColor color) const { return defaultSystemColor(color); }

  virtual ClickLimits clickLimits() const { return {}; }

  // In which direction the desktop's language sets controls side by side.
  virtual LayoutDirection layoutDirection() const { return LayoutDirection::LeftToRight; }

  // Opens a menu for a window, and returns at once; one that is open closes. `chosen` is called once, later, with the number of
  // the entry, or absent if none was chosen.
  virtual std::unique_ptr<NativeMenu> popUpMenu(NativeWindow& window, const MenuPlace& place, std::vector<MenuEntry> entries,
                                                std::function<void(std::optional<std::size_t>)> chosen) = 0;

  // The text that was copied last, here or elsewhere, in UTF-8; empty where there is none.
  virtual std::string clipboardText() const = 0;
  virtual void setClipboardText(const std::string& text) = 0;

  virtual const TextEngine& textEngine() const = 0;
  // The picture that the bytes hold; null if they hold none, are cut off, or claim too many pixels.
  virtual std::shared_ptr<const ImagePixels> decodeImage(std::span<const std::byte> bytes) const = 0;

  // The main queue, on this backend's clock.
  virtual double now() const = 0;  // seconds since some moment
  virtual void callAfter(double seconds, std::function<void()> block) = 0;
  [[nodiscard]] Timer timer(double seconds, std::function<void()> block);  // callAfter that can be cancelled
  // Calls `work` on another thread, then `answer` on the main queue; both are freed on the main thread. A backend that goes
  // waits for work that has begun, and forgets the rest and all answers.
  virtual void callElsewhere(std::function<void()> work, std::function<void()> answer) = 0;

  // Whether the desktop's user wants to see less motion.
  virtual bool prefersReducedMotion() const { return false; }
};

}  // namespace tessaluna::backend
