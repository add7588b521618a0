// A rectangle of a view whose owner is notified when the pointer enters, leaves or moves in it.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

enum NSTrackingAreaOptions : std::uint32_t {
  NSTrackingMouseEnteredAndExited = 0x01,
  NSTrackingMouseMoved = 0x02,
  NSTrackingCursorUpdate = 0x04,  // not offered: stops the program. A view adds cursor rectangles
  NSTrackingActiveWhenFirstResponder = 0x10,
  NSTrackingActiveInKeyWindow = 0x20,
  NSTrackingActiveInActiveApp = 0x40,
  NSTrackingActiveAlways = 0x80,
  NSTrackingAssumeInside = 0x100,   // not offered: stops the program
  NSTrackingInVisibleRect = 0x200,  // the rectangle is ignored: it is the view's visible one
  NSTrackingEnabledDuringMouseDrag = 0x400,
};

class NSTrackingArea : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  using UserInfo = std::map<std::string, Ref<NSObject>, std::less<>>;

  // The rectangle is in the view's coordinates. The owner is not kept alive; events for a destroyed one are dropped.
  NSTrackingArea(CGRect rect, std::uint32_t options, const Ref<NSResponder>& owner, UserInfo userInfo = {});

  CGRect rect() const { return rect_; }
  std::uint32_t options() const { return options_; }
  Ref<NSResponder> owner() const { return owner_.lock(); }
  const UserInfo& userInfo() const { return userInfo_; }

 private:
  CGRect rect_;
  std::uint32_t options_;
  WeakRef<NSResponder> owner_;
  UserInfo userInfo_;
};

}  // namespace tessaluna::platform
