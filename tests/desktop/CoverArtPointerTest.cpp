// The gallery's covers under a real pointer and keyboard, with a window manager that assigns the keyboard focus.
#include <QHBoxLayout>
#include <QScreen>
#include <QWindow>

#include "gallery/covers/CoverArtHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSImageRep.h"
#include "tests/desktop/QtDesktop.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using gallery::CoverArtHost;

namespace {

class CoverArtPointer : public harness::QtDesktop {
 protected:
  CoverArtPointer() {
    host_->setReport([this](const std::string& what) { reports_.push_back(what); });
    auto* row = new QHBoxLayout(&window_);
    for (const CoverArtHost::Cover& cover : host_->covers()) {
      auto* widget = new tessaluna::backend::qt::QtViewWidget(cover.ground);
      widget->setFixedSize(int(CoverArtHost::groundSize), int(CoverArtHost::groundSize));
      row->addWidget(widget);
      widgets_.push_back(widget);
    }
    xdotool({"mousemove", "5", "1000"});
    window_.move(60, 80);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(eventually([&] { return window_.isActiveWindow(); }));
    settle();
  }
  ~CoverArtPointer() override {
    xdotool({"mouseup", "1", "mousemove", "5", "1000"});
    host_->setReport(nullptr);
  }

  std::size_t indexOf(std::string_view name) const {
    for (std::size_t i = 0; i < host_->covers().size(); ++i)
      if (host_->covers()[i].name == name) return i;
    return 0;
  }
  // While neither the window nor a panel has the keyboard, the window manager is still assigning it to one of them.
  void click(QPoint place) {
    EXPECT_TRUE(eventually([&] { return window_.isActiveWindow() || panel(); }));
    xdotool({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1"});
  }
  void clickThumbnail(std::string_view name, QPoint place = {50, 50}) { click(widgets_[indexOf(name)]->mapToGlobal(place)); }
  static Ref<CoverArtPanel> panel() {
    for (const Ref<NSWindow>& each : NSApp->windows())
      if (auto found = std::dynamic_pointer_cast<CoverArtPanel>(each); found && found->isVisible()) return found;
    return nullptr;
  }
  bool opens() {
    return eventually([] { return panel() && panel()->isKeyWindow(); });
  }
  // Waits a little longer: a press that comes sooner counts as the one that closed the panel.
  bool closes() {
    if (!eventually([] { return !panel(); })) return false;
    QElapsedTimer since;
    since.start();
    return eventually([&] { return since.elapsed() > 200; });
  }
  // In the coordinates of Qt's screen, whose y runs down.
  QRect placeOfPanel() const {
    const CGRect frame = panel()->frame();
    const int height = window_.screen()->geometry().height();
    return {int(frame.origin.x), height - int(CGRectGetMaxY(frame)), int(frame.size.width), int(frame.size.height)};
  }

  Ref<CoverArtHost> host_ = make<CoverArtHost>();
  std::vector<std::string> reports_;
  QWidget window_;
  std::vector<QWidget*> widgets_;
};

TEST_F(CoverArtPointer, AClickEnlargesACoverAtItsThumbnailsCornerWithinTheScreen) {
  clickThumbnail("square");
  ASSERT_TRUE(opens());
  const QPoint corner = widgets_[indexOf("square")]->mapToGlobal(QPoint(1, 1));
  EXPECT_EQ(placeOfPanel(), QRect(corner, QSize(600, 600)));
  EXPECT_EQ(reports_, std::vector<std::string>{"square 600 by 600"});
  // Elsewhere in the window.
  click(window_.mapToGlobal(QPoint(3, 3)));
  EXPECT_TRUE(closes());
  settle();
  clickThumbnail("wide");
  ASSERT_TRUE(opens());
  const QRect screen = window_.screen()->availableGeometry();
  EXPECT_EQ(placeOfPanel().right(), screen.right());
  EXPECT_LT(placeOfPanel().width(), 1600);
  EXPECT_NEAR(placeOfPanel().height(), placeOfPanel().width() * 500.0 / 1600, 1);
}

TEST_F(CoverArtPointer, AClickInTheCoverOrEscapeClosesItWhereTheHostWantsThat) {
  clickThumbnail("square");
  ASSERT_TRUE(opens());
  click(placeOfPanel().center());
  xdotool({"key", "Escape"});
  EXPECT_NE(panel(), nullptr);
  click(window_.mapToGlobal(QPoint(3, 3)));
  ASSERT_TRUE(closes());

  host_->setClosesByClickAndEscape(true);
  clickThumbnail("square");
  ASSERT_TRUE(opens());
  click(placeOfPanel().center());
  EXPECT_TRUE(closes());
  clickThumbnail("square");
  ASSERT_TRUE(opens());
  xdotool({"key", "Escape"});
  EXPECT_TRUE(closes());
  EXPECT_TRUE(eventually([&] { return window_.isActiveWindow(); })) << "the window has the keyboard again";
}

// A cover that is smaller than its thumbnail leaves part of the thumbnail to click.
TEST_F(CoverArtPointer, AnotherClickOnTheThumbnailOfATinyCoverClosesIt) {
  host_->setClosesByClickAndEscape(true);
  clickThumbnail("tiny");
  ASSERT_TRUE(opens());
  EXPECT_EQ(placeOfPanel().size(), QSize(24, 24));
  clickThumbnail("tiny", {70, 70});
  EXPECT_TRUE(closes());
  settle();
  EXPECT_EQ(panel(), nullptr) << "and opens no other";
  settle();
  clickThumbnail("tiny", {70, 70});
  EXPECT_TRUE(opens());
}

// However many steps of the animation are seen.
TEST_F(CoverArtPointer, AnImageThatChangesMovesTheOpenPanelWithoutAJump) {
  clickThumbnail("changing");
  ASSERT_TRUE(opens());
  const Ref<CoverArtPanel> moving = panel();
  std::vector<double> widths{moving->frame().size.width};
  host_->changeImage();  // from wide to tall
  const auto pixels = host_->covers()[indexOf("changing")].thumbnail->image()->representations()[0];
  EXPECT_TRUE(eventually([&] {
    const CGSize size = moving->frame().size;
    if (size.width != widths.back()) widths.push_back(size.width);
    // Only at the end does it have the image's form.
    return std::abs(size.height * pixels->pixelsWide() - size.width * pixels->pixelsHigh()) < pixels->pixelsHigh();
  })) << testing::PrintToString(widths);
  EXPECT_GE(widths.size(), 2u);
  for (std::size_t i = 1; i < widths.size(); ++i) EXPECT_LT(widths[i], widths[i - 1]);
  settle();
  EXPECT_NEAR(moving->frame().size.width, widths.back(), 1.5) << "and stays there";
  EXPECT_TRUE(moving->isKeyWindow());
}

TEST_F(CoverArtPointer, EscapeClosesACoverThatMovesAndAClickOpensItAgain) {
  host_->setClosesByClickAndEscape(true);
  for (int i = 0; i < 3; ++i) {
    clickThumbnail("changing");
    ASSERT_TRUE(opens());
    host_->changeImage();
    if (!host_->covers()[indexOf("changing")].thumbnail->image()) host_->changeImage();
    xdotool({"key", "Escape"});
    ASSERT_TRUE(closes());
    settle();
  }
  EXPECT_TRUE(eventually([&] { return window_.isActiveWindow(); }));
}

TEST_F(CoverArtPointer, ClosingTheWindowClosesAnEnlargedCover) {
  clickThumbnail("square");
  ASSERT_TRUE(opens());
  window_.close();
  EXPECT_TRUE(closes());
  window_.show();
  window_.activateWindow();
  ASSERT_TRUE(eventually([&] { return window_.isActiveWindow(); }));
  settle();
  clickThumbnail("square");
  EXPECT_TRUE(opens());
}

TEST_F(CoverArtPointer, AnImageRemovedWhileItIsEnlargedLeavesAnEmptySquareThatTheNextImageFills) {
  clickThumbnail("changing");
  ASSERT_TRUE(opens());
  const auto& thumbnail = host_->covers()[indexOf("changing")].thumbnail;
  const Ref<NSImage> image = thumbnail->image();
  thumbnail->setImage(nullptr);
  EXPECT_TRUE(eventually([&] { return placeOfPanel().size() == QSize(64, 64); }));
  thumbnail->setImage(image);
  EXPECT_TRUE(eventually([&] { return placeOfPanel().width() > 300; }));
  click(window_.mapToGlobal(QPoint(3, 3)));
  EXPECT_TRUE(closes());
}

TEST_F(CoverArtPointer, ACoverOfManyPixelsIsDecodedInTheBackground) {
  host_->setPreparesImages(true);
  const auto& huge = host_->covers()[indexOf("huge")];
  ASSERT_TRUE(eventually([&] { return huge.thumbnail->image() && huge.thumbnail->pictureToDraw(); }));
  const auto thumbnails = huge.thumbnail->pictureToDraw();
  clickThumbnail("huge");
  ASSERT_TRUE(opens());
  const auto view = std::dynamic_pointer_cast<NSImageView>(panel()->contentView());
  EXPECT_NE(view->pictureToDraw(), nullptr) << "at least the thumbnail's";
  EXPECT_TRUE(eventually([&] { return view->pictureToDraw() != thumbnails; }));
}

}  // namespace
