#include "tessaluna/platform/views/NSTableColumn.h"

#include <algorithm>

#include "tessaluna/platform/cells/NSTextFieldCell.h"
#include "tessaluna/platform/views/NSTableView.h"

namespace tessaluna::platform {

const ClassInfo NSTableColumn::staticClassInfo{.name = "NSTableColumn", .base = &NSObject::staticClassInfo};

NSTableColumn::NSTableColumn(std::string identifier) : identifier_(std::move(identifier)) {
  const auto cell = make<NSTextFieldCell>();
  cell->setLineBreakMode(NSLineBreakByTruncatingTail);
  dataCell_ = cell;
}

void NSTableColumn::columnDidChange() {
  if (table_) table_->columnsDidChange();
}

void NSTableColumn::setTitle(std::string title) {
  title_ = std::move(title);
  columnDidChange();
}

void NSTableColumn::setWidth(CGFloat width) {
  const CGFloat allowed = std::max(minWidth_, std::min(width, maxWidth_));
  if (allowed == width_) return;
  width_ = allowed;
  columnDidChange();
}

void NSTableColumn::setMinWidth(CGFloat width) {
  minWidth_ = width;
  setWidth(width_);
}

void NSTableColumn::setMaxWidth(CGFloat width) {
  maxWidth_ = width;
  setWidth(width_);
}

void NSTableColumn::setEditable(bool isEditable) {
  isEditable_ = isEditable;
  if (table_) table_->reloadData();
}

void NSTableColumn::setDataCell(Ref<NSCell> cell) {
  dataCell_ = std::move(cell);
  if (table_) table_->reloadData();
}

}  // namespace tessaluna::platform
