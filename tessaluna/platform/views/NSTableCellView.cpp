#include "tessaluna/platform/views/NSTableCellView.h"

#include <vector>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSTextField.h"

namespace tessaluna::platform {

namespace {

constexpr Outlet outlets[] = {outlet<&NSTableCellView::setTextField>("textField"),
                              outlet<&NSTableCellView::setImageView>("imageView"),
                              outlet<&NSTableCellView::setObjectValue>("objectValue")};
constexpr Property properties[] = {property<&NSTableCellView::setBackgroundStyle, "backgroundStyle">()};

}  // namespace

const ClassInfo NSTableCellView::staticClassInfo{
    .name = "NSTableCellView", .base = &NSView::staticClassInfo, .outlets = outlets, .properties = properties};

void NSTableCellView::setBackgroundStyle(NSBackgroundStyle style) {
  backgroundStyle_ = style;
  const std::vector<Ref<NSView>> copy = subviews();
  for (const Ref<NSView>& subview : copy) {
    if (const auto control = std::dynamic_pointer_cast<NSControl>(subview); control && control->cell()) {
      control->cell()->setBackgroundStyle(style);
      control->setNeedsDisplay(true);
    } else if (const auto inner = std::dynamic_pointer_cast<NSTableCellView>(subview)) {
      inner->setBackgroundStyle(style);
    }
  }
}

}  // namespace tessaluna::platform
