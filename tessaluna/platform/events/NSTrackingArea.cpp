#include "tessaluna/platform/events/NSTrackingArea.h"

#include "tessaluna/platform/events/NSResponder.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::platform {

const ClassInfo NSTrackingArea::staticClassInfo{.name = "NSTrackingArea", .base = &NSObject::staticClassInfo};

NSTrackingArea::NSTrackingArea(CGRect rect, std::uint32_t options, const Ref<NSResponder>& owner, UserInfo userInfo)
    : rect_(rect), options_(options), owner_(owner), userInfo_(std::move(userInfo)) {
  if (options & (NSTrackingCursorUpdate | NSTrackingAssumeInside))
    stopProgram("NSTrackingArea: cursor updates and an assumed pointer are not supported");
}

}  // namespace tessaluna::platform
