#include "tessaluna/platform/views/TableRowElements.h"

#include <algorithm>

#include "tessaluna/platform/accessibility/AccessibleItems.h"
#include "tessaluna/platform/accessibility/NSAccessibilityButton.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

CGRect onScreen(const NSTableView& table, CGRect rect) {
  return table.window() ? table.window()->convertRectToScreen(table.convertRectToView(rect, nullptr)) : CGRect{};
}

}  // namespace

class TableRowElements::Row : public NSObject, public NSAccessibility {
 public:
  Row(NSTableView& table, std::size_t row) : table_(&table), row_(row) {}

  NSTableView* table() const { return table_; }  // null once the row was removed
  std::size_t row() const { return row_; }
  void setRow(std::size_t row) { row_ = row; }
  void leaveTable() { table_ = nullptr; }
  std::vector<TableRowControl> controls() const {
    return table_ ? table_->controlsOfRow(row_) : std::vector<TableRowControl>();
  }
  void press(std::size_t control) {
    const Ref<NSTableViewDelegate> delegate = table_ ? table_->delegate() : nullptr;
    if (auto* source = dynamic_cast<NSTableViewRowControls*>(delegate.get()))
      source->tableViewPressControl(*table_, row_, control);
  }
  const std::vector<Ref<Control>>& controlElements() const { return controlElements_; }

  bool isAccessibilityElement() const override { return table_ != nullptr; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityRowRole); }
  std::string accessibilityTitle() const override {
    if (!table_) return {};
    const Ref<NSTableViewDelegate> delegate = table_->delegate();
    std::string name = delegate ? delegate->tableViewNameOfRow(*table_, row_) : std::string();
    return name.empty() ? table_->typeSelectStringOfRow(row_) : name;
  }
  bool isAccessibilityFocused() const override { return table_ && table_->focusedAccessibleItem().get() == this; }
  CGRect accessibilityFrame() const override { return table_ ? onScreen(*table_, table_->rectOfRow(row_)) : CGRect{}; }
  Ref<NSObject> accessibilityParent() const override {
    return table_ ? NSAccessibilityUnignoredAncestor(refTo<NSObject>(*table_)) : nullptr;
  }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (table_ && attribute == NSAccessibilitySelectedAttribute) return table_->isRowSelected(row_);
    if (table_ && attribute == NSAccessibilityIndexAttribute) return static_cast<double>(row_);
    return NSAccessibility::accessibilityAttributeValue(attribute);
  }
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override {
    return table_ && (attribute == NSAccessibilitySelectedAttribute ||
                      (attribute == NSAccessibilityFocusedAttribute && table_->acceptsFirstResponder()));
  }
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override {
    const bool* isOn = value.as<bool>();
    if (!isOn || !accessibilityIsAttributeSettable(forAttribute)) return;
    using Selecting = AccessibleItems::Selecting;
    if (forAttribute == NSAccessibilitySelectedAttribute)
      return table_->selectAccessibleItem(row_, *isOn ? Selecting::Besides : Selecting::Not);
    if (!*isOn || !table_->window()) return;
    table_->window()->makeFirstResponder(table_);
    table_->selectAccessibleItem(row_, Selecting::Alone);
    table_->scrollRowToVisible(row_);
  }
  std::vector<std::string> accessibilityActionNames() const override {
    std::vector<std::string> names;
    for (const TableRowControl& control : controls())
      if (control.isRowAction) names.push_back(control.name);
    return names;
  }
  void accessibilityPerformAction(std::string_view action) override {
    const std::vector<TableRowControl> all = controls();
    const auto found = std::find_if(all.begin(), all.end(), [&](const TableRowControl& control) {
      return control.isRowAction && control.name == action;
    });
    if (found != all.end()) press(static_cast<std::size_t>(found - all.begin()));
  }

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;

 private:
  NSTableView* table_;
  std::size_t row_;
  mutable std::vector<Ref<Control>> controlElements_;
};

class TableRowElements::Control : public NSObject, public NSAccessibility, public NSAccessibilityButton {
 public:
  Control(const Ref<Row>& row, std::size_t index) : row_(row), index_(index) {}

  bool isAccessibilityElement() const override { return found().has_value(); }
  std::string accessibilityRole() const override {
    const std::optional<TableRowControl> control = found();
    return std::string(control ? control->role : NSAccessibilityUnknownRole);
  }
  std::string accessibilityLabel() const override { return found().value_or(TableRowControl()).name; }
  AccessibilityValue accessibilityValue() const override {
    const std::optional<TableRowControl> control = found();
    return control && control->isOn ? AccessibilityValue(*control->isOn) : AccessibilityValue();
  }
  bool isAccessibilityFocused() const override {
    const Ref<Row> row = row_.lock();
    return row && row->isAccessibilityFocused() && row->table()->keyboardControl() == index_;
  }
  CGRect accessibilityFrame() const override {
    const std::optional<TableRowControl> control = found();
    return control ? onScreen(*row_.lock()->table(), control->frame) : CGRect{};
  }
  Ref<NSObject> accessibilityParent() const override { return found() ? row_.lock() : nullptr; }
  std::vector<std::string> accessibilityActionNames() const override {
    return found() ? NSAccessibility::accessibilityActionNames() : std::vector<std::string>();
  }
  bool accessibilityPerformPress() override {
    if (!found()) return false;
    row_.lock()->press(index_);
    return true;
  }

 private:
  std::optional<TableRowControl> found() const {
    const Ref<Row> row = row_.lock();
    std::vector<TableRowControl> all = row ? row->controls() : std::vector<TableRowControl>();
    return index_ < all.size() ? std::optional(std::move(all[index_])) : std::nullopt;
  }
  const WeakRef<Row> row_;
  const std::size_t index_;
};

std::optional<AccessibilityElements> TableRowElements::Row::accessibilityOwnChildren() const {
  const std::size_t count = controls().size();
  const auto self = std::static_pointer_cast<Row>(std::const_pointer_cast<NSObject>(shared_from_this()));
  while (controlElements_.size() < count) controlElements_.push_back(make<Control>(self, controlElements_.size()));
  if (count > 0)
    return AccessibilityElements(controlElements_.begin(), controlElements_.begin() + static_cast<std::ptrdiff_t>(count));
  const Ref<NSView> view = table_ ? table_->viewAtRow(row_) : nullptr;
  return view ? AccessibilityElements{view} : AccessibilityElements{};
}

Ref<NSObject> TableRowElements::elementOf(std::size_t row) {
  if (row >= table_.numberOfRows()) return nullptr;
  Ref<Row>& element = rows_[row];
  if (!element) element = make<Row>(table_, row);
  return element;
}

std::optional<std::size_t> TableRowElements::rowOf(const NSObject* element) const {
  const auto* row = dynamic_cast<const Row*>(element);
  return row && row->table() == &table_ ? std::optional(row->row()) : std::nullopt;
}

void TableRowElements::renumber(const std::function<std::optional<std::size_t>(std::size_t)>& newRow) {
  std::map<std::size_t, Ref<Row>> renumbered;
  for (const auto& [row, element] : rows_) {
    if (const std::optional<std::size_t> now = newRow(row)) {
      element->setRow(*now);
      renumbered[*now] = element;
    } else {
      element->leaveTable();
    }
  }
  rows_ = std::move(renumbered);
}

void TableRowElements::rowDidChange(std::size_t row) {
  const auto found = rows_.find(row);
  if (found == rows_.end()) return;
  const Ref<Row> element = found->second;
  NSAccessibilityPostNotification(element, NSAccessibilityTitleChangedNotification);
  for (const Ref<Control>& control : element->controlElements())
    NSAccessibilityPostNotification(control, NSAccessibilityTitleChangedNotification);
}

void TableRowElements::removeAll() {
  for (const auto& [row, element] : rows_) element->leaveTable();
  rows_.clear();
}

}  // namespace tessaluna::platform
