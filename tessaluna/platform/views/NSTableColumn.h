// A column of a table whose rows show cells: every row that shows has a copy of the column's dataCell, with the value that the
// data source gives for it.
#pragma once

#include <limits>
#include <string>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSSortDescriptor.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class NSTableColumn : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // A hundred points wide, with a text field's cell.
  explicit NSTableColumn(std::string identifier);
  // Keys: "identifier", "title", "width", "minWidth", "maxWidth", "resizable", "editable"; the objects "dataCell" and
  // "sortDescriptorPrototype".
  explicit NSTableColumn(NSCoder& coder);

  const std::string& identifier() const { return identifier_; }
  NSTableView* tableView() const { return table_; }    // null while in none
  const std::string& title() const { return title_; }  // in the header
  void setTitle(std::string title);
  // An addition: at which end of the header the title is. Values are aligned by their cells.
  enum class TitleEnd { Leading, Trailing };
  TitleEnd titleEnd() const { return titleEnd_; }
  void setTitleEnd(TitleEnd end);

  // In points, cut to the limits.
  CGFloat width() const { return width_; }
  void setWidth(CGFloat width);
  CGFloat minWidth() const { return minWidth_; }
  void setMinWidth(CGFloat width);
  CGFloat maxWidth() const { return maxWidth_; }
  void setMaxWidth(CGFloat width);
  // A column that is hidden takes no room, whatever its width.
  bool isHidden() const { return isHidden_; }
  void setHidden(bool isHidden);
  bool isResizable() const { return isResizable_; }  // by the user
  void setResizable(bool isResizable) { isResizable_ = isResizable; }

  // Whether the user changes values: a text after a double click, a button or a level with a press.
  bool isEditable() const { return isEditable_; }
  void setEditable(bool isEditable);
  const Ref<NSCell>& dataCell() const { return dataCell_; }
  void setDataCell(Ref<NSCell> cell);
  // What a click on the header sorts by; null for a column that does not sort.
  const Ref<NSSortDescriptor>& sortDescriptorPrototype() const { return sortDescriptorPrototype_; }
  void setSortDescriptorPrototype(Ref<NSSortDescriptor> descriptor) { sortDescriptorPrototype_ = std::move(descriptor); }

 private:
  friend class NSTableView;
  void columnDidChange();

  std::string identifier_, title_;
  TitleEnd titleEnd_ = TitleEnd::Leading;
  NSTableView* table_ = nullptr;
  Ref<NSCell> dataCell_;
  Ref<NSSortDescriptor> sortDescriptorPrototype_;
  CGFloat width_ = 100, minWidth_ = 10, maxWidth_ = std::numeric_limits<CGFloat>::max();
  bool isResizable_ = true, isEditable_ = true, isHidden_ = false;
};

// What a table's data source adopts for the values of cells.
class NSTableViewCellSource {
 public:
  virtual ~NSTableViewCellSource() = default;
  virtual Ref<NSObject> tableViewObjectValue(NSTableView& table, NSTableColumn& column, std::size_t row) = 0;
  // The user has changed a value.
  virtual void tableViewSetObjectValue(NSTableView&, const Ref<NSObject>& /*value*/, NSTableColumn&, std::size_t /*row*/) {}
  // By a click on a header. The source sorts its rows and has the table reload.
  virtual void tableViewSortDescriptorsDidChange(NSTableView&) {}
};

// What a table's delegate adopts to change a cell before it shows: its color, its image.
class NSTableViewCellDelegate {
 public:
  virtual ~NSTableViewCellDelegate() = default;
  virtual void tableViewWillDisplayCell(NSTableView& table, NSCell& cell, NSTableColumn& column, std::size_t row) = 0;
};

}  // namespace tessaluna::platform
