#include "tessaluna/platform/views/NSTableColumn.h"

#include <algorithm>

#include "tessaluna/platform/cells/NSTextFieldCell.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/views/NSTableView.h"

namespace tessaluna::platform {

namespace {

constexpr Property tableColumnProperties[] = {
    property<&NSTableColumn::setTitle, "title">(),         property<&NSTableColumn::setWidth, "width">(),
    property<&NSTableColumn::setMinWidth, "minWidth">(),   property<&NSTableColumn::setMaxWidth, "maxWidth">(),
    property<&NSTableColumn::setResizable, "resizable">(), property<&NSTableColumn::setEditable, "editable">()};
constexpr InnerObjects tableColumnInnerObjects[] = {
    innerObject<&NSTableColumn::setDataCell>("dataCell"),
    innerObject<&NSTableColumn::setSortDescriptorPrototype>("sortDescriptorPrototype")};

}  // namespace

const ClassInfo NSTableColumn::staticClassInfo{.name = "NSTableColumn",
                                               .base = &NSObject::staticClassInfo,
                                               .properties = tableColumnProperties,
                                               .innerObjects = tableColumnInnerObjects};

NSTableColumn::NSTableColumn(std::string identifier) : identifier_(std::move(identifier)) {
  const auto cell = make<NSTextFieldCell>();
  cell->setLineBreakMode(NSLineBreakByTruncatingTail);
  dataCell_ = cell;
}

NSTableColumn::NSTableColumn(NSCoder& coder) : NSTableColumn(coder.decodeStringForKey("identifier").value_or("")) {
  title_ = coder.decodeStringForKey("title").value_or("");
  minWidth_ = coder.numberForKey("minWidth").value_or(minWidth_);
  maxWidth_ = coder.numberForKey("maxWidth").value_or(maxWidth_);
  setWidth(coder.numberForKey("width").value_or(width_));
  isResizable_ = coder.boolForKey("resizable").value_or(isResizable_);
  isEditable_ = coder.boolForKey("editable").value_or(isEditable_);
}

void NSTableColumn::columnDidChange() {
  if (table_) table_->columnsDidChange();
}

void NSTableColumn::setTitle(std::string title) {
  title_ = std::move(title);
  columnDidChange();
}

void NSTableColumn::setTitleEnd(TitleEnd end) {
  titleEnd_ = end;
  columnDidChange();
}

void NSTableColumn::setWidth(CGFloat width) {
  const CGFloat allowed = std::max(minWidth_, std::min(width, maxWidth_));
  if (allowed == width_) return;
  width_ = allowed;
  columnDidChange();
}

void NSTableColumn::setHidden(bool isHidden) {
  if (isHidden_ == isHidden) return;
  isHidden_ = isHidden;
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
