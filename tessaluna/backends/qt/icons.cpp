#include "tessaluna/backends/qt/icons.h"

#include <QApplication>
#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "tessaluna/backends/qt/decodeImage.h"
#include "tessaluna/backends/qt/systemColors.h"
#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/backend/imageDecoder.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/PaletteCanvas.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

// A program that makes icons may have no backend, and its covers come as bytes. It links this file, and with it this.
[[maybe_unused]] const bool isDecoderSet = (setImageDecoderWithoutBackend(decodeImage), true);

// Where the image's points, y up, come to lie among pixels that count downward from the upper left corner.
struct Placement {
  QRect pixels;  // all that can be painted
  QTransform ofPoints;
};

bool hasExtent(CGSize size) {
  return std::isfinite(size.width) && std::isfinite(size.height) && size.width > 0 && size.height > 0;
}

double fittingScale(CGSize image, QSizeF space) {
  return std::min(space.width() / image.width, space.height() / image.height);
}

// A side that is a whole number of pixels but for the rounding of a product takes no extra pixel.
int wholePixels(double length) { return std::max(1, static_cast<int>(std::ceil(length - 1e-6))); }

QTransform yDown(CGSize image) { return {1, 0, 0, -1, 0, image.height}; }

// As large as fits, in the middle. Its corner lies on a whole pixel, or edges that could be sharp would not be.
Placement upright(CGSize image, const QRect& pixels) {
  const double scale = fittingScale(image, pixels.size());
  const double left = std::floor((pixels.width() - image.width * scale) / 2 + 1e-6);
  const double top = std::floor((pixels.height() - image.height * scale) / 2 + 1e-6);
  return {pixels, yDown(image) * QTransform::fromScale(scale, scale) *
                      QTransform::fromTranslate(pixels.x() + left, pixels.y() + top)};
}

Placement turned(CGSize image, const QRectF& rect, const QTransform& toPixels) {
  const double scale = fittingScale(image, rect.size());
  const QSizeF size(image.width * scale, image.height * scale);
  const QPointF corner = rect.center() - QPointF(size.width() / 2, size.height() / 2);
  return {toPixels.mapRect(QRectF(corner, size)).toAlignedRect(),
          yDown(image) * QTransform::fromScale(scale, scale) * QTransform::fromTranslate(corner.x(), corner.y()) * toPixels};
}

struct RolePair {
  QPalette::ColorRole text, ground;
};

RolePair rolesOf(IconRole role) {
  switch (role) {
    case IconRole::None:
    case IconRole::Text: return {QPalette::WindowText, QPalette::Window};
    case IconRole::ButtonText: return {QPalette::ButtonText, QPalette::Button};
    case IconRole::ListText: return {QPalette::Text, QPalette::Base};
  }
  unreachable();
}

bool followsPalette(const IconLook& look) { return look.role != IconRole::None || look.tint || neutralsFollowPalette(); }

// Absent where the drawing's own colors count.
std::optional<NeutralAxis> axisOf(const IconLook& look, QIcon::Mode mode) {
  if (!followsPalette(look)) return std::nullopt;
  const QPalette palette = QGuiApplication::palette();
  const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
  const RolePair roles =
      mode == QIcon::Selected ? RolePair{QPalette::HighlightedText, QPalette::Highlight} : rolesOf(look.role);
  const bool isTinted = look.tint && mode != QIcon::Disabled && mode != QIcon::Selected;
  return NeutralAxis(colorOf(isTinted ? *look.tint : palette.color(group, roles.text)),
                     colorOf(palette.color(group, roles.ground)));
}

QImage render(NSImage& image, const Placement& placement, const std::optional<NeutralAxis>& axis) {
  const QSize size = placement.pixels.size();
  if (std::max(size.width(), size.height()) > raster::Bitmap::maximumSide) return {};
  QImage picture(size, QImage::Format_ARGB32_Premultiplied);
  if (picture.isNull()) return picture;
  picture.fill(Qt::transparent);
  auto bitmap = raster::Bitmap::borrow(reinterpret_cast<std::uint32_t*>(picture.bits()), picture.width(), picture.height(),
                                       static_cast<std::size_t>(picture.bytesPerLine()));
  if (!bitmap) return {};
  // The image's points are those of the base space, in which shadows are measured: they grow with the rest.
  const double scale = std::sqrt(std::abs(placement.ofPoints.determinant()));
  raster::RasterCanvas canvas(*bitmap, {.scale = scale});
  std::optional<PaletteCanvas> mapping;
  if (axis) mapping.emplace(canvas, *axis);
  CGContext context(mapping ? static_cast<Canvas&>(*mapping) : canvas);
  const QTransform t = placement.ofPoints * QTransform::fromTranslate(-placement.pixels.x(), -placement.pixels.y()) *
                       QTransform(1, 0, 0, -1, 0, picture.height()) * QTransform::fromScale(1 / scale, 1 / scale);
  context.concat({t.m11(), t.m12(), t.m21(), t.m22(), t.dx(), t.dy()});
  image.drawInContext(context, {{}, image.size()});
  return picture;
}

QPixmap styled(const QImage& picture, QIcon::Mode mode) {
  const QPixmap pixmap = QPixmap::fromImage(picture);
  if (mode == QIcon::Normal || pixmap.isNull() || !qobject_cast<QApplication*>(QCoreApplication::instance())) return pixmap;
  QStyleOption option(0);
  option.palette = QApplication::palette();
  const QPixmap generated = QApplication::style()->generatedIconPixmap(mode, pixmap, &option);
  return generated.isNull() ? pixmap : generated;
}

class ImageIconEngine : public QIconEngine {
 public:
  ImageIconEngine(Ref<NSImage> image, IconLook look) : image_(std::move(image)), look_(std::move(look)) {}

  // Intentional: the key of Qt's own engine of pixels, which any program can read again.
  QString key() const override { return QStringLiteral("QPixmapIconEngine"); }
  QIconEngine* clone() const override { return new ImageIconEngine(*this); }
  bool isNull() override { return isEmpty(); }

  QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return sizeWithin(size); }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override { return pictureWithin(size, mode); }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    if (isEmpty() || rect.isEmpty()) return;
    const QTransform toPixels = painter->deviceTransform();
    if (!toPixels.isInvertible()) return;
    if (!toPixels.isAffine()) {
      painter->drawPixmap(rect, pictureWithin(rect.size(), mode));
      return;
    }
    const bool isUpright =
        toPixels.type() <= QTransform::TxScale && toPixels.m11() > 0 && qFuzzyCompare(toPixels.m11(), toPixels.m22());
    const Placement placement = isUpright ? upright(image_->size(), toPixels.mapRect(QRectF(rect)).toRect())
                                          : turned(image_->size(), rect, toPixels);
    if (placement.pixels.isEmpty()) return;
    const QPixmap pixels = picture(placement, mode);
    // Whatever Qt applies after the painter's own transform, one unit becomes one pixel.
    const QTransform own = painter->worldTransform();
    painter->setWorldTransform(toPixels.inverted() * own);
    painter->drawPixmap(placement.pixels.topLeft(), pixels);
    painter->setWorldTransform(own);
  }

  // As a dragged row of a model is written: pixels in the usual sizes, which then no longer follow the palette.
  bool write(QDataStream& out) const override {
    QIcon pixels;
    for (const int side : {16, 24, 32, 48, 64, 128})
      for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled, QIcon::Active, QIcon::Selected})
        pixels.addPixmap(pictureWithin({side, side}, mode), mode);
    QByteArray written;
    QDataStream writing(&written, QIODevice::WriteOnly);
    writing.setVersion(out.version());
    writing << pixels;
    // The key, which whoever writes an icon has written already.
    QDataStream reading(written);
    QString earlier;
    reading >> earlier;
    const QByteArray rest = written.mid(reading.device()->pos());
    return out.writeRawData(rest.constData(), int(rest.size())) == rest.size();
  }

 private:
  ImageIconEngine(const ImageIconEngine&) = default;
  bool isEmpty() const { return !hasExtent(image_->size()); }  // an image's size may change
  QSize sizeWithin(const QSize& size) const {
    if (isEmpty() || size.isEmpty()) return {};
    const double scale = fittingScale(image_->size(), size);
    return {wholePixels(image_->size().width * scale), wholePixels(image_->size().height * scale)};
  }
  QPixmap pictureWithin(const QSize& size, QIcon::Mode mode) const {
    const QSize actual = sizeWithin(size);
    if (actual.isEmpty()) return {};
    return picture(upright(image_->size(), QRect(QPoint(0, 0), actual)), mode);
  }
  QPixmap picture(const Placement& placement, QIcon::Mode mode) const {
    const QImage image = render(*image_, placement, axisOf(look_, mode));
    return followsPalette(look_) ? QPixmap::fromImage(image) : styled(image, mode);
  }

  Ref<NSImage> image_;
  IconLook look_;
};

}  // namespace

QIcon icon(Ref<NSImage> image, IconLook look) {
  if (!image || !hasExtent(image->size())) return {};
  return QIcon(new ImageIconEngine(std::move(image), std::move(look)));
}

QIcon iconOfDrawing(CGSize size, std::function<void(CGRect)> draw, IconLook look) {
  if (!draw) stopProgram("iconOfDrawing: an empty drawing");
  const auto image = NSImage::imageWithSize(size, false, [draw = std::move(draw)](CGRect frame) {
    draw(frame);
    return true;
  });
  return icon(image, std::move(look));
}

}  // namespace tessaluna::backend::qt
