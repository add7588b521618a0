// What takes events and actions. Whatever a responder does not handle goes to the next one in its chain: view, superviews,
// window, window controller.
#pragma once

#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class NSResponder : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSResponder() = default;
  explicit NSResponder(NSCoder& coder) : NSObject(coder) {}

  // Not kept alive: whoever sets it clears it. Null at the end of the chain.
  virtual NSResponder* nextResponder() const { return nextResponder_; }
  void setNextResponder(NSResponder* responder) { nextResponder_ = responder; }

  // Each passes the event on to the next responder; at the end of the chain it is dropped.
  virtual void mouseDown(const Ref<NSEvent>& event);
  virtual void mouseUp(const Ref<NSEvent>& event);
  virtual void mouseDragged(const Ref<NSEvent>& event);
  virtual void rightMouseDown(const Ref<NSEvent>& event);
  virtual void rightMouseUp(const Ref<NSEvent>& event);
  virtual void rightMouseDragged(const Ref<NSEvent>& event);
  virtual void otherMouseDown(const Ref<NSEvent>& event);
  virtual void otherMouseUp(const Ref<NSEvent>& event);
  virtual void otherMouseDragged(const Ref<NSEvent>& event);
  virtual void mouseMoved(const Ref<NSEvent>& event);
  virtual void mouseEntered(const Ref<NSEvent>& event);
  virtual void mouseExited(const Ref<NSEvent>& event);
  virtual void cursorUpdate(const Ref<NSEvent>& event);
  virtual void scrollWheel(const Ref<NSEvent>& event);
  virtual void keyDown(const Ref<NSEvent>& event);
  virtual void keyUp(const Ref<NSEvent>& event);
  virtual void flagsChanged(const Ref<NSEvent>& event);

  // True if the event was a shortcut of this responder and is done with.
  virtual bool performKeyEquivalent(const Ref<NSEvent>&) { return false; }

  virtual bool acceptsFirstResponder() const { return false; }
  // Asked before the status comes or goes; false refuses.
  virtual bool becomeFirstResponder() { return true; }
  virtual bool resignFirstResponder() { return true; }

  // The first responder of the chain, this one included, that has the selector; null for none.
  Ref<NSResponder> responderForSelector(std::string_view selector);
  // Performs the selector on that one. False without one.
  bool tryToPerform(std::string_view selector, NSObject* sender);

 private:
  NSResponder* nextResponder_ = nullptr;
};

}  // namespace tessaluna::platform
