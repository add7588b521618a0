#include "tessaluna/platform/events/NSResponder.h"

#include "tessaluna/platform/events/NSEvent.h"

namespace tessaluna::platform {

const ClassInfo NSResponder::staticClassInfo{.name = "NSResponder", .base = &NSObject::staticClassInfo};

namespace {

using Handler = void (NSResponder::*)(const Ref<NSEvent>&);

void passOn(NSResponder* next, Handler handler, const Ref<NSEvent>& event) {
  if (!next) return;
  const Ref<NSResponder> held = refTo(*next);
  (held.get()->*handler)(event);
}

}  // namespace

void NSResponder::mouseDown(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::mouseDown, e); }
void NSResponder::mouseUp(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::mouseUp, e); }
void NSResponder::mouseDragged(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::mouseDragged, e); }
void NSResponder::rightMouseDown(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::rightMouseDown, e); }
void NSResponder::rightMouseUp(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::rightMouseUp, e); }
void NSResponder::rightMouseDragged(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::rightMouseDragged, e); }
void NSResponder::otherMouseDown(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::otherMouseDown, e); }
void NSResponder::otherMouseUp(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::otherMouseUp, e); }
void NSResponder::otherMouseDragged(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::otherMouseDragged, e); }
void NSResponder::mouseMoved(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::mouseMoved, e); }
void NSResponder::mouseEntered(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::mouseEntered, e); }
void NSResponder::mouseExited(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::mouseExited, e); }
void NSResponder::cursorUpdate(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::cursorUpdate, e); }
void NSResponder::scrollWheel(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::scrollWheel, e); }
void NSResponder::keyDown(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::keyDown, e); }
void NSResponder::keyUp(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::keyUp, e); }
void NSResponder::flagsChanged(const Ref<NSEvent>& e) { passOn(nextResponder(), &NSResponder::flagsChanged, e); }

Ref<NSResponder> NSResponder::responderForSelector(std::string_view selector) {
  for (NSResponder* responder = this; responder; responder = responder->nextResponder())
    if (responder->respondsToSelector(selector)) return refTo(*responder);
  return nullptr;
}

bool NSResponder::tryToPerform(std::string_view selector, NSObject* sender) {
  const Ref<NSResponder> responder = responderForSelector(selector);
  return responder && responder->performSelector(selector, sender);
}

}  // namespace tessaluna::platform
