// The player's window under a real pointer and keyboard, with a window manager: gestures that leave the window and return.
#include <QVBoxLayout>
#include <QWindow>

#include "gallery/player/PlayerView.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using namespace tessaluna::ready;
using namespace TessalunaUIKit;
using gallery::PlayerView;

namespace {

class PlayerPointer : public harness::QtDesktop {
 protected:
  PlayerPointer() {
    (new QVBoxLayout(&window_))->addWidget(new tessaluna::backend::qt::QtViewWidget(player_));
    xdotool({"mousemove", "5", "1000"});
    window_.setGeometry(40, 60, 900, 600);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(eventually([&] { return window_.isActiveWindow() && window_.windowHandle()->isExposed(); }));
    player_->player().play(library_->allSongs(), 0);
    player_->start();
    settle();
  }
  ~PlayerPointer() override {
    player_->search()->popUp()->cancelSuggestions();
    player_->cover()->closeEnlargedView();
    xdotool({"mouseup", "1", "mousemove", "5", "1000"});
  }

  // The middle of the visible part of a view.
  void click(const NSView& view) {
    EXPECT_TRUE(eventually([&] { return window_.isActiveWindow() || panel(); }));
    const CGRect inWindow = view.convertRectToView(view.bounds(), nullptr);
    const QPoint place =
        window_.mapToGlobal(QPoint(int(CGRectGetMidX(inWindow)), window_.height() - int(CGRectGetMidY(inWindow))));
    xdotool({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1"});
  }
  static Ref<CoverArtPanel> panel() {
    for (const Ref<NSWindow>& each : NSApp->windows())
      if (auto found = std::dynamic_pointer_cast<CoverArtPanel>(each); found && found->isVisible()) return found;
    return nullptr;
  }
  static Ref<NSImage> shownInPanel() {
    const auto view = panel() ? std::dynamic_pointer_cast<NSImageView>(panel()->contentView()) : nullptr;
    return view ? view->image() : nullptr;
  }
  // The search field has the keyboard, and rows for what was typed.
  void searchFor(const QString& text) {
    click(*player_->search()->field());
    ASSERT_TRUE(eventually([&] { return player_->search()->field()->currentEditor() != nullptr; }));
    xdotool({"type", "--delay", "12", text});
    ASSERT_TRUE(
        eventually([&] { return player_->search()->popUp()->isOpen() && player_->search()->text() == text.toStdString(); }));
  }

  const std::shared_ptr<gallery::MusicLibrary> library_ = std::make_shared<gallery::MusicLibrary>(24);
  const Ref<PlayerView> player_ = make<PlayerView>(CGRect{0, 0, 900, 600}, library_);
  QWidget window_;
};

TEST_F(PlayerPointer, AnEnlargedCoverFollowsTheSongs) {
  click(*player_->cover());
  ASSERT_TRUE(eventually([] { return panel() && panel()->isKeyWindow(); }));
  const Ref<NSImage> first = shownInPanel();
  EXPECT_EQ(first, player_->cover()->image());
  player_->player().playAt(library_->albums()[1].songs.front());
  EXPECT_TRUE(eventually([&] { return shownInPanel() && shownInPanel() != first; }));
  EXPECT_EQ(shownInPanel(), player_->cover()->image());
  xdotool({"key", "Escape"});
  EXPECT_TRUE(eventually([&] { return !panel() && window_.isActiveWindow(); }));
}

TEST_F(PlayerPointer, ASongThatIsSearchedForAndChosenPlays) {
  const gallery::Song& song = library_->songs()[50];
  searchFor(QString::fromStdString(song.track.title));
  const auto& rows = player_->search()->popUp()->content().rows;
  const auto place = std::ranges::find(rows, song.track.title, &SearchRow::title) - rows.begin();
  ASSERT_LT(place, std::ssize(rows));
  for (std::ptrdiff_t i = 0; i <= place; ++i) xdotool({"key", "Down"});
  xdotool({"key", "Return"});
  EXPECT_TRUE(eventually([&] { return !player_->search()->popUp()->isOpen(); }));
  EXPECT_TRUE(eventually([&] {
    return library_->songs()[*player_->player().song()].track.title == song.track.title ||
           player_->shownTitle() == song.track.title;
  }));
}

TEST_F(PlayerPointer, ItIsPausedAfterTheWindowBecameNarrowAndWideAgain) {
  for (const QSize size : {QSize(420, 420), QSize(1100, 700), QSize(700, 500)}) {
    window_.resize(size);
    ASSERT_TRUE(eventually([&] { return window_.size() == size; }));
    settle();
    ASSERT_TRUE(eventually([&] { return player_->bounds().size.width > size.width() - 40; }));
  }
  ASSERT_TRUE(player_->player().isPlaying());
  // Previous is the first of the bar's buttons, play the second.
  click(*player_->transport()->subviews()[1]);
  EXPECT_TRUE(eventually([&] { return !player_->player().isPlaying(); }));
}

TEST_F(PlayerPointer, ClosingTheWindowClosesTheOpenPopUp) {
  searchFor("winter");
  window_.close();
  EXPECT_TRUE(eventually([&] { return !player_->search()->popUp()->isOpen(); }));
}

}  // namespace
