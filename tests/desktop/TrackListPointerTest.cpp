// The gallery's track list under a real pointer: the X server's, moved, pressed and wheeled by xdotool.
#include <QWidget>
#include <QWindow>

#include "gallery/tracks/TrackListHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tests/desktop/QtDesktop.h"
#include "tests/harness/rowParts.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using gallery::TrackListHost;

namespace {

constexpr int left = 100, top = 120, width = 600, height = 300;

class TrackListPointer : public harness::QtDesktop {
 protected:
  TrackListPointer() {
    host_->setReport([this](const std::string& what) { reports_.push_back(what); });
    auto* list = new tessaluna::backend::qt::QtViewWidget(host_->view(), &window_);
    list->setGeometry(0, 0, width, height);
  }
  ~TrackListPointer() override {
    xdotool({"mouseup", "1", "mousemove", "5", "5"});
    host_->close();
  }

  // Where no window manager moves it or takes part in its clicks.
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

  // To a place of the list's window, counted from its lower left corner as the views do.
  void movePointerTo(CGPoint place) {
    const QPoint onScreen = window_.mapToGlobal(QPoint(int(place.x), height - int(place.y)));
    xdotool({"mousemove", QString::number(onScreen.x()), QString::number(onScreen.y())});
  }
  void movePointerTo(const NSView& view) {
    const CGRect rect = view.convertRectToView(view.bounds(), nullptr);
    movePointerTo({CGRectGetMidX(rect), CGRectGetMidY(rect)});
  }
  // On its title, beside all controls.
  void movePointerToRow(std::size_t row) {
    movePointerTo(table().convertPointToView({200, CGRectGetMidY(table().rectOfRow(row))}, nullptr));
  }
  void wheelDown() { xdotool({"click", "5"}); }

  NSTableView& table() { return *host_->table(); }
  CGFloat scrolledBy() { return host_->view()->contentView()->bounds().origin.y; }
  TrackRowPlayButton& playOf(std::size_t row) { return harness::partOfRow<TrackRowPlayButton>(table(), row); }
  TrackRowFavoriteButton& favoriteOf(std::size_t row) { return harness::partOfRow<TrackRowFavoriteButton>(table(), row); }
  bool isHovered(std::size_t row) { return table().viewAtRow(row) && playOf(row).hasMouseOnRow(); }

  const std::vector<gallery::Track> tracks_ = gallery::generatedTracks(1000);
  Ref<TrackListHost> host_ = make<TrackListHost>(tracks_);
  std::vector<std::string> reports_;
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

TEST_F(TrackListPointer, AReleaseOutsideTheControlTellsNobody) {
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

TEST_F(TrackListPointer, AfterTheWheelTheRowThatCameUnderThePointerShowsItsControls) {
  showAlone();
  movePointerToRow(3);
  ASSERT_TRUE(eventually([&] { return isHovered(3); }));
  wheelDown();
  EXPECT_TRUE(eventually([&] { return scrolledBy() > 0; }));
  const auto under = [&] { return std::size_t((24 * 3.5 + scrolledBy()) / 24); };
  EXPECT_TRUE(eventually([&] { return isHovered(under()) && !isHovered(3); })) << "the pointer stands still";
  EXPECT_GT(under(), 3u);
}

TEST_F(TrackListPointer, OnAScrolledListAClickPlaysTheRowUnderThePointer) {
  showAlone();
  movePointerToRow(3);
  for (int i = 0; i < 10; ++i) wheelDown();
  ASSERT_TRUE(eventually([&] { return scrolledBy() > 24 * 10; }));
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

TEST_F(TrackListPointer, AClickAfterTheWheelIsForTheRowThatCameUnderThePointer) {
  showAlone();
  movePointerTo(playOf(3));
  ASSERT_TRUE(eventually([&] { return isHovered(3); }));
  wheelDown();
  ASSERT_TRUE(eventually([&] { return scrolledBy() > 0; }));
  const auto row = *table().rowAtPoint({70, scrolledBy() + 24 * 3.5});
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

}  // namespace
