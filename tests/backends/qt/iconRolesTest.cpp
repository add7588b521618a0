#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QPalette>

#include "tessaluna/backends/qt/icons.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

// The left half black, the right one white, and a blue line below.
void drawHalves(CGRect frame) {
  const CGFloat width = frame.size.width / 2, height = frame.size.height;
  NSColor::blackColor()->setFill();
  NSRectFill({0, 0, width, height});
  NSColor::whiteColor()->setFill();
  NSRectFill({width, 0, width, height});
  NSColor::colorWithCalibratedRed(0.4, 0.6, 1, 1)->setFill();
  NSRectFill({0, 0, 2 * width, 4});
}

class iconRolesTest : public testing::Test {
 protected:
  iconRolesTest() { setPalette(Qt::white, 0x202124); }
  ~iconRolesTest() override {
    QApplication::setPalette(before_);
    setNeutralsFollowPalette(false);
  }

  static void setPalette(QColor text, QColor ground) {
    QPalette palette;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::ButtonText, 0xfffff0);
    palette.setColor(QPalette::Button, 0x404140);
    palette.setColor(QPalette::Text, 0xeeeeff);
    palette.setColor(QPalette::Base, 0x101112);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, 0x808182);
    palette.setColor(QPalette::Highlight, 0x3050c0);
    palette.setColor(QPalette::HighlightedText, 0xfefefe);
    QApplication::setPalette(palette);
  }

  // Of black, of white and of blue.
  struct Colors {
    QColor black, white, blue;
  };
  static Colors colorsOf(const QIcon& icon, QIcon::Mode mode = QIcon::Normal) {
    const QImage picture = icon.pixmap(QSize(16, 16), 1, mode).toImage();
    return {picture.pixelColor(4, 4), picture.pixelColor(12, 4), picture.pixelColor(4, 14)};
  }

 private:
  const QPalette before_ = QApplication::palette();
};

}  // namespace

TEST_F(iconRolesTest, WithoutARoleTheDrawingsColorsStay) {
  const Colors colors = colorsOf(iconOfDrawing({16, 16}, drawHalves));
  EXPECT_EQ(colors.black, QColor(Qt::black));
  EXPECT_EQ(colors.white, QColor(Qt::white));
}

TEST_F(iconRolesTest, ARoleIsTwoColorsOfThePalette) {
  struct Expected {
    IconRole role;
    QColor text, ground;
  };
  for (const Expected& each :
       {Expected{IconRole::Text, Qt::white, 0x202124}, Expected{IconRole::ButtonText, 0xfffff0, 0x404140},
        Expected{IconRole::ListText, 0xeeeeff, 0x101112}}) {
    const Colors colors = colorsOf(iconOfDrawing({16, 16}, drawHalves, {.role = each.role}));
    EXPECT_EQ(colors.black, each.text);
    EXPECT_EQ(colors.white, each.ground);
    EXPECT_EQ(colors.blue, QColor(0x6699ff));
  }
}

TEST_F(iconRolesTest, AnIconFollowsAPaletteThatChanges) {
  const QIcon icon = iconOfDrawing({16, 16}, drawHalves, {.role = IconRole::Text});
  EXPECT_EQ(colorsOf(icon).black, QColor(Qt::white));
  setPalette(0x101010, 0xf0f0f0);
  EXPECT_EQ(colorsOf(icon).black, QColor(0x101010));
}

TEST_F(iconRolesTest, ATintTakesThePlaceOfTheText) {
  const Colors colors = colorsOf(iconOfDrawing({16, 16}, drawHalves, {.tint = QColor(0x00aa66)}));
  EXPECT_EQ(colors.black, QColor(0x00aa66));
  EXPECT_EQ(colors.white, QColor(0x202124));
}

TEST_F(iconRolesTest, DisabledAndSelectedHaveThePalettesColors) {
  const QIcon icon = iconOfDrawing({16, 16}, drawHalves, {.role = IconRole::Text});
  EXPECT_EQ(colorsOf(icon, QIcon::Disabled).black, QColor(0x808182));
  EXPECT_EQ(colorsOf(icon, QIcon::Selected).black, QColor(0xfefefe));
  EXPECT_EQ(colorsOf(icon, QIcon::Selected).white, QColor(0x3050c0));
  const QIcon tinted = iconOfDrawing({16, 16}, drawHalves, {.tint = QColor(0x00aa66)});
  EXPECT_EQ(colorsOf(tinted, QIcon::Disabled).black, QColor(0x808182));
  EXPECT_EQ(colorsOf(tinted, QIcon::Selected).black, QColor(0xfefefe));
}

TEST_F(iconRolesTest, WithTheSwitchEveryIconFollowsThePalette) {
  const QIcon icon = iconOfDrawing({16, 16}, drawHalves);
  setNeutralsFollowPalette(true);
  EXPECT_EQ(colorsOf(icon).black, QColor(Qt::white));
}

}  // namespace tessaluna::backend::qt
