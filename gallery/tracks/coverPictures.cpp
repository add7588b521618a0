#include "gallery/tracks/coverPictures.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <span>

namespace gallery {

using namespace tessaluna::platform;

namespace {

constexpr int covers = 24, size = 80;

QByteArray coverFile(int number) {
  QImage image(size, size, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const int hue = number * 360 / covers;
  QLinearGradient ground(0, 0, size, size);
  ground.setColorAt(0, QColor::fromHsv(hue, 150, 215));
  ground.setColorAt(1, QColor::fromHsv((hue + 50) % 360, 190, 110));
  painter.fillRect(image.rect(), ground);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromHsv((hue + 170) % 360, 90, 240, 200));
  const int wide = 22 + number * 7 % 30;
  const QRect place(number * 13 % (size - wide), number * 29 % (size - wide), wide, wide);
  if (number % 3 == 0) painter.drawEllipse(place);
  else if (number % 3 == 1) painter.drawRect(place);
  else painter.drawPie(place, 30 * 16, 300 * 16);
  painter.end();
  QByteArray bytes;
  QBuffer file(&bytes);
  file.open(QIODevice::WriteOnly);
  image.save(&file, "PNG");
  return bytes;
}

}  // namespace

std::vector<QByteArray> coverFilesOfTracks() {
  std::vector<QByteArray> files;
  for (int number = 0; number < covers; ++number) files.push_back(coverFile(number));
  return files;
}

std::vector<Ref<NSImage>> coverPictures() {
  std::vector<Ref<NSImage>> pictures;
  if (!QCoreApplication::instance()) return pictures;
  for (const QByteArray& file : coverFilesOfTracks())
    pictures.push_back(NSImage::initWithData(std::as_bytes(std::span(file.data(), static_cast<std::size_t>(file.size())))));
  return pictures;
}

}  // namespace gallery
