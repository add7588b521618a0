#include "platform/cells/NSCell.h"

#include <algorithm>

namespace platform {

const ClassInfo NSCell::staticClassInfo{.name = "NSCell", .base = &NSObject::staticClassInfo};

NSCell::NSCell(NSCoder& coder) : NSObject(coder) {
  isEnabled_ = !coder.containsValueForKey("enabled") || coder.decodeBoolForKey("enabled");
  isHighlighted_ = coder.decodeBoolForKey("highlighted");
  state_ = static_cast<NSControlStateValue>(std::clamp<std::int64_t>(coder.decodeIntegerForKey("state"), -1, 1));
  tag_ = coder.decodeIntegerForKey("tag");
}

bool NSCell::startTrackingAt(CGPoint, NSView&) { return true; }
bool NSCell::continueTracking(CGPoint, CGPoint, NSView&) { return true; }
void NSCell::stopTracking(CGPoint, CGPoint, NSView&, bool) {}

}  // namespace platform
