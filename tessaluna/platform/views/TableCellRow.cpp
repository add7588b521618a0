#include "tessaluna/platform/views/TableCellRow.h"

#include <algorithm>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyBindings.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/views/NSLevelIndicator.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const Selector TableCellRow::selectors_[] = {action<&TableCellRow::valueWasChanged>("cellValueWasChanged:")};

const ClassInfo TableCellRow::staticClassInfo{
    .name = "TableCellRow", .base = &NSView::staticClassInfo, .selectors = TableCellRow::selectors_};

// A label to the mouse and the Tab key until the table has it edited. Then the keys come back to the table, whatever ends it.
class TableCellRow::TextField : public NSTextField {
 public:
  using NSTextField::NSTextField;

  void beginEditing() {
    isEdited_ = true;
    selectText(nullptr);
  }
  bool acceptsFirstResponder() const override { return isEdited_ && NSTextField::acceptsFirstResponder(); }
  bool canBecomeKeyView() const override { return false; }
  void mouseDown(const Ref<NSEvent>& event) override {
    if (isEdited_) NSTextField::mouseDown(event);
    else NSView::mouseDown(event);
  }
  void textDidEndEditing(const Ref<NSNotification>& notification) override {
    const Ref<NSObject> held = shared_from_this();
    const std::string before = cell() ? cell()->stringValue() : std::string();
    isEdited_ = false;
    NSTextField::textDidEndEditing(notification);
    giveKeysBack();
    if (stringValue() == before) return;
    if (auto* row = dynamic_cast<TableCellRow*>(superview())) row->valueWasChanged(this);
  }
  // It has none. The Return that ends an editing is the table's and not also a dialog's.
  bool sendActionTo(std::string_view, const Ref<NSObject>&) override { return true; }
  // A client that writes into it edits it.
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override {
    const auto* row = dynamic_cast<const TableCellRow*>(superview());
    const bool begins = forAttribute == NSAccessibilityFocusedAttribute && value == AccessibilityValue(true) &&
                        !currentEditor() && row && row->isEditable(*this);
    if (begins) beginEditing();
    else NSTextField::accessibilitySetValue(value, forAttribute);
  }
  bool textViewDoCommandBySelector(NSTextView& editor, std::string_view selector) override {
    if (selector != "cancelOperation:") return NSTextField::textViewDoCommandBySelector(editor, selector);
    const Ref<NSObject> held = shared_from_this();
    isEdited_ = false;
    abortEditing();
    giveKeysBack();
    return true;
  }

 private:
  void giveKeysBack() {
    const auto* row = dynamic_cast<TableCellRow*>(superview());
    if (row && row->table() && window() && window()->firstResponder() == window())
      window()->makeFirstResponder(row->table());
  }
  bool isEdited_ = false;
};

// A table may have many rows: the Tab key stops at the table, and Right leads on from there.
template <class Control>
class TableCellRow::InRow : public Control {
 public:
  using Control::Control;

  // What the mouse may not change, the keyboard may not either.
  bool acceptsFirstResponder() const override {
    return Control::acceptsFirstResponder() && row() && row()->isEditable(*this);
  }
  bool canBecomeKeyView() const override { return Control::canBecomeKeyView() && row() && row()->hasKeyboard(); }
  void keyDown(const Ref<NSEvent>& event) override {
    const bool isEscape = commandForKey(*event) == "cancelOperation:";
    if (isEscape && row() && row()->table() && this->window()) this->window()->makeFirstResponder(row()->table());
    else Control::keyDown(event);
  }

 private:
  const TableCellRow* row() const { return dynamic_cast<const TableCellRow*>(this->superview()); }
};

// Its value is the index of the selected segment, -1 for none.
class TableCellRow::Segments : public InRow<NSSegmentedControl> {
 public:
  using InRow::InRow;

  Ref<NSObject> objectValue() const override {
    const auto segment = selectedSegment();
    return make<NSNumber>(segment ? static_cast<std::int64_t>(*segment) : -1);
  }
  // One that is only pressed for a moment shows no value.
  void setObjectValue(Ref<NSObject> value) override {
    const auto* segments = dynamic_cast<const NSSegmentedCell*>(cell().get());
    if (!segments || segments->trackingMode() == NSSegmentSwitchTrackingMomentary) return;
    const double index = value ? doubleOf(value.get()) : -1;
    const bool isThere = index >= 0 && index < static_cast<double>(segmentCount());
    const auto segment = isThere ? std::optional(static_cast<std::size_t>(index)) : std::nullopt;
    setSelectedSegment(segment);
    // Where any may be selected, the others still are.
    for (std::size_t i = 0; i < segmentCount(); ++i)
      if (i != segment && isSelectedForSegment(i)) setSelectedForSegment(false, i);
  }
};

TableCellRow::TableCellRow(const std::vector<Ref<NSTableColumn>>& columns) : NSView(NSZeroRect) {
  for (const Ref<NSTableColumn>& column : columns)
    places_.push_back(
        {.column = column, .dataCell = column->dataCell(), .isEditable = column->isEditable(), .control = nullptr});
}

void TableCellRow::didInit() {
  NSView::didInit();
  for (Place& place : places_) {
    const Ref<NSCell> cell = place.dataCell ? place.dataCell->copy() : make<NSCell>();
    if (auto* text = dynamic_cast<NSTextFieldCell*>(cell.get())) {
      text->setEditable(text->isEditable() || place.isEditable);
      text->setStandsAsIfEditable(true);
      place.control = make<TextField>(NSZeroRect);
    } else if (auto* level = dynamic_cast<NSLevelIndicatorCell*>(cell.get())) {
      level->setEditable(place.isEditable);
      place.control = make<InRow<NSLevelIndicator>>(NSZeroRect);
    } else if (dynamic_cast<NSPopUpButtonCell*>(cell.get())) {
      place.control = make<InRow<NSPopUpButton>>(NSZeroRect);
    } else if (dynamic_cast<NSButtonCell*>(cell.get())) {
      place.control = make<InRow<NSButton>>(NSZeroRect);
    } else if (dynamic_cast<NSSegmentedCell*>(cell.get())) {
      place.control = make<Segments>(NSZeroRect);
    } else {
      place.control = make<InRow<NSControl>>(NSZeroRect);
    }
    place.control->setCell(cell);
    place.control->setTarget(refTo(*this));
    if (!dynamic_cast<TextField*>(place.control.get())) place.control->setAction("cellValueWasChanged:");
    addSubview(place.control);
  }
}

NSTableView* TableCellRow::table() const { return dynamic_cast<NSTableView*>(superview()); }

bool TableCellRow::hasKeyboard() const {
  const auto* first = window() ? dynamic_cast<const NSView*>(window()->firstResponder()) : nullptr;
  return first && first->isDescendantOf(this);
}

bool TableCellRow::isEditable(const NSControl& control) const {
  return std::any_of(places_.begin(), places_.end(),
                     [&](const Place& place) { return place.control.get() == &control && place.isEditable; });
}

bool TableCellRow::giveKeyboardToControls() {
  for (const Place& place : places_)
    if (window() && place.control->acceptsFirstResponder() && !place.control->isHidden())
      return window()->makeFirstResponder(place.control.get());
  return false;
}

bool TableCellRow::fits(const std::vector<Ref<NSTableColumn>>& columns) const {
  return std::equal(places_.begin(), places_.end(), columns.begin(), columns.end(),
                    [](const Place& place, const Ref<NSTableColumn>& column) {
                      return place.column == column && place.dataCell == column->dataCell() &&
                             place.isEditable == column->isEditable();
                    });
}

void TableCellRow::fill(NSTableView& table, std::size_t row) {
  const Ref<NSTableViewCellSource> source = std::dynamic_pointer_cast<NSTableViewCellSource>(table.dataSource());
  const auto delegate = std::dynamic_pointer_cast<NSTableViewCellDelegate>(table.delegate());
  for (const Place& place : places_) {
    nameAfterColumn(place);
    if (source) place.control->setObjectValue(source->tableViewObjectValue(table, *place.column, row));
    if (delegate) delegate->tableViewWillDisplayCell(table, *place.control->cell(), *place.column, row);
  }
  setNeedsLayout(true);
}

// What a client meets beside a value. A text that only shows says all by itself.
void TableCellRow::nameAfterColumn(const Place& place) const {
  const Ref<NSCell> cell = place.control->cell();
  if (cell->accessibilityRole() != NSAccessibilityStaticTextRole)
    cell->accessibilitySetOverrideValue(place.column->title(), NSAccessibilityDescriptionAttribute);
}

void TableCellRow::edit(std::size_t column) {
  const Place& place = places_.at(column);
  if (auto* field = dynamic_cast<TextField*>(place.control.get()); field && place.isEditable) field->beginEditing();
}

void TableCellRow::layout() {
  NSView::layout();
  CGFloat x = 0;
  for (const Place& place : places_) {
    const CGFloat width = place.column->isHidden() ? 0 : place.column->width();
    place.control->setFrame({x, 0, width, bounds().size.height});
    place.control->setHidden(place.column->isHidden());
    x += width;
  }
}

NSView* TableCellRow::hitTest(CGPoint point) {
  NSView* hit = NSView::hitTest(point);
  for (const Place& place : places_) {
    if (!hit || !hit->isDescendantOf(place.control.get())) continue;
    const auto* field = dynamic_cast<NSTextField*>(place.control.get());
    const bool takesTheMouse = field ? field->currentEditor() != nullptr : place.isEditable;
    return takesTheMouse ? hit : this;
  }
  return hit;
}

void TableCellRow::valueWasChanged(NSObject* sender) {
  NSTableView* table = this->table();
  if (!table) return;
  const Ref<NSObject> held = refTo<NSObject>(*table);
  const auto row = table->rowForView(*this);
  const auto source = std::dynamic_pointer_cast<NSTableViewCellSource>(table->dataSource());
  for (const Place& place : places_) {
    if (place.control.get() != sender || !row || !source) continue;
    // An assistive client pressed it.
    if (!place.isEditable) return fill(*table, *row);
    const Ref<NSTableColumn> column = place.column;
    return source->tableViewSetObjectValue(*table, place.control->objectValue(), *column, *row);
  }
}

}  // namespace tessaluna::platform
