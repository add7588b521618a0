#include "platform/views/NSTextField.h"

#include "platform/graphics/NSColor.h"

namespace platform {

const ClassInfo NSTextField::staticClassInfo{.name = "NSTextField", .base = &NSControl::staticClassInfo};

Ref<NSCell> NSTextField::makeCell() {
  const auto cell = make<NSTextFieldCell>();
  cell->setBezeled(true);
  cell->setDrawsBackground(true);
  cell->setEditable(true);
  return cell;
}

Ref<NSTextField> NSTextField::labelWithString(std::string_view text) {
  const auto label = make<NSTextField>(CGRect{});
  label->setBezeled(false);
  label->setDrawsBackground(false);
  label->setEditable(false);
  label->setStringValue(text);
  label->setFrameSize(label->intrinsicContentSize());
  return label;
}

template <class Change>
void NSTextField::changeTextCell(Change change) {
  NSTextFieldCell* cell = textCell();
  if (!cell) return;
  change(*cell);
  invalidateIntrinsicContentSize();
  setNeedsDisplay(true);
}

void NSTextField::setTextColor(Ref<NSColor> color) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setTextColor(std::move(color)); });
}
Ref<NSColor> NSTextField::textColor() const { return textCell() ? textCell()->textColor() : nullptr; }
void NSTextField::setDrawsBackground(bool draws) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setDrawsBackground(draws); });
}
void NSTextField::setBackgroundColor(Ref<NSColor> color) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setBackgroundColor(std::move(color)); });
}
void NSTextField::setBezeled(bool isBezeled) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setBezeled(isBezeled); });
}
void NSTextField::setEditable(bool isEditable) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setEditable(isEditable); });
}
void NSTextField::setSelectable(bool isSelectable) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setSelectable(isSelectable); });
}
bool NSTextField::isEditable() const { return textCell() && textCell()->isEditable(); }
bool NSTextField::isSelectable() const { return textCell() && textCell()->isSelectable(); }
void NSTextField::setPlaceholderString(std::string text) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setPlaceholderString(std::move(text)); });
}

// A label is no control to the pointer: what lies behind it is.
void NSTextField::mouseDown(const Ref<NSEvent>& event) {
  if (!isSelectable()) NSView::mouseDown(event);
}
void NSTextField::mouseDragged(const Ref<NSEvent>& event) {
  if (!isSelectable()) NSView::mouseDragged(event);
}
void NSTextField::mouseUp(const Ref<NSEvent>& event) {
  if (!isSelectable()) NSView::mouseUp(event);
}

}  // namespace platform
