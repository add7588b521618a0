// A long table of tracks as a client of the accessibility bus finds it.
#include <QWidget>

#include "gallery/tracks/TrackLibrary.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tests/desktop/AssistiveDesktop.h"

using namespace tessaluna::platform;
using gallery::TrackLibrary;

namespace {

class TableOnTheBus : public harness::AssistiveDesktop {
 protected:
  void SetUp() override {
    new tessaluna::backend::qt::QtViewWidget(view, &window);
    window.findChild<tessaluna::backend::qt::QtViewWidget*>()->setGeometry(0, 0, 600, 400);
    window.resize(600, 400);
    window.show();
    ASSERT_TRUE(eventually([] { return QAccessible::isActive(); }));
    settle();
  }
  NSTableView& table() { return *view->table(); }
  std::string nameOf(std::size_t row) { return view->tableViewNameOfRow(table(), row); }
  std::ptrdiff_t timesObserved(const std::string& part) const {
    return std::count_if(observed.begin(), observed.end(),
                         [&](const std::string& line) { return line.find(part) != line.npos; });
  }
  // Without the focus, which depends on when the window manager gives the window the keyboard.
  std::string row(std::size_t number) {
    const QString said = QString::fromStdString(client("row", {"Tracks", QString::number(number)}));
    return QString(said).remove(" focused").toStdString();
  }

  const std::shared_ptr<TrackLibrary> library =
      std::make_shared<TrackLibrary>(gallery::generatedTracks(10000), TrackLibrary::Covers::Absent);
  std::vector<std::string> reports;
  Ref<tessaluna::ready::TrackTable> view =
      gallery::makeTrackTable(library, [this](const std::string& what) { reports.push_back(what); });
  QWidget window;
};

TEST_F(TableOnTheBus, ARowFarBelowIsThereWithItsNamePlaceAndActions) {
  table().selectRowIndexes(NSIndexSet(7000), NSTableView::Selecting::Replaces);
  EXPECT_EQ(row(7000),
            "10000 rows, 10000 children, selected 7000\n"
            "table row \"" +
                nameOf(7000) +
                "\" focusable selectable selected not showing\n"
                "in its parent 7000 in the table 7000\n"
                "Play, Favorite, More, SetFocus\n");
  EXPECT_EQ(client("select", {"Tracks", "3"}), "True\n");
  EXPECT_TRUE(table().isRowSelected(3));
  EXPECT_TRUE(table().isRowSelected(7000));
}

TEST_F(TableOnTheBus, ASelectionMovedByAKeyIsOneFocusAndTwoStates) {
  // A window manager may overlook a request that arrives while it is busy with the window.
  ASSERT_TRUE(eventually([&] {
    window.activateWindow();
    return window.isActiveWindow();
  }));
  window.findChild<tessaluna::backend::qt::QtViewWidget*>()->setFocus();
  view->window()->makeFirstResponder(&table());
  table().selectByKey(1, false);
  row(1), row(2);
  startListening();
  settle();
  observed.clear();
  xdotool({"key", "Down"});
  ASSERT_TRUE(eventuallyObserves("object:state-changed:focused 1 table row \"" + nameOf(2) + "\""));
  ASSERT_TRUE(eventuallyObserves("object:state-changed:selected 1 table row \"" + nameOf(2) + "\""));
  EXPECT_TRUE(eventuallyObserves("object:state-changed:selected 0 table row \"" + nameOf(1) + "\""));
  EXPECT_EQ(timesObserved("state-changed:focused 1 table row"), 1);
  EXPECT_EQ(timesObserved("state-changed:selected"), 2);
}

TEST_F(TableOnTheBus, AScrollNotifiesNobody) {
  for (const std::size_t met : {0, 1, 2, 3}) row(met);
  startListening();
  settle();
  observed.clear();
  for (CGFloat y = 0; y < 20000; y += 430) {
    view->scrollView()->contentView()->scrollToPoint({0, y});
    settle();
  }
  // A change after the scroll marks the end of what is observed.
  library->toggleFavorite(0);
  EXPECT_TRUE(eventuallyObserves("object:property-change:accessible-name 0 table row \"" + nameOf(0) + "\""));
  EXPECT_EQ(timesObserved("table"), 1) << "of the table and its rows";
}

}  // namespace
