// The gallery's track list under a real pointer: the X server's, which xdotool moves and presses and whose wheel it turns.
#include <QWidget>
#include <QWindow>

#include "gallery/tracks/TrackLibrary.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/ready/tracks/TrackTableRow.h"
#include "tests/desktop/QtDesktop.h"
#include "tests/harness/rowParts.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using gallery::TrackLibrary;
using tessaluna::ready::Playback;
using tessaluna::ready::trackRowHeight;

namespace {

constexpr int left = 100, top = 120, width = 600, height = 400;

class TrackListPointer : public harness::QtDesktop {
 protected:
  TrackListPointer() {
    auto* list = new tessaluna::backend::qt::QtViewWidget(view_, &window_);
    list->setGeometry(0, 0, width, height);
  }
  ~TrackListPointer() override { xdotool({"mouseup", "1", "mousemove", "5", "5"}); }

  // No window manager moves it or intercepts its clicks.
  void showAlone() {
    window_.setWindowFlags(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    show(window_, {left, top, width, height});
  }
  static void show(QWidget& window, QRect place) {
    xdotool({"mousemove", "5", "5"});
    window.setGeometry(place);
    window.show();
    ASSERT_TRUE(eventually([&] { return window.windowHandle() && window.windowHandle()->isExposed(); }));
    settle();
  }

  // Moves it to a place in the list's window, counted from the lower left corner as views count.
  void movePointerTo(CGPoint place) {
    const QPoint onScreen = window_.mapToGlobal(QPoint(int(place.x), height - int(place.y)));
    xdotool({"mousemove", QString::number(onScreen.x()), QString::number(onScreen.y())});
  }
  void movePointerTo(const NSView& view) {
    const CGRect rect = view.convertRectToView(view.bounds(), nullptr);
    movePointerTo({CGRectGetMidX(rect), CGRectGetMidY(rect)});
  }
  // On its title, where no control is.
  void movePointerToRow(std::size_t row) {
    movePointerTo(table().convertPointToView({200, CGRectGetMidY(table().rectOfRow(row))}, nullptr));
  }
  void wheelDown() { xdotool({"click", "5"}); }

  NSTableView& table() { return *view_->table(); }
  CGFloat scrolledBy() { return view_->scrollView()->contentView()->bounds().origin.y; }
  TrackRowPlayButton& playOf(std::size_t row) { return harness::partOfRow<TrackRowPlayButton>(table(), row); }
  TrackRowFavoriteButton& favoriteOf(std::size_t row) { return harness::partOfRow<TrackRowFavoriteButton>(table(), row); }
  bool isHovered(std::size_t row) { return table().viewAtRow(row) && playOf(row).hasMouseOnRow(); }

  const std::vector<gallery::Track> tracks_ = gallery::generatedTracks(1000);
  const std::shared_ptr<TrackLibrary> library_ = std::make_shared<TrackLibrary>(tracks_, TrackLibrary::Covers::Shown);
  std::vector<std::string> reports_;
  Ref<tessaluna::ready::TrackTable> view_ =
      gallery::makeTrackTable(library_, [this](const std::string& what) { reports_.push_back(what); });
  QWidget window_;
};

using Reports = std::vector<std::string>;

TEST_F(TrackListPointer, HoveringARowShowsItsControls) {
  showAlone();
  movePointerToRow(2);
  EXPECT_TRUE(eventually([&] { return isHovered(2); }));
  movePointerToRow(4);
  EXPECT_TRUE(eventually([&] { return isHovered(4) && !isHovered(2); }));
  xdotool({"mousemove", "5", "5"});
  EXPECT_TRUE(eventually([&] { return !isHovered(4); })) << "left the window";
}

TEST_F(TrackListPointer, PressDragOutAndBackAndReleaseOnAControlCountsOnce) {
  showAlone();
  movePointerTo(playOf(1));
  xdotool({"mousedown", "1"});
  EXPECT_TRUE(eventually([&] { return playOf(1).isPressed(); }));
  movePointerToRow(5);
  EXPECT_TRUE(playOf(1).isPressed()) << "away, and not over";
  EXPECT_FALSE(isHovered(5)) << "another row is not entered while the button is down";
  movePointerTo(playOf(1));
  EXPECT_EQ(reports_, Reports{});
  xdotool({"mouseup", "1"});
  EXPECT_TRUE(eventually([&] { return !reports_.empty(); }));
  EXPECT_EQ(reports_, Reports{"playing " + tracks_[1].title});
  EXPECT_FALSE(playOf(1).isPressed());
}

TEST_F(TrackListPointer, AReleaseOutsideTheControlNotifiesNobody) {
  showAlone();
  movePointerTo(favoriteOf(1));
  xdotool({"mousedown", "1"});
  EXPECT_TRUE(eventually([&] { return favoriteOf(1).isPressed(); }));
  movePointerToRow(3);
  xdotool({"mouseup", "1"});
  EXPECT_TRUE(eventually([&] { return !favoriteOf(1).isPressed(); }));
  EXPECT_EQ(reports_, Reports{});
  EXPECT_TRUE(eventually([&] { return isHovered(3); })) << "the row is entered with the release";
}

TEST_F(TrackListPointer, TheHeartTogglesWithEachClick) {
  showAlone();
  const bool was = tracks_[2].isFavorite;
  movePointerTo(favoriteOf(2));
  xdotool({"click", "1"});
  EXPECT_TRUE(eventually([&] { return favoriteOf(2).isFavorite() != was; }));
  xdotool({"click", "1"});
  EXPECT_TRUE(eventually([&] { return favoriteOf(2).isFavorite() == was; }));
}

TEST_F(TrackListPointer, AfterTheWheelTheRowThatIsNowUnderThePointerShowsItsControls) {
  showAlone();
  movePointerToRow(3);
  ASSERT_TRUE(eventually([&] { return isHovered(3); }));
  wheelDown();
  EXPECT_TRUE(eventually([&] { return scrolledBy() > 0; }));
  const auto under = [&] { return std::size_t((trackRowHeight * 3.5 + scrolledBy()) / trackRowHeight); };
  EXPECT_TRUE(eventually([&] { return isHovered(under()) && !isHovered(3); })) << "the pointer is at rest";
  EXPECT_GT(under(), 3u);
}

TEST_F(TrackListPointer, OnAScrolledListAClickPlaysTheRowUnderThePointer) {
  showAlone();
  movePointerToRow(3);
  for (int i = 0; i < 12; ++i) wheelDown();
  ASSERT_TRUE(eventually([&] { return scrolledBy() > trackRowHeight * 5; }));
  const auto row = *table().rowAtPoint({10, scrolledBy() + 100});
  movePointerTo(playOf(row));
  ASSERT_TRUE(eventually([&] { return isHovered(row); }));
  xdotool({"mousedown", "1"});
  EXPECT_TRUE(eventually([&] { return playOf(row).isPressed(); }));
  xdotool({"mouseup", "1"});
  EXPECT_TRUE(eventually([&] { return !reports_.empty(); }));
  EXPECT_EQ(reports_, Reports{"playing " + tracks_[row].title});
  EXPECT_TRUE(playOf(row).isPlaying());
}

TEST_F(TrackListPointer, AClickAfterTheWheelIsForTheRowThatIsNowUnderThePointer) {
  showAlone();
  movePointerTo(playOf(3));
  ASSERT_TRUE(eventually([&] { return isHovered(3); }));
  wheelDown();
  ASSERT_TRUE(eventually([&] { return scrolledBy() > 0; }));
  const auto row = *table().rowAtPoint({70, scrolledBy() + trackRowHeight * 3.5});
  ASSERT_NE(row, 3u);
  ASSERT_TRUE(eventually([&] { return isHovered(row); }));
  xdotool({"click", "1"});
  EXPECT_TRUE(eventually([&] { return !reports_.empty(); }));
  EXPECT_EQ(reports_, Reports{"playing " + tracks_[row].title});
}

TEST_F(TrackListPointer, TheListHoversAndTakesClicksInAWindowThatIsNotActive) {
  show(window_, {left, top, width, height});
  QWidget other;
  show(other, {left, top + height + 60, 200, 100});
  other.activateWindow();
  ASSERT_TRUE(eventually([&] { return other.isActiveWindow() && !window_.isActiveWindow(); }));
  movePointerToRow(2);
  EXPECT_TRUE(eventually([&] { return isHovered(2); }));
  EXPECT_FALSE(window_.isActiveWindow()) << "hovering does not activate";
  movePointerTo(playOf(2));
  xdotool({"click", "1"});
  EXPECT_TRUE(eventually([&] { return !reports_.empty(); })) << "the click that brings the window forward counts";
  EXPECT_EQ(reports_, Reports{"playing " + tracks_[2].title});
}

// Whole gestures in unusual orders.

TEST_F(TrackListPointer, ARowRemovedFromItsMenuIsFollowedByTheNextUnderThePointer) {
  showAlone();
  movePointerTo(playOf(2));
  ASSERT_TRUE(eventually([&] { return isHovered(2); }));
  library_->remove(2);
  ASSERT_TRUE(eventually([&] { return isHovered(2); })) << "the row that is there now";
  xdotool({"click", "1"});
  EXPECT_TRUE(eventually([&] { return !reports_.empty(); }));
  EXPECT_EQ(reports_, Reports{"playing " + tracks_[3].title});
}

TEST_F(TrackListPointer, ARowRemovedUnderAPressIsNotPlayed) {
  showAlone();
  movePointerTo(playOf(2));
  ASSERT_TRUE(eventually([&] { return isHovered(2); }));
  xdotool({"mousedown", "1"});
  ASSERT_TRUE(eventually([&] { return playOf(2).isPressed(); }));
  library_->remove(2);
  xdotool({"mouseup", "1"});
  settle();
  EXPECT_EQ(reports_, Reports{});
  EXPECT_FALSE(playOf(2).isPressed());
}

TEST_F(TrackListPointer, ADragSelectsRowsEvenWhileTheListIsSorted) {
  showAlone();
  movePointerToRow(1);
  xdotool({"mousedown", "1"});
  ASSERT_TRUE(eventually([&] { return table().isRowSelected(1); }));
  movePointerToRow(3);
  EXPECT_TRUE(eventually([&] { return table().selectedRowIndexes().count() == 3; }));
  library_->sortBy(tessaluna::ready::TrackColumn::Title, true);
  settle();
  xdotool({"mouseup", "1"});
  EXPECT_EQ(table().selectedRowIndexes().count(), 3u) << "the same tracks, wherever they are now";
  for (const std::size_t row : table().selectedAccessibleItems()) {
    const std::uint64_t number = library_->identityOf(row);
    EXPECT_TRUE(number >= 2 && number <= 4) << number;
  }
}

TEST_F(TrackListPointer, AListThatIsHiddenOrShrunkToNothingUnderThePointerTakesNoClick) {
  showAlone();
  movePointerTo(playOf(2));
  ASSERT_TRUE(eventually([&] { return isHovered(2); }));
  xdotool({"mousedown", "1"});
  ASSERT_TRUE(eventually([&] { return playOf(2).isPressed(); }));
  QWidget* list = window_.findChild<tessaluna::backend::qt::QtViewWidget*>();
  list->hide();
  xdotool({"mouseup", "1"});
  settle();
  EXPECT_EQ(reports_, Reports{});
  list->show();
  list->resize(0, 0);
  settle();
  list->resize(1, 1);
  settle();
  list->resize(width, height);
  settle();
  movePointerToRow(4);
  movePointerTo(playOf(2));
  ASSERT_TRUE(eventually([&] { return isHovered(2); }));
  xdotool({"click", "1"});
  EXPECT_TRUE(eventually([&] { return !reports_.empty(); }));
  EXPECT_EQ(reports_, Reports{"playing " + tracks_[2].title});
}

TEST_F(TrackListPointer, KeysPlayFindAndOpenTheMenuOfARow) {
  showAlone();
  movePointerToRow(1);
  xdotool({"click", "1"});
  ASSERT_TRUE(eventually([&] { return table().keyboardRow() == 1u; }));
  window_.activateWindow();
  xdotool({"key", "Down"});
  ASSERT_TRUE(eventually([&] { return table().keyboardRow() == 2u; }));
  xdotool({"key", "Return"});
  ASSERT_TRUE(eventually([&] { return reports_ == Reports{"playing " + tracks_[2].title}; }));
  xdotool({"key", "Menu"});
  ASSERT_TRUE(eventually([&] { return QApplication::activePopupWidget() != nullptr; }));
  xdotool({"key", "Escape"});
  EXPECT_TRUE(eventually([&] { return QApplication::activePopupWidget() == nullptr; }));
  EXPECT_EQ(table().keyboardRow(), 2u);
}

}  // namespace
