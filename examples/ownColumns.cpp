// A table with columns of the program's own: it sorts by a click on a header, and a rating is set in its cell.
#include <QApplication>
#include <algorithm>
#include <string>
#include <vector>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/cells/NSLevelIndicatorCell.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/NSSortDescriptor.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableHeaderView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/windows/NSApplication.h"

using namespace tessaluna::platform;

struct Station {
  std::string name;
  int rating = 0;
};

class Stations : public NSTableViewDataSource, public NSTableViewCellSource {
 public:
  std::size_t numberOfRowsInTableView(NSTableView&) override { return all_.size(); }
  Ref<NSObject> tableViewObjectValue(NSTableView&, NSTableColumn& column, std::size_t row) override {
    if (column.identifier() == "rating") return make<NSNumber>(all_[row].rating);
    return make<NSString>(all_[row].name);
  }
  void tableViewSetObjectValue(NSTableView&, const Ref<NSObject>& value, NSTableColumn&, std::size_t row) override {
    if (const auto number = std::dynamic_pointer_cast<NSNumber>(value)) all_[row].rating = int(number->integerValue());
    else if (const auto text = std::dynamic_pointer_cast<NSString>(value)) all_[row].name = text->UTF8String();
  }
  void tableViewSortDescriptorsDidChange(NSTableView& table) override {
    std::ranges::sort(all_, {}, &Station::name);
    if (!table.sortDescriptors().front()->ascending()) std::ranges::reverse(all_);
    table.reloadData();
  }

 private:
  std::vector<Station> all_ = {{"Radio North", 3}, {"Harbor FM", 5}, {"Night Line", 1}};
};

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::backend::qt::QtBackend desktop;
  const auto application = NSApplication::sharedApplication();

  const auto name = make<NSTableColumn>("name");
  name->setTitle("Name");
  name->setWidth(240);
  name->setSortDescriptorPrototype(make<NSSortDescriptor>("name", /*ascending=*/true));
  const auto stars = make<NSLevelIndicatorCell>(NSLevelIndicatorStyleRating);
  stars->setMaxValue(5);
  stars->setEditable(true);
  const auto rating = make<NSTableColumn>("rating");
  rating->setTitle("Rating");
  rating->setDataCell(stars);

  const auto stations = std::make_shared<Stations>();  // the table does not keep it alive
  const auto table = make<NSTableView>(CGRect{0, 0, 400, 200});
  table->addTableColumn(name);
  table->addTableColumn(rating);
  table->setHeaderView(make<NSTableHeaderView>(CGRect{0, 0, 400, 26}));
  table->setDataSource(stations);
  table->reloadData();
  const auto scroll = make<NSScrollView>(CGRect{0, 0, 400, 200});
  scroll->setHasVerticalScroller(true);
  scroll->setDocumentView(table);
  tessaluna::backend::qt::QtViewWidget widget(scroll);
  widget.show();
  return QApplication::exec();
}
