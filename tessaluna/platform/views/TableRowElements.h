// The rows of a table as assistive clients find them: an element for each row, whether it shows or not, with the controls of the
// row in it, or else what is in its view. They are made when a client asks, and their numbers follow the rows.
#pragma once

#include <functional>
#include <map>
#include <optional>

#include "tessaluna/platform/accessibility/AccessibilityValue.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class TableRowElements {
 public:
  explicit TableRowElements(NSTableView& table) : table_(table) {}
  ~TableRowElements() { removeAll(); }
  TableRowElements(const TableRowElements&) = delete;
  TableRowElements& operator=(const TableRowElements&) = delete;

  Ref<NSObject> elementOf(std::size_t row);
  std::optional<std::size_t> rowOf(const NSObject* element) const;  // absent for one of no row

  // Where each row is now; absent for one that was removed.
  void renumber(const std::function<std::optional<std::size_t>(std::size_t)>& newRow);
  void rowDidChange(std::size_t row);  // its name, its controls
  void removeAll();

 private:
  class Row;
  class Control;
  NSTableView& table_;
  std::map<std::size_t, Ref<Row>> rows_;
};

}  // namespace tessaluna::platform
