#include "tessaluna/backends/qt/QtTypeface.h"

#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <utility>

namespace tessaluna::backend::qt {

QtTypeface::QtTypeface(QRawFont font)
    : font_(std::move(font)),
      hasOutlines_(hasTable("loca") || !hasTable("CBLC")),
      mayHavePictures_(hasTable("CBLC") || hasTable("COLR") || hasTable("sbix")) {}

bool QtTypeface::hasTable(const char* name) const { return !font_.fontTable(name).isEmpty(); }

Path QtTypeface::outline(std::uint32_t glyph) const {
  // Asking a font of pictures for an outline would spoil the size of Qt's face, and with it its advances.
  if (!hasOutlines_) return {};
  Path path;
  // Points may be 1/64 of a pixel away at another time: Qt's FreeType face keeps the shift of the letter that Qt painted last.
  const QPainterPath shape = font_.pathForGlyph(glyph);
  // Qt counts y downward, and gives a curve as its two controls and then its end.
  const auto at = [&](int i) { return CGPoint{shape.elementAt(i).x, -shape.elementAt(i).y}; };
  for (int i = 0; i < shape.elementCount(); ++i) {
    switch (shape.elementAt(i).type) {
      case QPainterPath::MoveToElement:
        if (!path.isEmpty()) path.close();
        path.moveTo(at(i));
        break;
      case QPainterPath::LineToElement: path.lineTo(at(i)); break;
      case QPainterPath::CurveToElement:
        path.curveTo(at(i + 2), at(i), at(i + 1));
        i += 2;
        break;
      case QPainterPath::CurveToDataElement: break;
    }
  }
  if (!path.isEmpty()) path.close();
  return path;
}

std::optional<GlyphPicture> QtTypeface::picture(std::uint32_t glyph, CGPoint origin) const {
  if (!mayHavePictures_ || !outline(glyph).isEmpty()) return std::nullopt;
  const QRectF rounded = font_.boundingRect(glyph);  // which may cut the glyph
  if (rounded.isEmpty()) return std::nullopt;
  const QRectF bounds = rounded.adjusted(-1, -1, 1, 1);
  // For screens of up to four pixels per point. Few fonts have larger pictures than the largest.
  constexpr double pixelsPerPoint = 4, smallest = 32, largest = 160;
  const double scale = std::clamp(font_.pixelSize() * pixelsPerPoint, smallest, largest) / font_.pixelSize();
  const QRect box = QRectF(bounds.topLeft() * scale, bounds.size() * scale).toAlignedRect();
  std::weak_ptr<const ImagePixels>& known = pictures_[glyph];
  std::shared_ptr<const ImagePixels> pixels = known.lock();
  if (!pixels) known = pixels = pixelsOf(glyph, box, scale);
  const CGRect place{origin.x + box.left() / scale, origin.y - (box.top() + box.height()) / scale, box.width() / scale,
                     box.height() / scale};
  return GlyphPicture{.pixels = pixels, .place = place};
}

// The scale is the painter's: a font of another size would share Qt's face with this one, and change its advances.
std::shared_ptr<const ImagePixels> QtTypeface::pixelsOf(std::uint32_t glyph, const QRect& box, double scale) const {
  QImage image(box.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QGlyphRun run;
  run.setRawFont(font_);
  run.setGlyphIndexes({glyph});
  run.setPositions({{0, 0}});
  QPainter painter(&image);
  painter.translate(-box.topLeft());
  painter.scale(scale, scale);
  painter.drawGlyphRun({0, 0}, run);
  painter.end();
  auto pixels = std::make_shared<ImagePixels>(ImagePixels{.width = box.width(), .height = box.height(), .argb = {}});
  for (int y = 0; y < box.height(); ++y) {
    const auto* row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
    pixels->argb.insert(pixels->argb.end(), row, row + box.width());
  }
  return pixels;
}

}  // namespace tessaluna::backend::qt
