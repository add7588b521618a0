// A table of titles under a virtual user, whose rows have controls, and a record of the calls to its delegate.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"

namespace harness {

class TitlesHost : public tessaluna::platform::NSTableViewDataSource,
                   public tessaluna::platform::NSTableViewDelegate,
                   public tessaluna::platform::NSTableViewRowControls {
 public:
  std::vector<std::string> titles;
  std::vector<std::string> calls;  // "enter 3", "press 3 1", "menu 3", "keyboard 3"
  std::size_t controls = 0;        // per row
  bool takesReturn = true;
  int selectionChanges = 0;

  std::size_t numberOfRowsInTableView(tessaluna::platform::NSTableView&) override { return titles.size(); }
  tessaluna::platform::Ref<tessaluna::platform::NSView> tableViewViewForRow(tessaluna::platform::NSTableView&,
                                                                            std::size_t row) override {
    return tessaluna::platform::NSTextField::labelWithString(titles[row]);
  }
  void tableViewSelectionDidChange(tessaluna::platform::NSTableView&) override { ++selectionChanges; }
  bool tableViewRowWasEntered(tessaluna::platform::NSTableView&, std::size_t row) override {
    calls.push_back("enter " + std::to_string(row));
    return takesReturn;
  }
  bool tableViewShowMenuForRow(tessaluna::platform::NSTableView&, std::size_t row, tessaluna::platform::CGPoint) override {
    calls.push_back("menu " + std::to_string(row));
    return true;
  }
  void tableViewKeyboardRowDidChange(tessaluna::platform::NSTableView&, std::optional<std::size_t> row) override {
    calls.push_back(row ? "keyboard " + std::to_string(*row) : "keyboard elsewhere");
  }
  std::string tableViewTypeSelectStringForRow(tessaluna::platform::NSTableView&, std::size_t row) override {
    return titles[row];
  }
  std::string tableViewNameOfRow(tessaluna::platform::NSTableView&, std::size_t row) override { return titles[row]; }
  std::vector<tessaluna::platform::TableRowControl> tableViewControlsOfRow(tessaluna::platform::NSTableView& table,
                                                                           std::size_t row) override {
    std::vector<tessaluna::platform::TableRowControl> result;
    const tessaluna::platform::CGRect place = table.rectOfRow(row);
    for (std::size_t i = 0; i < controls; ++i)
      result.push_back({.name = "Control " + std::to_string(i),
                        .frame = {20.0 * static_cast<double>(i), place.origin.y, 20, place.size.height},
                        .isRowAction = i == 0});
    return result;
  }
  void tableViewPressControl(tessaluna::platform::NSTableView&, std::size_t row, std::size_t control) override {
    calls.push_back("press " + std::to_string(row) + " " + std::to_string(control));
  }
};

// A table that fills a window of 200 by 150 points and has the keyboard; rows of 30 points, so that five show.
class TableWorld : public StillWorld {
 protected:
  explicit TableWorld(std::size_t rows) {
    for (std::size_t row = 0; row < rows; ++row) host->titles.push_back("Row " + std::to_string(row));
    table->setDataSource(host);
    table->setDelegate(host);
    table->setAutoresizingMask(tessaluna::platform::NSViewWidthSizable);
    table->setRowHeight(30);
    scrollView->setDocumentView(table);
    window = showWindowWith(scrollView);
    window->makeFirstResponder(table.get());
  }

  std::vector<std::size_t> selected() const { return table->selectedAccessibleItems(); }
  void select(std::size_t row) {
    table->selectRowIndexes(tessaluna::platform::NSIndexSet(row), tessaluna::platform::NSTableView::Selecting::Replaces);
  }
  // The middle of a row, in the window.
  tessaluna::platform::CGPoint at(std::size_t row) const {
    return table->convertPointToView({100, CGRectGetMidY(table->rectOfRow(row))}, nullptr);
  }
  void key(char32_t key, std::uint32_t modifiers = 0) { user.pressKey(tessaluna::platform::utf8FromScalar(key), modifiers); }
  std::vector<std::string> takeCalls() { return std::exchange(host->calls, {}); }

  std::shared_ptr<TitlesHost> host = std::make_shared<TitlesHost>();
  tessaluna::platform::Ref<tessaluna::platform::NSTableView> table =
      tessaluna::platform::make<tessaluna::platform::NSTableView>(tessaluna::platform::CGRect{0, 0, 200, 0});
  tessaluna::platform::Ref<tessaluna::platform::NSScrollView> scrollView =
      tessaluna::platform::make<tessaluna::platform::NSScrollView>(tessaluna::platform::CGRect{0, 0, 200, 150});
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> window;
};

}  // namespace harness
