#include "tessaluna/backends/qt/icons.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QMimeData>
#include <QPainter>
#include <QPushButton>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <span>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSImageRep.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

// Red but for a green corner at the upper left and a blue one at the lower right: told apart from its mirrored selves.
void drawFlag(CGRect frame) {
  const CGFloat side = std::min(frame.size.width, frame.size.height) / 4;
  NSColor::redColor()->setFill();
  NSRectFill(frame);
  NSColor::greenColor()->setFill();
  NSRectFill({CGRectGetMinX(frame), CGRectGetMaxY(frame) - side, side, side});
  NSColor::blueColor()->setFill();
  NSRectFill({CGRectGetMaxX(frame) - side, CGRectGetMinY(frame), side, side});
}

QImage emptyPicture(QSize pixels, double ratio = 1) {
  QImage picture(pixels, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  picture.setDevicePixelRatio(ratio);
  return picture;
}

QImage pixelsOf(const QPixmap& pixmap) {
  QImage picture = pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
  picture.setDevicePixelRatio(1);
  return picture;
}

// What the painting engine makes of the routine when it draws it at once at this many pixels.
template <class Draw>
QImage paintedDirectly(int pixels, double points, Draw draw) {
  QImage picture = emptyPicture({pixels, pixels});
  auto bitmap = raster::Bitmap::borrow(reinterpret_cast<std::uint32_t*>(picture.bits()), pixels, pixels,
                                       static_cast<std::size_t>(picture.bytesPerLine()));
  raster::RasterCanvas canvas(*bitmap, {.scale = pixels / points});
  const CanvasScope drawing(canvas);
  draw(CGRect{0, 0, points, points});
  return picture;
}

int largestDifference(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return std::numeric_limits<int>::max();
  int largest = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      for (const int shift : {0, 8, 16, 24})
        largest = std::max(largest, std::abs(int(p >> shift & 255) - int(q >> shift & 255)));
    }
  return largest;
}

constexpr double ratios[] = {1, 1.25, 1.5, 1.75, 2};
constexpr int sizes[] = {16, 20, 24, 32};

}  // namespace

TEST(iconsTest, IsDrawnAtTheDevicePixelsOfEverySizeAndRatio) {
  const QIcon play = iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay);
  for (const int size : sizes)
    for (const double ratio : ratios) {
      const QPixmap pixmap = play.pixmap(QSize(size, size), ratio);
      EXPECT_EQ(pixmap.devicePixelRatio(), ratio);
      const int pixels = static_cast<int>(std::lround(size * ratio));
      EXPECT_LE(largestDifference(pixelsOf(pixmap), paintedDirectly(pixels, 32, TessalunaStyleKit::drawPlay)), 1)
          << size << " points at " << ratio;
    }
}

TEST(iconsTest, ImageOfTheKitIsAsSharpAsItsRoutine) {
  const QIcon arrow = icon(TessalunaStyleKit::imageOfRightArrow());
  const auto draw = [](CGRect frame) { TessalunaStyleKit::drawRightArrow(frame); };
  for (const int size : sizes)
    EXPECT_LE(largestDifference(pixelsOf(arrow.pixmap(QSize(size, size), 1)), paintedDirectly(size, 12, draw)), 1) << size;
}

TEST(iconsTest, EdgesOnWholePixelsAreSharp) {
  const QIcon flag = iconOfDrawing({16, 16}, drawFlag);
  for (const int size : sizes) {
    const QImage picture = pixelsOf(flag.pixmap(QSize(size, size), 1));
    const int corner = size / 4;
    EXPECT_EQ(picture.pixelColor(corner - 1, corner - 1), QColor(0, 255, 0));
    EXPECT_EQ(picture.pixelColor(corner, corner), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(size - corner, size - corner), QColor(Qt::blue));
    EXPECT_EQ(picture.pixelColor(size - corner - 1, size - corner - 1), QColor(Qt::red));
  }
}

TEST(iconsTest, PaintsAtAPainterThePixelsOfItsPixmap) {
  const QIcon play = iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay);
  for (const double ratio : ratios) {
    QImage picture = emptyPicture({100, 100}, ratio);
    QPainter painter(&picture);
    // Somewhere between pixels at most ratios; it is put on whole ones.
    play.paint(&painter, QRect(5, 7, 24, 24));
    painter.end();
    const QImage expected = pixelsOf(play.pixmap(QSize(24, 24), ratio));
    const QPoint corner(int(std::round(5 * ratio)), int(std::round(7 * ratio)));
    EXPECT_EQ(largestDifference(picture.copy(QRect(corner, expected.size())), expected), 0) << ratio;
    QPainter eraser(&picture);
    eraser.setCompositionMode(QPainter::CompositionMode_Clear);
    eraser.fillRect(QRectF(QPointF(corner) / ratio, QSizeF(expected.size()) / ratio), Qt::black);
    eraser.end();
    EXPECT_EQ(largestDifference(picture, emptyPicture({100, 100})), 0) << "nothing beside it at " << ratio;
  }
}

TEST(iconsTest, PaintsAtTheScaleOfThePainterAndNotAnEnlargedPicture) {
  const QIcon play = iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay);
  QImage picture = emptyPicture({96, 96});
  QPainter painter(&picture);
  painter.scale(3, 3);
  play.paint(&painter, QRect(0, 0, 32, 32));
  EXPECT_LE(largestDifference(picture, paintedDirectly(96, 32, TessalunaStyleKit::drawPlay)), 1);
}

TEST(iconsTest, TurnsWithThePainter) {
  const QIcon flag = iconOfDrawing({16, 16}, drawFlag);
  QImage picture = emptyPicture({40, 40});
  QPainter painter(&picture);
  painter.translate(30, 4);
  painter.rotate(90);  // clockwise
  flag.paint(&painter, QRect(0, 0, 16, 16));
  painter.end();
  EXPECT_EQ(picture.pixelColor(28, 5), QColor(0, 255, 0));
  EXPECT_EQ(picture.pixelColor(15, 18), QColor(Qt::blue));
  EXPECT_EQ(picture.pixelColor(15, 5), QColor(Qt::red));
  EXPECT_EQ(picture.pixelColor(31, 5).alpha(), 0);

  picture.fill(Qt::transparent);
  QPainter mirrored(&picture);
  mirrored.translate(30, 4);
  mirrored.scale(-1, 1);
  flag.paint(&mirrored, QRect(0, 0, 16, 16));
  mirrored.end();
  EXPECT_EQ(picture.pixelColor(28, 5), QColor(0, 255, 0));
  EXPECT_EQ(picture.pixelColor(15, 18), QColor(Qt::blue));

  // A square that stands on its corner is antialiased as one shape: the whole of it is as much as before.
  picture.fill(Qt::transparent);
  QPainter oblique(&picture);
  oblique.translate(20, 20);
  oblique.rotate(45);
  iconOfDrawing({16, 16}, [](CGRect) { NSRectFill({4, 4, 8, 8}); }).paint(&oblique, QRect(-8, -8, 16, 16));
  oblique.end();
  double covered = 0;
  for (int y = 0; y < 40; ++y)
    for (int x = 0; x < 40; ++x) covered += picture.pixelColor(x, y).alphaF();
  EXPECT_NEAR(covered, 64, 0.5);
}

TEST(iconsTest, LeavesThePainterAsItWas) {
  QImage picture = emptyPicture({40, 40}, 1.25);
  QPainter painter(&picture);
  painter.translate(3.5, 2);
  painter.setClipRect(QRect(0, 0, 8, 16));
  const QTransform before = painter.transform();
  iconOfDrawing({16, 16}, drawFlag).paint(&painter, QRect(0, 0, 16, 16));
  EXPECT_EQ(painter.transform(), before);
  painter.end();
  EXPECT_EQ(picture.pixelColor(int(5 * 1.25), int(8 * 1.25)), QColor(Qt::red));
  EXPECT_EQ(picture.pixelColor(int(15 * 1.25), int(8 * 1.25)).alpha(), 0) << "the painter's clip holds";
}

TEST(iconsTest, ModesAreThoseOfTheStyle) {
  const QIcon flag = iconOfDrawing({16, 16}, drawFlag);
  const QPixmap normal = flag.pixmap(QSize(16, 16), 2, QIcon::Normal);
  for (const QIcon::Mode mode : {QIcon::Disabled, QIcon::Active, QIcon::Selected}) {
    QStyleOption option(0);
    option.palette = QApplication::palette();
    const QPixmap expected = QApplication::style()->generatedIconPixmap(mode, normal, &option);
    EXPECT_EQ(largestDifference(pixelsOf(flag.pixmap(QSize(16, 16), 2, mode)), pixelsOf(expected)), 0) << mode;
    QImage painted = emptyPicture({32, 32}, 2);
    QPainter painter(&painted);
    flag.paint(&painter, QRect(0, 0, 16, 16), Qt::AlignCenter, mode);
    painter.end();
    EXPECT_EQ(largestDifference(painted, pixelsOf(expected)), 0) << mode;
  }
  const QColor gray = pixelsOf(flag.pixmap(QSize(16, 16), 1, QIcon::Disabled)).pixelColor(8, 8);
  EXPECT_LT(gray.hsvSaturation(), 40);
  EXPECT_GT(largestDifference(pixelsOf(flag.pixmap(QSize(16, 16), 2, QIcon::Selected)), pixelsOf(normal)), 10);
}

TEST(iconsTest, KeepsItsProportionsInTheMiddle) {
  const QIcon more = icon(TessalunaStyleKit::imageOfMoreAlbumOverlay());  // twice as wide as high
  EXPECT_EQ(more.actualSize({32, 32}), QSize(32, 16));
  EXPECT_EQ(more.actualSize({88, 20}), QSize(40, 20));
  EXPECT_EQ(more.actualSize({25, 25}), QSize(25, 13));
  EXPECT_EQ(more.pixmap(QSize(32, 32), 1).size(), QSize(32, 16));

  QImage picture = emptyPicture({32, 32});
  QPainter painter(&picture);
  iconOfDrawing({44, 22}, drawFlag).paint(&painter, QRect(0, 0, 32, 32));
  painter.end();
  for (const int row : {0, 7, 24, 31}) EXPECT_EQ(picture.pixelColor(16, row).alpha(), 0) << row;
  for (const int row : {8, 23}) EXPECT_EQ(picture.pixelColor(16, row), QColor(Qt::red)) << row;

  // Also where somebody else's layout leaves the place to the engine.
  QImage leftAligned = emptyPicture({64, 32});
  QPainter second(&leftAligned);
  iconOfDrawing({16, 16}, drawFlag).paint(&second, QRect(0, 0, 64, 32), Qt::AlignLeft);
  second.end();
  EXPECT_EQ(leftAligned.pixelColor(0, 0), QColor(0, 255, 0));
  EXPECT_EQ(leftAligned.pixelColor(31, 31), QColor(Qt::blue));
  EXPECT_EQ(leftAligned.pixelColor(33, 16).alpha(), 0);
}

TEST(iconsTest, CopiesShareTheImageAndOutliveEachOther) {
  const Ref<NSImage> image = NSImage::imageWithSize({16, 16}, false, [](CGRect frame) {
    drawFlag(frame);
    return true;
  });
  QIcon copy;
  {
    const QIcon original = icon(image);
    copy = original;
    copy.detach();  // a clone of the engine
    EXPECT_NE(copy.cacheKey(), original.cacheKey());
    EXPECT_EQ(pixelsOf(copy.pixmap(QSize(16, 16), 1)), pixelsOf(original.pixmap(QSize(16, 16), 1)));
  }
  EXPECT_EQ(pixelsOf(copy.pixmap(QSize(16, 16), 1)).pixelColor(0, 0), QColor(0, 255, 0));
  EXPECT_EQ(image.use_count(), 2);
  copy = QIcon();
  EXPECT_EQ(image.use_count(), 1);
}

TEST(iconsTest, ADroppedRowOfAModelKeepsItsIcon) {
  const QIcon wide = iconOfDrawing({32, 16}, drawFlag), tall = iconOfDrawing({16, 32}, drawFlag, {.role = IconRole::Text});
  for (const QIcon& flag : {wide, tall}) {
    QStandardItemModel model;
    model.appendRow(new QStandardItem(flag, "row"));
    const std::unique_ptr<QMimeData> dragged(model.mimeData({model.index(0, 0)}));
    ASSERT_TRUE(model.dropMimeData(dragged.get(), Qt::MoveAction, 1, 0, {}));
    const QIcon dropped = model.item(1)->icon();
    for (const int side : {16, 32, 128})
      for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled, QIcon::Active, QIcon::Selected})
        EXPECT_EQ(pixelsOf(dropped.pixmap(QSize(side, side), 1, mode)), pixelsOf(flag.pixmap(QSize(side, side), 1, mode)))
            << side << ", " << mode;
  }
}

TEST(iconsTest, DrawsWheneverItIsAskedAndKeepsNothing) {
  int drawings = 0;
  const QIcon counted = iconOfDrawing({16, 16}, [&](CGRect frame) {
    ++drawings;
    drawFlag(frame);
  });
  EXPECT_EQ(drawings, 0);
  EXPECT_FALSE(counted.isNull());
  EXPECT_EQ(counted.actualSize({24, 24}), QSize(24, 24));
  EXPECT_EQ(drawings, 0);
  const QPixmap first = counted.pixmap(QSize(16, 16), 1), second = counted.pixmap(QSize(16, 16), 1);
  EXPECT_EQ(drawings, 2);
}

TEST(iconsTest, NeedsNoBackendAndNoCurrentContext) {
  ASSERT_EQ(Backend::current(), nullptr);
  ASSERT_EQ(NSGraphicsContext::currentContext(), nullptr);
  // A color that the desktop decides, where there is a desktop.
  const QIcon square = iconOfDrawing({16, 16}, [](CGRect frame) {
    NSColor::controlTextColor()->setFill();
    NSRectFill(frame);
  });
  EXPECT_NEAR(pixelsOf(square.pixmap(QSize(16, 16), 1)).pixelColor(8, 8).alphaF(),
              defaultSystemColor(SystemColor::ControlText).alpha, 0.003);
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST(iconsTest, ComesUprightFromFlippedAndFromDecodedImages) {
  const QIcon flipped = icon(NSImage::imageWithSize({16, 16}, true, [](CGRect) {
    NSColor::greenColor()->setFill();
    NSRectFill({0, 0, 16, 4});  // y counts downward
    return true;
  }));
  EXPECT_EQ(pixelsOf(flipped.pixmap(QSize(16, 16), 1)).pixelColor(8, 1), QColor(0, 255, 0));

  auto pixels = std::make_shared<ImagePixels>();
  pixels->width = 1;
  pixels->height = 2;
  pixels->argb = {0xFF00FF00, 0xFF0000FF};
  const auto image = make<NSImage>(CGSize{1, 2});
  image->addRepresentation(make<NSImageRep>(pixels));
  const QImage shown = pixelsOf(icon(image).pixmap(QSize(20, 20), 1));
  ASSERT_EQ(shown.size(), QSize(10, 20));
  EXPECT_EQ(shown.pixelColor(5, 1), QColor(0, 255, 0));
  EXPECT_EQ(shown.pixelColor(5, 18), QColor(Qt::blue));
}

TEST(iconsTest, WithoutAnImageOrExtentIsNull) {
  EXPECT_TRUE(icon(nullptr).isNull());
  EXPECT_TRUE(icon(make<NSImage>(CGSize{0, 16})).isNull());
  EXPECT_TRUE(icon(make<NSImage>(CGSize{16, std::numeric_limits<double>::infinity()})).isNull());
  EXPECT_TRUE(icon(make<NSImage>(CGSize{std::nan(""), 16})).isNull());
  const QIcon flag = iconOfDrawing({16, 16}, drawFlag);
  EXPECT_TRUE(flag.pixmap(QSize(0, 16), 1).isNull());
  QImage picture = emptyPicture({8, 8});
  QPainter painter(&picture);
  flag.paint(&painter, QRect());
  painter.scale(0, 1);
  flag.paint(&painter, QRect(0, 0, 8, 8));
  painter.end();
  EXPECT_EQ(largestDifference(picture, emptyPicture({8, 8})), 0);
}

TEST(iconsTest, ShowsOnAButtonPixelForPixel) {
  QPushButton button;
  button.setIcon(iconOfDrawing({16, 16}, drawFlag));
  button.setIconSize({16, 16});
  button.resize(60, 40);
  const QPixmap grabbed = button.grab();
  const QImage shown = pixelsOf(grabbed);
  const QImage expected = pixelsOf(button.icon().pixmap(QSize(16, 16), grabbed.devicePixelRatio()));
  bool isFound = false;
  for (int y = 0; y + expected.height() <= shown.height() && !isFound; ++y)
    for (int x = 0; x + expected.width() <= shown.width() && !isFound; ++x)
      isFound = shown.pixelColor(x, y) == QColor(0, 255, 0) &&
                largestDifference(shown.copy(QRect(QPoint(x, y), expected.size())), expected) == 0;
  EXPECT_TRUE(isFound) << "at scale " << grabbed.devicePixelRatio();
}

TEST(iconsTest, CoverFromBytesNeedsNoBackend) {
  ASSERT_EQ(Backend::current(), nullptr);
  QImage cover(2, 2, QImage::Format_RGB32);
  cover.fill(QColor(10, 200, 30));
  QByteArray png;
  QBuffer buffer(&png);
  ASSERT_TRUE(buffer.open(QIODevice::WriteOnly) && cover.save(&buffer, "PNG"));
  const auto bytes = std::as_bytes(std::span(png.constData(), static_cast<std::size_t>(png.size())));
  const QIcon shown = icon(NSImage::initWithData(bytes));
  EXPECT_EQ(pixelsOf(shown.pixmap(QSize(20, 20), 1)).pixelColor(10, 10), QColor(10, 200, 30));
  EXPECT_TRUE(icon(NSImage::initWithData(bytes.first(10))).isNull());
}

TEST(iconsDeathTest, EmptyDrawingStopsTheProgram) { EXPECT_DEATH(iconOfDrawing({16, 16}, {}), "an empty drawing"); }

}  // namespace tessaluna::backend::qt
