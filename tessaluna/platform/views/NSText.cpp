#include "tessaluna/platform/views/NSText.h"

#include <utility>

#include "tessaluna/platform/graphics/NSColor.h"

namespace tessaluna::platform {

const ClassInfo NSText::staticClassInfo{.name = "NSText", .base = &NSView::staticClassInfo};

void NSText::setSelectable(bool isSelectable) {
  isSelectable_ = isSelectable;
  if (!isSelectable) setEditable(false);
}

void NSText::setInsertionPointColor(Ref<NSColor> color) {
  insertionPointColor_ = std::move(color);
  setNeedsDisplay(true);
}

void NSText::setSelectedTextBackgroundColor(Ref<NSColor> color) {
  selectedTextBackgroundColor_ = std::move(color);
  setNeedsDisplay(true);
}

Ref<NSColor> NSText::insertionPointColor() const {
  return insertionPointColor_ ? insertionPointColor_ : NSColor::controlTextColor();
}

Ref<NSColor> NSText::selectedTextBackgroundColor(bool hasKeys) const {
  if (selectedTextBackgroundColor_) return selectedTextBackgroundColor_;
  return hasKeys ? NSColor::selectedTextBackgroundColor() : NSColor::unemphasizedSelectedTextBackgroundColor();
}

}  // namespace tessaluna::platform
