#include "gallery/tracks/coverPictures.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <span>
#include <tuple>

namespace gallery {

using namespace tessaluna::platform;

namespace {

constexpr int covers = 24, smallSize = 80;

// Each motif is drawn with a pale and a deep color into a square of the small size, over a background of both.
struct Colors {
  QColor pale, deep;
};

void drawSunOverSea(QPainter& painter, const Colors& colors) {
  painter.setBrush(colors.pale);
  painter.drawEllipse(QPointF(40, 36), 19, 19);
  painter.setBrush(colors.deep);
  constexpr int waves = 6;
  for (int i = 0; i < waves; ++i) painter.drawRect(QRectF(0, 38 + 7.5 * i, 80, 2 + i));
}

void drawRecord(QPainter& painter, const Colors& colors) {
  for (double radius = 34; radius > 6; radius -= 7) {
    painter.setBrush(int(radius) % 2 == 0 ? colors.deep : colors.pale);
    painter.drawEllipse(QPointF(40, 40), radius, radius);
  }
}

void drawMountains(QPainter& painter, const Colors& colors) {
  painter.setBrush(colors.pale);
  painter.drawEllipse(QPointF(57, 22), 9, 9);
  const QPointF far[] = {{-4, 80}, {24, 34}, {44, 62}, {58, 44}, {90, 80}};
  const QPointF near[] = {{-10, 80}, {10, 58}, {34, 80}, {56, 56}, {84, 80}};
  painter.setOpacity(0.6);
  painter.setBrush(colors.deep);
  painter.drawPolygon(far, 5);
  painter.setOpacity(1);
  painter.drawPolygon(near, 5);
}

void drawBands(QPainter& painter, const Colors& colors) {
  painter.translate(40, 40);
  painter.rotate(-32);
  constexpr int bands = 4;
  for (int i = 0; i < bands; ++i) {
    painter.setBrush(i % 2 == 0 ? colors.pale : colors.deep);
    painter.drawRect(QRectF(-80, -30 + 17 * i, 160, 4 + 3 * i));
  }
}

void drawCircles(QPainter& painter, const Colors& colors) {
  painter.setOpacity(0.7);
  for (const auto& [x, y, isPale] : {std::tuple(30.0, 32.0, true), {50.0, 32.0, false}, {40.0, 49.0, true}}) {
    painter.setBrush(isPale ? colors.pale : colors.deep);
    painter.drawEllipse(QPointF(x, y), 20, 20);
  }
}

void drawDots(QPainter& painter, const Colors& colors) {
  painter.setBrush(colors.pale);
  constexpr int dots = 6;
  for (int row = 0; row < dots; ++row)
    for (int column = 0; column < dots; ++column)
      painter.drawEllipse(QPointF(10 + 12 * column, 10 + 12 * row), 1 + 0.45 * (row + column), 1 + 0.45 * (row + column));
}

constexpr void (*motifs[])(QPainter&, const Colors&) = {drawSunOverSea, drawRecord, drawMountains,
                                                        drawBands,      drawDots,   drawCircles};

QByteArray coverFile(int number, int pixels) {
  constexpr int size = smallSize;
  QImage image(pixels, pixels, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(double(pixels) / size, double(pixels) / size);
  const int hue = number * 7 % covers * 360 / covers, otherHue = (hue + 40) % 360;
  QLinearGradient ground(0, 0, size * 0.4, size);
  ground.setColorAt(0, QColor::fromHsv(hue, 120, 205));
  ground.setColorAt(1, QColor::fromHsv(otherHue, 165, 120));
  painter.fillRect(QRect(0, 0, size, size), ground);
  painter.setPen(Qt::NoPen);
  motifs[number % std::size(motifs)](
      painter, {.pale = QColor::fromHsv((hue + 20) % 360, 45, 245), .deep = QColor::fromHsv(otherHue, 190, 75)});
  painter.end();
  QByteArray bytes;
  QBuffer file(&bytes);
  file.open(QIODevice::WriteOnly);
  image.save(&file, "PNG");
  return bytes;
}

Ref<NSImage> pictureOf(const QByteArray& file) {
  return NSImage::initWithData(std::as_bytes(std::span(file.data(), static_cast<std::size_t>(file.size()))));
}

}  // namespace

std::vector<QByteArray> coverFilesOfTracks() {
  std::vector<QByteArray> files;
  for (int number = 0; number < covers; ++number) files.push_back(coverFile(number, smallSize));
  return files;
}

std::vector<Ref<NSImage>> coverPictures() {
  std::vector<Ref<NSImage>> pictures;
  if (!QCoreApplication::instance()) return pictures;
  for (const QByteArray& file : coverFilesOfTracks()) pictures.push_back(pictureOf(file));
  return pictures;
}

Ref<NSImage> largeCoverPicture(std::size_t number) {
  if (!QCoreApplication::instance()) return nullptr;
  return pictureOf(coverFile(static_cast<int>(number % covers), largeCoverPixels));
}

}  // namespace gallery
