#include "gallery/look.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QPalette>

#include "tests/gallery/QtApplicationOfSuite.h"

namespace gallery {
namespace {

class LookTest : public testing::Test, protected QtApplicationOfSuite {
 public:
  using QtApplicationOfSuite::SetUpTestSuite, QtApplicationOfSuite::TearDownTestSuite;

 protected:
  ~LookTest() override { QApplication::setPalette(before_); }
  static bool sheetHas(const QColor& color) { return application->styleSheet().contains(color.name()); }

 private:
  const QPalette before_ = QApplication::palette();
};

}  // namespace

TEST_F(LookTest, HasTheColorsOfThePaletteAndFollowsIt) {
  const QColor light(0xfdfcfb), dark(0x1b1c1d);
  QPalette palette;
  palette.setColor(QPalette::Base, light);
  QApplication::setPalette(palette);
  const Look look(*application, Theme::Desktop);
  EXPECT_TRUE(sheetHas(light));
  palette.setColor(QPalette::Base, dark);
  QApplication::setPalette(palette);
  EXPECT_TRUE(sheetHas(dark));
  EXPECT_FALSE(sheetHas(light));
}

TEST_F(LookTest, ADarkThemeIsDarkWhateverThePalette) {
  const Look look(*application, Theme::Dark);
  const QPalette palette = QApplication::palette();
  EXPECT_LT(palette.color(QPalette::Window).lightness(), 64);
  EXPECT_GT(palette.color(QPalette::WindowText).lightness(), 200);
}

TEST_F(LookTest, AMenuHasAnOutlineThatShowsOnADarkGround) {
  const Look look(*application, Theme::Dark);
  QMenu menu;
  menu.addAction("Play");
  menu.resize(menu.sizeHint());
  const QImage picture = menu.grab().toImage();
  const int ground = QApplication::palette().color(QPalette::Window).lightness();
  EXPECT_GT(picture.pixelColor(picture.width() / 2, 0).lightness(), ground + 30);
}

TEST_F(LookTest, EndsWhenItsObjectIsDestroyed) {
  { const Look look(*application, Theme::Light); }
  EXPECT_TRUE(application->styleSheet().isEmpty());
}

}  // namespace gallery
