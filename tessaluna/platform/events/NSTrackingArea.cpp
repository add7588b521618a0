#include "tessaluna/platform/events/NSTrackingArea.h"

#include "tessaluna/platform/events/NSResponder.h"

namespace tessaluna::platform {

const ClassInfo NSTrackingArea::staticClassInfo{.name = "NSTrackingArea", .base = &NSObject::staticClassInfo};

NSTrackingArea::NSTrackingArea(CGRect rect, std::uint32_t options, const Ref<NSResponder>& owner, UserInfo userInfo)
    : rect_(rect), options_(options), owner_(owner), userInfo_(std::move(userInfo)) {}

}  // namespace tessaluna::platform
