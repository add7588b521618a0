// A window: a content view, the view tree's way to the desktop, and the first stop of events. It keeps its picture, so that
// drawing happens only where something changed. Its place is in WindowPlace.
#pragma once

#include <string>

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/views/Forward.h"
#include "tessaluna/platform/windows/ChildWindows.h"
#include "tessaluna/platform/windows/DirtyRegion.h"
#include "tessaluna/platform/windows/FocusRing.h"
#include "tessaluna/platform/windows/MouseDispatch.h"
#include "tessaluna/platform/windows/NSWindowDelegate.h"
#include "tessaluna/platform/windows/WindowPlace.h"

namespace tessaluna::platform {

enum NSWindowStyleMask : std::uint32_t {
  NSWindowStyleMaskBorderless = 0,
  NSWindowStyleMaskTitled = 1,
  NSWindowStyleMaskClosable = 2,
  NSWindowStyleMaskMiniaturizable = 4,
  NSWindowStyleMaskResizable = 8,
  NSWindowStyleMaskTexturedBackground = 0x100,
};
enum NSBackingStoreType { NSBackingStoreBuffered = 2 };
enum NSWindowOrderingMode { NSWindowBelow = -1, NSWindowOut = 0, NSWindowAbove = 1 };

class NSWindow : public WindowPlace, public NSAccessibility, private backend::WindowClient {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // With `defer` true the native window is made when the window is first shown. Needs a backend by then, or the program stops.
  NSWindow(CGRect contentRect, std::uint32_t styleMask, NSBackingStoreType backing, bool defer);
  // Keys: "contentRect", "styleMask", "title". Deferred.
  explicit NSWindow(NSCoder& coder);
  ~NSWindow() override;
  void didInit() override;

  const Ref<NSView>& contentView() const { return contentView_; }
  void setContentView(Ref<NSView> view);  // takes the size of the window's content

  // At a negative size a window shows nothing, without a title bar also at a size without area.
  void setFrame(CGRect frame, bool display);
  // Animated, it returns immediately and the frame moves there in animationResizeTime; a later frame takes over from wherever
  // the frame is by then. A window that does not show moves immediately.
  void setFrame(CGRect frame, bool display, bool animate);
  virtual double animationResizeTime(CGRect newFrame) const;  // seconds
  NSWindowAnimator animator();                                // the window whose setters take their time
  void setFrameTopLeftPoint(CGPoint point);                   // keeps the size

  bool isVisible() const { return isVisible_; }
  void orderFront(NSObject* sender);
  void orderOut(NSObject* sender);
  void makeKeyAndOrderFront(NSObject* sender);
  virtual void close();
  // What the user's close button does, if there is one: the delegate may refuse.
  virtual void performClose(NSObject* sender);

  // Children are above their window, which keeps them alive; they move with its upper left corner and are shown and
  // hidden with it. A child of a visible window is shown immediately. Only NSWindowAbove is offered; others stop the program.
  void addChildWindow(const Ref<NSWindow>& child, NSWindowOrderingMode ordered);
  void removeChildWindow(NSWindow& child) { children_.remove(child); }  // stays where it is, and visible
  NSWindow* parentWindow() const { return children_.parent(); }
  std::vector<Ref<NSWindow>> childWindows() const { return children_.windows(); }

  // Neither is kept alive. The controller comes after the window in the responder chain.
  Ref<NSWindowController> windowController() const;
  void setWindowController(const Ref<NSWindowController>& controller);
  NSResponder* nextResponder() const override;
  Ref<NSWindowDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(const Ref<NSWindowDelegate>& delegate) { delegate_ = delegate; }

  // Only a window that can has key status; a borderless one cannot unless it is overridden.
  virtual bool canBecomeKeyWindow() const { return styleMask_ & NSWindowStyleMaskTitled; }
  bool isKeyWindow() const { return isKey_; }

  NSResponder* firstResponder() const { return firstResponder_; }
  // Null: the window itself. False if the earlier one or the new one refuses, and for a view that is not in the window.
  bool makeFirstResponder(NSResponder* responder);
  // Move to the next or previous view that the Tab key may stop at, in the order of the tree. False at the end.
  bool selectNextKeyView();
  bool selectPreviousKeyView();
  // The same among one view and those below it. As a rule a key is what asks for it.
  bool selectKeyViewWithin(NSView& view, backend::FocusStep step, FocusRing::Cause cause = FocusRing::Cause::Key);

  // What the Tab key does: it moves to the next or previous view that it may stop at, wraps at the ends, and where a program has
  // the window's views among its own widgets, leaves to those.
  void moveKeyView(backend::FocusStep step);

  // The text view in which the window's text fields are edited, one after the other. Null before it was first asked for
  // with `createFlag` true; the object makes no difference.
  virtual Ref<NSText> fieldEditor(bool createFlag, NSObject* object);
  // Ends the editing of the object's text, or without an object of any text, without asking. The typed text is kept.
  void endEditingFor(NSObject* object);

  // Of the keys that no view takes, Tab and Shift-Tab go along the key views and wrap at the ends.
  void keyDown(const Ref<NSEvent>& event) override;
  void scrollWheel(const Ref<NSEvent>& event) override;

  const std::string& title() const { return title_; }
  void setTitle(std::string title);
  std::uint32_t styleMask() const { return styleMask_; }
  void setOpaque(bool isOpaque);
  bool isOpaque() const { return isOpaque_; }
  void setHasShadow(bool has);
  bool hasShadow() const { return hasShadow_; }
  // Whether a drag moves the window that begins on a view whose mouseDownCanMoveWindow says so. Initially as the style bit
  // of the textured background. Views among the widgets of a Qt program move nothing in any case.
  bool isMovableByWindowBackground() const { return isMovableByWindowBackground_; }
  void setMovableByWindowBackground(bool isMovable) { isMovableByWindowBackground_ = isMovable; }
  void setBackgroundColor(Ref<NSColor> color);
  const Ref<NSColor>& backgroundColor() const { return backgroundColor_; }

  // An event whose window is this one. Called by NSApp.
  virtual void sendEvent(const Ref<NSEvent>& event);

  // The user has scrolled what is in the view, by the wheel or a scroller: views that come under the pointer are entered with
  // the next frame. Scroll views call this; a scroll by a key or by the program enters nothing until the pointer moves.
  void contentWasScrolledByUser(NSView& content) { mouse_.contentWasScrolled(content); }

  // Discards the cursor rectangles of all views and asks for them again; the second operation only those that are no longer valid,
  // as happens before each choice of a cursor.
  void resetCursorRects();
  void updateCursorRects();
  void invalidateCursorRectsForView(NSView& view);

  // Asks for a redraw of a part of base space, and draws what was asked for, after a pass of layout.
  void invalidateRect(CGRect rect);
  void displayIfNeeded();
  // A pass of layout over all views. What decides for all of them together belongs here, before the first of them places its subviews.
  void layoutIfNeeded();

  // Its parent is the application, its child the content view.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityWindowRole); }
  std::string accessibilityTitle() const override { return title_; }
  CGRect accessibilityFrame() const override { return frame_; }
  Ref<NSObject> accessibilityParent() const override;

  // A backend that already has the native side of a window, such as a widget of a host, gives it here.
  void adoptNativeWindow(std::unique_ptr<backend::NativeWindow> native);
  backend::WindowClient& windowClient() { return *this; }

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;
  virtual bool isPanel() const { return false; }

 private:
  friend class ChildWindows;
  friend class ViewGeometry;
  friend class NSView;
  friend class ViewLayout;
  friend class NSWindowAnimator;
  void animateFrame(CGRect frame, const NSAnimationContext& context);
  void moveTo(CGRect frame);
  void viewWillLeave(NSView& view);
  void intrinsicContentSizeDidChange(NSView& view);
  void layoutIsNeeded();
  void scheduleDisplay();
  void focusRingMaskDidChange(NSView& view);

  void nativeDisplay() override { displayIfNeeded(); }
  void nativeFrameChanged(CGRect content) override;
  void nativeScaleChanged() override;
  void nativeKeyStatusChanged(bool isKey) override;
  void nativeCloseRequested() override;
  WindowInput& input() override { return *input_; }
  Ref<NSWindow> eventWindow() override { return std::static_pointer_cast<NSWindow>(weak_from_this().lock()); }

  void makeNative();
  bool showsNothing(CGRect frame) const;
  void notify(std::string_view name, void (NSWindowDelegate::*operation)(const Ref<NSNotification>&));
  void drawContents(CGRect rect, backend::Canvas& canvas);
  void dispatchKey(const Ref<NSEvent>& event);
  void setFirstResponder(NSResponder& responder);
  void updateCursorRectsBelow(NSView& view);

  Ref<NSView> contentView_;
  std::uint32_t styleMask_;
  std::string title_;
  Ref<NSColor> backgroundColor_;
  NSResponder* firstResponder_ = nullptr;
  std::size_t firstResponderChanges_ = 0;
  Ref<NSText> fieldEditor_;
  const std::unique_ptr<WindowInput> input_;
  MouseDispatch mouse_{*this};
  FocusRing focusRing_{*this};
  DirtyRegion dirty_;
  ChildWindows children_{*this};
  WeakRef<NSWindowController> controller_;
  WeakRef<NSWindowDelegate> delegate_;
  bool isDeferred_ = true;
  bool isPreparingDisplay_ = false;  // what is asked for now is painted with it
  bool isVisible_ = false, isKey_ = false, isOpaque_ = true, hasShadow_ = true;
  bool isMovableByWindowBackground_;
};

}  // namespace tessaluna::platform
